// The plug-in suite's main: Qt's offscreen platform unless one is asked for,
// then one QApplication for every test.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>
#include <optional>

#include "support/test_support.h"

int main(int argc, char** argv) {
  // Test discovery runs this binary at build time without the tests'
  // environment: without a display the application would abort.
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  // Panels remember typed texts in the user's preference files and keep
  // watermarks in the machine's shared folder; the suite keeps its own of
  // both, so no test reads or changes the user's or the machine's.
  std::optional<zorva::test::TempDir> preferences;
  if (!std::getenv("ZORVA_PREFERENCES_DIR")) {
    preferences.emplace();
    setenv("ZORVA_PREFERENCES_DIR", preferences->path().c_str(), 1);
  }
  std::optional<zorva::test::TempDir> shared;
  if (!std::getenv("ZORVA_SHARED_DIR")) {
    shared.emplace();
    setenv("ZORVA_SHARED_DIR", shared->path().c_str(), 1);
  }
  ::testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
