#pragma once

#include <string>
#include <string_view>

#include "platform/desktop.h"
#include "screen/control.h"
#include "util/text.h"

namespace luming {

/// The numbered list of complaints that a validation collects and shows in one box: blanks, number, text, line end.
class NumberedMessages {
 public:
  /// @param indent blanks ahead of each number: five in most screens, six in some
  explicit NumberedMessages(int indent = 5) : indent_(indent) {}

  /// Adds a message and moves the focus to the field it is about.
  void Add(std::string_view text, Control& field);
  void Add(std::string_view text);
  /// Adds the message when the field's text is empty but for blanks.
  template <class Field>
  void Demand(Field& field, std::string_view text) {
    if (Trim(field.Text()).empty()) Add(text, field);
  }
  bool Empty() const { return count_ == 0; }

  /// Shows "系统提示您:", two line ends and the list in a stop box titled "提示" when there is anything to tell.
  /// @return true when nothing was wrong
  bool Pass(Desktop& desktop) const;

 private:
  int indent_;
  int count_ = 0;
  std::string list_;
};

}  // namespace luming
