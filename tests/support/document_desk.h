#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "frame/command_table.h"
#include "frame/screen.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "script/headless_desktop.h"
#include "support/app_test.h"
#include "support/document_columns.h"
#include "support/fake_output.h"
#include "util/clock.h"

namespace luming {

/// The screen of a document over a store, with an operator of every right in 西药库 who agrees to everything, for
/// programs that save many documents.
class DocumentDesk {
 public:
  /// @param home  application directory of the store; both it and the clock outlive the desk
  DocumentDesk(const Screen& screen, const std::filesystem::path& home, std::shared_ptr<Connection> connection,
               const Clock& clock);

  /// A field of the head.
  void Choose(const char* combo_box, const std::string& text) { screen_.Field<ComboBox>(combo_box).SetText(text); }
  /// A field of the screen, whatever it is.
  template <class Kind>
  Kind& Field(const char* name) {
    return screen_.Field<Kind>(name);
  }
  Grid& Lines() { return screen_.Field<Grid>("fpSpread1"); }
  /// Saves by the screen's button. False when the screen kept its lines.
  bool Save();

 private:
  Form& OpenScreen(const Screen& screen, std::shared_ptr<Connection> connection);

  HeadlessDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  CommandTable commands_;

 protected:
  AppContext app_;
  Forms::HandlerScope handler_;
  Form& screen_;
};

/// The issue note's, as the storehouse confirms it.
class ConfirmingDesk : public DocumentDesk {
 public:
  ConfirmingDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock);

  /// Opens a note for its confirmation, in place of the one before.
  void Open(const std::string& number);
  /// Confirms it. False when the note stayed open; what the server refused behind the head's confirmation counts as
  /// confirmed.
  bool Confirm();
};

/// The receipt's.
class ReceiptDesk : public DocumentDesk {
 public:
  static constexpr std::size_t kColumns = 14;
  using Line = std::array<std::string, kColumns>;  ///< in the order of the document grid

  ReceiptDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock);

  /// Lines of different drugs of 西药库 with a batch of that name, in turn in the large and in the smallest unit.
  /// @param first counted from the catalogue's first drug; past its end it begins anew
  std::vector<Line> LinesOf(int first, int count, const std::string& batch);
  /// Puts them into the empty document and fills the head.
  /// @param invoice goes into the head's invoice number
  void Write(const std::vector<Line>& lines, const std::string& invoice);
  /// That the next receipt would get.
  std::string NextNumber() const { return screen_.Field<TextBox>("sRKDH").Text(); }

 private:
  std::vector<Line> drugs_;  ///< a line of each drug, without batch
};

}  // namespace luming
