#include "platform/editable_recordset.h"

#include "platform/statement.h"
#include "support/failure_of.h"
#include "support/store_test.h"

namespace luming {
namespace {

class EditableRecordsetTest : public StoreTest {
 protected:
  EditableRecordsetTest() {
    Run("Insert Into YPGL_CDWF(CDMC,PYDM,WBDM,CDQC) Values('望川制药','WCZY','YKRA','望川制药有限公司')");
    Run("Insert Into YPGL_CDWF(CDMC,PYDM,WBDM,CDQC) Values('林壑药业','LHYY','SHAO',NULL)");
    TakeSent();
  }

  EditableRecordset Open() { return {app.Cn, Statement("select * from YPGL_CDWF"), {"YPGL_CDWF", "id"}}; }
  std::string All() { return Query("select id,CDMC,PYDM,CDQC from YPGL_CDWF order by id"); }
};

TEST_F(EditableRecordsetTest, ChangesOneRowByItsKey) {
  EditableRecordset rows = Open();
  EXPECT_EQ(rows.RecordCount(), 2);
  EXPECT_EQ(rows.Field("cdmc").Text(), "望川制药");
  rows.MoveTo(2);
  rows.SetField("CDMC", Value("林壑'药业"));
  rows.SetField("cdqc", Value("林壑药业公司"));
  EXPECT_EQ(rows.Field("CDMC").Text(), "林壑药业") << "nothing holds before Update";
  TakeSent();
  rows.Update();
  EXPECT_EQ(TakeSent(), (std::vector<std::string>{
                            "Update YPGL_CDWF Set CDMC='林壑''药业',CDQC='林壑药业公司' Where id=2 And CDMC='林壑药业' "
                            "And CDQC Is Null Select @@ROWCOUNT"}));
  EXPECT_EQ(All(), "1\t望川制药\tWCZY\t望川制药有限公司\n2\t林壑'药业\tLHYY\t林壑药业公司");
  EXPECT_EQ(rows.Field("CDQC").Text(), "林壑药业公司");
  rows.SetField("CDQC", Value());
  rows.Update();
  EXPECT_EQ(All(), "1\t望川制药\tWCZY\t望川制药有限公司\n2\t林壑'药业\tLHYY\tNULL");
}

TEST_F(EditableRecordsetTest, ANewRowIsTheLastAndKnowsItsKey) {
  EditableRecordset rows = Open();
  rows.AddNew();
  rows.SetField("CDMC", Value("云岫制药"));
  rows.SetField("PYDM", Value("YXZY"));
  TakeSent();
  rows.Update();
  EXPECT_EQ(TakeSent(),
            (std::vector<std::string>{"Insert Into YPGL_CDWF(CDMC,PYDM) Values('云岫制药','YXZY') Select @@IDENTITY"}));
  EXPECT_EQ(rows.RecordCount(), 3);
  EXPECT_EQ(rows.AbsolutePosition(), 3);
  rows.SetField("PYDM", Value("YX"));
  rows.Update();
  EXPECT_EQ(Query("select PYDM from YPGL_CDWF where id=3"), "YX");

  rows.AddNew();
  rows.SetField("CDMC", Value("x"));
  rows.CancelUpdate();
  rows.Update();
  EXPECT_EQ(rows.RecordCount(), 3);
}

TEST_F(EditableRecordsetTest, DeletingMovesOnToTheNextRow) {
  EditableRecordset rows = Open();
  TakeSent();
  rows.Delete();
  EXPECT_EQ(TakeSent(), (std::vector<std::string>{"Delete From YPGL_CDWF Where id=1 Select @@ROWCOUNT"}));
  EXPECT_EQ(rows.Field("CDMC").Text(), "林壑药业");
  rows.Delete();
  EXPECT_EQ(rows.AbsolutePosition(), 0);
  EXPECT_EQ(FailureOf([&] { rows.Delete(); }), failure::kNoCurrentRow);
  EXPECT_EQ(All(), "");
}

TEST_F(EditableRecordsetTest, ARowThatSomeoneElseChangedIsNotOverwritten) {
  EditableRecordset rows = Open();
  Run("Update YPGL_CDWF Set CDMC='别家' Where id=1");
  rows.SetField("CDMC", Value("自家"));
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), EditableRecordset::kRowChanged);
  EXPECT_EQ(rows.Field("CDMC").Text(), "望川制药");
  Run("Delete YPGL_CDWF Where id=1");
  EXPECT_EQ(FailureOf([&] { rows.Delete(); }), EditableRecordset::kRowChanged);
  EXPECT_EQ(rows.RecordCount(), 2);
}

TEST_F(EditableRecordsetTest, MisuseIsAFailure) {
  EditableRecordset closed;
  EXPECT_EQ(FailureOf([&] { closed.RecordCount(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { closed.AddNew(); }), failure::kClosedObject);
  EXPECT_EQ(FailureOf([&] { EditableRecordset(nullptr, Statement(), {}); }), failure::kBadConnection);
  const EditableTable keyless{"YPGL_CDWF", "number"};
  EXPECT_EQ(FailureOf([&] { EditableRecordset(app.Cn, Statement("select * from YPGL_CDWF"), keyless); }),
            failure::kNoSuchField);
  EditableRecordset rows = Open();
  EXPECT_EQ(FailureOf([&] { rows.MoveTo(3); }), failure::kNoCurrentRow);
  EXPECT_EQ(FailureOf([&] { rows.SetField("XX", Value(1)); }), failure::kNoSuchField);
  rows.AddNew();
  rows.SetField("CDMC", Value());
  EXPECT_EQ(FailureOf([&] { rows.Update(); }), failure::kKeyViolation) << "the name may not be missing";
  EXPECT_EQ(rows.RecordCount(), 2);
}

}  // namespace
}  // namespace luming
