#include <gtest/gtest.h>

#include "app/composition.h"
#include "app/store_maker.h"
#include "frame/main_window.h"
#include "frame/storehouse_choice.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"

namespace luming {
namespace {

constexpr const char* kHandOff =
    "Provider=sqloledb;Data Source=(localdb);Initial Catalog=lumndata;User ID=sa;Password=;$管理员$1$";

/// The whole program on an application directory as an installation makes it.
class ProgramTest : public ::testing::Test {
 protected:
  ProgramTest() {
    const FixedClock clock{DateTime(2026, 3, 1)};
    MakeApplicationDirectory({.directory = home, .data = LUMING_DATABASE_DIR, .password = "1"}, clock);
    program.SetClock(DateTime(2026, 3, 1, 10, 0, 0));
  }

  void ChooseStorehouse() {
    desktop.modals.push_back([](Form& form) {
      auto& list = dynamic_cast<Frm_CheckYK&>(form);
      list.UserClick(list.Command1);
    });
  }

  TempDirectory directory;
  std::filesystem::path home = directory / "yk";
  ScriptedDesktop desktop;
  Program program{desktop, Machine::kUntouched, home.string() + "/"};
};

TEST_F(ProgramTest, StartsByTheConnectionFileOrByTheHandOff) {
  program.Start("");
  EXPECT_TRUE(program.OpenForms()->Find("password")->IsShown());
  EXPECT_EQ(program.Context()->AppPath, home);
  EXPECT_THROW(program.Start(""), Failure);
  EXPECT_THROW(program.SetHome(home), Failure);
  EXPECT_THROW(program.ExecuteCommand(9104), Failure) << "there is no main window yet";

  Program other(desktop, Machine::kUntouched, home);
  other.SetClock(DateTime(2026, 3, 1, 10, 0, 0));
  ChooseStorehouse();
  other.Start(kHandOff);
  EXPECT_EQ(other.Context()->KFMC, "西药库");
  EXPECT_EQ(other.Context()->forms.FindAs<mainfrm>()->Caption(), "西药库管理系统");
  desktop.answers = {Answer::kYes};
  EXPECT_THROW(other.ExecuteCommand(9104), ProcessEnded);
  EXPECT_EQ(other.OpenForms(), nullptr);
}

TEST_F(ProgramTest, StatementsAreRememberedAndGoToTheTraceFile) {
  program.TraceTo(directory / "trace.txt");
  program.Start("");
  ASSERT_FALSE(program.Statements().empty());
  EXPECT_EQ(program.Statements().front().sql, "select * from userdb ");
  EXPECT_EQ(program.Statements().front().rows, 1);
  program.ForgetSent();
  program.RunBeside("Update userdb Set password='2'");
  EXPECT_TRUE(program.Statements().empty()) << "what runs beside the program is not traced";
  EXPECT_NE(ReadBytes(directory / "trace.txt").find("\t1 rows\tselect * from userdb "), std::string::npos);
  EXPECT_THROW(program.TraceTo(directory / "missing" / "trace.txt"), Failure);
}

TEST_F(ProgramTest, ClockHoldsForTheProgramAndForTheStore) {
  EXPECT_EQ(program.RunBeside("SELECT GETDATE()").Field(0).Text(), "2026/3/1 10:00:00");
  program.SetClock(DateTime(2027, 1, 2, 3, 4, 5));
  EXPECT_EQ(program.RunBeside("SELECT GETDATE()").Field(0).Text(), "2027/1/2 3:04:05");
}

}  // namespace
}  // namespace luming
