#include "masterdata/check_tree.h"

#include "screen/tree.h"
#include "support/screen_test.h"
#include "util/text.h"

namespace luming {
namespace {

class TreeForm : public Form {
 public:
  explicit TreeForm(Forms& registry) : Form(registry, "TreeForm", "tree", WindowKind::kChild) {}
  Layout Arrange() const override { return tree; }
  Tree tree{this, "tree"};
};

/// root ─┬─ left ─┬─ a
///       │        └─ b
///       └─ right
class CheckTreeTest : public ScreenTest {
 protected:
  CheckTreeTest() {
    for (const TreeNode& node : form.tree.Nodes()) form.tree.SetNodeImage(node.id, Check_Tree::kNone);
  }

  /// The images of root, left, right, a and b.
  std::string Images() const {
    std::vector<std::string> images;
    for (const int node : {root, left, right, a, b}) {
      images.push_back(form.tree.Nodes()[static_cast<std::size_t>(node)].image);
    }
    return Join(images, " ");
  }

  TreeForm form{forms};
  int root = form.tree.AddNode(-1, "root");
  int left = form.tree.AddNode(root, "left");
  int right = form.tree.AddNode(root, "right");
  int a = form.tree.AddNode(left, "a");
  int b = form.tree.AddNode(left, "b");
};

TEST_F(CheckTreeTest, EachTurnReachesEverythingBelowAndAbove) {
  struct Turn {
    int node;
    const char* images;
  };
  for (const Turn& turn : {Turn{a, "Some Some None All None"}, Turn{b, "Some All None All All"},
                           Turn{right, "All All All All All"}, Turn{a, "Some Some All None All"},
                           Turn{left, "All All All All All"},  // what was checked in part is checked wholly
                           Turn{root, "None None None None None"}, Turn{root, "All All All All All"},
                           Turn{left, "Some None All None None"}}) {
    Check_Tree::ProcessStateChange(form.tree, turn.node);
    EXPECT_EQ(Images(), turn.images) << "after " << turn.node;
  }
}

}  // namespace
}  // namespace luming
