#include "tds_server/columns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "util/ansi_text.h"

namespace luming::tds {
namespace {

using localdb::SqlType;
using localdb::TypeKind;

constexpr unsigned kIntN = 0x26;
constexpr unsigned kDateN = 0x28;
constexpr unsigned kBitN = 0x68;
constexpr unsigned kDecimalN = 0x6a;
constexpr unsigned kFloatN = 0x6d;
constexpr unsigned kMoneyN = 0x6e;
constexpr unsigned kDateTimeN = 0x6f;
constexpr unsigned kVarChar = 0xa7;
constexpr unsigned kChar = 0xaf;
constexpr unsigned kNVarChar = 0xe7;
constexpr unsigned kNChar = 0xef;

constexpr unsigned kColumnsToken = 0x81;
constexpr unsigned kRowToken = 0xd1;
constexpr unsigned kBitmapRowToken = 0xd2;

constexpr std::size_t kLongestText = 8000;
constexpr unsigned kUnlimited = 0xffff;
constexpr int kDecimalDigits = 38;

// Decimals have up to 38 digits.
__extension__ using Wide = unsigned __int128;

constexpr std::int64_t kMillisecondsOfDay = 86'400'000;
const DateTime kDay1900(1900, 1, 1);
constexpr std::int64_t kDaysFromYear1To1900 = 693595;

bool IsText(unsigned type) {
  return type == kVarChar || type == kChar || type == kNVarChar || type == kNChar;
}

bool IsWide(unsigned type) {
  return type == kNVarChar || type == kNChar;
}

unsigned WireType(const SqlType& type) {
  switch (type.kind) {
    case TypeKind::kChar:
      return kChar;
    case TypeKind::kNChar:
      return kNChar;
    case TypeKind::kVarChar:
      return kVarChar;
    case TypeKind::kNVarChar:
      return kNVarChar;
    case TypeKind::kBit:
      return kBitN;
    case TypeKind::kMoney:
      return kMoneyN;
    case TypeKind::kDecimal:
      return kDecimalN;
    case TypeKind::kFloat:
      return kFloatN;
    case TypeKind::kDate:
      return kDateN;
    case TypeKind::kSmallDateTime:
    case TypeKind::kDateTime:
      return kDateTimeN;
    default:
      return kIntN;
  }
}

std::size_t FixedLength(TypeKind kind) {
  switch (kind) {
    case TypeKind::kBit:
    case TypeKind::kTinyInt:
      return 1;
    case TypeKind::kSmallInt:
      return 2;
    case TypeKind::kNull:
    case TypeKind::kInt:
    case TypeKind::kSmallDateTime:
      return 4;
    case TypeKind::kDecimal:
      return 17;
    case TypeKind::kDate:
      return 3;
    default:
      return 8;
  }
}

std::string Encoded(const Value& value, bool wide) {
  return wide ? Utf16Bytes(value.TextOrEmpty()) : ToAnsi(value.TextOrEmpty());
}

void WriteDecimal(Writer& out, double number, int scale) {
  std::array<char, 400> digits{};
  std::snprintf(digits.data(), digits.size(), "%.*f", scale, std::fabs(number));
  Wide magnitude = 0;
  for (const char* digit = digits.data(); *digit != '\0'; ++digit) {
    if (*digit != '.') magnitude = magnitude * 10 + static_cast<unsigned>(*digit - '0');
  }
  out.U8(17);
  out.U8(number < 0 ? 0 : 1);
  out.U64(static_cast<std::uint64_t>(magnitude));
  out.U64(static_cast<std::uint64_t>(magnitude >> 64));
}

void WriteMoney(Writer& out, double number) {
  const auto units = static_cast<std::uint64_t>(std::llround(number * 10000));
  out.U8(8);
  out.U32(static_cast<std::uint32_t>(units >> 32));
  out.U32(static_cast<std::uint32_t>(units));
}

// Days since 1900, then three hundredths of a second, or minutes in the small form.
void WriteDateTime(Writer& out, const DateTime& moment, std::size_t length) {
  const std::int64_t days = moment.DaysSince(kDay1900);
  const std::int64_t time = (moment.Point() - moment.Date().Point()).count();
  out.U8(static_cast<unsigned>(length));
  if (length == 4) {
    out.U16(static_cast<unsigned>(days));
    out.U16(static_cast<unsigned>(time / 60000));
    return;
  }
  const std::int64_t ticks = std::min((time * 3 + 5) / 10, kMillisecondsOfDay * 3 / 10 - 1);
  out.U32(static_cast<std::uint32_t>(days));
  out.U32(static_cast<std::uint32_t>(ticks));
}

void WriteDate(Writer& out, const DateTime& moment) {
  out.U8(3);
  out.Number(static_cast<std::uint64_t>(moment.DaysSince(kDay1900) + kDaysFromYear1To1900), 3);
}

void WriteFloat(Writer& out, double number) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &number, sizeof bits);
  out.U8(8);
  out.U64(bits);
}

}  // namespace

void WriteCollation(Writer& out) {
  // Language 0x0804; case, kana and width are ignored.
  out.U32(0x00d00804);
  out.U8(0);
}

RowFormat::RowFormat(const std::vector<localdb::Column>& columns, Recordset& rows) {
  for (std::size_t i = 0; i < columns.size(); ++i) columns_.push_back(Choose(columns[i], i, rows));
}

// The engine types many texts without a limit where the server knows one, so the values decide.
RowFormat::WireColumn RowFormat::Choose(const localdb::Column& column, std::size_t index, Recordset& rows) const {
  WireColumn chosen{&column, WireType(column.type), FixedLength(column.type.kind), false};
  if (!IsText(chosen.type)) return chosen;
  const bool wide = IsWide(chosen.type);
  const bool limited = column.type.IsText() && column.type.length != SqlType::kMaxLength;
  std::size_t longest = limited ? static_cast<std::size_t>(column.type.length) * (wide ? 2 : 1) : kLongestText;
  if (rows.RecordCount() > 0) {
    for (; !rows.Eof(); rows.MoveNext()) longest = std::max(longest, Encoded(rows.Field(index), wide).size());
    rows.MoveFirst();
  }
  chosen.unlimited = longest > kLongestText;
  chosen.length = std::max<std::size_t>(longest, 1);
  return chosen;
}

void RowFormat::WriteType(Writer& out, const WireColumn& column) const {
  out.U8(column.type);
  if (IsText(column.type)) {
    out.U16(column.unlimited ? kUnlimited : static_cast<unsigned>(column.length));
    WriteCollation(out);
  } else if (column.type != kDateN) {
    out.U8(static_cast<unsigned>(column.length));
  }
  if (column.type == kDecimalN) {
    out.U8(kDecimalDigits);
    out.U8(column.column->type.scale);
  }
}

void RowFormat::WriteColumns(Writer& out) const {
  out.U8(kColumnsToken);
  out.U16(static_cast<unsigned>(columns_.size()));
  for (const WireColumn& column : columns_) {
    constexpr unsigned kNullable = 1;
    constexpr unsigned kIdentity = 0x10;
    out.U32(0);
    out.U16((column.column->nullable ? kNullable : 0) | (column.column->identity ? kIdentity : 0));
    WriteType(out, column);
    out.ShortText(column.column->name);
  }
}

void RowFormat::WriteText(Writer& out, const WireColumn& column, const Value& value) const {
  const std::string bytes = Encoded(value, IsWide(column.type));
  if (!column.unlimited) {
    out.U16(static_cast<unsigned>(bytes.size()));
    out.Raw(bytes);
    return;
  }
  out.U64(bytes.size());
  if (!bytes.empty()) {
    out.U32(static_cast<std::uint32_t>(bytes.size()));
    out.Raw(bytes);
  }
  out.U32(0);
}

void RowFormat::WriteValue(Writer& out, const WireColumn& column, const Value& value) const {
  switch (column.type) {
    case kDecimalN:
      return WriteDecimal(out, value.Number(), column.column->type.scale);
    case kMoneyN:
      return WriteMoney(out, value.Number());
    case kFloatN:
      return WriteFloat(out, value.Number());
    case kDateTimeN:
      return WriteDateTime(out, value.Date(), column.length);
    case kDateN:
      return WriteDate(out, value.Date());
    case kIntN:
    case kBitN: {
      const auto* whole = std::get_if<std::int64_t>(&value.data());
      out.U8(static_cast<unsigned>(column.length));
      out.Number(whole ? static_cast<std::uint64_t>(*whole) : value.Bool(), static_cast<int>(column.length));
      return;
    }
    default:
      return WriteText(out, column, value);
  }
}

void RowFormat::WriteRow(Writer& out, Recordset& rows) const {
  const std::size_t count = columns_.size();
  std::string nulls((count + 7) / 8, '\0');
  bool any = false;
  for (std::size_t i = 0; i < count; ++i) {
    if (!rows.Field(i).IsNull()) continue;
    nulls[i / 8] = static_cast<char>(nulls[i / 8] | (1 << (i % 8)));
    any = true;
  }
  out.U8(any ? kBitmapRowToken : kRowToken);
  if (any) out.Raw(nulls);
  for (std::size_t i = 0; i < count; ++i) {
    const Value& value = std::as_const(rows).Field(i);
    if (!value.IsNull()) WriteValue(out, columns_[i], value);
  }
}

}  // namespace luming::tds
