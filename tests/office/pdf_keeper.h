#pragma once

#include <string>

#include "platform/printing.h"

namespace luming {

/// A print port that keeps the last document it was given, as its bytes and as the text that pdftotext reads in them.
class PdfKeeper : public Printing {
 public:
  void Print(const PrintJob&) override {}
  void Preview(const PrintJob&) override {}
  void Print(const PrintDocument& document) override { Keep(document, "printer"); }
  void Preview(const PrintDocument& document) override { Keep(document, "preview"); }
  std::string LastPages() const override { return pages; }

  std::string destination;  ///< "printer", "preview", empty before the first document
  std::string title;
  std::string pages;     ///< as the document tells them
  std::string pdf_text;  ///< as they can be read in the PDF, without blanks and line ends
  int pdf_pages = 0;

 private:
  void Keep(const PrintDocument& document, const char* where);
};

}  // namespace luming
