#include "office/shared_strings.h"

#include <algorithm>

#include "util/utf16.h"

namespace luming {

namespace {

constexpr std::uint16_t kSst = 0x00FC;
constexpr std::uint16_t kContinue = 0x003C;
constexpr std::size_t kTextHead = 3;  // count of units and the flag of two-byte units

/// Splits the table into records. A text's head stays in one piece; where its units go on in the next record, the flag
/// byte is said again.
class TableWriter {
 public:
  explicit TableWriter(BiffStream& stream) : stream_(stream) {}

  BiffBytes& body() { return body_; }

  void Text(std::string_view utf8) {
    const std::u16string units = ToUtf16(utf8);
    if (Room() < kTextHead + (units.empty() ? 0 : sizeof(char16_t))) NextRecord();
    body_.U16(static_cast<unsigned>(units.size())).U8(1);
    for (std::size_t at = 0; at < units.size();) {
      const std::size_t fits = FittingUnits(std::u16string_view(units).substr(at));
      for (const char16_t unit : units.substr(at, fits)) body_.U16(unit);
      at += fits;
      if (at < units.size()) {
        NextRecord();
        body_.U8(1);
      }
    }
  }

  void NextRecord() {
    stream_.Record(id_, body_);
    body_.Clear();
    id_ = kContinue;
  }

 private:
  /// Units that still fit; the two of one character are not parted.
  std::size_t FittingUnits(std::u16string_view units) const {
    const std::size_t fits = std::min(units.size(), Room() / sizeof(char16_t));
    const bool parts = fits > 0 && fits < units.size() && units[fits - 1] >= 0xD800 && units[fits - 1] < 0xDC00;
    return parts ? fits - 1 : fits;
  }
  std::size_t Room() const { return BiffStream::kMostBytes - body_.bytes().size(); }

  BiffStream& stream_;
  BiffBytes body_;
  std::uint16_t id_ = kSst;
};

}  // namespace

std::uint32_t SharedStrings::Add(const std::string& text) {
  ++uses_;
  const auto [place, is_new] = numbers_.emplace(text, static_cast<std::uint32_t>(texts_.size()));
  if (is_new) texts_.push_back(&place->first);
  return place->second;
}

void SharedStrings::Write(BiffStream& stream) const {
  TableWriter table(stream);
  table.body().U32(uses_).U32(static_cast<std::uint32_t>(texts_.size()));
  for (const std::string* text : texts_) table.Text(*text);
  table.NextRecord();
}

}  // namespace luming
