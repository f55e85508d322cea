#include "app/command_table.h"

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace luming
