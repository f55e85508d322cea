#include "desktop/style_sheet.h"

#include <array>
#include <utility>

#include "desktop/themes.h"

namespace luming {
namespace {

// Editors are drawn by CalmStyle, labels by the palette: there a screen can set colours of its own.
constexpr const char* kRules = R"(
QLabel#caption { color: @text; }
QLabel#caption[required="true"] { color: #c62828; }
QLabel#caption:disabled { color: @muted; }
QPlainTextEdit { border: 1px solid @field_line; border-radius: 3px; background: @base; }
QPlainTextEdit:focus { border: 2px solid @accent; }
QLineEdit#cellEditor { border: 2px solid @accent; padding: 0 3px; background: @base; }
QPushButton {
  border: 1px solid @field_line; border-radius: 4px; padding: 4px 14px; min-height: 18px;
  background: @base; color: @text;
}
QPushButton:hover { background: @accent_faint; border-color: @accent; }
QPushButton:pressed { background: @accent_pale; }
QPushButton:focus { border: 2px solid @accent; padding: 3px 13px; }
QPushButton:disabled { color: @muted; background: @window; border-color: @line; }
QPushButton[role="default"] { background: @accent; color: @accent_text; border-color: @accent; }
QPushButton[role="default"]:focus { border: 2px solid @text; }
QToolButton { border: 1px solid transparent; border-radius: 4px; padding: 3px 7px; color: @text; }
QToolButton:hover { background: @accent_faint; border-color: @accent_pale; }
QToolButton:pressed { background: @accent_pale; }
QToolButton:disabled { color: @muted; }
QWidget[look="toolBar"] { border-bottom: 1px solid @line; }
QCheckBox, QRadioButton { spacing: 6px; padding: 2px; border: 1px solid transparent; border-radius: 3px; }
QCheckBox:focus, QRadioButton:focus { border: 1px solid @accent; }
QGroupBox { border: 1px solid @line; border-radius: 4px; margin-top: 9px; padding-top: 6px; }
QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px; color: @accent; }
QProgressBar { border: 1px solid @field_line; border-radius: 4px; background: @base; }
QProgressBar::chunk { background: @accent; border-radius: 3px; }
QSplitter::handle { background: transparent; }
QSplitter::handle:hover { background: @accent_pale; }
QTableView, QTreeView, QListView {
  border: 1px solid @line; background: @base; gridline-color: @line; outline: none;
}
QTableView:focus, QTreeView:focus { border: 1px solid @accent; }
QTableView#frozen { border: none; border-right: 1px solid @field_line; }
QHeaderView { background: @chrome; border: none; }
QHeaderView::section {
  background: @chrome; color: @text; border: none; border-right: 1px solid @line; border-bottom: 1px solid @field_line;
  padding: 4px 5px;
}
QHeaderView::section:horizontal { font-weight: bold; }
QHeaderView::section:vertical { color: @muted; padding: 0 5px; border-bottom: 1px solid @line; }
QTableCornerButton::section { background: @chrome; border: none; border-right: 1px solid @line; border-bottom: 1px solid @field_line; }
QTreeView::item, QListView::item { min-height: 23px; padding: 0 4px; }
QTreeView::item:hover, QListView::item:hover { background: @accent_faint; }
QTreeView::item:selected, QListView::item:selected { background: @accent; color: @accent_text; }
QTreeView::item:selected:!active, QListView::item:selected:!active { background: @accent_pale; color: @text; }
QListView#dropList { border: 1px solid @accent; }
QListView#dropList::item:selected { background: @accent; color: @accent_text; }
QMenuBar { background: @chrome; border-bottom: 1px solid @line; padding: 1px 4px; }
QMenuBar::item { padding: 4px 10px; border-radius: 3px; background: transparent; }
QMenuBar::item:selected { background: @accent_pale; }
QMenu { background: @base; border: 1px solid @field_line; padding: 4px 0; }
QMenu::item { padding: 5px 32px 5px 10px; }
QMenu::icon { padding-left: 10px; }
QMenu::item:selected { background: @accent; color: @accent_text; }
QMenu::item:disabled { color: @muted; }
QMenu::separator { height: 1px; background: @line; margin: 4px 8px; }
QToolBar { background: @chrome; border: none; border-bottom: 1px solid @line; padding: 3px 6px; spacing: 2px; }
QToolBar::separator { width: 1px; background: @line; margin: 6px 6px; }
QStatusBar { background: @chrome; border-top: 1px solid @line; }
QStatusBar::item { border: none; }
QLabel[look="panel"] { padding: 2px 12px; border-left: 1px solid @line; }
QTabBar { background: @chrome; }
QTabBar::tab {
  background: @chrome; color: @text; border: 1px solid @line; border-bottom: none; margin: 3px 0 0 3px; padding: 4px 10px;
  border-top-left-radius: 4px; border-top-right-radius: 4px;
}
QTabBar::tab:selected { background: @window; border-top: 2px solid @accent; }
QTabBar::tab:hover:!selected { background: @accent_faint; }
QScrollBar:vertical { background: @window; width: 13px; margin: 0; }
QScrollBar:horizontal { background: @window; height: 13px; margin: 0; }
QScrollBar::handle { background: @field_line; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 28px; }
QScrollBar::handle:horizontal { min-width: 28px; }
QScrollBar::handle:hover { background: @muted; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QAbstractScrollArea::corner { background: @window; border: none; }
QToolTip { background: @base; color: @text; border: 1px solid @field_line; padding: 3px; }
QCalendarWidget QAbstractItemView { selection-background-color: @accent; selection-color: @accent_text; }
QCalendarWidget QWidget#qt_calendar_navigationbar { background: @chrome; }
QWidget#boxFoot { background: @chrome; border-top: 1px solid @line; }
)";

}  // namespace

QString StyleSheetOf(const Theme& theme) {
  // The longer names stand ahead of those that they begin with.
  const std::array<std::pair<const char*, QColor>, 14> colours{{
      {"@accent_faint", theme.accent_faint},
      {"@accent_pale", theme.accent_pale},
      {"@accent_text", theme.accent_text},
      {"@accent", theme.accent},
      {"@chrome_deep", theme.chrome_deep},
      {"@chrome", theme.chrome},
      {"@field_line", theme.field_line},
      {"@line", theme.line},
      {"@window", theme.window},
      {"@stripe", theme.stripe},
      {"@total", theme.total},
      {"@muted", theme.muted},
      {"@text", theme.text},
      {"@base", theme.base},
  }};
  QString rules = QString::fromUtf8(kRules);
  for (const auto& [name, colour] : colours) rules.replace(name, colour.name());
  return rules;
}

}  // namespace luming
