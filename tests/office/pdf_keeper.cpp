#include "office/pdf_keeper.h"

#include <algorithm>

#include "office/read_back.h"

namespace luming {

void PdfKeeper::Keep(const PrintDocument& document, const char* where) {
  destination = where;
  title = document.title;
  pages = document.text;
  const std::string text = CommandOutput("pdftotext -layout '" + document.pdf.string() + "' -");
  pdf_pages = static_cast<int>(std::ranges::count(text, '\f'));
  pdf_text.clear();
  for (const char c : text) {
    if (c != ' ' && c != '\n' && c != '\f') pdf_text.push_back(c);
  }
}

}  // namespace luming
