#include <iostream>
#include <map>

#include "frame/main_window.h"
#include "screen/layout.h"
#include "support/store_test.h"

namespace luming {
namespace {

/// Opens each screen as the operator with every right.
class ScreensTest : public StoreTest {
 protected:
  ScreensTest() { app.forms.Get<mainfrm>(app).Show(); }

  /// Hands the screen that comes up to `look` and closes it; the main window stays.
  void Visit(const std::string& screen, const std::function<void()>& open, const std::function<void(Form&)>& look) {
    bool seen = false;
    const auto visit = [&](Form& form) {
      seen = seen || form.Name() == screen;
      look(form);
      if (form.Kind() != WindowKind::kMain) form.Unload();
    };
    desktop.modals = {visit};
    open();
    desktop.modals.clear();
    if (!seen) {
      Form* form = app.forms.Find(screen);
      if (form && form->IsShown()) visit(*form);
    }
    EXPECT_TRUE(seen) << screen << " does not open";
  }

  void VisitAll(const std::function<void(Form&)>& look) {
    for (const Command& command : MainCommands().commands) {
      if (!command.action || command.screen.empty()) continue;
      Visit(
          command.screen, [&] { app.forms.Get<mainfrm>(app).Execute(command.id); }, look);
    }
    for (const Screen* screen : FurtherScreens())
      Visit(
          screen->name, [&] { screen->open(app); }, look);
  }
};

TEST_F(ScreensTest, EachOpensWithoutAWordAndClosesAgain) {
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
