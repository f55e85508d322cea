#pragma once

#include <QFileDialog>
#include <QStringList>
#include <string>

#include "platform/desktop.h"

namespace luming {

/// The dialog for a file, drawn by ourselves so that it is the same on every desktop. It begins in the directory that
/// is asked for and offers the one used last beside it.
class FileDialogWindow final : public QFileDialog {
 public:
  /// @param last directory of the file chosen last; empty for none
  FileDialogWindow(const FileRequest& request, const QString& last);
};

/// Filters of a file dialog as Qt words them: "*.xls" or "description|pattern|…" become "description (pattern)".
QStringList NameFilters(const std::string& filter);

}  // namespace luming
