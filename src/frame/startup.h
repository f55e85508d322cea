#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "frame/app_context.h"

namespace luming {

/// The entry routine: connects by the command tail's hand-off or by the connection file and logs in. A failure brings
/// up the connection dialog; its retry runs all of this again, on a new connection.
void Main(AppContext& app);

/// What the suite's launcher passes on the command line, each field followed by "$".
struct HandOff {
  std::string connection;
  std::string name;
  std::string typed;
};

/// What stands behind the third "$" does not matter. Failure kInvalidCall when one of the three is missing.
HandOff ParseHandOff(std::string_view tail);

/// The orderly end: closes the connection, unloads every form, ends the process. Throws ProcessEnded.
[[noreturn]] void ExitApp(AppContext& app);

/// Without any form left nobody could end the process: it ends by itself.
void EndWithoutForms(AppContext& app);

/// Storehouse of the settings file, until one is chosen.
void ReadWarehouseType(AppContext& app);

/// Attaches the suite's skin if its settings ask for one. Errors are ignored.
/// @param program_name a program of the launcher's name looks in its own directory
void LoadSkin(AppContext& app, std::string_view program_name = "luming");

/// Directory above the application's, where the suite's shared files lie; empty for an application at the root.
std::filesystem::path ParentDirectory(const AppContext& app);

/// The program's own settings, in its application directory.
std::string SettingsFile(const std::filesystem::path& app_path);

}  // namespace luming
