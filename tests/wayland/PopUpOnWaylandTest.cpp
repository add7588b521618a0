// A completion pop-up on Wayland, checked in the messages between the program and the compositor: a program does not know where
// its windows are.
#include <unistd.h>

#include <QTemporaryFile>
#include <regex>

#include "tests/desktop/QtDesktop.h"
#include "tests/harness/AccessiblePlayer.h"

using namespace tessaluna::platform;

namespace {

// Collects everything that is written to standard error while it exists.
class StandardError {
 public:
  StandardError() : earlier_(dup(STDERR_FILENO)) {
    EXPECT_TRUE(file_.open());
    dup2(file_.handle(), STDERR_FILENO);
  }
  ~StandardError() {
    dup2(earlier_, STDERR_FILENO);
    close(earlier_);
  }
  std::string text() {
    QFile copy(file_.fileName());
    return copy.open(QIODevice::ReadOnly) ? copy.readAll().toStdString() : std::string();
  }

 private:
  QTemporaryFile file_;
  int earlier_;
};

class PopUpOnWayland : public harness::QtDesktop, protected harness::AccessiblePlayer {
 protected:
  PopUpOnWayland() {
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(eventually([&] { return qWindowOf(*window).isExposed(); }));
  }

  // Waits until the expression matches the messages, and returns its groups.
  std::vector<std::string> eventuallySent(const std::string& expression) {
    std::smatch found;
    std::string text;
    EXPECT_TRUE(eventually([&] {
      text = wire.text();
      return std::regex_search(text, found, std::regex(expression));
    })) << expression
        << "\n"
        << text;
    return {found.begin(), found.end()};
  }
  // As the compositor counts, from the corner of the window including its title bar.
  std::string placeBelowField() const {
    const QMargins frame = qWindowOf(*window).frameMargins();
    const CGPoint corner = field->superview()->convertPointToView(field->frame().origin, nullptr);
    const int left = static_cast<int>(corner.x), top = static_cast<int>(window->frame().size.height - (corner.y - 2));
    return std::to_string(left + frame.left()) + ", " + std::to_string(top + frame.top());
  }

  StandardError wire;
};

TEST_F(PopUpOnWayland, IsAChildOfTheFieldsWindowAndOpensBelowTheField) {
  const std::string parent = eventuallySent(R"((xdg_surface@\d+)\.get_toplevel)").at(1);
  begin({"Abba", "Can"});
  const auto popUp = eventuallySent(R"((xdg_surface@\d+)\.get_popup\(new id (xdg_popup@\d+), (xdg_surface@\d+), )");
  EXPECT_EQ(popUp.at(3), parent);
  // The compositor has placed it as requested.
  EXPECT_EQ(eventuallySent(popUp.at(2) + R"(\.configure\((\d+, \d+), (\d+, \d+)\))").at(1), placeBelowField());
  EXPECT_TRUE(eventually([&] { return qWindowOf(*controller->window()).isExposed(); }));
  // It takes no grab: the keyboard stays in the field's window.
  EXPECT_EQ(wire.text().find(popUp.at(2) + ".grab"), std::string::npos);
  EXPECT_TRUE(qWindowOf(*controller->window()).flags() & Qt::WindowDoesNotAcceptFocus);

  controller->cancelSuggestions();
  eventuallySent(popUp.at(2) + R"(\.destroy\(\))");
}

TEST_F(PopUpOnWayland, GrowsInItsPlace) {
  begin({"Abba"});
  eventuallySent(R"(create_buffer\(new id wl_buffer@\d+, \d+, 200, 20, )");
  suggest({"Abba", "Can", "Queen"});
  eventuallySent(R"(create_buffer\(new id wl_buffer@\d+, \d+, 200, 60, )");
  const std::string text = wire.text();
  EXPECT_EQ(text.find("get_popup"), text.rfind("get_popup"));
}

TEST_F(PopUpOnWayland, MovesByOpeningAgain) {
  begin({"Abba"});
  const std::string first = eventuallySent(R"(get_popup\(new id (xdg_popup@\d+))").at(1);
  field->setFrame({40, 10, 200, 24});
  controller->parentControlMoved();
  eventuallySent(first + R"(\.destroy\(\))");
  ASSERT_FALSE(HasFailure());
  // Another pop-up follows and is placed. Late messages about the first one do not count.
  std::string place;
  EXPECT_TRUE(eventually([&] {
    const std::string text = wire.text(), since = text.substr(text.find(first + ".destroy()"));
    std::smatch second, placed;
    if (!std::regex_search(since, second, std::regex(R"(get_popup\(new id (xdg_popup@\d+))"))) return false;
    const std::string later = second.suffix(), configured = second[1].str() + R"(\.configure\((\d+, \d+), )";
    if (!std::regex_search(later, placed, std::regex(configured))) return false;
    place = placed[1];
    return true;
  })) << wire.text();
  EXPECT_EQ(place, placeBelowField());
}

}  // namespace
