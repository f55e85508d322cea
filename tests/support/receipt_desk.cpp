#include "support/receipt_desk.h"

#include "documents/screens.h"
#include "screen/button.h"
#include "screen/combo_box.h"

namespace luming {

ReceiptDesk::ReceiptDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock)
    : app_({desktop_, devices_, printing_, workbooks_, clock}, home, {}, commands_),
      handler_(app_.forms),
      screen_(OpenScreen(std::move(connection))) {}

Form& ReceiptDesk::OpenScreen(std::shared_ptr<Connection> connection) {
  desktop_.pump = [this] {
    const Box* box = desktop_.OpenBox();
    if (!box) throw HeadlessStuck{};
    desktop_.AnswerBox((box->style & box::kYesNo) != 0 ? Answer::kYes : Answer::kOk);
  };
  app_.Cn = std::move(connection);
  app_.KFMC = "西药库";
  app_.CurUser.GetUserName = "管理员";
  app_.CurUser.YPGL_YKJYLR = true;
  Form& screen = kReceipt.form(app_);
  screen.EnsureLoaded();
  return screen;
}

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
  screen_.Field<ComboBox>("sGHDW").SetText("云泊医药有限公司");
  screen_.Field<ComboBox>("sYSR").SetText("方立群");
  screen_.Field<ComboBox>("sFHR").SetText("吕静仪");
  screen_.Field<TextBox>("sFPH").SetText(invoice);
  lines_.SetMaxRows(static_cast<int>(lines.size()));
  int row = 0;
  for (const Line& line : lines) {
    ++row;
    for (std::size_t column = 0; column < kColumns; ++column) {
      lines_.SetText(row, static_cast<int>(column) + 1, line[column]);
    }
  }
}

bool ReceiptDesk::Save() {
  screen_.UserClick(screen_.Field<Button>("Command1"));
  return lines_.MaxRows() == 0;
}

}  // namespace luming
