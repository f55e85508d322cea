#include "masterdata/catalogue_columns.h"

#include <array>

namespace luming {

namespace {

constexpr auto kText = CellKind::kText;
constexpr auto kList = CellKind::kCombo;
constexpr auto kCheck = CellKind::kCheck;
constexpr auto kFixed = CellKind::kStatic;
constexpr auto kLeft = Align::kLeft;
constexpr auto kRight = Align::kRight;
constexpr auto kCentre = Align::kCentre;

// clang-format off
const std::vector<CatalogueColumn> kColumns = {
  // header          column      picture   cell    align    sent               dictionary
  {"编码",            "YPBM",     "",       kFixed, kLeft,   Sent::kNot,        ""},
  {"品名",            "YPMC",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"商品名",          "SPMC",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"规格",            "GG",       "",       kList,  kLeft,   Sent::kQuoted,     "YPGG"},
  {"库存量",          "YKKCL",    "",       kText,  kRight,  Sent::kQuoted,     ""},
  {"最小单位",        "ZXDW",     "",       kList,  kLeft,   Sent::kQuoted,     "ZXDW"},
  {"剂量单位",        "JLDW",     "",       kList,  kLeft,   Sent::kQuoted,     "JLDW"},
  {"拆零比",          "CLB",      "",       kText,  kRight,  Sent::kQuoted,     ""},
  {"大单位库存",      "",         nullptr,  kFixed, kRight,  Sent::kNot,        ""},
  {"单位",            "DW",       "",       kList,  kLeft,   Sent::kQuoted,     "YPDW"},
  {"产地",            "SCCJ",     "",       kList,  kLeft,   Sent::kQuoted,     ""},
  {"ABC",             "ABC",      "",       kList,  kLeft,   Sent::kQuoted,     "ABC"},
  {"剂型",            "JX",       "",       kList,  kLeft,   Sent::kQuoted,     "YPJX"},
  {"进价",            "PFJ",      "0.0000", kText,  kRight,  Sent::kBare,       ""},
  {"零售价",          "LSJ",      "0.0000", kText,  kRight,  Sent::kBare,       ""},
  {"拆零零售价",      "CLLSJ",    "",       kText,  kRight,  Sent::kBareOrNull, ""},
  {"批发价",          "PLJ",      "0.0000", kText,  kRight,  Sent::kBare,       ""},
  {"收费项目",        "SFXM",     "",       kList,  kLeft,   Sent::kQuoted,     ""},
  {"是否停用",        "SFTY",     "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"是否收费",        "SFSF",     "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"自划价",          "ZHJBZ",    "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"处方限量",        "CFXL",     "",       kText,  kRight,  Sent::kQuoted,     ""},
  {"合疗用药",        "HZYLYY",   "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"常规收费项目",    "GFYY",     "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"医保用药",        "YBYY",     "",       kCheck, kCentre, Sent::kFlag,       ""},
  {"库存上限",        "YKKCSX",   "",       kText,  kRight,  Sent::kQuoted,     ""},
  {"库存下限",        "YKKCXX",   "",       kText,  kRight,  Sent::kQuoted,     ""},
  {"拼音码(品名)",    "PYDM",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"五笔码(品名)",    "WBDM",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"拼音码(商品名)",  "SP_PYDM",  "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"五笔码(商品名)",  "SP_WBDM",  "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"批准文号",        "PZWH",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"注册商标",        "ZCSB",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"质量状况",        "ZLZK",     "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"关联医保编码",    "YBXMBH",   "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"关联农合编码",    "NHXMBH",   "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"给药途径",        "GYTJ",     "",       kList,  kLeft,   Sent::kQuoted,     "GYTJ"},
  {"用药频次",        "YYPC",     "",       kList,  kLeft,   Sent::kQuoted,     "YYPC"},
  {"单次剂量",        "DCJL",     "",       kList,  kLeft,   Sent::kQuoted,     "DCJL"},
  {"注射药品",        "ZSYP",     nullptr,  kCheck, kCentre, Sent::kQuoted,     ""},
  {"皮试判别",        "PSPB",     nullptr,  kCheck, kCentre, Sent::kQuoted,     ""},
  {"药理作用分类",    "YLZYFL",   "",       kText,  kLeft,   Sent::kQuoted,     ""},
  {"修改标志",        "",         nullptr,  kFixed, kLeft,   Sent::kNot,        ""},
  {"进价合计",        "",         nullptr,  kFixed, kRight,  Sent::kNot,        ""},
  {"零售价合计",      "",         nullptr,  kFixed, kRight,  Sent::kNot,        ""},
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
    columns.emplace_back(column.header, 0, column.align);
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
