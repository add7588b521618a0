#include "tessaluna/platform/interface_files/NSNib.h"

#include <gtest/gtest.h>

#include <random>

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSViewController.h"
#include "tessaluna/platform/windows/NSWindowController.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

std::vector<std::string> awakened;

class Owner : public NSObject {
 public:
  static const Outlet outlets[];
  static const Property properties[];
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  Owner() = default;
  explicit Owner(NSCoder& coder) : NSObject(coder) {}

  void setField(const Ref<NSTextField>& object) { field = object; }
  void setView(Ref<NSView> object) { view = std::move(object); }
  void setIsLoud(bool value) { isLoud = value; }
  void setCount(int value) { count = value; }
  void setWidth(double value) { width = value; }
  void setName(std::string value) { name = std::move(value); }
  void awakeFromNib() override { awakened.push_back(field ? "owner with field" : "owner"); }

  Ref<NSTextField> field;
  Ref<NSView> view;
  bool isLoud = false;
  int count = 0;
  double width = 0;
  std::string name;
};
const Outlet Owner::outlets[] = {outlet<&Owner::setField>("field"), outlet<&Owner::setView>("view")};
const Property Owner::properties[] = {property<&Owner::setIsLoud, "isLoud">(), property<&Owner::setCount, "count">(),
                                      property<&Owner::setWidth, "width">(), property<&Owner::setName, "name">()};
const ClassInfo Owner::staticClassInfo{
    .name = "Test.Owner", .base = &NSObject::staticClassInfo, .outlets = Owner::outlets, .properties = Owner::properties};

std::string errorOf(std::string_view json) {
  const NSNib::Contents contents = make<NSNib>(json)->instantiateWithOwner(make<Owner>());
  EXPECT_TRUE(!contents.error || contents.topLevelObjects.empty());
  return contents.error.value_or("no error");
}

struct NSNibTest : harness::StillWorld {
  NSNibTest() {
    awakened.clear();
    registerClass<Owner>();
  }
};

TEST_F(NSNibTest, MakesViewsWithTheirCellsAndConnectsThem) {
  const auto owner = make<Owner>();
  const auto contents = make<NSNib>(R"({
    "owner": {"view": "row", "field": "label"},
    "objects": [
      {"id": "row", "class": "NSView", "frame": [0, 0, 200, 24], "subviews": [
        {"id": "label", "class": "NSTextField", "frame": [4, 2, 100, 20], "action": "go:", "outlets": {"target": "helper"},
         "cell": {"class": "NSTextFieldCell", "stringValue": "A label"}}]},
      {"id": "helper", "class": "Test.Owner", "outlets": {"view": "row"},
       "properties": {"isLoud": true, "count": 3, "width": 1.5, "name": "n"}}]})")
                            ->instantiateWithOwner(owner);
  ASSERT_EQ(contents.error, std::nullopt);
  ASSERT_EQ(contents.topLevelObjects.size(), 2u);
  EXPECT_EQ(owner->view->frame(), (CGRect{0, 0, 200, 24}));
  EXPECT_EQ(owner->field->superview(), owner->view.get());
  EXPECT_EQ(owner->field->stringValue(), "A label");
  EXPECT_EQ(owner->field->cell()->controlView(), owner->field.get());
  const auto helper = std::dynamic_pointer_cast<Owner>(contents.topLevelObjects[1]);
  EXPECT_EQ(owner->field->target(), helper);
  EXPECT_EQ(owner->field->action(), "go:");
  EXPECT_EQ(helper->view, owner->view);
  EXPECT_TRUE(helper->isLoud);
  EXPECT_EQ(helper->count, 3);
  EXPECT_EQ(helper->width, 1.5);
  EXPECT_EQ(helper->name, "n");
  EXPECT_EQ(awakened, (std::vector<std::string>{"owner", "owner with field"}));
}

TEST_F(NSNibTest, MakesAWindowAndADocumentView) {
  const auto contents = make<NSNib>(R"({"objects": [
      {"class": "NSWindow", "contentRect": [10, 20, 300, 200], "styleMask": 1, "title": "T", "contentView":
        {"class": "NSScrollView", "frame": [0, 0, 1, 1], "documentView": {"class": "NSView", "frame": [0, 0, 50, 60]}}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto window = std::dynamic_pointer_cast<NSWindow>(contents.topLevelObjects.at(0));
  ASSERT_TRUE(window);
  EXPECT_EQ(window->frame(), (CGRect{10, 20, 300, 200}));
  EXPECT_EQ(window->title(), "T");
  const auto scrollView = std::dynamic_pointer_cast<NSScrollView>(window->contentView());
  ASSERT_TRUE(scrollView);
  EXPECT_EQ(scrollView->documentView()->frame(), (CGRect{0, 0, 50, 60}));
}

TEST_F(NSNibTest, GivesNewObjectsEachTime) {
  const auto nib = make<NSNib>(R"({"objects": [{"class": "NSView"}]})");
  EXPECT_NE(nib->instantiateWithOwner(nullptr).topLevelObjects, nib->instantiateWithOwner(nullptr).topLevelObjects);
}

TEST_F(NSNibTest, ABadDocumentIsAClearError) {
  const struct {
    const char* json;
    const char* error;
  } cases[] = {
      {"", "the archive is not JSON"},
      {"[]", "the archive is not a JSON object"},
      {"{}", "\"objects\" is no array of objects"},
      {R"({"objects": [3]})", "\"objects\" is no array of objects"},
      {R"({"objects": [{}]})", "object number 1 has no class"},
      {R"({"objects": [{"class": "Nobody"}]})", "the Nobody that is number 1: unknown class \"Nobody\""},
      {R"({"objects": [{"id": "a", "class": "NSView"}, {"id": "a", "class": "NSView"}]})", "the id \"a\" is given twice"},
      {R"({"objects": [{"id": "owner", "class": "NSView"}]})", "the id \"owner\" is given twice"},
      {R"({"owner": {"view": "b"}, "objects": []})", "the outlet \"view\" of the owner names no object of the document"},
      {R"({"owner": {"nothing": "a"}, "objects": [{"id": "a", "class": "NSView"}]})", "the owner has no outlet \"nothing\""},
      {R"({"owner": {"field": "a"}, "objects": [{"id": "a", "class": "NSView"}]})",
       "the outlet \"field\" of the owner cannot hold a NSView"},
      {R"({"owner": 1, "objects": []})", "\"owner\" of the document is no object"},
      {R"({"objects": [{"id": "a", "class": "NSView", "outlets": []}]})", "\"outlets\" of \"a\" is no object"},
      {R"({"objects": [{"id": "a", "class": "NSView", "properties": {"x": 1}}]})", "\"a\" has no property \"x\""},
      {R"({"objects": [{"id": "a", "class": "Test.Owner", "properties": {"count": 1.5}}]})",
       "the property \"count\" of \"a\" has a value of another kind"},
      {R"({"objects": [{"id": "a", "class": "Test.Owner", "properties": {"count": 1e99}}]})",
       "the property \"count\" of \"a\" has a value of another kind"},
      {R"({"objects": [{"id": "a", "class": "NSView", "subviews": 1}]})", "\"subviews\" of \"a\" is no array of objects"},
      {R"({"objects": [{"id": "a", "class": "NSView", "subviews": [{"class": "NSCell"}]}]})",
       "NSCell is no view and cannot stand in one"},
      {R"({"objects": [{"id": "a", "class": "NSCell", "subviews": []}]})", "\"a\" is no view and has subviews"},
      {R"({"objects": [{"id": "a", "class": "NSView", "contentView": {"class": "NSView"}}]})",
       "\"a\" is no window and has a content view"},
      {R"({"objects": [{"id": "a", "class": "NSView", "documentView": {"class": "NSView"}}]})",
       "\"a\" is no scroll view and has a document view"},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"class": "Nobody"}}]})",
       "\"a\": its cell: unknown class \"Nobody\""},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"class": "NSView"}}]})",
       "\"a\": its cell: NSView is no cell"},
  };
  for (const auto& [json, error] : cases) EXPECT_EQ(errorOf(json), error) << json;
  EXPECT_TRUE(awakened.empty());
}

TEST_F(NSNibTest, DeepNestingIsAnErrorAndNoCrash) {
  std::string json = R"({"objects": [)";
  for (int i = 0; i < 5000; ++i) json += R"({"class": "NSView", "subviews": [)";
  for (int i = 0; i < 5000; ++i) json += "]}";
  json += "]}";
  EXPECT_EQ(errorOf(json), "the NSView that is number 102 is nested too deep");
}

// Pieces of good documents put together at random: whatever comes of it is objects or an error.
TEST_F(NSNibTest, RandomDocumentsAreObjectsOrErrors) {
  const std::vector<std::string> pieces = {"{",
                                           "}",
                                           "[",
                                           "]",
                                           ":",
                                           ",",
                                           "\"",
                                           "\\u0000",
                                           "\"objects\"",
                                           "\"owner\"",
                                           "\"id\"",
                                           "\"class\"",
                                           "\"NSView\"",
                                           "\"NSWindow\"",
                                           "\"NSScrollView\"",
                                           "\"NSTextField\"",
                                           "\"NSTableView\"",
                                           "\"cell\"",
                                           "\"frame\"",
                                           "[0, 0, 1e308, -1e308]",
                                           "[1, 2]",
                                           "\"subviews\"",
                                           "\"contentView\"",
                                           "\"documentView\"",
                                           "\"outlets\"",
                                           "\"properties\"",
                                           "\"target\"",
                                           "\"view\"",
                                           "\"a\"",
                                           "1e400",
                                           "-0",
                                           "true",
                                           "null",
                                           "\"styleMask\"",
                                           "\"contentRect\"",
                                           "\"autoresizingMask\"",
                                           "99999999999999999999",
                                           "\xff"};
  const std::string good = R"({"owner": {"view": "a"}, "objects": [{"id": "a", "class": "NSView", "frame": [0, 0, 200, 24],
      "autoresizingMask": 63, "subviews": [{"class": "NSTextField", "outlets": {"target": "a"},
      "cell": {"class": "NSTextFieldCell", "fontSize": 13}}, {"class": "NSScrollView", "frame": [1, 2, 3, 4],
      "hasVerticalScroller": true, "documentView": {"class": "NSTableView"}}]},
      {"class": "NSWindow", "contentRect": [0, 0, 10, 10], "contentView": {"class": "NSImageView", "imageScaling": 9}}]})";
  std::mt19937 random(11);
  int loaded = 0, refused = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string json = good;
    for (unsigned change = random() % 4; change > 0; --change) {
      const std::size_t at = random() % json.size();
      const std::string& piece = pieces[random() % pieces.size()];
      // Over what stands there, from one quotation mark to the next if there are any.
      const std::size_t start = std::min(json.find('"', at), json.size()),
                        end = std::min(json.find('"', start + 1), json.size());
      if (random() % 2) json.replace(start, end - start + 1, piece);
      else json.replace(at, random() % 4, piece);
    }
    const auto contents = make<NSNib>(json)->instantiateWithOwner(make<Owner>());
    ++(contents.error ? refused : loaded);
  }
  EXPECT_GT(loaded, 5000);
  EXPECT_GT(refused, 5000);
}

TEST_F(NSNibTest, IsFoundByItsName) {
  NSNib::registerDocument("named", R"({"objects": []})");
  EXPECT_TRUE(NSNib::nibNamed("named"));
  EXPECT_FALSE(NSNib::nibNamed("nobody"));
}

class LoadedController : public NSWindowController {
 public:
  using NSWindowController::NSWindowController;
  int loads = 0;
  void windowDidLoad() override {
    ++loads;
    EXPECT_TRUE(isWindowLoaded());
  }
};

TEST_F(NSNibTest, AWindowControllerLoadsItsWindowAtFirstUse) {
  NSNib::registerDocument("window", R"({"owner": {"window": "w"}, "objects": [{"id": "w", "class": "NSWindow"}]})");
  const auto controller = make<LoadedController>("window");
  EXPECT_FALSE(controller->isWindowLoaded());
  const Ref<NSWindow> window = controller->window();
  ASSERT_TRUE(window);
  EXPECT_EQ(controller->window(), window);
  EXPECT_EQ(controller->loads, 1);
  EXPECT_EQ(window->windowController(), controller);
  EXPECT_EQ(window->nextResponder(), controller.get());
}

TEST_F(NSNibTest, AWindowControllerThatWasGivenAWindowLoadsNothing) {
  const auto window = showWindow();
  const auto controller = make<LoadedController>(window);
  EXPECT_EQ(controller->window(), window);
  EXPECT_EQ(window->windowController(), controller);
  EXPECT_EQ(controller->loads, 0);
  EXPECT_EQ(make<LoadedController>()->window(), nullptr);
}

TEST_F(NSNibTest, AWindowDoesNotKeepItsController) {
  const auto window = showWindow();
  make<LoadedController>(window);
  EXPECT_EQ(window->windowController(), nullptr);
  EXPECT_EQ(window->nextResponder(), nullptr);
}

class MyController : public NSViewController {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  using NSViewController::NSViewController;
  int loads = 0;
  void viewDidLoad() override { ++loads; }
};
const ClassInfo MyController::staticClassInfo{.name = "Test.MyController", .base = &NSViewController::staticClassInfo};

TEST_F(NSNibTest, AViewControllerLoadsItsViewAtFirstUse) {
  NSNib::registerDocument("row",
                          R"({"owner": {"view": "b"}, "objects": [{"class": "NSView"}, {"id": "b", "class": "NSView"}]})");
  const auto controller = make<MyController>("row");
  EXPECT_FALSE(controller->isViewLoaded());
  const Ref<NSView> view = controller->view();
  EXPECT_EQ(controller->view(), view);
  EXPECT_EQ(controller->loads, 1);
}

TEST_F(NSNibTest, AFactoryMakesTheViewInCode) {
  const auto made = make<NSView>(CGRect{0, 0, 5, 5});
  NSNib::registerFactory("made", [&](NSObject& owner) {
    EXPECT_NE(dynamic_cast<MyController*>(&owner), nullptr);
    return made;
  });
  EXPECT_EQ(make<MyController>("made")->view(), made);
}

TEST_F(NSNibTest, AnAbsentNibNameStandsForTheNameOfTheClass) {
  const auto made = make<NSView>(CGRect{});
  NSNib::registerFactory("MyController", [&](NSObject&) { return made; });
  EXPECT_EQ(make<MyController>()->view(), made);
  const auto whole = make<NSView>(CGRect{});
  NSNib::registerFactory("Test.MyController", [&](NSObject&) { return whole; });
  EXPECT_EQ(make<MyController>()->view(), whole);
}

using NSNibDeathTest = NSNibTest;

TEST_F(NSNibDeathTest, AViewControllerWithoutItsInterfaceFileStopsTheProgram) {
  EXPECT_DEATH(make<MyController>("missing")->view(), "Test.MyController: there is no interface file \"missing\"");
  EXPECT_DEATH(make<NSViewController>()->view(), "there is no interface file \"NSViewController\"");
  NSNib::registerDocument("empty", R"({"objects": []})");
  EXPECT_DEATH(make<MyController>("empty")->view(), "loading gave no view");
  NSNib::registerDocument("bad", "{");
  EXPECT_DEATH(make<MyController>("bad")->view(), "interface file \"bad\": the archive is not JSON");
}

TEST_F(NSNibDeathTest, AWindowControllerWithoutItsInterfaceFileStopsTheProgram) {
  EXPECT_DEATH(make<LoadedController>("missing")->window(), "there is no interface file \"missing\"");
}

}  // namespace
}  // namespace tessaluna::platform
