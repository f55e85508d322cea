#include "app/connection_router.h"

#include <gtest/gtest.h>

#include "support/fake_store.h"

namespace luming {
namespace {

TEST(ConnectionStringTest, ValuesByKey) {
  const std::string text = "Provider=sqloledb; data source = SQL1 ;Initial Catalog=db;User ID=;Password=a=b;";
  EXPECT_EQ(ConnectionStringValue(text, "Data Source"), "SQL1");
  EXPECT_EQ(ConnectionStringValue(text, "Password"), "a=b");
  EXPECT_EQ(ConnectionStringValue(text, "User ID"), "");
  EXPECT_EQ(ConnectionStringValue(text, "Server"), "");
  EXPECT_EQ(ConnectionStringValue(";;=;", "Server"), "");
}

class RouterTest : public ::testing::Test {
 protected:
  FakeStore embedded;
  FakeStore server;
  RoutedConnection connection{[this] { return embedded.Connect(); }, [this] { return server.Connect(); }};

  static std::string FailureOf(const std::function<void()>& step) {
    try {
      step();
    } catch (const Failure& failure) {
      return failure.description();
    }
    return {};
  }
};

TEST_F(RouterTest, DataSourceDecidesAtEachOpening) {
  connection.Open("Data Source=(LocalDB);");
  connection.Execute("one");
  connection.Close();
  EXPECT_FALSE(connection.IsOpen());
  connection.Open("Data Source=SQL1;");
  connection.Execute("two");
  EXPECT_EQ(embedded.TakeSent(), (std::vector<std::string>{"open Data Source=(LocalDB);", "one", "close"}));
  EXPECT_EQ(server.TakeSent(), (std::vector<std::string>{"open Data Source=SQL1;", "two"}));
}

TEST_F(RouterTest, WhatCannotBeOpenedSaysWhyAndStaysClosed) {
  RoutedConnection embedded_only([this] { return embedded.Connect(); }, nullptr);
  EXPECT_NE(FailureOf([&] { embedded_only.Open("Data Source=SQL1;"); }).find("SQL1"), std::string::npos);
  EXPECT_NE(FailureOf([&] { embedded_only.Open(""); }).find("没有指定数据库服务器"), std::string::npos);
  EXPECT_FALSE(embedded_only.IsOpen());
  EXPECT_EQ(FailureOf([&] { embedded_only.Execute("x"); }), StandardFailure(failure::kClosedObject).description());
  EXPECT_EQ(FailureOf([&] { embedded_only.Close(); }), "");
}

}  // namespace
}  // namespace luming
