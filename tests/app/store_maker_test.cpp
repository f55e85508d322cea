#include "app/store_maker.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "app/store_check.h"
#include "app/store_files.h"
#include "app/table_file.h"
#include "frame/local_files.h"
#include "localdb/local_connection.h"
#include "support/failure_of.h"
#include "support/temp_directory.h"
#include "util/text.h"

namespace luming {
namespace {

namespace fs = std::filesystem;

void ExpectInOrder(const std::string& text, const std::vector<std::string>& parts) {
  std::size_t from = 0;
  for (const std::string& part : parts) {
    from = text.find(part, from);
    ASSERT_NE(from, std::string::npos) << part << " is not in its place in:\n" << text;
  }
}

// ---- Data files ----

class TableFileTest : public ::testing::Test {
 protected:
  TableFile Read(std::string_view bytes) {
    WriteBytes(directory / "CS.tsv", bytes);
    return ReadTableFile(directory / "CS.tsv");
  }
  TempDirectory directory;
};

TEST_F(TableFileTest, RowsKeepTheirFieldsEmptyOnesIncluded) {
  const TableFile table = Read("Controlid\tDMMC\r\nGHDW\t云泊\n\t\n");
  EXPECT_EQ(table.table, "CS");
  EXPECT_EQ(table.columns, (std::vector<std::string>{"Controlid", "DMMC"}));
  EXPECT_EQ(table.rows, (std::vector<std::vector<std::string>>{{"GHDW", "云泊"}, {"", ""}}));
  EXPECT_TRUE(Read("Controlid\n").rows.empty());
}

TEST_F(TableFileTest, DamageIsToldWithFileAndLine) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "第 1 行没有列名"},
      {"a b\tc\n", "第 1 行的列名“a b”不正确"},
      {"a\tb\n1\t2\n3\n", "第 3 行有 1 个字段，应为 2 个"},
      {"a\n\n1\t2\n", "第 3 行有 2 个字段，应为 1 个"},
      {"a\n\xff\xfe\n", "不是 UTF-8"},
  };
  for (const auto& [bytes, words] : cases) {
    const std::string said = WordsOf([&, &text = bytes] { Read(text); });
    EXPECT_NE(said.find(words), std::string::npos) << said;
    EXPECT_NE(said.find("CS.tsv"), std::string::npos) << said;
  }
  EXPECT_NE(WordsOf([&] { ReadTableFile(directory / "none.tsv"); }), "");
}

TEST_F(TableFileTest, FieldsBecomeNullDaysOrQuotedText) {
  const DateTime today(2026, 3, 1, 10, 0, 0);
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"\\N", "NULL"},        {"@0", "'2026-03-01'"}, {"@-1", "'2026-02-28'"}, {"@31", "'2026-04-01'"},
      {"@", "'@'"},           {"@1a", "'@1a'"},       {"it's", "'it''s'"},     {"", "''"},
      {"a@b.cn", "'a@b.cn'"},
  };
  for (const auto& [field, sql] : cases) EXPECT_EQ(SqlOfField(field, today), sql);
}

// ---- Making an application directory ----

class StoreMakerTest : public ::testing::Test {
 protected:
  StoreMakerTest() { fs::create_directories(place.Path()); }

  StoreRequest Wanted() const { return {place / "yk", LUMING_DATABASE_DIR, false, "k3%y"}; }
  void Make(const StoreRequest& request) { MakeApplicationDirectory(request, clock); }
  std::string Refusal(const StoreRequest& request) {
    return WordsOf([&] { Make(request); });
  }
  /// A receipt of one line as the demonstration's documents are written.
  static std::string Receipt(const std::string& field, const std::string& drug, const std::string& quantity) {
    return "DH\tKFMC\tCZY\tRQ\tSJ\tsGHDW\tsYSR\tsFHR\t" + field +
           "\tYPBM\tDW\tsngSL\tPFJ\tPLJ\tsPH\tlYXQ\n1\t西药库\t管理员\t-1\t9:00\t云泊\t方\t吕\t1\t" + drug + "\t盒\t" +
           quantity + "\t1\t1\tA\t300\n";
  }
  /// A copy of the database files that a test may damage, with a phonetic table of no size and no documents.
  fs::path OwnData() {
    fs::copy(LUMING_DATABASE_DIR, directory / "data", fs::copy_options::recursive);
    fs::remove(directory / "data/seed/GY_HZBM.tsv");
    fs::remove_all(directory / "data/demo/documents");
    fs::create_directory(directory / "data/demo/documents");
    return directory / "data";
  }
  std::vector<std::string> Left() {
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(place.Path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  TempDirectory directory;
  TempDirectory place;
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
};

TEST_F(StoreMakerTest, AStoreStartsWithOneOperatorOfEveryRight) {
  fs::create_directories(place / "yk");
  Make(Wanted());
  EXPECT_EQ(Left(), std::vector<std::string>{"yk"});
  EXPECT_TRUE(fs::exists(place / "yk" / "LUMN.ini"));

  const std::string connection = ConnectionFile(place / "yk").Read(1);
  LocalConnection store((place / "yk").string(), clock);
  store.Open(connection);
  const auto first = [&](const std::string& sql) { return store.Execute(sql).Field(0).Text(); };
  EXPECT_EQ(first("Select password From userdb"), "k3%y");
  EXPECT_EQ(first("Select COUNT(*) From userdb"), "1");
  EXPECT_EQ(first("Select COUNT(*) From QX_Temp A Where Exists (Select 1 From QX_Temp2 B Where "
                  "B.MoudelKey=A.MoudelKey And B.Groupname='管理员' And B.QX=1)"),
            first("Select COUNT(*) From QX_Temp"));
  EXPECT_EQ(first("Select COUNT(*) From GY_HZBM"),
            std::to_string(ReadTableFile(Wanted().data / "seed/GY_HZBM.tsv").rows.size()));
  EXPECT_EQ(first("Select COUNT(*) From YF_YPML"), "0");
}

TEST_F(StoreMakerTest, NothingIsPutOverWhatIsThere) {
  fs::create_directories(place / "yk");
  WriteBytes(place / "yk" / "mine.txt", "mine");
  ExpectInOrder(Refusal(Wanted()), {"不是空的", "yk"});
  EXPECT_EQ(ReadBytes(place / "yk" / "mine.txt"), "mine");

  StoreRequest onto_file = Wanted();
  onto_file.directory = place / "yk" / "mine.txt";
  ExpectInOrder(Refusal(onto_file), {"不是目录"});
  EXPECT_EQ(ReadBytes(place / "yk" / "mine.txt"), "mine");
}

TEST_F(StoreMakerTest, DamagedDatabaseFilesLeaveNothingHalfMade) {
  struct Case {
    const char* file;
    std::optional<std::string> bytes;  ///< nothing: the file is missing
    const char* words;
    bool demo = false;
  };
  const std::vector<Case> cases = {
      {"schema.sql", std::nullopt, "schema.sql"},
      {"procedures.sql", std::nullopt, "procedures.sql"},
      {"procedures.sql", "CREATE NONSENSE\nGO\n", "NONSENSE"},
      {"seed/CS.tsv", "Controlid\tDMMC\nGHDW\n", "CS.tsv 第 2 行有 1 个字段"},
      {"seed/CS.tsv", "NoSuchColumn\n1\n", "CS.tsv 第 2 行无法导入"},
      {"seed/NoSuchTable.tsv", "a\n1\n", "NoSuchTable.tsv 第 2 行无法导入"},
      {"demo/documents/ek_YK_RKMX.tsv", "DH\tKFMC\n1\t西药库\n", "缺少列 SJ", true},
      {"demo/documents/ek_NONE.tsv", "DH\tKFMC\tCZY\tRQ\tSJ\tYPBM\n1\t西药库\t管理员\t-1\t9:00\t1\n", "没有画面", true},
      {"demo/documents/ek_YK_RKMX.tsv", Receipt("sPJ", "999999", "1"), "sPJ", true},
      {"demo/documents/ek_YK_RKMX.tsv", Receipt("sFPH", "999999", "1"), "999999", true},
      {"demo/documents/ek_YK_RKMX.tsv", Receipt("sFPH", "100001", "x"), "数量只能为数字", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.file) + " " + c.words);
    StoreRequest request = Wanted();
    request.data = OwnData();
    request.demo = c.demo;
    fs::remove(request.data / c.file);
    if (c.bytes) WriteBytes(request.data / c.file, *c.bytes);
    ExpectInOrder(Refusal(request), {c.words});
    EXPECT_TRUE(Left().empty());
    fs::remove_all(request.data);
  }
}

TEST_F(StoreMakerTest, PasswordsThatNoLoginTakesAreRefused) {
  for (const char* password : {"", "a'b", "a[b", "line\nend", "123456789012345678901234567890123456789012345678901"}) {
    StoreRequest request = Wanted();
    request.password = password;
    EXPECT_NE(Refusal(request), "") << password;
  }
  EXPECT_TRUE(Left().empty());
}

TEST_F(StoreMakerTest, DatabaseFilesAreFoundAboveTheProgram) {
  fs::create_directories(directory / "tree/build/bin");
  EXPECT_NE(WordsOf([&] { FindDatabaseFiles(directory / "tree/build/bin"); }), "");
  fs::create_directories(directory / "tree/database");
  WriteBytes(directory / "tree/database/schema.sql", "");
  EXPECT_EQ(FindDatabaseFiles(directory / "tree/build/bin"), directory / "tree/database");
}

// ---- Checking one ----

class StoreCheckTest : public StoreMakerTest {
 protected:
  StoreCheckTest() {
    StoreRequest request = Wanted();
    request.data = OwnData();
    Make(request);
    store.Open(ConnectionFile(place / "yk").Read(1));
    for (const char* code : {"1", "2", "3"}) {
      Run("Insert Into YF_YPML(YPBM,YPMC,YKKCL) Values('" + std::string(code) + "','药" + code + "',10.5)");
      Run("Insert Into YK_CurryPH(YPBM,PH,SL) Values('" + std::string(code) + "','A',4)");
      Run("Insert Into YK_CurryPH(YPBM,PH,SL) Values('" + std::string(code) + "','B',6.5)");
      Move(code, 12, 0, "入库记录");
      Move(code, 1.5, 1, "退药到供货商");
    }
  }
  void Run(const std::string& sql) { store.Execute(sql); }
  void Move(const std::string& code, double quantity, int direction, const std::string& kind) {
    Run("Insert Into YPCRK(YPBM,SL,CLB,KCL,DW,LB,MS,RQ,KFBM,BZ,CZY) Values('" + code + "'," + std::to_string(quantity) +
        ",1," + std::to_string(quantity) + ",'盒'," + std::to_string(direction) + ",'" + kind +
        "','2026-03-01 09:30:00','西药库','单号：7','管理员')");
  }
  std::string Report() { return CheckStore(place / "yk", agree); }

  LocalConnection store{(place / "yk").string(), clock};
  bool agree = false;
};

TEST_F(StoreCheckTest, AgreeingFiguresAreReportedAsSuch) {
  EXPECT_EQ(Report(), "库存、批次和流水全部一致。\n");
  EXPECT_TRUE(agree);
}

TEST_F(StoreCheckTest, EachKindOfDisagreementNamesDrugFiguresAndMovements) {
  Run("Update YF_YPML Set YKKCL=9 Where YPBM='1'");
  Run("Delete YK_CurryPH Where YPBM='2' And PH='B'");
  Move("3", 2, 1, "药品报损报废");
  Run("Insert Into YK_CurryPH(YPBM,PH,SL) Values('gone','A',3)");
  const std::string report = Report();
  EXPECT_FALSE(agree);
  ExpectInOrder(report, {"共 4 种", "1  药1\n    库存 9  批次合计 10.5  流水结存 10.5\n",
                         "    2026-03-01 09:30:00  出 1.5盒  退药到供货商  单号：7  管理员\n", "入 12盒",
                         "2  药2\n    库存 10.5  批次合计 4  流水结存 10.5\n",
                         "3  药3\n    库存 10.5  批次合计 10.5  流水结存 8.5\n", "药品报损报废", "退药到供货商",
                         "gone  \n    库存 0  批次合计 3  流水结存 0\n    没有出入库流水\n"});
}

TEST_F(StoreCheckTest, AStockTakeSetsTheLogAnew) {
  Move("1", 4, 0, "药品盘点");
  EXPECT_NE(Report().find("流水结存 4\n"), std::string::npos);
  Run("Update YF_YPML Set YKKCL=4 Where YPBM='1'");
  Run("Delete YK_CurryPH Where YPBM='1' And PH='B'");
  Report();
  EXPECT_TRUE(agree);
}

TEST_F(StoreCheckTest, ANoteThatStandsAsConfirmedWithoutItsStockIsNamed) {
  Run("Insert Into YPSLD(SLDH,LYDW,SFQR,YKQRR,CKRQ) Values('N1','西药房',1,'库管李','2026-02-27')");
  Run("Insert Into YPSLD(SLDH,LYDW,SFQR) Values('N2','西药房',0)");
  Run("Insert Into YPSLMX(SLDH,YPBM,SFSL,CLB) Values('N1','1',1,1)");
  Run("Insert Into YPSLMX(SLDH,YPBM,SFSL,CLB) Values('N2','1',1,1)");
  EXPECT_EQ(Report(),
            "库存、批次和流水全部一致。\n\n已确认但没有出库的出库单共 1 张：\nN1  2026-02-27  西药房  库管李\n");
  EXPECT_FALSE(agree);
}

TEST_F(StoreCheckTest, ADirectoryWithoutAStoreIsLeftAsItIs) {
  fs::create_directories(place / "other");
  ExpectInOrder(WordsOf([&] { CheckStore(place / "other", agree); }), {"不是应用程序目录", "other"});
  EXPECT_TRUE(fs::is_empty(place / "other"));
  fs::remove(place / "yk" / "lumndata.db");
  EXPECT_NE(WordsOf([&] { CheckStore(place / "yk", agree); }), "");
  EXPECT_FALSE(fs::exists(place / "yk" / "lumndata.db"));
}

}  // namespace
}  // namespace luming
