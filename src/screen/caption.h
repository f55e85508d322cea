#pragma once

#include <string>
#include <string_view>

namespace luming {

/// The caption as the operator reads it: without its mnemonic ("关闭(&Q)" is "关闭") and without a colon and blanks at
/// its end.
std::string PlainCaption(std::string_view caption);

/// The upper-case letter or digit that Alt presses the caption's control with; 0 when it has none.
char Mnemonic(std::string_view caption);

}  // namespace luming
