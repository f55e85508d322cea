#include "documents/note_desk.h"

#include <utility>
#include <vector>

#include "frame/gateway.h"
#include "output/grid_routines.h"

namespace luming {

std::string PharmacyOf(const std::string& storehouse) {
  return storehouse == "西药库" ? "西药房" : "中药房";
}

NoteDesk::NoteDesk(AppContext& app, const NoteKind& kind)
    : Form(app.forms, kind.name, kind.caption, WindowKind::kChild),
      fpSpread1(this, "fpSpread1",
                {GridColumn(kind.number_head, 14).Code(), GridColumn("录入日期", 11).Date(), GridColumn("科室名称", 10),
                 GridColumn("备注", 18), GridColumn("状态", 10)}),
      fpSpread2(this, "fpSpread2",
                {GridColumn(kind.number_head, 14).Code(), GridColumn(kind.confirmed_head, 11).Date(),
                 GridColumn("科室名称", 10)}),
      KFLIST(this, "KFLIST", kind.pharmacy_caption, {.style = ComboStyle::kFixed}),
      app_(app),
      kind_(kind) {
  for (Grid* list : {&fpSpread1, &fpSpread2}) {
    list->SetReadOnly(true);
    list->SetRowMode(true);
  }
  fpSpread2.double_click.Connect(this, &NoteDesk::fpSpread2_DoubleClick);
}

Layout NoteDesk::Arranged(std::vector<Layout> buttons) const {
  buttons.push_back(Space());
  buttons.push_back(Com_Cmint);
  return Column({
      Row(std::move(buttons)),
      SplitAcross({
          Group(kind_.waiting_title, Column({Row({Layout(KFLIST).Width(14), Space()}), fpSpread1})).Stretch(3),
          Group(kind_.confirmed_title, Column({Row({Layout(DTPicker1).Width(12), Space()}), fpSpread2})).Stretch(2),
      }),
  });
}

void NoteDesk::Load() {
  GridInit(fpSpread1);
  GridInit(fpSpread2);
  KFLIST.AddItem(PharmacyOf(app_.KFMC));
  KFLIST.SetListIndex(0);
  LoadData();
}

void NoteDesk::FormKeyDown(KeyEvent& event) {
  event.handled = true;
  switch (event.code) {
    case key::kF3:
      Command1_Click();
      break;
    case key::kF5:
      LoadData();
      break;
    case key::kF8:
      Command3_Click();
      break;
    default:
      event.handled = false;
  }
}

void NoteDesk::LoadData() {
  Trapped(app_, [this] {
    Recordset waiting;
    OpenRs(app_, waiting, WaitingStatement());
    fpSpread1.Fill(std::move(waiting), {{kind_.number}, {kind_.date, "yyyy-mm-dd"}, {"LYDW"}, {"BZ"}, {"ZT"}});
    Recordset confirmed;
    OpenRs(app_, confirmed, ConfirmedStatement());
    fpSpread2.Fill(std::move(confirmed), {{kind_.number}, {"CKRQ", "YYYY-MM-DD"}, {"LYDW"}});
    ConfirmedShown();
  });
}

Statement NoteDesk::WaitingStatement() const {
  return std::string("Select ") + kind_.number + "," + kind_.date +
         ",BZ,CZY,LYDW, case SFQR When 1 then '已确认' else  '待确认……' end  AS 'ZT' From " + kind_.table +
         " Where SFQR=0 AND  CKFS=1  AND SFTJ=1 AND SFQR=0 AND LYDW Like" + Quoted(PharmacyOf(app_.KFMC));
}

Statement NoteDesk::ConfirmedStatement() const {
  const DateTime& month = DTPicker1.Value();
  return std::string("Select ") + kind_.number + ",CKRQ,LYDW From " + kind_.table + " Where SFQR=1 AND LYDW Like" +
         Quoted(PharmacyOf(app_.KFMC)) + " AND Year(ckrq)=" + std::to_string(month.Year()) +
         " AND Month(ckrq)=" + std::to_string(month.Month()) + " Order by ID DESC";
}

std::string NoteDesk::ChosenNote(const Grid& list, const Box& none) {
  if (list.MaxRows() > 0) return list.Text(list.ActiveRow(), 1);
  app_.desktop.MsgBox(none);
  return {};
}

void NoteDesk::ViewChosen(const Grid& list) {
  const std::string number = ChosenNote(list, {"请先选择你要查看的单据。", box::kWarning, "信息提示"});
  if (!number.empty()) View(number);
}

void NoteDesk::Command3_Click() {
  const std::string number = ChosenNote(fpSpread1, {"请先选择你要确认的单据。", box::kWarning, "信息提示"});
  if (!number.empty()) Confirm(number);
}

}  // namespace luming
