#include "desktop/file_filter.h"

#include "desktop/qt_text.h"

namespace luming {

QStringList NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split('|', Qt::SkipEmptyParts);
  if (parts.size() == 1) return {parts.front()};
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    QString patterns = parts[at + 1];
    filters << QString("%1 (%2)").arg(parts[at], patterns.replace(';', ' '));
  }
  return filters;
}

}  // namespace luming
