#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/combo_box.h"

namespace luming {

/// Which entries of the dictionary table CS go into which list of a screen.
struct DictionaryList {
  std::string_view controlid;  ///< compared without regard to case
  ComboBox* list;
};

/// Entries by upper-case `controlid`, each in the order of the rows that `sql` reads from CS. Throws Failure.
std::map<std::string, std::vector<std::string>> ReadDictionaries(AppContext& app, std::string_view sql);

/// The entries of the first column of a query. Throws Failure.
std::vector<std::string> ReadList(AppContext& app, std::string_view sql);
std::vector<std::string> ReadList(AppContext& app, const Statement& statement);

/// Adds `DMMC` of each row that `sql` reads from CS to the lists of its `controlid`, in the order of the rows.
/// Throws Failure when the rows cannot be read.
void LoadCombos(AppContext& app, std::string_view sql, const std::vector<DictionaryList>& lists);

}  // namespace luming
