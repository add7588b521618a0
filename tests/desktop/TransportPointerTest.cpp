// The gallery's transport bar under a real pointer and keyboard: the X server's, which xdotool operates.
#include <QLineEdit>
#include <QWidget>
#include <QWindow>

#include <algorithm>

#include "gallery/transport/TransportHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/harness/transportParts.h"

using namespace tessaluna::platform;
using gallery::SimulatedPlayer;
using gallery::TransportHost;

namespace {

// About two points per second of the song.
constexpr int barWidth = 1000, barHeight = 52;
constexpr double songSeconds = 320;

class TransportPointer : public harness::QtDesktop {
 protected:
  TransportPointer() {
    host_.setReport([this](const std::string& what) { reports_.push_back(what); });
    host_.player().setLoadingSpeed(100);
    host_.advance(1);
    window_.setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    bar_.setGeometry(20, 60, barWidth, barHeight);
    field_.setGeometry(20, 10, 200, 30);
    window_.setGeometry(100, 120, barWidth + 40, 160);
  }
  ~TransportPointer() override { xdotool({"mouseup", "1", "mousemove", "5", "5"}); }
  void SetUp() override {
    xdotool({"mousemove", "5", "5"});
    window_.show();
    ASSERT_TRUE(eventually([&] { return window_.windowHandle() && window_.windowHandle()->isExposed(); }));
    window_.activateWindow();
    field_.setFocus();
    settle();
  }

  // In the bar, from its upper left corner.
  void movePointerTo(int x, int y) {
    const QPoint place = bar_.mapToGlobal(QPoint(x, y));
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y())});
  }
  // Where the middle of the knob is at that time.
  int xOfTime(double seconds) const {
    const CGRect slider = host_.bar()->slider()->frame();
    return int(slider.origin.x + 1.5 + (slider.size.width - 3) * seconds / songSeconds);
  }
  void movePointerToTime(double seconds) {
    movePointerTo(xOfTime(seconds), int(barHeight - CGRectGetMidY(host_.bar()->slider()->frame())));
  }
  Ref<NSButton> button(const std::string& name) {
    return std::dynamic_pointer_cast<NSButton>(harness::transportControl(*host_.bar(), name));
  }
  void movePointerToButton(const std::string& name) {
    movePointerTo(int(CGRectGetMidX(button(name)->frame())), barHeight / 2);
  }
  double position() { return host_.bar()->slider()->position(); }
  bool isReported(const std::string& start) {
    return eventually([&] {
      host_.advance(0.01);
      return std::any_of(reports_.begin(), reports_.end(), [&](const std::string& one) { return one.starts_with(start); });
    });
  }

  TransportHost host_{{{"First", songSeconds, 44100}, {"Second", 95, 96000}}};
  std::vector<std::string> reports_;
  QWidget window_;
  QLineEdit field_{&window_};
  tessaluna::backend::qt::QtViewWidget bar_{host_.bar(), &window_};
};

}  // namespace

TEST_F(TransportPointer, DraggingTheKnobSeeksAtTheRelease) {
  movePointerToTime(100);
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return std::abs(position() - 100) < 2; }));
  movePointerToTime(300);
  EXPECT_TRUE(eventually([&] { return std::abs(position() - 300) < 2; }));
  movePointerTo(xOfTime(300), 200);
  EXPECT_TRUE(reports_.empty()) << "below the window it still holds the knob";
  xdotool({"mouseup", "1"});
  EXPECT_TRUE(isReported("seek "));
  EXPECT_EQ(reports_.size(), 1u);
  EXPECT_NEAR(position(), 300, 2);
}

TEST_F(TransportPointer, AClickOnTheSliderLeavesTheKeyboardInTheField) {
  movePointerToTime(200);
  xdotool({"click", "1"});
  EXPECT_TRUE(isReported("seek 3:"));
  EXPECT_EQ(QApplication::focusWidget(), &field_);
  xdotool({"key", "a"});
  EXPECT_TRUE(eventually([&] { return field_.text() == "a"; }));
}

TEST_F(TransportPointer, TabReachesTheSliderAndItsKeysSeek) {
  movePointerToTime(200);
  xdotool({"click", "1"});
  EXPECT_TRUE(isReported("seek"));
  // Past the six buttons.
  xdotool({"key", "--repeat", "7", "Tab"});
  ASSERT_TRUE(eventually([&] { return host_.bar()->slider()->isAccessibilityFocused(); }));
  const double start = position();
  xdotool({"key", "Right"});
  EXPECT_TRUE(eventually([&] { return std::abs(position() - start - 5) < 0.5; }));
  xdotool({"key", "shift+Left"});
  EXPECT_TRUE(eventually([&] { return std::abs(position() - start + 25) < 0.5; }));
  xdotool({"key", "Prior"});
  EXPECT_TRUE(eventually([&] { return std::abs(position() - start - 35) < 0.5; }));
  xdotool({"key", "Home"});
  EXPECT_TRUE(eventually([&] { return position() < 0.5; }));
}

TEST_F(TransportPointer, TheWheelSeeksByFiveSeconds) {
  movePointerToTime(300);
  xdotool({"click", "4"});
  EXPECT_TRUE(isReported("seek 0:0"));
  EXPECT_GT(position(), 4);
}

TEST_F(TransportPointer, AButtonActsOnlyWhenReleasedOverIt) {
  const Ref<NSButton> play = button("Play");
  movePointerToButton("Play");
  xdotool({"mousedown", "1"});
  EXPECT_TRUE(eventually([&] { return play->isHighlighted(); }));
  movePointerToButton("Repeat");
  EXPECT_TRUE(eventually([&] { return !play->isHighlighted(); }));
  xdotool({"mouseup", "1"});
  EXPECT_FALSE(host_.player().isPlaying());
  movePointerToButton("Play");
  xdotool({"click", "1"});
  EXPECT_TRUE(isReported("play"));
}

TEST_F(TransportPointer, TheSpaceBarPressesAndTogglesTheButtonsThatTheTabKeyReaches) {
  xdotool({"key", "--repeat", "5", "Tab"});
  xdotool({"key", "space"});
  EXPECT_TRUE(isReported("shuffle on"));
}
