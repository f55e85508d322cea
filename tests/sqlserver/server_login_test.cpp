#include "sqlserver/server_login.h"

#include <gtest/gtest.h>

#include "sqlserver/odbc_api.h"
#include "support/failure_of.h"

namespace luming::sqlserver {
namespace {

constexpr auto kMicrosoft = OdbcDriver::Maker::kMicrosoft;
constexpr auto kFreeTds = OdbcDriver::Maker::kFreeTds;

TEST(ServerLoginTest, DataSourcesAsOperatorsTypeThem) {
  struct Case {
    const char* source;
    const char* host;
    const char* instance;
    int port;
    const char* shown;
  };
  const Case cases[] = {
      {"药库服务器", "药库服务器", "", 0, "药库服务器"},
      {"10.0.0.5", "10.0.0.5", "", 0, "10.0.0.5"},
      {"10.0.0.5,1533", "10.0.0.5", "", 1533, "10.0.0.5,1533"},
      {"tcp:SQL1, 1533", "SQL1", "", 1533, "SQL1,1533"},
      {"SQL1\\HIS", "SQL1", "HIS", 0, "SQL1\\HIS"},
      {"SQL1\\HIS,1533", "SQL1", "HIS", 1533, "SQL1,1533"},
      {".", "localhost", "", 0, "localhost"},
      {"(local)", "localhost", "", 0, "localhost"},
      {".\\SQLEXPRESS", "localhost", "SQLEXPRESS", 0, "localhost\\SQLEXPRESS"},
      {"SQL1,no port", "SQL1", "", 0, "SQL1"},
      {"SQL1,70000", "SQL1", "", 0, "SQL1"},
  };
  for (const Case& c : cases) {
    const ServerLogin login = ReadServerLogin(std::string("Data Source=") + c.source + ";");
    EXPECT_EQ(login.host, c.host) << c.source;
    EXPECT_EQ(login.instance, c.instance) << c.source;
    EXPECT_EQ(login.port, c.port) << c.source;
    EXPECT_EQ(login.Shown(), c.shown) << c.source;
  }
}

TEST(ServerLoginTest, StringsWithoutAServerAreRefused) {
  using namespace std::string_view_literals;
  for (const std::string_view text : {""sv, "Data Source=;Initial Catalog=db"sv, "Data Source=,1433"sv,
                                      "Data Source=\\HIS"sv, "Data Source=s;Password=a\0b"sv}) {
    EXPECT_EQ(FailureOf([&] { ReadServerLogin(text); }), failure::kGeneralProvider) << text;
  }
}

TEST(ServerLoginTest, EachDriverGetsItsOwnWords) {
  const std::string ado = "Provider=sqloledb;Data Source=SQL1;Initial Catalog=lumndata;User ID=sa;Password=1;";
  EXPECT_EQ(OdbcConnectionString(ReadServerLogin(ado), {kFreeTds, "/usr/lib/odbc/libtdsodbc.so"}),
            "Driver=/usr/lib/odbc/libtdsodbc.so;Server=SQL1;Port=1433;TDS_Version=7.4;ClientCharset=UTF-8;UID=sa;PWD=1;"
            "Database=lumndata;APP=luming;");
  EXPECT_EQ(OdbcConnectionString(ReadServerLogin(ado), {kMicrosoft, "ODBC Driver 18 for SQL Server"}),
            "Driver=ODBC Driver 18 for SQL Server;Server=SQL1;Encrypt=no;TrustServerCertificate=yes;UID=sa;PWD=1;"
            "Database=lumndata;APP=luming;");
  const std::string further =
      "Data Source=h\\HIS;Integrated Security=SSPI;Current Language=简体中文;Use Encryption for Data=True";
  EXPECT_EQ(OdbcConnectionString(ReadServerLogin(further), {kFreeTds, "FreeTDS"}),
            "Driver=FreeTDS;Server=h\\HIS;TDS_Version=7.4;ClientCharset=UTF-8;Encryption=require;Language=简体中文;"
            "APP=luming;");
  EXPECT_EQ(OdbcConnectionString(ReadServerLogin(further), {kMicrosoft, "M"}),
            "Driver=M;Server=h\\HIS;Encrypt=yes;TrustServerCertificate=yes;Trusted_Connection=yes;Language=简体中文;"
            "APP=luming;");
}

TEST(ServerLoginTest, NoValueReadsAsAFurtherPart) {
  const ServerLogin login =
      ReadServerLogin("Data Source=h;User ID=\"a;Server=evil\";Password='p}w;Trusted_Connection=yes';");
  const std::string free_tds = OdbcConnectionString(login, {kFreeTds, "F"});
  EXPECT_NE(free_tds.find("UID={a;Server=evil};PWD={p}w;Trusted_Connection=yes};"), std::string::npos) << free_tds;
  const std::string microsoft = OdbcConnectionString(login, {kMicrosoft, "M"});
  EXPECT_NE(microsoft.find("UID={a;Server=evil};PWD={p}}w;Trusted_Connection=yes};"), std::string::npos) << microsoft;
  const ServerLogin closing = ReadServerLogin("Data Source=h;Password='a};Server=evil'");
  EXPECT_EQ(FailureOf([&] { OdbcConnectionString(closing, {kFreeTds, "F"}); }), failure::kGeneralProvider);
  EXPECT_NE(OdbcConnectionString(closing, {kMicrosoft, "M"}).find("PWD={a}};Server=evil};"), std::string::npos);
}

TEST(OdbcDriverTest, TheMakersNewestComesFirstThenFreeTds) {
  const std::filesystem::path library = "/usr/lib/odbc/libtdsodbc.so";
  const auto chosen = [](const std::vector<std::string>& installed,
                         const std::optional<std::filesystem::path>& freetds) {
    const auto driver = ChooseDriver(installed, freetds);
    return driver ? (driver->maker == kMicrosoft ? "M:" : "F:") + driver->name : std::string("none");
  };
  EXPECT_EQ(chosen({"FreeTDS", "ODBC Driver 9 for SQL Server", "ODBC Driver 18 for SQL Server", "PostgreSQL"}, library),
            "M:ODBC Driver 18 for SQL Server");
  EXPECT_EQ(chosen({"FreeTDS", "ODBC Driver 17 for DB2"}, library), "F:/usr/lib/odbc/libtdsodbc.so");
  EXPECT_EQ(chosen({"PostgreSQL", "freetds"}, std::nullopt), "F:freetds");
  EXPECT_EQ(chosen({"PostgreSQL"}, std::nullopt), "none");
}

TEST(OdbcApiTest, MissingDriverManagerSaysWhatToInstall) {
  const Failure missing = Caught([] { LoadOdbc("libnosuchodbc.so.9"); });
  EXPECT_EQ(missing.number(), failure::kGeneralProvider);
  EXPECT_NE(missing.description().find("tdsodbc"), std::string::npos) << missing.description();
}

}  // namespace
}  // namespace luming::sqlserver
