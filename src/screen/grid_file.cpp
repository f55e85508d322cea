#include <cstdint>
#include <utility>

#include "screen/grid_cells.h"
#include "util/text.h"
#include "util/whole_file.h"

// The file: magic, version, number of rows and of columns; row by row, for each cell its kind, its length in bytes and
// its UTF-8 text; a checksum of all that stands ahead of it. Numbers are 32 bits, lowest byte first.

namespace luming {
namespace {

constexpr std::string_view kMagic = "LMGRID\r\n";
constexpr std::uint32_t kVersion = 1;
constexpr std::uint32_t kMostRows = 1'000'000;
constexpr std::uint32_t kMostFormulas = 10'000;
constexpr std::size_t kLargestFile = std::size_t{1} << 28;
constexpr std::size_t kNumberSize = 4;

enum class StoredKind : std::uint32_t { kText = 0, kFormula = 1 };

std::uint32_t Checksum(std::string_view bytes) {
  std::uint32_t sum = 2166136261U;  // FNV-1a
  for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
  return sum;
}

void AppendNumber(std::string& bytes, std::uint32_t number) {
  for (std::size_t i = 0; i < kNumberSize; ++i) bytes += static_cast<char>((number >> (8 * i)) & 0xFFU);
}

void AppendCell(std::string& bytes, StoredKind kind, const std::string& text) {
  AppendNumber(bytes, static_cast<std::uint32_t>(kind));
  AppendNumber(bytes, static_cast<std::uint32_t>(text.size()));
  bytes += text;
}

/// What is wrong with the file, in words that go on from "表格文件".
struct Refused {
  std::string why;
};

[[noreturn]] void Refuse(const std::string& why) {
  throw Refused{why};
}

/// Takes the parts of the file one by one; every count is held against what is left before it is believed.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  std::string_view Bytes(std::size_t count) {
    if (count > rest_.size()) Refuse("不完整");
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::uint32_t Number() {
    const std::string_view bytes = Bytes(kNumberSize);
    std::uint32_t number = 0;
    for (std::size_t i = kNumberSize; i-- > 0;) number = (number << 8) | static_cast<unsigned char>(bytes[i]);
    return number;
  }
  bool AtEnd() const { return rest_.empty(); }
  std::size_t Left() const { return rest_.size(); }

 private:
  std::string_view rest_;
};

std::string_view CheckedBody(std::string_view bytes) {
  if (!bytes.starts_with(kMagic)) Refuse("不是本系统的表格文件");
  if (bytes.size() < kMagic.size() + kNumberSize) Refuse("不完整");
  const std::string_view body = bytes.substr(0, bytes.size() - kNumberSize);
  if (Reader(bytes.substr(body.size())).Number() != Checksum(body)) Refuse("已损坏");
  return body.substr(kMagic.size());
}

}  // namespace

void Grid::SaveToFile(const std::filesystem::path& file) const {
  std::string bytes(kMagic);
  AppendNumber(bytes, kVersion);
  AppendNumber(bytes, static_cast<std::uint32_t>(MaxRows()));
  AppendNumber(bytes, static_cast<std::uint32_t>(MaxCols()));
  for (int row = 1; row <= MaxRows(); ++row) {
    for (int col = 1; col <= MaxCols(); ++col) {
      const std::string formula = Formula(row, col);
      if (formula.empty()) {
        AppendCell(bytes, StoredKind::kText, cells_->Shown(row, col));
      } else {
        AppendCell(bytes, StoredKind::kFormula, formula);
      }
    }
  }
  AppendNumber(bytes, Checksum(bytes));
  ReplaceFile(file, bytes);
}

namespace {

struct StoredCell {
  int row;
  int col;
  std::string text;
};

struct StoredGrid {
  std::vector<std::vector<std::string>> rows;
  std::vector<StoredCell> formulas;
};

void ReadRow(Reader& reader, std::uint32_t columns, StoredGrid& grid) {
  std::vector<std::string>& texts = grid.rows.emplace_back(columns);
  for (std::uint32_t col = 1; col <= columns; ++col) {
    const std::uint32_t kind = reader.Number();
    const std::string_view text = reader.Bytes(reader.Number());
    if (!IsValidUtf8(text)) Refuse("的文字编码有误");
    if (kind == static_cast<std::uint32_t>(StoredKind::kText)) {
      texts[col - 1] = text;
    } else if (kind == static_cast<std::uint32_t>(StoredKind::kFormula) && ParseSum(text)) {
      grid.formulas.push_back({static_cast<int>(grid.rows.size()), static_cast<int>(col), std::string(text)});
    } else {
      Refuse("中有不认识的单元格");
    }
  }
}

StoredGrid ReadCells(std::string_view bytes, int columns) {
  Reader reader(CheckedBody(bytes));
  if (reader.Number() != kVersion) Refuse("的版本不认识");
  const std::uint32_t rows = reader.Number();
  if (reader.Number() != static_cast<std::uint32_t>(columns)) Refuse("的列数与表格不同");
  const std::size_t row_size = 2 * kNumberSize * static_cast<std::size_t>(columns);
  if (rows > kMostRows || rows * row_size > reader.Left()) Refuse("的行数有误");
  StoredGrid grid;
  grid.rows.reserve(rows);
  for (std::uint32_t row = 0; row < rows; ++row) ReadRow(reader, static_cast<std::uint32_t>(columns), grid);
  if (!reader.AtEnd() || grid.formulas.size() > kMostFormulas) Refuse("的内容有误");
  return grid;
}

StoredGrid ReadGrid(const std::filesystem::path& file, int columns) {
  const std::optional<std::string> bytes = ReadWholeFile(file, kLargestFile);
  if (!bytes) {
    const Failure missing = StandardFailure(failure::kFileNotFound);
    throw Failure(missing.number(), missing.description() + "：" + file.string());
  }
  try {
    return ReadCells(*bytes, columns);
  } catch (const Refused& refused) {
    throw Failure(failure::kBadRecordLength, "表格文件" + refused.why + "，没有载入：" + file.string());
  }
}

}  // namespace

void Grid::LoadFromFile(const std::filesystem::path& file) {
  StoredGrid stored = ReadGrid(file, MaxCols());
  cells_->SetMaxRows(0);
  cells_->SetMaxRows(static_cast<int>(stored.rows.size()));
  for (int row = 1; row <= MaxRows(); ++row) {
    cells_->RowAt(row).texts = std::move(stored.rows[static_cast<std::size_t>(row) - 1]);
  }
  cells_->RowsMoved();
  const bool redraw = std::exchange(cells_->redraw, false);
  for (StoredCell& cell : stored.formulas) SetFormula(cell.row, cell.col, std::move(cell.text));
  cells_->redraw = redraw;
  Redraw();
}

}  // namespace luming
