#pragma once

#include <string>

#include "platform/desktop.h"
#include "screen/date_box.h"
#include "screen/form.h"

namespace luming {

/// The two dates of a query. A group of fields of the form whose member it is.
class DateRange {
 public:
  explicit DateRange(Form* form, const char* start_caption = "开始日期", const char* end_caption = "结束日期");

  DateBox S_D;
  DateBox E_D;

  /// The first and the last second of the range, "2026-03-01 00:00:00" and "2026-03-01 23:59:59".
  std::string Start() const;
  std::string End() const;

  /// Whether the end is not before the start; shows `refusal` when it is.
  bool CheckOrder(Desktop& desktop, const Box& refusal) const;
};

}  // namespace luming
