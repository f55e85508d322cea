#include "app/store_maker.h"

#include <unistd.h>

#include <memory>

#include "app/absent_output.h"
#include "app/connection_router.h"
#include "app/store_filler.h"
#include "app/store_place.h"
#include "frame/local_files.h"
#include "frame/startup.h"
#include "localdb/local_connection.h"
#include "masterdata/catalogue_template.h"
#include "office/office_workbooks.h"
#include "output/note_templates.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/whole_file.h"

namespace luming {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCatalogue = "lumndata";
constexpr const char* kDatabaseUser = "sa";

/// A directory beside the wanted one that goes again unless it takes its place.
class Staging {
 public:
  explicit Staging(const fs::path& target) : target_(target) {
    path_ = target.parent_path() / ("." + target.filename().string() + ".new-" + std::to_string(::getpid()));
    fs::create_directories(path_);
  }
  ~Staging() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
  }
  Staging(const Staging&) = delete;
  Staging& operator=(const Staging&) = delete;

  const fs::path& Path() const { return path_; }
  void TakePlace() {
    fs::rename(path_, target_);
    path_.clear();
  }

 private:
  fs::path target_;
  fs::path path_;
};

void WriteSettings(const fs::path& home) {
  ReplaceFile(SettingsFile(home), ToAnsi("[配置]\r\n药库类型=西药库\r\n预警天数=90\r\n"
                                         "[输入法]\r\nIME=0\r\n"
                                         "[报警]\r\n药品失效预警=0\r\n"));
}

}  // namespace

void DemandFreePlace(const fs::path& directory) {
  if (!fs::exists(directory)) return;
  if (!fs::is_directory(directory)) throw Failure(failure::kFileAccess, "不是目录：" + directory.string());
  if (!fs::is_empty(directory)) {
    throw Failure(failure::kFileAccess, "目录已经存在并且不是空的：" + directory.string());
  }
}

void StageApplicationDirectory(const fs::path& directory, const std::function<void(const fs::path&)>& fill) {
  const fs::path absolute = fs::absolute(directory).lexically_normal();
  const fs::path target = absolute.has_filename() ? absolute : absolute.parent_path();
  try {
    DemandFreePlace(target);
    Staging staging(target);
    WriteConnectionFile(staging.Path(), {std::string(RoutedConnection::kEmbedded), kCatalogue, kDatabaseUser, ""});
    WriteSettings(staging.Path());
    OfficeWorkbooks workbooks(NoPrinter::Instance(), {});
    WriteNoteTemplates(workbooks, staging.Path());
    WriteCatalogueTemplate(workbooks, staging.Path());
    CreateStore(staging.Path(), kCatalogue);
    fill(staging.Path());
    staging.TakePlace();
  } catch (const fs::filesystem_error& error) {
    throw Failure(failure::kFileAccess, "无法写入目录：" + error.path1().string());
  }
}

void MakeApplicationDirectory(const StoreRequest& request, const Clock& clock) {
  DemandFreePlace(request.directory);
  if (request.password) DemandUsablePassword(*request.password);
  const StoreFiles files = ReadStoreFiles(request.data, request.demo);
  StageApplicationDirectory(request.directory, [&](const fs::path& home) {
    const std::shared_ptr<Connection> store = OpenStore(home.string(), clock);
    FillStore(store, files, request.password, home, clock);
    store->Close();
  });
}

}  // namespace luming
