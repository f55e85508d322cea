#include "office/biff_input.h"

#include <algorithm>
#include <bit>

#include "office/read_failures.h"
#include "util/ansi_text.h"
#include "util/utf16.h"

namespace luming {

namespace {

constexpr std::uint16_t kContinue = 0x003C;
constexpr std::size_t kRecordHead = 4;

std::uint32_t LittleEndian(std::string_view bytes) {
  std::uint32_t value = 0;
  for (std::size_t i = bytes.size(); i > 0; --i) value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
  return value;
}

}  // namespace

bool BiffInput::NextPart() {
  if (part_ + 1 >= parts_.size()) return false;
  ++part_;
  at_ = 0;
  return true;
}

std::size_t BiffInput::Left() const {
  if (parts_.empty()) return 0;
  std::size_t left = parts_[part_].size() - at_;
  for (std::size_t i = part_ + 1; i < parts_.size(); ++i) left += parts_[i].size();
  return left;
}

std::string_view BiffInput::Take(std::size_t count) {
  while (!parts_.empty() && at_ == parts_[part_].size() && NextPart()) {
  }
  if (parts_.empty() || parts_[part_].size() - at_ < count) throw DamagedWorkbook();
  at_ += count;
  return parts_[part_].substr(at_ - count, count);
}

unsigned BiffInput::U8() {
  return LittleEndian(Take(1));
}

unsigned BiffInput::U16() {
  return LittleEndian(Take(2));
}

std::uint32_t BiffInput::U32() {
  return LittleEndian(Take(4));
}

double BiffInput::Double() {
  const std::uint64_t low = U32();
  return std::bit_cast<double>(std::uint64_t{U32()} << 32 | low);
}

void BiffInput::Skip(std::size_t count) {
  if (count > Left()) throw DamagedWorkbook();
  while (count > 0) {
    const std::size_t here = std::min(count, parts_[part_].size() - at_);
    at_ += here;
    count -= here;
    if (count > 0) NextPart();
  }
}

std::string BiffInput::AnsiBytes(std::size_t count) {
  return FromAnsi(Take(count));
}

std::string BiffInput::Text(std::size_t units) {
  constexpr unsigned kWide = 0x01, kPhonetic = 0x04, kRuns = 0x08;
  constexpr std::size_t kRunBytes = 4;
  unsigned flags = U8();
  std::size_t behind = flags & kRuns ? kRunBytes * U16() : 0;
  if (flags & kPhonetic) behind += U32();
  std::u16string text;
  while (text.size() < units) {
    if (at_ == parts_[part_].size()) {
      if (!NextPart()) throw DamagedWorkbook();
      flags = U8();
    }
    const std::size_t width = flags & kWide ? 2 : 1;
    const std::size_t fits = std::min(units - text.size(), (parts_[part_].size() - at_) / width);
    if (fits == 0 && at_ < parts_[part_].size()) throw DamagedWorkbook();
    const std::string_view bytes = Take(fits * width);
    for (std::size_t i = 0; i < bytes.size(); i += width) {
      text.push_back(static_cast<char16_t>(LittleEndian(bytes.substr(i, width))));
    }
  }
  Skip(behind);
  return FromUtf16(text);
}

std::optional<BiffRecord> BiffRecords::Ahead() const {
  if (position_ >= stream_.size()) return std::nullopt;
  const std::string_view rest = stream_.substr(position_);
  if (rest.size() < kRecordHead) throw DamagedWorkbook();
  const std::size_t length = LittleEndian(rest.substr(2, 2));
  if (rest.size() - kRecordHead < length) throw DamagedWorkbook();
  return BiffRecord{static_cast<std::uint16_t>(LittleEndian(rest.substr(0, 2))), rest.substr(kRecordHead, length)};
}

std::optional<BiffRecord> BiffRecords::Next() {
  const std::optional<BiffRecord> record = Ahead();
  if (record) position_ += kRecordHead + record->body.size();
  return record;
}

BiffInput BiffRecords::Continued(const BiffRecord& record) {
  std::vector<std::string_view> parts{record.body};
  for (auto ahead = Ahead(); ahead && ahead->id == kContinue; ahead = Ahead()) parts.push_back(Next()->body);
  return BiffInput(std::move(parts));
}

}  // namespace luming
