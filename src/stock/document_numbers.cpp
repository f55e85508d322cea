#include "stock/document_numbers.h"

#include "frame/gateway.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr std::size_t kCountDigits = 4;

/// The count with its leading zeros; past 9999 it simply grows.
std::string PaddedCount(int count) {
  return FormatNumber(count, "0000");
}

std::string LastNumberOfToday(AppContext& app, const Statement& statement) {
  Recordset rows;
  OpenRs(app, rows, statement);
  std::string number = rows.Field(0).Text();
  CloseRs(rows);
  return number;
}

}  // namespace

std::string NextDocNo(AppContext& app, const std::string& number_column, const std::string& table,
                      const std::string& date_column) {
  std::string number;
  Trapped(app, [&] {
    const DateTime now = app.clock.Now();
    const std::string today = FormatDate(now, "yyyy-mm-dd");
    const Statement statement = "select top 1 " + number_column + " From " + table + " Where " + date_column +
                                " Between " + Quoted(today + " 00:00:00") + " and " + Quoted(today + " 23:59:59") +
                                " order by id desc";
    Recordset rows;
    OpenRs(app, rows, statement);
    if (rows.RecordCount() < 1) {
      number = Replace(today, "-", "") + PaddedCount(1);
      return;
    }
    CloseRs(rows);
    const int count = CInt(Right(LastNumberOfToday(app, statement), kCountDigits)) + 1;
    number = FormatNumber(now.Year(), "0000") + FormatNumber(now.Month(), "00") + FormatNumber(now.Day(), "00") +
             PaddedCount(count);
  });
  return number;
}

}  // namespace luming
