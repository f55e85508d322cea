#include "platform/value.h"

#include <cmath>
#include <type_traits>

#include "util/date_text.h"
#include "util/failure.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr double kMillisecondsOfDay = 86'400'000;
const DateTime kZeroDate;

double SerialOf(const DateTime& moment) {
  return static_cast<double>((moment.Point() - kZeroDate.Point()).count()) / kMillisecondsOfDay;
}

DateTime DateOfSerial(double serial) {
  const DateTime day = kZeroDate.AddDays(CLng(std::floor(serial)));
  const auto rest = std::llround((serial - std::floor(serial)) * kMillisecondsOfDay);
  return DateTime{day.Point() + std::chrono::milliseconds{rest}};
}

std::string TextOf(std::monostate) {
  throw StandardFailure(failure::kInvalidNull);
}
std::string TextOf(bool flag) {
  return flag ? "True" : "False";
}
std::string TextOf(std::int64_t number) {
  return std::to_string(number);
}
std::string TextOf(double number) {
  return NumberText(number);
}
std::string TextOf(const std::string& text) {
  return text;
}
std::string TextOf(const DateTime& moment) {
  return DateText(moment);
}

double NumberOf(std::monostate) {
  throw StandardFailure(failure::kInvalidNull);
}
double NumberOf(bool flag) {
  return flag ? -1 : 0;
}
double NumberOf(std::int64_t number) {
  return static_cast<double>(number);
}
double NumberOf(double number) {
  return number;
}
double NumberOf(const std::string& text) {
  return CDbl(text);
}
double NumberOf(const DateTime& moment) {
  return SerialOf(moment);
}

bool IsDatePicture(std::string_view picture) {
  return picture.find_first_of("ymdhnsYMDHNS") != std::string_view::npos;
}

}  // namespace

std::string Value::Text() const {
  return std::visit([](const auto& value) { return TextOf(value); }, data_);
}

std::string Value::TextOrEmpty() const {
  return IsNull() ? std::string() : Text();
}

double Value::Number() const {
  return std::visit([](const auto& value) { return NumberOf(value); }, data_);
}

std::int32_t Value::Long() const {
  return CLng(Number());
}

bool Value::Bool() const {
  if (const auto* text = std::get_if<std::string>(&data_)) {
    if (EqualsIgnoreCase(*text, "True")) return true;
    if (EqualsIgnoreCase(*text, "False")) return false;
  }
  return Number() != 0;
}

DateTime Value::Date() const {
  if (const auto* moment = std::get_if<DateTime>(&data_)) return *moment;
  if (const auto* text = std::get_if<std::string>(&data_)) return CDate(*text, kZeroDate);
  return DateOfSerial(Number());
}

std::string Value::Format(std::string_view picture) const {
  if (IsNull()) return {};
  if (const auto* stored = std::get_if<DateTime>(&data_)) return FormatDate(*stored, picture);
  const auto* text = std::get_if<std::string>(&data_);
  if (text == nullptr) return FormatNumber(Number(), picture);
  if (!IsDatePicture(picture)) return FormatNumberText(*text, picture);
  const auto moment = ParseDate(*text, kZeroDate);
  return moment ? FormatDate(*moment, picture) : *text;
}

std::string Value::TakeText() {
  if (auto* text = std::get_if<std::string>(&data_)) return std::move(*text);
  return TextOrEmpty();
}

}  // namespace luming
