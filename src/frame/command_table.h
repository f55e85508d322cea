#pragma once

#include <functional>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "frame/screen.h"
#include "platform/desktop.h"

namespace luming {

/// One numbered command of the main window.
struct Command {
  int id;
  std::string screen;                       ///< the screen that it opens; empty for what the main window does itself
  std::function<void(AppContext&)> action;  ///< empty while the program has no such screen: the command is greyed
};

/// Menus, tool bar and commands of the main window. The one instance stands in app/command_table.cpp.
struct CommandTable {
  std::vector<MenuEntry> menus;
  std::vector<MenuEntry> tool_bar;
  std::vector<Command> commands;
  /// Shows the expiry list and lets it fill itself for the start of the program; no right is tested here. Empty while
  /// there is no such screen.
  std::function<void(AppContext&)> expiry_warning;

  const Command* Find(int id) const;
};

/// @name Rows of the table
/// @{

/// A command that opens a screen.
inline Command Opens(int id, const Screen& screen) {
  return {id, screen.name, screen.open};
}

/// The same command behind a right: without it the refusal shows and nothing opens.
Command Behind(RightKey key, Command command);

/// A command whose screen the program does not have yet.
inline Command Awaited(int id, std::string screen) {
  return {id, std::move(screen), {}};
}

/// @}

}  // namespace luming
