#include "app/admin/admin_command.h"

#include <algorithm>
#include <array>

#include "util/failure.h"

namespace luming {

namespace {

const std::array kCommands = {&kAdminCreate, &kAdminCheck,    &kAdminInstall, &kAdminConnect,
                              &kAdminCopy,   &kAdminOperator, &kAdminGroup,   &kAdminStorehouse};

std::string Usage() {
  std::string text = "用法：\n";
  for (const AdminCommand* command : kCommands) text += command->usage;
  return text;
}

int RunCommand(const std::vector<std::string>& arguments, AdminConsole& console) {
  if (arguments.empty()) throw BadUsage{"没有指定命令。"};
  if (arguments[0] == "help" || arguments[0] == "--help") {
    console.out << Usage();
    return kAdminDone;
  }
  const auto found =
      std::ranges::find_if(kCommands, [&](const AdminCommand* command) { return arguments[0] == command->name; });
  if (found == kCommands.end()) throw BadUsage{"不认识的命令：" + arguments[0]};
  try {
    return (*found)->run({arguments.begin() + 1, arguments.end()}, console);
  } catch (const BadUsage& bad) {
    console.err << "luming-admin：" << bad.what << "\n用法：\n" << (*found)->usage;
    return kAdminFailed;
  }
}

}  // namespace

AdminArguments::AdminArguments(const std::vector<std::string>& arguments,
                               const std::vector<std::string_view>& with_value,
                               const std::vector<std::string_view>& flags) {
  const auto among = [](const std::vector<std::string_view>& names, const std::string& name) {
    return std::ranges::find(names, name) != names.end();
  };
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (!argument.starts_with("--")) {
      words_.push_back(argument);
    } else if (among(flags, argument)) {
      options_[argument] = "";
    } else if (among(with_value, argument)) {
      if (i + 1 >= arguments.size()) throw BadUsage{argument + " 后面缺少内容。"};
      options_[argument] = arguments[++i];
    } else {
      throw BadUsage{"不认识的参数：" + argument};
    }
  }
}

const std::string& AdminArguments::Word(std::size_t index, const char* missing) const {
  if (index >= words_.size()) throw BadUsage{missing};
  return words_[index];
}

void AdminArguments::DemandAtMost(std::size_t words) const {
  if (words_.size() > words) throw BadUsage{"不认识的参数：" + words_[words]};
}

void AdminArguments::DemandSomeChange() const {
  const bool only_forced = options_.size() == 1 && options_.contains("--force");
  if (options_.empty() || only_forced) throw BadUsage{"没有写出要修改什么。"};
}

std::optional<std::string> AdminArguments::Value(const std::string& option) const {
  const auto found = options_.find(option);
  if (found == options_.end()) return std::nullopt;
  return found->second;
}

int RunAdmin(const std::vector<std::string>& arguments, AdminConsole& console) {
  try {
    return RunCommand(arguments, console);
  } catch (const BadUsage& bad) {
    console.err << "luming-admin：" << bad.what << "\n" << Usage();
  } catch (const std::exception& fault) {
    console.err << "luming-admin：" << AsFailure(fault).description() << "\n";
  }
  return kAdminFailed;
}

}  // namespace luming
