#pragma once

#include <string>
#include <vector>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/tree.h"

namespace luming {

/// The tree by which a list of drugs is narrowed to one charge item: a root that stands for all of them, and one node
/// for each item that a statement reads.
class ChargeItemTree : public Tree {
 public:
  static constexpr const char* kAllItems = "所有收费项目";

  /// What stands around an item's text in the key of its node.
  struct Keys {
    const char* before;
    const char* after;
  };

  explicit ChargeItemTree(Form* form) : Tree(form, "TreeView1") {}

  /// Builds it anew, opened. Failures are the caller's.
  /// @param items statement whose first column names the items
  /// @param further texts and keys of nodes behind the items
  void Build(AppContext& app, const Statement& items, const Keys& keys,
             const std::vector<std::pair<std::string, std::string>>& further = {});

  const std::string& TextOf(int node) const { return Nodes()[static_cast<std::size_t>(node)].text; }
};

}  // namespace luming
