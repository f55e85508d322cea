// One workstation of several: saves receipts and returns to the supplier, in turn and of the same batch of the same
// drugs, and tells of each attempt what became of it and how long it took.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/composition.h"
#include "documents/screens.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "support/receipt_desk.h"

using namespace luming;

namespace {

constexpr int kLines = 3;
constexpr const char* kBatch = "共用批";

/// The screen of returns to the supplier, with an operator who agrees to everything.
class ReturnDesk {
 public:
  ReturnDesk(const std::filesystem::path& home, std::shared_ptr<Connection> connection, const Clock& clock)
      : app_({desktop_, devices_, printing_, workbooks_, clock}, home, {}, commands_), handler_(app_.forms) {
    desktop_.pump = [this] {
      const Box* box = desktop_.OpenBox();
      if (!box) throw HeadlessStuck{};
      last_box_ = box->text;
      desktop_.AnswerBox((box->style & box::kYesNo) != 0 ? Answer::kYes : Answer::kOk);
    };
    app_.Cn = std::move(connection);
    app_.KFMC = "西药库";
    app_.CurUser.GetUserName = "管理员";
    screen_ = &kReturnToSupplier.form(app_);
    screen_->EnsureLoaded();
  }

  void Write(const std::vector<ReceiptDesk::Line>& lines) {
    screen_->Field<ComboBox>("sGHDW").SetText("云泊医药有限公司");
    screen_->Field<ComboBox>("sFHR").SetText("吕静仪");
    auto& returned = screen_->Field<Grid>("fpSpread1");
    returned.SetMaxRows(static_cast<int>(lines.size()));
    int row = 0;
    for (const ReceiptDesk::Line& line : lines) {
      ++row;
      const auto put = [&](int column, const std::string& text) { returned.SetText(row, column, text); };
      put(supplier_return::kCode, line[0]);
      put(supplier_return::kName, line[1]);
      put(supplier_return::kQuantity, "1.5");
      put(supplier_return::kPurchasePrice, "3.25");
      put(supplier_return::kBatch, kBatch);
      put(supplier_return::kRatio, "1");
    }
  }
  bool Save() {
    screen_->UserClick(screen_->Field<Button>("Command1"));
    return screen_->Field<Grid>("fpSpread1").MaxRows() == 0;
  }
  const std::string& last_box() const { return last_box_; }

 private:
  HeadlessDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  CommandTable commands_;
  AppContext app_;
  Forms::HandlerScope handler_;
  Form* screen_ = nullptr;
  std::string last_box_;
};

/// Tries until the document is saved.
template <class Save>
void Persist(const char* what, Save save) {
  constexpr int kMostTries = 20;
  for (int attempt = 0; attempt < kMostTries; ++attempt) {
    const auto begin = std::chrono::steady_clock::now();
    const bool saved = save();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - begin;
    std::printf("%s %s %.1f\n", saved ? "saved" : "failed", what, took.count());
    if (saved) return;
  }
  std::exit(1);
}

void Work(const std::filesystem::path& home, const char* address, int documents) {
  const FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  std::shared_ptr<Connection> connection = NewConnection(home, clock);
  connection->Open(address);
  ReceiptDesk receipts(home, connection, clock);
  ReturnDesk returns(home, connection, clock);
  const std::vector<ReceiptDesk::Line> lines = receipts.LinesOf(0, kLines, kBatch);
  for (int i = 0; i < documents; ++i) {
    if (i % 2 == 0) {
      receipts.Write(lines, "1");
      Persist("receipt", [&] { return receipts.Save(); });
    } else {
      returns.Write(lines);
      Persist("return", [&] { return returns.Save(); });
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::fprintf(stderr, "usage: busy_client DIRECTORY CONNECTION DOCUMENTS\n");
    return 2;
  }
  try {
    Work(argv[1], argv[2], std::atoi(argv[3]));
    return 0;
  } catch (const Failure& failure) {
    std::printf("failure %s\n", failure.description().c_str());
    return 1;
  }
}
