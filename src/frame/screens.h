#pragma once

#include "frame/screen.h"

namespace luming {

extern const Screen kAbout;
extern const Screen kCalendar;
extern const Screen kChangePassword;
extern const Screen kConnectionDialog;
extern const Screen kInputMethod;
extern const Screen kLock;
extern const Screen kLogin;
extern const Screen kMainWindow;
extern const Screen kStorehouseChoice;

}  // namespace luming
