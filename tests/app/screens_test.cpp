#include <map>

#include "frame/command_table.h"
#include "frame/connection_dialog.h"
#include "frame/login.h"
#include "frame/main_window.h"
#include "frame/storehouse_choice.h"
#include "masterdata/catalogue_import.h"
#include "masterdata/dictionary_head.h"
#include "masterdata/dictionary_links.h"
#include "masterdata/insurance_items.h"
#include "screen/layout.h"
#include "support/store_test.h"

namespace luming {
namespace {

/// Opens each screen by its command, as the operator with every right.
class ScreensTest : public StoreTest {
 protected:
  ScreensTest() { app.forms.Get<mainfrm>(app).Show(); }

  /// Hands the screen that the command opens to `look` and closes it.
  void Visit(const Command& command, const std::function<void(Form&)>& look) {
    bool seen = false;
    const auto visit = [&](Form& form) {
      seen = seen || form.Name() == command.screen;
      look(form);
      form.Unload();
    };
    desktop.modals = {visit};
    app.forms.Get<mainfrm>(app).Execute(command.id);
    desktop.modals.clear();
    if (!seen) {
      if (Form* form = app.forms.Find(command.screen)) visit(*form);
    }
    EXPECT_TRUE(seen) << command.id << " does not open " << command.screen;
  }

  void VisitAll(const std::function<void(Form&)>& look) {
    for (const Command& command : MainCommands().commands) {
      if (command.action && !command.screen.empty()) Visit(command, look);
    }
    // What no command opens.
    for (Form* form : std::initializer_list<Form*>{&app.forms.Get<password>(app), &app.forms.Get<Frm_CheckYK>(app),
                                                   &app.forms.Get<LinkDatabaseErr>(app), &app.forms.Get<Frm_ZD>(app),
                                                   &app.forms.Get<Frm_LinkZD>(app), &app.forms.Get<NHXMXZ>(app),
                                                   &app.forms.Get<UploadData>(app)}) {
      form->EnsureLoaded();
      look(*form);
    }
  }
};

TEST_F(ScreensTest, EachOpensByItsCommandWithoutAWordAndClosesAgain) {
  std::string awaited;
  for (const Command& command : MainCommands().commands) {
    if (!command.action) awaited += " " + command.screen;
    EXPECT_EQ(app.forms.Get<mainfrm>(app).StateOf(command.id).enabled, static_cast<bool>(command.action))
        << "a command without a screen is greyed: " << command.id;
  }
  if (!awaited.empty()) std::cout << "screens still awaited:" << awaited << "\n";
  VisitAll([&](Form& form) {
    for (const std::string& text : desktop.TakeBoxTexts()) ADD_FAILURE() << form.Name() << " says " << text;
  });
  app.forms.UnloadAll();
  EXPECT_TRUE(app.forms.All().empty());
}

TEST_F(ScreensTest, EachFieldIsLaidOutExactlyOnceOrMarkedHidden) {
  VisitAll([](Form& form) {
    std::map<const Control*, int> times;
    const Layout layout = form.Arrange();
    Walk(layout, [&](const Control& field, bool) { ++times[&field]; });
    for (const Control* field : form.Controls()) {
      EXPECT_EQ(times[field], 1) << form.Name() << "." << field->Name();
      times.erase(field);
    }
    EXPECT_TRUE(times.empty()) << form.Name() << " lays out fields that are not its own";
  });
}

TEST_F(ScreensTest, RefusedCommandsShowTheRefusalAndOpenNothing) {
  for (const char* key : {"YPGL_YPDCCX", "YPGL_YPGCCX", "YPGL_SXYPCX"}) app.CurUser.*(FindRight(key)->flag) = false;
  for (const int id : {551, 552, 553}) {
    const Command* command = MainCommands().Find(id);
    if (!command->action) continue;
    app.forms.Get<mainfrm>(app).Execute(id);
    EXPECT_NE(desktop.TakeBox().text.find("的权限"), std::string::npos) << id;
    EXPECT_EQ(app.forms.Find(command->screen), nullptr);
  }
}

}  // namespace
}  // namespace luming
