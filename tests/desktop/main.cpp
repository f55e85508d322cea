#include <gtest/gtest.h>

#include <QApplication>

/// Asked by the search for leaks: Qt's reader of PDF keeps a document that it could not read.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libQt6Pdf\n";
}

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  ::testing::InitGoogleTest(&argc, argv);
  QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
