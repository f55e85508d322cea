#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace luming {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) {
  return text.toStdString();
}

/// The model counts characters, Qt counts UTF-16 units; they differ for rare ideographs only.
int UnitsBefore(const QString& text, std::size_t characters);
std::size_t CharactersBefore(const QString& text, int units);

}  // namespace luming
