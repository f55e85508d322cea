#include "util/number_text.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "demand.h"
#include "util/failure.h"

using namespace luming;

namespace {

/// The default text is what the C library prints of 15 digits, and all its users hold for any double.
void CheckValue(double value) {
  const std::string text = NumberText(value);
  if (!std::isfinite(value)) return;
  char printed[40];
  std::snprintf(printed, sizeof printed, "%.15G", value == 0 ? 0.0 : value);
  Demand(text == printed);
  const std::string formatted = FormatNumber(value, "￥0.0000");
  const std::optional<double> back = ParseNumber(formatted);
  // The largest doubles round up past the range.
  Demand(back.has_value() || std::fabs(value) > 1.7e308);
  if (back && std::fabs(value) < 1e9) Demand(std::fabs(*back - value) <= 0.000051);
  if (back && std::fabs(value) < 1e9) Demand(*back == RoundDecimal(value, 4));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Val(text);
  const std::optional<double> value = ParseNumber(text);
  Demand(IsNumeric(text) == value.has_value());
  if (value) {
    Demand(std::isfinite(*value));
    CheckValue(*value);
  } else {
    Demand(FormatNumberText(text, "0.00") == text);
  }
  if (size >= sizeof(double)) {
    double raw = 0;
    std::memcpy(&raw, data, sizeof raw);
    CheckValue(raw);
    FormatNumber(raw, text.substr(sizeof raw));
    try {
      CLng(raw);
    } catch (const Failure& failure) {
      Demand(failure.number() == failure::kOverflow);
    }
  }
  return 0;
}
