#include "util/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

#include "support/failure_of.h"

namespace luming {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

struct Reading {
  const char* text;
  std::optional<double> value;
};

TEST(NumberText, ReadsWhatADesktopTakesForANumber) {
  const Reading readings[] = {
      // No number at all.
      {"", {}},
      {" ", {}},
      {"-", {}},
      {"￥", {}},
      {".", {}},
      {"1-2", {}},
      {"1 2", {}},
      {"1.2.3", {}},
      {"--5", {}},
      {"-5-", {}},
      {"￥￥5", {}},
      {"5￥", {}},
      {"5片", {}},
      {",5", {}},
      {"1.2,3", {}},
      {"1e", {}},
      {"1e+", {}},
      {"e5", {}},
      {"inf", {}},
      {"-nan", {}},
      {"0x10", {}},
      {"$5", {}},
      {"＄5", {}},
      {"1e400", {}},
      {"5\n", {}},
      {"\xFF", {}},
      // Plain forms.
      {"0", 0},
      {"12.5", 12.5},
      {"1.", 1},
      {".5", 0.5},
      {"-.5", -0.5},
      {"007", 7},
      {"1e3", 1000},
      {"1.5E-2", 0.015},
      {"0.1", 0.1},
      {"99999999999999999999", 1e20},
      // Signs, blanks, currency, separators, full width.
      {"  12.50 ", 12.5},
      {"+5", 5},
      {"5-", -5},
      {"5 +", 5},
      {"- 5", -5},
      {"￥12.50", 12.5},
      {"¥ 12.50", 12.5},
      {"-￥1.5", -1.5},
      {"￥-1.5", -1.5},
      {"￥0.0000", 0},
      {"1,234.5", 1234.5},
      {"￥1,234,567.25", 1234567.25},
      {"１２", 12},
      {"－１，２３４．５", -1234.5},
      {"　8　", 8},
  };
  for (const Reading& c : readings) {
    EXPECT_EQ(ParseNumber(c.text), c.value) << '[' << c.text << ']';
    EXPECT_EQ(IsNumeric(c.text), c.value.has_value()) << '[' << c.text << ']';
    if (c.value) {
      EXPECT_EQ(CDbl(c.text), *c.value) << '[' << c.text << ']';
    } else {
      EXPECT_EQ(FailureOf([&] { CDbl(c.text); }), failure::kTypeMismatch) << '[' << c.text << ']';
    }
  }
}

TEST(NumberText, ReadsTheNumberAheadOfAnythingElse) {
  EXPECT_EQ(Val("24片"), 24);
  EXPECT_EQ(Val(" - 1 2.5g"), -12.5);
  EXPECT_EQ(Val("1,234"), 1);
  EXPECT_EQ(Val("1e3x"), 1000);
  EXPECT_EQ(Val("1-2"), 1);
  EXPECT_EQ(Val("3e"), 3);
  EXPECT_EQ(Val("+.5"), 0.5);
  for (const char* none : {"", "片", "-", ".", "+-5", "￥5", "inf", "1e999"}) EXPECT_EQ(Val(none), 0) << none;
}

TEST(NumberText, WholeNumbersRoundHalvesToEven) {
  EXPECT_EQ(CLng(2.5), 2);
  EXPECT_EQ(CLng(3.5), 4);
  EXPECT_EQ(CLng(-2.5), -2);
  EXPECT_EQ(CLng("￥1,000.5"), 1000);
  EXPECT_EQ(CLng(2147483647.4), 2147483647);
  EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
  EXPECT_EQ(CInt(32767.4), 32767);
  EXPECT_EQ(CInt("-32768"), -32768);
}

TEST(NumberText, WholeNumbersRefuseWhatDoesNotFit) {
  for (const double value : {2147483647.5, -2147483649.0, 1e300, kInfinity, -kInfinity, kNoNumber}) {
    EXPECT_EQ(FailureOf([&] { CLng(value); }), failure::kOverflow) << value;
  }
  EXPECT_EQ(FailureOf([] { CInt(32767.5); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([] { CInt("40000"); }), failure::kOverflow);
  EXPECT_EQ(FailureOf([] { CLng("片"); }), failure::kTypeMismatch);
}

TEST(NumberText, DefaultTextHasFifteenDigitsAndNoTrailingZeros) {
  const std::pair<double, const char*> cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {-12.5, "-12.5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {1e14, "100000000000000"},
      {999999999999999, "999999999999999"},
      {999999999999999.9, "1E+15"},
      {1e15, "1E+15"},
      {-1.25e100, "-1.25E+100"},
      {0.0001, "0.0001"},
      {0.00001, "1E-05"},
      {0.000012345, "1.2345E-05"},
      {5e-324, "4.94065645841247E-324"},
      {123456789.123456789, "123456789.123457"},
  };
  for (const auto& [value, text] : cases) EXPECT_EQ(NumberText(value), text);
}

TEST(NumberText, DefaultTextAgreesWithTheCLibraryOnManyDoubles) {
  std::mt19937_64 random{20260301};  // the same in each run
  for (int i = 0; i < 50'000; ++i) {
    const double mantissa = std::uniform_real_distribution<double>(-10, 10)(random);
    const int power = std::uniform_int_distribution<int>(-20, 20)(random);
    const double scale = std::pow(10.0, std::uniform_int_distribution<int>(0, 16)(random));
    double value = std::round(mantissa * scale) / scale * std::pow(10.0, power);
    if (value == 0) value = 0;  // the C library would show the sign of a negative zero
    char printed[40];
    std::snprintf(printed, sizeof printed, "%.15G", value);
    ASSERT_EQ(NumberText(value), printed);
  }
}

struct Formatted {
  double value;
  const char* picture;
  const char* text;
};

TEST(FormatNumber, FollowsThePicture) {
  const Formatted cases[] = {
      {12.5, "0.00", "12.50"},
      {12.5, "0.000000", "12.500000"},
      {0, "0.0000", "0.0000"},
      {0.5, "#.00", ".50"},
      {0, "#.00", ".00"},
      {30, "#.00", "30.00"},
      {0, "#", ""},
      {26, "0000", "0026"},
      {7, "00", "07"},
      {2026, "00", "2026"},
      {1.5, "0.##", "1.5"},
      {1.256, "0.0#", "1.26"},
      {1.5, "￥0.0000", "￥1.5000"},
      {-1.5, "￥0.0000", "-￥1.5000"},
      {1234567.5, "#,##0.00", "1,234,567.50"},
      {-123, "#,##0", "-123"},
      {1234, "#,##0", "1,234"},
      {5, "共0.0元。", "共5.0元。"},
      {5, "No. 00", "No. 05"},
      {2.5, "", "2.5"},
      {2.5, "元", "2.5"},
  };
  for (const Formatted& c : cases) EXPECT_EQ(FormatNumber(c.value, c.picture), c.text) << c.picture;
}

TEST(FormatNumber, RoundsHalvesAwayFromZeroOnTheDecimalText) {
  const Formatted cases[] = {
      {1.2345, "0.000", "1.235"},
      {2.675, "0.00", "2.68"},
      {-2.675, "0.00", "-2.68"},
      {1.005, "0.00", "1.01"},
      {0.5, "0", "1"},
      {1.5, "0", "2"},
      {2.5, "0", "3"},
      {0.49999, "0", "0"},
      {9.9995, "0.000", "10.000"},
      {999.995, "0.00", "1000.00"},
      {0.00005, "0.0000", "0.0001"},
      {0.000049, "0.0000", "0.0000"},
      {0.0949, "0.0", "0.1"},
      {0.004, "0.00", "0.00"},
      // 1.0049999999999999 is 1.005 in 15 digits.
      {1.0049999999999999, "0.00", "1.01"},
      {0.1 * 3, "0.0000", "0.3000"},
      {1.1 * 1.1 * 100, "0.00", "121.00"},
  };
  for (const Formatted& c : cases) EXPECT_EQ(FormatNumber(c.value, c.picture), c.text) << c.value;
}

TEST(FormatNumber, ZeroBearsNoMinusAndExtremesPass) {
  EXPECT_EQ(FormatNumber(-0.0, "0.00"), "0.00");
  EXPECT_EQ(FormatNumber(-0.004, "0.00"), "0.00");
  EXPECT_EQ(FormatNumber(-0.005, "0.00"), "-0.01");
  EXPECT_EQ(FormatNumber(1e20, "0.0"), "100000000000000000000.0");
  EXPECT_EQ(FormatNumber(1.7e308, "0.00").size(), 312u);
  EXPECT_EQ(FormatNumber(5e-324, "0.00"), "0.00");
  EXPECT_EQ(FormatNumber(1e-7, "0.00000000"), "0.00000010");
  EXPECT_EQ(FormatNumber(kInfinity, "0.00"), "1.#INF");
  EXPECT_EQ(FormatNumber(-kInfinity, "0.00"), "-1.#INF");
  EXPECT_EQ(FormatNumber(kNoNumber, "0.00"), "-1.#IND");
}

TEST(FormatNumber, LeavesATextThatIsNoNumber) {
  EXPECT_EQ(FormatNumberText("12.3456", "0.000"), "12.346");
  EXPECT_EQ(FormatNumberText("￥1,234.5", "0.00"), "1234.50");
  EXPECT_EQ(FormatNumberText("", "0.00"), "");
  EXPECT_EQ(FormatNumberText(" ", "0.00"), " ");
  EXPECT_EQ(FormatNumberText("合计：", "0.00"), "合计：");
}

std::int64_t PowerOfTen(int power) {
  return power == 0 ? 1 : 10 * PowerOfTen(power - 1);
}

/// `count` of the given decimals rounded by whole-number arithmetic and written with `places` of them.
std::string RoundedByWholeNumbers(std::int64_t count, int decimals, int places) {
  const std::int64_t unit = PowerOfTen(std::max(decimals - places, 0));
  const std::int64_t magnitude = std::abs(count) * PowerOfTen(std::max(places - decimals, 0));
  const std::int64_t rounded = (magnitude + unit / 2) / unit;
  const std::int64_t one = PowerOfTen(places);
  char text[60];
  std::snprintf(text, sizeof text, "%s%lld.%0*lld", count < 0 && rounded > 0 ? "-" : "",
                static_cast<long long>(rounded / one), places, static_cast<long long>(rounded % one));
  return text;
}

TEST(FormatNumber, AgreesWithWholeNumberArithmetic) {
  std::mt19937_64 random(20260301);
  const char* const pictures[] = {"0.0", "0.00", "0.000", "0.0000"};
  for (int i = 0; i < 50'000; ++i) {
    const int digits = std::uniform_int_distribution<int>(1, 12)(random);
    const auto count = std::uniform_int_distribution<std::int64_t>(-PowerOfTen(digits), PowerOfTen(digits))(random);
    const int decimals = std::uniform_int_distribution<int>(0, 8)(random);
    const double value = static_cast<double>(count) / static_cast<double>(PowerOfTen(decimals));
    const int places = std::uniform_int_distribution<int>(1, 4)(random);
    const std::string expected = RoundedByWholeNumbers(count, decimals, places);
    ASSERT_EQ(FormatNumber(value, pictures[places - 1]), expected) << count << " of " << decimals << " decimals";
    ASSERT_EQ(RoundDecimal(value, places), std::stod(expected)) << count << " of " << decimals << " decimals";
  }
}

TEST(RoundDecimal, TakesAnyNumberAndAnyPlaces) {
  EXPECT_EQ(RoundDecimal(2.675, 2), 2.68);
  EXPECT_EQ(RoundDecimal(-0.5, 0), -1);
  EXPECT_EQ(RoundDecimal(1250, -2), 1300);
  EXPECT_EQ(RoundDecimal(49, -2), 0);
  EXPECT_EQ(RoundDecimal(1.25, 40), 1.25);
  EXPECT_FALSE(std::signbit(RoundDecimal(-0.001, 2)));
  EXPECT_EQ(RoundDecimal(kInfinity, 2), kInfinity);
  EXPECT_TRUE(std::isnan(RoundDecimal(kNoNumber, 2)));
}

}  // namespace
}  // namespace luming
