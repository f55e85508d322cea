#pragma once

#include <exception>
#include <string>
#include <utility>

namespace luming {

/// What went wrong, in the three parts that the operator's error box shows. Every routine of the program that can fail
/// throws this; only the one trap at a routine's end catches it.
class Failure : public std::exception {
 public:
  /// @param number      the number that an ADO client shows: negative for a provider's failure (-2147217900 syntax),
  ///                    small and positive for one of the program's own (13 type mismatch, 3704 closed object)
  /// @param description one sentence for the operator, in Chinese
  /// @param source      the part that failed, for example "Microsoft OLE DB Provider for SQL Server"
  Failure(long number, std::string description, std::string source = "luming")
      : number_(number), description_(std::move(description)), source_(std::move(source)) {}

  long number() const { return number_; }
  const std::string& description() const { return description_; }
  const std::string& source() const { return source_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  long number_;
  std::string description_;
  std::string source_;
};

/// Numbers of the failures that the program itself raises, with the texts in failure.cpp.
namespace failure {
inline constexpr long kInvalidCall = 5;
inline constexpr long kOverflow = 6;
inline constexpr long kOutOfMemory = 7;
inline constexpr long kSubscript = 9;
inline constexpr long kDivisionByZero = 11;
inline constexpr long kTypeMismatch = 13;
inline constexpr long kInternal = 51;
inline constexpr long kBadRecordLength = 59;
inline constexpr long kFileNotFound = 53;
inline constexpr long kPastEndOfFile = 62;
inline constexpr long kFileAccess = 75;
inline constexpr long kInvalidNull = 94;
inline constexpr long kBadArgument = 3001;
inline constexpr long kNoCurrentRow = 3021;
inline constexpr long kNoSuchField = 3265;
inline constexpr long kClosedObject = 3704;
inline constexpr long kBadConnection = 3709;
inline constexpr long kGeneralProvider = -2147467259;
inline constexpr long kSyntax = -2147217900;
inline constexpr long kMissingObject = -2147217865;
inline constexpr long kKeyViolation = -2147217873;
inline constexpr long kConversion = -2147217913;
inline constexpr long kDataOverflow = -2147217833;
}  // namespace failure

/// The failure of one of the numbers above, with its standing Chinese text and source; a general text for any other.
Failure StandardFailure(long number);

/// What any exception says, as a Failure: for the traps that nothing may pass, whoever has thrown it.
Failure AsFailure(const std::exception& fault);

}  // namespace luming
