#include "stock/line_table.h"

#include <algorithm>

#include "util/failure.h"

namespace luming {

namespace {

using Captions = std::vector<const char*>;

const Captions kReceipt = {"编码",     "品名",     "规格",     "单位", "产地", "批发价格", "零售价格",
                           "入库数量", "进货价格", "进货金额", "批号", "效期", "拆零比"};
const Captions kIssueNote = {"编码",     "品名",     "规格",     "单位", "产地",   "零售价格", "库存", "申领数量",
                             "零售金额", "进货价格", "进货金额", "差价", "拆零比", "批号",     "效期"};
const Captions kDraw = {"编码", "品名", "规格", "产地", "数量",     "单位",  "零售价",
                        "批号", "效期", "金额", "进价", "进价金额", "拆零比"};
const Captions kReturn = {"编码",     "品名",     "规格", "单位", "产地",  "退库数量",
                          "进货价格", "进货金额", "批号", "效期", "拆零比"};
const Captions kSale = {"编码",   "品名", "规格",   "批发价", "数量",   "单位",      "批号",
                        "有效期", "产地", "拆零比", "金额",   "零售价", "零售价金额"};
const Captions kSaleReturn = {"编码",   "品名", "规格",   "批发价",       "数量",   "单位", "批号",
                              "有效期", "产地", "拆零比", "批发退药金额", "零售价", "金额"};
const Captions kStockTake = {"编码",     "品名",     "规格",         "单位",    "产地",
                             "零售价",   "帐面库存", "实际库存",     "盈亏数",  "盈亏金额(零售价)",
                             "库存金额", "拆零比",   "合并包装数量", "拆零比2", "批发价",
                             "盈亏金额"};
const Captions kPlan = {"编码", "品名", "规格", "单位", "生产厂家", "数量", "采购结果"};
const Captions kDrugPrices = {"编码",     "品名",     "规格",       "单位",   "产地",         "药房库存量",
                              "原零售价", "现零售价", "原进价",     "现进价", "原拆零零售价", "现拆零零售价",
                              "原批发价", "现批发价", "药库库存量", "拆零比"};
const Captions kItemPrices = {"编码", "品名", "单位", "原价", "现价"};

constexpr auto kLeave = AfterDelete::kNothing;
constexpr auto kNoTotal = AfterDelete::kSumThenRemoveTotals;
constexpr auto kFresh = AfterDelete::kRemoveTotalsThenSum;
constexpr auto kFive = ScrollTo::kLastFive;
constexpr auto kLast = ScrollTo::kLastRow;
constexpr auto kOnce = Duplicates::kRefused;
constexpr auto kTwice = Duplicates::kReportedOnly;

// clang-format off
const std::vector<LineGridSettings> kLineGrids = {
  // screen         captions     hidden  typed in place                    summed              resummed  deletion  scroll  duplicates  parked as
  {"ek_YK_RKMX",    kReceipt,    1,      {5, 6, 7, 8, 9, 10, 11, 12, 13},  {10},               {10},     kNoTotal, kFive,  kOnce,      "RYYP.Dat"},
  {"Frm_YFYPSL",    kIssueNote,  0,      {8},                              {9, 11, 12},        {},       kLeave,   kFive,  kOnce,      nullptr},
  {"ek_KSLY",       kDraw,       0,      {},                               {10},               {},       kLeave,   kFive,  kOnce,      nullptr},
  {"Frm_YPBS",      kDraw,       0,      {},                               {6, 7, 8, 11, 12},  {},       kLeave,   kLast,  kOnce,      nullptr},
  {"Frm_YKTY",      kReturn,     0,      {},                               {10},               {10},     kNoTotal, kFive,  kOnce,      nullptr},
  {"Frm_YPPFLR",    kSale,       0,      {5},                              {11, 13},           {11},     kFresh,   kLast,  kTwice,     nullptr},
  {"Frm_PFTY",      kSaleReturn, 0,      {5},                              {11, 13},           {11},     kFresh,   kLast,  kOnce,      nullptr},
  {"ek_YPPDD",      kStockTake,  1,      {8},                              {},                 {},       kLeave,   kLast,  kOnce,      "PDD.Dat"},
  {"Frm_YPCGJHDJ",  kPlan,       0,      {6, 7},                           {},                 {},       kLeave,   kLast,  kOnce,      nullptr},
  {"Frm_TJYPLR",    kDrugPrices, 0,      {},                               {},                 {},       kLeave,   kLast,  kOnce,      nullptr},
  {"Frm_TJJCLR",    kItemPrices, 0,      {},                               {},                 {},       kLeave,   kLast,  kOnce,      nullptr},
};
// clang-format on

}  // namespace

const LineGridSettings& LineGridSettingsOf(std::string_view screen) {
  const auto found = std::ranges::find(kLineGrids, screen, &LineGridSettings::screen);
  if (found == kLineGrids.end()) throw StandardFailure(failure::kSubscript);
  return *found;
}

}  // namespace luming
