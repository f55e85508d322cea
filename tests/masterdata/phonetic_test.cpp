#include "masterdata/phonetic.h"

#include "support/store_test.h"

namespace luming {
namespace {

class PhoneticTest : public StoreTest {
 protected:
  PhoneticTest() {
    Run("Insert Into GY_HZBM(HZ,PY,WB) Values('阿','A','BSKG')");
    Run("Insert Into GY_HZBM(HZ,PY,WB) Values('莫','MO','AJDU')");
    Run("Insert Into GY_HZBM(HZ,PY,WB) Values('西','X','SGHG')");
  }
};

TEST_F(PhoneticTest, CodesFollowTheTableAndKeepLatin) {
  struct Case {
    const char* text;
    const char* pinyin;
    const char* wubi;
  };
  const std::vector<Case> cases = {
      {"阿莫西", "AMOX", "BAS"},  // the whole of PY, the first letter of WB
      {" 阿 莫 100mg ", "AMO100mg", "BA100mg"},
      {"西龘阿", "XA", "SB"},  // a character that the table does not know
      {"龘", "", ""},
      {"", "", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(GetPYDM(app, c.text), c.pinyin) << c.text;
    EXPECT_EQ(GetWBDM(app, c.text), c.wubi) << c.text;
  }
}

TEST_F(PhoneticTest, AFailureGivesAnEmptyCodeAndNoMessage) {
  Run("Drop Table GY_HZBM");
  EXPECT_EQ(GetPYDM(app, "a阿"), "");
  app.Cn.reset();
  EXPECT_EQ(GetWBDM(app, "阿"), "");
  EXPECT_TRUE(desktop.boxes.empty());
}

}  // namespace
}  // namespace luming
