#include "frame/about.h"
#include "support/store_test.h"

namespace luming {
namespace {

class MaintenanceTest : public StoreTest {
 protected:
  about& form = app.forms.Get<about>(app);
};

TEST_F(MaintenanceTest, MissingOldPricesComeFromTheCatalogue) {
  const auto adjust = [&](const std::string& code, int ratio, const char* old_price) {
    Run("Insert Into YK_YPTJ(YPBM,CLB,YLSJ) Values('" + code + "'," + std::to_string(ratio) + "," + old_price + ")");
  };
  adjust("100002", 1, "0");
  adjust("100002", 1, "7");
  adjust("100001", 10, "0");
  adjust("gone", 1, "0");
  adjust("100003", 1, "0");
  form.RepairOldPrices();
  EXPECT_EQ(TakeSent(),
            (std::vector<std::string>{
                "select id,ypbm from yk_yptj where clb=1 and ylsj=0 ", "SELECT LSJ FROM YF_YPML WHERE YPBM='100002'",
                "Update yk_yptj SET YLSJ=8 Where ypbm='100002'", "SELECT LSJ FROM YF_YPML WHERE YPBM='gone'",
                "SELECT LSJ FROM YF_YPML WHERE YPBM='100003'", "Update yk_yptj SET YLSJ=30 Where ypbm='100003'"}));
  EXPECT_EQ(Query("Select YPBM,YLSJ From YK_YPTJ Order by id"), "100002\t8\n100002\t8\n100001\t0\ngone\t0\n100003\t30")
      << "all adjustments of the drug, whatever they held";
}

TEST_F(MaintenanceTest, ColumnsOfATableBecomeHeadsOfImportAndUpload) {
  Run("Create Table Later(id int, Upload smallint, BM varchar(20), SL decimal(18,2), RQ datetime)");
  form.FillUploadFields("Later");
  EXPECT_EQ(Query("Select Tabel_Name,File_Ename,File_Cname,Filed_Type,File_Show From DATAGRID_HEAD "
                  "Where Tabel_Name='Later' Order by id"),
            "Later\tBM\tBM\t1\t1\nLater\tSL\tSL\t2\t1\nLater\tRQ\tRQ\t3\t1");
  EXPECT_EQ(
      Query("Select Table_Name,FiledsName,FiledsCName,UploadFiledName,UploadFiledCname,FiledType From UploadFileds"),
      "Later\tBM\tBM\tBM\tBM\t1\nLater\tSL\tSL\tSL\tSL\t2\nLater\tRQ\tRQ\tRQ\tRQ\t3");
}

TEST_F(MaintenanceTest, TheTreeOfScreensIsWrittenAsStatementsThatBringItBack) {
  Run("Insert Into ZD_Tabel(ID,PID,Lavel,Sname,Ename) Values(1,NULL,1,'根''s',NULL)");
  Run("Insert Into ZD_Tabel(ID,PID,Lavel,Sname,Ename) Values(2,1,2,'药品','Frm_YPML')");
  const std::string text = form.TreeAsStatements();
  EXPECT_EQ(text,
            "Insert into ZD_Tabel (Sname,Lavel,id,pid,Ename) values ('根''s',1,1,NULL,NULL)\r\n"
            "Insert into ZD_Tabel (Sname,Lavel,id,pid,Ename) values ('药品',2,2,1,'Frm_YPML')\r\n");
  const std::string before = Query("Select * From ZD_Tabel Order by ID");
  Run("Delete ZD_Tabel");
  Run(text);
  EXPECT_EQ(Query("Select * From ZD_Tabel Order by ID"), before);

  Run("Drop Table ZD_Tabel Create Table ZD_Tabel(Sname varchar(9), Lavel bit, id int, pid bit, Ename varchar(9))");
  Run("Insert Into ZD_Tabel Values('x',1,1,0,'y')");
  EXPECT_EQ(form.TreeAsStatements(), "Insert into ZD_Tabel (Sname,Lavel,id,pid,Ename) values ('x',1,1,0,'y')\r\n");
}

}  // namespace
}  // namespace luming
