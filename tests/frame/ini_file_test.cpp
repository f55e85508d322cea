#include "frame/ini_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_directory.h"
#include "util/ansi_text.h"

namespace luming {
namespace {

class IniFileTest : public ::testing::Test {
 protected:
  IniFileTest() { ini.SpecifyIni(file.string() + "  "); }

  void Write(std::string_view utf8) { WriteBytes(file, ToAnsi(utf8)); }
  std::string Text(std::string_view section, std::string_view key, int size = 200) {
    return ini.ReadString(section, key, size);
  }

  TempDirectory directory;
  std::filesystem::path file = directory / "LUMN.ini";
  CIniFile ini;
};

TEST_F(IniFileTest, WithoutAPathNothingIsReadAndTheErrorSaysSo) {
  CIniFile unset;
  int size = 10;
  EXPECT_EQ(unset.ReadString("a", "b", size), "");
  EXPECT_EQ(size, 10) << "the size grows only when there is something to read";
  EXPECT_EQ(unset.ErrorMsg(), "没有指定 INI 文件");
  EXPECT_EQ(unset.ReadInt("a", "b"), 0);
}

TEST_F(IniFileTest, ReadingCutsTrimsAndGrowsTheCallersSize) {
  Write("[配置]\r\n药库类型 =  西药库  \r\n");
  int size = 200;
  EXPECT_EQ(ini.ReadString("配置", "药库类型", size), "西药库");
  EXPECT_EQ(size, 201);
  EXPECT_EQ(Text("配置", "药库类型", 4), "西药") << "bytes count";
  EXPECT_EQ(Text("配置", "药库类型", 3), "西") << "no character is split";
  EXPECT_EQ(Text("配置", "药库类型", 0), "");
  EXPECT_EQ(Text("配置", "药库类型", -5), "");
}

TEST_F(IniFileTest, WhatCountsAsAKey) {
  struct Case {
    const char* content;
    const char* value;
  };
  for (const Case& one : {
           Case{"[Skin]\nUseSkin=1\n", "1"},
           Case{"[SKIN]\nuseskin=1\n", "1"},
           Case{"  [ Skin ] rest\n  UseSkin\t= 1", "1"},
           Case{"[Skin]\nUseSkin=\"1\"\n", "1"},
           Case{"[Skin]\nUseSkin='a b '\n", "a b"},
           Case{"[Skin]\nUseSkin=\"1\n", "\"1"},
           Case{"[Skin]\nUseSkin=a=b\n", "a=b"},
           Case{"[Skin]\nUseSkin=1\nUseSkin=2\n", "1"},
           Case{"[Skin]\nUseSkin=1;2\n", "1;2"},
           Case{"[Skin]\n;UseSkin=1\nUseSkin=2\n", "2"},
           Case{"[Skin]\nUseSkin\nUseSkin=2\n", "2"},
           Case{"UseSkin=1\n[Skin]\nUseSkin=2\n", "2"},
           Case{"[Skin]\nA=1\n[Other]\nUseSkin=2\n", ""},
           Case{"[Skin\nUseSkin=2\n", ""},
           Case{"", ""},
       }) {
    Write(one.content);
    EXPECT_EQ(Text("Skin", "UseSkin"), one.value) << one.content;
  }
}

TEST_F(IniFileTest, FilesInUtf8AreReadWithAndWithoutMark) {
  WriteBytes(file, "\xEF\xBB\xBF[配置]\n药库类型=中药库\n");
  EXPECT_EQ(Text("配置", "药库类型"), "中药库");
  WriteBytes(file, "[配置]\n药库类型=中药库\n");
  EXPECT_EQ(Text("配置", "药库类型"), "中药库");
}

TEST_F(IniFileTest, NumbersAreToldFromMissingOnes) {
  struct Case {
    const char* value;
    std::int32_t number;
    const char* error;
  };
  for (const Case& one : {
           Case{"=1", 1, ""},
           Case{"=0", 0, ""},
           Case{"=30 days", 30, ""},
           Case{"=\"7\"", 7, ""},
           Case{"=-535951356", -535951356, ""},
           Case{"=3759015940", -535951356, ""},
           Case{"=99999999999999999999999", 0, nullptr},
           Case{"=abc", 0, ""},
           Case{"=", 0, "不能读取"},
           Case{"", 0, "不能读取"},
       }) {
    Write(std::string("[输入法]\r\nIME") + one.value + "\r\n");
    const std::int32_t number = ini.ReadInt("输入法", "IME");
    if (!one.error) continue;  // only must not fail
    EXPECT_EQ(number, one.number) << one.value;
    EXPECT_EQ(ini.ErrorMsg(), one.error) << one.value;
  }
}

TEST_F(IniFileTest, ValueEndsAtAZeroByte) {
  WriteBytes(file, std::string("[a]\nb=one\0two\n", 14));
  EXPECT_EQ(Text("a", "b"), "one");
}

TEST_F(IniFileTest, WritingLeavesTheOtherLinesAlone) {
  struct Case {
    const char* before;
    const char* after;
  };
  for (const Case& one : {
           Case{"", "[配置]\r\n预警天数=7\r\n"},
           Case{"; note\r\n[配置]\r\n预警天数 = 3\r\n药库类型=西药库\r\n",
                "; note\r\n[配置]\r\n预警天数=7\r\n药库类型=西药库\r\n"},
           Case{"[配置]\n药库类型=西药库\n\n[报警]\nx=1\n", "[配置]\n药库类型=西药库\n预警天数=7\n\n[报警]\nx=1\n"},
           Case{"[报警]\r\nx=1", "[报警]\r\nx=1\r\n[配置]\r\n预警天数=7\r\n"},
           Case{"[配置]", "[配置]\r\n预警天数=7\r\n"},
       }) {
    Write(one.before);
    ini.WriteString("配置", "预警天数", "7");
    EXPECT_EQ(FromAnsi(ReadBytes(file)), one.after);
    EXPECT_EQ(ini.ErrorMsg(), "");
  }
}

TEST_F(IniFileTest, WritingKeepsBytesThatItDoesNotUnderstand) {
  const std::string odd = "\x81\xFF\x01 odd\r\n[a]\r\nb=1\r\n";
  WriteBytes(file, odd);
  ini.WriteString("a", "b", "2");
  EXPECT_EQ(ReadBytes(file), std::string(odd).replace(odd.find("b=1"), 3, "b=2"));
}

TEST_F(IniFileTest, WritingKeepsAccessRightsAndInventsNoLines) {
  Write("[a]\r\nb=1\r\n");
  chmod(file.c_str(), 0640);
  ini.WriteString("a", "b", "x\r\n[c]\r\nd=1");
  EXPECT_EQ(Text("c", "d"), "");
  struct stat facts {};
  ASSERT_EQ(stat(file.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 0777, 0640U);
}

TEST_F(IniFileTest, FailedWriteSaysSo) {
  ini.SpecifyIni((directory / "missing" / "LUMN.ini").string());
  ini.WriteString("a", "b", "c");
  EXPECT_EQ(ini.ErrorMsg(), "写入失败");
}

}  // namespace
}  // namespace luming
