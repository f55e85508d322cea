#include "localdb/errors.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace luming::test {
namespace {

using localdb::SqlError;

TEST(SqlErrors, ShowTheNumbersThatAnAdoClientShows) {
  const std::map<long, std::vector<int>> shown = {
      {-2147217900, {102, 105, 156, 207, 201, 2812, 213, 50000, 2714}},
      {-2147217865, {208, 3701}},
      {-2147217873, {2627, 2601, 515, 547}},
      {-2147217913, {241, 242, 245, 8114}},
      {-2147217833, {8115, 8152}},
      {-2147467259, {4060, 1222, 824, 948}},
  };
  for (const auto& [number, natives] : shown) {
    for (int native : natives) {
      SqlError error(native, "甲", "乙");
      EXPECT_EQ(error.number(), number) << native;
      EXPECT_EQ(error.native(), native);
      EXPECT_EQ(error.description().find('%'), std::string::npos) << error.description();
      EXPECT_EQ(error.source(), "鹿鸣内嵌数据库");
    }
  }
}

TEST(SqlErrors, KeepPercentSignsOfTheirArguments) {
  EXPECT_EQ(SqlError(50000, "减 5%1 %2 元").description(), "减 5%1 %2 元");
  EXPECT_NE(SqlError(245, "a%2b", "int").description().find("a%2b"), std::string::npos);
}

}  // namespace
}  // namespace luming::test
