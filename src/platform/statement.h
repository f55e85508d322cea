#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace luming {

/// The field or cell that a value comes from, as the operator knows it: "备注", or "第3行 数量" for a cell. A view.
struct ValueSource {
  ValueSource() = default;
  ValueSource(const char* field, int grid_row = 0) : name(field), row(grid_row) {}
  ValueSource(std::string_view field, int grid_row = 0) : name(field), row(grid_row) {}
  ValueSource(const std::string& field, int grid_row = 0) : name(field), row(grid_row) {}

  std::string_view name{};  ///< empty: not told
  int row = 0;              ///< of the grid, 1 is the first; 0: no cell
  bool secret = false;      ///< the value is not to be shown to whoever looks over the operator's shoulder
};

/// A field of a screen: what the operator typed, and what the field is called.
template <class Type>
concept TypedField = requires(const Type& field) {
  { field.Text() } -> std::same_as<const std::string&>;
  { field.Caption() } -> std::same_as<const std::string&>;
};

/// A text as a statement takes it, between single quotes and otherwise as it stands: one that holds a quote breaks the
/// statement, a pair of adjacent ones is one quote. A view, to be used up in the expression that makes it.
struct Quoted {
  explicit Quoted(std::string_view value, ValueSource from = {}) : text(value), source(from) {}
  explicit Quoted(const TypedField auto& field) : text(field.Text()), source(field.Caption()) {}

  std::string_view text;
  ValueSource source;
};

/// The text of a figure as a statement takes it, without quotes. A view like Quoted.
struct Bare {
  explicit Bare(std::string_view value, ValueSource from = {}) : text(value), source(from) {}
  explicit Bare(const TypedField auto& field) : text(field.Text()), source(field.Caption()) {}

  std::string_view text;
  ValueSource source;
};

/// A SQL text as it is put together:
///
///     Execute("Update YF_YPML Set YKKCL=" + Bare(stock, "库存量") + " Where YPBM Like" + Quoted(code))
///
/// Constant words go in as texts, whatever comes from outside as Quoted or Bare. Values that would end their literal
/// and run on as statement words go in, too, but the statement remembers the first of them and `Connection::Execute`
/// refuses to send it.
class Statement {
 public:
  Statement() = default;
  explicit Statement(std::string words) : text_(std::move(words)) {}
  Statement(const Quoted& value) { *this += value; }
  Statement(const Bare& value) { *this += value; }

  Statement& operator+=(std::string_view words) {
    text_ += words;
    return *this;
  }
  Statement& operator+=(const Statement& part);
  Statement& operator+=(const Quoted& value);
  Statement& operator+=(const Bare& value);

  const std::string& text() const { return text_; }
  bool empty() const { return text_.empty(); }
  /// What is wrong with the first value that must not be sent, in words for the operator; empty when all may be.
  const std::string& flaw() const { return flaw_; }

 private:
  std::string text_;
  std::string flaw_;
};

Statement operator+(Statement left, std::string_view right);
Statement operator+(Statement left, const Statement& right);
Statement operator+(Statement left, const Quoted& right);
Statement operator+(Statement left, const Bare& right);
Statement operator+(std::string left, const Statement& right);
Statement operator+(std::string left, const Quoted& right);
Statement operator+(std::string left, const Bare& right);

/// The insert of one row. @param words up to the bracket that opens the values: "Insert into YK_TYDJ
/// (KFMC,TYDH)Values("
Statement InsertOf(std::string words, std::initializer_list<Statement> values);

/// A day or moment as a quoted text; the bare word Null for a text that is no date.
Statement DayOrNull(std::string_view text);

/// What follows a column to take a quantity off it: "-3", and "-(-3)" for a negative one, since two minus signs in a
/// row begin a comment.
std::string Less(double quantity);

}  // namespace luming
