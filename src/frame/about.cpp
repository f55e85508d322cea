#include "frame/about.h"

#include "frame/gateway.h"
#include "frame/screens.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr const char* kWarning =
    "警告：本软件受著作权法和国际公约的保护。未经授权擅自复制或散布本软件的部分或全部，将承担相应的法律责任。";

/// A value as it stands in a statement: true and false as 1 and 0, texts quoted.
std::string Literal(const Value& value) {
  if (value.IsNull()) return "NULL";
  if (const bool* flag = std::get_if<bool>(&value.data())) return *flag ? "1" : "0";
  const bool number =
      std::holds_alternative<std::int64_t>(value.data()) || std::holds_alternative<double>(value.data());
  return number ? value.Text() : "'" + Replace(value.Text(), "'", "''") + "'";
}

std::string RowsAsStatements(Recordset rows, const std::string& table, const std::string& columns) {
  std::string text;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::vector<std::string> values;
    for (std::size_t at = 0; at < rows.ColumnCount(); ++at) values.push_back(Literal(std::as_const(rows).Field(at)));
    text += "Insert into " + table + " (" + columns + ") values (" + Join(values, ",") + ")\r\n";
  }
  return text;
}

}  // namespace

about::about(AppContext& app) : Form(app.forms, kName, "关于软件", WindowKind::kDialog), app_(app) {}

Layout about::Arrange() const {
  return Column({
      Row({Layout(Image1).Width(8).Height(4), Layout(Column({Title, Hospital, Version})).Stretch(1)}),
      Layout(Warning).Width(60).Height(3),
      Row({Space(), Command1}),
  });
}

void about::Load() {
  Title.SetCaption("《" + std::string(AppContext::kTitle) + "》");
  Hospital.SetCaption(app_.ReportUnit);
  Version.SetCaption("版本号:" LUMING_VERSION "(单机版)");
  Warning.SetCaption(kWarning);
}

void about::FormKeyDown(KeyEvent& event) {
  if (event.code == key::kEsc) Unload();
}

void about::RepairOldPrices() {
  Trapped(app_, [this] {
    Recordset rs;
    OpenRs(app_, rs, "select id,ypbm from yk_yptj where clb=1 and ylsj=0 ");
    for (; !rs.Eof(); rs.MoveNext()) {
      const std::string code = rs.Field("ypbm").Text();
      Recordset drug;
      OpenRs(app_, drug, "SELECT LSJ FROM YF_YPML WHERE YPBM=" + Quoted(code, "编码"));
      if (drug.Eof()) continue;  // no longer in the catalogue: nothing to repair it from
      const std::string price = NumberText(drug.Field("LSJ").Number());
      CloseRs(drug);
      if (!ExecSql(app_, "Update yk_yptj SET YLSJ=" + price + " Where ypbm=" + Quoted(code, "编码"))) return;
    }
    CloseRs(rs);
  });
}

void about::FillUploadFields(const std::string& table) {
  Trapped(app_, [&] {
    Recordset rs;
    OpenRs(app_, rs, "Exec SP_GetTableInfo " + Quoted(table));
    for (; !rs.Eof(); rs.MoveNext()) {
      const std::string name = rs.Field("字段名").Text();
      const std::string upper = UpperAscii(name);
      if (upper == "ID" || upper == "UPLOAD") continue;
      const std::string title = rs.Field("字段说明").TextOrEmpty();
      const std::string kind = rs.Field("类型").TextOrEmpty();
      const Statement field = Quoted(table) + "," + Quoted(name) + "," + Quoted(title) + ",";
      const bool entered =
          ExecSql(app_, "INSERT INTO DATAGRID_HEAD (Tabel_Name,File_Ename,File_Cname,Filed_Type,File_Show) Values(" +
                            field + Quoted(kind) + ",'1')") &&
          ExecSql(app_,
                  "Insert into UploadFileds (Table_Name,FiledsName,FiledsCName,UploadFiledName,"
                  "UploadFiledCname,FiledType,UploadType) values (" +
                      field + Quoted(name) + "," + Quoted(title) + "," + Quoted(kind) + "," + Quoted(kind) + ")");
      if (!entered) return;
    }
    CloseRs(rs);
  });
}

std::string about::TreeAsStatements() {
  const std::string columns = "Sname,Lavel,id,pid,Ename";
  std::string text;
  Trapped(app_, [&] {
    Recordset rs;
    OpenRs(app_, rs, "Select " + columns + " From ZD_Tabel");
    text = RowsAsStatements(std::move(rs), "ZD_Tabel", columns);
  });
  return text;
}

const Screen kAbout = ModalScreen<about>();

}  // namespace luming
