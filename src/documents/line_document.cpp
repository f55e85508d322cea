#include "documents/line_document.h"

#include <utility>

#include "frame/gateway.h"
#include "output/grid_routines.h"
#include "util/number_text.h"

namespace luming {

LineDocument::LineDocument(AppContext& app, const DocumentKind& kind)
    : Form(app.forms, kind.name, kind.caption, kind.window),
      picker(this, app, kind.picker),
      fpSpread1(this, app, GridColumnsOf(kind.columns), kind.habits),
      close(this, kind.close, "关闭(&Q)", &LineDocument::Close_Click),
      app_(app),
      kind_(kind) {
  picker.picked.Connect(this, &LineDocument::Picker_Picked);
}

void LineDocument::Load() {
  if (kind_.right && !HasRight(app_, *kind_.right)) {
    CheckRight(app_, *kind_.right);
    Unload();
    return;
  }
  picker.Load();
  GridInit(fpSpread1);
  if (kind_.lists) {
    Trapped(app_, [this] { LoadCombos(app_, kind_.lists, Lists()); });
  }
  ShowNumber();
}

Layout LineDocument::Arranged(Layout head, std::vector<Layout> buttons) const {
  buttons.push_back(Space());
  buttons.push_back(close);
  return Column({
      std::move(head),
      SplitDown({picker.Arrange().Stretch(2), Layout(fpSpread1).Stretch(3)}),
      Row(std::move(buttons)),
  });
}

void LineDocument::Finished(const char* words) {
  fpSpread1.SetMaxRows(0);
  picker.RereadStock();
  app_.desktop.MsgBox({words, box::kInformation, "信息"});
}

std::string LineDocument::Match(int column) const {
  return picker.Results().Text(picker.Results().ActiveRow(), column);
}

void LineDocument::PickItem() {
  Trapped(app_, [this] {
    const int row = fpSpread1.StartLine(picker);
    if (row == 0) return;
    CopyMatch(row);
    EnterLine(row);
    fpSpread1.FinishLine(picker);
  });
}

void LineDocument::CopyMatch(int row) {
  for (const LineColumn& column : kind_.columns) {
    if (column.from.match == 0) continue;
    const std::string found = Match(column.from.match);
    fpSpread1.SetText(row, column.column, *column.from.picture ? FormatNumberText(found, column.from.picture) : found);
  }
}

MovedLine LineDocument::Moved(int row, const MovedColumns& at) const {
  const auto cell = [&](int column) { return fpSpread1.Text(row, column); };
  MovedLine line;
  line.YPBM = cell(1);
  line.DW = cell(at.unit);
  line.PH = cell(at.batch);
  const std::string quantity = cell(at.quantity);
  line.quantity = quantity.empty() ? 0 : CDbl(quantity);
  // A drug that was never given a ratio is counted as it is handed out.
  const std::string ratio = cell(at.ratio);
  line.ratio = ratio.empty() ? std::int16_t{1} : CInt(ratio);
  const LineColumn& expiry = kind_.columns[static_cast<std::size_t>(at.expiry) - 1];
  expiry.sent(line.XQ, cell(at.expiry), {expiry.caption, row});
  return line;
}

}  // namespace luming
