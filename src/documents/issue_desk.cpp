#include "documents/issue_desk.h"

#include <set>
#include <string>

#include "documents/issue_note.h"
#include "documents/screens.h"
#include "frame/gateway.h"
#include "masterdata/drug_record.h"
#include "stock/document_numbers.h"
#include "util/date_text.h"

namespace luming {

namespace {

constexpr NoteKind kKind{.name = Frm_YPCKGL::kName,
                         .caption = "出库管理",
                         .table = "YPSLD",
                         .number = "SLDH",
                         .date = "SLRQ",
                         .waiting_title = "未确认出库单",
                         .confirmed_title = "已确认出库单",
                         .number_head = "出库单号",
                         .confirmed_head = "出库日期",
                         .pharmacy_caption = "出库方式"};

constexpr int kMoveAgain = 11;  ///< entry of the pop-up

}  // namespace

Frm_YPCKGL::Frm_YPCKGL(AppContext& app) : NoteDesk(app, kKind) {
  fpSpread1.double_click.Connect(this, &Frm_YPCKGL::fpSpread1_DoubleClick);
  fpSpread2.right_click.Connect(this, &Frm_YPCKGL::fpSpread2_RightClick);
}

void Frm_YPCKGL::FormKeyDown(KeyEvent& event) {
  event.handled = true;
  switch (event.code) {
    case key::kF2:
      Com_Add_Click();
      break;
    case key::kF4:
      Command2_Click();
      break;
    case key::kF6:
      Com_Del_Click();
      break;
    default:
      NoteDesk::FormKeyDown(event);
  }
}

void Frm_YPCKGL::Com_Add_Click() {
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.EnsureLoaded();
  note.SLDH.SetText(NextDocNo(app_, "SLDH", "YPSLD", "SLRQ"));
  note.Begin(note_way::kAdd);
  note.ShowModal();
  LoadData();
}

void Frm_YPCKGL::View(const std::string& number) {
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.Begin(note_way::kView);
  note.LoadData(number);
  note.SetCaption("单据查看");
  note.ShowModal();
}

void Frm_YPCKGL::Command2_Click() {
  const std::string number = ChosenNote(fpSpread1, {"请先选择你要修改的单据。", box::kWarning, "信息提示"});
  if (number.empty()) return;
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.Begin(note_way::kChange);
  note.SetCaption("单据修改");
  note.LoadData(number);
  note.ShowModal();
  LoadData();
}

void Frm_YPCKGL::Confirm(const std::string& number) {
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.Begin(note_way::kConfirm);
  note.LoadData(number);
  note.SetCaption("单据确认");
  note.ShowModal();
}

void Frm_YPCKGL::Com_Del_Click() {
  const std::string number = ChosenNote(fpSpread1, {"请先选择你要删除的单号。", box::kWarning, "系统提示"});
  if (number.empty()) return;
  const Box question{"你真的要删除出库单【" + number + "】吗？", box::kQuestion + box::kYesNo + box::kSecondIsDefault,
                     "提示"};
  if (app_.desktop.MsgBox(question) != Answer::kYes || !StillWaits(number)) return;
  const bool deleted = ExecSql(app_, "Delete YPSLD Where SLDH Like" + Quoted(number, "出库单号") +
                                         "\nDelete YPSLMX Where SLDH Like" + Quoted(number, "出库单号"));
  LoadData();
  if (deleted) app_.desktop.MsgBox({"删除成功", box::kInformation, "信息"});
}

/// A note that another workstation has confirmed since the list was read stands for stock that has moved.
bool Frm_YPCKGL::StillWaits(const std::string& number) {
  bool waits = false;
  Trapped(app_, [&] {
    Recordset note;
    OpenRs(app_, note, "Select SFQR From YPSLD Where SLDH Like" + Quoted(number, "出库单号"));
    waits = note.Eof() || !IsFlagSet(note.Field("SFQR"));
    if (waits) return;
    app_.desktop.MsgBox({"出库单【" + number + "】已经确认，不能删除。", box::kWarning, "系统提示"});
    LoadData();
  });
  return waits;
}

void Frm_YPCKGL::Command5_Click() {
  kIssueQuery.open(app_);
}

/// Notes of the shown month that stand as confirmed although their stock has not moved: lines without a price.
Recordset Frm_YPCKGL::ReadUnmoved() const {
  const DateTime first(DTPicker1.Value().Year(), DTPicker1.Value().Month(), 1);
  const DateTime next = first.AddMonths(1);
  return app_.Cn->Execute("Select D.SLDH From YPSLD D Where D.SFQR=1 AND D.LYDW Like" + Quoted(PharmacyOf(app_.KFMC)) +
                          " AND D.CKRQ>=" + Quoted(FormatDate(first, "yyyy-mm-dd")) + " AND D.CKRQ<" +
                          Quoted(FormatDate(next, "yyyy-mm-dd")) +
                          " AND Exists(Select 1 From YPSLMX A Where A.SLDH=D.SLDH AND A.LSJ Is Null)");
}

/// Marks them in bold and red. The list is as good without the marks where they cannot be read.
void Frm_YPCKGL::ConfirmedShown() {
  constexpr Colour kRed = 0xC00000;
  try {
    std::set<std::string> unmoved;
    for (Recordset notes = ReadUnmoved(); !notes.Eof(); notes.MoveNext()) unmoved.insert(notes.Field(0).Text());
    for (int row = 1; row <= fpSpread2.MaxRows(); ++row) {
      if (!unmoved.contains(fpSpread2.Text(row, 1))) continue;
      fpSpread2.SetColours(row, 1, fpSpread2.MaxCols(), kRed, Control::kNoColour);
      fpSpread2.SetBold(row, 1, fpSpread2.MaxCols(), true);
    }
  } catch (const Failure&) {
  }
}

/// The server refuses to move a note a second time.
void Frm_YPCKGL::fpSpread2_RightClick(int row, int) {
  if (fpSpread2.OfferCommands({{"重新出库(&R)", kMoveAgain}}) != kMoveAgain) return;
  ExecSql(app_, "Exec SP_YK_UpdateCKJG " + Quoted(fpSpread2.Text(row, 1), "出库单号"));
  LoadData();
}

const Screen kIssueDesk = ChildScreen<Frm_YPCKGL>();

}  // namespace luming
