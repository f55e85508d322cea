#include "localdb/translate/translator.h"

namespace luming::localdb {
namespace {

// A comparison neither cuts a text nor rounds a number.
SqlType Unlimited(const SqlType& type) {
  if (type.IsText()) return SqlType::Text();
  if (type.kind == TypeKind::kDecimal) return SqlType::Decimal(38, 15);
  if (type.kind == TypeKind::kMoney) return {TypeKind::kMoney, 38, 15, 0};
  return type;
}

bool FitsText(const SqlType& from, const SqlType& to) {
  if (to.IsFixed()) return from == to;
  if (to.length == SqlType::kMaxLength) return true;
  bool counts_alike = from.IsWide() == to.IsWide() || to.IsWide();
  return counts_alike && from.length != SqlType::kMaxLength && from.length <= to.length;
}

// True when every value of the one type already stands as a value of the other.
bool NeedsNothing(const SqlType& from, const SqlType& to) {
  if (from.IsNull() || to.IsNull() || from == to) return true;
  if (from.IsText() && to.IsText()) return FitsText(from, to);
  if (from.IsInteger() && to.IsInteger()) return from.kind < to.kind;
  if (from.IsDecimal() && to.IsDecimal()) {
    return from.scale <= to.scale && from.precision - from.scale <= to.precision - to.scale;
  }
  if (from.IsDecimal() && to.kind == TypeKind::kFloat) return true;
  return from.IsDate() && to.kind == TypeKind::kDateTime;
}

}  // namespace

void Translator::Unguard(const Fragment& value) {
  if (value.parameter >= 0) guarded_[static_cast<std::size_t>(value.parameter)] = false;
}

void Translator::CoerceParameter(Fragment& value, const SqlType& type, Purpose purpose) {
  PlanParameter& parameter = plan_->parameters[static_cast<std::size_t>(value.parameter)];
  parameter.converts = true;
  parameter.type = type;
  parameter.overlong = purpose == Purpose::kStore ? Overlong::kRefuse : Overlong::kCut;
  value.type = type;
  Unguard(value);
}

void Translator::Coerce(Fragment& value, const SqlType& wanted, Purpose purpose) {
  SqlType type = purpose == Purpose::kCompare ? Unlimited(wanted) : wanted;
  bool literal = value.parameter >= 0 &&
                 plan_->parameters[static_cast<std::size_t>(value.parameter)].source == PlanParameter::Source::kLiteral;
  bool needs_check = value.unchecked && purpose == Purpose::kStore && type.kind != TypeKind::kBigInt;
  if (!literal && !needs_check && NeedsNothing(value.type, type)) {
    if (value.type.IsNull()) value.type = type;
    return;
  }
  if (value.parameter >= 0) {
    CoerceParameter(value, type, purpose);
    return;
  }
  if (value.type.IsInteger() && type.kind == TypeKind::kFloat) {
    value.sql = "CAST(" + value.sql + " AS REAL)";
  } else {
    std::string types = std::to_string(value.type.Pack()) + ", " + std::to_string(type.Pack());
    std::string_view function = purpose == Purpose::kStore ? "t_store" : "t_cast";
    value.sql = std::string(function) + "(" + value.sql + ", " + types + ")";
  }
  value.type = type;
  value.parameter = -1;
  value.column = false;
}

std::string_view Translator::MakeComparable(Fragment& left, Fragment& right) {
  if (left.type.IsNumber() && right.type.IsNumber()) {
    Unguard(left);
    Unguard(right);
    return "";
  }
  SqlType type = CommonType(left.type, right.type);
  if (left.type.IsText() != type.IsText() || left.type.IsDate() != type.IsDate()) Coerce(left, type, Purpose::kCompare);
  if (right.type.IsText() != type.IsText() || right.type.IsDate() != type.IsDate())
    Coerce(right, type, Purpose::kCompare);
  return type.IsText() && !left.column && !right.column ? " COLLATE TSQL" : "";
}

std::string Translator::Collated(const Fragment& value) const {
  return value.type.IsText() && !value.column ? value.sql + " COLLATE TSQL" : value.sql;
}

}  // namespace luming::localdb
