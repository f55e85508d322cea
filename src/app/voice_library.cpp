#include "app/voice_library.h"

#include <dlfcn.h>

#include "util/ansi_text.h"

namespace luming {

void VoiceLibrary::dsbdll(int number, const std::string& text) {
  if (!routine_) routine_ = Bind();
  if (routine_) routine_(number, ToAnsi(text).c_str());
}

VoiceLibrary::Routine VoiceLibrary::Bind() const {
  constexpr const char* kFile = "libcky95h.so";
  void* library = nullptr;
  for (const std::filesystem::path& directory : directories_) {
    if (!library) library = dlopen((directory / kFile).c_str(), RTLD_NOW | RTLD_LOCAL);
  }
  if (!library) library = dlopen(kFile, RTLD_NOW | RTLD_LOCAL);
  return library ? reinterpret_cast<Routine>(dlsym(library, "dsbdll")) : nullptr;
}

}  // namespace luming
