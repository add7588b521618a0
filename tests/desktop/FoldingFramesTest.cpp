// Sections that fold on a real screen: where the view below them is in each picture that another process takes meanwhile.
#include <QProcess>
#include <optional>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tessaluna/uikit/containers/DisclosureView.h"
#include "tessaluna/uikit/containers/ViewWithBackground.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr double headerHeight = 20, contentHeight = 160;

// A green header, a red content, and the blue neighbor below; the window is white.
constexpr const char* sideBar = R"({"objects": [{"id": "bar", "class": "NSView", "frame": [0, 0, 60, 300], "subviews": [
  {"id": "section", "class": "TessalunaUIKit.DisclosureView", "properties": {"translatesAutoresizingMaskIntoConstraints": false},
   "outlets": {"headerView": "header", "contentView": "content"}, "subviews": [
     {"id": "header", "class": "TessalunaUIKit.DisclosureHeaderView", "outlets": {"parentDisclosure": "section"},
      "properties": {"translatesAutoresizingMaskIntoConstraints": false, "backgroundColor": "greenColor"}},
     {"id": "content", "class": "TessalunaUIKit.ViewWithBackground",
      "properties": {"translatesAutoresizingMaskIntoConstraints": false, "backgroundColor": "redColor"}}],
   "constraints": [WITHIN]},
  {"id": "below", "class": "TessalunaUIKit.ViewWithBackground",
   "properties": {"translatesAutoresizingMaskIntoConstraints": false, "backgroundColor": "blueColor"}}],
  "constraints": [AROUND]}]})";

std::string constraint(const char* first, const char* attribute, const char* second, const char* secondAttribute,
                       double constant = 0, double priority = 1000) {
  const std::string quote = "\"";
  return R"({"class": "NSLayoutConstraint", "firstAttribute": ")" + std::string(attribute) + R"(", "constant": )" +
         std::to_string(constant) + R"(, "priority": )" + std::to_string(priority) +
         (second ? R"(, "secondAttribute": ")" + std::string(secondAttribute) + quote : "") +
         R"(, "outlets": {"firstItem": ")" + first + quote +
         (second ? R"(, "secondItem": ")" + std::string(second) + quote : "") + "}}";
}

std::string document() {
  std::vector<std::string> around{constraint("section", "top", "bar", "top"),
                                  constraint("below", "top", "section", "bottom"),
                                  constraint("below", "height", nullptr, "", 40)};
  std::vector<std::string> within{
      constraint("header", "top", "section", "top"), constraint("header", "height", nullptr, "", headerHeight),
      constraint("content", "top", "header", "bottom"), constraint("content", "height", nullptr, "", contentHeight),
      constraint("section", "bottom", "content", "bottom", 0, 500)};
  for (const char* edge : {"left", "right"}) {
    for (const char* view : {"section", "below"}) around.push_back(constraint(view, edge, "bar", edge));
    for (const char* view : {"header", "content"}) within.push_back(constraint(view, edge, "section", edge));
  }
  std::string json = sideBar;
  const auto replace = [&](const std::string& word, const std::vector<std::string>& constraints) {
    std::string list;
    for (const std::string& one : constraints) list += (list.empty() ? "" : ", ") + one;
    json.replace(json.find(word), word.size(), list);
  };
  replace("WITHIN", within);
  replace("AROUND", around);
  return json;
}

class FoldingFrames : public harness::QtDesktop {
 protected:
  FoldingFrames() {
    registerInterfaceFileClasses();
    const auto contents = make<NSNib>(document())->instantiateWithOwner(nullptr);
    EXPECT_EQ(contents.error, std::nullopt);
    bar = std::dynamic_pointer_cast<NSView>(contents.topLevelObjects.at(0));
    section = std::dynamic_pointer_cast<DisclosureView>(Ref<NSView>(bar->subviews()[0]));
    below = bar->subviews()[1];
    xdotool({"mousemove", "5", "1000"});
    window->setBackgroundColor(NSColor::whiteColor());
    window->contentView()->addSubview(bar);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_TRUE(eventually([&] { return window->isKeyWindow(); }));
    settle();
  }
  ~FoldingFrames() override {
    section->headerView()->setParentDisclosure(nullptr);
    window->close();
  }

  // Where the neighbor begins, from the top of the side bar, in each picture that is taken from now until the animation is over
  // and shown.
  std::vector<int> placesWhile(const std::function<void()>& start, double end) {
    QProcess camera;
    const CGRect onScreen = window->convertRectToScreen({{0, 0}, {4, 300}});
    const int top = 1024 - int(CGRectGetMaxY(onScreen));  // the screen is 1024 points high
    camera.start(QCoreApplication::applicationFilePath(),
                 {"column", QString::number(int(onScreen.origin.x) + 30), QString::number(top), "300", "#0000ff"});
    EXPECT_TRUE(eventually([&] { return camera.canReadLine(); }));
    std::vector<int> places;
    const auto read = [&] {
      while (camera.canReadLine()) places.push_back(camera.readLine().trimmed().toInt());
    };
    // One picture before the start, however slow the window system is.
    EXPECT_TRUE(eventually([&] { return read(), !places.empty(); }));
    start();
    EXPECT_TRUE(eventually([&] { return read(), !section->isChanging(); }));
    window->layoutIfNeeded();
    lastWhenFinished = below->frame();
    EXPECT_TRUE(eventually([&] { return read(), places.back() == int(end); })) << "last seen at " << places.back();
    camera.closeWriteChannel();
    EXPECT_TRUE(eventually([&] { return camera.state() == QProcess::NotRunning; }));
    read();
    return places;
  }

  Ref<NSWindow> window = make<NSWindow>(CGRect{100, 300, 60, 300}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  Ref<NSView> bar;
  Ref<DisclosureView> section;
  Ref<NSView> below;
  CGRect lastWhenFinished;
};

TEST_F(FoldingFrames, TheNeighborMovesUpAndDownWithoutAJumpAtEitherEnd) {
  const int open = headerHeight + contentHeight, folded = headerHeight;
  const auto up = placesWhile([&] { section->toggleDisclosure(nullptr); }, folded);
  EXPECT_EQ(up.front(), open);
  for (std::size_t i = 1; i < up.size(); ++i) {
    EXPECT_LE(up[i], up[i - 1]) << i << " of " << testing::PrintToString(up);
    EXPECT_GE(up[i], folded) << i << " of " << testing::PrintToString(up);
  }
  EXPECT_EQ(300 - CGRectGetMaxY(lastWhenFinished), folded) << "finished when its completion says so";
  const auto down = placesWhile([&] { section->toggleDisclosure(nullptr); }, open);
  for (std::size_t i = 1; i < down.size(); ++i) {
    EXPECT_GE(down[i], down[i - 1]) << i << " of " << testing::PrintToString(down);
    EXPECT_LE(down[i], open) << i << " of " << testing::PrintToString(down);
  }
  EXPECT_EQ(300 - CGRectGetMaxY(lastWhenFinished), open);
}

}  // namespace
