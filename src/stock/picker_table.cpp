#include "stock/picker_table.h"

#include <algorithm>

#include "util/failure.h"

namespace luming {

namespace {

using Columns = std::vector<PickerColumn>;

constexpr PickerColumn kCode = {"编码", "YPBM", "", Holds::kCode};

constexpr const char* kMode = "搜索方式(F5)";
constexpr const char* kScannerMode = "搜索方式(F5)支持条形码";
constexpr const char* kFilter = "无库存不显示(F2)";
constexpr const char* kMouseFilter = "无库存不显示";
constexpr const char* kDrugs = "药品";
constexpr const char* kExaminations = "检查及治疗";

struct Pictures {
  const char* LSJ = "";
  const char* PFJ = "";
  const char* CLLSJ = "";
};

/// The columns that most screens share, each with its own pictures, up to the last one it shows.
Columns Standard(const Pictures& pictures, std::size_t count, const char* stock_caption = "药库库存") {
  Columns columns = {
      kCode,
      {"品名", "YPMC"},
      {"规格", "GG"},
      {"单位", "DW"},
      {"产地", "SCCJ"},
      {stock_caption, "YKKCL"},
      {"零售价", "LSJ", pictures.LSJ},
      {"进价", "PFJ", pictures.PFJ},
      {"拆零比", "CLB"},
      {"最小单位", "ZXDW"},
      {"拆零零售价", "CLLSJ", pictures.CLLSJ},
      {"批发价", "PLJ"},
  };
  columns.resize(count, {"", ""});
  return columns;
}

Columns Wholesale() {
  return {
      kCode,
      {"品名", "YPMC"},
      {"规格", "GG"},
      {"单位", "DW"},
      {"产地", "SCCJ"},
      {"库存", "ykkcl"},
      {"批发价", "plj", "0.000"},
      {"拆零比", "CLB"},
      {"进价", "PFJ"},
  };
}

Columns PriceAdjustment() {
  return {
      kCode,
      {"品名", "YPMC"},
      {"规格", "GG"},
      {"单位", "DW"},
      {"产地", "SCCJ"},
      {"药房库存", "KCL"},
      {"零售价", "LSJ", "0.00"},
      {"进价", "PFJ", "0.00"},
      {"拆零比", "CLB"},
      {"最小单位", "ZXDW"},
      {"拆零零售价", "CLLSJ", "0.000"},
      {"药库库存量", "YKKCL"},
      {"批发价", "plj"},
  };
}

Columns ItemPriceAdjustment() {
  return {
      kCode,           {"品名", "YPMC"},          {"规格", "GG"},    {"单位", "DW"}, {"产地", "SCCJ"},
      {"库存", "KCL"}, {"零售价", "LSJ", "0.00"}, {"批发价", "PFJ"},
  };
}

/// The one document that shows the trade name.
Columns StockTake() {
  return {
      kCode,           {"品名", "YPMC"},  {"商品名", "SPMC"},   {"规格", "GG"},
      {"单位", "DW"},  {"产地", "SCCJ"},  {"库存", "YKKCL"},    {"零售价", "LSJ", "0.00"},
      {"进价", "PFJ"}, {"拆零比", "CLB"}, {"最小单位", "zxdw"}, {"拆零零售价", "CLLSJ"},
  };
}

constexpr auto kOwn = PickerReading::kOwnRecordset;
constexpr auto kRs = PickerReading::kOpenRs;
constexpr auto kF2 = F2Key::kToggles;
constexpr auto kNoF2 = F2Key::kDoesNothing;
constexpr auto kTab = EnterKey::kWalks;
constexpr auto kNoTab = EnterKey::kLeftAlone;
constexpr auto kControls = PickerSearch::kByControls;

// clang-format off
const std::vector<PickerSettings> kPickers = {
  // screen          statement                      opened  F2     Enter   CXFS          KCXS          SFLB           columns of fpSpread2
  {"ek_YK_RKMX",   kControls,                     kOwn, kF2,   kTab,   kScannerMode, kFilter,      kDrugs,        Standard({"0.000", "0.000000", ""}, 12)},
  {"Frm_YKTY",     kControls,                     kOwn, kF2,   kTab,   kScannerMode, kFilter,      kDrugs,        Standard({"0.0000", "￥0.000", ""}, 12)},
  {"Frm_YFYPSL",   PickerSearch::kDrugsWithStock, kRs,  kF2,   kTab,   kScannerMode, kFilter,      kDrugs,        Standard({"0.0000", "0.0000", ""}, 12)},
  {"ek_KSLY",      kControls,                     kOwn, kNoF2, kTab,   kScannerMode, kFilter,      kDrugs,        Standard({"0.00", "", "0.000"}, 11)},
  {"Frm_YPBS",     kControls,                     kOwn, kNoF2, kTab,   kMode,        kFilter,      kDrugs,        Standard({"0.00", "0.00", "0.000"}, 11)},
  {"Frm_YPCGJHDJ", kControls,                     kOwn, kNoF2, kTab,   kMode,        kFilter,      kDrugs,        Standard({"0.00", "", ""}, 10, "药房库存")},
  {"Frm_YPPFLR",   kControls,                     kRs,  kF2,   kTab,   kScannerMode, kFilter,      kDrugs,        Wholesale()},
  {"Frm_PFTY",     kControls,                     kRs,  kF2,   kTab,   kScannerMode, kFilter,      kDrugs,        Wholesale()},
  {"Frm_TJYPLR",   kControls,                     kRs,  kF2,   kTab,   kMode,        kFilter,      kDrugs,        PriceAdjustment()},
  {"Frm_TJJCLR",   PickerSearch::kItems,          kOwn, kNoF2, kNoTab, kMode,        kFilter,      kExaminations, ItemPriceAdjustment()},
  {"ek_YPPDD",     kControls,                     kRs,  kNoF2, kTab,   kMode,        kMouseFilter, kDrugs,        StockTake()},
  {"ek_YPKCCX",    kControls,                     kRs,  kF2,   kNoTab, kMode,        kFilter,      kDrugs,        {}},
  {"ek_PMXZ",      kControls,                     kOwn, kF2,   kNoTab, kMode,        kFilter,      kDrugs,        Standard({"0.000", "0.000000", ""}, 12)},
  {"Frm_YPML",     kControls,                     kRs,  kF2,   kNoTab, kMode,        kFilter,      kDrugs,        {}},
};
// clang-format on

}  // namespace

const std::vector<PickerSettings>& AllPickerSettings() {
  return kPickers;
}

const PickerSettings& PickerSettingsOf(std::string_view screen) {
  const auto found = std::ranges::find(kPickers, screen, &PickerSettings::screen);
  if (found == kPickers.end()) throw StandardFailure(failure::kSubscript);
  return *found;
}

}  // namespace luming
