#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "util/date_time.h"

namespace luming {

/// One field of a row as an ADO client sees it: NULL, flag (bit), whole number (int, smallint, bigint), number (float,
/// decimal, money), text, date and time.
class Value {
 public:
  Value() = default;  ///< NULL
  explicit Value(bool flag) : data_(flag) {}
  explicit Value(int number) : data_(std::int64_t{number}) {}
  explicit Value(std::int64_t number) : data_(number) {}
  explicit Value(double number) : data_(number) {}
  explicit Value(std::string text) : data_(std::move(text)) {}
  explicit Value(const char* text) : data_(std::string(text)) {}
  explicit Value(DateTime moment) : data_(moment) {}

  bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }

  /// The default text: numbers with 15 digits, flags "True" and "False", dates "2026/3/1 8:05:00". NULL is failure 94.
  std::string Text() const;
  /// The same with an empty text for NULL: what a grid cell shows.
  std::string TextOrEmpty() const;
  /// As a number; a text is converted, true is -1, a date is its days since 1899-12-30. NULL is failure 94, a text that
  /// is no number 13.
  double Number() const;
  double NumberOr(double fallback) const { return IsNull() ? fallback : Number(); }
  std::int32_t Long() const;  ///< as CLng of Number()
  bool Bool() const;      ///< any number but 0 is true; NULL is failure 94, a text that is neither number nor flag 13
  DateTime Date() const;  ///< a text needs its year; NULL is failure 94, what is no date 13
  /// As FormatNumber, FormatNumberText or FormatDate of the value by its kind, a text that reads as a date under a
  /// picture of date codes being a date; an empty text for NULL.
  std::string Format(std::string_view picture) const;

  /// The value itself, for adapters and for code that is fast because it looks.
  using Data = std::variant<std::monostate, bool, std::int64_t, double, std::string, DateTime>;
  const Data& data() const { return data_; }
  /// Moves a text out without a copy; any other value gives TextOrEmpty().
  std::string TakeText();
  /// For adapters: makes the value one of the kind T in its place, out of what T is made of.
  template <class T, class... Parts>
  void Become(Parts&&... parts) {
    data_.template emplace<T>(std::forward<Parts>(parts)...);
  }

 private:
  Data data_;
};

}  // namespace luming
