#include "office/find_office.h"

#include <cstdlib>
#include <vector>

#include "util/text.h"

namespace luming {

namespace {
constexpr long kCannotCreateObject = 429;
constexpr long kAutomationError = 440;
constexpr const char* kSource = "办公软件";

/// Debian's office program comes in parts; its launcher may be there without the part for sheets.
bool OpensSheets(const std::filesystem::path& office) {
  std::error_code missing;
  return std::filesystem::exists(office / "soffice.bin", missing) &&
         (std::filesystem::exists(office / "libsclo.so", missing) ||
          std::filesystem::exists(office / "libmergedlo.so", missing));
}
}  // namespace

std::filesystem::path FindOffice() {
  const char* const path = std::getenv("PATH");
  std::vector<std::string> directories = Split(path ? path : "", ":");
  directories.insert(directories.end(), {"/usr/bin", "/usr/local/bin", "/usr/lib/libreoffice/program"});
  for (const std::string& directory : directories) {
    std::error_code missing;
    const auto program = std::filesystem::canonical(std::filesystem::path(directory) / "soffice", missing);
    if (missing) continue;
    if (OpensSheets(program.parent_path())) return program.parent_path();
  }
  return {};
}

Failure NoOffice(const std::string& why) {
  return {kCannotCreateObject,
          "没有找到可用的办公软件 LibreOffice Calc，无法打开模板。请联系管理员安装。" +
              (why.empty() ? "" : "（" + why + "）"),
          kSource};
}

Failure OfficeRefused(const std::string& what) {
  return {kAutomationError, what, kSource};
}

}  // namespace luming
