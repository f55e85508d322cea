#include "masterdata/catalogue_import.h"

#include <algorithm>

#include "frame/gateway.h"
#include "masterdata/clean_control.h"
#include "masterdata/phonetic.h"
#include "masterdata/screens.h"
#include "output/grid_routines.h"
#include "util/date_text.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr const char* kSheet = "药品目录";
constexpr const char* kLogTitle = "从Excel 药品目录";
constexpr const char* kLineEnd = "\r\n";

/// Columns of a name, each with the columns of its codes behind.
struct NameColumns {
  const char* name;
  const char* all;
};
constexpr NameColumns kNameColumns[] = {{"YPMC", "YPMC,PYDM,WBDM"}, {"SPMC", "SPMC,SP_PYDM,SP_WBDM"}};

const NameColumns* NameColumnsOf(std::string_view column) {
  for (const NameColumns& columns : kNameColumns) {
    if (EqualsIgnoreCase(columns.name, column)) return &columns;
  }
  return nullptr;
}

bool ReadsAsDate(const Value& value) {
  const auto* text = std::get_if<std::string>(&value.data());
  return std::holds_alternative<DateTime>(value.data()) || (text && IsDate(*text));
}

}  // namespace

UploadData::UploadData(AppContext& app)
    : Form(app.forms, kName, "从Excel导入药品目录", WindowKind::kDialog), app_(app) {
  Command11.SetEnabled(false);
  Text1.SetReadOnly(true);
}

Layout UploadData::Arrange() const {
  return Column({
      Row({Command6, Command11, Space(), Command4}),
      Row({Layout(Picture1).Stretch(1), Layout(Label_Info).Width(18)}),
      Layout(Text1).Width(76).Height(16),
  });
}

void UploadData::Load() {
  CleanControl::SetControlColor(*this);
}

void UploadData::Command6_Click() {
  FileRequest request;
  request.title = "请选择您要导入数据的Excel文件";
  request.filter = "Microsoft Excel 文件(*.xls)";
  request.directory = app_.AppPath;
  const std::optional<std::string> file = FileDialog(app_.desktop, request);
  if (!file || file->empty()) return;
  if (UpperAscii(Right(*file, 3)) != "XLS") {
    app_.desktop.MsgBox({"请选择要导入的Excel文件", box::kWarning, "系统提示"});
    return;
  }
  Trapped(app_, [&] { Import(*file); });
  Command6.SetEnabled(true);
  Command11.SetEnabled(false);
}

void UploadData::Import(const std::string& file) {
  const std::unique_ptr<SheetReader> workbook = app_.workbooks.Read(file);
  if (std::ranges::count(workbook->Names(), kSheet) == 0) {
    app_.desktop.MsgBox(
        {"该Excel文件中没有找到“药品目录“表,请确认您使用的是软件供应商提供的Excel模板", box::kWarning, "系统提示"});
    return;
  }
  Command11.SetEnabled(true);
  Command6.SetEnabled(false);  // one import at a time
  stop_ = false;
  succeeded_ = failed_ = 0;
  const std::map<std::string, Target> known = ReadTargets();
  Recordset rows = workbook->Read(kSheet);
  const std::string statement = MakeSql(known, rows.ColumnNames());
  const Hurry hurry(app_.Cn);
  ImportReport report(app_);
  ImportRows(rows, statement, report);
  Text1.AppendText(report.Incomplete() + report.LostFigures());
  Text1.AppendText(std::string(kLogTitle) + "  导入完成,其中成功:" + std::to_string(succeeded_) + " ；失败：" +
                   std::to_string(failed_) + kLineEnd);
  ExecSql(app_, RepairStatements());
}

UploadData::Kind UploadData::KindOf(std::string_view type) {
  if (type == "3") return Kind::kDate;
  return type == "2" ? Kind::kNumber : Kind::kText;
}

std::map<std::string, UploadData::Target> UploadData::ReadTargets() {
  Recordset mapping;
  OpenRs(app_, mapping, "Select File_Cname,File_Ename,Filed_Type from DATAGRID_HEAD Where Tabel_Name Like'YF_YPML'");
  std::map<std::string, Target> known;
  for (; !mapping.Eof(); mapping.MoveNext()) {
    known.try_emplace(
        LowerAscii(Trim(mapping.Field("File_Cname").TextOrEmpty())),
        Target{Trim(mapping.Field("File_Ename").TextOrEmpty()), KindOf(mapping.Field("Filed_Type").TextOrEmpty())});
  }
  CloseRs(mapping);
  return known;
}

std::string UploadData::MakeSql(const std::map<std::string, Target>& known, const std::vector<std::string>& heads) {
  targets_.clear();
  std::string columns;
  for (const std::string& head : heads) {
    const auto found = known.find(LowerAscii(head));
    targets_.push_back(found == known.end() ? Target() : found->second);
    if (found == known.end()) continue;
    const NameColumns* const name = NameColumnsOf(found->second.column);
    columns += (name ? name->all : found->second.column) + ",";
  }
  columns = Replace(columns, ",,", ",");
  if (columns.ends_with(',')) columns.pop_back();
  return "Insert into YF_YPML (" + columns;
}

void UploadData::ImportRows(Recordset& rows, const std::string& statement, ImportReport& report) {
  const int total = rows.RecordCount();
  for (int row = 1; !rows.Eof() && !stop_; rows.MoveNext(), ++row) {
    try {
      app_.Cn->Execute(statement + ") Values (" + ValuesOf(rows) + ")");
      ++succeeded_;
      report.Add(CleanSearchText(TextFor("YPBM", rows)));
    } catch (const Failure& failure) {
      ++failed_;
      Text1.AppendText("第【" + std::to_string(row) + "】行出错 " + "  错误描述:" + failure.description() + kLineEnd +
                       DrugOf(rows));
    }
    ShowShare(row, total);
    app_.desktop.DoEvents();
  }
}

std::string UploadData::DrugOf(const Recordset& row) const {
  const std::string code = TextFor("YPBM", row);
  const std::string name = TextFor("YPMC", row);
  if (code.empty() && name.empty()) return {};
  return "    编码【" + code + "】品名【" + name + "】" + kLineEnd;
}

std::string UploadData::TextFor(const char* column, const Recordset& row) const {
  for (std::size_t i = 0; i < targets_.size(); ++i) {
    if (EqualsIgnoreCase(targets_[i].column, column)) return Trim(row.Field(i).TextOrEmpty());
  }
  return {};
}

Statement UploadData::ValuesOf(const Recordset& rows) {
  Statement values;
  for (std::size_t i = 0; i < targets_.size(); ++i) {
    if (targets_[i].column.empty()) continue;
    if (!values.empty()) values += ",";
    values += ValueFor(targets_[i], rows.Field(i), rows.ColumnNames()[i]);
  }
  return values;
}

Statement UploadData::ValueFor(const Target& target, const Value& value, const std::string& head) {
  if (target.kind == Kind::kDate) return ReadsAsDate(value) ? Quoted(value.Text(), head) : Statement("null");
  const std::string text = Trim(value.TextOrEmpty());
  const bool is_name = NameColumnsOf(target.column) != nullptr;
  if (text.empty()) return Statement(is_name ? "null,null,null" : "null");
  if (is_name) {
    const std::string pinyin = GetPYDM(app_, text);
    const std::string wubi = GetWBDM(app_, text);
    return Quoted(CleanSearchText(text), head) + "," + Quoted(pinyin, head) + "," + Quoted(wubi, head);
  }
  return target.kind == Kind::kNumber ? Statement(Bare(text, head)) : Statement(Quoted(CleanSearchText(text), head));
}

void UploadData::ShowShare(int done, int total) {
  const double share = static_cast<double>(done) / total;
  Picture1.SetShare(share);
  Label_Info.SetCaption("  已完成  " + FormatNumber(share * 100, "0.00") + "%");
}

void UploadData::Command11_Click() {
  stop_ = true;
  Text1.AppendText(std::string("用户已取消数据导入。") + kLineEnd + "其中成功" + std::to_string(succeeded_) + "条失败" +
                   std::to_string(failed_) + "条" + kLineEnd);
}

const Screen kCatalogueImport = ModalScreen<UploadData>();

}  // namespace luming
