#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "screen/form.h"

namespace luming {

struct CommandState {
  bool enabled = true;
  bool checked = false;
};

/// What the desktop needs of the main window to draw it: menus, tool bar, status panels, workspace. The main window
/// itself derives from it.
class MainFrame : public Form {
 public:
  MainFrame(Forms& forms, std::string name, std::string caption)
      : Form(forms, std::move(name), std::move(caption), WindowKind::kMain) {}

  virtual const std::vector<MenuEntry>& Menus() const = 0;
  /// The entry whose place the list of open windows takes.
  static constexpr int kWindowListId = 35000;
  virtual const std::vector<MenuEntry>& ToolBarButtons() const = 0;
  virtual CommandState StateOf(int command) const = 0;
  virtual void Execute(int command) = 0;
  /// The operator right-clicked the tab of a child form; null when beside all tabs.
  virtual void Workspace_RClick(Form* item) = 0;

  static constexpr int kPanelCount = 4;
  /// Panels are numbered from 1 as on the screen.
  const std::string& StatusPanel(int number) const { return panels_.at(static_cast<std::size_t>(number - 1)); }
  bool ToolBarVisible() const { return tool_bar_visible_; }
  bool StatusBarVisible() const { return status_bar_visible_; }
  int Theme() const { return theme_; }
  const std::filesystem::path& BackPicture() const { return back_picture_; }

  Layout Arrange() const override { return Column({}); }

 protected:
  void SetStatusPanel(int number, std::string text);
  void SetToolBarVisible(bool visible);
  void SetStatusBarVisible(bool visible);
  void SetThemeNumber(int theme);
  void SetBackPicture(std::filesystem::path file);

 private:
  void FrameChanged();  ///< tells the view by LookChanged

  std::array<std::string, kPanelCount> panels_;
  bool tool_bar_visible_ = true;
  bool status_bar_visible_ = true;
  int theme_ = 1;
  std::filesystem::path back_picture_;
};

}  // namespace luming
