#include "app/opening_stock.h"

#include <algorithm>

#include "app/absent_output.h"
#include "app/command_table.h"
#include "app/system_devices.h"
#include "documents/screens.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "script/headless_desktop.h"
#include "script/script_names.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

/// One row of the receipts' file, asked by the names of its columns.
class ReceiptRow {
 public:
  ReceiptRow(const TableFile& file, const std::vector<std::string>& fields) : file_(file), fields_(fields) {}

  const std::string& operator[](std::string_view column) const {
    const auto found = std::ranges::find(file_.columns, column);
    if (found == file_.columns.end()) {
      throw Failure(failure::kNoSuchField, "数据文件 " + file_.table + ".tsv 缺少列 " + std::string(column) + "。");
    }
    return fields_[static_cast<std::size_t>(found - file_.columns.begin())];
  }
  DateTime Day(std::string_view column, const DateTime& today) const { return today.AddDays(CLng((*this)[column])); }

 private:
  const TableFile& file_;
  const std::vector<std::string>& fields_;
};

/// The screen asked something that no opening receipt should lead to. No trap of the screens takes it.
struct Refused {
  std::string words;
};

/// Types the receipts in. Everything goes through the fields and buttons of the screen.
class OpeningClerk {
 public:
  OpeningClerk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const DateTime& today)
      : today_(today.Date()),
        clock_(today_),
        app_({desktop_, devices_, NoPrinter::Instance(), NoWorkbooks::Instance(), clock_}, home, {}, MainCommands()),
        form_(OpenScreen(std::move(connection))) {}

  void Enter(const TableFile& file) {
    std::string number;
    for (const std::vector<std::string>& fields : file.rows) {
      const ReceiptRow row(file, fields);
      if (row["DH"] != number) {
        Save();
        number = row["DH"];
        Begin(row);
      }
      EnterLine(row);
    }
    Save();
  }

 private:
  Form& OpenScreen(std::shared_ptr<Connection> connection) {
    desktop_.pump = [this] { Act(); };
    app_.Cn = std::move(connection);
    app_.CurUser.GetUserName = "管理员";
    app_.CurUser.YPGL_YKJYLR = true;
    Form& form = kReceipt.form(app_);
    form.EnsureLoaded();
    form.Field<ComboBox>("CXFS").SetText("编码");
    return form;
  }

  void Begin(const ReceiptRow& row) {
    constexpr int kMorning = 9 * 3600;
    app_.KFMC = row["KFMC"];
    clock_.Set(row.Day("RKRQ", today_).AddSeconds(kMorning));
    form_.Field<ComboBox>("sGHDW").UserText(row["GHDW"]);
    form_.Field<TextBox>("sFPH").UserText(row["FPH"]);
    form_.Field<DateBox>("FPRQ").SetValue(row.Day("FPRQ", today_));
    form_.Field<ComboBox>("lFKBZ").UserChoose(row["FKBZ"] == "1" ? 0 : 1);
    form_.Field<ComboBox>("sYSR").UserText(row["YSR"]);
    form_.Field<ComboBox>("sFHR").UserText(row["FHR"]);
  }

  void EnterLine(const ReceiptRow& row) {
    row_ = &row;
    form_.Field<TextBox>("PM").UserText(row["YPBM"]);
    auto& matches = form_.Field<Grid>("fpSpread2");
    if (matches.Text(matches.ActiveRow(), 1) != row["YPBM"]) {
      throw Failure(failure::kInvalidCall, "期初入库单中的药品 " + row["YPBM"] + " 不在" + app_.KFMC + "的目录中。");
    }
    matches.UserDoubleClick(matches.ActiveRow(), 1);
    row_ = nullptr;
    if (!row["XQ"].empty()) return;
    int line = 1;
    while (lines_.Text(line, 1) != row["YPBM"]) ++line;
    lines_.UserEdit(line, ColumnNamed(lines_, "效期"), "");
  }

  void Save() {
    if (lines_.MaxRows() == 0) return;
    form_.UserClick(form_.Field<Button>("Command1"));
    if (lines_.MaxRows() > 0) throw Failure(failure::kInvalidCall, "期初入库单没有保存。");
  }

  void Act() {
    if (const Box* box = desktop_.OpenBox()) {
      const bool question = (box->style & box::kYesNo) != 0;
      if (!question && (box->style & 0xF0) != box::kInformation) throw Refused{box->text};
      desktop_.AnswerBox(question ? Answer::kYes : Answer::kOk);
      return;
    }
    Form* dialog = app_.forms.Find("ek_RKXZ");
    if (!dialog || !row_) throw Refused{"期初入库时出现了意外的窗口。"};
    FillDialog(*dialog, *row_);
  }

  void FillDialog(Form& dialog, const ReceiptRow& row) {
    auto& unit = dialog.Field<ComboBox>("DW");
    const auto found = std::ranges::find(unit.Items(), row["DW"]);
    if (found == unit.Items().end()) throw Refused{"药品 " + row["YPBM"] + " 没有单位“" + row["DW"] + "”。"};
    unit.UserChoose(static_cast<int>(found - unit.Items().begin()));
    dialog.Field<TextBox>("sngSL").UserText(row["SL"]);
    dialog.Field<TextBox>("PFJ").UserText(row["PFJ"]);
    dialog.Field<TextBox>("PLJ").UserText(row["PLJ"]);
    dialog.Field<TextBox>("sPH").UserText(row["PH"]);
    if (!row["XQ"].empty()) dialog.Field<DateBox>("lYXQ").SetValue(row.Day("XQ", today_));
    dialog.UserClick(dialog.Field<Button>("Command1"));
  }

  const DateTime today_;
  HeadlessDesktop desktop_;
  UntouchedDevices devices_;
  FixedClock clock_;
  AppContext app_;
  Form& form_;
  Grid& lines_ = form_.Field<Grid>("fpSpread1");
  const ReceiptRow* row_ = nullptr;
};

}  // namespace

void EnterOpeningReceipts(const std::filesystem::path& home, std::shared_ptr<Connection> connection,
                          const TableFile& receipts, const DateTime& today) {
  try {
    OpeningClerk(home, connection, today).Enter(receipts);
  } catch (const Refused& refused) {
    throw Failure(failure::kInvalidCall, "期初入库失败：" + refused.words);
  }
}

}  // namespace luming
