#include "masterdata/catalogue_template.h"

#include <variant>

#include "output/note_templates.h"

namespace luming {

namespace {

using Sample = std::variant<std::monostate, const char*, double>;

struct TemplateColumn {
  const char* head;
  double width;  ///< in average characters
  Sample capsule{};
  Sample injection{};
};

constexpr TemplateColumn kColumns[] = {
    {"编码", 12, "000001", "000002"},
    {"品名", 24, "阿莫西林胶囊", "氯化钠注射液"},
    {"商品名", 18, "阿莫灵", {}},
    {"规格", 18, "0.25g*24粒", "250ml:2.25g"},
    {"剂型", 10, "胶囊剂", "注射剂"},
    {"单位", 7, "盒", "瓶"},
    {"最小单位", 9, "粒", "瓶"},
    {"拆零比", 8, 24.0, 1.0},
    {"剂量单位", 9, "g", "ml"},
    {"产地", 20, "望川制药", "林壑药业"},
    {"ABC", 6, "B", "A"},
    {"收费项目", 12, "西药费", "西药费"},
    {"零售价", 10, 12.6, 4.5},
    {"拆零零售价", 11, 0.525, {}},
    {"进价", 10, 9.8, 3.2},
    {"批发价", 10, 10.6, 3.6},
    {"库存量", 9, 0.0, 0.0},
    {"药房库存量", 11, 0.0, 0.0},
    {"药库库存上限", 13, 2400.0, 500.0},
    {"药库库存下限", 13, 240.0, 50.0},
    {"药房库存上限", 13, 240.0, 100.0},
    {"药房库存下限", 13, 48.0, 20.0},
    {"处方限量", 9, 48.0, 10.0},
    {"是否收费", 9, 1.0, 1.0},
    {"自划价", 8, 0.0, 0.0},
    {"合疗用药", 9, 1.0, 1.0},
    {"常规收费项目", 13, 0.0, 0.0},
    {"医保用药", 9, 1.0, 1.0},
    {"注射药品", 9, 0.0, 1.0},
    {"皮试判别", 9, 1.0, 0.0},
    {"是否停用", 9, 0.0, 0.0},
    {"批准文号", 20, "国药准字H00000001", "国药准字H00000002"},
    {"注册商标", 12},
    {"质量状况", 10, "合格", "合格"},
    {"关联医保编码", 14},
    {"关联农合编码", 14},
    {"给药途径", 10, "口服", "静滴"},
    {"用药频次", 10, "一日三次", "一日一次"},
    {"单次剂量", 10, "0.5g", "250ml"},
    {"药理作用分类", 16, "抗感染药", "水、电解质平衡药"},
};

constexpr int kRowsToFill = 200;  // that are prepared to take codes as text; more may follow

bool HoldsText(const TemplateColumn& column) {
  return !std::holds_alternative<double>(column.capsule);
}

}  // namespace

Sheet CatalogueTemplate() {
  Sheet sheet;
  sheet.name = "药品目录";
  sheet.frozen_rows = 1;
  sheet.landscape = true;
  sheet.row_heights[1] = 24;
  const int head = sheet.AddStyle({.bold = true, .align = SheetAlign::kCentre, .ruled = true});
  const int text = sheet.AddStyle({.ruled = true, .picture = "@"});
  const int number = sheet.AddStyle({.ruled = true});
  sheet.rows.resize(1 + kRowsToFill);
  for (const TemplateColumn& column : kColumns) {
    sheet.columns.push_back({column.width});
    sheet.rows.front().push_back({column.head, head});
    for (std::size_t row = 1; row < sheet.rows.size(); ++row) {
      SheetCell cell{{}, HoldsText(column) ? text : number};
      const Sample sample = row == 1 ? column.capsule : row == 2 ? column.injection : Sample{};
      if (const auto* words = std::get_if<const char*>(&sample)) cell.value = std::string(*words);
      if (const auto* figure = std::get_if<double>(&sample)) cell.value = *figure;
      sheet.rows[row].push_back(std::move(cell));
    }
  }
  return sheet;
}

void WriteCatalogueTemplate(Workbooks& workbooks, const std::filesystem::path& app_path) {
  WriteTemplate(workbooks, app_path, "药品目录.xls", CatalogueTemplate());
}

}  // namespace luming
