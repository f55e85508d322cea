#pragma once

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <string>
#include <vector>

namespace luming {

/// Draws the windows over one another, each with its title, as they stand on the screen, and saves a PNG file.
/// @param windows in order of showing, the last in front; hidden ones are passed over
/// @return false when nothing is shown or the file cannot be written
bool SavePictureOfDesktop(const std::vector<QPointer<QWidget>>& windows, const QString& file);

}  // namespace luming
