#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/printing.h"

namespace luming {

class PagedDocument;
class PreviewWindow;
class QtDesktop;

/// Prints, previews and saves as PDF. There is one preview; the next job takes its place.
class QtPrinting : public Printing {
 public:
  /// Scripts have no printer: what they print is laid out and kept for LastPages alone.
  enum class Printer { kReal, kNone };
  /// @param desktop outlives it
  QtPrinting(QtDesktop& desktop, Printer printer);
  ~QtPrinting() override;

  void Print(const PrintJob& job) override;
  void Preview(const PrintJob& job) override;
  void Print(const PrintDocument& document) override;
  void Preview(const PrintDocument& document) override;
  std::string LastPages() const override;

  PreviewWindow* Window() const { return window_.get(); }  ///< null before the first preview

 private:
  void Show(std::shared_ptr<const PagedDocument> document);
  void ToPrinter(const PagedDocument& document);
  void ToChosenPrinter(const PagedDocument& document);
  void SaveAsPdf(const PagedDocument& document);

  QtDesktop& desktop_;
  Printer printer_;
  std::function<std::string()> pages_;  ///< makes the text when it is asked for
  std::unique_ptr<PreviewWindow> window_;
};

}  // namespace luming
