#include "output/note_on_paper.h"

namespace luming {

NoteOnPaper::NoteOnPaper(Grid& lines, const std::string& heading, const std::vector<int>& left_out) : lines_(lines) {
  lines_.SetReDraw(false);
  lines_.SetHeading(heading);
  for (const int col : left_out) {
    if (lines_.ColumnHidden(col)) continue;
    lines_.SetColumnHidden(col, true);
    hidden_.push_back(col);
  }
  if (lines_.ColumnHidden(1)) MoveTotalCaption(1, LastVisibleColumn());
}

NoteOnPaper::~NoteOnPaper() {
  if (caption_col_ != 1) MoveTotalCaption(caption_col_, 1);
  for (const int col : hidden_) lines_.SetColumnHidden(col, false);
  lines_.SetHeading({});
  lines_.SetReDraw(true);
}

void NoteOnPaper::MoveTotalCaption(int from, int to) {
  const int total = lines_.MaxRows();
  if (!lines_.IsTotalRow(total)) return;
  lines_.SetText(total, to, lines_.Text(total, from));
  lines_.SetText(total, from, "");
  caption_col_ = to;
}

int NoteOnPaper::LastVisibleColumn() const {
  int col = lines_.MaxCols();
  while (col > 1 && lines_.ColumnHidden(col)) --col;
  return col;
}

}  // namespace luming
