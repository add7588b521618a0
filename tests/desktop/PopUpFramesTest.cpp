// What is visible of a pop-up that opens, grows and closes: another process takes pictures of the screen.
#include <QProcess>
#include <map>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;

namespace {

class PopUpFrames : public harness::QtDesktop {};

TEST_F(PopUpFrames, EachShowsOnlyThePopUpOrWhatIsBehindIt) {
  const auto window = make<NSWindow>(CGRect{100, 300, 400, 300}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  window->setBackgroundColor(NSColor::greenColor());
  window->makeKeyAndOrderFront(nullptr);
  ASSERT_TRUE(eventually([&] { return window->isKeyWindow(); }));
  settle();
  const CGRect small{150, 400, 200, 40}, large{150, 360, 200, 80};
  const auto popUp = make<NSWindow>(small, NSWindowStyleMaskBorderless, NSBackingStoreBuffered, true);
  popUp->setBackgroundColor(NSColor::redColor());

  QProcess camera;
  // The screen is 1024 points high.
  camera.start(QCoreApplication::applicationFilePath(), {"camera", "150", "584", "200", "80"});
  ASSERT_TRUE(eventually([&] { return camera.canReadLine(); }));
  camera.readLine();
  for (int phase = 0; camera.state() != QProcess::NotRunning; ++phase) {
    switch (phase % 3) {
      case 0: window->addChildWindow(popUp, NSWindowAbove); break;
      case 1: popUp->setFrame(large, true); break;
      case 2: popUp->orderOut(nullptr); popUp->setFrame(small, false);
    }
    for (int i = 0; i < 3; ++i) {
      QApplication::processEvents();
      QThread::msleep(1);
    }
  }
  std::map<std::string, int> pictures;
  while (camera.canReadLine()) ++pictures[camera.readLine().trimmed().toStdString()];
  const std::string without = "#00ff00", partly = "#00ff00 #ff0000", whole = "#ff0000";
  EXPECT_GT(pictures[without], 0);
  EXPECT_GT(pictures[partly], 0);
  EXPECT_GT(pictures[whole], 0);
  EXPECT_EQ(pictures.size(), 3u) << testing::PrintToString(pictures);
  popUp->close();
}

}  // namespace
