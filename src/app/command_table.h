#pragma once

#include "frame/command_table.h"

namespace luming {

/// Menus, tool bar and commands of the main window: all screens of the program stand here.
const CommandTable& MainCommands();

}  // namespace luming
