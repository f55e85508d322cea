#include "util/utf16.h"

#include <gtest/gtest.h>

namespace luming {
namespace {

TEST(Utf16Test, EveryPlaneGoesThereAndBack) {
  const std::string text = "a药库\U00020BB7é";
  EXPECT_EQ(ToUtf16(text), u"a药库\U00020BB7é");
  EXPECT_EQ(ToUtf16(text).size(), 6U) << "a rare ideograph counts two";
  EXPECT_EQ(FromUtf16(ToUtf16(text)), text);
}

TEST(Utf16Test, WhatIsNoTextBecomesTheReplacementCharacter) {
  EXPECT_EQ(ToUtf16("a\xff"), u"a�");
  const char16_t halves[] = {'a', 0xD842, 'b', 0xDFB7, 0xD842};
  EXPECT_EQ(FromUtf16({halves, 5}), "a�b��");
}

}  // namespace
}  // namespace luming
