#include "stock/picker_settings.h"

namespace luming {

std::vector<PickerColumn> StandardColumns(const PricePictures& pictures, std::size_t count, const char* stock_caption) {
  std::vector<PickerColumn> columns = {
      kCodeColumn,
      {"品名", "YPMC"},
      {"规格", "GG"},
      {"单位", "DW"},
      {"产地", "SCCJ"},
      {stock_caption, "YKKCL"},
      {"零售价", "LSJ", pictures.LSJ},
      {"进价", "PFJ", pictures.PFJ},
      {"拆零比", "CLB"},
      {"最小单位", "ZXDW"},
      {"拆零零售价", "CLLSJ", pictures.CLLSJ},
      {"批发价", "PLJ"},
  };
  columns.resize(count, {"", ""});
  return columns;
}

std::vector<PickerColumn> WholesaleColumns() {
  return {
      kCodeColumn,       {"品名", "YPMC"},           {"规格", "GG"},    {"单位", "DW"},  {"产地", "SCCJ"},
      {"库存", "ykkcl"}, {"批发价", "plj", "0.000"}, {"拆零比", "CLB"}, {"进价", "PFJ"},
  };
}

}  // namespace luming
