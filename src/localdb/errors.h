#pragma once

#include <string>
#include <string_view>

#include "util/failure.h"

namespace luming::localdb {

/// How far an error reaches, as on the server: it ends its statement, its batch, or batch and open transaction.
enum class Reach { kStatement, kBatch, kTransaction };

/// A failure of a statement, with the number that the server itself gives it. The Failure's number is the one that an
/// ADO client shows for it.
class SqlError : public Failure {
 public:
  /// @param native one of the numbers of the table in errors.cpp, which holds the text
  /// @param first  takes the place of %1 in the text: the object's name or the text near the error
  explicit SqlError(int native, std::string_view first = {}, std::string_view second = {});

  int native() const { return native_; }
  Reach reach() const { return reach_; }

 private:
  int native_;
  Reach reach_;
};

/// The server's own numbers.
namespace native {
inline constexpr int kSyntax = 102;
inline constexpr int kOpenQuote = 105;
inline constexpr int kOpenComment = 113;
inline constexpr int kMustDeclare = 137;
inline constexpr int kSyntaxKeyword = 156;
inline constexpr int kNestedTooDeep = 191;
inline constexpr int kMissingParameter = 201;
inline constexpr int kColumnCount = 213;
inline constexpr int kMissingColumn = 207;
inline constexpr int kMissingObject = 208;
inline constexpr int kAmbiguousColumn = 209;
inline constexpr int kDate = 241;
inline constexpr int kDateRange = 242;
inline constexpr int kInt = 245;
inline constexpr int kIntRange = 248;
inline constexpr int kUnknownFunction = 195;
inline constexpr int kArgumentCount = 174;
inline constexpr int kTooManyValues = 110;
inline constexpr int kTooFewValues = 109;
inline constexpr int kUnionColumns = 205;
inline constexpr int kSubqueryRows = 512;
inline constexpr int kNull = 515;
inline constexpr int kExplicitIdentity = 544;
inline constexpr int kReference = 547;
inline constexpr int kLockTimeout = 1222;
inline constexpr int kInputOutput = 823;
inline constexpr int kCannotOpen = 5120;
inline constexpr int kFull = 1105;
inline constexpr int kDamaged = 824;
inline constexpr int kForeign = 948;
inline constexpr int kReadOnly = 3906;
inline constexpr int kDuplicateIndexKey = 2601;
inline constexpr int kDuplicateKey = 2627;
inline constexpr int kMissingType = 2715;
inline constexpr int kObjectExists = 2714;
inline constexpr int kMissingProcedure = 2812;
inline constexpr int kDropMissing = 3701;
inline constexpr int kCommitWithout = 3902;
inline constexpr int kRollbackWithout = 3903;
inline constexpr int kDoomed = 3998;
inline constexpr int kNoStore = 4060;
inline constexpr int kPrefix = 4104;
inline constexpr int kInternal = 8624;
inline constexpr int kNumber = 8114;
inline constexpr int kOverflow = 8115;
inline constexpr int kNotGrouped = 8120;
inline constexpr int kBadOperand = 8117;
inline constexpr int kDivideByZero = 8134;
inline constexpr int kNotParameter = 8145;
inline constexpr int kTooManyArguments = 8144;
inline constexpr int kTooLong = 8152;
inline constexpr int kNesting = 217;
inline constexpr int kUser = 50000;
}  // namespace native

inline constexpr std::string_view kErrorSource = "鹿鸣内嵌数据库";

}  // namespace luming::localdb
