#include "masterdata/dictionary_lists.h"

#include "frame/gateway.h"
#include "util/text.h"

namespace luming {

std::map<std::string, std::vector<std::string>> ReadDictionaries(AppContext& app, std::string_view sql) {
  std::map<std::string, std::vector<std::string>> dictionaries;
  Recordset rows;
  OpenRs(app, rows, sql);
  for (; !rows.Eof(); rows.MoveNext()) {
    dictionaries[UpperAscii(rows.Field("controlid").TextOrEmpty())].push_back(rows.Field("DMMC").TextOrEmpty());
  }
  CloseRs(rows);
  return dictionaries;
}

std::vector<std::string> ReadList(AppContext& app, std::string_view sql) {
  return ReadList(app, Statement(std::string(sql)));
}

std::vector<std::string> ReadList(AppContext& app, const Statement& statement) {
  std::vector<std::string> entries;
  Recordset rows;
  OpenRs(app, rows, statement);
  for (; !rows.Eof(); rows.MoveNext()) entries.push_back(rows.Field(0).TextOrEmpty());
  CloseRs(rows);
  return entries;
}

void LoadCombos(AppContext& app, std::string_view sql, const std::vector<DictionaryList>& lists) {
  const auto dictionaries = ReadDictionaries(app, sql);
  for (const DictionaryList& entry : lists) {
    const auto found = dictionaries.find(UpperAscii(entry.controlid));
    if (found == dictionaries.end()) continue;
    for (const std::string& item : found->second) entry.list->AddItem(item);
  }
}

}  // namespace luming
