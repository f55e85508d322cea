#include <algorithm>
#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "app/command_table.h"
#include "app/store_check.h"
#include "app/store_maker.h"
#include "app/system_devices.h"
#include "frame/app_context.h"
#include "frame/user_rights.h"
#include "localdb/local_connection.h"
#include "masterdata/phonetic.h"
#include "support/fake_output.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"

namespace luming {
namespace {

constexpr const char* kConnection =
    "Provider=sqloledb;Data Source=(localdb);Initial Catalog=lumndata;User ID=sa;Password=;";

/// The demonstration store, made once; the tests only read it.
class DemoStoreTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    place_ = std::make_unique<TempDirectory>();
    const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
    StoreRequest request;
    request.directory = place_->Path() / "store";
    request.data = LUMING_DATABASE_DIR;
    request.demo = true;
    MakeApplicationDirectory(request, clock);
  }
  static void TearDownTestSuite() { place_.reset(); }

  DemoStoreTest() {
    auto store = std::make_shared<LocalConnection>(place_->Path() / "store", clock_);
    store->Open(kConnection);
    app.Cn = store;
  }

  Recordset Read(const std::string& sql) { return app.Cn->Execute(sql); }
  double Number(const std::string& sql) { return Read(sql).Field(0).NumberOr(0); }
  /// The first column of all rows, for a failure to show.
  std::vector<std::string> Offenders(const std::string& sql) {
    std::vector<std::string> found;
    for (Recordset rows = Read(sql); !rows.Eof(); rows.MoveNext()) found.push_back(rows.Field(0).TextOrEmpty());
    return found;
  }

 private:
  static inline std::unique_ptr<TempDirectory> place_;
  ScriptedDesktop desktop_;
  UntouchedDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  FixedClock clock_{DateTime(2026, 3, 1, 10, 0, 0)};

 protected:
  AppContext app{{desktop_, devices_, printing_, workbooks_, clock_}, place_->Path() / "store", {}, MainCommands()};
};

using Codes = std::vector<std::string>;

TEST_F(DemoStoreTest, CataloguesBearTheCodesThatTheProgramWouldGive) {
  int rows = 0;
  for (const char* sql : {"Select YPMC,PYDM,WBDM From YF_YPML", "Select SPMC,SP_PYDM,SP_WBDM From YF_YPML",
                          "Select CDMC,PYDM,WBDM From YPGL_CDWF"}) {
    for (Recordset row = Read(sql); !row.Eof(); row.MoveNext(), ++rows) {
      const std::string name = row.Field(0).TextOrEmpty();
      EXPECT_EQ(row.Field(1).TextOrEmpty(), GetPYDM(app, name)) << name;
      EXPECT_EQ(row.Field(2).TextOrEmpty(), GetWBDM(app, name)) << name;
    }
  }
  EXPECT_GT(rows, 2500);
}

TEST_F(DemoStoreTest, PolyphonesAreReadAsDrugNamesReadThem) {
  EXPECT_EQ(GetPYDM(app, "人参 白术 川芎 枳壳 蛤蚧"), "RSBZCXZQGJ");
  EXPECT_EQ(GetPYDM(app, "炔诺酮 依沙吖啶 淡豆豉 金匮 海螵蛸 芜荑 匙羹藤"), "QNTYSADDDCJGHPXWYCGT");
  EXPECT_EQ(GetPYDM(app, "颈椎 卒中 牙龈 芘 莨菪 荨麻疹 黄柏 茜草"), "JZCZYYBLDXMZHBQC");
  EXPECT_EQ(GetPYDM(app, "重组人干扰素α2b"), "CZRGRSA2b");
  EXPECT_EQ(GetPYDM(app, "调经止咳 颠茄 多粘菌素Ｂ"), "TJZKDQDNJSB");
  EXPECT_EQ(GetWBDM(app, "阿莫西林"), "BASS");
}

TEST_F(DemoStoreTest, UnitsAndPricesOfDrugsFitEachOther) {
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where YPBM<'9' And Not (PFJ<PLJ And PLJ<LSJ And PFJ>0)"), Codes{});
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where CLB>1 And ABS(CLLSJ*CLB-LSJ)>0.0001*CLB"), Codes{});
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where CLB<1 Or (CLB>1 And ZXDW=DW) Or (CLB=1 And ZXDW<>DW)"), Codes{});
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where YKKCSX<YKKCXX Or KCSX<KCXX"), Codes{});
}

TEST_F(DemoStoreTest, TextsOfDrugsStandInTheirDictionaries) {
  const std::map<std::string, std::string> dictionaries = {{"ZXDW", "ZXDW"}, {"DW", "YPDW"},   {"JX", "YPJX"},
                                                           {"GYTJ", "GYTJ"}, {"ZLZK", "ZLZK"}, {"ABC", "ABC"},
                                                           {"YYPC", "YYPC"}};
  for (const auto& [column, dictionary] : dictionaries) {
    EXPECT_EQ(Offenders("Select Distinct " + column + " From YF_YPML Where YPBM<'9' And " + column +
                        " Not In (Select DMMC From CS Where Controlid Like'" + dictionary + "')"),
              Codes{})
        << column;
  }
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where YPBM<'9' And SCCJ Not In (Select CDMC From YPGL_CDWF)"), Codes{});
  EXPECT_EQ(Offenders("Select YPBM From YF_YPML Where SFXM Not In (Select sItemName From eK_ChargeItem)"), Codes{});
  EXPECT_EQ(Offenders("Select Distinct Controlid From CS Where Controlid Not In (Select DM From DAGL_ZD)"), Codes{});
  EXPECT_EQ(Offenders("Select LINKZD From ZD_LinkTable Where LINKZD Not In (Select DM From DAGL_ZD)"), Codes{});
  EXPECT_EQ(Offenders("Select FormName From ZD_LinkTable Where FormName Not In (Select Ename From ZD_Tabel)"), Codes{});
}

TEST_F(DemoStoreTest, EveryRightHasANameAndTheAdministratorHasThemAll) {
  for (const OperatorRight& right : kAllRights) {
    const std::string key(right.key);
    EXPECT_EQ(Offenders("Select MoudelKey From QX_Temp Where MoudelKey Like'" + key + "'"), Codes{key});
    EXPECT_EQ(Number("Select QX From QX_Temp2 Where Groupname='管理员' And MoudelKey='" + key + "'"), 1) << key;
  }
  EXPECT_EQ(Number("Select count(*) From QX_Temp"), static_cast<double>(kAllRights.size()));
  EXPECT_EQ(Offenders("Select group_name From userdb Where group_name Not In (Select Groupname From QX_Temp2)"),
            Codes{});
  EXPECT_EQ(Number("Select count(Distinct group_name) From userdb"), 3);
}

TEST_F(DemoStoreTest, ImportHeadsLeadToColumnsOfTheCatalogue) {
  EXPECT_EQ(
      Offenders("Select File_Cname From DATAGRID_HEAD Where Tabel_Name Like'YF_YPML' And File_Ename Not In (Select "
                "COLUMN_NAME From INFORMATION_SCHEMA.COLUMNS Where TABLE_NAME='YF_YPML')"),
      Codes{});
  EXPECT_EQ(
      Offenders(
          "Select File_Ename From DATAGRID_HEAD H Join INFORMATION_SCHEMA.COLUMNS C On C.TABLE_NAME='YF_YPML' And "
          "C.COLUMN_NAME=H.File_Ename Where Case C.DATA_TYPE When 'varchar' Then '1' Else '2' End<>Filed_Type"),
      Codes{});
  EXPECT_EQ(Offenders("Select File_Cname From DATAGRID_HEAD Group By File_Cname Having count(*)>1"), Codes{});
}

TEST_F(DemoStoreTest, OpeningStockAgreesAndGivesTheAlertsSomethingToShow) {
  EXPECT_TRUE(std::ranges::all_of(FindDisagreements(*app.Cn), &Disagreement::only_batches));
  EXPECT_EQ(Number("Select count(*) From YK_YPRK"), 40);
  EXPECT_GT(Number("Select count(Distinct YPBM) From YK_CurryPH"), 400);
  EXPECT_GT(Number("Select count(*) From YF_YPML Where YKKCL<=YKKCXX And YKKCXX<>0"), 20);
  EXPECT_GT(Number("Select count(*) From YF_YPML Where YKKCL>=YKKCSX And YKKCSX<>0"), 10);
  EXPECT_GT(Number("Select count(*) From YK_CurryPH Where XQ<'2026-03-01'"), 5);
  EXPECT_GT(Read("Exec Get_YKYPXQ '2026-03-01 00:00:00' , '2026-05-30 23:59:59',西药库").RecordCount(), 20u);
  EXPECT_GT(Read("Exec YK_YGYP '中药库'").RecordCount(), 3u);
  EXPECT_GT(Number("Select count(*) From YF_YPML Where SFTY=1 And YKKCL>0"), 0);
  EXPECT_EQ(Number("Select count(*) From YFTYDJ Where SFQR=0 And CKFS=1 And SFTJ=1"), 3);
}

}  // namespace
}  // namespace luming
