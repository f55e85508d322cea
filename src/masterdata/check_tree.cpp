#include "masterdata/check_tree.h"

#include <algorithm>

namespace luming {

namespace {

const TreeNode& At(const Tree& tree, int node) {
  return tree.Nodes().at(static_cast<std::size_t>(node));
}

std::string StateOfChildren(const Tree& tree, int parent) {
  bool all = true;
  bool none = true;
  for (const TreeNode& child : tree.Nodes()) {
    if (child.removed || child.parent != parent) continue;
    all = all && child.image == Check_Tree::kAll;
    none = none && child.image == Check_Tree::kNone;
  }
  if (all) return Check_Tree::kAll;
  return none ? Check_Tree::kNone : Check_Tree::kSome;
}

}  // namespace

void Check_Tree::ProcessStateChange(Tree& tree, int node) {
  const std::string& shown = At(tree, node).image;
  tree.SetNodeImage(node, shown == kNone || shown == kSome ? kAll : kNone);
  CheckChildren(tree, node);
  CheckParent(tree, node);
}

void Check_Tree::CheckChildren(Tree& tree, int node) {
  const std::string state = At(tree, node).image;
  const int count = static_cast<int>(tree.Nodes().size());
  for (int child = node + 1; child < count; ++child) {
    if (At(tree, child).removed || At(tree, child).parent != node) continue;
    tree.SetNodeImage(child, state);
    CheckChildren(tree, child);
  }
}

void Check_Tree::CheckParent(Tree& tree, int node) {
  const int parent = At(tree, node).parent;
  if (parent < 0) return;
  tree.SetNodeImage(parent, StateOfChildren(tree, parent));
  CheckParent(tree, parent);
}

}  // namespace luming
