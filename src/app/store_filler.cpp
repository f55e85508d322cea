#include "app/store_filler.h"

#include "app/document_clerk.h"
#include "platform/sql_script.h"
#include "util/ansi_text.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

void LoadTable(Connection& store, const TableFile& table, const DateTime& now) {
  const std::string head = "Insert Into " + table.table + "(" + Join(table.columns, ",") + ") Values(";
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    std::vector<std::string> values;
    for (const std::string& field : table.rows[i]) values.push_back(SqlOfField(field, now));
    try {
      store.Execute(head + Join(values, ",") + ")");
    } catch (const Failure& failure) {
      throw Failure(failure.number(), "数据文件 " + table.table + ".tsv 第 " + std::to_string(i + 2) + " 行无法导入：" +
                                          failure.description());
    }
  }
}

void Load(Connection& store, const std::vector<TableFile>& tables, const DateTime& now) {
  for (const TableFile& table : tables) LoadTable(store, table, now);
}

void SetPassword(Connection& store, const std::string& password) {
  store.Execute("Update userdb Set password='" + password + "' Where username='管理员'");
}

}  // namespace

void MakeTables(Connection& store, const StoreFiles& files) {
  RunScript(store, files.schema);
  RunScript(store, files.procedures);
}

void FillStore(const std::shared_ptr<Connection>& store, const StoreFiles& files,
               const std::optional<std::string>& password, const std::filesystem::path& home, const Clock& clock) {
  store->BeginTrans();
  try {
    MakeTables(*store, files);
    Load(*store, files.seed, clock.Now());
    Load(*store, files.demo, clock.Now());
    if (password) SetPassword(*store, *password);
    EnterDocuments(home, store, files.documents, clock.Now());
  } catch (const Failure&) {
    if (store->IsOpen()) store->RollbackTrans();
    throw;
  }
  store->CommitTrans();
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

}  // namespace luming
