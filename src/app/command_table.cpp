#include "app/command_table.h"

#include "documents/screens.h"
#include "frame/main_window.h"
#include "frame/screens.h"
#include "masterdata/screens.h"
#include "queries/screens.h"

namespace luming {

namespace {

MenuEntry Group(MenuEntry entry) {
  entry.starts_group = true;
  return entry;
}

// clang-format off
std::vector<MenuEntry> Menus() {
  return {
      {"系统(&S)", 0, {
          {"输入法设置(&I)", 9105},
          {"切换用户(&C)", 9102},
          {"更改密码(&P)", 9106},
          Group({"锁定系统(&L)", 9103}),
          Group({"退出系统(&Q)", 9104}),
      }},
      {"药品目录(&Y)", 0, {
          {"添加新药品(&S)", 201},
          {"药品目录(&F)", 202},
          {"药品历史信息(&H)", 203},
      }},
      {"鹿鸣仓管(&K)", 0, {
          {"药库入库(&J)", 301, {
              {"药品入库(&L)", 302},
              {"药品入库查询(&C)", 303},
          }},
          {"出库管理(&C)", 304, {
              {"出库到药房(&F)", 312},
              {"科室领药录入(&L)", 305},
              {"科室领药查询(&C)", 306},
          }},
          {"药库退药(&T)", 333, {
              {"药库退药(&L)", 335},
              {"药库退药查询(&C)", 336},
          }},
          {"药房退药确认(&F)", 338},
          {"盘点管理(&P)", 409, {
              {"盘点(&L)", 410},
              {"盘点查询(&C)", 411},
          }},
          {"报损报废管理(&B)", 412, {
              {"报损报废(&L)", 413},
              {"报损报废查询(&C)", 414},
          }},
          {"生成药品采购计划(&M)", 339},
          // The id of 出库管理 once more: pop-ups run no command.
          {"药品采购计划(&Y)", 304, {
              {"药品采购计划登记(&D)", 309},
              {"药品采购计划查询(&S)", 310},
          }},
      }},
      {"药品批发(&P)", 0, {
          {"药品批发(&P)", 2101},
          {"药品批发查询(&C)", 2102},
          Group({"批发退药(&T)", 2104}),
          {"批发退药查询(&S)", 2105},
      }},
      {"调价管理(&J)", 0, {
          {"药品调价(&Y)", 406},
          {"检查项目调价(&J)", 407},
          {"调价查询(&C)", 408},
      }},
      {"查询(&C)", 0, {
          {"入库查询", 303},
          {"药库出库单查询", 313},
          {"药库退药查询", 336},
          {"科室领药查询", 306},
          {"盘点查询", 411},
          {"未盘点药品查询", 521},
          {"报损报废查询", 414},
          {"调价查询", 408},
          {"药品历史信息查询(&L)", 203},
          {"药品出入日报表", 507},
          Group({"库存查询(&C)", 501}),
      }},
      {"预警管理(&A)", 0, {
          {"药品低储报警(&D)", 551},
          {"药品高储报警(&G)", 552},
          {"失效药品报警(&S)", 553},
      }},
      {"工具(&T)", 0, {
          {"万年历(&W)", 601},
          {"计算器(&C)", 602},
      }},
      {"数据维护(&F)", 0, {
          {"数据字典(&S)", 751},
          Group({"产地(生产厂家)维护(&W)", 752}),
      }},
      {"窗口(&W)", 0, {
          {"工具条(&T)", 1101},
          {"皮肤(&O)...", 1104, {
              {"Office XP", 1001},
              {"Default", 1002},
              {"Office 2003", 1003},
              {"Native XP", 1004},
          }},
          Group({"层叠(&C)", 801}),
          {"横向平铺(&H)", 802},
          {"纵向平铺(&V)", 803},
          {"排列图标(&A)", 804},
          Group({"列表", MainFrame::kWindowListId}),
      }},
      {"帮助(&H)", 0, {
          {"帮助目录", 901},
          {"帮助主题", 902},
          Group({"关于我们(&A)...", 903}),
      }},
  };
}

std::vector<MenuEntry> ToolBarButtons() {
  return {
      {"药品目录", 202},
      {"添加新药品", 201},
      Group({"药品入库", 302}),
      {"出库到药房", 312},
      {"药房退药确认", 338},
      {"盘点", 410},
      {"报损报废", 413},
      Group({"锁定系统", 9103}),
      {"输入法设置", 9105},
      {"退出系统", 9104},
  };
}
// clang-format on

/// What the main window does by itself.
Command Own(int id, void (mainfrm::*action)()) {
  return {id, {}, [action](AppContext& app) { (app.forms.Get<mainfrm>(app).*action)(); }};
}

Command Arrange(int id, Arrangement arrangement) {
  return {id, {}, [arrangement](AppContext& app) { app.desktop.ArrangeChildren(arrangement); }};
}

Command Theme(int id, int theme) {
  return {id, {}, [theme](AppContext& app) { app.forms.Get<mainfrm>(app).SetTheme(theme); }};
}

std::vector<Command> Commands() {
  return {
      Opens(201, kDrugEditor),
      Opens(202, kDrugCatalogue),
      Awaited(203, "Frm_YPLC"),
      Opens(302, kReceipt),
      Awaited(303, "ek_YK_RKMXCX"),
      Opens(305, kRequisition),
      Awaited(306, "ek_KSLYCX"),
      Awaited(309, "Frm_YPCGJHDJ"),
      Awaited(310, "Frm_YPCGJHCX"),
      Opens(312, kIssueDesk),
      Opens(313, kIssueQuery),
      Opens(335, kReturnToSupplier),
      Awaited(336, "Frm_YKTYCX"),
      Opens(338, kPharmacyReturnDesk),
      Awaited(339, "Frm_CGJHB"),
      Opens(401, kChargeItems),
      Awaited(406, "Frm_TJYPLR"),
      Awaited(407, "Frm_TJJCLR"),
      Awaited(408, "frm_yptjcx"),
      Opens(410, kStockTake),
      Opens(411, kStockTakeQuery),
      Opens(413, kLoss),
      Awaited(414, "Frm_YPBSCX"),
      Awaited(501, "ek_YPKCCX"),
      Awaited(507, "Frm_YPRCRBB"),
      Opens(521, kUncountedDrugs),
      Behind("YPGL_YPDCCX", Awaited(551, "Frm_DCYPList")),
      Behind("YPGL_YPGCCX", Awaited(552, "Frm_GCYPList")),
      Behind("YPGL_SXYPCX", Awaited(553, "Frm_SXYPList")),
      Opens(601, kCalendar),
      Own(602, &mainfrm::StartCalculator),
      Opens(751, kDataDictionary),
      Opens(752, kProducers),
      Arrange(801, Arrangement::kCascade),
      Arrange(802, Arrangement::kTileHorizontally),
      Arrange(803, Arrangement::kTileVertically),
      Arrange(804, Arrangement::kIcons),
      Own(901, &mainfrm::OpenManual),
      Own(902, &mainfrm::OpenManual),
      Opens(903, kAbout),
      Theme(1001, 0),
      Theme(1002, 1),
      Theme(1003, 2),
      Theme(1004, 3),
      Own(1101, &mainfrm::ToggleToolBar),
      Own(1103, &mainfrm::ToggleStatusBar),
      Awaited(2101, "Frm_YPPFLR"),
      Awaited(2102, "Frm_YPPFCX"),
      Awaited(2104, "Frm_PFTY"),
      Awaited(2105, "Frm_PFTYCX"),
      Own(6661, &mainfrm::CloseActiveChild),
      Own(6662, &mainfrm::CloseAllChildren),
      Own(6663, &mainfrm::CloseOtherChildren),
      Own(9102, &mainfrm::SwitchOperator),
      Opens(9103, kLock),
      Own(9104, &mainfrm::AskToExit),
      Opens(9105, kInputMethod),
      Opens(9106, kChangePassword),
  };
}

}  // namespace

const std::vector<const Screen*>& FurtherScreens() {
  static const std::vector<const Screen*> screens = {
      &kMainWindow,      &kLogin,          &kStorehouseChoice,      &kConnectionDialog, &kDictionaryHead,
      &kDictionaryLinks, &kInsuranceItems, &kProducerChoice,        &kProducerEditor,   &kDrugChoice,
      &kCatalogueImport, &kReceiptEntry,   &kReturnToSupplierEntry, &kStockTakeEntry,   &kRequisitionEntry,
      &kLossEntry,       &kIssueNote,      &kIssueNoteEntry,        &kReceiptChoice,    &kPharmacyReturn,
  };
  return screens;
}

const CommandTable& MainCommands() {
  static const CommandTable table{Menus(), ToolBarButtons(), Commands(), {}};
  return table;
}

}  // namespace luming
