#include "masterdata/import_report.h"

#include <vector>

#include "frame/gateway.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr const char* kLineEnd = "\r\n";

struct Repair {
  const char* column;
  const char* value;
  const char* caption;
};

constexpr Repair kRepairs[] = {{"kcl", "0", "药房库存量"},      {"ykkcl", "0", "库存量"},
                               {"clb", "1", "拆零比"},          {"cllsj", "0", "拆零零售价"},
                               {"lsj", "0", "零售价"},          {"kcsx", "0", "药房库存上限"},
                               {"kcxx", "0", "药房库存下限"},   {"ykkcsx", "0", "药库库存上限"},
                               {"ykkcxx", "0", "药库库存下限"}, {"plj", "0", "批发价"}};

struct Flag {
  const char* column;
  const char* caption;
};

constexpr Flag kFlags[] = {{"SFSF", "是否收费"}, {"ZHJBZ", "自划价"},  {"HZYLYY", "合疗用药"}, {"GFYY", "常规收费项目"},
                           {"YBYY", "医保用药"}, {"ZSYP", "注射药品"}, {"PSPB", "皮试判别"},   {"SFTY", "是否停用"}};

std::string AsCompared(std::string_view text) {
  return UpperAscii(TrimRight(text));
}

std::string Named(Recordset& rows) {
  return Trim(rows.Field("YPBM").TextOrEmpty() + " " + rows.Field("YPMC").TextOrEmpty());
}

/// One finding and the drugs that it is true of.
struct Finding {
  std::string what;
  std::vector<std::string> drugs = {};

  std::string Line() const {
    if (drugs.empty()) return "";
    return "提示：" + what + "的药品 " + std::to_string(drugs.size()) + " 种：" + Join(drugs, "、") + kLineEnd;
  }
};

/// Drugs with their figures, a line each below what is said of them.
std::string Listed(const std::string& whose, const std::vector<std::string>& drugs) {
  if (drugs.empty()) return "";
  return "提示：补空会把恰好等于 1 的数改为 0，" + whose + " " + std::to_string(drugs.size()) +
         " 种，请记下原值，在药品目录中改回：" + kLineEnd + "    " + Join(drugs, std::string(kLineEnd) + "    ") +
         kLineEnd;
}

}  // namespace

std::string RepairStatements() {
  std::vector<std::string> statements;
  for (const auto& [column, value, caption] : kRepairs) {
    statements.push_back("update yf_ypml set " + std::string(column) + "=" + value + " where isnull(" + column +
                         ",'1')='1'");
  }
  return Join(statements, " ");
}

void ImportReport::Add(std::string_view code) {
  imported_.insert(AsCompared(code));
}

bool ImportReport::IsImported(const Value& code) const {
  return imported_.contains(AsCompared(code.TextOrEmpty()));
}

std::string ImportReport::Incomplete() {
  if (imported_.empty()) return "";
  Recordset items, rows;
  OpenRs(app_, items, "select sItemName from eK_ChargeItem");
  OpenRs(app_, rows, "Select * From YF_YPML Order by YPBM");
  if (!items.IsOpen() || !rows.IsOpen()) return "";
  std::set<std::string> known;
  for (; !items.Eof(); items.MoveNext()) known.insert(AsCompared(items.Field("sItemName").TextOrEmpty()));

  Finding no_item{"没有收费项目、不会出现在药品目录中"};
  Finding unknown_item{"收费项目不存在、不会出现在药品目录中"};
  Finding no_price{"没有进价"};
  std::vector<Finding> flags;
  for (const Flag& flag : kFlags) flags.push_back({"“" + std::string(flag.caption) + "”没有填"});

  for (; !rows.Eof(); rows.MoveNext()) {
    if (!IsImported(rows.Field("YPBM"))) continue;
    const std::string drug = Named(rows);
    const std::string item = rows.Field("SFXM").TextOrEmpty();
    if (Trim(item).empty()) {
      no_item.drugs.push_back(drug);
    } else if (!known.contains(AsCompared(item))) {
      unknown_item.drugs.push_back(drug + "（" + item + "）");
    }
    if (rows.Field("PFJ").IsNull()) no_price.drugs.push_back(drug);
    for (std::size_t i = 0; i < flags.size(); ++i) {
      if (rows.Field(kFlags[i].column).IsNull()) flags[i].drugs.push_back(drug);
    }
  }
  std::string lines = no_item.Line() + unknown_item.Line() + no_price.Line();
  for (const Finding& flag : flags) lines += flag.Line();
  return lines;
}

std::string ImportReport::LostFigures() {
  std::vector<std::string> conditions;
  for (const Repair& repair : kRepairs) {
    if (std::string_view(repair.value) != "1") conditions.push_back(std::string(repair.column) + "=1");
  }
  Recordset rows;
  OpenRs(app_, rows, "Select * From YF_YPML Where " + Join(conditions, " Or ") + " Order by YPBM");
  if (!rows.IsOpen()) return "";
  std::vector<std::string> imported, others;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::vector<std::string> figures;
    for (const Repair& repair : kRepairs) {
      const Value& figure = rows.Field(repair.column);
      const bool lost = std::string_view(repair.value) != "1" && figure.NumberOr(0) == 1;
      if (lost) figures.push_back(std::string(repair.caption) + " " + figure.Text());
    }
    auto& list = IsImported(rows.Field("YPBM")) ? imported : others;
    list.push_back(Named(rows) + "：" + Join(figures, "，"));
  }
  return Listed("影响到工作簿以外的药品", others) + Listed("影响到工作簿中的药品", imported);
}

}  // namespace luming
