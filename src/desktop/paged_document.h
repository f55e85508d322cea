#pragma once

#include <QByteArray>
#include <QSizeF>
#include <QString>
#include <functional>
#include <memory>

#include "desktop/page_painter.h"
#include "platform/printing.h"

class QPainter;

namespace luming {

/// Something that has pages: what preview, printer and PDF work from. Pages are numbered from 0.
class PagedDocument {
 public:
  virtual ~PagedDocument() = default;
  virtual QString Title() const = 0;
  virtual int Pages() const = 0;
  virtual QSizeF PageSize(int page) const = 0;  ///< in points
  /// The painter's unit is a point. @param scale device pixels to a point, for what is painted as a picture
  virtual void Paint(QPainter& painter, int page, double scale) const = 0;
  /// The whole document as PDF. @param told after each page; false stops and gives an empty result
  virtual QByteArray Pdf(const std::function<bool(int done, int total)>& told) const = 0;
};

/// Lays a job out. Failure when there is nothing to lay out.
std::shared_ptr<const PagedDocument> MakePages(const PrintJob& job);
/// Reads a document that is laid out already. Failure when it is none.
std::shared_ptr<const PagedDocument> MakePages(const PrintDocument& document);

}  // namespace luming
