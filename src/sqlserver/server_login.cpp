#include "sqlserver/server_login.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/connection_string.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming::sqlserver {

namespace {

constexpr int kServerPort = 1433;
constexpr int kHighestPort = 65535;

bool IsYes(const std::string& value) {
  return std::ranges::any_of(std::to_array({"yes", "true", "1", "sspi", "mandatory", "strict"}),
                             [&](std::string_view yes) { return EqualsIgnoreCase(value, yes); });
}

/// The port in "1433"; 0 for anything else.
int PortOf(std::string_view text) {
  int port = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
  const bool whole = error == std::errc{} && end == text.data() + text.size();
  return whole && port > 0 && port <= kHighestPort ? port : 0;
}

/// Cuts `text` at the separator and returns what stood behind it.
std::string CutBehind(std::string& text, char separator) {
  const std::size_t found = text.rfind(separator);
  if (found == std::string::npos) return {};
  const std::string behind = Trim(text.substr(found + 1));
  text = Trim(text.substr(0, found));
  return behind;
}

void ReadSource(std::string source, ServerLogin& login) {
  if (EqualsIgnoreCase(source.substr(0, 4), "tcp:")) source = Trim(source.substr(4));
  login.port = PortOf(CutBehind(source, ','));
  login.instance = CutBehind(source, '\\');
  const bool here = source == "." || EqualsIgnoreCase(source, "(local)");
  login.host = here ? "localhost" : source;
}

/// Braces keep a value together. In them Microsoft's driver wants "}" twice; FreeTDS takes it as it is, and "};" for
/// the end.
std::string Quoted(std::string_view value, OdbcDriver::Maker maker) {
  if (maker == OdbcDriver::Maker::kMicrosoft) {
    const bool plain = !value.empty() && value.front() != ' ' && value.back() != ' ' &&
                       value.find_first_of("[]{}();?*=!@'\"") == std::string_view::npos;
    return plain ? std::string(value) : "{" + Replace(value, "}", "}}") + "}";
  }
  if (value.find("};") != std::string_view::npos) {
    throw Failure(failure::kGeneralProvider, "本机的 ODBC 驱动程序（FreeTDS）不能使用含有“};”的用户名、密码或名称。");
  }
  const bool plain = value.find(';') == std::string_view::npos && !value.starts_with('{') && Trim(value) == value;
  return plain ? std::string(value) : "{" + std::string(value) + "}";
}

class OdbcText {
 public:
  explicit OdbcText(OdbcDriver::Maker maker) : maker_(maker) {}

  OdbcText& Add(std::string_view key, std::string_view value) {
    text_.append(key).append("=").append(Quoted(value, maker_)).append(";");
    return *this;
  }
  OdbcText& AddIfAny(std::string_view key, std::string_view value) { return value.empty() ? *this : Add(key, value); }
  std::string Take() { return std::move(text_); }

 private:
  OdbcDriver::Maker maker_;
  std::string text_;
};

void AddServerForFreeTds(OdbcText& text, const ServerLogin& login) {
  if (login.port == 0 && !login.instance.empty()) {
    text.Add("Server", login.host + "\\" + login.instance);
  } else {
    text.Add("Server", login.host).Add("Port", std::to_string(login.port == 0 ? kServerPort : login.port));
  }
  text.Add("TDS_Version", "7.4").Add("ClientCharset", "UTF-8");
  if (!login.encrypt.empty()) text.Add("Encryption", IsYes(login.encrypt) ? "require" : "off");
}

// The server's own driver would else refuse the certificates that servers make for themselves.
void AddServerForMicrosoft(OdbcText& text, const ServerLogin& login) {
  text.Add("Server", login.Shown());
  text.Add("Encrypt", IsYes(login.encrypt) ? "yes" : "no").Add("TrustServerCertificate", "yes");
  if (login.trusted) text.Add("Trusted_Connection", "yes");
}

}  // namespace

std::string ServerLogin::Shown() const {
  if (port != 0) return host + "," + std::to_string(port);
  return instance.empty() ? host : host + "\\" + instance;
}

ServerLogin ReadServerLogin(std::string_view connection_string) {
  if (connection_string.find('\0') != std::string_view::npos) {
    throw Failure(failure::kGeneralProvider, "连接字符串中有不能使用的字符。");
  }
  const ConnectionString parts(connection_string);
  ServerLogin login;
  ReadSource(parts.Server(), login);
  if (login.host.empty()) {
    throw Failure(failure::kGeneralProvider, "没有指定数据库服务器，请设置服务器名和数据库名称。");
  }
  login.database = parts.Database();
  login.user = parts.User();
  login.password = parts.Password();
  login.trusted = login.user.empty() && IsYes(parts.Value({"Integrated Security", "Trusted_Connection"}));
  login.language = parts.Value({"Current Language", "Language"});
  login.encrypt = parts.Value({"Use Encryption for Data", "Encrypt"});
  return login;
}

std::string OdbcConnectionString(const ServerLogin& login, const OdbcDriver& driver) {
  OdbcText text(driver.maker);
  text.Add("Driver", driver.name);
  if (driver.maker == OdbcDriver::Maker::kFreeTds) {
    AddServerForFreeTds(text, login);
  } else {
    AddServerForMicrosoft(text, login);
  }
  if (!login.trusted) text.Add("UID", login.user).Add("PWD", login.password);
  return text.AddIfAny("Database", login.database).AddIfAny("Language", login.language).Add("APP", "luming").Take();
}

}  // namespace luming::sqlserver
