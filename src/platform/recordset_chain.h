#pragma once

#include <vector>

#include "platform/recordset.h"

namespace luming {

/// The results of one text as one recordset: the first, with the others behind it. Closed when there is none.
Recordset Chained(std::vector<Recordset> results);

}  // namespace luming
