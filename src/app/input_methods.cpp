#include "app/input_methods.h"

#include <algorithm>
#include <array>
#include <map>

#include "util/failure.h"
#include "util/text.h"

namespace luming {

using Runner = InputMethods::Runner;
using Method = InputMethods::Method;

/// How one framework is asked. What is not running gives no list.
struct InputMethods::Framework {
  const char* name;
  std::optional<std::vector<Method>> (*list)(const Runner& run);
  std::optional<std::string> (*current)(const Runner& run);
  CommandResult (*activate)(const Runner& run, const std::string& method);
};

namespace {

using Kind = CommandResult::Kind;

std::optional<std::string> OutputOf(const Runner& run, const std::vector<std::string>& command) {
  CommandResult result = run(command);
  if (result.kind != Kind::kDone) return std::nullopt;
  return std::move(result.output);
}

std::string FirstLine(const std::string& text) {
  return Trim(text.substr(0, text.find('\n')));
}

// ---- fcitx5 ----

/// The texts of a D-Bus answer as dbus-send prints it, in order.
std::vector<std::string> TextsOf(const std::string& answer) {
  constexpr std::string_view kBefore = "string \"";
  std::vector<std::string> texts;
  for (const std::string& line : Split(answer, "\n")) {
    const std::string text = Trim(line);
    if (text.starts_with(kBefore) && text.size() > kBefore.size() && text.ends_with('"')) {
      texts.push_back(text.substr(kBefore.size(), text.size() - kBefore.size() - 1));
    }
  }
  return texts;
}

/// Asks the bus itself: asking for the framework would start one that the operator has switched off.
bool FcitxIsRunning(const Runner& run) {
  const auto answer =
      OutputOf(run, {"dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/org/freedesktop/DBus",
                     "org.freedesktop.DBus.NameHasOwner", "string:org.fcitx.Fcitx5"});
  return answer && answer->find("boolean true") != std::string::npos;
}

std::vector<std::string> AskFcitx(const Runner& run, const std::string& what, const std::string& argument = {}) {
  std::vector<std::string> command = {"dbus-send",     "--session",
                                      "--print-reply", "--dest=org.fcitx.Fcitx5",
                                      "/controller",   "org.fcitx.Fcitx.Controller1." + what};
  if (!argument.empty()) command.push_back("string:" + argument);
  return TextsOf(OutputOf(run, command).value_or(""));
}

std::optional<std::vector<Method>> ListFcitx(const Runner& run) {
  if (!FcitxIsRunning(run)) return std::nullopt;
  const std::vector<std::string> group = AskFcitx(run, "CurrentInputMethodGroup");
  if (group.empty()) return std::nullopt;

  constexpr std::size_t kTextsOfMethod = 6;  // name, title, title in its own language, icon, label, language
  std::map<std::string, std::string> titles;
  const std::vector<std::string> known = AskFcitx(run, "AvailableInputMethods");
  for (std::size_t at = 0; at + kTextsOfMethod <= known.size(); at += kTextsOfMethod) {
    titles[known[at]] = known[at + 2].empty() ? known[at + 1] : known[at + 2];
  }
  std::vector<Method> methods;
  const std::vector<std::string> members = AskFcitx(run, "InputMethodGroupInfo", group.front());
  for (std::size_t at = 1; at + 2 <= members.size(); at += 2) {  // behind the group's layout: name and layout of each
    const std::string& name = members[at];
    const bool plain = name.starts_with("keyboard-");
    methods.push_back({name, plain ? "" : titles.contains(name) ? titles[name] : name});
  }
  return methods;
}

std::optional<std::string> CurrentOfFcitx(const Runner& run) {
  const auto output = OutputOf(run, {"fcitx5-remote", "-n"});
  return output ? std::optional(FirstLine(*output)) : std::nullopt;
}

CommandResult ActivateInFcitx(const Runner& run, const std::string& method) {
  return run({"fcitx5-remote", "-s", method});
}

// ---- ibus ----

std::optional<std::string> CurrentOfIbus(const Runner& run) {
  const auto output = OutputOf(run, {"ibus", "engine"});
  return output ? std::optional(FirstLine(*output)) : std::nullopt;
}

/// The texts within single quotes.
std::vector<std::string> QuotedIn(const std::string& text) {
  std::vector<std::string> quoted;
  const std::vector<std::string> parts = Split(text, "'");
  for (std::size_t at = 1; at < parts.size(); at += 2) quoted.push_back(parts[at]);
  return quoted;
}

std::optional<std::vector<Method>> ListIbus(const Runner& run) {
  const std::optional<std::string> current = CurrentOfIbus(run);
  if (!current) return std::nullopt;
  std::map<std::string, std::string> titles;
  for (const std::string& line : Split(OutputOf(run, {"ibus", "list-engine"}).value_or(""), "\n")) {
    const std::size_t dash = line.find(" - ");
    if (dash != std::string::npos) titles[Trim(line.substr(0, dash))] = Trim(line.substr(dash + 3));
  }
  std::vector<std::string> names =
      QuotedIn(OutputOf(run, {"gsettings", "get", "org.freedesktop.ibus.general", "preload-engines"}).value_or(""));
  if (names.empty()) names = {*current};
  std::vector<Method> methods;
  for (const std::string& name : names) {
    const bool plain = name.starts_with("xkb:");
    methods.push_back({name, plain ? "" : titles.contains(name) ? titles[name] : name});
  }
  return methods;
}

CommandResult ActivateInIbus(const Runner& run, const std::string& method) {
  return run({"ibus", "engine", method});
}

// ---- The display's own layouts ----

/// Layouts as "us" or "cn(tib)", the one in use first.
std::vector<std::string> DisplayLayouts(const Runner& run) {
  std::vector<std::string> layouts;
  std::vector<std::string> variants;
  for (const std::string& line : Split(OutputOf(run, {"setxkbmap", "-query"}).value_or(""), "\n")) {
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos) continue;
    if (line.starts_with("layout")) layouts = Split(Trim(line.substr(colon + 1)), ",");
    if (line.starts_with("variant")) variants = Split(Trim(line.substr(colon + 1)), ",");
  }
  for (std::size_t at = 0; at < layouts.size() && at < variants.size(); ++at) {
    if (!variants[at].empty()) layouts[at] += "(" + variants[at] + ")";
  }
  return layouts;
}

std::optional<std::vector<Method>> ListDisplay(const Runner& run) {
  std::vector<Method> methods;
  for (const std::string& layout : DisplayLayouts(run)) methods.push_back({layout, ""});
  if (methods.empty()) return std::nullopt;
  return methods;
}

std::optional<std::string> CurrentOfDisplay(const Runner& run) {
  const std::vector<std::string> layouts = DisplayLayouts(run);
  return layouts.empty() ? std::nullopt : std::optional(layouts.front());
}

CommandResult ActivateInDisplay(const Runner& run, const std::string& method) {
  std::vector<std::string> layouts = DisplayLayouts(run);
  const auto wanted = std::ranges::find(layouts, method);
  if (wanted == layouts.begin() || wanted == layouts.end()) return {Kind::kDone, {}};
  std::rotate(layouts.begin(), wanted, wanted + 1);
  std::vector<std::string> variants;
  for (std::string& layout : layouts) {
    const std::size_t bracket = layout.find('(');
    variants.push_back(bracket == std::string::npos ? "" : layout.substr(bracket + 1, layout.size() - bracket - 2));
    layout = layout.substr(0, bracket);
  }
  return run({"setxkbmap", "-layout", Join(layouts, ","), "-variant", Join(variants, ",")});
}

constexpr std::array kFrameworks = {
    InputMethods::Framework{"fcitx5", ListFcitx, CurrentOfFcitx, ActivateInFcitx},
    InputMethods::Framework{"ibus", ListIbus, CurrentOfIbus, ActivateInIbus},
    InputMethods::Framework{"setxkbmap", ListDisplay, CurrentOfDisplay, ActivateInDisplay},
};

KeyboardLayout LayoutOf(const Method& method) {
  return {InputMethods::HandleOf(method.name), method.description};
}

}  // namespace

CommandResult InputMethods::RunBriefly(const std::vector<std::string>& command) {
  constexpr std::chrono::milliseconds kPatience{700};
  return RunCommand(command, kPatience);
}

std::int32_t InputMethods::HandleOf(const std::string& name) {
  std::uint32_t hash = 2166136261U;  // FNV-1a: the handle is kept in the operator's row and must not change
  for (const char byte : name) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
  const auto handle = static_cast<std::int32_t>(hash & 0x7FFFFFFFU);
  return handle == 0 ? 1 : handle;
}

std::vector<KeyboardLayout> InputMethods::List() {
  listed_ = true;
  silent_ = false;
  framework_ = nullptr;
  methods_.clear();
  for (const Framework& framework : kFrameworks) {
    std::optional<std::vector<Method>> found = framework.list(run_);
    if (!found) continue;
    framework_ = &framework;
    methods_ = std::move(*found);
    break;
  }
  std::vector<KeyboardLayout> layouts;
  for (const Method& method : methods_) layouts.push_back(LayoutOf(method));
  return layouts;
}

std::optional<KeyboardLayout> InputMethods::Current() {
  if (!listed_) List();
  const std::optional<std::string> name = framework_ ? framework_->current(run_) : std::nullopt;
  const auto found = std::ranges::find(methods_, name.value_or(""), &Method::name);
  return found == methods_.end() ? std::nullopt : std::optional(LayoutOf(*found));
}

void InputMethods::Activate(std::int32_t handle) {
  if (handle == 0 || silent_) return;
  if (!listed_) List();
  const auto found =
      std::ranges::find_if(methods_, [&](const Method& method) { return HandleOf(method.name) == handle; });
  if (found == methods_.end()) return;
  const CommandResult result = framework_->activate(run_, found->name);
  if (result.kind == Kind::kDone) return;
  silent_ = result.kind == Kind::kTooLate;
  const std::string title = found->description.empty() ? found->name : found->description;
  throw Failure(failure::kInvalidCall,
                "无法切换到输入法“" + title + "”：" + framework_->name + (silent_ ? " 没有响应。" : " 没有接受。"));
}

}  // namespace luming
