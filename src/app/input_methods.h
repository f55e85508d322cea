#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/run_command.h"
#include "platform/devices.h"

namespace luming {

/// The ways of typing that the session offers: those of the input framework that is running (fcitx5, else ibus), or the
/// keyboard layouts of the display where none is. All of it by the frameworks' own commands, none of which is waited
/// for longer than a moment.
class InputMethods {
 public:
  using Runner = std::function<CommandResult(const std::vector<std::string>& command)>;

  explicit InputMethods(Runner run = RunBriefly) : run_(std::move(run)) {}

  std::vector<KeyboardLayout> List();
  std::optional<KeyboardLayout> Current();
  /// Failure when the framework refuses or does not answer; one that once did not answer is left alone until the next
  /// List.
  void Activate(std::int32_t handle);

  /// The handle of a layout or method by the name that its framework knows it by.
  static std::int32_t HandleOf(const std::string& name);

  /// What one framework offers under which name.
  struct Method {
    std::string name;
    std::string description;  ///< empty for a plain layout
  };
  struct Framework;

 private:
  static CommandResult RunBriefly(const std::vector<std::string>& command);

  Runner run_;
  const Framework* framework_ = nullptr;  // the one that answered last; null when none does
  std::vector<Method> methods_;
  bool listed_ = false;
  bool silent_ = false;
};

}  // namespace luming
