#include "support/document_desk.h"

#include "documents/issue_note.h"
#include "documents/screens.h"
#include "frame/user_rights.h"
#include "screen/button.h"

namespace luming {

DocumentDesk::DocumentDesk(const Screen& screen, const std::filesystem::path& home,
                           std::shared_ptr<Connection> connection, const Clock& clock)
    : app_({desktop_, devices_, printing_, workbooks_, clock}, home, {}, commands_),
      handler_(app_.forms),
      screen_(OpenScreen(screen, std::move(connection))) {}

Form& DocumentDesk::OpenScreen(const Screen& screen, std::shared_ptr<Connection> connection) {
  desktop_.pump = [this] {
    const Box* box = desktop_.OpenBox();
    if (!box) throw HeadlessStuck{};
    desktop_.AnswerBox((box->style & box::kYesNo) != 0 ? Answer::kYes : Answer::kOk);
  };
  app_.Cn = std::move(connection);
  app_.KFMC = "西药库";
  app_.CurUser.GetUserName = "管理员";
  for (const OperatorRight& right : kAllRights) app_.CurUser.*right.flag = true;
  Form& form = screen.form(app_);
  form.EnsureLoaded();
  return form;
}

bool DocumentDesk::Save() {
  screen_.UserClick(screen_.Field<Button>("Command1"));
  return Lines().MaxRows() == 0;
}

ConfirmingDesk::ConfirmingDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection,
                               const Clock& clock)
    : DocumentDesk(kIssueDesk, home, std::move(connection), clock) {}

void ConfirmingDesk::Open(const std::string& number) {
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.Begin(note_way::kConfirm);
  note.LoadData(number);
}

bool ConfirmingDesk::Confirm() {
  auto& note = app_.forms.Get<Frm_YFYPSL>(app_);
  note.UserClick(note.Command2);
  return note.IsUnloaded();
}

ReceiptDesk::ReceiptDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock)
    : DocumentDesk(kReceipt, home, std::move(connection), clock) {}

std::vector<ReceiptDesk::Line> ReceiptDesk::LinesOf(int first, int count, const std::string& batch) {
  if (drugs_.empty()) {
    Recordset rows = app_.Cn->Execute(
        "Select YPBM,YPMC,GG,DW,ZXDW,SCCJ,PLJ,LSJ,PFJ,CLB From YF_YPML Where SFXM='西药费' Order by YPBM");
    for (; !rows.Eof(); rows.MoveNext()) {
      const auto text = [&rows](const char* field) { return rows.Field(field).TextOrEmpty(); };
      const bool small = drugs_.size() % 2 == 1 && rows.Field("CLB").NumberOr(1) > 1;
      drugs_.push_back({text("YPBM"), text("YPMC"), text("GG"), text(small ? "ZXDW" : "DW"), text("SCCJ"), text("PLJ"),
                        text("LSJ"), "2.5", text("PFJ"), "12.345", "", "2027-09-30", small ? "1" : text("CLB"),
                        small ? "1.234" : ""});
    }
  }
  std::vector<Line> lines;
  for (int i = first; i < first + count; ++i) {
    lines.push_back(drugs_[static_cast<std::size_t>(i) % drugs_.size()]);
    lines.back()[receipt::kBatch - 1] = batch;
  }
  return lines;
}

void ReceiptDesk::Write(const std::vector<Line>& lines, const std::string& invoice) {
  Choose("sGHDW", "云泊医药有限公司");
  Choose("sYSR", "方立群");
  Choose("sFHR", "吕静仪");
  screen_.Field<TextBox>("sFPH").SetText(invoice);
  Grid& grid = Lines();
  grid.SetMaxRows(static_cast<int>(lines.size()));
  int row = 0;
  for (const Line& line : lines) {
    ++row;
    for (std::size_t column = 0; column < kColumns; ++column) {
      grid.SetText(row, static_cast<int>(column) + 1, line[column]);
    }
  }
}

}  // namespace luming
