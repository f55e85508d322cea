#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QToolBar>
#include <array>

#include "desktop/model_guard.h"
#include "desktop/workspace.h"
#include "screen/main_frame.h"

namespace luming {

/// Draws the main window: menus, tool bar, workspace and status bar as its form tells them.
class MainWindow final : public QMainWindow, public FormView {
 public:
  MainWindow(MainFrame& frame, ModelGuard& guard);
  ~MainWindow() override;

  Workspace& workspace() { return *workspace_; }
  /// The form goes away: no event reaches it from here on.
  void Detach();

  void ControlChanged(Control&) override {}
  void FocusChanged(Control*) override {}
  void LookChanged() override;

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void Enter(const std::function<void(MainFrame&)>& entry, Work work = Work::kBrief);
  void BuildMenus();
  void FillMenu(QMenu& menu, const std::vector<MenuEntry>& entries);
  void AddWindowList(QMenu& menu);
  QAction* MakeAction(const MenuEntry& entry, QObject* parent);
  void BuildToolBar();
  void BuildStatusBar();
  void ShowState(QAction& action);

  MainFrame* frame_;
  ModelGuard& guard_;
  Workspace* workspace_;
  QToolBar* tool_bar_ = nullptr;
  std::array<QLabel*, 4> panels_{};
};

}  // namespace luming
