#include "util/date_text.h"

#include <cstdint>

#include "demand.h"

using namespace luming;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const DateTime today(2024, 5, 6);
  const std::optional<DateTime> value = ParseDate(text, today);
  Demand(IsDate(text) == value.has_value());
  if (value) {
    const auto again = ParseDate(DateText(*value), today);
    Demand(again && again->Date() == value->Date() && again->Second() == value->Second());
    Demand(ParseDate(FormatDate(*value, "yyyy-mm-dd"), today) == value->Date());
  }
  FormatDate(today, text);
  return 0;
}
