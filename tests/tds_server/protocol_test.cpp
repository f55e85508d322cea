#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "localdb/local_connection.h"
#include "support/temp_directory.h"
#include "tds_server/raw_client.h"
#include "tds_server/tds_server.h"
#include "tds_server/wire.h"

namespace luming::test {
namespace {

using std::string_literals::operator""s;
using tds::MessageType;

class ProtocolTest : public testing::Test {
 protected:
  ProtocolTest() { CreateStore(directory_.Path(), "s"); }

  /// The reply of a fresh session to a text.
  std::string Answer(const std::string& sql, unsigned version = 0x74) {
    RawClient client(server_.Port());
    EXPECT_FALSE(client.LogIn("s", version).empty());
    client.SendBatch(sql);
    return client.Receive();
  }
  static bool Holds(const std::string& reply, const std::string& bytes) {
    return reply.find(bytes) != std::string::npos;
  }
  /// A token DONE, DONEPROC or DONEINPROC.
  static std::string Done(unsigned token, unsigned status, std::uint64_t count) {
    tds::Writer out;
    out.U8(token);
    out.U16(status);
    out.U16(0);
    out.U64(count);
    return out.bytes();
  }

  TempDirectory directory_;
  FixedClock clock_{DateTime(2026, 3, 1)};
  tds::TdsServer server_{directory_.Path(), clock_};
};

TEST_F(ProtocolTest, WhatIsNoMessageEndsTheSessionAndNothingElse) {
  const std::vector<std::string> wrong = {
      "GET / HTTP/1.0\r\n\r\n",
      "\x01\x01\x00\x03\x00\x00\x01\x00"s,          // a packet shorter than its own head
      "\x01\x01\x00\x08\x00\x00\x01\x00"s,          // a batch ahead of the login
      "\x10\x01\x00\x0a\x00\x00\x01\x00\x05\x00"s,  // a login that ends too early
      "\x63\x01\x00\x09\x00\x00\x01\x00\x00"s,      // a message of no known type
  };
  for (const std::string& bytes : wrong) {
    RawClient client(server_.Port());
    client.SendRaw(bytes);
    client.SendRaw(std::string(600, '\x7f'));
    EXPECT_TRUE(client.IsCut()) << bytes;
  }
  std::string login = LoginBody("s", 0x74);
  login[42] = '\xff';  // a user name that reaches past the end
  login[43] = '\xff';
  RawClient long_name(server_.Port());
  long_name.Send(MessageType::kLogin, login);
  EXPECT_TRUE(long_name.IsCut());

  const std::vector<std::pair<MessageType, std::string>> after_login = {
      {MessageType::kBatch, ""},
      {MessageType::kBatch, "\xff\xff\xff\x7f"},                 // headers that reach past the end
      {MessageType::kTransaction, "\x04\x00\x00\x00\x63\x00"s},  // an unknown request
      {MessageType::kTransaction, "\x04\x00\x00\x00\x07\x00\x09"s},
      {MessageType::kLogin, LoginBody("s", 0x74)},
  };
  for (const auto& [type, body] : after_login) {
    RawClient client(server_.Port());
    ASSERT_FALSE(client.LogIn("s").empty());
    client.Send(type, body);
    EXPECT_TRUE(client.IsCut());
  }
  EXPECT_TRUE(Holds(Answer("Select 1"), Done(0xfd, 0x10, 1)));
}

TEST_F(ProtocolTest, OldProtocolsAreNotTaken) {
  RawClient client(server_.Port());
  EXPECT_EQ(client.LogIn("s", 0x71), "");
}

TEST_F(ProtocolTest, EncryptionIsDeclined) {
  RawClient client(server_.Port());
  client.Send(MessageType::kPrelogin, "\x01\x00\x06\x00\x01\xff\x00"s);
  const std::string answer = client.Receive();
  ASSERT_FALSE(answer.empty());
  EXPECT_EQ(answer.back(), '\x02');
  EXPECT_TRUE(Holds(client.LogIn("s"), "\xad"));
}

TEST_F(ProtocolTest, RowsWithNullsAreShortenedFrom73On) {
  const std::string sql = "Select Cast(Null as int) a, Cast(7 as int) b";
  EXPECT_TRUE(Holds(Answer(sql, 0x72), "\xd1\x00\x04\x07\x00\x00\x00"s));
  EXPECT_TRUE(Holds(Answer(sql, 0x73), "\xd2\x01\x04\x07\x00\x00\x00"s));
}

TEST_F(ProtocolTest, LongTextsGoInChunks) {
  const std::string reply = Answer("Select Replicate('药',4001) a");
  EXPECT_TRUE(Holds(reply, "\xa7\xff\xff"s));
  EXPECT_TRUE(Holds(reply, "\x42\x1f\x00\x00\x00\x00\x00\x00\x42\x1f\x00\x00"s));
  EXPECT_TRUE(Holds(Answer("Select Replicate('药',4000) a"), "\xa7\x40\x1f"s));
}

TEST_F(ProtocolTest, CountsAndStatesOfStatementsAndProcedures) {
  Answer("Create Table T(a int)");
  Answer("Create Procedure P As Insert into T Values(1) Insert into T Select a From T Return 5");
  Answer("Create Procedure Q As Set Nocount On Insert into T Values(1)");
  // More results follow each of them but the last.
  EXPECT_EQ(Answer("Insert into T Values(1) Delete From T Where a=9 Update T Set a=2"),
            Done(0xfd, 0x11, 1) + Done(0xfd, 0x11, 0) + Done(0xfd, 0x10, 1));
  EXPECT_EQ(Answer("Exec P"), Done(0xff, 0x11, 1) + Done(0xff, 0x11, 2) + "\x79\x05\x00\x00\x00"s + Done(0xfe, 0, 0));
  EXPECT_EQ(Answer("Exec Q Delete From T Where a=9"), "\x79\x00\x00\x00\x00"s + Done(0xfe, 1, 0) + Done(0xfd, 0x10, 0));
  EXPECT_EQ(Answer("Declare @a int"), Done(0xfd, 0, 0));
  // In a transaction, whose beginning is told to the client ahead.
  EXPECT_TRUE(Answer("Begin Transaction").ends_with(Done(0xfd, 4, 0)));
}

TEST_F(ProtocolTest, AttentionsAndCallsAreAnswered) {
  RawClient client(server_.Port());
  ASSERT_FALSE(client.LogIn("s").empty());
  client.Send(MessageType::kAttention, "");
  EXPECT_EQ(client.Receive(), Done(0xfd, 0x20, 0));
  client.Send(MessageType::kCall, "\x04\x00\x00\x00"s);
  EXPECT_TRUE(Holds(client.Receive(), tds::Utf16Bytes("不接受远程过程调用")));
  client.SendBatch("Select 1");
  EXPECT_FALSE(client.Receive().empty());
}

}  // namespace
}  // namespace luming::test
