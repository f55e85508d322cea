#include "office/xls_styles.h"

#include <algorithm>
#include <string>

namespace luming {

namespace {

constexpr unsigned kStandingFormats = 16;  // fifteen styles of the format's own and the default cell
constexpr unsigned kStandingFonts = 4;     // number 4 does not exist: further fonts count from 5
constexpr unsigned kFirstPicture = 164;    // below stand the built-in number formats
constexpr unsigned kAutomaticColour = 0x40;
constexpr unsigned kThinLine = 1;
constexpr unsigned kParentIsNormal = 0x0001;  // locked, as cells are unless a sheet says otherwise
constexpr unsigned kStyleFormat = 0xFFF5;
constexpr unsigned kAllAttributesOwn = 0xFC;

void WriteFont(BiffStream& stream, int points, bool bold) {
  constexpr unsigned kNormalWeight = 400, kBoldWeight = 700, kSimplifiedChinese = 134, kTwipsOfAPoint = 20;
  BiffBytes font;
  font.U16(static_cast<unsigned>(points) * kTwipsOfAPoint).U16(bold ? 1 : 0).U16(0x7FFF);
  font.U16(bold ? kBoldWeight : kNormalWeight).U16(0).U8(0).U8(0).U8(kSimplifiedChinese).U8(0).ShortText("宋体");
  stream.Record(0x0031, font);
}

struct Format {
  unsigned font = 0;
  unsigned picture = 0;
  unsigned kind = kParentIsNormal;
  unsigned alignment = 0x20;  // bottom
  unsigned own = 0;
  bool ruled = false;
};

void WriteFormat(BiffStream& stream, const Format& format) {
  constexpr unsigned kWhitePattern = 0x20C0;
  BiffBytes body;
  body.U16(format.font).U16(format.picture).U16(format.kind).U8(format.alignment).U8(0).U8(0).U8(format.own);
  if (format.ruled) {
    const unsigned lines = kThinLine | kThinLine << 4 | kThinLine << 8 | kThinLine << 12;
    body.U32(lines | kAutomaticColour << 16 | kAutomaticColour << 23).U32(kAutomaticColour | kAutomaticColour << 7);
  } else {
    body.U32(0).U32(0);
  }
  body.U16(kWhitePattern);
  stream.Record(0x00E0, body);
}

unsigned Alignment(const SheetStyle& style) {
  constexpr unsigned kWrap = 0x08, kMiddle = 0x10;
  const unsigned across = style.align == SheetAlign::kLeft     ? 1
                          : style.align == SheetAlign::kCentre ? 2
                          : style.align == SheetAlign::kRight  ? 3
                                                               : 0;
  return across | kMiddle | (style.wrap ? kWrap : 0);
}

std::vector<std::string> PicturesOf(const std::vector<SheetStyle>& styles) {
  std::vector<std::string> pictures;
  for (const SheetStyle& style : styles) {
    if (!style.picture.empty() && std::ranges::find(pictures, style.picture) == pictures.end()) {
      pictures.push_back(style.picture);
    }
  }
  return pictures;
}

unsigned PictureNumber(const std::vector<std::string>& pictures, const std::string& picture) {
  if (picture.empty()) return 0;
  return kFirstPicture + static_cast<unsigned>(std::ranges::find(pictures, picture) - pictures.begin());
}

}  // namespace

void WriteXlsStyles(BiffStream& stream, const std::vector<SheetStyle>& styles) {
  for (unsigned i = 0; i < kStandingFonts; ++i) WriteFont(stream, SheetStyle().points, false);
  for (const SheetStyle& style : styles) WriteFont(stream, style.points, style.bold);

  const std::vector<std::string> pictures = PicturesOf(styles);
  for (const std::string& picture : pictures) {
    stream.Record(0x041E, BiffBytes().U16(PictureNumber(pictures, picture)).LongText(picture));
  }

  WriteFormat(stream, {.kind = kStyleFormat});
  for (unsigned i = 1; i < kStandingFormats - 1; ++i) {
    WriteFormat(stream, {.font = i < 3 ? 1U : i < 5 ? 2U : 0U, .kind = kStyleFormat, .own = 0xF4});
  }
  WriteFormat(stream, {});
  for (std::size_t i = 0; i < styles.size(); ++i) {
    WriteFormat(stream, {.font = kStandingFonts + 1 + static_cast<unsigned>(i),
                         .picture = PictureNumber(pictures, styles[i].picture),
                         .alignment = Alignment(styles[i]),
                         .own = kAllAttributesOwn,
                         .ruled = styles[i].ruled});
  }
  constexpr unsigned kBuiltInNormal = 0x8000;
  stream.Record(0x0293, BiffBytes().U16(kBuiltInNormal).U8(0).U8(0xFF));
}

unsigned XlsFormatOf(int style) {
  return kStandingFormats + static_cast<unsigned>(style);
}

}  // namespace luming
