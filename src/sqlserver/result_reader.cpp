#include "sqlserver/result_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

#include "platform/recordset_chain.h"
#include "util/utf16.h"

namespace luming::sqlserver {

namespace {

/// A call that failed; what was said is with the statement.
struct CallFailed {};

void Demand(SQLRETURN result) {
  if (!SQL_SUCCEEDED(result)) throw CallFailed{};
}

/// Reads the current row's cell of one column.
using CellReader = Value (*)(SQLHANDLE statement, SQLUSMALLINT column);

template <class Number>
bool Read(SQLHANDLE statement, SQLUSMALLINT column, SQLSMALLINT type, Number& number) {
  SQLLEN length = 0;
  Demand(Odbc().GetData(statement, column, type, &number, sizeof number, &length));
  return length != SQL_NULL_DATA;
}

Value ReadFlag(SQLHANDLE statement, SQLUSMALLINT column) {
  unsigned char flag = 0;
  return Read(statement, column, SQL_C_BIT, flag) ? Value(flag != 0) : Value();
}

Value ReadWhole(SQLHANDLE statement, SQLUSMALLINT column) {
  SQLBIGINT number = 0;
  return Read(statement, column, SQL_C_SBIGINT, number) ? Value(static_cast<std::int64_t>(number)) : Value();
}

Value ReadNumber(SQLHANDLE statement, SQLUSMALLINT column) {
  double number = 0;
  return Read(statement, column, SQL_C_DOUBLE, number) ? Value(number) : Value();
}

/// A number of four bytes is worth its own shortest text: 0.1 and not 0.10000000149.
Value ReadShortNumber(SQLHANDLE statement, SQLUSMALLINT column) {
  float number = 0;
  if (!Read(statement, column, SQL_C_FLOAT, number)) return Value();
  std::array<char, 64> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
  double exact = 0;
  std::from_chars(text.data(), end, exact);
  return Value(exact);
}

Value ReadMoment(SQLHANDLE statement, SQLUSMALLINT column) {
  constexpr SQLUINTEGER kNanosecondsOfMillisecond = 1'000'000;
  SQL_TIMESTAMP_STRUCT stamp{};
  if (!Read(statement, column, SQL_C_TYPE_TIMESTAMP, stamp)) return Value();
  const DateTime second(stamp.year, stamp.month, stamp.day, stamp.hour, stamp.minute, stamp.second);
  const auto fraction = (stamp.fraction + kNanosecondsOfMillisecond / 2) / kNanosecondsOfMillisecond;
  return Value(DateTime(second.Point() + std::chrono::milliseconds(fraction)));
}

Value ReadText(SQLHANDLE statement, SQLUSMALLINT column) {
  std::array<char16_t, 1024> piece{};
  std::u16string units;
  while (true) {
    SQLLEN length = 0;
    const SQLRETURN result = Odbc().GetData(statement, column, SQL_C_WCHAR, piece.data(), sizeof piece, &length);
    if (result == SQL_NO_DATA) break;
    Demand(result);
    if (length == SQL_NULL_DATA) return Value();
    const std::size_t room = piece.size() - 1;
    const bool all = length >= 0 && static_cast<std::size_t>(length) / sizeof(char16_t) <= room;
    units.append(piece.data(), all ? static_cast<std::size_t>(length) / sizeof(char16_t) : room);
    if (all) break;
  }
  return Value(FromUtf16(units));
}

CellReader ReaderOf(SQLSMALLINT type) {
  switch (type) {
    case SQL_BIT:
      return ReadFlag;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return ReadWhole;
    case SQL_REAL:
      return ReadShortNumber;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return ReadNumber;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
      return ReadMoment;
    default:  // the server's own types for a time of the day and a moment with its zone, too
      return ReadText;
  }
}

struct Columns {
  std::vector<std::string> names;
  std::vector<CellReader> readers;
};

Columns DescribeColumns(SQLHANDLE statement, SQLSMALLINT count) {
  Columns columns;
  std::array<char16_t, 256> name{};
  for (SQLSMALLINT i = 1; i <= count; ++i) {
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLSMALLINT digits = 0;
    SQLSMALLINT nullable = 0;
    SQLULEN size = 0;
    Demand(Odbc().DescribeCol(statement, static_cast<SQLUSMALLINT>(i), reinterpret_cast<SQLWCHAR*>(name.data()),
                              static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &digits, &nullable));
    const std::size_t units = std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), name.size() - 1);
    columns.names.push_back(FromUtf16({name.data(), units}));
    columns.readers.push_back(ReaderOf(type));
  }
  return columns;
}

/// The rows of the current result; without columns a closed recordset.
Recordset ReadResult(SQLHANDLE statement) {
  SQLSMALLINT count = 0;
  Demand(Odbc().NumResultCols(statement, &count));
  if (count <= 0) return {};
  const Columns columns = DescribeColumns(statement, count);
  Recordset rows(columns.names);
  while (true) {
    const SQLRETURN result = Odbc().Fetch(statement);
    if (result == SQL_NO_DATA) break;
    Demand(result);
    Value* cells = rows.AppendRow();
    for (std::size_t i = 0; i < columns.readers.size(); ++i) {
      cells[i] = columns.readers[i](statement, static_cast<SQLUSMALLINT>(i + 1));
    }
  }
  return rows;
}

}  // namespace

TextResults RunText(const OdbcHandle& statement, std::string_view sql) {
  // A driver that fails in the same way again and again would keep the program here.
  constexpr int kMostFailures = 100;
  std::u16string text = ToUtf16(sql);
  TextResults results;
  std::vector<Recordset> read;
  int failures = 0;
  SQLRETURN result = Odbc().ExecDirect(statement.get(), reinterpret_cast<SQLWCHAR*>(text.data()),
                                       static_cast<SQLINTEGER>(text.size()));
  for (bool first = true; first || result != SQL_NO_DATA; first = false) {
    try {
      // A text whose first statement changes no row says so in this way; its further results come all the same.
      if (!(first && result == SQL_NO_DATA)) Demand(result);
      Recordset rows = result == SQL_NO_DATA ? Recordset() : ReadResult(statement.get());
      if (rows.IsOpen()) read.push_back(std::move(rows));
    } catch (const CallFailed&) {
      if (!results.failed) results.said = statement.Diagnostics();
      results.failed = true;
      if (++failures == kMostFailures || result == SQL_INVALID_HANDLE) break;
    }
    result = Odbc().MoreResults(statement.get());
  }
  results.first = Chained(std::move(read));
  return results;
}

}  // namespace luming::sqlserver
