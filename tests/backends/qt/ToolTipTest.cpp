#include "tessaluna/backends/qt/ToolTip.h"

#include <QApplication>
#include <QProxyStyle>
#include <QToolTip>
#include <memory>

#include "tests/backends/qt/EmbeddedViews.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

class ToolTipTest : public EmbeddedViews {
 protected:
  ~ToolTipTest() override {
    QToolTip::hideText();
    waitForNone();
  }
  // Onto the view of the tests below, by way of another point: where the pointer was left before, it may be at rest.
  static void moveOnto(const NSWindow& window) {
    QTest::mouseMove(&qWindowOf(window), {100, 10});
    QTest::mouseMove(&qWindowOf(window), {20, 50});
  }
  static bool waitForSome() {
    return QTest::qWaitFor([] { return QToolTip::isVisible(); });
  }
  static bool waitForNone(int milliseconds = 5000) {
    return QTest::qWaitFor([] { return !QToolTip::isVisible(); }, milliseconds);
  }
};

// Wants tool tips to show as soon as the pointer rests.
class ImpatientStyle : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override {
    return hint == SH_ToolTip_WakeUpDelay ? 0 : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

// The style of the program while it lives.
class Impatience {
 public:
  Impatience() { QApplication::setStyle(new ImpatientStyle); }
  ~Impatience() { QApplication::setStyle(before_); }

 private:
  const QString before_ = QApplication::style()->name();
};

}  // namespace

TEST_F(ToolTipTest, ShowsWhenThePointerRestsOverTheViewAndGoesWhenItLeavesIt) {
  const auto window = make<NSWindow>(CGRect{100, 200, 120, 80}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  const auto view = make<NSView>(CGRect{10, 20, 24, 24});
  view->setToolTip("Next");
  window->contentView()->addSubview(view);
  window->makeKeyAndOrderFront(nullptr);
  settle();
  moveOnto(*window);
  settle();
  EXPECT_FALSE(QToolTip::isVisible());
  ASSERT_TRUE(waitForSome());
  EXPECT_EQ(QToolTip::text(), "Next");
  QTest::mouseMove(&qWindowOf(*window), {100, 10});
  EXPECT_TRUE(waitForNone());
}

TEST_F(ToolTipTest, GoesWithItsWindow) {
  const auto view = make<NSView>(CGRect{10, 20, 24, 24});
  view->setToolTip("Next");
  auto window = make<NSWindow>(CGRect{100, 200, 120, 80}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  window->contentView()->addSubview(view);
  window->makeKeyAndOrderFront(nullptr);
  settle();
  moveOnto(*window);
  ASSERT_TRUE(waitForSome());
  window->close();
  window = nullptr;
  EXPECT_TRUE(waitForNone());
}

TEST_F(ToolTipTest, ShowsOverAnEmbeddedViewAndItsMarkupAsItIsWritten) {
  const auto view = make<NSView>(CGRect{0, 0, 40, 40});
  view->setToolTip("<b>1 & 2</b>");
  QtViewWidget* widget = embed(view);
  show();
  move(inTop(*widget, widget->rect().center()));
  ASSERT_TRUE(waitForSome());
  EXPECT_TRUE(QToolTip::text().contains("&lt;b&gt;1 &amp; 2&lt;/b&gt;")) << QToolTip::text().toStdString();
  EXPECT_FALSE(QToolTip::text().contains("<b>"));
}

TEST_F(ToolTipTest, IsThatOfTheEmbeddedViewUnderThePointer) {
  const QtViewWidget* first = embed(make<NSView>(CGRect{0, 0, 40, 40}));
  const auto view = make<NSView>(CGRect{0, 0, 40, 40});
  view->setToolTip("Next");
  QtViewWidget* widget = embed(view);
  show();
  move(inTop(*widget, widget->rect().center()));
  delete first;  // before the tool tip shows
  EXPECT_TRUE(waitForSome());
}

TEST_F(ToolTipTest, LeavesOneOfTheProgramsAlone) {
  const Impatience impatience;
  ToolTip toolTip;
  toolTip.set("Next");
  settle();
  QToolTip::showText({10, 10}, "The program's");
  toolTip.set("");
  EXPECT_FALSE(waitForNone(500));
  EXPECT_EQ(QToolTip::text(), "The program's");
}

TEST_F(ToolTipTest, GoesWithWhatShowsItAndShowsOnce) {
  const Impatience impatience;
  {
    ToolTip toolTip;
    toolTip.set("Next");
    settle();
    ASSERT_TRUE(QToolTip::isVisible());
  }
  EXPECT_TRUE(waitForNone());
  ToolTip toolTip;
  toolTip.set("Next");
  settle();
  QToolTip::hideText();
  EXPECT_TRUE(waitForNone());
  settle();
  EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(ToolTipTest, OverNoWidgetItOutlivesTheOneThatThePointerWasOverBefore) {
  const Impatience impatience;
  ToolTip toolTip;
  auto widget = std::make_unique<QWidget>();
  toolTip.set("Next", widget.get());
  toolTip.set("Previous");
  widget.reset();
  settle();
  EXPECT_TRUE(QToolTip::isVisible());
}

TEST_F(ToolTipTest, OfAWidgetThatIsDeletedBeforeItShowsNeverShows) {
  const Impatience impatience;
  ToolTip toolTip;
  auto widget = std::make_unique<QWidget>();
  toolTip.set("Next", widget.get());
  settle();
  EXPECT_TRUE(QToolTip::isVisible());
  QToolTip::hideText();
  ASSERT_TRUE(waitForNone());
  toolTip.set("Previous", widget.get());
  widget.reset();
  settle();
  EXPECT_FALSE(QToolTip::isVisible());
}

}  // namespace tessaluna::backend::qt
