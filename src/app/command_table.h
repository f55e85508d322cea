#pragma once

#include <vector>

#include "frame/command_table.h"
#include "frame/screen.h"

namespace luming {

/// @name All screens of the program
/// @{

/// Menus, tool bar and commands of the main window.
const CommandTable& MainCommands();
/// The screens that no command opens: the start of the program does, or another screen.
const std::vector<const Screen*>& FurtherScreens();

/// @}

}  // namespace luming
