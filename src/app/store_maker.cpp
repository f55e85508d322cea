#include "app/store_maker.h"

#include <unistd.h>

#include <algorithm>
#include <memory>
#include <vector>

#include "app/absent_output.h"
#include "app/connection_router.h"
#include "app/opening_stock.h"
#include "app/table_file.h"
#include "frame/local_files.h"
#include "localdb/local_connection.h"
#include "office/office_workbooks.h"
#include "output/note_templates.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/text.h"
#include "util/whole_file.h"

namespace luming {

namespace {

namespace fs = std::filesystem;

constexpr const char* kCatalogue = "lumndata";
constexpr const char* kDatabaseUser = "sa";
constexpr const char* kReceipts = "opening_receipts";

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

std::vector<TableFile> ReadTables(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw Failure(failure::kFileNotFound, "缺少数据库文件目录：" + folder.string());
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.path().extension() == ".tsv") files.push_back(entry.path());
  }
  std::ranges::sort(files);
  std::vector<TableFile> tables;
  for (const fs::path& file : files) tables.push_back(ReadTableFile(file));
  return tables;
}

std::string ConnectionString() {
  return "Provider=sqloledb;Data Source=" + std::string(RoutedConnection::kEmbedded) +
         ";Initial Catalog=" + kCatalogue + ";User ID=" + kDatabaseUser + ";Password=;";
}

void WriteConnectionFile(const fs::path& home) {
  enum Record { kWhole = 1, kServer = 2, kDatabase = 5, kUser = 6, kPassword = 7 };
  ConnectionFile file(home);
  file.Write(kWhole, ConnectionString());
  file.Write(kServer, RoutedConnection::kEmbedded);
  file.Write(kDatabase, kCatalogue);
  file.Write(kUser, kDatabaseUser);
  file.Write(kPassword, "");
  file.Save();
}

void WriteSettings(const fs::path& home) {
  ReplaceFile(home / "LUMN.ini", ToAnsi("[配置]\r\n药库类型=西药库\r\n预警天数=90\r\n"
                                        "[输入法]\r\nIME=0\r\n"
                                        "[报警]\r\n药品失效预警=0\r\n"));
}

void LoadTable(Connection& connection, const TableFile& table, const DateTime& now) {
  const std::string head = "Insert Into " + table.table + "(" + Join(table.columns, ",") + ") Values(";
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    std::vector<std::string> values;
    for (const std::string& field : table.rows[i]) values.push_back(SqlOfField(field, now));
    try {
      connection.Execute(head + Join(values, ",") + ")");
    } catch (const Failure& failure) {
      throw Failure(failure.number(), "数据文件 " + table.table + ".tsv 第 " + std::to_string(i + 2) + " 行无法导入：" +
                                          failure.description());
    }
  }
}

void Load(Connection& connection, const std::vector<TableFile>& tables, const DateTime& now) {
  connection.BeginTrans();
  for (const TableFile& table : tables) {
    if (table.table != kReceipts) LoadTable(connection, table, now);
  }
  connection.CommitTrans();
}

void SetPassword(Connection& connection, const std::string& password) {
  connection.Execute("Update userdb Set password='" + password + "' Where username='管理员'");
}

/// The store as schema, procedures and data files describe it, but for the opening stock.
std::shared_ptr<Connection> MakeStore(const fs::path& home, const StoreRequest& request,
                                      const std::vector<TableFile>& demo, const Clock& clock) {
  const std::string schema = ReadTextFile(request.data / "schema.sql");
  const std::string procedures = ReadTextFile(request.data / "procedures.sql");
  const std::vector<TableFile> seed = ReadTables(request.data / "seed");
  CreateStore(home.string(), kCatalogue);
  auto store = std::make_shared<LocalConnection>(home.string(), clock);
  store->Open(ConnectionString());
  store->RunScript(schema);
  store->RunScript(procedures);
  Load(*store, seed, clock.Now());
  Load(*store, demo, clock.Now());
  if (request.password) SetPassword(*store, *request.password);
  return store;
}

void Fill(const fs::path& home, const StoreRequest& request, const Clock& clock) {
  const std::vector<TableFile> demo = request.demo ? ReadTables(request.data / "demo") : std::vector<TableFile>();
  WriteConnectionFile(home);
  WriteSettings(home);
  OfficeWorkbooks workbooks(NoPrinter::Instance(), {});
  WriteNoteTemplates(workbooks, home);
  const std::shared_ptr<Connection> store = MakeStore(home, request, demo, clock);
  for (const TableFile& table : demo) {
    if (table.table == kReceipts) EnterOpeningReceipts(home, store, table, clock.Now());
  }
  store->Close();
}

}  // namespace

void DemandFreePlace(const fs::path& directory) {
  if (!fs::exists(directory)) return;
  if (!fs::is_directory(directory)) throw Failure(failure::kFileAccess, "不是目录：" + directory.string());
  if (!fs::is_empty(directory)) {
    throw Failure(failure::kFileAccess, "目录已经存在并且不是空的：" + directory.string());
  }
}

void DemandUsablePassword(const std::string& password) {
  constexpr std::size_t kColumnWidth = 50;
  if (password.empty()) throw Failure(failure::kInvalidCall, "密码不能为空。");
  if (AnsiLength(password) > kColumnWidth) throw Failure(failure::kInvalidCall, "密码不能超过 50 个字节。");
  // The login strips quotes and compares by pattern, in which a bracket opens a set.
  if (password.find_first_of("'[\r\n\t") != std::string::npos) {
    throw Failure(failure::kInvalidCall, "密码不能包含单引号、方括号和控制字符。");
  }
}

void MakeApplicationDirectory(const StoreRequest& request, const Clock& clock) {
  const fs::path target = fs::absolute(request.directory).lexically_normal();
  const fs::path directory = target.has_filename() ? target : target.parent_path();
  try {
    DemandFreePlace(directory);
    if (request.password) DemandUsablePassword(*request.password);
    Staging staging(directory);
    Fill(staging.Path(), request, clock);
    staging.TakePlace();
  } catch (const fs::filesystem_error& error) {
    throw Failure(failure::kFileAccess, "无法写入目录：" + error.path1().string());
  }
}

fs::path FindDatabaseFiles(const fs::path& program_directory) {
  for (fs::path place = program_directory; !place.empty(); place = place.parent_path()) {
    for (const fs::path& candidate : {place / "database", place / "share" / "luming" / "database"}) {
      if (fs::exists(candidate / "schema.sql")) return candidate;
    }
    if (place == place.root_path()) break;
  }
  throw Failure(failure::kFileNotFound, "找不到数据库文件目录 database，请用 --data 指定。");
}

}  // namespace luming
