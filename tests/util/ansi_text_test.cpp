#include "util/ansi_text.h"

#include <gtest/gtest.h>

#include <thread>

#include "util/text.h"

namespace luming {
namespace {

std::string Repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

struct CodeCase {
  const char* utf8;
  const char* ansi;
};

TEST(AnsiText, ConvertsBothWays) {
  const CodeCase cases[] = {
      {"", ""},
      {"0.25g*24", "0.25g*24"},
      {"片", "\xC6\xAC"},
      {"药库A库",
       "\xD2\xA9\xBF\xE2"
       "A\xBF\xE2"},
      {"￥１：", "\xA3\xA4\xA3\xB1\xA3\xBA"},
      {"·—…“”【】", "\xA1\xA4\xA1\xAA\xA1\xAD\xA1\xB0\xA1\xB1\xA1\xBE\xA1\xBF"},
      {"Ⅱα㎎", "\xA2\xF2\xA6\xC1\xA9\x4A"},
      // Characters outside the older set of 6,763, one with a trail byte of a backslash.
      {"镕喆", "\xE9\x46\x86\xB4"},
      {"襖", "\xD2\x5C"},
      {"€", "\x80"},
  };
  for (const CodeCase& c : cases) {
    EXPECT_EQ(ToAnsi(c.utf8), c.ansi) << c.utf8;
    EXPECT_EQ(FromAnsi(c.ansi), c.utf8) << c.utf8;
    EXPECT_EQ(AnsiLength(c.utf8), std::string_view(c.ansi).size()) << c.utf8;
  }
}

TEST(AnsiText, AllCharactersOfTheCodePageRoundTrip) {
  int characters = 0;
  for (int lead = 0x81; lead <= 0xFE; ++lead) {
    for (int trail = 0x40; trail <= 0xFE; ++trail) {
      const std::string pair = {static_cast<char>(lead), static_cast<char>(trail)};
      const std::string utf8 = FromAnsi(pair);
      if (CharCount(utf8) != 1 || utf8 == "\uFFFD") continue;
      ++characters;
      ASSERT_EQ(ToAnsi(utf8), pair) << utf8;
    }
  }
  EXPECT_EQ(characters, 21'791);
}

TEST(AnsiText, OutsideTheCodePageIsAQuestionMark) {
  EXPECT_EQ(ToAnsi("a😀é片"), "a?\xA8\xA6\xC6\xAC");
  EXPECT_EQ(ToAnsi("¥"), "?");
  EXPECT_EQ(ToAnsi("\xFF片"), "?\xC6\xAC");
  EXPECT_EQ(AnsiLength("a😀é片"), 6u);
}

TEST(AnsiText, BadBytesAreReplacedWithoutSwallowingTheNextLetter) {
  EXPECT_EQ(FromAnsi("\xC6"), "\uFFFD");
  EXPECT_EQ(FromAnsi("\xC6\"x"), "\uFFFD\"x");
  EXPECT_EQ(FromAnsi("\xFF"
                     "a"),
            "\uFFFDa");
  EXPECT_EQ(FromAnsi("\xC6\x80"), "苺");
  EXPECT_EQ(FromAnsi("\x81\x7Fz"), "\uFFFD\x7Fz");
  EXPECT_EQ(FromAnsi(std::string_view("a\0b", 3)), std::string_view("a\0b", 3));
}

TEST(AnsiText, ThreadsShareTheCodePage) {
  std::string in_thread;
  std::thread thread([&] { in_thread = ToAnsi("片"); });
  const std::string here = FromAnsi("\xC6\xAC");
  thread.join();
  EXPECT_EQ(in_thread, "\xC6\xAC");
  EXPECT_EQ(here, "片");
}

TEST(CutAnsi, SplitsNoDoubleByteCharacter) {
  const std::string name = Repeated("药", 26);
  EXPECT_EQ(CutAnsi(name, 52), name);
  EXPECT_EQ(CutAnsi(name, 51), Repeated("药", 25));
  EXPECT_EQ(CutAnsi(name, 50), Repeated("药", 25));
  EXPECT_EQ(CutAnsi("a药b", 2), "a");
  EXPECT_EQ(CutAnsi("a药b", 3), "a药");
  EXPECT_EQ(CutAnsi("药", 1), "");
  EXPECT_EQ(CutAnsi("药", 0), "");
  EXPECT_EQ(CutAnsi("😀😀a", 2), "😀😀");
}

TEST(CutAnsi, TrimsFirstAndNotAfterwards) {
  EXPECT_EQ(CutAnsi("  药片  ", 4), "药片");
  EXPECT_EQ(CutAnsi("    ", 2), "");
  EXPECT_EQ(CutAnsi("ab cd", 3), "ab ");
}

TEST(CutAnsi, LeavesADateAsItIs) {
  EXPECT_EQ(CutAnsi("2026-3-1 ", 4), "2026-3-1 ");
  EXPECT_EQ(CutAnsi(" 2026年3月1日 8:05:00  ", 4), " 2026年3月1日 8:05:00  ");
  EXPECT_EQ(CutAnsi("20260301 ", 4), "2026");
}

}  // namespace
}  // namespace luming
