#pragma once

#include "screen/form.h"

namespace luming {

/// Clears and colours the fields of a screen. A tag that is not empty protects a field from CleanControlText.
class CleanControl {
 public:
  /// Untagged text boxes and free lists become empty, untagged fixed lists show their first entry, date boxes today.
  static void CleanControlText(Form& form);
  /// Every text box and list becomes empty, every date box shows today.
  static void Cls_ALL(Form& form);
  /// The common background of labels, boxes, pictures and tool bars.
  static void SetControlColor(Form& form);
};

}  // namespace luming
