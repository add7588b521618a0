// The edges of a field and its pop-up in pictures of the screen, to the device pixel, at the scale of the run.
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

struct RedField : NSTextField {
  explicit RedField(CGRect frame) : NSTextField(frame) {}
  void drawRect(CGRect) override {
    NSColor::redColor()->setFill();
    NSRectFill(bounds());
  }
};
struct BlueView : NSView {
  explicit BlueView(CGRect frame) : NSView(frame) { setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable); }
  void drawRect(CGRect) override {
    NSColor::blueColor()->setFill();
    NSRectFill(bounds());
  }
};

// In device pixels; the right edge is the first pixel that is no longer covered. A half-covered pixel may or may not count.
struct Edges {
  int left = -1, right = -1;            // of the pixels that are covered by more than half
  int outerLeft = -1, outerRight = -1;  // and with those that are covered by about half
  bool isThere() const { return left >= 0; }
};
void PrintTo(const Edges& edges, std::ostream* out) {
  *out << edges.left << " (" << edges.outerLeft << ") to " << edges.right << " (" << edges.outerRight << ")";
}
bool areShared(const Edges& a, const Edges& b) {
  const auto isOneOf = [](int edge, int x, int y) { return edge == x || edge == y; };
  return isOneOf(a.left, b.left, b.outerLeft) && isOneOf(a.right, b.right, b.outerRight);
}

// Whether the pixel has at least this share of the color.
bool shows(QRgb pixel, QRgb color, double share) {
  const auto differ = [&](int x, int y) { return std::abs(x - y) > 255 * (1 - share); };
  return !differ(qRed(pixel), qRed(color)) && !differ(qGreen(pixel), qGreen(color)) && !differ(qBlue(pixel), qBlue(color));
}

// The edges of what has the color, in a row of the picture.
Edges edgesOf(QRgb color, const QImage& picture, int y) {
  Edges edges;
  for (int x = 0; x < picture.width(); ++x) {
    const QRgb pixel = picture.pixel(x, y);
    if (shows(pixel, color, 0.4)) {
      if (edges.outerLeft < 0) edges.outerLeft = x;
      edges.outerRight = x + 1;
    }
    if (!shows(pixel, color, 0.6)) continue;
    if (edges.left < 0) edges.left = x;
    edges.right = x + 1;
  }
  return edges;
}
// In a column, from the top: how many pixels are between the lower end of the first color and the upper end of the second.
int gapBetween(const QImage& picture, int x, QRgb above, QRgb below) {
  int lowerEnd = -1, upperEnd = -1;
  for (int y = 0; y < picture.height(); ++y) {
    if (shows(picture.pixel(x, y), above, 0.6)) lowerEnd = y + 1;
    if (shows(picture.pixel(x, y), below, 0.6) && upperEnd < 0) upperEnd = y;
  }
  return upperEnd - lowerEnd;
}

class PopUpEdges : public harness::QtDesktop {
 protected:
  PopUpEdges() {
    NSNib::registerFactory("edges.row", [](NSObject&) -> Ref<NSObject> {
      const auto row = make<HighlightingView>(CGRect{0, 0, 50, 40});
      row->addSubview(make<BlueView>(row->bounds()));
      return row;
    });
    xdotool({"mousemove", "5", "5"});
    controller_->setSuggestionPrototype("edges.row");
    controller_->setSuggestions(std::vector<Suggestion>{{"a", std::nullopt}});
  }
  ~PopUpEdges() override { controller_->cancelSuggestions(); }

  QImage picture() { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }
  // Waits until both are visible.
  void expectSharedEdges(const std::string& where) {
    constexpr QRgb red = qRgb(255, 0, 0), blue = qRgb(0, 0, 255);
    Edges field, popUp;
    QImage seen;
    EXPECT_TRUE(eventually([&] {
      seen = picture();
      field = popUp = Edges();
      for (int y = 0; y < seen.height(); y += 4) {
        if (const Edges found = edgesOf(red, seen, y); found.isThere()) field = found;
        if (const Edges found = edgesOf(blue, seen, y); found.isThere()) popUp = found;
      }
      return field.isThere() && areShared(popUp, field);
    })) << where
        << ": the field is from " << testing::PrintToString(field) << ", the pop-up " << testing::PrintToString(popUp);
    const double scale = QGuiApplication::primaryScreen()->devicePixelRatio();
    EXPECT_NEAR(gapBetween(seen, (field.left + field.right) / 2, red, blue), 2 * scale, 1) << where;
  }

  Ref<SuggestionsWindowController> controller_ = make<SuggestionsWindowController>();
};

TEST_F(PopUpEdges, AreSharedWithAFieldInAWidgetWhereverItIs) {
  QWidget window;
  const auto view = make<NSView>(CGRect{0, 0, 201, 26});
  const auto field = make<RedField>(view->bounds());
  field->setAutoresizingMask(NSViewWidthSizable);
  view->addSubview(field);
  auto* widget = new tessaluna::backend::qt::QtViewWidget(view, &window);
  window.setStyleSheet("background: #00ff00");
  window.setGeometry(100, 100, 400, 200);
  window.show();
  ASSERT_TRUE(eventually([&] { return window.isActiveWindow() && window.windowHandle()->isExposed(); }));
  settle();
  for (int i = 0; i < 18; ++i) {
    window.move(100 + i, 100 + 3 * i);
    widget->setGeometry(20 + i % 5, 20 + i % 3, 201 + i % 4, 26);
    settle();
    controller_->beginForTextField(field);
    expectSharedEdges("place " + std::to_string(i));
    controller_->cancelSuggestions();
  }
}

TEST_F(PopUpEdges, AreSharedWithAFieldInAWindowThatMoves) {
  const auto window = make<NSWindow>(CGRect{100, 300, 400, 200}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  window->setBackgroundColor(NSColor::greenColor());
  const auto field = make<RedField>(CGRect{21, 120, 203, 25});
  window->contentView()->addSubview(field);
  window->makeKeyAndOrderFront(nullptr);
  ASSERT_TRUE(eventually([&] { return window->isKeyWindow(); }));
  settle();
  controller_->beginForTextField(field);
  expectSharedEdges("at first");
  for (int i = 1; i < 7; ++i) {
    window->setFrame({{100.0 + 5 * i, 300.0 + 3 * i}, {400, 200}}, true);
    settle();
    controller_->parentControlMoved();
    expectSharedEdges("move " + std::to_string(i));
  }
  window->close();
}

}  // namespace
