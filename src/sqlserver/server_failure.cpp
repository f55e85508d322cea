#include "sqlserver/server_failure.h"

#include <algorithm>

#include "platform/server_errors.h"

namespace luming::sqlserver {

namespace {

constexpr const char* kSource = "Microsoft OLE DB Provider for SQL Server";

/// Numbers of FreeTDS's own errors, which no server gives.
constexpr long kFirstOfFreeTds = 20000;
constexpr long kLastOfFreeTds = 20999;
constexpr long kTimeoutOfFreeTds = 20003;

/// A database that is not there makes the server refuse the login as well.
constexpr long kNoDatabase = 4060;

bool IsOfTheDriver(const Diagnostic& said) {
  return said.native <= 0 || said.state.starts_with("08") ||
         (said.native >= kFirstOfFreeTds && said.native <= kLastOfFreeTds);
}

/// A driver that is registered but cannot be loaded.
bool IsOfTheDriverManager(const Diagnostic& said) {
  return said.state == "IM002" || said.state == "IM003" || said.state == "IM004" ||
         said.text.find("Can't open lib") != std::string::npos;
}

bool IsInformation(const Diagnostic& said) {
  return said.state.starts_with("01") && said.native < kFirstOfFreeTds;
}

/// The server's own error in what was said, the first if there are several. The driver puts the gravest ahead; what a
/// procedure says of itself comes behind the error that made it speak, however grave it calls itself.
const Diagnostic* ServerError(const std::vector<Diagnostic>& said) {
  constexpr long kOfProcedure = 50000;
  const Diagnostic* of_procedure = nullptr;
  for (const Diagnostic& one : said) {
    if (IsOfTheDriver(one) || IsInformation(one)) continue;
    if (one.native < kOfProcedure) return &one;
    if (!of_procedure) of_procedure = &one;
  }
  return of_procedure;
}

bool IsTimeout(const std::vector<Diagnostic>& said) {
  return std::ranges::any_of(said, [](const Diagnostic& one) {
    return one.state.starts_with("HYT") || one.state == "HY008" || one.native == kTimeoutOfFreeTds;
  });
}

bool IsLoss(const std::vector<Diagnostic>& said) {
  return std::ranges::any_of(said, [](const Diagnostic& one) {
    return one.state.starts_with("08") ||
           (one.native >= kFirstOfFreeTds && one.native <= kLastOfFreeTds && one.native != kTimeoutOfFreeTds);
  });
}

/// A server that speaks English gets the standing Chinese words ahead of its own.
Failure Told(long number, const std::string& text) {
  const bool foreign = std::ranges::all_of(text, [](char c) { return static_cast<signed char>(c) >= 0; });
  if (!foreign) return {number, text, kSource};
  std::string words;
  switch (number) {
    case failure::kNoPermission:
      words = "数据库用户没有执行该操作的权限。";
      break;
    case failure::kLoginRefused:
      words = "数据库服务器拒绝登录，请检查用户名和登陆密码。";
      break;
    default:
      words = StandardFailure(number).description();
  }
  return {number, text.empty() ? words : words + "（" + text + "）", kSource};
}

std::string FirstText(const std::vector<Diagnostic>& said) {
  return said.empty() ? std::string() : said.front().text;
}

}  // namespace

Failure LostConnection() {
  return {failure::kGeneralProvider, "与数据库服务器的连接已中断，操作没有完成。", kSource};
}

StatementFailure FailureOfStatement(const std::vector<Diagnostic>& said, bool dead) {
  const After after = dead || IsLoss(said) ? After::kLost : After::kUsable;
  if (IsTimeout(said)) {
    const std::string late = "数据库服务器没有在规定的时间内答复，";
    if (after == After::kUsable) return {{failure::kTimeout, late + "操作已取消。", kSource}, after};
    return {{failure::kGeneralProvider, late + "连接已中断，操作没有完成。", kSource}, after};
  }
  if (const Diagnostic* error = ServerError(said)) return {Told(AdoNumberOf(error->native), error->text), after};
  if (after == After::kLost) return {LostConnection(), after};
  return {Told(failure::kGeneralProvider, FirstText(said)), after};
}

Failure FailureOfOpening(const std::vector<Diagnostic>& said, const std::string& server) {
  const auto unusable = std::ranges::find_if(said, IsOfTheDriverManager);
  if (unusable != said.end()) {
    return {failure::kGeneralProvider, "本机的 ODBC 驱动程序无法使用，请重新安装。（" + unusable->text + "）", kSource};
  }
  const auto no_database = std::ranges::find(said, kNoDatabase, &Diagnostic::native);
  if (no_database != said.end()) return Told(failure::kGeneralProvider, no_database->text);
  if (const Diagnostic* error = ServerError(said)) return Told(AdoNumberOf(error->native), error->text);
  const std::string what = IsTimeout(said) ? "没有在规定的时间内答复" : "没有运行、名称不正确或者网络不通";
  const std::string text = FirstText(said);
  return {failure::kGeneralProvider,
          "无法连接数据库服务器“" + server + "”：服务器" + what + "。" + (text.empty() ? "" : "（" + text + "）"),
          kSource};
}

}  // namespace luming::sqlserver
