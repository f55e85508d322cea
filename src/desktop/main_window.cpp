#include "desktop/main_window.h"

#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <algorithm>

#include "desktop/glyphs.h"
#include "desktop/qt_text.h"
#include "screen/forms.h"

namespace luming {
namespace {

constexpr QSize kUsualSize{1280, 800};

}  // namespace

MainWindow::MainWindow(MainFrame& frame, ModelGuard& guard)
    : frame_(&frame), guard_(guard), workspace_(new Workspace(this)) {
  setObjectName("mainWindow");
  setCentralWidget(workspace_);
  setContextMenuPolicy(Qt::NoContextMenu);
  resize(kUsualSize);
  BuildMenus();
  BuildToolBar();
  BuildStatusBar();
  workspace_->on_tab_menu = [this](Form* item) { Enter([item](MainFrame& window) { window.Workspace_RClick(item); }); };
  workspace_->on_activated = [this](Form& form) {
    Enter([&form](MainFrame& window) { window.Registry().BroughtToFront(form); });
  };
  frame.SetView(this);
  LookChanged();
}

MainWindow::~MainWindow() {
  Detach();
}

void MainWindow::Detach() {
  if (!frame_) return;
  frame_->SetView(nullptr);
  frame_ = nullptr;
}

void MainWindow::Enter(const std::function<void(MainFrame&)>& entry, Work work) {
  if (!frame_) return;
  guard_.Enter(
      [this, &entry] {
        Forms::HandlerScope scope(frame_->Registry());
        entry(*frame_);
      },
      work);
}

QAction* MainWindow::MakeAction(const MenuEntry& entry, QObject* parent) {
  auto* action = new QAction(glyphs::ForCommand(entry.id), ToQt(entry.caption), parent);
  action->setData(entry.id);
  connect(action, &QAction::triggered, this, [this, command = entry.id] {
    Enter([command](MainFrame& window) { window.Execute(command); }, Work::kLong);
  });
  return action;
}

void MainWindow::ShowState(QAction& action) {
  if (!frame_) return;
  const CommandState state = frame_->StateOf(action.data().toInt());
  action.setEnabled(state.enabled);
  action.setCheckable(state.checked);
  action.setChecked(state.checked);
}

void MainWindow::BuildMenus() {
  for (const MenuEntry& entry : frame_->Menus()) {
    FillMenu(*menuBar()->addMenu(ToQt(entry.caption)), entry.children);
  }
}

void MainWindow::FillMenu(QMenu& menu, const std::vector<MenuEntry>& entries) {
  const auto lists_windows = [](const MenuEntry& entry) { return entry.id == MainFrame::kWindowListId; };
  const bool has_list = std::ranges::any_of(entries, lists_windows);
  for (const MenuEntry& entry : entries) {
    if (entry.starts_group) menu.addSeparator();
    if (!entry.children.empty()) {
      FillMenu(*menu.addMenu(ToQt(entry.caption)), entry.children);
    } else if (!lists_windows(entry)) {
      menu.addAction(MakeAction(entry, &menu));
    }
  }
  connect(&menu, &QMenu::aboutToShow, this, [this, &menu, has_list] {
    Enter([this, &menu](MainFrame&) {
      for (QAction* action : menu.actions()) {
        if (action->data().isValid()) ShowState(*action);
      }
    });
    if (has_list) AddWindowList(menu);
  });
}

void MainWindow::AddWindowList(QMenu& menu) {
  for (QAction* action : menu.actions()) {
    if (action->property("window").isValid()) delete action;
  }
  int number = 0;
  for (FormWidget* child : workspace_->Children()) {
    ++number;
    const QString mnemonic = number < 10 ? QString("&%1  ").arg(number) : QString("%1  ").arg(number);
    QAction* action = menu.addAction(mnemonic + child->windowTitle());
    action->setProperty("window", true);
    action->setCheckable(true);
    action->setChecked(child == workspace_->ActiveChild());
    connect(action, &QAction::triggered, this, [this, child] { workspace_->ShowChild(*child); });
  }
  if (number > 0) return;
  QAction* none = menu.addAction("（没有打开的窗口）");
  none->setProperty("window", true);
  none->setEnabled(false);
}

void MainWindow::BuildToolBar() {
  tool_bar_ = addToolBar("标准工具条");
  tool_bar_->setMovable(false);
  tool_bar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  tool_bar_->setIconSize({22, 22});
  for (const MenuEntry& entry : frame_->ToolBarButtons()) {
    if (entry.starts_group) tool_bar_->addSeparator();
    tool_bar_->addAction(MakeAction(entry, tool_bar_));
  }
}

void MainWindow::BuildStatusBar() {
  statusBar()->setSizeGripEnabled(false);
  for (QLabel*& panel : panels_) {
    panel = new QLabel(this);
    if (&panel == &panels_.front()) {
      statusBar()->addWidget(panel, 1);
    } else {
      panel->setProperty("look", "panel");
      statusBar()->addPermanentWidget(panel);
    }
  }
}

void MainWindow::LookChanged() {
  setWindowTitle(ToQt(frame_->Caption()));
  for (QAction* action : tool_bar_->actions()) {
    if (action->data().isValid()) ShowState(*action);
  }
  tool_bar_->setVisible(frame_->ToolBarVisible());
  statusBar()->setVisible(frame_->StatusBarVisible());
  for (std::size_t at = 0; at < panels_.size(); ++at) {
    const QString text = ToQt(frame_->StatusPanel(static_cast<int>(at) + 1));
    panels_[at]->setText(text);
    panels_[at]->setVisible(at == 0 || !text.isEmpty());
  }
  workspace_->SetBackPicture(frame_->BackPicture());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Enter([](MainFrame& window) { window.UserClose(); });
}

bool MainWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate && frame_) {
    Enter([](MainFrame& window) { window.Registry().BroughtToFront(window); });
    if (FormWidget* child = workspace_->ActiveChild()) child->RestoreFocus();
  }
  return QMainWindow::event(event);
}

}  // namespace luming
