#pragma once

#include <string>
#include <vector>

#include "screen/grid.h"

namespace luming {

/// The lines of a document as they go onto paper or into a workbook: words that name the document stand over the heads,
/// some columns are left out, and the caption of the total stands in the last column that is left where its own is not.
/// All of it is taken back at the end, however the print has ended.
class NoteOnPaper {
 public:
  /// @param heading  of the document
  /// @param left_out columns, from 1
  NoteOnPaper(Grid& lines, const std::string& heading, const std::vector<int>& left_out = {});
  ~NoteOnPaper();
  NoteOnPaper(const NoteOnPaper&) = delete;
  NoteOnPaper& operator=(const NoteOnPaper&) = delete;

 private:
  void MoveTotalCaption(int from, int to);
  int LastVisibleColumn() const;

  Grid& lines_;
  std::vector<int> hidden_;
  int caption_col_ = 1;  ///< of the total row
};

}  // namespace luming
