#include "masterdata/charge_item_tree.h"

#include "masterdata/dictionary_lists.h"

namespace luming {

void ChargeItemTree::Build(AppContext& app, const Statement& items, const Keys& keys,
                           const std::vector<std::pair<std::string, std::string>>& further) {
  Clear();
  const int root = AddNode(-1, kAllItems, "Master");
  for (const std::string& item : ReadList(app, items)) AddNode(root, item, keys.before + item + keys.after);
  for (const auto& [text, key] : further) AddNode(root, text, key);
  SetExpanded(root, true);
}

}  // namespace luming
