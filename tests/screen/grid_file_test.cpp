#include "screen/grid.h"
#include "support/screen_test.h"
#include "util/failure.h"

namespace luming {
namespace {

class FileForm : public Form {
 public:
  explicit FileForm(Forms& registry) : Form(registry, "FileForm", "file", WindowKind::kChild) {}
  Layout Arrange() const override { return Column({grid, other}); }
  Grid grid{this, "grid", {"编码", "数量", GridColumn("内码").Hidden()}};
  Grid other{this, "other", {"one"}};
};

class GridFileTest : public ScreenTest {
 protected:
  GridFileTest() {
    grid.SetMaxRows(3);
    grid.SetText(1, 1, "001\t\"引号\"\n第二行");
    grid.SetText(1, 2, "1.5");
    grid.SetText(1, 3, "hidden");
    grid.SetText(2, 2, "2");
    grid.SetText(3, 1, "合计：");
    grid.SetFormula(3, 2, "SUM(B1:B2)");
    grid.SaveToFile(file);
  }
  std::string Refusal(Grid& into) {
    try {
      into.LoadFromFile(file);
    } catch (const Failure& failure) {
      return failure.description();
    }
    return "loaded";
  }
  FileForm form{forms};
  Grid& grid = form.grid;
  const std::filesystem::path file = directory / "西药库RYYP.Dat";
};

TEST_F(GridFileTest, EverythingComesBackHiddenCellsAndFormulasIncluded) {
  grid.SetMaxRows(40);
  grid.SetText(1, 1, "other");
  grid.SetLocked(2, 1, 3, true);
  grid.LoadFromFile(file);
  EXPECT_EQ(grid.MaxRows(), 3);
  EXPECT_EQ(grid.Text(1, 1), "001\t\"引号\"\n第二行");
  EXPECT_EQ(grid.Text(1, 3), "hidden");
  EXPECT_EQ(grid.Text(2, 1), "");
  EXPECT_EQ(grid.Formula(3, 2), "SUM(B1:B2)");
  EXPECT_EQ(grid.Text(3, 2), "3.5");
  grid.SetText(2, 2, "3");
  EXPECT_EQ(grid.Text(3, 2), "4.5") << "still live";
  EXPECT_EQ(grid.Text(0, 1), "编码");
  EXPECT_FALSE(grid.Locked(2, 1));

  grid.SetMaxRows(0);
  grid.SaveToFile(file);
  grid.SetMaxRows(2);
  grid.LoadFromFile(file);
  EXPECT_EQ(grid.MaxRows(), 0);
}

TEST_F(GridFileTest, DamagedFilesAreRefusedAndChangeNothing) {
  const std::string good = ReadBytes(file);
  grid.SetText(1, 1, "kept");
  for (std::size_t length = 0; length < good.size(); ++length) {
    WriteBytes(file, good.substr(0, length));
    EXPECT_NE(Refusal(grid), "loaded") << "cut at " << length;
  }
  for (std::size_t at = 0; at < good.size(); ++at) {
    std::string bad = good;
    bad[at] = static_cast<char>(bad[at] ^ 0x20);
    WriteBytes(file, bad);
    EXPECT_NE(Refusal(grid), "loaded") << "changed at " << at;
  }
  WriteBytes(file, good + "x");
  EXPECT_NE(Refusal(grid), "loaded");
  WriteBytes(file, "PK\x03\x04 a workbook");
  EXPECT_EQ(Refusal(grid), "表格文件不是本系统的表格文件，没有载入：" + file.string());
  std::filesystem::remove(file);
  EXPECT_EQ(Refusal(grid), "文件未找到：" + file.string());
  EXPECT_EQ(grid.Text(1, 1), "kept");
  EXPECT_EQ(grid.MaxRows(), 3);
}

TEST_F(GridFileTest, AFileOfAnotherGridIsRefused) {
  form.other.SetMaxRows(1);
  EXPECT_EQ(Refusal(form.other), "表格文件的列数与表格不同，没有载入：" + file.string());
  EXPECT_EQ(form.other.MaxRows(), 1);
}

/// A file whose checksum is right and whose counts lie.
std::string Forged(std::string body) {
  std::uint32_t sum = 2166136261U;
  for (const char byte : body) sum = (sum ^ static_cast<unsigned char>(byte)) * 16777619U;
  for (int i = 0; i < 4; ++i) body += static_cast<char>((sum >> (8 * i)) & 0xFF);
  return body;
}

TEST_F(GridFileTest, LyingCountsAreNotBelieved) {
  const std::string good = ReadBytes(file);
  const std::string body = good.substr(0, good.size() - 4);
  EXPECT_EQ(Forged(body), good);
  const std::size_t rows_at = 12;
  const std::size_t first_kind_at = 20;
  const std::size_t first_length_at = 24;
  for (const std::size_t at : {rows_at, first_kind_at, first_length_at}) {
    for (const char* number : {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F", "\x40\x42\x0F\x02", "\x04\x01\x02\x03"}) {
      std::string bad = body;
      bad.replace(at, 4, number, 4);
      WriteBytes(file, Forged(bad));
      EXPECT_NE(Refusal(grid), "loaded") << at;
    }
  }
  std::string bad_text = body;
  bad_text[first_length_at + 4] = '\xC3';
  WriteBytes(file, Forged(bad_text));
  EXPECT_EQ(Refusal(grid), "表格文件的文字编码有误，没有载入：" + file.string());
}

TEST_F(GridFileTest, AFailedWriteIsToldAndLeavesTheOldFile) {
  EXPECT_THROW(grid.SaveToFile(directory / "no such directory" / "x.Dat"), Failure);
  EXPECT_THROW(grid.SaveToFile(directory.Path()), Failure);
  grid.SaveToFile(file);
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(directory.Path())) ++files;
  EXPECT_EQ(files, 1U) << "no temporary file is left";
}

}  // namespace
}  // namespace luming
