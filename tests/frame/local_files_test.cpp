#include "frame/local_files.h"

#include <sys/stat.h>

#include "support/app_test.h"
#include "support/failure_of.h"
#include "util/ansi_text.h"

namespace luming {
namespace {

class LocalFilesTest : public AppTest {
 protected:
  std::filesystem::path file = home / "DatabaseSet.data";
};

TEST_F(LocalFilesTest, RecordsLieAtTheirPlacesWithTheirLengthAhead) {
  ConnectionFile saved(home);
  saved.Write(2, "服务器A");
  saved.Write(7, "pw");
  saved.Save();
  const std::string bytes = ReadBytes(file);
  ASSERT_EQ(bytes.size(), 896U);
  EXPECT_EQ(bytes.substr(128, 2), std::string("\x07\0", 2));
  EXPECT_EQ(bytes.substr(130, 7), ToAnsi("服务器A"));
  EXPECT_EQ(ConnectionFile(home).Read(2), "服务器A");
  EXPECT_EQ(ConnectionFile(home).Read(1), "");
  EXPECT_EQ(ConnectionFile(home).Read(7), "pw");
  EXPECT_EQ(ConnectionFile(home).Read(8), "") << "past the end";
}

TEST_F(LocalFilesTest, BytesAndNotCharactersCountForWhatFits) {
  ConnectionFile records(home);
  const std::string fits = "测试" + std::string(122, 'x');
  EXPECT_EQ(FailureOf([&] { records.Write(1, fits); }), 0);
  EXPECT_EQ(FailureOf([&] { records.Write(1, fits + "y"); }), failure::kBadRecordLength);
  EXPECT_EQ(records.Read(1), fits) << "the record keeps what it had";
}

TEST_F(LocalFilesTest, ShorterTextLeavesOldBytesBehind) {
  ConnectionFile records(home);
  records.Write(1, "long value");
  records.Write(1, "new");
  records.Save();
  EXPECT_EQ(ReadBytes(file).substr(2, 10), "newg value");
  EXPECT_EQ(records.Read(1), "new");
}

TEST_F(LocalFilesTest, DamagedRecordsAreFailuresOfTheirOwn) {
  struct Case {
    std::string bytes;
    long failure;
  };
  for (const Case& one : {
           Case{std::string("\x7F\0", 2) + std::string(126, 'x'), failure::kBadRecordLength},
           Case{"\xFF\xFF" + std::string(126, 'x'), failure::kBadRecordLength},
           Case{std::string("\x05\0abc", 5), failure::kPastEndOfFile},
           Case{"\x05", failure::kPastEndOfFile},
           Case{std::string("\x03\0abc", 5), 0},
       }) {
    WriteBytes(file, one.bytes);
    EXPECT_EQ(FailureOf([&] { ConnectionFile(home).Read(1); }), one.failure) << one.bytes.size();
    EXPECT_EQ(FailureOf([&] { ConnectionFile(home).Read(3); }), 0);
  }
}

TEST_F(LocalFilesTest, OnlyTheOwnerMayReadTheConnection) {
  const auto mode = [&] {
    struct stat facts {};
    EXPECT_EQ(stat(file.c_str(), &facts), 0);
    return facts.st_mode & 0777;
  };
  const ConnectionFile created(home);
  EXPECT_EQ(mode(), 0600U);
  EXPECT_EQ(std::filesystem::file_size(file), 0U) << "a missing file comes into being empty";
  chmod(file.c_str(), 0666);
  created.Save();
  EXPECT_EQ(mode(), 0600U);
}

TEST_F(LocalFilesTest, ConnectionStringOfTheFirstStartIsEmptyAndADamagedOneIsTold) {
  EXPECT_EQ(ReadConnStr(app), "");
  EXPECT_TRUE(desktop.boxes.empty());
  WriteBytes(file, "\xFF\xFF garbage");
  EXPECT_EQ(ReadConnStr(app), "");
  const Box box = desktop.TakeBox();
  EXPECT_EQ(box.title, "读取连接字符串时出错");
  EXPECT_EQ(box.text, "出错信息：错误的记录长度");
}

TEST_F(LocalFilesTest, LastUserIsOneLineInTheCodePage) {
  EXPECT_EQ(ReadLastUser(app), "");
  WriteLastUser(app, "张三");
  EXPECT_EQ(ReadBytes(home / "User.data"), ToAnsi("张三") + "\r\n");
  EXPECT_EQ(ReadLastUser(app), "张三");
  WriteBytes(home / "User.data", "first\nsecond");
  EXPECT_EQ(ReadLastUser(app), "first");

  std::filesystem::remove(home / "User.data");
  std::filesystem::create_directories(home / "User.data" / "in the way");
  EXPECT_EQ(ReadLastUser(app), "");
  WriteLastUser(app, "张三");
  EXPECT_TRUE(desktop.boxes.empty()) << "errors are ignored";
}

}  // namespace
}  // namespace luming
