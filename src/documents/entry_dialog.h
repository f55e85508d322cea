#pragma once

#include <cstdint>
#include <string>

#include "frame/app_context.h"
#include "frame/screen.h"
#include "screen/form.h"
#include "screen/text_box.h"
#include "stock/line_grid.h"

namespace luming {

/// How a dialog says what is wrong with a quantity.
struct QuantityWords {
  const char* when_empty;
  const char* when_zero;
};

/// The dialog in which one line of a document is entered. It writes straight into the line's cells; a cancel by
/// button, Esc or frame takes the line back. Enter walks it.
class EntryDialog : public Form {
 public:
  int EditRow = 0;  ///< the line being entered; set by the screen before it shows the dialog

 protected:
  /// @param lines of the document; they outlive the dialog
  EntryDialog(AppContext& app, LineGrid& lines, const char* name, const char* caption);

  void Write(int column, std::string text) { lines_.SetText(EditRow, column, std::move(text)); }
  void Cancel();
  /// Tells what is wrong and goes back to the field. @return false
  bool Refuse(const std::string& words, Control& field);
  /// Refuses a quantity that is empty, zero or above the drug's stock. Failure 13 for one that is no number.
  /// @param factor makes the quantity comparable with the stock
  bool QuantityPasses(TextBox& quantity, const QuantityWords& words, std::int16_t factor, double stock);
  /// Goes to the field, its text selected for overtyping.
  static void Start(TextBox& field);

  void ClosedByFrame() override { Cancel(); }
  void FormKeyDown(KeyEvent& event) override;

  AppContext& app_;
  LineGrid& lines_;
};

/// The entry dialog of a document, on the document's own lines.
template <class Dialog, class Document>
Form& EntryOf(AppContext& app) {
  return app.forms.Get<Dialog>(app, app.forms.Get<Document>(app).fpSpread1);
}

/// The same as a screen of the program.
template <class Dialog, class Document>
constexpr Screen EntryScreen() {
  return {Dialog::kName, EntryOf<Dialog, Document>,
          [](AppContext& app) { EntryOf<Dialog, Document>(app).ShowModal(); }};
}

}  // namespace luming
