#include <cstdio>
#include <cstdlib>

/// What a voice device's library looks like to the program; writes down what it is told.
extern "C" int dsbdll(int number, const char* text) {
  std::FILE* const file = std::fopen(std::getenv("LUMING_VOICE_LOG"), "a");
  if (!file) return 1;
  std::fprintf(file, "%d %s|", number, text);
  return std::fclose(file);
}
