// A search field over a large library under a real keyboard, pointer and window manager.
#include <QScreen>
#include <QVBoxLayout>
#include <QWidget>
#include <QWindow>

#include "gallery/search/LibrarySearch.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/search/SearchField.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace tessaluna::ready;

namespace {

constexpr int fieldLeft = 40, fieldTop = 30;

class SearchPopUp : public harness::QtDesktop {
 protected:
  SearchPopUp() {
    search_->setSource([this](const SearchQuestion& question) { question.answer(library_.rowsFor(question.text())); });
    search_->setOnPick([this](const SearchRow& row) { reports_.push_back("pick " + row.title); });
    search_->setOnSearch([this](const std::string& text) { reports_.push_back("search " + text); });
    field_ = new tessaluna::backend::qt::QtViewWidget(search_, &window_);
    field_->setGeometry(fieldLeft, fieldTop, 360, 26);
    // A place where no pop-up will open.
    xdotool({"mousemove", "5", "5"});
    window_.setGeometry(200, 150, 500, 200);
    window_.show();
    EXPECT_TRUE(eventually([&] { return window_.isActiveWindow() && window_.windowHandle()->isExposed(); }));
    settle();
    clickAt(field_->mapToGlobal(QPoint(20, 13)));
    xdotool({"mousemove", "5", "5"});
    EXPECT_TRUE(eventually([&] { return search_->field()->currentEditor() != nullptr; }));
  }
  ~SearchPopUp() override {
    search_->popUp()->cancelSuggestions();
    xdotool({"mousemove", "5", "5"});
  }

  static void moveTo(QPoint place) { xdotool({"mousemove", QString::number(place.x()), QString::number(place.y())}); }
  static void clickAt(QPoint place) {
    moveTo(place);
    xdotool({"click", "1"});
  }
  static void type(const QString& text) { xdotool({"type", "--delay", "12", text}); }
  static void press(const QString& key) { xdotool({"key", key}); }

  bool isOpen() { return search_->popUp()->window()->isVisible(); }
  std::string text() { return search_->field()->stringValue(); }
  bool comesToBe(const std::string& wanted) {
    return eventually([&] { return text() == wanted; });
  }
  std::string selected() {
    const auto suggestion = search_->popUp()->selectedSuggestion();
    return suggestion ? suggestion->label : "none";
  }
  // On the screen as Qt counts, from the upper left corner.
  QPoint middleOfRow(std::size_t index) {
    const Ref<NSWindow> popUp = search_->popUp()->window();
    const auto views = dynamic_cast<NSScrollView&>(*popUp->contentView()).documentView()->subviews();
    std::size_t row = 0;
    for (const Ref<NSView>& view : views) {
      if (!dynamic_cast<TessalunaUIKit::HighlightingView*>(view.get()) || row++ != index) continue;
      const CGPoint middle = view->convertPointToView({100, view->frame().size.height / 2}, nullptr);
      const CGPoint place = popUp->convertPointToScreen(middle);
      return {int(place.x), int(screenHeight() - place.y)};
    }
    ADD_FAILURE() << "no row " << index;
    return {};
  }
  static int screenHeight() { return QGuiApplication::primaryScreen()->geometry().height(); }
  QPoint upperLeftOfPopUp() {
    const CGRect frame = search_->popUp()->window()->frame();
    return {int(frame.origin.x), int(screenHeight() - frame.origin.y - frame.size.height)};
  }

  gallery::LibrarySearch library_{gallery::inventedLibrary(20000)};
  Ref<SearchField> search_ = make<SearchField>(CGRect{0, 0, 360, 26});
  std::vector<std::string> reports_;
  QWidget window_;
  tessaluna::backend::qt::QtViewWidget* field_ = nullptr;
};

TEST_F(SearchPopUp, OpensTwoPointsBelowItsField) {
  type("sil");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  EXPECT_EQ(upperLeftOfPopUp(), field_->mapToGlobal(QPoint(0, 26 + 2)));
}

TEST_F(SearchPopUp, ArrowsSelectAndReturnPicks) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  press("Down");
  press("Down");
  const std::string chosen = selected();
  EXPECT_TRUE(comesToBe(chosen));
  press("Return");
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  ASSERT_EQ(reports_.size(), 1u);
  EXPECT_EQ(reports_[0], "pick " + chosen);
  type("q");
  EXPECT_TRUE(comesToBe("q"));
}

TEST_F(SearchPopUp, ThePointerDoesNotChangeWhatIsTyped) {
  type("s");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  const QPoint place = middleOfRow(2);
  press("Escape");
  press("ctrl+a");
  moveTo(place);
  type("silver");
  EXPECT_TRUE(comesToBe("silver")) << text();
  // The first move selects the row and changes nothing else.
  moveTo(middleOfRow(2) + QPoint(6, 0));
  EXPECT_TRUE(eventually([&] { return selected() != "none"; }));
  type(" t");
  EXPECT_TRUE(comesToBe("silver t")) << text();
  press("Return");
  EXPECT_TRUE(eventually([&] { return reports_ == std::vector<std::string>{"search silver t"}; }));
}

TEST_F(SearchPopUp, AClickOnARowPicksIt) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  moveTo(middleOfRow(3));
  EXPECT_TRUE(eventually([&] { return selected() != "none"; }));
  const std::string pointedAt = selected();
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  EXPECT_EQ(reports_, std::vector<std::string>{"pick " + pointedAt});
}

TEST_F(SearchPopUp, AfterTheWheelAClickPicksTheRowUnderThePointer) {
  type("s");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  moveTo(middleOfRow(4));
  EXPECT_TRUE(eventually([&] { return selected() != "none"; }));
  const std::string before = selected();
  xdotool({"click", "--repeat", "3", "5"});
  EXPECT_TRUE(eventually([&] { return selected() != "none" && selected() != before; }));
  settle();
  const std::string pointedAt = selected();
  xdotool({"click", "1"});
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  EXPECT_EQ(reports_, std::vector<std::string>{"pick " + pointedAt});
}

TEST_F(SearchPopUp, PageKeysEndAndAltDownWork) {
  type("s");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  press("Next");
  EXPECT_TRUE(eventually([&] { return search_->popUp()->selectedRow().value_or(0) > 3; }));
  press("ctrl+End");
  EXPECT_TRUE(eventually([&] { return search_->popUp()->selectedRow() == 49u; }));
  press("ctrl+Home");
  EXPECT_TRUE(eventually([&] { return search_->popUp()->selectedRow() == 0u; }));
  press("Escape");
  EXPECT_TRUE(eventually([&] { return !isOpen() && text() == "s"; }));
  press("alt+Down");
  EXPECT_TRUE(eventually([&] { return isOpen(); }));
}

TEST_F(SearchPopUp, TheClearButtonEmptiesTheFieldWithOneClick) {
  type("silver");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  clickAt(field_->mapToGlobal(QPoint(360 - 12, 13)));
  EXPECT_TRUE(comesToBe(""));
  EXPECT_FALSE(isOpen());
  type("q");
  EXPECT_TRUE(comesToBe("q")) << "the field keeps the keyboard";
}

TEST_F(SearchPopUp, TheActionOfAClickMayRemoveTheField) {
  search_->setOnPick([this](const SearchRow& row) {
    reports_.push_back("pick " + row.title);
    delete std::exchange(field_, nullptr);
  });
  type("silver");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  clickAt(middleOfRow(1));
  EXPECT_TRUE(eventually([&] { return reports_.size() == 1; }));
  settle();
  EXPECT_FALSE(isOpen());
}

TEST_F(SearchPopUp, ClosingTheWindowClosesThePopUp) {
  type("silver");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  moveTo(middleOfRow(1));
  window_.close();
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
}

TEST_F(SearchPopUp, HidingTheFieldUnderThePointerClosesThePopUp) {
  type("silver");
  ASSERT_TRUE(eventually([&] { return isOpen(); }));
  moveTo(middleOfRow(1));
  field_->hide();
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
}

TEST_F(SearchPopUp, AClickElsewhereOnlyClosesIt) {
  type("silver");
  ASSERT_TRUE(comesToBe("silver"));
  clickAt(window_.mapToGlobal(QPoint(450, 20)));
  EXPECT_TRUE(eventually([&] { return !isOpen(); }));
  EXPECT_EQ(text(), "silver");
  EXPECT_TRUE(reports_.empty());
}

TEST_F(SearchPopUp, AnotherWindowThatTakesTheKeyboardClosesIt) {
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
  const CGFloat full = search_->popUp()->window()->frame().size.height;
  window_.move(300, screenHeight() - 180);
  EXPECT_TRUE(eventually([&] { return upperLeftOfPopUp() == field_->mapToGlobal(QPoint(0, 28)); }));
  EXPECT_GE(search_->popUp()->window()->frame().origin.y, 0);
  EXPECT_LT(search_->popUp()->window()->frame().size.height, full);
  window_.move(300, 100);
  EXPECT_TRUE(eventually([&] { return upperLeftOfPopUp() == field_->mapToGlobal(QPoint(0, 28)); }));
  EXPECT_GE(search_->popUp()->window()->frame().size.height, full);
  EXPECT_EQ(text(), "sil");
}

TEST_F(SearchPopUp, FastTypingLosesNoKey) {
  std::string all;
  for (int i = 0; i < 60; ++i) all += "silver tide "[i % 12];
  xdotool({"type", "--delay", "5", QString::fromStdString(all)});
  EXPECT_TRUE(comesToBe(all)) << text();
}

}  // namespace
