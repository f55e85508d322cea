#include <string>
#include <utility>

#include "documents/note_desk.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "output/grid_command.h"
#include "output/grid_routines.h"
#include "output/note_on_paper.h"
#include "screen/text_box.h"
#include "util/date_text.h"

namespace luming {

/// 药房退药到鹿鸣仓管: the notes with which a pharmacy sends drugs back. The pharmacy's own system writes them.
class Frm_YFTKWindow : public NoteDesk {
 public:
  static constexpr const char* kName = "Frm_YFTKWindow";
  explicit Frm_YFTKWindow(AppContext& app);

  Layout Arrange() const override { return Arranged({Command1, Command3, Command4}); }

 protected:
  void View(const std::string& number) override;
  void Confirm(const std::string& number) override;
};

/// 药品退库单: one of these notes. Its confirmation is recorded and moves no stock.
class Frm_YFTKSL : public Form {
 public:
  static constexpr const char* kName = "Frm_YFTKSL";
  explicit Frm_YFTKSL(AppContext& app);

  TextBox SLDH{this, "SLDH", "退药单号"};
  DateBox SLRQ{this, "SLRQ", "退药日期"};
  TextBox CZY{this, "CZY", "制单人"};
  TextBox BZ{this, "BZ", "备注"};
  Grid fpSpread1{this,
                 "fpSpread1",
                 {GridColumn("编码", 9).Code(), GridColumn("品名", 24), GridColumn("规格", 16), GridColumn("单位", 6),
                  GridColumn("产地", 20), GridColumn("零售价格", 11).Figure(), GridColumn("退库数量", 10).Figure(),
                  GridColumn("药房库存", 10).Figure(), GridColumn("拆零比", 8).Figure(),
                  GridColumn("金额", 12).Figure(), GridColumn("批号", 14).Code(), GridColumn("效期", 11).Date()}};
  Button Command2{this, "Command2", "确认", &Frm_YFTKSL::Command2_Click};
  Button Command5{this, "Command5", "打印(&P)", &Frm_YFTKSL::Command5_Click};
  Button Command3{this, "Command3", "关闭(&Q)", &Frm_YFTKSL::Command3_Click};

  Layout Arrange() const override {
    return Column({
        Row({Layout(SLDH).Width(14), Layout(SLRQ).Width(12), Layout(CZY).Width(12), Layout(BZ).Stretch(1)}),
        Layout(fpSpread1).Width(150).Height(22),
        Row({Command2, Command5, Space(), Command3}),
    });
  }

  /// "查看": the note is only looked at. Empty: it can be confirmed.
  void SetMode(const std::string& mode);
  /// Shows a note of the store; one that is not there cannot be confirmed.
  void LoadData(const std::string& number);

 protected:
  void Load() override { GridInit(fpSpread1); }

 private:
  void Command2_Click();
  void Command3_Click() { Unload(); }
  void Command5_Click();

  AppContext& app_;
  std::string pharmacy_;
};

namespace {

constexpr NoteKind kKind{.name = Frm_YFTKWindow::kName,
                         .caption = "药房退药到鹿鸣仓管",
                         .table = "YFTYDJ",
                         .number = "TYDH",
                         .date = "TYRQ",
                         .waiting_title = "未确认退药单",
                         .confirmed_title = "已确认退药单",
                         .number_head = "退药单号",
                         .confirmed_head = "退药日期",
                         .pharmacy_caption = "退药单位"};

constexpr const char* kViewing = "查看";

}  // namespace

Frm_YFTKWindow::Frm_YFTKWindow(AppContext& app) : NoteDesk(app, kKind) {}

void Frm_YFTKWindow::View(const std::string& number) {
  auto& note = app_.forms.Get<Frm_YFTKSL>(app_);
  note.EnsureLoaded();
  note.SetMode(kViewing);
  note.LoadData(number);
  note.SetCaption("单据查看");
  note.ShowModal();
}

void Frm_YFTKWindow::Confirm(const std::string& number) {
  auto& note = app_.forms.Get<Frm_YFTKSL>(app_);
  note.EnsureLoaded();
  note.LoadData(number);
  note.SetCaption("药房退库单据确认");
  note.ShowModal();
}

Frm_YFTKSL::Frm_YFTKSL(AppContext& app) : Form(app.forms, kName, "药品退库单", WindowKind::kDialog), app_(app) {
  for (Control* field : std::initializer_list<Control*>{&SLDH, &SLRQ, &CZY, &BZ, &fpSpread1}) field->SetReadOnly(true);
}

void Frm_YFTKSL::SetMode(const std::string& mode) {
  Command2.SetEnabled(mode != kViewing);
}

void Frm_YFTKSL::LoadData(const std::string& number) {
  Trapped(app_, [&] {
    Recordset head;
    OpenRs(app_, head, "Select TYDH,TYRQ,BZ,CZY,LYDW,YFQR from YFTYDJ WHERE TYDH LIKE" + Quoted(number, "退药单号"));
    if (head.Eof()) {
      Command2.SetEnabled(false);
    } else {
      SLDH.SetText(head.Field("TYDH").TextOrEmpty());
      if (const Value& written = head.Field("TYRQ"); !written.IsNull()) SLRQ.SetValue(written.Date());
      CZY.SetText(head.Field("CZY").TextOrEmpty());
      BZ.SetText(head.Field("BZ").TextOrEmpty());
      pharmacy_ = head.Field("LYDW").TextOrEmpty();
    }
    CloseRs(head);
    Recordset lines;
    OpenRs(app_, lines, "Select * From YFTYDJMX  Where TYDH Like" + Quoted(number, "退药单号"));
    fpSpread1.Fill(std::move(lines), {{"YPBM"},
                                      {"YPMC"},
                                      {"GG"},
                                      {"DW"},
                                      {"CD"},
                                      {"LSJ", "0.0000"},
                                      {"TKSL"},
                                      {""},
                                      {"CLB"},
                                      {"JE", "0.000"},
                                      {"PH"},
                                      {"XQ", "yyyy-mm-dd"}});
  });
}

void Frm_YFTKSL::Command2_Click() {
  const Box question{"您真的要确认吗？", box::kQuestion + box::kYesNo, "系统询问"};
  if (app_.desktop.MsgBox(question) != Answer::kYes) return;
  const bool confirmed = ExecSql(app_, "Update YFTYDJ Set YKQRR=" + Quoted(app_.CurUser.GetUserName, "操作员") +
                                           ", SFQR=1 ,CKRQ=" + Quoted(FormatDate(app_.clock.Today(), "yyyy-mm-dd")) +
                                           " Where TYDH Like" + Quoted(SLDH));
  if (!confirmed) return;
  app_.desktop.MsgBox({"确认成功", box::kInformation, "系统信息"});
  if (auto* desk = app_.forms.FindAs<Frm_YFTKWindow>()) desk->LoadData();
  Unload();
}

void Frm_YFTKSL::Command5_Click() {
  const NoteOnPaper note(fpSpread1,
                         "申请单号:" + SLDH.Text() + "      退药日期:" + SLRQ.Text() + "     备注:" + BZ.Text());
  PrintTrapped(app_, fpSpread1, "药品退药单", {.headCentre = "退药单位:" + pharmacy_});
}

const Screen kPharmacyReturnDesk = ChildScreen<Frm_YFTKWindow>();
const Screen kPharmacyReturn = ModalScreen<Frm_YFTKSL>();

}  // namespace luming
