#include "office/ole_file.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>

#include "office/gsf_object.h"
#include "office/read_failures.h"

namespace luming {

std::string OleFileWith(const std::string& stream_name, const std::string& stream) {
  NeedGsf();
  const GsfObject<GsfOutput> sink(gsf_output_memory_new());
  const GsfObject<GsfOutfile> container(gsf_outfile_msole_new(sink.get()));
  const GsfObject<GsfOutput> child(gsf_outfile_new_child(container.get(), stream_name.c_str(), FALSE));
  const auto* bytes = reinterpret_cast<const guint8*>(stream.data());
  // Closing the container also closes its sink.
  const bool written = gsf_output_write(child.get(), stream.size(), bytes) && gsf_output_close(child.get()) &&
                       gsf_output_close(reinterpret_cast<GsfOutput*>(container.get()));
  if (!written) throw Failure(failure::kFileAccess, "无法生成工作簿文件。", "电子表格");
  auto* const memory = reinterpret_cast<GsfOutputMemory*>(sink.get());
  return {reinterpret_cast<const char*>(gsf_output_memory_get_bytes(memory)),
          static_cast<std::size_t>(gsf_output_size(sink.get()))};
}

std::map<std::string, std::string> OleStreams(std::string_view container, const std::vector<std::string>& names) {
  const GsfObject<GsfInput> input = GsfInputOf(container);
  const GsfObject<GsfInfile> directory(gsf_infile_msole_new(input.get(), nullptr));
  if (!directory) throw DamagedWorkbook();
  std::map<std::string, std::string> streams;
  for (const std::string& name : names) {
    const GsfObject<GsfInput> stream(gsf_infile_child_by_name(directory.get(), name.c_str()));
    if (!stream) continue;
    // A stream is part of the file: one that claims to be longer than it is none.
    if (static_cast<std::size_t>(gsf_input_size(stream.get())) > container.size()) throw DamagedWorkbook();
    auto bytes = AllOf(stream.get());
    if (!bytes) throw DamagedWorkbook();
    streams.emplace(name, std::move(*bytes));
  }
  return streams;
}

}  // namespace luming
