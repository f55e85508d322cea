#include "stock/line_grid.h"

#include "support/app_test.h"

namespace luming {
namespace {

class LinesForm : public Form {
 public:
  LinesForm(AppContext& app, const LineHabits& habits)
      : Form(app.forms, "LinesForm", "lines", WindowKind::kChild), lines(this, app, {"编码", "数量"}, habits) {}
  Layout Arrange() const override { return Column({lines}); }
  LineGrid lines;
};

using LineGridTest = AppTest;

TEST_F(LineGridTest, AParkingPlaceThatCannotBeUsedIsNamedAndTheLinesStay) {
  app.KFMC = "西药库";
  const LineHabits habits{{}, {}, AfterDelete::kNothing, ScrollTo::kLastRow, Duplicates::kRefused, "RYYP.Dat"};
  LinesForm form(app, habits);
  form.lines.SetMaxRows(1);
  form.lines.SetText(1, 1, "T0001");
  const std::filesystem::path file = home / "西药库RYYP.Dat";
  const auto told = [&] {
    const std::vector<std::string> texts = desktop.TakeBoxTexts();
    return texts.empty() ? "nothing" : texts.back();
  };

  std::filesystem::create_symlink(file, file);
  desktop.answers = {Answer::kYes, Answer::kYes};
  form.lines.LoadParked();
  EXPECT_NE(told().find("错误描述：路径/文件访问错误：" + file.string()), std::string::npos);
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  form.lines.LoadParked();
  EXPECT_NE(told().find(file.string() + "（不是普通文件）"), std::string::npos);
  form.lines.Park();
  EXPECT_NE(told().find(file.string()), std::string::npos);
  EXPECT_EQ(form.lines.Text(1, 1), "T0001");
}

}  // namespace
}  // namespace luming
