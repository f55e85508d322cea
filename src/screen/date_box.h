#pragma once

#include <string>

#include "screen/control.h"
#include "util/date_time.h"

namespace luming {

class DateBox : public Control {
 public:
  DateBox(Form* form, std::string name, std::string caption = {});
  const DateTime& Value() const { return value_; }
  void SetValue(const DateTime& value);  ///< fires change when it differs
  std::string Text() const;              ///< "yyyy-mm-dd"
  Event<> change;

  void SelectAll();  ///< the next typed digit begins the year anew
  void FocusGained() override;
  void DefaultKey(KeyEvent& event) override;  ///< Up and Down: one day
  /// Digits fill the year, the month and the day in turn, each as far as it makes a date; "-", "/" and "." go on to the
  /// next of them.
  bool TypeCharacter(char32_t character) override;

 private:
  bool TypeDigit(char digit);
  bool NextPart();

  DateTime value_;
  int part_ = 0;  // which of year, month and day is being typed
  std::string typed_;
};

}  // namespace luming
