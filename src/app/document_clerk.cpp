#include "app/document_clerk.h"

#include <algorithm>
#include <iterator>
#include <map>

#include "app/absent_output.h"
#include "app/command_table.h"
#include "app/system_devices.h"
#include "frame/user_rights.h"
#include "screen/button.h"
#include "screen/check_box.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "script/headless_desktop.h"
#include "script/script_names.h"
#include "util/date_text.h"
#include "util/number_text.h"

namespace luming {

namespace {

/// The columns of a file: those that all files have, and the fields of head and dialog around the drug's code.
class DocumentColumns {
 public:
  explicit DocumentColumns(const TableFile& file) : file_(file) {}

  std::size_t Of(std::string_view name) const {
    const auto found = std::ranges::find(file_.columns, name);
    if (found == file_.columns.end()) {
      throw Failure(failure::kNoSuchField, "数据文件 " + file_.table + ".tsv 缺少列 " + std::string(name) + "。");
    }
    return static_cast<std::size_t>(found - file_.columns.begin());
  }
  std::size_t FirstOfHead() const { return Of("SJ") + 1; }
  std::size_t Drug() const { return Of("YPBM"); }

 private:
  const TableFile& file_;
};

constexpr const char* kOffTheBook = "SJ_PC";

/// One document: the rows of a file from `first` up to `end`.
struct Document {
  const TableFile* file;
  std::size_t first;
  std::size_t end;
  DateTime saved;

  const std::string& Cell(std::size_t row, std::string_view column) const {
    return file->rows[row][DocumentColumns(*file).Of(column)];
  }
};

std::vector<Document> DocumentsOf(const TableFile& file, const DateTime& today) {
  const DocumentColumns columns(file);
  const std::size_t number = columns.Of("DH");
  std::vector<Document> documents;
  for (std::size_t row = 0; row < file.rows.size(); ++row) {
    const std::vector<std::string>& fields = file.rows[row];
    if (row == 0 || fields[number] != file.rows[row - 1][number]) {
      const DateTime time = CDate(fields[columns.Of("SJ")], today);
      const DateTime day = today.Date().AddDays(CLng(fields[columns.Of("RQ")]));
      documents.push_back({&file, row, row, day.AddSeconds(time.Hour() * 3600 + time.Minute() * 60)});
    }
    documents.back().end = row + 1;
  }
  return documents;
}

/// The screen asked something that no document of a demonstration should lead to. No trap of the screens takes it.
struct Refused {
  std::string words;
};

/// Everything goes through the fields and buttons of the screens.
class DocumentClerk {
 public:
  DocumentClerk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const DateTime& today)
      : today_(today.Date()),
        clock_(today_),
        app_({desktop_, devices_, NoPrinter::Instance(), NoWorkbooks::Instance(), clock_}, home, {}, MainCommands()) {
    desktop_.pump = [this] { Act(); };
    app_.Cn = std::move(connection);
    for (const OperatorRight& right : kAllRights) app_.CurUser.*right.flag = true;
  }

  /// A screen of its own for each, on whose day its dates and numbers are made up.
  void Enter(const Document& document) {
    const Forms::HandlerScope scope(app_.forms);
    clock_.Set(document.saved);
    app_.KFMC = document.Cell(document.first, "KFMC");
    app_.CurUser.GetUserName = document.Cell(document.first, "CZY");
    Form& form = Open(document.file->table);
    const DocumentColumns columns(*document.file);
    Fill(form, *document.file, document.first, columns.FirstOfHead(), columns.Drug());
    if (document.file->columns.back() == kOffTheBook) {
      EnterCounts(form, document);
    } else {
      for (std::size_t row = document.first; row < document.end; ++row) EnterLine(form, document, row);
    }
    form.UserClick(form.Field<Button>("Command1"));
    if (!form.IsUnloaded() && form.Field<Grid>("fpSpread1").MaxRows() > 0) throw Refused{"没有保存。"};
    form.Unload();
  }

 private:
  Form& Open(const std::string& screen) {
    const auto& commands = app_.commands.commands;
    const auto command = std::ranges::find(commands, screen, &Command::screen);
    if (command == commands.end() || !command->action) throw Refused{"没有画面 " + screen + "。"};
    command->action(app_);
    return *app_.forms.Find(screen);
  }

  void EnterCounts(Form& form, const Document& document) {
    std::map<std::string, double> off;
    for (std::size_t row = document.first; row < document.end; ++row) {
      off[document.Cell(row, "YPBM")] = CDbl(document.Cell(row, kOffTheBook));
    }
    form.Field<CheckBox>("Check1").UserClick();
    form.UserClick(form.Field<Button>("Command6"));
    auto& lines = form.Field<Grid>("fpSpread1");
    const int book = ColumnNamed(lines, "帐面库存"), counted = ColumnNamed(lines, "实际库存");
    for (int row = 1; row <= lines.MaxRows(); ++row) {
      if (lines.IsTotalRow(row)) continue;
      const double stock = lines.Number(row, book) + off[lines.Text(row, 1)];
      lines.UserEdit(row, counted, NumberText(stock < 0 ? 0 : stock));
    }
  }

  void EnterLine(Form& form, const Document& document, std::size_t row) {
    const std::string& code = document.Cell(row, "YPBM");
    form.Field<ComboBox>("CXFS").SetText("编码");
    form.Field<TextBox>("PM").UserText(code);
    auto& matches = form.Field<Grid>("fpSpread2");
    if (matches.Text(1, 1) != code) throw Refused{"药品 " + code + " 不在" + app_.KFMC + "的目录中。"};
    line_ = {&document, row, false};
    matches.UserDoubleClick(1, 1);
    line_.document = nullptr;
    if (!line_.without_day) return;
    auto& lines = form.Field<Grid>("fpSpread1");
    int entered = 1;
    while (lines.Text(entered, 1) != code) ++entered;
    lines.UserEdit(entered, ColumnNamed(lines, "效期"), "");
  }

  void Act() {
    if (const Box* box = desktop_.OpenBox()) {
      const bool question = (box->style & box::kYesNo) != 0;
      if (!question && (box->style & 0xF0) != box::kInformation) throw Refused{box->text};
      desktop_.AnswerBox(question ? Answer::kYes : Answer::kOk);
      return;
    }
    Form* dialog = app_.forms.Top();
    if (!dialog || !dialog->IsModal() || !line_.document) throw Refused{"出现了意外的窗口。"};
    const TableFile& file = *line_.document->file;
    Fill(*dialog, file, line_.row, DocumentColumns(file).Drug() + 1, file.columns.size());
    dialog->UserClick(dialog->Field<Button>("Command1"));
  }

  void Fill(Form& form, const TableFile& file, std::size_t row, std::size_t first, std::size_t end) {
    for (std::size_t column = first; column < end; ++column) Put(form, file.columns[column], file.rows[row][column]);
  }

  void Put(Form& form, const std::string& name, const std::string& text) {
    Control* control = form.Find(name);
    if (auto* day = dynamic_cast<DateBox*>(control)) {
      line_.without_day = text.empty();
      if (!text.empty()) day->SetValue(today_.AddDays(CLng(text)));
    } else if (text.empty()) {
      return;
    } else if (auto* box = dynamic_cast<TextBox*>(control)) {
      box->UserText(text);
    } else if (auto* list = dynamic_cast<ComboBox*>(control)) {
      Choose(*list, text);
    } else {
      throw Refused{form.Name() + " 没有可以填写的 " + name + "。"};
    }
  }

  static void Choose(ComboBox& list, const std::string& text) {
    if (list.Style() == ComboStyle::kFree) return list.UserText(text);
    const auto found = std::ranges::find(list.Items(), text);
    if (found == list.Items().end()) throw Refused{list.Name() + " 中没有“" + text + "”。"};
    list.UserChoose(static_cast<int>(found - list.Items().begin()));
  }

  const DateTime today_;
  HeadlessDesktop desktop_;
  UntouchedDevices devices_;
  FixedClock clock_;
  AppContext app_;
  struct {
    const Document* document = nullptr;  ///< null while no entry dialog is awaited
    std::size_t row = 0;
    bool without_day = false;  ///< which a dialog cannot say
  } line_;
};

}  // namespace

void EnterDocuments(const std::filesystem::path& home, std::shared_ptr<Connection> connection,
                    const std::vector<TableFile>& files, const DateTime& today) {
  std::vector<Document> documents;
  for (const TableFile& file : files) {
    std::ranges::copy(DocumentsOf(file, today), std::back_inserter(documents));
  }
  std::ranges::stable_sort(documents, {}, &Document::saved);
  DocumentClerk clerk(home, std::move(connection), today);
  for (const Document& document : documents) {
    try {
      clerk.Enter(document);
    } catch (const Refused& refused) {
      throw Failure(failure::kInvalidCall, "数据文件 " + document.file->table + ".tsv 的单据 " +
                                               document.Cell(document.first, "DH") + " 无法录入：" + refused.words);
    }
  }
}

}  // namespace luming
