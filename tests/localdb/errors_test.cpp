#include "localdb/errors.h"

#include <gtest/gtest.h>

namespace luming::test {
namespace {

using localdb::SqlError;

TEST(SqlErrors, KeepPercentSignsOfTheirArguments) {
  EXPECT_EQ(SqlError(50000, "减 5%1 %2 元").description(), "减 5%1 %2 元");
  EXPECT_NE(SqlError(245, "a%2b", "int").description().find("a%2b"), std::string::npos);
}

}  // namespace
}  // namespace luming::test
