#include "frame/connection_dialog.h"

#include <array>

#include "frame/screens.h"
#include "frame/startup.h"

namespace luming {

namespace {

constexpr Colour kCalmBlue = 0xC5DDFF;
constexpr Colour kRed = 0xFF0000;

}  // namespace

LinkDatabaseErr::LinkDatabaseErr(AppContext& app)
    : Form(app.forms, kName, "数据库连接错误", WindowKind::kDialog), app_(app) {}

void LinkDatabaseErr::Load() {
  ShowFields(false);
  LoadConnFields();
  SetBackColour(kCalmBlue);
  ErrInfoShow.SetBackColour(kCalmBlue);
  ErrInfoShow.SetTextColour(kRed);
  ListServers();
}

void LinkDatabaseErr::ShowFields(bool shown) {
  const std::array<Control*, 5> fields = {&TxtServerName, &TxtDatabaseName, &TxtUser, &TxtPassword, &Command4};
  for (Control* field : fields) field->SetVisible(shown);
}

void LinkDatabaseErr::LoadConnFields() {
  std::array<std::string, ConnectionFile::kPassword + 1> records;
  const auto trapped = [this](auto&& step) {
    try {
      step();
    } catch (const Failure& failure) {
      app_.desktop.MsgBox({"出错信息:" + failure.description(), 0, "读取连接串时出错!"});
    }
  };
  trapped([&] {
    const ConnectionFile file(app_.AppPath);
    for (int record = ConnectionFile::kServer; record <= ConnectionFile::kPassword; ++record) {
      trapped([&] { records[static_cast<std::size_t>(record)] = file.Read(record); });
    }
  });
  TxtServerName.SetText(records[ConnectionFile::kServer]);
  TxtDatabaseName.SetText(records[ConnectionFile::kDatabase]);
  TxtUser.SetText(records[ConnectionFile::kUser]);
  TxtPassword.SetText(records[ConnectionFile::kPassword]);
}

std::string LinkDatabaseErr::GetConectionstr() const {
  return ConnectionStringOf({TxtServerName.Text(), TxtDatabaseName.Text(), TxtUser.Text(), TxtPassword.Text()});
}

void LinkDatabaseErr::SaveConnFields() {
  const auto trapped = [this](auto&& step) {
    try {
      step();
    } catch (const Failure& failure) {
      app_.desktop.MsgBox({"出错信息：" + failure.description(), 0, "读连接字符串时出错"});
    }
  };
  trapped([&] {
    ConnectionFile file(app_.AppPath);
    trapped([&] { file.Write(ConnectionFile::kConnectionString, GetConectionstr()); });
    trapped([&] { file.Write(ConnectionFile::kServer, TxtServerName.Text()); });
    trapped([&] { file.Write(ConnectionFile::kDatabase, TxtDatabaseName.Text()); });
    trapped([&] { file.Write(ConnectionFile::kUser, TxtUser.Text()); });
    trapped([&] { file.Write(ConnectionFile::kPassword, TxtPassword.Text()); });
    file.Save();
  });
}

/// A network that gives no answer adds no names.
void LinkDatabaseErr::ListServers() {
  try {
    for (const std::string& server : app_.devices.ListServers()) TxtServerName.AddItem(server);
  } catch (const Failure&) {
  }
}

void LinkDatabaseErr::ButSet_Click() {
  ShowFields(true);
}

void LinkDatabaseErr::ButRec_Click() {
  state_ = kStart;
  SaveConnFields();
  Unload();
}

void LinkDatabaseErr::ButExit_Click() {
  ExitApp(app_);
}

void LinkDatabaseErr::ClosedByFrame() {
  ButExit_Click();
}

void LinkDatabaseErr::Command4_Click() {
  TxtServerName.SetText(app_.devices.ComputerName());
  TxtDatabaseName.SetText("lumndata");
  TxtUser.SetText("sa");
}

void LinkDatabaseErr::Command1_Click() {
  UserKey({.code = key::kF1});
}

Layout LinkDatabaseErr::Arrange() const {
  return Column({
      ShowTitle,
      Layout(ErrInfoShow).Height(4),
      Row({Command1, Space(), ButSet, ButRec, ButExit}),
      Fields(1, {TxtServerName, TxtDatabaseName, TxtUser, TxtPassword}),
      Row({Command4, Space()}),
  });
}

bool AskForConnection(AppContext& app, const std::string& description) {
  Forms::HandlerScope scope(app.forms);
  auto& dialog = app.forms.Get<LinkDatabaseErr>(app);
  dialog.ErrInfoShow.SetCaption(description);
  dialog.ShowModal();
  return dialog.RetryChosen();
}

void RepairConnection(AppContext& app, const std::string& description) {
  if (AskForConnection(app, description)) Main(app);
}

const Screen kConnectionDialog = ModalScreen<LinkDatabaseErr>();

}  // namespace luming
