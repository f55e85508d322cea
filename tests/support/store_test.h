#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "app/system_devices.h"
#include "frame/app_context.h"
#include "localdb/local_connection.h"
#include "support/fake_output.h"
#include "support/rows_text.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"
#include "util/clock.h"

namespace luming {

/// What a test of the program stands on: the screens over a real embedded store with the schema, the procedures and a
/// few drugs, an operator with every right in 西药库, ten o'clock on 2026-03-01.
///
///   编码    品名          单位  最小单位  拆零比  零售价  拆零零售价  进价  批发价  库存
///   100001  阿莫西林胶囊  盒    粒        10      15.5    1.55        12    13      0
///   100002  碘伏消毒液    瓶    (none)    1       8       0           5.25  6       7
///   100003  头孢克肟片    盒    片        6       30      5           20    24      0
class StoreTest : public ::testing::Test {
 protected:
  StoreTest();

  /// Rows of a statement beside the program.
  std::string Query(const std::string& sql) { return RowsText(beside_->Execute(sql)); }
  void Run(const std::string& sql) { beside_->Execute(sql); }

  /// Statements and transaction steps that the program sent since the last call.
  std::vector<std::string> TakeSent();
  /// The first of them that begins so; fails the test when there is none.
  std::string SentLike(const std::string& beginning);

  void Press(Form& form, int code) { form.UserKey({.code = code}); }
  void Type(Form& form, std::string_view text);

  TempDirectory directory;
  ScriptedDesktop desktop;
  UntouchedDevices devices;
  FakePrinting printing;
  FakeWorkbooks workbooks;
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  AppContext app;
  /// Keeps forms that close themselves until the test is over, as the running handler would.
  Forms::HandlerScope handler;

 private:
  std::unique_ptr<Connection> OpenStore();

  LocalConnection* beside_ = nullptr;
  std::vector<std::string> sent_;
};

}  // namespace luming
