#include "screen/tree.h"

#include "screen/forms.h"
#include "util/failure.h"

namespace luming {
namespace {

bool IsNode(const std::vector<TreeNode>& nodes, int id) {
  return id >= 0 && id < static_cast<int>(nodes.size()) && !nodes[static_cast<std::size_t>(id)].removed;
}

}  // namespace

int Tree::AddNode(int parent, std::string text, std::string node_key) {
  if (parent >= 0 && !IsNode(nodes_, parent)) throw StandardFailure(failure::kSubscript);
  const int id = static_cast<int>(nodes_.size());
  nodes_.push_back({id, parent < 0 ? -1 : parent, std::move(text), std::move(node_key), {}});
  Changed();
  return id;
}

void Tree::RemoveNode(int id) {
  if (!IsNode(nodes_, id)) return;
  nodes_[static_cast<std::size_t>(id)].removed = true;
  // Parents stand ahead of their children, so one pass reaches everything below.
  for (TreeNode& node : nodes_) {
    if (node.parent >= 0 && nodes_[static_cast<std::size_t>(node.parent)].removed) node.removed = true;
  }
  if (!IsNode(nodes_, selected_)) selected_ = -1;
  Changed();
}

void Tree::Clear() {
  nodes_.clear();
  selected_ = -1;
  Changed();
}

void Tree::SetNodeText(int id, std::string text) {
  if (!IsNode(nodes_, id)) return;
  nodes_[static_cast<std::size_t>(id)].text = std::move(text);
  Changed();
}

void Tree::SetNodeImage(int id, std::string image) {
  if (!IsNode(nodes_, id)) return;
  nodes_[static_cast<std::size_t>(id)].image = std::move(image);
  Changed();
}

void Tree::SetExpanded(int id, bool expanded) {
  if (!IsNode(nodes_, id)) return;
  nodes_[static_cast<std::size_t>(id)].expanded = expanded;
  Changed();
}

void Tree::Select(int id) {
  selected_ = IsNode(nodes_, id) ? id : -1;
  Changed();
}

void Tree::UserSelect(int id) {
  if (!IsNode(nodes_, id) || !Enabled() || !Visible()) return;
  Forms::HandlerScope scope(Owner().Registry());
  Owner().UserFocus(*this);
  if (Owner().IsUnloaded()) return;
  Select(id);
  node_click.Fire(id);
}

}  // namespace luming
