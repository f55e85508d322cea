#pragma once

#include <QWidget>
#include <functional>
#include <memory>

class QAction;
class QComboBox;
class QLabel;
class QScrollArea;
class QSpinBox;
class QToolBar;

namespace luming {

class PagedDocument;
class PageSheet;

/// The print preview: one page at a time, with zoom, page turning, printer and PDF. Keys: Page Up and Down, Home, End,
/// Ctrl and plus or minus, Ctrl+P, Ctrl+S, Esc.
class PreviewWindow final : public QWidget {
 public:
  PreviewWindow();

  std::function<void(const PagedDocument&)> on_print;
  std::function<void(const PagedDocument&)> on_pdf;

  void SetDocument(std::shared_ptr<const PagedDocument> document);
  int Page() const { return page_; }  ///< from 0
  void TurnTo(int page);              ///< the nearest that there is
  /// Percent of the paper's size; 0 fits the whole page into the window, -1 its width.
  void SetZoom(int percent);
  double Scale() const;  ///< logical pixels to a point

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildToolBar(QToolBar& bar);
  void StepZoom(int steps);
  void Settle();

  std::shared_ptr<const PagedDocument> document_;
  int page_ = 0;
  int zoom_ = 0;
  QScrollArea* area_ = nullptr;
  PageSheet* sheet_ = nullptr;
  QSpinBox* page_box_ = nullptr;
  QLabel* count_ = nullptr;
  QComboBox* zoom_box_ = nullptr;
  QAction* back_ = nullptr;
  QAction* forth_ = nullptr;
};

}  // namespace luming
