// The gallery's search field under a real keyboard, pointer and window manager.
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include "gallery/search/SearchHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using gallery::SearchHost;

namespace {

constexpr int fieldLeft = 40, fieldTop = 30;

class SearchPopUp : public harness::QtDesktop {
 protected:
  SearchPopUp() {
    host_->setReport([this](const std::string& what) { reports_.push_back(what); });
    field_ = new tessaluna::backend::qt::QtViewWidget(host_->view(), &window_);
    field_->setGeometry(fieldLeft, fieldTop, 360, 26);
    // Where no pop-up will be.
    xdotool({"mousemove", "5", "5"});
    window_.setGeometry(200, 150, 500, 200);
    window_.show();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() && window_.windowHandle()->isExposed(); }));
    settle();
    clickAt(field_->mapToGlobal(QPoint(20, 13)));
    xdotool({"mousemove", "5", "5"});
    EXPECT_TRUE(eventually([&] { return host_->field()->currentEditor() != nullptr; }));
  }
  ~SearchPopUp() override {
    host_->popUp()->cancelSuggestions();
    xdotool({"mousemove", "5", "5"});
  }

  static void moveTo(QPoint place) { xdotool({"mousemove", QString::number(place.x()), QString::number(place.y())}); }
  static void clickAt(QPoint place) {
    moveTo(place);
    xdotool({"click", "1"});
  }
  static void type(const QString& text) { xdotool({"type", "--delay", "12", text}); }
  static void press(const QString& key) { xdotool({"key", key}); }

  bool isOpen() { return host_->popUp()->window()->isVisible(); }
  std::string text() { return host_->field()->stringValue(); }
  bool comesToBe(const std::string& wanted) {
    return eventually([&] { return text() == wanted; });
  }
  std::string selected() {
    const auto suggestion = host_->popUp()->selectedSuggestion();
    return suggestion ? suggestion->label : "none";
  }
  // On the screen as Qt counts: from its upper left corner.
  QPoint middleOfRow(std::size_t index) {
    const CGRect frame = host_->popUp()->window()->frame();
    constexpr CGFloat rowHeight = 42;
    return {int(frame.origin.x + 100),
            int(screenHeight() - frame.origin.y - frame.size.height + (double(index) + 0.5) * rowHeight)};
  }
  static int screenHeight() { return QGuiApplication::primaryScreen()->geometry().height(); }
  QPoint upperLeftOfPopUp() {
    const CGRect frame = host_->popUp()->window()->frame();
    return {int(frame.origin.x), int(screenHeight() - frame.origin.y - frame.size.height)};
  }

  Ref<SearchHost> host_ = make<SearchHost>(gallery::inventedLibrary(20000));
  std::vector<std::string> reports_;
  QWidget window_;
  tessaluna::backend::qt::QtViewWidget* field_ = nullptr;
};

TEST_F(SearchPopUp, OpensTwoPointsBelowItsField) {
  type("sil");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  EXPECT_EQ(upperLeftOfPopUp(), field_->mapToGlobal(QPoint(0, 26 + 2)));
}

TEST_F(SearchPopUp, ArrowsChooseAndReturnTakes) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  press("Down");
  press("Down");
  const std::string chosen = selected();
  EXPECT_TRUE(comesToBe(chosen));
  press("Return");
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  ASSERT_EQ(reports_.size(), 1u);
  EXPECT_TRUE(reports_[0].starts_with(chosen)) << reports_[0];
  type("q");
  EXPECT_TRUE(comesToBe("q"));
}

TEST_F(SearchPopUp, ThatAppearsUnderAStillPointerChangesNothingOfWhatIsTyped) {
  type("s");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  const QPoint place = middleOfRow(2);
  press("Escape");
  xdotool({"key", "ctrl+a"});
  moveTo(place);
  type("silver");
  EXPECT_TRUE(comesToBe("silver")) << text();
  // The first move counts.
  moveTo(place + QPoint(6, 0));
  EXPECT_TRUE(eventually([&] { return text() != "silver" && text() == selected(); }));
}

TEST_F(SearchPopUp, AClickOnARowTakesIt) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  moveTo(middleOfRow(3));
  const std::string pointedAt = selected();
  EXPECT_TRUE(comesToBe(pointedAt));
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  ASSERT_EQ(reports_.size(), 1u);
  EXPECT_TRUE(reports_[0].starts_with(pointedAt)) << reports_[0];
}

TEST_F(SearchPopUp, AClickElsewhereOnlyClosesIt) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  clickAt(window_.mapToGlobal(QPoint(450, 20)));
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  EXPECT_EQ(text(), "silver");
  EXPECT_TRUE(reports_.empty());
}

TEST_F(SearchPopUp, AnotherWindowThatTakesTheKeysEndsIt) {
  type("silver");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  QWidget other;
  other.setGeometry(800, 500, 200, 100);
  other.show();
  other.activateWindow();
  ASSERT_TRUE(eventually([&] { return other.isActiveWindow(); }));
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
}

TEST_F(SearchPopUp, FollowsItsWindowToTheLowerEdgeOfTheScreenAndBack) {
  type("sil");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  const CGFloat full = host_->popUp()->window()->frame().size.height;
  window_.move(300, screenHeight() - 180);
  EXPECT_TRUE(eventually([&] { return upperLeftOfPopUp() == field_->mapToGlobal(QPoint(0, 28)); }));
  EXPECT_GE(host_->popUp()->window()->frame().origin.y, 0);
  EXPECT_LT(host_->popUp()->window()->frame().size.height, full);
  window_.move(300, 100);
  EXPECT_TRUE(eventually([&] { return upperLeftOfPopUp() == field_->mapToGlobal(QPoint(0, 28)); }));
  EXPECT_GE(host_->popUp()->window()->frame().size.height, full);
  EXPECT_EQ(text(), "sil");
}

TEST_F(SearchPopUp, FastTypingLosesNoKey) {
  std::string all;
  for (int i = 0; i < 60; ++i) all += "silver tide "[i % 12];
  xdotool({"type", "--delay", "5", QString::fromStdString(all)});
  EXPECT_TRUE(comesToBe(all)) << text();
}

}  // namespace
