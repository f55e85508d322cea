#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace luming::localdb {

/// The types of the dialect, in the order of their precedence: where two meet, the later one wins.
enum class TypeKind : std::uint8_t {
  kNull,  ///< of a bare NULL: takes any other type
  kChar,
  kVarChar,
  kNChar,
  kNVarChar,
  kBit,
  kTinyInt,
  kSmallInt,
  kInt,
  kBigInt,
  kMoney,
  kDecimal,
  kFloat,
  kDate,
  kSmallDateTime,
  kDateTime,
};

/// A type with its measures. Lengths count bytes of code page 936 for char and varchar, characters for the others.
struct SqlType {
  TypeKind kind = TypeKind::kNull;
  std::uint8_t precision = 0;
  std::uint8_t scale = 0;
  std::int32_t length = 0;  ///< of a text; kMaxLength without limit

  static constexpr std::int32_t kMaxLength = -1;

  static SqlType Int() { return {TypeKind::kInt, 10, 0, 0}; }
  static SqlType BigInt() { return {TypeKind::kBigInt, 19, 0, 0}; }
  static SqlType Bit() { return {TypeKind::kBit, 1, 0, 0}; }
  static SqlType Float() { return {TypeKind::kFloat, 53, 0, 0}; }
  static SqlType Decimal(int precision, int scale);
  static SqlType Text(std::int32_t length = kMaxLength) { return {TypeKind::kVarChar, 0, 0, length}; }
  static SqlType DateTime() { return {TypeKind::kDateTime, 0, 0, 0}; }

  bool IsNull() const { return kind == TypeKind::kNull; }
  bool IsText() const { return kind >= TypeKind::kChar && kind <= TypeKind::kNVarChar; }
  bool IsWide() const { return kind == TypeKind::kNChar || kind == TypeKind::kNVarChar; }
  bool IsFixed() const { return kind == TypeKind::kChar || kind == TypeKind::kNChar; }
  bool IsInteger() const { return kind >= TypeKind::kBit && kind <= TypeKind::kBigInt; }
  bool IsDecimal() const { return kind == TypeKind::kDecimal || kind == TypeKind::kMoney; }
  bool IsNumber() const { return kind >= TypeKind::kBit && kind <= TypeKind::kFloat; }
  bool IsDate() const { return kind >= TypeKind::kDate; }
  bool operator==(const SqlType&) const = default;

  /// The type in one number, the form in which the conversion function of the engine takes it.
  std::int64_t Pack() const;
  static SqlType Unpack(std::int64_t packed);
};

/// Reads a type name with its measures; nothing for a name that is no type.
std::optional<SqlType> FindType(std::string_view name, std::optional<int> first, std::optional<int> second);

/// "varchar", "int", "decimal" …
std::string_view TypeName(TypeKind kind);

/// How the engine stores a column of the type: "INTEGER", "REAL" or "TEXT".
std::string_view StorageClass(const SqlType& type);

/// The type in which two values are compared or that a choice between them has.
SqlType CommonType(const SqlType& left, const SqlType& right);

/// The type of left `op` right for numbers; `op` is one of + - * / %.
SqlType ArithmeticType(char op, const SqlType& left, const SqlType& right);

}  // namespace luming::localdb
