#pragma once

#include <QStringList>
#include <string>

namespace luming {

/// Filters of a file dialog as Qt words them: "*.xls" or "description|pattern|…" become "description (pattern)".
QStringList NameFilters(const std::string& filter);

}  // namespace luming
