#include "masterdata/phonetic.h"

#include "platform/statement.h"
#include "util/text.h"

namespace luming {

namespace {

bool IsSingleByte(std::string_view character) {
  return character.size() == 1;
}

/// @param query   up to the character
/// @param letters how many characters of the stored code count
std::string PhoneticCode(AppContext& app, std::string_view text, const std::string& query, std::size_t letters) {
  try {
    std::string code;
    for (const std::string& character : Characters(Trim(Replace(text, " ", "")))) {
      if (IsSingleByte(character)) {
        code += character;
        continue;
      }
      if (!app.Cn) throw StandardFailure(failure::kBadConnection);
      const Recordset found = app.Cn->Execute(query + Quoted(character));
      if (found.RecordCount() > 0) code += Left(found.Field(0).TextOrEmpty(), letters);
    }
    return code;
  } catch (const Failure&) {
    return {};
  }
}

}  // namespace

std::string GetPYDM(AppContext& app, std::string_view text) {
  return PhoneticCode(app, text, "SELECT PY FROM GY_HZBM WHERE HZ=", std::string::npos);
}

std::string GetWBDM(AppContext& app, std::string_view text) {
  return PhoneticCode(app, text, "SELECT WB FROM GY_HZBM WHERE HZ=", 1);
}

}  // namespace luming
