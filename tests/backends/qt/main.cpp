#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryFile>

namespace {

// A second screen, by name, stands to the right of the first, with twice its pixels to a point.
constexpr char screens[] = R"({"screens": [
  {"name": "1", "x": 0, "y": 0, "width": 800, "height": 800, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
  {"name": "2", "x": 800, "y": 0, "width": 800, "height": 800, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}
]})";

}  // namespace

int main(int argc, char** argv) {
  QTemporaryFile desktop;
  if (!desktop.open() || desktop.write(screens) < 0 || !desktop.flush()) return 1;
  qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + desktop.fileName().toLocal8Bit());
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
