#include "office/xls_reader.h"

#include <algorithm>
#include <bit>
#include <map>

#include "office/biff_input.h"
#include "office/date_formats.h"
#include "office/read_failures.h"
#include "office/sheet_cells.h"

namespace luming {

namespace {

/// Records that matter to a reader of cells; those of BIFF5 bear the same numbers.
enum Id : std::uint16_t {
  kFormula = 0x0006,
  kEnd = 0x000A,
  kDateBase = 0x0022,
  kPassword = 0x002F,
  kSheetPlace = 0x0085,
  kManyNumbers = 0x00BD,
  kRichText = 0x00D6,
  kCellFormat = 0x00E0,
  kTexts = 0x00FC,
  kTextNumber = 0x00FD,
  kNumber = 0x0203,
  kText = 0x0204,
  kFlagOrError = 0x0205,
  kResultText = 0x0207,
  kShortNumber = 0x027E,
  kNumberFormat = 0x041E,
  kStart = 0x0809,
};

constexpr unsigned kBiff8 = 0x0600;
constexpr unsigned kBiff5 = 0x0500;
constexpr unsigned kAnyStart = 0x09;  // of the oldest formats, too; the upper byte tells them apart

struct SheetPlace {
  std::string name;
  std::size_t position;
};

/// What the workbook's own part of the stream tells about all sheets.
struct Globals {
  bool biff8 = true;
  DateBase base = DateBase::k1900;
  std::vector<SheetPlace> sheets;
  std::vector<std::string> texts;
  std::vector<bool> is_date;  ///< of each cell format
};

/// A number in four bytes: a whole one or the upper half of a double, perhaps a hundredth of it.
double ShortNumber(std::uint32_t bits) {
  constexpr std::uint32_t kHundredth = 1, kWhole = 2;
  const double number = bits & kWhole ? static_cast<double>(static_cast<std::int32_t>(bits) >> 2)
                                      : std::bit_cast<double>(std::uint64_t{bits & ~(kHundredth | kWhole)} << 32);
  return bits & kHundredth ? number / 100 : number;
}

class GlobalsReader {
 public:
  Globals Read(std::string_view stream) {
    BiffRecords records(stream, 0);
    const auto start = records.Next();
    if (!start || (start->id & 0xFF) != kAnyStart) throw DamagedWorkbook();
    const unsigned version = start->id == kStart ? BiffInput({start->body}).U16() : 0;
    if (version != kBiff8 && version != kBiff5) {
      throw UnreadableWorkbook("工作簿是 Excel 5.0 以前的格式，无法读取。请在 Excel 中另存为新的格式后再试。");
    }
    globals_.biff8 = version == kBiff8;
    for (auto record = records.Next(); record && record->id != kEnd; record = records.Next()) Take(*record, records);
    for (const unsigned format : formats_of_cells_) globals_.is_date.push_back(ShowsDates(format));
    return std::move(globals_);
  }

 private:
  void Take(const BiffRecord& record, BiffRecords& records) {
    BiffInput input({record.body});
    switch (record.id) {
      case kPassword:
        throw LockedWorkbook();
      case kDateBase:
        globals_.base = input.U16() ? DateBase::k1904 : DateBase::k1900;
        break;
      case kSheetPlace:
        TakeSheet(input);
        break;
      case kNumberFormat: {
        const unsigned number = input.U16();
        own_formats_[number] = IsDateFormat(globals_.biff8 ? input.LongText() : input.AnsiBytes(input.U8()));
        break;
      }
      case kCellFormat:
        input.Skip(2);
        formats_of_cells_.push_back(input.U16());
        break;
      case kTexts:
        if (globals_.biff8) TakeTexts(records.Continued(record));
        break;
      default:
        break;
    }
  }

  void TakeSheet(BiffInput& input) {
    constexpr unsigned kCells = 0;
    const std::size_t position = input.U32();
    input.Skip(1);  // whether it is hidden
    const bool holds_cells = input.U8() == kCells;
    std::string name = globals_.biff8 ? input.ShortText() : input.AnsiBytes(input.U8());
    if (holds_cells) globals_.sheets.push_back({std::move(name), position});
  }

  void TakeTexts(BiffInput input) {
    input.Skip(4);  // how often they are used
    const std::size_t count = input.U32();
    while (globals_.texts.size() < count && input.Left() > 0) globals_.texts.push_back(input.LongText());
  }

  bool ShowsDates(unsigned format) const {
    const auto own = own_formats_.find(format);
    return own != own_formats_.end() ? own->second : IsBuiltInDateFormat(static_cast<int>(format));
  }

  Globals globals_;
  std::map<unsigned, bool> own_formats_;
  std::vector<unsigned> formats_of_cells_;
};

class CellsReader {
 public:
  CellsReader(const Globals& globals, std::string_view stream, std::size_t position)
      : globals_(globals), records_(stream, position) {}

  Recordset Read() {
    const auto start = records_.Next();
    if (!start || start->id != kStart) throw DamagedWorkbook();
    int depth = 1;  // a chart in the sheet is a part of its own
    while (depth > 0) {
      const auto record = records_.Next();
      if (!record) break;
      if (record->id == kStart) ++depth;
      if (record->id == kEnd) --depth;
      if (depth == 1) Take(*record);
    }
    return cells_.TakeTable();
  }

 private:
  void Take(const BiffRecord& record) {
    BiffInput input({record.body});
    switch (record.id) {
      case kNumber:
        TakePlace(input);
        SetNumber(input.Double());
        break;
      case kShortNumber:
        TakePlace(input);
        SetNumber(ShortNumber(input.U32()));
        break;
      case kManyNumbers:
        TakeManyNumbers(input);
        break;
      case kTextNumber: {
        TakePlace(input);
        const std::size_t number = input.U32();
        if (number >= globals_.texts.size()) throw DamagedWorkbook();
        Set(Value(globals_.texts[number]));
        break;
      }
      case kText:
      case kRichText:
        TakePlace(input);
        Set(Value(globals_.biff8 ? input.LongText() : input.AnsiBytes(input.U16())));
        break;
      case kFlagOrError: {
        TakePlace(input);
        const bool flag = input.U8() != 0;
        const bool is_error = input.U8() != 0;
        if (!is_error) Set(Value(flag));
        break;
      }
      case kFormula:
        TakePlace(input);
        TakeResult(input);
        break;
      case kResultText:
        TakeResultText(record);
        break;
      default:
        break;
    }
  }

  void TakePlace(BiffInput& input) {
    row_ = input.U16();
    col_ = input.U16();
    format_ = input.U16();
  }

  void TakeManyNumbers(BiffInput& input) {
    constexpr std::size_t kNumberBytes = 6, kLastColumnBytes = 2;
    row_ = input.U16();
    col_ = input.U16();
    for (; input.Left() >= kNumberBytes + kLastColumnBytes; ++col_) {
      format_ = input.U16();
      SetNumber(ShortNumber(input.U32()));
    }
  }

  /// A result that is no number stands where the number would, under the mark of what is none.
  void TakeResult(BiffInput& input) {
    constexpr unsigned kText = 0, kFlag = 1, kNoNumber = 0xFFFF;
    const std::uint64_t low = input.U32();
    const std::uint64_t high = input.U32();
    if (high >> 16 != kNoNumber) return SetNumber(std::bit_cast<double>(high << 32 | low));
    const unsigned kind = low & 0xFF;
    if (kind == kFlag) Set(Value((low >> 16 & 0xFF) != 0));
    awaits_text_ = kind == kText;
  }

  void TakeResultText(const BiffRecord& record) {
    if (!std::exchange(awaits_text_, false)) return;
    BiffInput input = records_.Continued(record);
    Set(Value(globals_.biff8 ? input.LongText() : input.AnsiBytes(input.U16())));
  }

  void SetNumber(double number) {
    const bool is_date = format_ < globals_.is_date.size() && globals_.is_date[format_];
    Set(ValueOfNumber(number, is_date, globals_.base));
  }

  void Set(Value value) { cells_.Set(row_, col_, std::move(value)); }

  const Globals& globals_;
  BiffRecords records_;
  SheetCells cells_;
  unsigned row_ = 0;
  unsigned col_ = 0;
  unsigned format_ = 0;
  bool awaits_text_ = false;  ///< the text of the last formula follows in a record of its own
};

class XlsReader : public SheetReader {
 public:
  explicit XlsReader(std::string stream) : stream_(std::move(stream)), globals_(GlobalsReader().Read(stream_)) {}

  std::vector<std::string> Names() const override {
    std::vector<std::string> names;
    for (const SheetPlace& sheet : globals_.sheets) names.push_back(sheet.name);
    return names;
  }

  Recordset Read(std::string_view name) const override {
    const auto sheet = std::ranges::find(globals_.sheets, name, &SheetPlace::name);
    if (sheet == globals_.sheets.end()) throw StandardFailure(failure::kSubscript);
    return CellsReader(globals_, stream_, sheet->position).Read();
  }

 private:
  std::string stream_;
  Globals globals_;
};

}  // namespace

std::unique_ptr<SheetReader> ReadXls(std::string stream) {
  return std::make_unique<XlsReader>(std::move(stream));
}

}  // namespace luming
