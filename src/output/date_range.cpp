#include "output/date_range.h"

namespace luming {

DateRange::DateRange(Form* form, const char* start_caption, const char* end_caption)
    : S_D(form, "S_D", start_caption), E_D(form, "E_D", end_caption) {}

std::string DateRange::Start() const {
  return S_D.Text() + " 00:00:00";
}

std::string DateRange::End() const {
  return E_D.Text() + " 23:59:59";
}

bool DateRange::CheckOrder(Desktop& desktop, const Box& refusal) const {
  if (E_D.Text() >= S_D.Text()) return true;
  desktop.MsgBox(refusal);
  return false;
}

}  // namespace luming
