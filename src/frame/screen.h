#pragma once

#include "frame/app_context.h"
#include "frame/windows.h"
#include "screen/button.h"

namespace luming {

/// A screen or dialog of the program. It is registered in the file that defines it, declared in the list of its room
/// (screens.h) and stands in app/command_table.cpp: in the row of its command, or among those that no command opens.
struct Screen {
  const char* name;
  Form& (*form)(AppContext& app);  ///< its one instance, made on first use
  void (*open)(AppContext& app);   ///< as its command does, or what else brings it up
};

template <class T>
Form& FormOf(AppContext& app) {
  return app.forms.Get<T>(app);
}

/// @name The ways in which screens open
/// @{

/// A child window: shown, then maximised.
template <class T>
constexpr Screen ChildScreen() {
  return {T::kName, FormOf<T>, [](AppContext& app) {
            FormOf<T>(app).Show();
            MaxChild(app, T::kName);
          }};
}

template <class T>
constexpr Screen ModalScreen() {
  return {T::kName, FormOf<T>, [](AppContext& app) { FormOf<T>(app).ShowModal(); }};
}

/// Shown, neither modal nor maximised.
template <class T>
constexpr Screen ShownScreen() {
  return {T::kName, FormOf<T>, [](AppContext& app) { FormOf<T>(app).Show(); }};
}

/// A dialog that works on the screen whose button opens it.
template <class T, class Caller, Button Caller::*button>
constexpr Screen DialogScreen() {
  return {T::kName, FormOf<T>, [](AppContext& app) {
            Caller& caller = app.forms.Get<Caller>(app);
            caller.EnsureLoaded();
            caller.UserClick(caller.*button);
          }};
}

/// @}

}  // namespace luming
