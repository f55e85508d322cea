#include "desktop/workspace.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QPainter>
#include <QTabBar>

#include "desktop/glyphs.h"
#include "desktop/qt_text.h"
#include "desktop/themes.h"
#include "screen/forms.h"

namespace luming {
namespace {

constexpr int kMarkSize = 160;

/// A child window whose closing is the form's to decide.
class ChildFrame final : public QMdiSubWindow {
 public:
  explicit ChildFrame(FormWidget& child) {
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWidget(&child);
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();
    if (auto* child = dynamic_cast<FormWidget*>(widget())) {
      child->Enter([](Form& form) { form.UserClose(); });
    }
  }
};

FormWidget* ChildOf(const QMdiSubWindow* frame) {
  return frame ? dynamic_cast<FormWidget*>(frame->widget()) : nullptr;
}

}  // namespace

Workspace::Workspace(QWidget* parent) : QMdiArea(parent) {
  setFrameShape(NoFrame);
  setDocumentMode(true);
  setTabsMovable(true);
  setTabsClosable(true);
  setActivationOrder(ActivationHistoryOrder);
  UseTabs();
  connect(this, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* frame) {
    FormWidget* child = ChildOf(frame);
    if (!child || !child->form()) return;
    on_activated(*child->form());
    child->RestoreFocus();
  });
}

void Workspace::UseTabs() {
  if (viewMode() == TabbedView) return;
  setViewMode(TabbedView);
  if (auto* tabs = findChild<QTabBar*>()) {
    tabs->setExpanding(false);
    tabs->setFocusPolicy(Qt::NoFocus);
    tabs->setElideMode(Qt::ElideNone);
    tabs->installEventFilter(this);
  }
}

QMdiSubWindow* Workspace::FrameOf(const FormWidget& child) const {
  for (QMdiSubWindow* frame : subWindowList()) {
    if (frame->widget() == &child) return frame;
  }
  return nullptr;
}

void Workspace::ShowChild(FormWidget& child) {
  QMdiSubWindow* frame = FrameOf(child);
  if (!frame) {
    frame = new ChildFrame(child);
    addSubWindow(frame);
    frame->setWindowIcon(QIcon());
  }
  child.show();
  if (viewMode() == TabbedView) {
    frame->showMaximized();
  } else {
    frame->show();
  }
  setActiveSubWindow(frame);
  child.RestoreFocus();
}

void Workspace::HideChild(FormWidget& child) {
  QMdiSubWindow* frame = FrameOf(child);
  if (!frame) return;
  const bool was_in_front = frame == activeSubWindow();
  const bool was_maximised = frame->isMaximized();
  frame->hide();
  if (was_in_front) Uncover(was_maximised);
}

QMdiSubWindow* Workspace::TakeOut(FormWidget& child) {
  QMdiSubWindow* frame = FrameOf(child);
  if (!frame) return nullptr;
  const bool was_in_front = frame == activeSubWindow();
  const bool was_maximised = frame->isMaximized();
  removeSubWindow(frame);
  if (was_in_front) Uncover(was_maximised);
  return frame;
}

void Workspace::Uncover(bool maximised) {
  QMdiSubWindow* next = nullptr;
  for (QMdiSubWindow* frame : subWindowList(ActivationHistoryOrder)) {
    if (frame->isVisibleTo(viewport())) next = frame;
  }
  if (!next) return;
  setActiveSubWindow(next);
  if (maximised) next->showMaximized();
  if (FormWidget* child = ChildOf(next)) child->RestoreFocus();
}

void Workspace::MaximiseChild(FormWidget& child) {
  UseTabs();
  QMdiSubWindow* frame = FrameOf(child);
  if (!frame) return;
  setActiveSubWindow(frame);
  frame->showMaximized();
}

void Workspace::Arrange(Arrangement arrangement) {
  QMdiSubWindow* active = activeSubWindow();
  setViewMode(SubWindowView);
  for (QMdiSubWindow* frame : subWindowList()) {
    if (frame->isVisible()) frame->showNormal();
  }
  switch (arrangement) {
    case Arrangement::kCascade:
      cascadeSubWindows();
      break;
    case Arrangement::kTileHorizontally:
      Tile(Qt::Vertical);
      break;
    case Arrangement::kTileVertically:
      Tile(Qt::Horizontal);
      break;
    case Arrangement::kIcons:
      UseTabs();  // a tab is what an icon would be
      break;
  }
  if (active) setActiveSubWindow(active);
}

void Workspace::Tile(Qt::Orientation direction) {
  const std::vector<FormWidget*> children = Children();
  const int count = static_cast<int>(children.size());
  const QRect room = viewport()->rect();
  for (int at = 0; at < count; ++at) {
    const int from = (direction == Qt::Vertical ? room.height() : room.width()) * at / count;
    const int to = (direction == Qt::Vertical ? room.height() : room.width()) * (at + 1) / count;
    const QRect place =
        direction == Qt::Vertical ? QRect(0, from, room.width(), to - from) : QRect(from, 0, to - from, room.height());
    FrameOf(*children[static_cast<std::size_t>(at)])->setGeometry(place);
  }
}

std::vector<FormWidget*> Workspace::Children() const {
  std::vector<FormWidget*> children;
  for (QMdiSubWindow* frame : subWindowList(CreationOrder)) {
    FormWidget* child = ChildOf(frame);
    if (child && frame->isVisibleTo(viewport())) children.push_back(child);
  }
  return children;
}

FormWidget* Workspace::ActiveChild() const {
  return ChildOf(activeSubWindow());
}

void Workspace::SetBackPicture(const std::filesystem::path& file) {
  if (file == picture_file_) return;
  picture_file_ = file;
  picture_ = QPixmap(ToQt(file.string()));
  viewport()->update();
}

bool Workspace::eventFilter(QObject* watched, QEvent* event) {
  auto* tabs = dynamic_cast<QTabBar*>(watched);
  if (!tabs || event->type() != QEvent::ContextMenu) return QMdiArea::eventFilter(watched, event);
  const int at = tabs->tabAt(static_cast<QContextMenuEvent*>(event)->pos());
  const QList<QMdiSubWindow*> frames = subWindowList(CreationOrder);
  FormWidget* child = at >= 0 && at < frames.size() ? ChildOf(frames[at]) : nullptr;
  on_tab_menu(child ? child->form() : nullptr);
  return true;
}

void Workspace::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  const QRect room = viewport()->rect();
  painter.fillRect(room, CurrentTheme().chrome_deep);
  if (picture_.isNull()) {
    QRect mark(0, 0, kMarkSize, kMarkSize);
    mark.moveCenter(room.center());
    painter.setOpacity(0.12);
    painter.drawPixmap(mark, glyphs::OfProgram().pixmap(mark.size(), devicePixelRatio()));
    return;
  }
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QSize size = picture_.size().scaled(room.size(), Qt::KeepAspectRatioByExpanding);
  QRect place({}, size);
  place.moveCenter(room.center());
  painter.drawPixmap(place, picture_);
}

}  // namespace luming
