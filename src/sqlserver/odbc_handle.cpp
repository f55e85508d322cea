#include "sqlserver/odbc_handle.h"

#include <array>

#include "util/failure.h"
#include "util/utf16.h"

namespace luming::sqlserver {

namespace {

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t));

constexpr std::size_t kLongestMessage = 4096;

std::string TextOf(const SQLWCHAR* units, std::size_t count) {
  return FromUtf16({reinterpret_cast<const char16_t*>(units), count});
}

/// Cuts off the names in brackets: "[FreeTDS][SQL Server]text".
std::string WithoutOrigin(std::string_view text) {
  while (text.starts_with('[')) {
    const std::size_t end = text.find(']');
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return std::string(text);
}

}  // namespace

OdbcHandle::OdbcHandle(SQLSMALLINT kind, SQLHANDLE parent) : kind_(kind) {
  if (!SQL_SUCCEEDED(Odbc().AllocHandle(kind, parent, &handle_))) throw StandardFailure(failure::kGeneralProvider);
}

OdbcHandle::~OdbcHandle() {
  Odbc().FreeHandle(kind_, handle_);
}

std::vector<Diagnostic> OdbcHandle::Diagnostics() const {
  std::vector<Diagnostic> found;
  std::array<SQLWCHAR, SQL_SQLSTATE_SIZE + 1> state{};
  std::vector<SQLWCHAR> text(kLongestMessage);
  for (SQLSMALLINT record = 1;; ++record) {
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const SQLRETURN result = Odbc().GetDiagRec(kind_, handle_, record, state.data(), &native, text.data(),
                                               static_cast<SQLSMALLINT>(text.size()), &length);
    if (!SQL_SUCCEEDED(result)) return found;
    const std::size_t units = std::min(static_cast<std::size_t>(std::max<SQLSMALLINT>(length, 0)), text.size() - 1);
    found.push_back({TextOf(state.data(), SQL_SQLSTATE_SIZE), native, WithoutOrigin(TextOf(text.data(), units))});
  }
}

OdbcEnvironment::OdbcEnvironment() : OdbcHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE) {
  Odbc().SetEnvAttr(get(), SQL_ATTR_ODBC_VERSION, AttributeValue(SQL_OV_ODBC3), 0);
}

}  // namespace luming::sqlserver
