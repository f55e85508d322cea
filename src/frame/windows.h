#pragma once

#include <string_view>

#include "frame/app_context.h"

namespace luming {

/// Maximises the open form of that name; nothing when there is none.
void MaxChild(AppContext& app, std::string_view name);

bool IsFormOpen(const AppContext& app, std::string_view name);

/// Closes forms, from the first on. A form stays when it bears `keep` as its name and `caption` as its caption, or
/// `second_keep` as its name; a form that refuses stays, too.
/// @param keep        empty: only `second_keep` stays
/// @param second_keep empty: the main window
void CloseForms(AppContext& app, std::string_view keep = {}, std::string_view second_keep = {},
                std::string_view caption = {});

}  // namespace luming
