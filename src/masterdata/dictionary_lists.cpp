#include "masterdata/dictionary_lists.h"

#include "frame/gateway.h"
#include "util/text.h"

namespace luming {

void LoadCombos(AppContext& app, std::string_view sql, const std::vector<DictionaryList>& lists) {
  Recordset rows;
  OpenRs(app, rows, sql);
  for (; !rows.Eof(); rows.MoveNext()) {
    const std::string controlid = rows.Field("controlid").TextOrEmpty();
    for (const DictionaryList& entry : lists) {
      if (EqualsIgnoreCase(entry.controlid, controlid)) entry.list->AddItem(rows.Field("DMMC").TextOrEmpty());
    }
  }
  CloseRs(rows);
}

}  // namespace luming
