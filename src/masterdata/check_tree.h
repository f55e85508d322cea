#pragma once

#include "screen/tree.h"

namespace luming {

/// Keeps a tree whose nodes show check boxes consistent: a node's image says whether all, some or none of what lies
/// below it is checked.
class Check_Tree {
 public:
  static constexpr const char* kNone = "None";
  static constexpr const char* kSome = "Some";
  static constexpr const char* kAll = "All";

  /// The operator turned the node: what was not wholly checked becomes so, anything else becomes unchecked, and the
  /// nodes below and above follow.
  static void ProcessStateChange(Tree& tree, int node);
  /// Gives everything below the node its state.
  static void CheckChildren(Tree& tree, int node);
  /// Works out the nodes above from the node and its siblings, up to the root.
  static void CheckParent(Tree& tree, int node);
};

}  // namespace luming
