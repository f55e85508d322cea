#include "tds_server/odbc_client.h"

#include <array>

#include "util/utf16.h"

namespace luming::test {
namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

SQLWCHAR* Units(std::u16string& text) {
  return reinterpret_cast<SQLWCHAR*>(text.data());
}

std::string Utf8Of(const SQLWCHAR* text, std::size_t length) {
  return FromUtf16({reinterpret_cast<const char16_t*>(text), length});
}

void ReadError(SQLSMALLINT kind, SQLHANDLE handle, SQLSMALLINT record, OdbcOutcome& outcome) {
  std::array<SQLWCHAR, 6> state{};
  std::array<SQLWCHAR, 1024> text{};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  if (!outcome.state.empty()) return;
  if (!SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, record, state.data(), &number, text.data(),
                                    static_cast<SQLSMALLINT>(text.size()), &length)))
    return;
  outcome.error = number;
  outcome.state = Utf8Of(state.data(), 5);
  outcome.message = Utf8Of(text.data(), static_cast<std::size_t>(length));
}

std::string FieldText(SQLHSTMT statement, SQLUSMALLINT column) {
  std::u16string units;
  std::array<SQLWCHAR, 512> part{};
  SQLLEN length = 0;
  for (;;) {
    const SQLRETURN result =
        SQLGetData(statement, column, SQL_C_WCHAR, part.data(), sizeof(SQLWCHAR) * part.size(), &length);
    if (length == SQL_NULL_DATA) return "NULL";
    if (SQL_SUCCEEDED(result)) units += reinterpret_cast<const char16_t*>(part.data());
    if (result != SQL_SUCCESS_WITH_INFO) return FromUtf16(units);
  }
}

}  // namespace

OdbcClient::OdbcClient(std::string password) : password_(std::move(password)) {
  SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_);
  SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
}

OdbcClient::~OdbcClient() {
  Close();
  SQLFreeHandle(SQL_HANDLE_DBC, connection_);
  SQLFreeHandle(SQL_HANDLE_ENV, environment_);
}

std::string OdbcClient::Open(int port, const std::string& database, const std::string& version) {
  Close();
  auto text = ToUtf16("Driver=" LUMING_TDS_DRIVER ";Server=127.0.0.1;Port=" + std::to_string(port) + ";UID=sa;PWD={" +
                      password_ + "};Database=" + database + ";TDS_Version=" + version + ";ClientCharset=UTF-8;");
  SQLSetConnectAttr(connection_, SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(2), 0);
  const SQLRETURN result = SQLDriverConnectW(connection_, nullptr, Units(text), static_cast<SQLSMALLINT>(text.size()),
                                             nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
  open_ = SQL_SUCCEEDED(result);
  if (open_) return "";
  std::string numbers = "not open";
  for (SQLSMALLINT record = 1;; ++record) {
    OdbcOutcome outcome;
    ReadError(SQL_HANDLE_DBC, connection_, record, outcome);
    if (outcome.state.empty()) return numbers;
    numbers += " " + std::to_string(outcome.error);
  }
}

void OdbcClient::Close() {
  if (open_) SQLDisconnect(connection_);
  open_ = false;
}

void OdbcClient::ReadRows(SQLHSTMT statement, OdbcOutcome& outcome) {
  SQLSMALLINT columns = 0;
  SQLNumResultCols(statement, &columns);
  if (columns == 0) {
    SQLLEN count = -1;
    SQLRowCount(statement, &count);
    outcome.counts.push_back(count);
    return;
  }
  outcome.columns.clear();
  for (SQLUSMALLINT i = 1; i <= columns; ++i) {
    std::array<SQLWCHAR, 128> name{};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLSMALLINT scale = 0;
    SQLSMALLINT nullable = 0;
    SQLULEN size = 0;
    SQLDescribeColW(statement, i, name.data(), static_cast<SQLSMALLINT>(name.size()), &length, &type, &size, &scale,
                    &nullable);
    outcome.columns.push_back(Utf8Of(name.data(), static_cast<std::size_t>(length)) + ":" + std::to_string(type));
  }
  SQLRETURN result = SQLFetch(statement);
  for (; SQL_SUCCEEDED(result); result = SQLFetch(statement)) {
    std::vector<std::string> row;
    for (SQLUSMALLINT i = 1; i <= columns; ++i) row.push_back(FieldText(statement, i));
    outcome.rows.push_back(std::move(row));
  }
  if (result == SQL_ERROR) ReadError(SQL_HANDLE_STMT, statement, 1, outcome);
}

OdbcOutcome OdbcClient::Run(const std::string& sql, int timeout_seconds) {
  OdbcOutcome outcome;
  SQLHSTMT statement = nullptr;
  SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement);
  if (timeout_seconds > 0) {
    auto seconds = static_cast<SQLULEN>(timeout_seconds);
    SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT, reinterpret_cast<SQLPOINTER>(seconds), 0);
  }
  auto text = ToUtf16(sql);
  SQLRETURN result = SQLExecDirectW(statement, Units(text), static_cast<SQLINTEGER>(text.size()));
  while (result != SQL_NO_DATA) {
    if (result == SQL_ERROR || result == SQL_INVALID_HANDLE) {
      ReadError(SQL_HANDLE_STMT, statement, 1, outcome);
      if (IsDead()) break;
    } else {
      ReadRows(statement, outcome);
    }
    const SQLRETURN next = SQLMoreResults(statement);
    if (next == SQL_ERROR && result == SQL_ERROR) break;
    result = next;
  }
  SQLFreeHandle(SQL_HANDLE_STMT, statement);
  return outcome;
}

bool OdbcClient::IsDead() const {
  SQLINTEGER dead = SQL_CD_FALSE;
  SQLGetConnectAttr(connection_, SQL_ATTR_CONNECTION_DEAD, &dead, sizeof dead, nullptr);
  return dead == SQL_CD_TRUE;
}

void OdbcClient::SetAutoCommit(bool on) {
  SQLULEN mode = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
  SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(mode), 0);
}

void OdbcClient::EndTransaction(bool commit) {
  SQLEndTran(SQL_HANDLE_DBC, connection_, commit ? SQL_COMMIT : SQL_ROLLBACK);
}

}  // namespace luming::test
