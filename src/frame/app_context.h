#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "frame/user_rights.h"
#include "platform/database.h"
#include "platform/desktop.h"
#include "platform/devices.h"
#include "platform/printing.h"
#include "platform/workbook.h"
#include "screen/forms.h"
#include "util/clock.h"

namespace luming {

struct CommandTable;

/// What the program reaches its surroundings through; all of it outlives the context.
struct Ports {
  Desktop& desktop;
  Devices& devices;
  Printing& printing;
  Workbooks& workbooks;
  const Clock& clock;
};

/// The process-wide state that every screen reads, and the ports it works through. One instance; plain variables, each
/// written by the routine named at it and read by everyone. A screen of class T is reached as `app.forms.Get<T>(app)`.
struct AppContext {
  AppContext(const Ports& ports, std::filesystem::path app_path,
             std::function<std::unique_ptr<Connection>()> connection_factory, const CommandTable& command_table)
      : desktop(ports.desktop),
        devices(ports.devices),
        printing(ports.printing),
        workbooks(ports.workbooks),
        clock(ports.clock),
        AppPath(std::move(app_path)),
        CreateConnection(std::move(connection_factory)),
        commands(command_table),
        forms(ports.desktop, ports.clock) {}

  Desktop& desktop;
  Devices& devices;
  Printing& printing;
  Workbooks& workbooks;
  const Clock& clock;
  const std::filesystem::path AppPath;  ///< the application directory
  const std::function<std::unique_ptr<Connection>()> CreateConnection;
  const CommandTable& commands;  ///< outlives the context

  std::string CommandLine;  ///< the command tail of the process
  /// The one database connection; `Main` creates it, `ExitApp` releases it. A retry of the start puts a new one in its
  /// place while callers wait, so whoever keeps it across a dialog keeps a copy of the pointer.
  std::shared_ptr<Connection> Cn;
  std::string ConnStr;      ///< connection string in use; `Main`
  User_qx CurUser;          ///< operator and rights; login
  std::string KFMC;         ///< storehouse worked in; `ReadWarehouseType`, then `Frm_CheckYK`
  std::int32_t IME = 0;     ///< keyboard layout handle; login
  std::string SearchType;   ///< default search mode of the pickers; login
  std::string ReportUnit;   ///< unit name on reports and in status panel 2; login, before the main window shows
  bool SwitchUser = false;  ///< the login dialog was reopened from the main window; never reset
  bool Ended = false;       ///< `ExitApp` has run

  /// The save under way, see `InTransaction`.
  struct {
    bool running = false;
    bool lost = false;  ///< its connection was opened anew meanwhile: nothing of it may stay
  } save;

  /// Unloaded before the connection goes.
  Forms forms;

  static constexpr const char* kTitle = "鹿鸣仓管系统";
};

}  // namespace luming
