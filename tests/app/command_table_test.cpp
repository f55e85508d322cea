#include "app/command_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "screen/main_frame.h"

namespace luming {
namespace {

void Leaves(const std::vector<MenuEntry>& entries, std::vector<MenuEntry>& leaves) {
  for (const MenuEntry& entry : entries) {
    if (entry.children.empty()) leaves.push_back(entry);
    Leaves(entry.children, leaves);
  }
}

TEST(CommandTableTest, EveryMenuEntryAndToolButtonIsACommand) {
  std::vector<MenuEntry> leaves;
  Leaves(MainCommands().menus, leaves);
  Leaves(MainCommands().tool_bar, leaves);
  for (const MenuEntry& leaf : leaves) {
    if (leaf.id == MainFrame::kWindowListId) continue;
    EXPECT_NE(MainCommands().Find(leaf.id), nullptr) << leaf.caption << " " << leaf.id;
  }
}

TEST(CommandTableTest, EachNumberStandsOnce) {
  std::set<int> ids;
  for (const Command& command : MainCommands().commands) EXPECT_TRUE(ids.insert(command.id).second) << command.id;
}

TEST(CommandTableTest, CommandsOutsideTheMenusAreThoseThatNoMenuCalls) {
  std::vector<MenuEntry> leaves;
  Leaves(MainCommands().menus, leaves);
  std::set<int> called;
  for (const MenuEntry& leaf : leaves) called.insert(leaf.id);
  std::set<int> others;
  for (const Command& command : MainCommands().commands) {
    if (!called.contains(command.id)) others.insert(command.id);
  }
  EXPECT_EQ(others, (std::set<int>{401, 1103, 6661, 6662, 6663}));
}

TEST(CommandTableTest, EntriesThatStandInTwoMenusAreThese) {
  std::vector<MenuEntry> leaves;
  Leaves(MainCommands().menus, leaves);
  std::map<int, int> times;
  for (const MenuEntry& leaf : leaves) ++times[leaf.id];
  std::set<int> twice;
  for (const auto& [id, count] : times) {
    if (count > 1) twice.insert(id);
  }
  EXPECT_EQ(twice, (std::set<int>{203, 303, 306, 336, 408, 411, 414}));
}

}  // namespace
}  // namespace luming
