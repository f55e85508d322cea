#include "frame/startup.h"

#include <optional>

#include "frame/connection_dialog.h"
#include "frame/ini_file.h"
#include "frame/input_method.h"
#include "frame/local_files.h"
#include "frame/login.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::string_view kLauncher = "云杉启动器";
constexpr std::size_t kShortestPath = 3;  ///< a path up to this length is a drive's root

void StartByHandOff(AppContext& app) {
  const HandOff hand_off = ParseHandOff(app.CommandLine);
  app.ConnStr = hand_off.connection;
  if (!app.Cn->IsOpen()) app.Cn->Open(app.ConnStr);
  app.forms.Get<password>(app).TestUserPassword(hand_off.name, hand_off.typed);
}

void StartByDialog(AppContext& app) {
  app.ConnStr = ReadConnStr(app);
  if (!app.Cn->IsOpen()) app.Cn->Open(app.ConnStr);
  app.forms.Get<password>(app).Show();
}

/// @return what went wrong, in the words for the connection dialog
std::optional<std::string> TryStart(AppContext& app) {
  try {
    app.Cn = app.CreateConnection();
    UseOperatorLayout(app);
    LoadSkin(app);
    ReadWarehouseType(app);
    if (Trim(app.CommandLine).empty()) {
      StartByDialog(app);
    } else {
      StartByHandOff(app);
    }
    return std::nullopt;
  } catch (const std::exception& fault) {
    return AsFailure(fault).description();
  }
}

}  // namespace

HandOff ParseHandOff(std::string_view tail) {
  const auto cut = [&tail] {
    const std::size_t end = tail.find('$');
    if (end == std::string_view::npos) throw StandardFailure(failure::kInvalidCall);
    const std::string_view field = tail.substr(0, end);
    tail.remove_prefix(end + 1);
    return std::string(field);
  };
  HandOff fields;
  fields.connection = cut();
  fields.name = cut();
  fields.typed = cut();
  return fields;
}

void Main(AppContext& app) {
  Forms::HandlerScope scope(app.forms);
  std::optional<std::string> failure = TryStart(app);
  while (failure && AskForConnection(app, *failure)) failure = TryStart(app);
}

void ExitApp(AppContext& app) {
  Forms::HandlerScope scope(app.forms);
  const auto whatever_fails = [](const auto& step) {
    try {
      step();
    } catch (...) {
    }
  };
  if (!app.Ended) {
    app.Ended = true;
    whatever_fails([&] {
      if (app.Cn) app.Cn->Close();
    });
    whatever_fails([&] { app.forms.UnloadAll(); });
    app.Cn.reset();
    app.desktop.EndProcess();
  }
  throw ProcessEnded{};
}

void EndWithoutForms(AppContext& app) {
  if (app.forms.All().empty()) ExitApp(app);
}

void ReadWarehouseType(AppContext& app) {
  CIniFile ini;
  ini.SpecifyIni(SettingsFile(app.AppPath));
  int size = 200;
  app.KFMC = ini.ReadString("配置", "药库类型", size);
}

void LoadSkin(AppContext& app, std::string_view program_name) {
  try {
    const std::filesystem::path home = program_name == kLauncher ? app.AppPath : ParentDirectory(app);
    CIniFile ini;
    ini.SpecifyIni((home / "Sys.ini").string());
    int size = 100;
    const std::string name = ini.ReadString("Skin", "SkinName", size);
    if (ini.ReadInt("Skin", "UseSkin") == 1) app.desktop.AttachSkin(home / "SKIN" / name);
  } catch (const std::exception&) {
  }
}

std::filesystem::path ParentDirectory(const AppContext& app) {
  const std::string path = app.AppPath.string();
  if (CharCount(path) <= kShortestPath) return {};
  const std::size_t last = path.find_last_of("/\\");
  return last == std::string::npos ? std::filesystem::path() : std::filesystem::path(path.substr(0, last + 1));
}

std::string SettingsFile(const std::filesystem::path& app_path) {
  return (app_path / "LUMN.ini").string();
}

}  // namespace luming
