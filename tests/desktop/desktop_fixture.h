#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>

#include "desktop/qt_desktop.h"
#include "screen/forms.h"
#include "util/clock.h"

namespace luming {

/// A drawn desktop with forms of its own, and the operator's hands.
class DesktopTest : public ::testing::Test {
 protected:
  ~DesktopTest() override {
    forms.UnloadAll();
    Settle();
  }

  static void Settle() {
    for (int turn = 0; turn < 3; ++turn) {
      QCoreApplication::processEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }

  /// The widget of that name in the windows that exist: a control's, or one that the desktop names itself.
  template <class WidgetType>
  static WidgetType* Find(const char* name) {
    for (QWidget* widget : QApplication::allWidgets()) {
      auto* found = dynamic_cast<WidgetType*>(widget);
      if (found && found->objectName() == name) return found;
    }
    return nullptr;
  }

  static void Press(QWidget* widget, int key, const QString& text = {}, Qt::KeyboardModifiers held = Qt::NoModifier) {
    ASSERT_NE(widget, nullptr);
    QKeyEvent press(QEvent::KeyPress, key, held, text);
    QCoreApplication::sendEvent(widget, &press);
  }
  static void Type(QWidget* widget, const QString& text) {
    for (const QChar letter : text) Press(widget, letter.toUpper().unicode(), letter);
  }
  /// A click of the left button as the window system sends it, the focus included.
  static void Click(QWidget* widget, QPoint at) { QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, at); }
  /// What the operator does while a box or a modal form waits.
  static void Meanwhile(std::function<void()> act) { QTimer::singleShot(0, qApp, std::move(act)); }

  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  QtDesktop desktop;
  Forms forms{desktop, clock};
};

}  // namespace luming
