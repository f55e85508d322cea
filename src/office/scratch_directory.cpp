#include "office/scratch_directory.h"

#include <cstdlib>
#include <string>

#include "util/failure.h"

namespace luming {

ScratchDirectory::ScratchDirectory() {
  std::error_code error;
  std::filesystem::path parent = std::filesystem::temp_directory_path(error);
  if (error) parent = "/tmp";
  std::string name = (parent / "luming-XXXXXX").string();
  if (!mkdtemp(name.data())) {
    throw Failure(failure::kFileAccess, "无法建立临时目录：" + parent.string(), "电子表格");
  }
  path_ = name;
}

ScratchDirectory::~ScratchDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

}  // namespace luming
