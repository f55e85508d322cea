#include "frame/command_table.h"

#include <algorithm>

#include "frame/user_rights.h"

namespace luming {

const Command* CommandTable::Find(int id) const {
  const auto found = std::ranges::find(commands, id, &Command::id);
  return found == commands.end() ? nullptr : &*found;
}

Command Behind(RightKey key, Command command) {
  if (!command.action) return command;
  command.action = [key, open = std::move(command.action)](AppContext& app) {
    if (HasRight(app, key)) {
      open(app);
    } else {
      CheckRight(app, key);
    }
  };
  return command;
}

}  // namespace luming
