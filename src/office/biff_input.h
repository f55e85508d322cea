#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace luming {

/// Reads what one record of a binary workbook holds, on through the CONTINUE records behind it. Failure when more is
/// asked for than there is.
class BiffInput {
 public:
  /// The parts outlive it: the record's own body and those of its continuations.
  explicit BiffInput(std::vector<std::string_view> parts) : parts_(std::move(parts)) {}

  unsigned U8();
  unsigned U16();
  std::uint32_t U32();
  double Double();
  void Skip(std::size_t count);
  std::size_t Left() const;  ///< bytes

  /// A text of BIFF8 as UTF-8: a count of units, how they are stored, what is said of their looks, the units. Where the
  /// units go on in the next part, it says again how they are stored.
  std::string ShortText() { return Text(U8()); }  ///< the count in one byte
  std::string LongText() { return Text(U16()); }  ///< in two
  /// A text of BIFF5: bytes of the Chinese code page.
  std::string AnsiBytes(std::size_t count);

 private:
  std::string Text(std::size_t units);
  std::string_view Take(std::size_t count);  ///< within one part
  bool NextPart();

  std::vector<std::string_view> parts_;
  std::size_t part_ = 0;
  std::size_t at_ = 0;
};

struct BiffRecord {
  std::uint16_t id = 0;
  std::string_view body;
};

/// Walks through the records of a stream.
class BiffRecords {
 public:
  BiffRecords(std::string_view stream, std::size_t position) : stream_(stream), position_(position) {}

  /// Nothing at the end of the stream. A record that is cut off there is damage.
  std::optional<BiffRecord> Next();
  /// The record just met with all CONTINUE records behind it, which are passed.
  BiffInput Continued(const BiffRecord& record);
  /// The record after the one just met, which stays to be met.
  std::optional<BiffRecord> Ahead() const;

 private:
  std::string_view stream_;
  std::size_t position_;
};

}  // namespace luming
