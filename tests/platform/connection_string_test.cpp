#include "platform/connection_string.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "platform/server_errors.h"

namespace luming {
namespace {

TEST(ConnectionStringTest, PartsGoByAnyOfTheirNames) {
  const ConnectionString dialog(
      "Provider=sqloledb;Data Source=药库服务器;Initial Catalog=lumndata;User ID=sa;Password=1;");
  EXPECT_EQ(dialog.Server(), "药库服务器");
  EXPECT_EQ(dialog.Database(), "lumndata");
  EXPECT_EQ(dialog.User(), "sa");
  EXPECT_EQ(dialog.Password(), "1");
  const ConnectionString typed(" SERVER = SQL1 ; database=db;uid=  u  ;Pwd=a=b");
  EXPECT_EQ(typed.Server(), "SQL1");
  EXPECT_EQ(typed.Database(), "db");
  EXPECT_EQ(typed.User(), "u");
  EXPECT_EQ(typed.Password(), "a=b");
  EXPECT_EQ(ConnectionString("User ID=;UID=x").User(), "") << "a part that is there and empty is not sought elsewhere";
}

TEST(ConnectionStringTest, ValuesEndWhereTheirQuotesOrTheNextPartSay) {
  struct Case {
    const char* text;
    const char* password;
  };
  const Case cases[] = {
      {R"(Password="a;b";User ID=u)", "a;b"},
      {R"(Password='it''s';User ID=u)", "it's"},
      {R"(Password= "a""b" ;User ID=u)", "a\"b"},
      {R"(Password='a"b';User ID=u)", "a\"b"},
      {R"(Password="";User ID=u)", ""},
      {R"(Password="open;User ID=u)", "\"open"},
      {R"(Password='a'b;User ID=u)", "'a'b"},
      {R"(Password=p;w;User ID=u)", "p"},
      {R"(Password=first;Password=last;User ID=u)", "last"},
      {R"(Password={x;User ID=u)", "{x"},
      {R"(Password=;User ID=u)", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ConnectionString(c.text).Password(), c.password) << c.text;
    EXPECT_EQ(ConnectionString(c.text).User(), "u") << c.text;
  }
}

TEST(ConnectionStringTest, WhatIsNoPartIsPassedOver) {
  for (const char* text : {"", ";;=;", "=x;;", "nonsense", "nonsense;=\"", "\xff=\xfe;", "a='"}) {
    EXPECT_EQ(ConnectionString(text).Server(), "") << text;
  }
  EXPECT_EQ(ConnectionString("junk;=;Server=s;junk").Server(), "s");
}

TEST(ServerErrorsTest, NumbersAreThoseOfAnAdoClient) {
  const std::map<long, std::vector<int>> shown = {
      {-2147217900, {102, 105, 156, 170, 207, 201, 2812, 213, 50000, 2714, 99999}},
      {-2147217865, {208, 3701}},
      {-2147217873, {2627, 2601, 515, 547}},
      {-2147217913, {241, 242, 245, 8114}},
      {-2147217833, {8115, 8152, 2628}},
      {-2147467259, {4060, 1205, 1222, 824, 948}},
      {-2147217911, {229}},
      {-2147217843, {18456}},
  };
  for (const auto& [number, natives] : shown) {
    for (const int native : natives) EXPECT_EQ(AdoNumberOf(native), number) << native;
  }
}

}  // namespace
}  // namespace luming
