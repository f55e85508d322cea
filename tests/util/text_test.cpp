#include "util/text.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

TEST(Text, CountsAndCutsByCharacterNotByByte) {
  const std::string name = "阿莫西林 0.25g";
  EXPECT_EQ(CharCount(name), 10u);
  EXPECT_EQ(Left(name, 4), "阿莫西林");
  EXPECT_EQ(Right(name, 6), " 0.25g");
  EXPECT_EQ(Mid(name, 3, 3), "西林 ");
  EXPECT_EQ(Mid(name, 6), "0.25g");
  EXPECT_EQ(Characters("片A😀"), (std::vector<std::string>{"片", "A", "😀"}));
}

TEST(Text, CutsPastTheEndsGiveWhatThereIs) {
  EXPECT_EQ(Left("片", 0), "");
  EXPECT_EQ(Left("片", 9), "片");
  EXPECT_EQ(Right("片剂", 9), "片剂");
  EXPECT_EQ(Right("片剂", 0), "");
  EXPECT_EQ(Mid("片剂", 3, 1), "");
  EXPECT_EQ(Mid("片剂", 9), "");
  EXPECT_EQ(Mid("片剂", 0, 1), "片");
  EXPECT_EQ(CharCount(""), 0u);
}

TEST(Text, TrimsBlanksAlone) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("\t片　 "), "\t片　");
  EXPECT_EQ(TrimRight("  a  "), "  a");
  EXPECT_EQ(TrimRight("   "), "");
}

TEST(Text, SplitsJoinsAndReplaces) {
  EXPECT_EQ(Split("a;;b;", ";"), (std::vector<std::string>{"a", "", "b", ""}));
  EXPECT_EQ(Split("合计：1合计：", "合计："), (std::vector<std::string>{"", "1", ""}));
  EXPECT_TRUE(Split("", ";").empty());
  EXPECT_EQ(Split("a", ""), std::vector<std::string>{"a"});
  EXPECT_EQ(Join({"a", "", "b"}, "、"), "a、、b");
  EXPECT_EQ(Replace("a  b ", " ", ""), "ab");
  EXPECT_EQ(Replace("aaa", "aa", "aaaa"), "aaaaa");
  EXPECT_EQ(Replace("abc", "", "x"), "abc");
  EXPECT_EQ(Replace("", "a", "x"), "");
}

TEST(Text, CaseConcernsLatinLettersOnly) {
  EXPECT_EQ(LowerAscii("YPBM药Ａ"), "ypbm药Ａ");
  EXPECT_EQ(UpperAscii("ypbm_1药"), "YPBM_1药");
  EXPECT_TRUE(EqualsIgnoreCase("YK_CurryPH", "yk_curryph"));
  EXPECT_FALSE(EqualsIgnoreCase("YPBM", "YPB"));
  // Bytes that differ by the case bit alone without being letters.
  EXPECT_FALSE(EqualsIgnoreCase("@", "`"));
  EXPECT_FALSE(EqualsIgnoreCase("[", "{"));
}

struct Utf8Case {
  const char* what;
  std::string_view bytes;
  std::string_view repaired;  ///< the same text when it is valid
};

TEST(Text, BadUtf8IsFoundAndRepairedByteByByte) {
  using namespace std::string_view_literals;
  const Utf8Case cases[] = {
      {"empty", "", ""},
      {"all lengths", "a¢片😀", "a¢片😀"},
      {"zero byte", "a\0b"sv, "a\0b"sv},
      {"last code point", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
      {"stray continuation", "a\x80z", "a\uFFFDz"},
      {"cut short at the end", "片\xE7\x89", "片\uFFFD\uFFFD"},
      {"cut short by a letter", "\xE7\x89z", "\uFFFD\uFFFDz"},
      {"overlong slash", "\xC0\xAF", "\uFFFD\uFFFD"},
      {"overlong of three", "\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD"},
      {"surrogate", "\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
      {"past the last code point", "\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"lead of five", "\xF8\x88", "\uFFFD\uFFFD"},
  };
  for (const Utf8Case& c : cases) {
    EXPECT_EQ(IsValidUtf8(c.bytes), c.bytes == c.repaired) << c.what;
    EXPECT_EQ(ToValidUtf8(c.bytes), c.repaired) << c.what;
    EXPECT_EQ(CharCount(c.bytes), CharCount(c.repaired)) << c.what;
  }
}

TEST(Text, CodePointsRoundTrip) {
  for (const char32_t c :
       {U'\0', U'\x7F', U'\x80', U'\u07FF', U'\u0800', U'片', U'\uFFFF', U'\U00010000', U'\U0010FFFF'}) {
    const std::string bytes = EncodeUtf8(c);
    std::size_t position = 0;
    EXPECT_EQ(NextCodePoint(bytes, position), c);
    EXPECT_EQ(position, bytes.size());
  }
  EXPECT_EQ(EncodeUtf8(0xD800), "\uFFFD");
  EXPECT_EQ(EncodeUtf8(0x110000), "\uFFFD");
}

}  // namespace
}  // namespace luming
