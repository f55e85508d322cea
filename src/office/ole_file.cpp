#include "office/ole_file.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <memory>

#include "util/failure.h"

namespace luming {

namespace {

struct Unref {
  void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using Owned = std::unique_ptr<T, Unref>;

}  // namespace

std::string OleFileWith(const std::string& stream_name, const std::string& stream) {
  static const bool ready = (gsf_init(), true);
  static_cast<void>(ready);

  const Owned<GsfOutput> sink(gsf_output_memory_new());
  const Owned<GsfOutfile> container(gsf_outfile_msole_new(sink.get()));
  const Owned<GsfOutput> child(gsf_outfile_new_child(container.get(), stream_name.c_str(), FALSE));
  const auto* bytes = reinterpret_cast<const guint8*>(stream.data());
  // Closing the container also closes its sink.
  const bool written = gsf_output_write(child.get(), stream.size(), bytes) && gsf_output_close(child.get()) &&
                       gsf_output_close(reinterpret_cast<GsfOutput*>(container.get()));
  if (!written) throw Failure(failure::kFileAccess, "无法生成工作簿文件。", "电子表格");
  auto* const memory = reinterpret_cast<GsfOutputMemory*>(sink.get());
  return {reinterpret_cast<const char*>(gsf_output_memory_get_bytes(memory)),
          static_cast<std::size_t>(gsf_output_size(sink.get()))};
}

}  // namespace luming
