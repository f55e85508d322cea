#include "masterdata/catalogue_columns.h"

#include <array>

namespace luming {

namespace {

constexpr auto kPlain = CellKind::kText;
constexpr auto kList = CellKind::kCombo;
constexpr auto kCheck = CellKind::kCheck;
constexpr auto kFixed = CellKind::kStatic;
constexpr auto kAny = Holds::kAnything;
constexpr auto kText = Holds::kText;
constexpr auto kCode = Holds::kCode;
constexpr auto kFigure = Holds::kFigure;

// clang-format off
const std::vector<CatalogueColumn> kColumns = {
  // header          column      picture   cell    holds    sent               dictionary
  {"编码",            "YPBM",     "",       kFixed, kCode,   Sent::kNot,        ""},
  {"品名",            "YPMC",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"商品名",          "SPMC",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"规格",            "GG",       "",       kList,  kText,   Sent::kQuoted,     "YPGG"},
  {"库存量",          "YKKCL",    "",       kPlain, kFigure, Sent::kQuoted,     ""},
  {"最小单位",        "ZXDW",     "",       kList,  kText,   Sent::kQuoted,     "ZXDW"},
  {"剂量单位",        "JLDW",     "",       kList,  kText,   Sent::kQuoted,     "JLDW"},
  {"拆零比",          "CLB",      "",       kPlain, kFigure, Sent::kQuoted,     ""},
  {"大单位库存",      "",         nullptr,  kFixed, kFigure, Sent::kNot,        ""},
  {"单位",            "DW",       "",       kList,  kText,   Sent::kQuoted,     "YPDW"},
  {"产地",            "SCCJ",     "",       kList,  kText,   Sent::kQuoted,     ""},
  {"ABC",             "ABC",      "",       kList,  kText,   Sent::kQuoted,     "ABC"},
  {"剂型",            "JX",       "",       kList,  kText,   Sent::kQuoted,     "YPJX"},
  {"进价",            "PFJ",      "0.0000", kPlain, kFigure, Sent::kBare,       ""},
  {"零售价",          "LSJ",      "0.0000", kPlain, kFigure, Sent::kBare,       ""},
  {"拆零零售价",      "CLLSJ",    "",       kPlain, kFigure, Sent::kBareOrNull, ""},
  {"批发价",          "PLJ",      "0.0000", kPlain, kFigure, Sent::kBare,       ""},
  {"收费项目",        "SFXM",     "",       kList,  kText,   Sent::kQuoted,     ""},
  {"是否停用",        "SFTY",     "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"是否收费",        "SFSF",     "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"自划价",          "ZHJBZ",    "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"处方限量",        "CFXL",     "",       kPlain, kFigure, Sent::kQuoted,     ""},
  {"合疗用药",        "HZYLYY",   "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"常规收费项目",    "GFYY",     "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"医保用药",        "YBYY",     "",       kCheck, kAny,    Sent::kFlag,       ""},
  {"库存上限",        "YKKCSX",   "",       kPlain, kFigure, Sent::kQuoted,     ""},
  {"库存下限",        "YKKCXX",   "",       kPlain, kFigure, Sent::kQuoted,     ""},
  {"拼音码(品名)",    "PYDM",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"五笔码(品名)",    "WBDM",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"拼音码(商品名)",  "SP_PYDM",  "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"五笔码(商品名)",  "SP_WBDM",  "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"批准文号",        "PZWH",     "",       kPlain, kCode,   Sent::kQuoted,     ""},
  {"注册商标",        "ZCSB",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"质量状况",        "ZLZK",     "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"关联医保编码",    "YBXMBH",   "",       kPlain, kCode,   Sent::kQuoted,     ""},
  {"关联农合编码",    "NHXMBH",   "",       kPlain, kCode,   Sent::kQuoted,     ""},
  {"给药途径",        "GYTJ",     "",       kList,  kText,   Sent::kQuoted,     "GYTJ"},
  {"用药频次",        "YYPC",     "",       kList,  kText,   Sent::kQuoted,     "YYPC"},
  {"单次剂量",        "DCJL",     "",       kList,  kText,   Sent::kQuoted,     "DCJL"},
  {"注射药品",        "ZSYP",     nullptr,  kCheck, kAny,    Sent::kQuoted,     ""},
  {"皮试判别",        "PSPB",     nullptr,  kCheck, kAny,    Sent::kQuoted,     ""},
  {"药理作用分类",    "YLZYFL",   "",       kPlain, kText,   Sent::kQuoted,     ""},
  {"修改标志",        "",         nullptr,  kFixed, kText,   Sent::kNot,        ""},
  {"进价合计",        "",         nullptr,  kFixed, kFigure, Sent::kNot,        ""},
  {"零售价合计",      "",         nullptr,  kFixed, kFigure, Sent::kNot,        ""},
};
// clang-format on

using enum catalogue::Column;

/// In the order of the statement.
constexpr std::array kSaved = {
    kYPMC,    kSPMC, kGG,   kDW,   kSCCJ,   kABC,    kJX,     kYKKCL, kLSJ,  kPFJ,    kPLJ,    kCLB,    kJLDW, kCLLSJ,
    kZXDW,    kSFXM, kSFTY, kSFSF, kZHJBZ,  kCFXL,   kHZYLYY, kGFYY,  kYBYY, kYKKCSX, kYKKCXX, kPYDM,   kWBDM, kSP_PYDM,
    kSP_WBDM, kPZWH, kZCSB, kZLZK, kYBXMBH, kNHXMBH, kGYTJ,   kYYPC,  kDCJL, kZSYP,   kPSPB,   kYLZYFL,
};

Statement AsSent(const std::string& text, Sent sent, const ValueSource& cell) {
  switch (sent) {
    case Sent::kBare:
      return Bare(text, cell);
    case Sent::kBareOrNull:
      return text.empty() ? Statement("null") : Bare(text, cell);
    case Sent::kFlag:
      return Statement(text == "0" ? "'0'" : "'1'");
    case Sent::kQuoted:
    case Sent::kNot:
      break;
  }
  return Quoted(text, cell);
}

}  // namespace

const std::vector<CatalogueColumn>& CatalogueColumns() {
  return kColumns;
}

std::vector<GridColumn> CatalogueGridColumns() {
  std::vector<GridColumn> columns;
  for (const CatalogueColumn& column : kColumns) {
    columns.push_back(GridColumn(column.header).Holding(column.holds));
  }
  return columns;
}

Statement CatalogueUpdate(const Grid& grid, int row) {
  Statement statement("Update YF_YPML set ");
  for (const catalogue::Column number : kSaved) {
    const CatalogueColumn& column = kColumns[static_cast<std::size_t>(number) - 1];
    if (number != kSaved.front()) statement += ",";
    statement += column.field;
    statement += "=" + AsSent(grid.Text(row, number), column.sent, {column.header, row});
  }
  return statement + " where YPBM  LIKE" + Quoted(grid.Text(row, kYPBM), {"编码", row});
}

}  // namespace luming
