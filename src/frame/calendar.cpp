#include "frame/calendar.h"

#include "frame/screens.h"
#include "screen/redraw_pause.h"
#include "util/date_text.h"
#include "util/lunar_calendar.h"

namespace luming {

namespace {

constexpr int kDaysOfWeek = 7;
constexpr int kWeeks = 6;
constexpr int kLinesOfDay = 2;
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2100;

constexpr Colour kToday = 0xFFF0C2;
constexpr Colour kFestival = 0xC62828;
constexpr Colour kRestDay = 0xB26A00;
constexpr Colour kOtherMonth = 0xB4B8BE;

/// Nothing for a day that the lunar calendar does not reach.
LunarNames KnownNamesOf(const DateTime& day) {
  try {
    return NamesOf(day);
  } catch (const Failure&) {
    return {};
  }
}

/// What stands under the day's number: a festival, the month where it begins, else the lunar day.
std::string LineUnder(const LunarNames& names) {
  if (!names.lunar_festival.empty()) return names.lunar_festival;
  if (!names.civil_festival.empty()) return names.civil_festival;
  return names.day == "初一" ? names.month : names.day;
}

std::vector<GridColumn> DaysOfWeek() {
  std::vector<GridColumn> columns;
  for (int day = 1; day <= kDaysOfWeek; ++day) {
    const std::string_view name = WeekdayName(DateTime(2026, 3, day));  // the first was a Sunday
    columns.push_back(GridColumn(std::string(name), 10).Locked());
  }
  return columns;
}

}  // namespace

Frm_wnl::Frm_wnl(AppContext& app)
    : Form(app.forms, kName, "万年历", WindowKind::kDialog), app_(app), chosen_(app.clock.Today()) {
  for (int month = 1; month <= 12; ++month) Month.AddItem(std::to_string(month) + "月");
  fpSpread1.SetPageLines(kLinesOfDay);
  fpSpread1.SetColumns(DaysOfWeek());
  fpSpread1.SetMaxRows(kWeeks);
  Year.change.Connect(this, &Frm_wnl::Year_Change);
  Year.lost_focus.Connect(this, &Frm_wnl::Year_LostFocus);
  Month.click.Connect(this, &Frm_wnl::Month_Click);
  fpSpread1.click.Connect(this, &Frm_wnl::fpSpread1_Click);
  fpSpread1.key_down.Connect(this, &Frm_wnl::fpSpread1_KeyDown);
}

Layout Frm_wnl::Arrange() const {
  return Column({
      Row({Command1, Command2, Space(), Layout(Year).Width(6), Layout(Month).Width(8), Space(), Command3, Command4}),
      fpSpread1,
      Row({Today, Space(), Command5, Command6}),
  });
}

void Frm_wnl::Load() {
  Choose(app_.clock.Today());
  fpSpread1.SetFocus();
}

DateTime Frm_wnl::DayAt(int row, int col) const {
  const DateTime first(chosen_.Year(), chosen_.Month(), 1);
  return first.AddDays((row - 1) * kDaysOfWeek + col - first.Weekday());
}

void Frm_wnl::Choose(const DateTime& day) {
  if (day.Year() < kFirstYear || day.Year() > kLastYear) return;
  chosen_ = day;
  filling_ = true;
  if (Year.Text() != std::to_string(day.Year())) Year.SetText(std::to_string(day.Year()));
  Month.SetListIndex(day.Month() - 1);
  FillPage();
  ShowChosen();
  filling_ = false;
}

void Frm_wnl::FillPage() {
  const RedrawPause pause(fpSpread1);
  for (int row = 1; row <= kWeeks; ++row) {
    for (int col = 1; col <= kDaysOfWeek; ++col) FillCell(row, col);
  }
}

void Frm_wnl::FillCell(int row, int col) {
  const DateTime day = DayAt(row, col);
  const LunarNames names = KnownNamesOf(day);
  const bool festival = !names.lunar_festival.empty() || !names.civil_festival.empty();
  const bool rests = col == 1 || col == kDaysOfWeek;
  Colour text = festival ? kFestival : rests ? kRestDay : Control::kNoColour;
  if (day.Month() != chosen_.Month()) text = kOtherMonth;
  fpSpread1.SetText(row, col, std::to_string(day.Day()) + "\n" + LineUnder(names));
  fpSpread1.SetColours(row, col, col, text, day == app_.clock.Today() ? kToday : Control::kNoColour);
  if (day == chosen_) fpSpread1.SetActiveCell(row, col);
}

void Frm_wnl::ShowChosen() {
  const LunarNames names = KnownNamesOf(chosen_);
  std::string text = FormatDate(chosen_, "dddddd") + " " + std::string(WeekdayName(chosen_)) + "  " + names.year +
                     names.month + names.day;
  for (const std::string& festival : {names.civil_festival, names.lunar_festival}) {
    if (!festival.empty()) text += "  " + festival;
  }
  Today.SetCaption(text);
}

void Frm_wnl::WalkMonths(int months) {
  Choose(chosen_.AddMonths(months));
}

void Frm_wnl::Year_Change() {
  constexpr std::size_t kWholeYear = 4;
  if (filling_ || Year.Text().size() != kWholeYear) return;
  WalkMonths((std::stoi(Year.Text()) - chosen_.Year()) * 12);
}

void Frm_wnl::Year_LostFocus() {
  Choose(chosen_);  // a year that is none goes back to the one shown
}

void Frm_wnl::Month_Click() {
  if (!filling_) WalkMonths(Month.ListIndex() + 1 - chosen_.Month());
}

void Frm_wnl::fpSpread1_Click(int row, int col) {
  Choose(DayAt(row, col));
}

void Frm_wnl::fpSpread1_KeyDown(KeyEvent& event) {
  int days = 0;
  if (event.code == key::kLeft) days = -1;
  if (event.code == key::kRight) days = 1;
  if (event.code == key::kUp) days = -kDaysOfWeek;
  if (event.code == key::kDown) days = kDaysOfWeek;
  if (days == 0) return;
  event.handled = true;
  Choose(chosen_.AddDays(days));
}

void Frm_wnl::FormKeyDown(KeyEvent& event) {
  const int months = event.ctrl ? 12 : 1;
  if (event.code == key::kPageUp) {
    WalkMonths(-months);
  } else if (event.code == key::kPageDown) {
    WalkMonths(months);
  } else if (event.code == key::kHome && ActiveControl() != &Year) {
    Choose(app_.clock.Today());
  } else {
    return;
  }
  event.handled = true;
}

const Screen kCalendar = ShownScreen<Frm_wnl>();

}  // namespace luming
