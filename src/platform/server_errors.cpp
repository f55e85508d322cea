#include "platform/server_errors.h"

#include <algorithm>
#include <array>

#include "util/failure.h"

namespace luming {

namespace {

struct Numbers {
  long native;
  long ado;
};

// Whatever is not here is an error in the statement.
constexpr std::array kNumbers = {
    Numbers{208, failure::kMissingObject},    Numbers{229, failure::kNoPermission},
    Numbers{230, failure::kNoPermission},     Numbers{241, failure::kConversion},
    Numbers{242, failure::kConversion},       Numbers{245, failure::kConversion},
    Numbers{248, failure::kDataOverflow},     Numbers{262, failure::kNoPermission},
    Numbers{515, failure::kKeyViolation},     Numbers{547, failure::kKeyViolation},
    Numbers{823, failure::kGeneralProvider},  Numbers{824, failure::kGeneralProvider},
    Numbers{948, failure::kGeneralProvider},  Numbers{5120, failure::kGeneralProvider},
    Numbers{1105, failure::kGeneralProvider}, Numbers{1205, failure::kGeneralProvider},
    Numbers{1222, failure::kGeneralProvider}, Numbers{2601, failure::kKeyViolation},
    Numbers{2627, failure::kKeyViolation},    Numbers{2628, failure::kDataOverflow},
    Numbers{3701, failure::kMissingObject},   Numbers{3906, failure::kGeneralProvider},
    Numbers{3998, failure::kGeneralProvider}, Numbers{4060, failure::kGeneralProvider},
    Numbers{8114, failure::kConversion},      Numbers{8115, failure::kDataOverflow},
    Numbers{8152, failure::kDataOverflow},    Numbers{18452, failure::kLoginRefused},
    Numbers{18456, failure::kLoginRefused},   Numbers{18470, failure::kLoginRefused},
    Numbers{18487, failure::kLoginRefused},   Numbers{18488, failure::kLoginRefused},
};

}  // namespace

long AdoNumberOf(long native) {
  const auto found = std::ranges::find(kNumbers, native, &Numbers::native);
  return found == kNumbers.end() ? failure::kSyntax : found->ado;
}

}  // namespace luming
