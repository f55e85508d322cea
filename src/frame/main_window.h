#pragma once

#include <string>
#include <vector>

#include "frame/app_context.h"
#include "frame/command_table.h"
#include "screen/main_frame.h"

namespace luming {

/// The main window: menus, tool bar, workspace, status bar. All screens are reached through its numbered commands.
class mainfrm : public MainFrame {
 public:
  static constexpr const char* kName = "mainfrm";
  explicit mainfrm(AppContext& app);

  const std::vector<MenuEntry>& Menus() const override { return app_.commands.menus; }
  const std::vector<MenuEntry>& ToolBarButtons() const override { return app_.commands.tool_bar; }
  CommandState StateOf(int command) const override;
  /// Runs a command of the table; an unknown or awaited one does nothing. Errors are ignored.
  void Execute(int command) override;
  void Workspace_RClick(Form* item) override;

  /// Text of status panel 4.
  void ShowOperator(std::string text);

  // What the table's own commands of the main window do.
  void SetTheme(int theme);
  void ToggleToolBar();
  void ToggleStatusBar();
  void CloseActiveChild();
  void CloseAllChildren();
  void CloseOtherChildren();
  void SwitchOperator();
  void AskToExit();
  void OpenManual();
  void StartCalculator();

 protected:
  void Load() override;
  void ClosedByFrame() override;

 private:
  void FillStatusPanels();
  void WarnOfExpiry();
  void LoadBackPicture();

  AppContext& app_;
};

/// Ids of the commands whose state the main window knows.
namespace command {
inline constexpr int kFirstTheme = 1001, kLastTheme = 1004;
inline constexpr int kToolBar = 1101, kStatusBar = 1103;
inline constexpr int kCloseChild = 6661, kCloseAll = 6662, kCloseOthers = 6663, kWorkspaceActions = 35002;
inline constexpr int kCascade = 801, kTileHorizontally = 802, kTileVertically = 803;
}  // namespace command

}  // namespace luming
