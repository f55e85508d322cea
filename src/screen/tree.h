#pragma once

#include <string>
#include <utility>
#include <vector>

#include "screen/control.h"

namespace luming {

struct TreeNode {
  int id = 0;  ///< index in Tree::Nodes()
  int parent = -1;
  std::string text;
  std::string key;
  std::string
      image;  ///< key of the picture ahead of the text: "None", "Some" and "All" are check boxes; empty for none
  bool expanded = false;
  bool removed = false;
};

class Tree : public Control {
 public:
  Tree(Form* form, std::string name) : Control(form, ControlKind::kTree, std::move(name), {}) {}
  int AddNode(int parent, std::string text, std::string node_key = {});  ///< parent -1: a root; returns the id
  void RemoveNode(int id);                                               ///< with all below it
  void Clear();
  const std::vector<TreeNode>& Nodes() const { return nodes_; }  ///< parents stand ahead of their children
  void SetNodeText(int id, std::string text);
  void SetNodeImage(int id, std::string image);
  void SetExpanded(int id, bool expanded);
  int Selected() const { return selected_; }  ///< -1 for none
  void Select(int id);                        ///< by code: no event
  void UserSelect(int id);                    ///< fires node_click
  Event<int> node_click;
  Event<int> node_double_click;

 private:
  std::vector<TreeNode> nodes_;
  int selected_ = -1;
};

}  // namespace luming
