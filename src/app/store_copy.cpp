#include "app/store_copy.h"

#include <algorithm>

#include "app/store_filler.h"
#include "app/store_install.h"
#include "app/table_pages.h"
#include "platform/editable_recordset.h"
#include "util/failure.h"
#include "util/number_text.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr int kRowsOfText = 20;

// ---- What may be copied ----

void DemandWholeSource(const StoreSurvey& survey, const CopyReport& report) {
  if (!survey.missing_tables.empty()) {
    throw Failure(failure::kInvalidCall, "来源缺少本系统的表：" + Join(survey.missing_tables, "、"));
  }
  if (!survey.foreign_tables.empty()) report("没有复制其他程序的表：" + Join(survey.foreign_tables, "、"));
}

void DemandNoRows(Connection& target, const std::vector<std::string>& tables) {
  for (const std::string& table : tables) {
    const std::string count = target.Execute("Select Count(*) From [" + table + "]").Field(0).Text();
    if (count != "0")
      throw Failure(failure::kInvalidCall, "目标不是空的：表 " + table + " 已有 " + count + " 行，没有复制。");
  }
}

/// Makes the tables of an empty target, or makes sure that those of another one have no rows.
void PrepareTarget(Connection& target, const StoreFiles& files, const CopyReport& report) {
  const StoreSurvey survey = SurveyStore(target, files);
  if (!survey.tables.empty() && survey.missing_tables.empty()) return DemandNoRows(target, survey.tables);
  DemandEmptyDatabase(survey);
  MakeTables(target, files);
  report("已建立表 " + std::to_string(TablesOf(files).size()) + " 个，存储过程 " +
         std::to_string(ProceduresOf(files).size()) + " 个。");
}

TableShape CommonShape(Connection& source, Connection& target, const std::string& table) {
  TableShape from = ReadShape(source, table);
  const TableShape to = ReadShape(target, table);
  const auto same = [](std::vector<std::string> names) {
    for (std::string& name : names) name = UpperAscii(name);
    std::ranges::sort(names);
    return names;
  };
  if (same(from.columns) != same(to.columns) || !EqualsIgnoreCase(from.identity, to.identity)) {
    throw Failure(failure::kInvalidCall, "表 " + table + " 在来源和目标中的列不同。来源：" + Join(from.columns, "、") +
                                             "；目标：" + Join(to.columns, "、"));
  }
  return from;
}

// ---- Copying ----

std::string InsertOf(const TableShape& shape, const std::string& head, const Recordset& row) {
  std::vector<std::string> values;
  for (std::size_t column = 0; column < shape.columns.size(); ++column) values.push_back(SqlLiteral(row.Field(column)));
  return head + Join(values, ",") + ")\n";
}

/// @return the number of rows
std::int64_t CopyRows(Connection& source, Connection& target, const TableShape& shape) {
  const std::string switching = "Set Identity_Insert [" + shape.name + "] ";
  if (!shape.identity.empty()) target.Execute(switching + "On");
  const std::string head = "Insert Into [" + shape.name + "](" + shape.ColumnList() + ") Values(";
  std::int64_t copied = 0;
  TablePages pages(source, shape);
  for (Recordset page = pages.Next(); page.RecordCount() > 0; page = pages.Next()) {
    copied += page.RecordCount();
    while (!page.Eof()) {
      std::string text;
      for (int row = 0; row < kRowsOfText && !page.Eof(); ++row, page.MoveNext()) text += InsertOf(shape, head, page);
      target.Execute(text);
    }
  }
  if (!shape.identity.empty()) target.Execute(switching + "Off");
  return copied;
}

// ---- Comparing ----

/// The server keeps moments in steps of a three hundredth of a second.
std::int64_t StepsOf(const DateTime& moment) {
  const std::int64_t milliseconds = (moment.Point() - DateTime(1753, 1, 1).Point()).count();
  return (milliseconds * 3 + 5) / 10;
}

/// A text that two cells have in common when they hold the same.
std::string Essence(const Value& value) {
  if (value.IsNull()) return "-";
  if (const auto* text = std::get_if<std::string>(&value.data())) return "'" + *text;
  if (const auto* moment = std::get_if<DateTime>(&value.data())) return "@" + std::to_string(StepsOf(*moment));
  return NumberText(value.Number());
}

std::string ShownRow(const TableShape& shape, const Recordset& row) {
  std::string text;
  for (std::size_t column = 0; column < shape.columns.size(); ++column) {
    text += (column == 0 ? "" : "，") + shape.columns[column] + "=" + row.Field(column).TextOrEmpty();
  }
  return text;
}

Failure Differs(const TableShape& shape, const std::string& what) {
  return {failure::kInvalidCall, "核对时发现表 " + shape.name + " 与来源不一致，全部内容已撤销。" + what};
}

void CompareInOrder(Connection& source, Connection& target, const TableShape& shape) {
  TablePages source_pages(source, shape);
  TablePages target_pages(target, shape);
  while (true) {
    Recordset from = source_pages.Next();
    Recordset to = target_pages.Next();
    if (from.RecordCount() != to.RecordCount()) throw Differs(shape, "行数不同。");
    if (from.RecordCount() == 0) return;
    for (; !from.Eof(); from.MoveNext(), to.MoveNext()) {
      for (std::size_t column = 0; column < shape.columns.size(); ++column) {
        if (Essence(from.Field(column)) == Essence(to.Field(column))) continue;
        throw Differs(shape, "\n来源：" + ShownRow(shape, from) + "\n目标：" + ShownRow(shape, to));
      }
    }
  }
}

/// A sum over all rows that does not depend on their order: two databases sort texts differently.
struct Digest {
  std::uint64_t sum = 0;
  std::uint64_t other_sum = 0;
  std::int64_t rows = 0;

  bool operator==(const Digest&) const = default;

  void Add(std::string_view row) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t forward = 0xCBF29CE484222325;
    std::uint64_t backward = 0x9E3779B97F4A7C15;
    for (std::size_t i = 0; i < row.size(); ++i) {
      forward = (forward ^ static_cast<unsigned char>(row[i])) * kPrime;
      backward = (backward ^ static_cast<unsigned char>(row[row.size() - 1 - i])) * kPrime;
    }
    sum += forward;
    other_sum += backward;
    ++rows;
  }
};

Digest DigestOf(Connection& store, const TableShape& shape) {
  Digest digest;
  TablePages pages(store, shape);
  for (Recordset page = pages.Next(); page.RecordCount() > 0; page = pages.Next()) {
    for (; !page.Eof(); page.MoveNext()) {
      std::string row;
      for (std::size_t column = 0; column < shape.columns.size(); ++column) row += Essence(page.Field(column)) + '\0';
      digest.Add(row);
    }
  }
  return digest;
}

void Compare(Connection& source, Connection& target, const TableShape& shape) {
  if (!shape.identity.empty()) return CompareInOrder(source, target, shape);
  const Digest from = DigestOf(source, shape);
  const Digest to = DigestOf(target, shape);
  if (from.rows != to.rows) throw Differs(shape, "行数不同。");
  if (from != to) throw Differs(shape, "有的行内容不同。");
}

// ---- The whole ----

void CopyTables(Connection& source, Connection& target, const StoreFiles& files, const CopyReport& report) {
  std::vector<TableShape> shapes;
  std::int64_t all = 0;
  for (const std::string& table : TablesOf(files)) {
    shapes.push_back(CommonShape(source, target, table));
    const std::int64_t rows = CopyRows(source, target, shapes.back());
    if (rows > 0) report("  " + table + "  " + std::to_string(rows) + " 行");
    all += rows;
  }
  for (const TableShape& shape : shapes) Compare(source, target, shape);
  report("共 " + std::to_string(shapes.size()) + " 个表 " + std::to_string(all) + " 行，已逐行核对，与来源一致。");
}

/// A transaction that is rolled back unless it was committed.
class Undone {
 public:
  explicit Undone(Connection& connection) : connection_(connection) { connection.BeginTrans(); }
  ~Undone() {
    try {
      if (!committed_ && connection_.IsOpen()) connection_.RollbackTrans();
    } catch (const std::exception&) {
      // What cannot be rolled back any more was rolled back when its connection ended.
    }
  }
  Undone(const Undone&) = delete;
  Undone& operator=(const Undone&) = delete;

  void Commit() {
    connection_.CommitTrans();
    committed_ = true;
  }

 private:
  Connection& connection_;
  bool committed_ = false;
};

}  // namespace

void CopyStore(Connection& source, Connection& target, const StoreFiles& files, const CopyReport& report) {
  DemandWholeSource(SurveyStore(source, files), report);
  const Undone reading(source);
  Undone writing(target);
  PrepareTarget(target, files, report);
  CopyTables(source, target, files, report);
  writing.Commit();
}

}  // namespace luming
