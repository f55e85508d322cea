#pragma once

#include <string>

#include "frame/app_context.h"
#include "screen/button.h"
#include "screen/form.h"
#include "screen/label.h"
#include "screen/picture.h"

namespace luming {

/// 关于软件. Also carries three maintenance routines that no control calls.
class about : public Form {
 public:
  static constexpr const char* kName = "about";
  explicit about(AppContext& app);

  Picture Image1{this, "Image1", Emblem::kProgram};
  Label Title{this, "Title"};
  Label Hospital{this, "Hospital"};
  Label Version{this, "Version"};
  Label Warning{this, "Warning"};
  Button Command1{this, "Command1", "确定(&O)", &about::Command1_Click, ButtonRole::kDefault};

  Layout Arrange() const override;

  /// Gives adjustments of drugs that are not split, where the old retail price is missing, the drug's present price.
  void RepairOldPrices();
  /// Enters the columns of a table as heads of import and upload.
  void FillUploadFields(const std::string& table);
  /// The rows of the screens' tree as statements, one a line. Empty after a failure, which was shown.
  std::string TreeAsStatements();

 protected:
  void Load() override;
  void FormKeyDown(KeyEvent& event) override;

 private:
  void Command1_Click() { Unload(); }

  AppContext& app_;
};

}  // namespace luming
