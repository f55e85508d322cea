#include <QGuiApplication>
#include <QSignalBlocker>
#include <QTimer>
#include <QTreeWidget>

#include "desktop/field_view.h"
#include "desktop/form_widget.h"
#include "desktop/glyphs.h"
#include "desktop/qt_text.h"
#include "screen/tree.h"

namespace luming {
namespace {

/// Rebuilds its nodes once for any number of changes that come in one go.
class TreeFieldView final : public TypedView<Tree> {
 public:
  TreeFieldView(FormWidget& host, Tree& control) : TypedView(host, control), widget_(new QTreeWidget(&host)) {
    widget_->setHeaderHidden(true);
    widget_->setUniformRowHeights(true);
    widget_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    settle_.setSingleShot(true);
    settle_.setInterval(0);
    QObject::connect(&settle_, &QTimer::timeout, widget_, [this] { Settle(); });
    QObject::connect(widget_, &QTreeWidget::currentItemChanged, widget_, [this](QTreeWidgetItem* item) {
      const bool by_keyboard = QGuiApplication::mouseButtons() == Qt::NoButton;
      if (item && by_keyboard) Select(item);
    });
    QObject::connect(widget_, &QTreeWidget::itemClicked, widget_, [this](QTreeWidgetItem* item) { Select(item); });
    QObject::connect(widget_, &QTreeWidget::itemDoubleClicked, widget_, [this](QTreeWidgetItem* item) {
      host_.Enter([&](Form&) { Field()->node_double_click.Fire(IdOf(item)); });
    });
    QObject::connect(widget_, &QTreeWidget::itemExpanded, widget_,
                     [this](QTreeWidgetItem* item) { Expand(item, true); });
    QObject::connect(widget_, &QTreeWidget::itemCollapsed, widget_,
                     [this](QTreeWidgetItem* item) { Expand(item, false); });
  }
  QWidget* Widget() override { return widget_; }
  bool WantsCaption() const override { return false; }
  void Refresh() override {
    RefreshCommon();
    settle_.start();
  }
  void Detach() override {
    settle_.stop();
    TypedView::Detach();
  }
  void Settle() override {
    settle_.stop();
    if (!Field()) return;
    const QSignalBlocker quiet(widget_);
    if (!SameNodes()) Rebuild();
    for (std::size_t id = 0; id < items_.size(); ++id) {
      if (!items_[id]) continue;
      const TreeNode& node = Field()->Nodes()[id];
      items_[id]->setText(0, ToQt(node.text));
      items_[id]->setIcon(0, glyphs::OfNode(node.image));
      items_[id]->setExpanded(node.expanded);
    }
    const int selected = Field()->Selected();
    widget_->setCurrentItem(selected >= 0 ? items_.at(static_cast<std::size_t>(selected)) : nullptr);
  }
  bool KeyAfterModel(const QKeyEvent& event) override {
    return event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  }

 private:
  static int IdOf(const QTreeWidgetItem* item) { return item->data(0, Qt::UserRole).toInt(); }

  void Expand(QTreeWidgetItem* item, bool expanded) {
    host_.Enter([&](Form&) { Field()->SetExpanded(IdOf(item), expanded); });
  }

  void Select(const QTreeWidgetItem* item) {
    host_.Enter([&](Form&) { Field()->UserSelect(IdOf(item)); });
  }

  bool SameNodes() const {
    const auto& nodes = Field()->Nodes();
    if (nodes.size() != shown_.size()) return false;
    for (std::size_t id = 0; id < nodes.size(); ++id) {
      if (nodes[id].parent != shown_[id].parent || nodes[id].removed != shown_[id].removed) return false;
    }
    return true;
  }

  void Rebuild() {
    widget_->clear();
    shown_ = Field()->Nodes();
    items_.assign(shown_.size(), nullptr);
    for (std::size_t id = 0; id < shown_.size(); ++id) {
      const TreeNode& node = shown_[id];
      if (node.removed) continue;
      auto* item = node.parent < 0 ? new QTreeWidgetItem(widget_)
                                   : new QTreeWidgetItem(items_.at(static_cast<std::size_t>(node.parent)));
      item->setData(0, Qt::UserRole, static_cast<int>(id));
      items_[id] = item;
    }
  }

  QTreeWidget* widget_;
  QTimer settle_;
  std::vector<TreeNode> shown_;
  std::vector<QTreeWidgetItem*> items_;
};

}  // namespace

std::unique_ptr<FieldView> MakeTreeView(FormWidget& host, Tree& control) {
  return std::make_unique<TreeFieldView>(host, control);
}

}  // namespace luming
