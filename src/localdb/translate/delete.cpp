#include "localdb/translate/translator.h"

namespace luming::localdb {

std::unique_ptr<Plan> Translator::Delete(const DeleteStatement& erase) {
  Scope scope;
  if (!erase.from.empty()) {
    std::string alias;
    const Table& table = JoinedTarget(erase.target, erase.from, alias);
    std::string rows = "SELECT " + QuoteName(alias) + ".rowid" + TranslateFrom(erase.from, scope);
    if (erase.where) rows += " WHERE " + TranslateCondition(*erase.where, scope);
    if (erase.top) rows += TranslateTop(*erase.top, scope);
    return Finish("DELETE FROM " + Physical(table) + " WHERE rowid IN (" + rows + ")");
  }
  const Table& table = RequireTable(erase.target);
  scope.tables.push_back({table.name, &table.columns});
  std::string target = Physical(table) + " AS " + QuoteName(table.name);
  std::string where = erase.where ? " WHERE " + TranslateCondition(*erase.where, scope) : "";
  if (!erase.top) return Finish("DELETE FROM " + target + where);
  std::string rows = "SELECT rowid FROM " + target + where + TranslateTop(*erase.top, scope);
  return Finish("DELETE FROM " + target + " WHERE rowid IN (" + rows + ")");
}

}  // namespace luming::localdb
