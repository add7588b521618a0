// Constraints between baselines, with real fonts: where the letters stand in the picture on the screen.
#include <QImage>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class BaselineTest : public QtTest {
 protected:
  BaselineTest() {
    widget.resize(400, 160);
    widget.setAutoFillBackground(true);
    QPalette white;
    white.setColor(QPalette::Window, Qt::white);
    widget.setPalette(white);
  }

  // Black capitals, which stand on the baseline and have nothing below it.
  Ref<NSTextField> addLabel(double size, const std::string& text = "HEH") {
    const auto label = NSTextField::labelWithString(text);
    label->setFont(NSFont::systemFontOfSize(size));
    label->setTextColor(NSColor::blackColor());
    place(label);
    return label;
  }
  void place(const Ref<NSControl>& view) {
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    content->addSubview(view);
    const Ref<NSView> last = controls.empty() ? nullptr : controls.back();
    constrain(view, NSLayoutAttributeLeft, last ? last : content, last ? NSLayoutAttributeRight : NSLayoutAttributeLeft, 6);
    controls.push_back(view);
  }
  static void constrain(const Ref<NSView>& item, NSLayoutAttribute attribute, const Ref<NSView>& other,
                        NSLayoutAttribute otherAttribute, CGFloat constant = 0) {
    NSLayoutConstraint::constraintWithItem(item, attribute, NSLayoutRelationEqual, other, otherAttribute, 1, constant)
        ->setActive(true);
  }
  // For each control the lowest row of device pixels in which its middle has something dark; from the top.
  std::vector<int> feet(CGFloat marginBelow = 0) {
    widget.show();
    settle();
    const QImage picture = widget.grab().toImage();
    scale = picture.devicePixelRatio();
    std::vector<int> result;
    for (const Ref<NSControl>& control : controls) {
      const CGRect frame = control->frame();
      const double top = content->bounds().size.height - CGRectGetMaxY(frame);
      int foot = -1;
      for (int y = int(top * scale); y < int((top + frame.size.height - marginBelow) * scale); ++y)
        for (int x = int((frame.origin.x + 6) * scale); x < int((CGRectGetMaxX(frame) - 6) * scale); ++x)
          if (qGray(picture.pixel(x, y)) < 110) foot = y;
      result.push_back(foot);
    }
    return result;
  }
  static void expectAlike(const std::vector<int>& feet) {
    for (const int foot : feet) {
      EXPECT_GT(foot, 0);
      EXPECT_NEAR(foot, feet[0], 1) << testing::PrintToString(feet);
    }
  }

  Ref<NSView> content = make<NSView>(CGRect{0, 0, 400, 160});
  QtViewWidget widget{content};
  double scale = 1;
  std::vector<Ref<NSControl>> controls;
};

TEST_F(BaselineTest, LettersOfAllSizesStandOnTheFirstBaseline) {
  for (const double size : {26.0, 11.0, 13.0, 17.5, 9.0}) addLabel(size);
  constrain(controls[0], NSLayoutAttributeTop, content, NSLayoutAttributeTop, 20);
  for (std::size_t i = 1; i < controls.size(); ++i)
    constrain(controls[i], NSLayoutAttributeFirstBaseline, controls[0], NSLayoutAttributeFirstBaseline);
  expectAlike(feet());
}

TEST_F(BaselineTest, TheLastLineStandsOnTheLastBaseline) {
  addLabel(14, "HEH\nHEH\nHEH");
  addLabel(24);
  addLabel(10, "HEH\nHEH");
  constrain(controls[0], NSLayoutAttributeTop, content, NSLayoutAttributeTop, 20);
  for (std::size_t i = 1; i < controls.size(); ++i)
    constrain(controls[i], NSLayoutAttributeLastBaseline, controls[0], NSLayoutAttributeLastBaseline);
  expectAlike(feet());
}

TEST_F(BaselineTest, TheFirstLineOfOneStandsBesideTheLastLineOfAnother) {
  addLabel(13, "HEH\nHEH");
  addLabel(20);
  constrain(controls[0], NSLayoutAttributeTop, content, NSLayoutAttributeTop, 20);
  constrain(controls[1], NSLayoutAttributeFirstBaseline, controls[0], NSLayoutAttributeLastBaseline);
  expectAlike(feet());
}

TEST_F(BaselineTest, AFieldWithABezelStandsBesideItsLabel) {
  addLabel(20);
  const auto field = make<NSTextField>(CGRect{});
  field->setStringValue("HEHEHEH");
  field->setFont(NSFont::systemFontOfSize(12));
  field->setTextColor(NSColor::blackColor());
  place(field);
  constrain(controls[0], NSLayoutAttributeTop, content, NSLayoutAttributeTop, 20);
  constrain(field, NSLayoutAttributeWidth, nullptr, NSLayoutAttributeNotAnAttribute, 90);
  constrain(field, NSLayoutAttributeFirstBaseline, controls[0], NSLayoutAttributeFirstBaseline);
  expectAlike(feet(/*marginBelow=*/3));
}

TEST_F(BaselineTest, ADistanceBetweenBaselinesIsInPoints) {
  addLabel(24);
  addLabel(12);
  constrain(controls[0], NSLayoutAttributeTop, content, NSLayoutAttributeTop, 20);
  constrain(controls[1], NSLayoutAttributeFirstBaseline, controls[0], NSLayoutAttributeFirstBaseline, 40);
  const auto rows = feet();
  EXPECT_NEAR((rows[1] - rows[0]) / scale, 40, 1.01);
}

}  // namespace

}  // namespace tessaluna::backend::qt
