#include "app/connection_router.h"

#include <gtest/gtest.h>

#include "support/failure_of.h"
#include "support/fake_store.h"

namespace luming {
namespace {

class RouterTest : public ::testing::Test {
 protected:
  FakeStore embedded;
  FakeStore server;
  RoutedConnection connection{[this] { return embedded.Connect(); }, [this] { return server.Connect(); }};
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
  EXPECT_NE(WordsOf([&] { embedded_only.Open("Data Source=SQL1;"); }).find("SQL1"), std::string::npos);
  EXPECT_NE(WordsOf([&] { embedded_only.Open(""); }).find("没有指定数据库服务器"), std::string::npos);
  EXPECT_FALSE(embedded_only.IsOpen());
  EXPECT_EQ(WordsOf([&] { embedded_only.Execute("x"); }), StandardFailure(failure::kClosedObject).description());
  EXPECT_EQ(WordsOf([&] { embedded_only.Close(); }), "");
}

TEST_F(RouterTest, WhatWasLostIsOpenedAgainOutsideATransaction) {
  Connection* made = nullptr;
  RoutedConnection healing(nullptr, [&] {
    std::unique_ptr<Connection> one = server.Connect();
    made = one.get();
    return one;
  });
  healing.Open("Data Source=SQL1;");
  made->Close();
  healing.Execute("read");
  made->Close();
  healing.BeginTrans();
  healing.Execute("head");
  server.TakeSent();
  made->Close();
  EXPECT_NE(WordsOf([&] { healing.Execute("line"); }), "") << "half a document would be stored";
  EXPECT_NE(WordsOf([&] { healing.RollbackTrans(); }), "");
  healing.Execute("next");
  EXPECT_EQ(server.TakeSent(), (std::vector<std::string>{"close", "open Data Source=SQL1;", "next"}));
  healing.Close();
  EXPECT_EQ(WordsOf([&] { healing.Execute("read"); }), StandardFailure(failure::kClosedObject).description());
}

}  // namespace
}  // namespace luming
