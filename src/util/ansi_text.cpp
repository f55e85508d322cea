#include "util/ansi_text.h"

#include <iconv.h>

#include <array>
#include <cstdint>
#include <memory>

#include "util/date_text.h"
#include "util/failure.h"
#include "util/text.h"

namespace luming {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr unsigned char kFirstLead = 0x81;
constexpr unsigned char kLastLead = 0xFE;
constexpr unsigned char kFirstTrail = 0x40;
constexpr unsigned char kLastTrail = 0xFE;
// The C library's GBK leaves this byte out, which code page 936 gives to the euro sign.
constexpr unsigned char kEuroByte = 0x80;
constexpr char16_t kEuroSign = 0x20AC;

struct CloseConverter {
  using pointer = iconv_t;
  void operator()(iconv_t converter) const { iconv_close(converter); }
};

/// The code page both ways, asked once from the C library, so that a conversion is a look-up on any thread.
class CodePage {
 public:
  CodePage() {
    const iconv_t opened = iconv_open("UTF-16LE", "GBK");
    if (reinterpret_cast<std::intptr_t>(opened) == -1) {
      throw Failure(failure::kFileNotFound,
                    "系统缺少代码页 936（GBK）的转换模块，请补装 C 运行库的 gconv 模块后重新启动程序。");
    }
    const std::unique_ptr<iconv_t, CloseConverter> converter(opened);
    for (int lead = kFirstLead; lead <= kLastLead; ++lead) {
      for (int trail = kFirstTrail; trail <= kLastTrail; ++trail) {
        Enter(converter.get(), static_cast<unsigned char>(lead), static_cast<unsigned char>(trail));
      }
    }
    bytes_[kEuroSign] = kEuroByte;
  }

  /// 0 when the pair is no character.
  char16_t Character(unsigned char lead, unsigned char trail) const {
    if (lead < kFirstLead || lead > kLastLead || trail < kFirstTrail || trail > kLastTrail) return 0;
    return characters_[Index(lead, trail)];
  }

  /// One byte, or two with the lead byte in the upper half; 0 when the code page has no such character.
  std::uint16_t Bytes(char32_t code_point) const { return code_point < bytes_.size() ? bytes_[code_point] : 0; }

 private:
  static constexpr std::size_t kTrails = kLastTrail - kFirstTrail + 1;

  static std::size_t Index(unsigned char lead, unsigned char trail) {
    return static_cast<std::size_t>(lead - kFirstLead) * kTrails + (trail - kFirstTrail);
  }

  void Enter(iconv_t converter, unsigned char lead, unsigned char trail) {
    std::array<char, 2> pair = {static_cast<char>(lead), static_cast<char>(trail)};
    std::array<unsigned char, 4> utf16{};
    char* in = pair.data();
    char* out = reinterpret_cast<char*>(utf16.data());
    std::size_t in_left = pair.size();
    std::size_t out_left = utf16.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter, &in, &in_left, &out, &out_left) != 0 || in_left != 0 || out_left != 2) return;
    const auto character = static_cast<char16_t>(utf16[0] | (utf16[1] << 8));
    if (character == kEuroSign) return;
    characters_[Index(lead, trail)] = character;
    bytes_[character] = static_cast<std::uint16_t>((lead << 8) | trail);
  }

  std::array<char16_t, (kLastLead - kFirstLead + 1) * kTrails> characters_{};
  std::array<std::uint16_t, 0x10000> bytes_{};
};

const CodePage& Page936() {
  static const auto page = std::make_unique<const CodePage>();
  return *page;
}

std::size_t AnsiWidth(char32_t code_point) {
  return code_point >= 0x80 && Page936().Bytes(code_point) > 0xFF ? 2 : 1;
}

}  // namespace

std::size_t AnsiLength(std::string_view utf8) {
  std::size_t length = 0;
  for (std::size_t position = 0; position < utf8.size();) length += AnsiWidth(NextCodePoint(utf8, position));
  return length;
}

std::string ToAnsi(std::string_view utf8) {
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t code_point = NextCodePoint(utf8, position);
    if (code_point < 0x80) {
      bytes += static_cast<char>(code_point);
      continue;
    }
    const std::uint16_t ansi = Page936().Bytes(code_point);
    if (ansi > 0xFF) bytes += static_cast<char>(ansi >> 8);
    bytes += ansi == 0 ? '?' : static_cast<char>(ansi & 0xFF);
  }
  return bytes;
}

std::string FromAnsi(std::string_view bytes) {
  std::string utf8;
  utf8.reserve(bytes.size() + bytes.size() / 2);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto lead = static_cast<unsigned char>(bytes[i]);
    if (lead < 0x80) {
      utf8 += bytes[i];
    } else if (lead == kEuroByte) {
      utf8 += EncodeUtf8(kEuroSign);
    } else {
      const unsigned char trail = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
      const char16_t character = Page936().Character(lead, trail);
      utf8 += EncodeUtf8(character == 0 ? kReplacement : character);
      // A bad pair loses its first byte only when the second can stand alone.
      if (character != 0 || trail >= kFirstLead) ++i;
    }
  }
  return utf8;
}

std::string CutAnsi(std::string_view utf8, std::size_t limit) {
  if (IsDate(utf8)) return std::string(utf8);
  std::string text = Trim(utf8);
  std::size_t total = 0;
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t begin = position;
    total += AnsiWidth(NextCodePoint(text, position));
    if (total > limit) {
      text.resize(begin);
      break;
    }
  }
  return text;
}

}  // namespace luming
