// The plug-in suite's main: Qt's offscreen platform unless one is asked for,
// then one QApplication for every test.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdlib>

int main(int argc, char** argv) {
  // Test discovery runs this binary at build time without the tests'
  // environment: without a display the application would abort.
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  return RUN_ALL_TESTS();
}
