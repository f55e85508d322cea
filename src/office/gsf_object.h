#pragma once

#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-utils.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace luming {

struct UnrefGsf {
  void operator()(void* object) const { g_object_unref(object); }
};
/// An object of libgsf that goes with its owner.
template <class T>
using GsfObject = std::unique_ptr<T, UnrefGsf>;

/// Call it ahead of all else of libgsf. What it has to say of damaged files is no news to who runs the program.
inline void NeedGsf() {
  static const bool ready = [] {
    gsf_init();
    const GLogFunc silence = [](const gchar*, GLogLevelFlags, const gchar*, gpointer) {};
    for (const char* part : {"libgsf", "libgsf:msole", "libgsf:zip"}) {
      g_log_set_handler(part, G_LOG_LEVEL_MASK, silence, nullptr);
    }
    g_log_set_handler(nullptr, G_LOG_LEVEL_WARNING, silence, nullptr);
    return true;
  }();
  static_cast<void>(ready);
}

/// The bytes as libgsf reads them; they outlive the result.
inline GsfObject<GsfInput> GsfInputOf(std::string_view bytes) {
  NeedGsf();
  const auto* start = reinterpret_cast<const guint8*>(bytes.data());
  return GsfObject<GsfInput>(gsf_input_memory_new(start, static_cast<gsf_off_t>(bytes.size()), FALSE));
}

/// All that a part of a container holds; nothing when it cannot be read.
inline std::optional<std::string> AllOf(GsfInput* part) {
  const auto size = static_cast<std::size_t>(gsf_input_size(part));
  if (size == 0) return std::string();
  const guint8* const bytes = gsf_input_read(part, size, nullptr);
  if (!bytes) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(bytes), size);
}

}  // namespace luming
