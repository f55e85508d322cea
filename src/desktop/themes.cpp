#include "desktop/themes.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <array>

#include "desktop/calm_style.h"
#include "desktop/style_sheet.h"

namespace luming {
namespace {

Theme MakeTheme(QRgb window, QRgb chrome, QRgb chrome_deep, QRgb line, QRgb field_line, QRgb stripe, QRgb accent) {
  const QColor strong = QColor::fromRgb(accent);
  const auto blend = [&](int percent) {
    const auto mix = [percent](int part) { return 255 - (255 - part) * percent / 100; };
    return QColor(mix(strong.red()), mix(strong.green()), mix(strong.blue()));
  };
  Theme theme;
  theme.text = QColor(0x1F, 0x29, 0x33);
  theme.muted = QColor(0x7B, 0x86, 0x92);
  theme.window = QColor::fromRgb(window);
  theme.chrome = QColor::fromRgb(chrome);
  theme.chrome_deep = QColor::fromRgb(chrome_deep);
  theme.line = QColor::fromRgb(line);
  theme.field_line = QColor::fromRgb(field_line);
  theme.base = Qt::white;
  theme.stripe = QColor::fromRgb(stripe);
  theme.total = QColor(0xFF, 0xF7, 0xE0);
  theme.typed = QColor(0xFE, 0xFB, 0xE6);
  theme.accent = strong;
  theme.accent_text = Qt::white;
  theme.accent_pale = blend(26);
  theme.accent_faint = blend(11);
  return theme;
}

const std::array<Theme, 4>& Themes() {
  static const std::array<Theme, 4> themes{
      MakeTheme(0xF6F5F1, 0xECE9E1, 0xD9D5C9, 0xD5D1C6, 0xADA89A, 0xFAF9F6, 0x3A5F8A),
      MakeTheme(0xF7F9FA, 0xEDF1F3, 0xD8E0E4, 0xD3DBE0, 0xA9B7BF, 0xF6F9FA, 0x0F6E78),
      MakeTheme(0xF2F6FC, 0xDCE8F7, 0xBFD3EE, 0xC1D2E8, 0x93AED0, 0xF3F8FE, 0x1F5AA6),
      MakeTheme(0xF5F5F5, 0xEAEAEA, 0xD6D6D6, 0xD2D2D2, 0xA6A6A6, 0xF8F8F8, 0x2F6B3F),
  };
  return themes;
}

const Theme*& Current() {
  static const Theme* current = &Themes()[1];
  return current;
}

QPalette PaletteOf(const Theme& theme) {
  QPalette palette;
  palette.setColor(QPalette::Window, theme.window);
  palette.setColor(QPalette::WindowText, theme.text);
  palette.setColor(QPalette::Base, theme.base);
  palette.setColor(QPalette::AlternateBase, theme.stripe);
  palette.setColor(QPalette::Text, theme.text);
  palette.setColor(QPalette::Button, theme.chrome);
  palette.setColor(QPalette::ButtonText, theme.text);
  palette.setColor(QPalette::Highlight, theme.accent);
  palette.setColor(QPalette::HighlightedText, theme.accent_text);
  palette.setColor(QPalette::ToolTipBase, theme.base);
  palette.setColor(QPalette::ToolTipText, theme.text);
  palette.setColor(QPalette::PlaceholderText, theme.muted);
  palette.setColor(QPalette::Mid, theme.line);
  palette.setColor(QPalette::Dark, theme.field_line);
  for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, theme.muted);
  }
  palette.setColor(QPalette::Disabled, QPalette::Base, theme.window);
  return palette;
}

QFont InterfaceFont() {
  QFont font;
  font.setFamilies(
      {"Noto Sans CJK SC", "Source Han Sans SC", "Microsoft YaHei UI", "PingFang SC", "WenQuanYi Micro Hei", "Sans"});
  font.setPointSizeF(10);
  font.setStyleStrategy(QFont::PreferAntialias);
  return font;
}

}  // namespace

const Theme& ThemeOfNumber(int number) {
  const bool known = number >= 0 && number < static_cast<int>(Themes().size());
  return Themes()[known ? static_cast<std::size_t>(number) : 1];
}

const Theme& CurrentTheme() {
  return *Current();
}

void ApplyTheme(int number, const QString& skin) {
  Current() = &ThemeOfNumber(number);
  if (!dynamic_cast<CalmStyle*>(QApplication::style())) QApplication::setStyle(new CalmStyle);
  QApplication::setFont(InterfaceFont());
  QApplication::setPalette(PaletteOf(CurrentTheme()));
  qApp->setStyleSheet(StyleSheetOf(CurrentTheme()) + skin);
}

}  // namespace luming
