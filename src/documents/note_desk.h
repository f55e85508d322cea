#pragma once

#include <string>

#include "frame/app_context.h"
#include "platform/statement.h"
#include "screen/button.h"
#include "screen/combo_box.h"
#include "screen/date_box.h"
#include "screen/form.h"
#include "screen/grid.h"

namespace luming {

/// The pharmacy that a storehouse deals with.
std::string PharmacyOf(const std::string& storehouse);

/// What one kind of notes between a storehouse and its pharmacy is.
struct NoteKind {
  const char* name;
  const char* caption;
  const char* table;   ///< of the heads
  const char* number;  ///< its column
  const char* date;    ///< of the day a note was written
  const char* waiting_title;
  const char* confirmed_title;
  const char* number_head;     ///< of the lists
  const char* confirmed_head;  ///< of the day of confirmation
  const char* pharmacy_caption;
};

/// The way to the notes between a storehouse and its pharmacy: those that wait for the storehouse and those that were
/// confirmed in one month, with the keys that act on them. Which notes a storehouse sees is decided by the pharmacy.
class NoteDesk : public Form {
 public:
  Grid fpSpread1;  ///< waiting
  Grid fpSpread2;  ///< confirmed
  ComboBox KFLIST;
  DateBox DTPicker1{this, "DTPicker1", "月份"};
  Button Command1{this, "Command1", "查看(F3)", &NoteDesk::Command1_Click};
  Button Command3{this, "Command3", "确认(F8)", &NoteDesk::Command3_Click};
  Button Command4{this, "Command4", "刷新(F5)", &NoteDesk::LoadData};
  Button Com_Cmint{this, "Com_Cmint", "退出(&Q)", &NoteDesk::Com_Cmint_Click};

  /// Reads both lists anew.
  void LoadData();

 protected:
  /// @param kind outlives the form
  NoteDesk(AppContext& app, const NoteKind& kind);

  void Load() override;
  void FormKeyDown(KeyEvent& event) override;

  virtual void View(const std::string& number) = 0;
  virtual void Confirm(const std::string& number) = 0;
  /// The list of confirmed notes has been filled.
  virtual void ConfirmedShown() {}

  /// The number of a list's active note; empty, and told so, when there is none.
  std::string ChosenNote(const Grid& list, const Box& none);
  void ViewChosen(const Grid& list);
  /// The lists below the buttons.
  Layout Arranged(std::vector<Layout> buttons) const;

  AppContext& app_;

 private:
  void Command1_Click() { ViewChosen(fpSpread1); }
  void Command3_Click();
  void Com_Cmint_Click() { Unload(); }
  void fpSpread2_DoubleClick(int, int) { ViewChosen(fpSpread2); }
  Statement WaitingStatement() const;
  Statement ConfirmedStatement() const;

  const NoteKind& kind_;
};

}  // namespace luming
