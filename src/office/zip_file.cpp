#include "office/zip_file.h"

#include <gsf/gsf-infile-zip.h>

#include <vector>

#include "office/gsf_object.h"
#include "office/read_failures.h"
#include "util/text.h"

namespace luming {

struct ZipFile::Container {
  GsfObject<GsfInput> input;
  GsfObject<GsfInfile> directory;

  /// Null when there is none.
  GsfObject<GsfInput> Part(std::string_view path) const {
    GsfObject<GsfInput> part;
    for (const std::string& name : Split(path, "/")) {
      GsfInfile* const folder = part ? reinterpret_cast<GsfInfile*>(part.get()) : directory.get();
      if (!GSF_IS_INFILE(folder)) return nullptr;
      part.reset(gsf_infile_child_by_name(folder, name.c_str()));
      if (!part) break;
    }
    return part;
  }
};

ZipFile::ZipFile(std::string_view bytes) : container_(std::make_unique<Container>()) {
  container_->input = GsfInputOf(bytes);
  container_->directory.reset(gsf_infile_zip_new(container_->input.get(), nullptr));
  if (!container_->directory) throw DamagedWorkbook();
}

ZipFile::~ZipFile() = default;

bool ZipFile::Has(std::string_view path) const {
  return container_->Part(path) != nullptr;
}

std::optional<std::string> ZipFile::Read(std::string_view path) const {
  constexpr gsf_off_t kMostBytes = 256 << 20;
  const GsfObject<GsfInput> part = container_->Part(path);
  if (!part) return std::nullopt;
  if (gsf_input_size(part.get()) > kMostBytes) throw TooLargeWorkbook();
  auto bytes = AllOf(part.get());
  if (!bytes) throw DamagedWorkbook();
  return bytes;
}

}  // namespace luming
