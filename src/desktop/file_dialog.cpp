#include "desktop/file_dialog.h"

#include <QDir>
#include <QUrl>

#include "desktop/qt_text.h"

namespace luming {

namespace {
constexpr QSize kUsualSize{760, 500};
}  // namespace

FileDialogWindow::FileDialogWindow(const FileRequest& request, const QString& last)
    : QFileDialog(nullptr, ToQt(request.title)) {
  const QString told = ToQt(request.directory.string());
  setObjectName("fileDialog");
  setOption(DontUseNativeDialog);
  setAcceptMode(request.save ? AcceptSave : AcceptOpen);
  setFileMode(request.save ? AnyFile : ExistingFile);
  setNameFilters(NameFilters(request.filter));
  setDefaultSuffix(ToQt(request.extension));
  QStringList places;
  for (const QString& place : {told, last, QDir::homePath()}) {
    if (!place.isEmpty() && QDir(place).exists()) places << QDir(place).absolutePath();
  }
  places.removeDuplicates();
  if (!places.isEmpty()) setDirectory(places.front());
  QList<QUrl> offered;
  for (const QString& place : places) offered << QUrl::fromLocalFile(place);
  setSidebarUrls(offered);
  setHistory(places);
  selectFile(ToQt(request.name));
  resize(kUsualSize);
}

QStringList NameFilters(const std::string& filter) {
  const QStringList parts = ToQt(filter).split('|', Qt::SkipEmptyParts);
  if (parts.size() == 1) return {parts.front()};
  QStringList filters;
  for (qsizetype at = 0; at + 1 < parts.size(); at += 2) {
    const QString& words = parts[at];
    QString patterns = parts[at + 1];
    patterns.replace(';', ' ');
    filters << (words == patterns ? patterns : QString("%1 (%2)").arg(words, patterns));
  }
  return filters;
}

}  // namespace luming
