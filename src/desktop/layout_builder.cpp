#include "desktop/layout_builder.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSplitter>
#include <algorithm>
#include <map>

#include "desktop/form_widget.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"
#include "screen/text_box.h"

namespace luming {
namespace {

using Kind = Layout::Kind;

constexpr int kPixelsOfShare = 1000;  // more than a screen has, so that only the proportion counts

bool IsGrowingControl(const Control& control) {
  switch (control.Kind()) {
    case ControlKind::kGrid:
    case ControlKind::kTree:
    case ControlKind::kPicture:
      return true;
    case ControlKind::kTextBox:
      return static_cast<const TextBox&>(control).Options().multi_line;
    default:
      return false;
  }
}

/// Whether anything within takes free room in that direction.
bool Grows(const Layout& part, Qt::Orientation direction) {
  switch (part.kind) {
    case Kind::kControl:
      if ((direction == Qt::Vertical ? part.height : part.width) > 0) return false;
      return IsGrowingControl(*part.control);
    case Kind::kSpace:
    case Kind::kHidden:
      return false;
    case Kind::kSplitAcross:
    case Kind::kSplitDown:
      return true;
    default:
      return std::ranges::any_of(part.parts, [&](const Layout& inner) { return Grows(inner, direction); });
  }
}

int ShareOf(const Layout& part, Qt::Orientation direction) {
  if (part.stretch >= 0) return part.stretch;
  return Grows(part, direction) ? 1 : 0;
}

/// Builds the widgets of one form, depth first.
class Builder {
 public:
  explicit Builder(FormWidget& form) : form_(form) {}

  QWidget* Build(const Layout& part);
  /// Fields in the same number of columns stand in line with each other, wherever in the form they are.
  void AlignFields();

 private:
  /// Adds `part` with its caption in front to a row or column.
  void AddTo(QBoxLayout& box, const Layout& part, Qt::Orientation direction);
  QWidget* BuildBox(const Layout& part, QBoxLayout::Direction direction);
  QWidget* BuildFields(const Layout& part);
  QWidget* BuildGroup(const Layout& part);
  QWidget* BuildSplit(const Layout& part, Qt::Orientation orientation);
  QWidget* BuildControl(const Layout& part);
  QLabel* CaptionOf(const Layout& part);
  void ApplySize(QWidget& widget, const Layout& part);

  FormWidget& form_;
  std::multimap<int, QGridLayout*> fields_;  // by their number of columns
};

void Builder::ApplySize(QWidget& widget, const Layout& part) {
  if (part.width > 0) widget.setFixedWidth(metrics::EditorWidth(widget, part.width));
  if (part.height > 0) widget.setFixedHeight(metrics::LinesHeight(widget, part.height));
}

QLabel* Builder::CaptionOf(const Layout& part) {
  if (part.kind != Kind::kControl || part.bare) return nullptr;
  FieldView* view = form_.ViewOf(*part.control);
  if (!view) return nullptr;
  const bool has_words = !part.title.empty() || (view->WantsCaption() && !part.control->Caption().empty());
  if (!has_words) return nullptr;
  auto* label = new QLabel(&form_);
  label->setObjectName("caption");
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  view->SetCaptionLabel(label, ToQt(part.title));
  return label;
}

QWidget* Builder::BuildControl(const Layout& part) {
  FieldView* view = form_.ViewOf(*part.control);
  if (!view) return nullptr;
  ApplySize(*view->Widget(), part);
  return view->Widget();
}

void Builder::AddTo(QBoxLayout& box, const Layout& part, Qt::Orientation direction) {
  if (part.kind == Kind::kSpace) {
    box.addStretch(std::max(part.stretch, 1));
    return;
  }
  QLabel* caption = CaptionOf(part);
  QWidget* widget = Build(part);
  if (!widget) return;
  const int share = ShareOf(part, direction);
  if (!caption) {
    box.addWidget(widget, share);
    return;
  }
  if (direction == Qt::Horizontal) {
    box.addWidget(caption);
    box.addWidget(widget, share);
    return;
  }
  auto* pair = new QHBoxLayout;
  pair->setSpacing(metrics::kCaptionGap);
  pair->addWidget(caption);
  pair->addWidget(widget, 1);
  box.addLayout(pair, share);
}

QWidget* Builder::BuildBox(const Layout& part, QBoxLayout::Direction direction) {
  const Qt::Orientation orientation = direction == QBoxLayout::LeftToRight ? Qt::Horizontal : Qt::Vertical;
  auto* widget = new QWidget(&form_);
  auto* box = new QBoxLayout(direction, widget);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(metrics::kGap);
  for (const Layout& inner : part.parts) AddTo(*box, inner, orientation);
  ApplySize(*widget, part);
  return widget;
}

QWidget* Builder::BuildFields(const Layout& part) {
  auto* widget = new QWidget(&form_);
  auto* grid = new QGridLayout(widget);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(metrics::kCaptionGap);
  grid->setVerticalSpacing(metrics::kGap);
  const int columns = std::max(part.columns, 1);
  int place = 0;
  for (const Layout& inner : part.parts) {
    if (inner.kind == Kind::kHidden) continue;
    const int row = place / columns;
    const int pair = place % columns * 2;
    ++place;
    if (inner.kind == Kind::kSpace) continue;
    Layout rest = inner;
    QLabel* caption = CaptionOf(inner);
    // A row within a field: the caption of its first editor stands among the captions.
    if (inner.kind == Kind::kRow && !inner.parts.empty()) {
      caption = CaptionOf(inner.parts.front());
      if (caption) rest.parts.front().bare = true;
    }
    QWidget* editor = Build(rest);
    if (!editor) continue;
    if (caption && pair > 0) caption->setContentsMargins(metrics::kGap * 2, 0, 0, 0);
    if (caption) grid->addWidget(caption, row, pair);
    grid->addWidget(editor, row, pair + 1);
    if (ShareOf(inner, Qt::Vertical) > 0) grid->setRowStretch(row, 1);
  }
  for (int column = 0; column < columns; ++column) {
    grid->setColumnStretch(column * 2 + 1, 1);
  }
  fields_.emplace(columns, grid);
  ApplySize(*widget, part);
  return widget;
}

void Builder::AlignFields() {
  std::map<std::pair<int, int>, int> widest;
  const auto each_column = [&](const auto& visit) {
    for (const auto& [columns, grid] : fields_) {
      for (int column = 0; column < 2 * columns; ++column) visit(*grid, column, widest[{columns, column}]);
    }
  };
  each_column([](QGridLayout& grid, int column, int& width) {
    for (int row = 0; row < grid.rowCount(); ++row) {
      const QLayoutItem* item = grid.itemAtPosition(row, column);
      if (!item || !item->widget()) continue;
      item->widget()->ensurePolished();
      width = std::max(width, item->widget()->sizeHint().width());
    }
  });
  each_column([](QGridLayout& grid, int column, int width) { grid.setColumnMinimumWidth(column, width); });
}

QWidget* Builder::BuildGroup(const Layout& part) {
  auto* group = new QGroupBox(ToQt(part.title), &form_);
  auto* box = new QVBoxLayout(group);
  box->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kMargin);
  if (QWidget* inside = Build(part.parts.front())) box->addWidget(inside);
  ApplySize(*group, part);
  return group;
}

QWidget* Builder::BuildSplit(const Layout& part, Qt::Orientation orientation) {
  auto* split = new QSplitter(orientation, &form_);
  split->setChildrenCollapsible(false);
  split->setHandleWidth(metrics::kGap);
  QList<int> shares;
  for (const Layout& inner : part.parts) {
    QWidget* widget = Build(inner);
    if (!widget) continue;
    split->addWidget(widget);
    const int share = inner.stretch >= 0 ? inner.stretch : 1;
    split->setStretchFactor(split->count() - 1, share);
    shares.push_back(share * kPixelsOfShare);
  }
  split->setSizes(shares);  // in proportion, whatever the parts would like
  return split;
}

QWidget* Builder::Build(const Layout& part) {
  switch (part.kind) {
    case Kind::kControl:
      return BuildControl(part);
    case Kind::kRow:
      return BuildBox(part, QBoxLayout::LeftToRight);
    case Kind::kColumn:
      return BuildBox(part, QBoxLayout::TopToBottom);
    case Kind::kFields:
      return BuildFields(part);
    case Kind::kGroup:
      return BuildGroup(part);
    case Kind::kSplitAcross:
      return BuildSplit(part, Qt::Horizontal);
    case Kind::kSplitDown:
      return BuildSplit(part, Qt::Vertical);
    case Kind::kSpace:
    case Kind::kHidden:
      return nullptr;
  }
  return nullptr;
}

}  // namespace

void BuildLayout(FormWidget& form, const Layout& arrangement) {
  auto* box = new QVBoxLayout(&form);
  const int margin = form.form()->Kind() == WindowKind::kDialog ? metrics::kDialogMargin : metrics::kMargin;
  box->setContentsMargins(margin, margin, margin, margin);
  Builder builder(form);
  if (QWidget* widget = builder.Build(arrangement)) box->addWidget(widget);
  builder.AlignFields();
}

}  // namespace luming
