#include "tessaluna/platform/interface_files/NSNib.h"

#include <gmock/gmock.h>

#include <random>

#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/interface_files/archivedLooks.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSViewController.h"
#include "tessaluna/platform/windows/NSWindowController.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

namespace tessaluna::platform {
namespace {

enum class Corner { Left = 1, Right = 3 };

}  // namespace

template <>
struct EnumNames<Corner> {
  static constexpr NamedValue all[] = {{"left", 1}, {"right", 3}};
};

namespace {

std::vector<std::string> awakened;

class Owner : public NSObject {
 public:
  static const Outlet outlets[];
  static const Property properties[];
  static const InnerObjects innerObjects[];
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  Owner() = default;
  explicit Owner(NSCoder& coder) : NSObject(coder) { coder.overlookKeys({"overlooked"}); }

  void setField(const Ref<NSTextField>& object) { field = object; }
  void setView(Ref<NSView> object) { view = std::move(object); }
  void setIsLoud(bool value) { isLoud = value; }
  void setCount(int value) { count = value; }
  void setWidth(double value) { width = value; }
  void setName(std::string value) { name = std::move(value); }
  void setPlace(CGPoint value) { place = value; }
  void setSize(CGSize value) { size = value; }
  void setArea(CGRect value) { area = value; }
  void setCorner(Corner value) { corner = value; }
  void setColor(const Ref<NSColor>& value) { color = value; }
  void setFont(Ref<NSFont> value) { font = std::move(value); }
  void setImage(Ref<NSImage> value) { image = std::move(value); }
  void setCell(Ref<NSCell> object) { cell = std::move(object); }
  void addPart(Ref<Owner> part) { parts.push_back(std::move(part)); }
  void awakeFromNib() override { awakened.push_back(field ? "owner with field" : "owner"); }

  Ref<NSTextField> field;
  Ref<NSView> view;
  bool isLoud = false;
  int count = 0;
  double width = 0;
  std::string name;
  CGPoint place;
  CGSize size;
  CGRect area;
  Corner corner = Corner::Left;
  Ref<NSColor> color;
  Ref<NSFont> font;
  Ref<NSImage> image;
  Ref<NSCell> cell;
  std::vector<Ref<Owner>> parts;
};
const Outlet Owner::outlets[] = {outlet<&Owner::setField>("field"), outlet<&Owner::setView>("view"),
                                 outlet<&Owner::setCell>("cell")};
const Property Owner::properties[] = {
    property<&Owner::setIsLoud, "isLoud">(), property<&Owner::setCount, "count">(), property<&Owner::setWidth, "width">(),
    property<&Owner::setName, "name">(),     property<&Owner::setPlace, "place">(), property<&Owner::setSize, "size">(),
    property<&Owner::setArea, "area">(),     property<&Owner::setColor, "color">(), property<&Owner::setCorner, "corner">(),
    property<&Owner::setFont, "font">(),     property<&Owner::setImage, "image">()};
const InnerObjects Owner::innerObjects[] = {innerObject<&Owner::addPart>("parts", InnerObjects::Count::Many)};
const ClassInfo Owner::staticClassInfo{.name = "Test.Owner",
                                       .base = &NSObject::staticClassInfo,
                                       .outlets = Owner::outlets,
                                       .properties = Owner::properties,
                                       .innerObjects = Owner::innerObjects};

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

TEST_F(NSNibTest, AnUnknownKeyIsAnErrorAtEveryUse) {
  const auto nib = make<NSNib>(R"({"objects": [{"id": "a", "class": "NSView", "colour": 1}]})");
  const auto error = nib->instantiateWithOwner(nullptr).error;
  ASSERT_TRUE(error);
  EXPECT_EQ(nib->instantiateWithOwner(nullptr).error, error);
}

TEST_F(NSNibTest, TheSecondUseReadsWhatTheFirstOneRead) {
  const auto nib = make<NSNib>(R"({"objects": [{"class": "NSTextField", "frame": [1, 2, 30, 40], "hidden": true,
      "cell": {"stringValue": "abc", "fontSize": 17}, "subviews": [{"class": "NSView", "frame": [3, 4, 5, 6]}]}]})");
  for (int use = 0; use < 3; ++use) {
    const NSNib::Contents contents = nib->instantiateWithOwner(nullptr);
    ASSERT_FALSE(contents.error) << *contents.error;
    ASSERT_EQ(contents.topLevelObjects.size(), 1u);
    const auto field = std::dynamic_pointer_cast<NSTextField>(contents.topLevelObjects[0]);
    EXPECT_EQ(field->frame(), (CGRect{1, 2, 30, 40}));
    EXPECT_TRUE(field->isHidden());
    EXPECT_EQ(field->stringValue(), "abc");
    EXPECT_EQ(field->font()->pointSize(), 17);
    ASSERT_EQ(field->subviews().size(), 1u);
    EXPECT_EQ(field->subviews()[0]->frame(), (CGRect{3, 4, 5, 6}));
  }
}

TEST_F(NSNibTest, ABadDocumentIsAClearError) {
  const struct {
    const char* json;
    const char* error;
  } cases[] = {
      {"", "the archive is not JSON: line 1, column 1"},
      {"{\"objects\": [\n  {\"class\" \"NSView\"}]}", "the archive is not JSON: line 2, column 19"},
      {"[]", "the archive is not a JSON object"},
      {R"({"objects": [{"class": "NSView", "class": "NSView"}]})", "the archive has an object with the key \"class\" twice"},
      {"{}", "\"objects\" is not an array of objects"},
      {R"({"objects": [3]})", "\"objects\" is not an array of objects"},
      {R"({"objects": [], "object": {}})", "the document has an unknown key \"object\""},
      {R"({"objects": [{}]})", "object 1 has no class"},
      {R"({"objects": [{"class": "Nobody"}]})", "object 1 (Nobody): unknown class \"Nobody\""},
      {R"({"objects": [{"id": "a", "class": "NSView"}, {"id": "a", "class": "NSView"}]})", "the id \"a\" is used twice"},
      {R"({"objects": [{"id": "owner", "class": "NSView"}]})", "the id \"owner\" is used twice"},
      {R"({"objects": [{"id": 1, "class": "NSView"}]})", "\"id\" of object 1 (NSView) has a value of the wrong type"},
      {R"({"owner": {"view": "b"}, "objects": []})", "the outlet \"view\" of the owner refers to an unknown object"},
      {R"({"owner": {"nothing": "a"}, "objects": [{"id": "a", "class": "NSView"}]})", "the owner has no outlet \"nothing\""},
      {R"({"owner": {"field": "a"}, "objects": [{"id": "a", "class": "NSView"}]})",
       "the outlet \"field\" of the owner cannot refer to a NSView"},
      {R"({"owner": 1, "objects": []})", "\"owner\" of the document is not an object"},
      {R"({"objects": [{"id": "a", "class": "NSView", "outlets": []}]})", "\"outlets\" of \"a\" is not an object"},
      {R"({"objects": [{"id": "a", "class": "NSView", "properties": {"x": 1}}]})", "\"a\" has no property \"x\""},
      {R"({"objects": [{"id": "a", "class": "NSView", "properties": []}]})", "\"properties\" of \"a\" is not an object"},
      {R"({"objects": [{"id": "a", "class": "NSView", "colour": 1}]})", "\"a\" has an unknown key \"colour\""},
      {R"({"objects": [{"id": "a", "class": "NSView", "frame": [0, 0, 1]}]})",
       "\"frame\" of \"a\" has a value of the wrong type"},
      {R"({"objects": [{"id": "a", "class": "NSView", "hidden": "yes"}]})",
       "\"hidden\" of \"a\" has a value of the wrong type"},
      {R"({"objects": [{"id": "a", "class": "NSView", "autoresizingMask": 1.5}]})",
       "\"autoresizingMask\" of \"a\" has a value of the wrong type"},
      {R"({"objects": [{"id": "a", "class": "NSImageView", "imageScaling": 9}]})",
       "\"imageScaling\" of \"a\" has a value of the wrong type"},
      {R"({"objects": [{"id": "a", "class": "NSView", "subviews": 1}]})",
       "\"subviews\" of \"a\" is not an array of objects"},
      {R"({"objects": [{"id": "a", "class": "NSView", "subviews": [{"class": "NSCell"}]}]})",
       "NSCell cannot be in \"subviews\" of \"a\""},
      {R"({"objects": [{"id": "a", "class": "NSCell", "subviews": []}]})", "\"a\" has an unknown key \"subviews\""},
      {R"({"objects": [{"id": "a", "class": "NSView", "contentView": {"class": "NSView"}}]})",
       "\"a\" has an unknown key \"contentView\""},
      {R"({"objects": [{"id": "a", "class": "NSWindow", "contentView": []}]})", "\"contentView\" of \"a\" is not an object"},
      {R"({"objects": [{"id": "a", "class": "NSScrollView", "documentView": {"class": "NSCell"}}]})",
       "NSCell cannot be in \"documentView\" of \"a\""},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"class": "Nobody"}}]})",
       "\"a\": its cell: unknown class \"Nobody\""},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"class": "NSView"}}]})",
       "\"a\": its cell: NSView is not a cell"},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": 1}]})",
       "\"cell\" of \"a\" has a value of the wrong type"},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"titel": "x"}}]})",
       "the cell of \"a\" has an unknown key \"titel\""},
      {R"({"objects": [{"id": "a", "class": "NSTextField", "cell": {"class": "NSTextFieldCell", "fontSize": "13"}}]})",
       "\"fontSize\" of the cell of \"a\" has a value of the wrong type"},
  };
  for (const auto& [json, error] : cases) EXPECT_EQ(errorOf(json), error) << json;
  EXPECT_TRUE(awakened.empty());
}

TEST_F(NSNibTest, APropertyOfAnotherKindIsAnError) {
  const char* const badValues[] = {R"("count": 1.5)",
                                   R"("count": 1e99)",
                                   R"("count": "1")",
                                   R"("isLoud": 1)",
                                   R"("width": "1")",
                                   R"("name": 1)",
                                   R"("place": [1])",
                                   R"("place": [1, "2"])",
                                   R"("size": [1, 2, 3])",
                                   R"("area": [1, 2, 3])",
                                   R"("area": {})",
                                   R"("corner": "middle")",
                                   R"("corner": 2)",
                                   R"("color": "purpleColor")",
                                   R"("color": [1, 0])",
                                   R"("color": [1, 0, 2])",
                                   R"("color": 1)",
                                   R"("color": null)",
                                   R"("font": 0)",
                                   R"("font": "big")",
                                   R"("font": {"size": 0})",
                                   R"("font": {"bold": true})",
                                   R"("font": {"size": 9, "italic": true})",
                                   R"("font": {"size": 9, "name": "No Such Family"})",
                                   R"("font": {"size": 9, "name": 1})",
                                   R"("font": {"size": 9, "name": "Headless", "bold": true})",
                                   R"("image": "unknown")",
                                   R"("image": 1)"};
  for (const std::string property : badValues) {
    const std::string name = property.substr(0, property.find(':'));
    const std::string json = R"({"objects": [{"id": "a", "class": "Test.Owner", "properties": {)" + property + "}}]}";
    EXPECT_EQ(errorOf(json), "the property " + name + " of \"a\" has a value of the wrong type") << property;
  }
}

TEST_F(NSNibTest, APropertyIsWhatItsSetterTakes) {
  const auto picture = make<NSImage>(CGSize{8, 8});
  NSImage::setImageNamed("picture", picture);
  const auto loaded = [](const std::string& properties) {
    const auto contents = make<NSNib>(R"({"objects": [{"class": "Test.Owner", "properties": {)" + properties + "}}]}")
                              ->instantiateWithOwner(nullptr);
    EXPECT_EQ(contents.error, std::nullopt) << properties;
    return contents.error ? make<Owner>() : std::dynamic_pointer_cast<Owner>(contents.topLevelObjects.at(0));
  };
  const auto first = loaded(R"("place": [1, 2], "size": [3, 4], "area": [1, 2, 3, 4.5], "corner": "right",
                               "color": "controlTextColor", "font": 9, "image": "picture")");
  EXPECT_EQ(first->place, (CGPoint{1, 2}));
  EXPECT_EQ(first->size, (CGSize{3, 4}));
  EXPECT_EQ(first->area, (CGRect{1, 2, 3, 4.5}));
  EXPECT_EQ(first->corner, Corner::Right);
  EXPECT_EQ(first->color, NSColor::controlTextColor());
  EXPECT_TRUE(areEqual(first->font.get(), NSFont::systemFontOfSize(9).get()));
  EXPECT_EQ(first->image, picture);
  const auto second = loaded(R"("corner": 1, "color": [1, 0.5, 0], "font": {"size": 15, "bold": true})");
  EXPECT_EQ(second->corner, Corner::Left);
  EXPECT_TRUE(areEqual(second->color.get(), NSColor::colorWithSRGBRed(1, 0.5, 0, 1).get()));
  EXPECT_TRUE(areEqual(second->font.get(), NSFont::boldSystemFontOfSize(15).get()));
  EXPECT_TRUE(areEqual(loaded(R"("color": [0, 0, 1, 0.25])")->color.get(), NSColor::colorWithSRGBRed(0, 0, 1, 0.25).get()));
  NSImage::setImageNamed("picture", nullptr);
}

TEST_F(NSNibTest, PropertiesAreSetOnceTheObjectIsMade) {
  const auto contents = make<NSNib>(R"({"objects": [
      {"class": "NSTextField", "frame": [0, 0, 9, 9], "cell": {"stringValue": "made", "editable": false},
       "properties": {"stringValue": "set", "frame": [1, 2, 30, 40], "editable": true, "toolTip": "tip", "enabled": false}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto field = std::dynamic_pointer_cast<NSTextField>(contents.topLevelObjects.at(0));
  EXPECT_EQ(field->stringValue(), "set");
  EXPECT_EQ(field->frame(), (CGRect{1, 2, 30, 40}));
  EXPECT_TRUE(field->isEditable());
  EXPECT_FALSE(field->isEnabled());
  EXPECT_EQ(field->toolTip(), "tip");
}

TEST_F(NSNibTest, WhatAWindowAndItsViewsAllowAreProperties) {
  const auto contents = make<NSNib>(R"({"objects": [{"class": "NSWindow", "contentRect": [0, 0, 10, 10],
      "properties": {"movableByWindowBackground": true},
      "contentView": {"class": "NSView", "properties": {"enablesControls": false}, "subviews": [{"class": "NSControl"}]}}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto window = std::dynamic_pointer_cast<NSWindow>(contents.topLevelObjects.at(0));
  EXPECT_TRUE(window->isMovableByWindowBackground());
  EXPECT_FALSE(std::dynamic_pointer_cast<NSControl>(window->contentView()->subviews()[0])->isEnabled());
}

TEST_F(NSNibTest, TheLimitsOfAValueAreSetBeforeTheValueWhereverTheyAreWritten) {
  for (const std::string properties :
       {R"("doubleValue": 50, "maxValue": 90, "minValue": 10)", R"("minValue": 10, "maxValue": 90, "doubleValue": 50)"}) {
    for (const std::string& object :
         {R"({"class": "NSSlider", "properties": {)" + properties + "}}",
          R"({"class": "NSSlider", "cell": {"class": "NSSliderCell", "properties": {)" + properties + "}}}",
          R"({"class": "NSLevelIndicator", "properties": {)" + properties + "}}"}) {
      const auto contents = make<NSNib>(R"({"objects": [)" + object + "]}")->instantiateWithOwner(nullptr);
      ASSERT_EQ(contents.error, std::nullopt);
      EXPECT_EQ(std::dynamic_pointer_cast<NSControl>(contents.topLevelObjects.at(0))->doubleValue(), 50) << object;
    }
  }
}

TEST_F(NSNibTest, AFloatAndTheSelectedSegmentAreProperties) {
  const auto control = [](const std::string& object) {
    const auto contents = make<NSNib>(R"({"objects": [)" + object + "]}")->instantiateWithOwner(nullptr);
    EXPECT_EQ(contents.error, std::nullopt) << object;
    return contents.error ? nullptr : std::dynamic_pointer_cast<NSControl>(contents.topLevelObjects.at(0));
  };
  EXPECT_EQ(control(R"({"class": "NSTextField", "properties": {"floatValue": 0.1}})")->stringValue(), "0.1");
  EXPECT_EQ(control(R"({"class": "NSTextField", "cell": {"properties": {"floatValue": 0.1}}})")->floatValue(), 0.1f);
  const auto isOfWrongType = testing::HasSubstr("wrong type");
  EXPECT_THAT(errorOf(R"({"objects": [{"id": "a", "class": "NSTextField", "properties": {"floatValue": 1e60}}]})"),
              isOfWrongType);

  const std::string segments = R"("segments": [{"label": "One"}, {"label": "Two", "selected": true}, {"label": "Three"}])";
  const auto selected = [&](const std::string& index) {
    std::vector<std::optional<std::size_t>> result;
    const std::string properties = R"("properties": {"selectedSegment": )" + index + "}";
    for (const std::string& object : {R"({"class": "NSSegmentedControl", "cell": {)" + segments + "}, " + properties + "}",
                                      R"({"class": "NSSegmentedControl", "cell": {)" + segments + ", " + properties + "}}"})
      result.push_back(dynamic_cast<NSSegmentedControl&>(*control(object)).selectedSegment());
    return result;
  };
  EXPECT_THAT(selected("2"), testing::Each(std::optional<std::size_t>(2)));
  EXPECT_THAT(selected("-1"), testing::Each(std::optional<std::size_t>()));
  for (const std::string bad : {"3", "-2", "0.5", "\"One\""})
    EXPECT_THAT(errorOf(R"({"objects": [{"id": "a", "class": "NSSegmentedControl", "cell": {)" + segments +
                        R"(}, "properties": {"selectedSegment": )" + bad + "}}]}"),
                isOfWrongType)
        << bad;
}

TEST_F(NSNibTest, ACellIsAnObjectOfTheDocumentAlsoWithoutAClassOfItsOwn) {
  for (const std::string className : {R"("class": "NSTextFieldCell", )", ""}) {
    const auto contents = make<NSNib>(R"({"objects": [
        {"class": "NSTextField", "cell": {)" +
                                      className + R"("id": "cell", "fontSize": 9, "properties": {"textColor": "redColor"}}},
        {"class": "Test.Owner", "outlets": {"cell": "cell"}}]})")
                              ->instantiateWithOwner(nullptr);
    ASSERT_EQ(contents.error, std::nullopt);
    const auto cell = std::dynamic_pointer_cast<NSTextField>(contents.topLevelObjects.at(0))->cell();
    EXPECT_EQ(std::dynamic_pointer_cast<Owner>(contents.topLevelObjects.at(1))->cell, cell);
    EXPECT_EQ(std::dynamic_pointer_cast<NSTextFieldCell>(cell)->textColor(), NSColor::redColor());
    EXPECT_EQ(cell->font()->pointSize(), 9);
  }
}

TEST_F(NSNibTest, WhatMayBeInAnObjectIsATableOfItsClass) {
  const auto contents = make<NSNib>(R"({"objects": [{"class": "Test.Owner", "parts": [
      {"class": "Test.Owner", "properties": {"name": "first"}}, {"class": "Test.Owner", "properties": {"name": "second"}}]}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto& parts = std::dynamic_pointer_cast<Owner>(contents.topLevelObjects.at(0))->parts;
  ASSERT_EQ(parts.size(), 2u);
  EXPECT_EQ(parts[0]->name, "first");
  EXPECT_EQ(parts[1]->name, "second");
}

TEST_F(NSNibTest, AKeyThatTheClassOverlooksIsNotAnError) {
  EXPECT_EQ(errorOf(R"({"objects": [{"class": "Test.Owner", "overlooked": [1, "any"]}]})"), "no error");
}

TEST_F(NSNibTest, DeepNestingIsAnErrorAndNoCrash) {
  std::string json = R"({"objects": [)";
  for (int i = 0; i < 5000; ++i) json += R"({"class": "NSView", "subviews": [)";
  for (int i = 0; i < 5000; ++i) json += "]}";
  json += "]}";
  EXPECT_EQ(errorOf(json), "object 102 (NSView) is nested too deeply");
}

TEST_F(NSNibTest, DeepNestingOfWhatClassesReadThemselvesIsAnErrorToo) {
  constexpr int depth = 5000;
  std::string json = R"({"objects": [)";
  for (int i = 0; i < depth; ++i) json += R"({"class": "NSControl", "cell": )";
  json += "{}" + std::string(depth, '}') + "]}";
  EXPECT_TRUE(errorOf(json).ends_with("its cell: is nested too deeply")) << errorOf(json);
  EXPECT_EQ(errorOf(R"({"objects": [{"class": "NSControl", "cell": {"class": "NSCell"}}]})"), "no error");
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
      {"class": "NSWindow", "contentRect": [0, 0, 10, 10], "contentView": {"class": "NSImageView", "imageScaling": 3}}]})";
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
  EXPECT_GT(loaded, 4000);
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

TEST_F(NSNibTest, AWindowThatIsNotConnectedIsNotTheControllers) {
  NSNib::registerDocument("window", R"({"objects": [{"id": "w", "class": "NSWindow"}]})");
  EXPECT_EQ(make<NSWindowController>("window")->window(), nullptr);
}

TEST_F(NSNibTest, AWindowControllerLoadsOnceAlsoWhereThatGaveNoWindow) {
  struct Counting : NSWindowController {
    using NSWindowController::NSWindowController;
    int loads = 0;
    void windowDidLoad() override { ++loads; }
  };
  NSNib::registerDocument("window", R"({"objects": []})");
  const auto controller = make<Counting>("window");
  EXPECT_EQ(controller->window(), nullptr);
  EXPECT_EQ(controller->window(), nullptr);
  EXPECT_EQ(controller->loads, 1);
}

TEST_F(NSNibTest, AWindowThatIsSetBeforeTheFirstUseIsTheControllers) {
  NSNib::registerDocument("window", R"({"owner": {"window": "w"}, "objects": [{"id": "w", "class": "NSWindow"}]})");
  const auto window = showWindow();
  const auto controller = make<LoadedController>("window");
  controller->setWindow(window);
  EXPECT_EQ(controller->window(), window);
  EXPECT_EQ(controller->loads, 0);
}

TEST_F(NSNibTest, AWindowThatAnotherControllerTookBelongsToThatOne) {
  const auto window = showWindow();
  const auto first = make<LoadedController>(window), second = make<LoadedController>(window);
  first->setWindow(nullptr);
  EXPECT_EQ(window->windowController(), second);
}

TEST_F(NSNibTest, ADecodedWindowIsItsOwnFirstResponder) {
  NSNib::registerDocument("window", R"({"owner": {"window": "w"}, "objects": [{"id": "w", "class": "NSWindow"}]})");
  const Ref<NSWindow> window = make<NSWindowController>("window")->window();
  ASSERT_TRUE(window);
  EXPECT_EQ(window->firstResponder(), window.get());
}

TEST_F(NSNibTest, AWindowControllerThatWasGivenAWindowLoadsNothing) {
  const auto window = showWindow();
  const auto controller = make<LoadedController>(window);
  EXPECT_EQ(controller->window(), window);
  EXPECT_EQ(window->windowController(), controller);
  EXPECT_EQ(controller->loads, 0);
  EXPECT_EQ(make<LoadedController>()->window(), nullptr);
}

TEST_F(NSNibTest, AWindowThatIsReplacedHasNoController) {
  const auto earlier = showWindow(), later = showWindow();
  const auto controller = make<LoadedController>(earlier);
  controller->setWindow(later);
  EXPECT_EQ(earlier->windowController(), nullptr);
  EXPECT_EQ(later->windowController(), controller);
  controller->setWindow(nullptr);
  EXPECT_EQ(later->windowController(), nullptr);
  EXPECT_FALSE(controller->isWindowLoaded());
}

TEST_F(NSNibTest, AWindowControllerShowsAndClosesItsWindow) {
  const auto window = make<NSWindow>(CGRect{100, 100, 50, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  const auto controller = make<LoadedController>(window);
  controller->showWindow(nullptr);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(window->isKeyWindow());
  controller->close();
  EXPECT_FALSE(window->isVisible());
  make<LoadedController>()->close();
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

TEST_F(NSNibTest, WhereNoneIsConnectedTheFirstViewIsTheControllers) {
  NSNib::registerDocument("row", R"({"objects": [{"class": "NSWindow"}, {"class": "NSView", "frame": [0, 0, 1, 1]},
                                                 {"class": "NSView", "frame": [0, 0, 2, 2]}]})");
  EXPECT_EQ(make<MyController>("row")->view()->frame(), (CGRect{0, 0, 1, 1}));
}

TEST_F(NSNibTest, AFactoryMakesTheViewInCode) {
  const auto made = make<NSView>(CGRect{0, 0, 5, 5});
  NSNib::registerFactory("made", [&](NSObject& owner) {
    EXPECT_NE(dynamic_cast<MyController*>(&owner), nullptr);
    return made;
  });
  EXPECT_EQ(make<MyController>("made")->view(), made);
}

TEST_F(NSNibTest, AnAbsentNibNameMeansTheNameOfTheClass) {
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
  NSNib::registerFactory("row", [](NSObject&) { return make<NSView>(CGRect{}); });
  EXPECT_DEATH(make<MyController>("Test.row")->view(), "there is no interface file \"Test.row\"");
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
