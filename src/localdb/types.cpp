#include "localdb/types.h"

#include <algorithm>
#include <array>

#include "util/text.h"

namespace luming::localdb {
namespace {

struct TypeEntry {
  std::string_view name;
  SqlType type;
  bool has_length;
};

constexpr std::int32_t kMax = SqlType::kMaxLength;

// The first name of a kind is the one that TypeName gives.
constexpr std::array kTypes = {
    TypeEntry{"bit", {TypeKind::kBit, 1, 0, 0}, false},
    TypeEntry{"tinyint", {TypeKind::kTinyInt, 3, 0, 0}, false},
    TypeEntry{"smallint", {TypeKind::kSmallInt, 5, 0, 0}, false},
    TypeEntry{"int", {TypeKind::kInt, 10, 0, 0}, false},
    TypeEntry{"integer", {TypeKind::kInt, 10, 0, 0}, false},
    TypeEntry{"bigint", {TypeKind::kBigInt, 19, 0, 0}, false},
    TypeEntry{"decimal", {TypeKind::kDecimal, 18, 0, 0}, false},
    TypeEntry{"numeric", {TypeKind::kDecimal, 18, 0, 0}, false},
    TypeEntry{"dec", {TypeKind::kDecimal, 18, 0, 0}, false},
    TypeEntry{"money", {TypeKind::kMoney, 19, 4, 0}, false},
    TypeEntry{"smallmoney", {TypeKind::kMoney, 10, 4, 0}, false},
    TypeEntry{"float", {TypeKind::kFloat, 53, 0, 0}, false},
    TypeEntry{"real", {TypeKind::kFloat, 24, 0, 0}, false},
    TypeEntry{"char", {TypeKind::kChar, 0, 0, 1}, true},
    TypeEntry{"varchar", {TypeKind::kVarChar, 0, 0, 1}, true},
    TypeEntry{"nchar", {TypeKind::kNChar, 0, 0, 1}, true},
    TypeEntry{"nvarchar", {TypeKind::kNVarChar, 0, 0, 1}, true},
    TypeEntry{"text", {TypeKind::kVarChar, 0, 0, kMax}, false},
    TypeEntry{"ntext", {TypeKind::kNVarChar, 0, 0, kMax}, false},
    TypeEntry{"sysname", {TypeKind::kNVarChar, 0, 0, 128}, false},
    TypeEntry{"uniqueidentifier", {TypeKind::kChar, 0, 0, 36}, false},
    TypeEntry{"date", {TypeKind::kDate, 0, 0, 0}, false},
    TypeEntry{"smalldatetime", {TypeKind::kSmallDateTime, 0, 0, 0}, false},
    TypeEntry{"datetime", {TypeKind::kDateTime, 0, 0, 0}, false},
    TypeEntry{"datetime2", {TypeKind::kDateTime, 0, 0, 0}, false},
};

int Clamp(int value, int low, int high) {
  return std::clamp(value, low, high);
}

// Where precision and scale would pass 38 digits, the scale gives way, but not below 6.
SqlType FitDecimal(int precision, int scale) {
  if (precision > 38) {
    int whole = precision - scale;
    scale = std::max(38 - whole, std::min(scale, 6));
    precision = 38;
  }
  return SqlType::Decimal(precision, scale);
}

SqlType AsDecimal(const SqlType& type) {
  return type.IsDecimal() ? type : SqlType::Decimal(std::max<int>(type.precision, 1), 0);
}

}  // namespace

SqlType SqlType::Decimal(int precision, int scale) {
  return {TypeKind::kDecimal, static_cast<std::uint8_t>(Clamp(precision, 1, 38)),
          static_cast<std::uint8_t>(Clamp(scale, 0, 38)), 0};
}

std::int64_t SqlType::Pack() const {
  std::int64_t packed = static_cast<std::int64_t>(kind);
  packed = packed << 8 | precision;
  packed = packed << 8 | scale;
  return packed << 32 | static_cast<std::uint32_t>(length);
}

SqlType SqlType::Unpack(std::int64_t packed) {
  SqlType type;
  type.length = static_cast<std::int32_t>(packed & 0xffffffff);
  type.scale = static_cast<std::uint8_t>(packed >> 32 & 0xff);
  type.precision = static_cast<std::uint8_t>(packed >> 40 & 0xff);
  type.kind = static_cast<TypeKind>(packed >> 48);
  return type;
}

std::optional<SqlType> FindType(std::string_view name, std::optional<int> first, std::optional<int> second) {
  auto found =
      std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& t) { return EqualsIgnoreCase(t.name, name); });
  if (found == kTypes.end()) return std::nullopt;
  SqlType type = found->type;
  if (found->has_length && first) type.length = *first;
  if (type.kind == TypeKind::kDecimal && first) type = SqlType::Decimal(*first, std::min(second.value_or(0), *first));
  return type;
}

std::string_view TypeName(TypeKind kind) {
  auto found = std::find_if(kTypes.begin(), kTypes.end(), [&](const auto& t) { return t.type.kind == kind; });
  return found == kTypes.end() ? "int" : found->name;
}

std::string_view StorageClass(const SqlType& type) {
  if (type.IsInteger()) return "INTEGER";
  return type.IsNumber() ? "REAL" : "TEXT";
}

SqlType CommonType(const SqlType& left, const SqlType& right) {
  if (left.IsNull()) return right;
  if (right.IsNull()) return left;
  SqlType high = left.kind >= right.kind ? left : right;
  const SqlType& low = left.kind >= right.kind ? right : left;
  if (high.IsText()) {
    bool unlimited = high.length == SqlType::kMaxLength || low.length == SqlType::kMaxLength;
    high.length = unlimited ? SqlType::kMaxLength : std::max(high.length, low.length);
    if (high.kind != low.kind) high.kind = high.IsWide() ? TypeKind::kNVarChar : TypeKind::kVarChar;
  }
  if (high.IsDecimal() && low.IsNumber()) {
    SqlType other = AsDecimal(low);
    int scale = std::max(high.scale, other.scale);
    int whole = std::max(high.precision - high.scale, other.precision - other.scale);
    if (high.kind == TypeKind::kDecimal) return FitDecimal(whole + scale, scale);
  }
  return high;
}

SqlType ArithmeticType(char op, const SqlType& left, const SqlType& right) {
  if (left.IsNull() || right.IsNull()) return left.IsNull() ? right : left;
  if (left.kind == TypeKind::kFloat || right.kind == TypeKind::kFloat) return SqlType::Float();
  if (!left.IsDecimal() && !right.IsDecimal())
    return std::max(left.kind, right.kind) == TypeKind::kBigInt ? SqlType::BigInt() : SqlType::Int();
  if (left.kind == TypeKind::kMoney || right.kind == TypeKind::kMoney) {
    if (left.kind != TypeKind::kDecimal && right.kind != TypeKind::kDecimal) return {TypeKind::kMoney, 19, 4, 0};
  }
  SqlType a = AsDecimal(left);
  SqlType b = AsDecimal(right);
  switch (op) {
    case '*':
      return FitDecimal(a.precision + b.precision + 1, a.scale + b.scale);
    case '/': {
      int scale = std::max(6, a.scale + b.precision + 1);
      return FitDecimal(a.precision - a.scale + b.scale + scale, scale);
    }
    default: {
      int scale = std::max(a.scale, b.scale);
      return FitDecimal(std::max(a.precision - a.scale, b.precision - b.scale) + scale + 1, scale);
    }
  }
}

}  // namespace luming::localdb
