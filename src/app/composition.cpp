#include "app/composition.h"

#include <fstream>

#include "app/absent_output.h"
#include "app/command_table.h"
#include "app/connection_router.h"
#include "frame/ini_file.h"
#include "frame/local_files.h"
#include "frame/main_window.h"
#include "frame/startup.h"
#include "localdb/local_connection.h"
#include "office/office_workbooks.h"
#include "output/grid_command.h"
#include "platform/tracing_connection.h"
#include "screen/grid.h"
#include "sqlserver/server_connection.h"

namespace luming {

namespace {

std::filesystem::path WithoutTrailingSlash(const std::filesystem::path& directory) {
  const std::filesystem::path whole = std::filesystem::absolute(directory).lexically_normal();
  return whole.has_filename() ? whole : whole.parent_path();
}

}  // namespace

Program::Program(Desktop& desktop, Printing& printing, Machine machine, const std::filesystem::path& home)
    : desktop_(desktop),
      printing_(printing),
      workbooks_(std::make_unique<OfficeWorkbooks>(printing)),
      home_(WithoutTrailingSlash(home)) {
  if (machine == Machine::kUntouched) return;
  machine_ = std::make_unique<SystemDevices>(clock_, VoiceLibrary({ProgramDirectory(), home_}));
}

Program::Program(Desktop& desktop, Machine machine, const std::filesystem::path& home)
    : Program(desktop, NoPrinter::Instance(), machine, home) {}

Program::~Program() = default;

void Program::TraceTo(const std::filesystem::path& file) {
  if (!std::ofstream(file, std::ios::app)) throw Failure(failure::kFileAccess, "无法写入跟踪文件：" + file.string());
  trace_file_ = file;
}

void Program::SetHome(const std::filesystem::path& directory) {
  if (OpenForms()) throw Failure(failure::kInvalidCall, "程序已经启动，不能再更换程序目录。");
  home_ = WithoutTrailingSlash(directory);
  beside_.reset();
}

void Program::SetClock(const DateTime& now) {
  clock_.Set(now);
}

void Program::Start(const std::string& hand_off) {
  if (OpenForms()) throw Failure(failure::kInvalidCall, "程序已经启动。");
  context_.reset();
  beside_.reset();
  Devices& devices = machine_ ? static_cast<Devices&>(*machine_) : untouched_;
  context_ = std::make_unique<AppContext>(
      Ports{desktop_, devices, printing_, *workbooks_, clock_}, home_,
      [this] {
        return std::make_unique<TracingConnection>(NewConnection(home_, clock_),
                                                   [this](const TracedStatement& sent) { Record(sent); });
      },
      MainCommands());
  context_->CommandLine = hand_off;
  context_->forms.grid_command = [this](Grid& grid, GridCommand command) { RunGridCommand(*context_, grid, command); };
  Main(*context_);
}

void Program::ExecuteCommand(int command) {
  auto* frame = context_ ? context_->forms.FindAs<mainfrm>() : nullptr;
  if (!frame) throw Failure(failure::kInvalidCall, "主窗口没有打开，不能执行命令 " + std::to_string(command) + "。");
  frame->Execute(command);
}

Forms* Program::OpenForms() {
  return context_ && !context_->Ended ? &context_->forms : nullptr;
}

Recordset Program::RunBeside(std::string_view sql) {
  if (!beside_ || !beside_->IsOpen()) {
    beside_ = NewConnection(home_, clock_);
    const bool connected = OpenForms() && !context_->ConnStr.empty();
    beside_->Open(connected ? context_->ConnStr : ConnectionFile(home_).Read(1));
  }
  return beside_->Execute(sql);
}

void Program::ForgetSent() {
  statements_.clear();
  untouched_.spoken.clear();
}

void Program::WriteSetting(const std::string& section, const std::string& key, const std::string& value) {
  CIniFile ini;
  ini.SpecifyIni(SettingsFile(home_));
  ini.WriteString(section, key, value);
  if (!ini.ErrorMsg().empty()) throw Failure(failure::kFileAccess, ini.ErrorMsg() + "：" + SettingsFile(home_));
}

std::string Program::ReadSetting(const std::string& section, const std::string& key) {
  CIniFile ini;
  ini.SpecifyIni(SettingsFile(home_));
  int size = 1000;
  return ini.ReadString(section, key, size);
}

std::unique_ptr<Connection> NewConnection(const std::filesystem::path& home, const Clock& clock) {
  const auto embedded = [home, &clock] { return std::make_unique<LocalConnection>(home.string(), clock); };
  const auto server = [] { return std::make_unique<ServerConnection>(); };
  return std::make_unique<RoutedConnection>(embedded, server);
}

void Program::Record(const TracedStatement& statement) {
  if (!machine_) statements_.push_back(statement);
  if (trace_file_.empty()) return;
  std::ofstream(trace_file_, std::ios::app)
      << statement.took.count() << " us\t" << statement.rows << " rows\t" << statement.sql
      << (statement.failure.empty() ? "" : "\t") << statement.failure << '\n';
}

std::filesystem::path ProgramDirectory() {
  std::error_code unknown;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
  return unknown ? std::filesystem::current_path() : program.parent_path();
}

}  // namespace luming
