#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "frame/app_context.h"
#include "frame/command_table.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "script/headless_desktop.h"
#include "support/app_test.h"
#include "support/document_columns.h"
#include "support/fake_output.h"
#include "util/clock.h"

namespace luming {

/// The receipt screen over a store with an operator who agrees to everything, for programs that save many receipts.
class ReceiptDesk {
 public:
  static constexpr std::size_t kColumns = 14;
  using Line = std::array<std::string, kColumns>;  ///< in the order of the document grid

  /// @param home  application directory of the store; both it and the clock outlive the desk
  ReceiptDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock);

  /// Lines of different drugs of 西药库 with a batch of that name, in turn in the large and in the smallest unit.
  /// @param first counted from the catalogue's first drug; past its end it begins anew
  std::vector<Line> LinesOf(int first, int count, const std::string& batch);
  /// Puts them into the empty document and fills the head.
  /// @param invoice goes into the head's invoice number
  void Write(const std::vector<Line>& lines, const std::string& invoice);
  /// Saves by the screen's button. False when the screen kept its lines.
  bool Save();
  /// That the next receipt would get.
  std::string NextNumber() const { return screen_.Field<TextBox>("sRKDH").Text(); }

 private:
  Form& OpenScreen(std::shared_ptr<Connection> connection);

  HeadlessDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  CommandTable commands_;
  AppContext app_;
  Forms::HandlerScope handler_;
  Form& screen_;
  Grid& lines_ = screen_.Field<Grid>("fpSpread1");
  std::vector<Line> drugs_;  ///< a line of each drug, without batch
};

}  // namespace luming
