#include "tessaluna/uikit/interfaceFileClasses.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "tessaluna/platform/events/NSCursor.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/uikit/TessalunaUIKit.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/sourceFolder.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct interfaceFileClassesTest : harness::StillWorld {
  interfaceFileClassesTest() { registerInterfaceFileClasses(); }

  // The first object of a document of one; absent, with a failure, after an error.
  template <class T>
  static Ref<T> load(const std::string& object) {
    const auto contents = make<NSNib>(R"({"objects": [)" + object + "]}")->instantiateWithOwner(nullptr);
    EXPECT_EQ(contents.error, std::nullopt) << object;
    return contents.error ? nullptr : std::dynamic_pointer_cast<T>(contents.topLevelObjects.at(0));
  }
  static std::string errorOf(const std::string& object) {
    return make<NSNib>(R"({"objects": [)" + object + "]}")->instantiateWithOwner(nullptr).error.value_or("no error");
  }
};

// The names that the sources of the library give to classes.
std::set<std::string> classNames() {
  std::set<std::string> names;
  const std::regex pattern(R"re(\.name = "(TessalunaUIKit\.\w+)")re");
  for (const auto& entry : std::filesystem::recursive_directory_iterator(harness::sourceFolder() + "/tessaluna/uikit")) {
    if (entry.path().extension() != ".cpp") continue;
    std::stringstream text;
    text << std::ifstream(entry.path()).rdbuf();
    const std::string source = text.str();
    for (std::sregex_iterator found(source.begin(), source.end(), pattern), end; found != end; ++found)
      names.insert((*found)[1]);
  }
  return names;
}

TEST_F(interfaceFileClassesTest, EveryClassCanBeNamed) {
  // What nobody makes from an archive: a base of others, the class of the drawing routines, a window that is made in code, parts
  // of others.
  const std::set<std::string> exceptions{"TessalunaUIKit.TrackRowControl", "TessalunaUIKit.TessalunaStyleKit",
                                         "TessalunaUIKit.SuggestionsWindow", "TessalunaUIKit.AccessibleLink",
                                         "TessalunaUIKit.LinkKeyboard"};
  std::size_t made = 0;
  for (const std::string& name : classNames()) {
    NSCoder coder;
    const Ref<NSObject> object = makeObjectOfClass(name, coder);
    EXPECT_EQ(object == nullptr, exceptions.contains(name)) << name << ": " << coder.failure().value_or("");
    if (!object) continue;
    EXPECT_EQ(object->className(), name);
    ++made;
  }
  EXPECT_GE(made, 14u);
}

TEST_F(interfaceFileClassesTest, AClassHasItsProperties) {
  const auto play = load<TrackRowPlayButton>(R"({"class": "TessalunaUIKit.TrackRowPlayButton", "frame": [1, 2, 15, 15],
      "properties": {"hasMouseOnRow": true, "isPressed": true, "isPlayingTrack": true, "isPlaying": true, "toolTip": "Play"}})");
  EXPECT_TRUE(play->hasMouseOnRow() && play->isPressed() && play->isPlayingTrack() && play->isPlaying());
  EXPECT_EQ(play->frame(), (CGRect{1, 2, 15, 15}));
  EXPECT_EQ(play->toolTip(), "Play");
  const auto heart = load<TrackRowFavoriteButton>(
      R"({"class": "TessalunaUIKit.TrackRowFavoriteButton", "properties": {"isFavorite": true, "hasMouseOnRow": true}})");
  EXPECT_TRUE(heart->isFavorite() && heart->hasMouseOnRow());
  EXPECT_TRUE(
      load<TrackRowMoreButton>(R"({"class": "TessalunaUIKit.TrackRowMoreButton", "properties": {"hasMouseOnRow": true}})")
          ->hasMouseOnRow());
  const auto next = load<PrevNextButton>(R"({"class": "TessalunaUIKit.PrevNextButton", "action": "step:",
      "properties": {"next": true, "enabled": false}})");
  EXPECT_TRUE(next->next());
  EXPECT_FALSE(next->isEnabled());
  EXPECT_EQ(next->action(), "step:");
  EXPECT_TRUE(
      load<HighlightingView>(R"({"class": "TessalunaUIKit.HighlightingView", "properties": {"isHighlighted": true}})")
          ->isHighlighted());
  const auto field = load<NSTextField>(R"({"class": "NSTextField", "cell": {"class": "TessalunaUIKit.FlatTextFieldCell",
      "properties": {"borderColor": [0, 0.5, 1]}}})");
  EXPECT_TRUE(areEqual(std::dynamic_pointer_cast<FlatTextFieldCell>(field->cell())->borderColor().get(),
                       NSColor::colorWithSRGBRed(0, 0.5, 1, 1).get()));
  const auto links = load<MultipleLinksTextField>(R"({"class": "TessalunaUIKit.MultipleLinksTextField", "properties": {
      "linksEnabled": true, "isPressed": true, "font": 10, "stringValues": ["Mira Holt", "", "Jonas Wehr"],
      "textColor": "redColor", "lineBreakMode": "truncatingTail", "showsMenuAtEllipsis": true, "takesKeyboard": true, "showsToolTipWhileCut": true}})");
  EXPECT_TRUE(links->showsMenuAtEllipsis() && links->takesKeyboard() && links->showsToolTipWhileCut());
  EXPECT_TRUE(links->linksEnabled() && links->isPressed());
  EXPECT_EQ(links->font()->pointSize(), 10);
  EXPECT_EQ(links->textColor(), NSColor::redColor());
  EXPECT_EQ(links->lineBreakMode(), NSLineBreakByTruncatingTail);
  EXPECT_EQ(links->stringValues(), (std::vector<std::string>{"Mira Holt", "", "Jonas Wehr"}));
  const auto tabs = load<NSSegmentedControl>(R"({"class": "NSSegmentedControl", "cell": {
      "class": "TessalunaUIKit.UnderlinedSegmentedCell", "segments": [{"label": "Albums", "selected": true}, {"label": "Tracks"}],
      "properties": {"useDarkTheme": false, "underlineColor": "redColor"}}})");
  const auto underlined = std::dynamic_pointer_cast<UnderlinedSegmentedCell>(tabs->cell());
  EXPECT_FALSE(underlined->useDarkTheme());
  EXPECT_EQ(underlined->underlineColor(), NSColor::redColor());
  EXPECT_EQ(tabs->labelForSegment(1), "Tracks");
  EXPECT_EQ(tabs->selectedSegment(), 0u);
  for (const std::string name : {"ViewWithBackground", "TableCellViewWithBackground"}) {
    const auto view =
        load<NSView>(R"({"class": "TessalunaUIKit.)" + name + R"(", "properties": {"backgroundColor": [1, 0, 0]}})");
    const auto red = NSColor::colorWithSRGBRed(1, 0, 0, 1);
    if (const auto plain = std::dynamic_pointer_cast<ViewWithBackground>(view))
      EXPECT_TRUE(areEqual(plain->backgroundColor().get(), red.get()));
    else
      EXPECT_TRUE(
          areEqual(std::dynamic_pointer_cast<TableCellViewWithBackground>(view)->backgroundColor().get(), red.get()));
  }
  const auto cover = load<CoverArtThumbnailView>(R"({"class": "TessalunaUIKit.CoverArtThumbnailView",
      "properties": {"scaleToScreenResolution": true, "closesByClickAndEscape": true}})");
  EXPECT_TRUE(cover->scaleToScreenResolution() && cover->closesByClickAndEscape());
  // The first three are known, and are as of a new section once it is awake.
  const auto section = load<DisclosureView>(R"({"class": "TessalunaUIKit.DisclosureView", "frame": [0, 0, 100, 50],
      "properties": {"isDisclosed": false, "isChanging": true, "disclosedHeight": 9, "leavesOutFoldedViews": true}})");
  EXPECT_TRUE(section->isDisclosed() && !section->isChanging() && section->leavesOutFoldedViews());
  EXPECT_EQ(section->disclosedHeight(), 50);
  EXPECT_TRUE(
      load<DisclosureHeaderView>(R"({"class": "TessalunaUIKit.DisclosureHeaderView", "properties": {"isOperable": true}})")
          ->isOperable());
  EXPECT_TRUE(load<CoverArtPanel>(R"({"class": "TessalunaUIKit.CoverArtPanel", "contentRect": [0, 0, 9, 9]})")
                  ->canBecomeKeyWindow());
  const auto controller = load<SuggestionsWindowController>(R"({"class": "TessalunaUIKit.SuggestionsWindowController",
      "properties": {"suggestionPrototype": "row", "endsWithHiddenWindow": true}})");
  EXPECT_EQ(controller->suggestionPrototype(), "row");
  EXPECT_TRUE(controller->endsWithHiddenWindow());
}

TEST_F(interfaceFileClassesTest, AClickableLabelIsATextFieldWithACellOfItsOwn) {
  const auto label = load<ClickableLabel>(R"({"class": "TessalunaUIKit.ClickableLabel", "frame": [1, 2, 100, 20],
      "cell": {"stringValue": "abc", "editable": false}, "properties": {"textColor": "redColor", "takesKeyboard": true}})");
  EXPECT_EQ(label->stringValue(), "abc");
  EXPECT_TRUE(label->takesKeyboard());
  EXPECT_EQ(label->textColor(), NSColor::redColor());
  EXPECT_EQ(label->cell()->className(), "TessalunaUIKit.ClickableLabelCell");
  EXPECT_EQ(errorOf(R"({"id": "a", "class": "TessalunaUIKit.ClickableLabel", "outlets": {"actionTarget": "a"}})"),
            "\"a\" has no outlet \"actionTarget\"");
}

TEST_F(interfaceFileClassesTest, CellsOfControlsHaveTheirProperties) {
  const auto stars = load<NSLevelIndicator>(R"({"class": "NSLevelIndicator", "cell": {
      "class": "TessalunaUIKit.DotsLevelIndicatorCell", "doubleValue": 3, "properties": {"borderColor": "redColor"}}})");
  const auto dots = std::dynamic_pointer_cast<DotsLevelIndicatorCell>(stars->cell());
  EXPECT_EQ(dots->borderColor(), NSColor::redColor());
  EXPECT_TRUE(dots->isHighlighted());
  EXPECT_EQ(stars->doubleValue(), 3);
  const auto popUp = load<NSPopUpButton>(R"({"class": "NSPopUpButton", "cell": {"class": "TessalunaUIKit.ExtPopUpButtonCell",
      "items": [{"title": "By name"}, {"title": "By date"}], "selectedIndex": 1, "properties": {"useDarkTheme": true}}})");
  EXPECT_TRUE(std::dynamic_pointer_cast<ExtPopUpButtonCell>(popUp->cell())->useDarkTheme());
  EXPECT_EQ(popUp->title(), "By date");
  NSImage::setImageNamed("cover", make<NSImage>(CGSize{2, 2}));
  const auto row = load<NSTextField>(R"({"class": "NSTextField", "cell": {"class": "TessalunaUIKit.ImageAndTextCell",
      "stringValue": "Albums", "properties": {"cellImage": "cover"}}})");
  EXPECT_EQ(std::dynamic_pointer_cast<ImageAndTextCell>(row->cell())->cellImage(), NSImage::imageNamed("cover"));
  NSImage::setImageNamed("cover", nullptr);
}

TEST_F(interfaceFileClassesTest, KeysThatAClassOverlooksAreKnownAndDoNothing) {
  EXPECT_FALSE(load<PrevNextButton>(R"({"class": "TessalunaUIKit.PrevNextButton", "next": true})")->next());
  const auto play = load<TrackRowPlayButton>(R"({"class": "TessalunaUIKit.TrackRowPlayButton", "hasMouseOnRow": true,
      "isPressed": true, "isPlaying": true, "isPlayingTrack": true})");
  EXPECT_FALSE(play->hasMouseOnRow() || play->isPressed() || play->isPlaying() || play->isPlayingTrack());
  EXPECT_FALSE(load<TrackRowFavoriteButton>(R"({"class": "TessalunaUIKit.TrackRowFavoriteButton", "isFavorite": true})")
                   ->isFavorite());
  EXPECT_FALSE(
      load<HighlightingView>(R"({"class": "TessalunaUIKit.HighlightingView", "isHighlighted": true})")->isHighlighted());
  const auto links = load<MultipleLinksTextField>(R"({"class": "TessalunaUIKit.MultipleLinksTextField", "linksEnabled": true,
      "isPressed": true, "font": 10, "stringValues": ["Mira Holt"], "textColor": "redColor",
      "lineBreakMode": "truncatingTail"})");
  EXPECT_FALSE(links->linksEnabled() || links->isPressed() || links->font() || links->textColor() || links->stringValues());
  EXPECT_EQ(links->lineBreakMode(), NSLineBreakByClipping);
  EXPECT_FALSE(load<CoverArtThumbnailView>(R"({"class": "TessalunaUIKit.CoverArtThumbnailView",
      "scaleToScreenResolution": true})")
                   ->scaleToScreenResolution());
  const auto field = load<NSTextField>(R"({"class": "NSTextField", "cell": {"class": "TessalunaUIKit.FlatTextFieldCell",
      "borderColor": "redColor", "drawsBackground": true}})");
  const auto cell = std::dynamic_pointer_cast<FlatTextFieldCell>(field->cell());
  EXPECT_EQ(cell->borderColor(), NSColor::blackColor());
  EXPECT_FALSE(cell->drawsBackground());
  const auto tabs = load<NSSegmentedControl>(R"({"class": "NSSegmentedControl", "cell": {
      "class": "TessalunaUIKit.UnderlinedSegmentedCell", "useDarkTheme": false, "underlineColor": "redColor"}})");
  const auto underlined = std::dynamic_pointer_cast<UnderlinedSegmentedCell>(tabs->cell());
  EXPECT_TRUE(underlined->useDarkTheme());
  EXPECT_EQ(underlined->underlineColor(), NSColor::blueColor());
  const auto stars = load<NSLevelIndicator>(R"({"class": "NSLevelIndicator", "cell": {
      "class": "TessalunaUIKit.DotsLevelIndicatorCell", "borderColor": "redColor", "highlighted": false}})");
  const auto dots = std::dynamic_pointer_cast<DotsLevelIndicatorCell>(stars->cell());
  EXPECT_EQ(dots->borderColor(), NSColor::blackColor());
  EXPECT_TRUE(dots->isHighlighted());
  const auto popUp = load<NSPopUpButton>(R"({"class": "NSPopUpButton", "cell": {
      "class": "TessalunaUIKit.ExtPopUpButtonCell", "useDarkTheme": true}})");
  EXPECT_FALSE(std::dynamic_pointer_cast<ExtPopUpButtonCell>(popUp->cell())->useDarkTheme());
}

TEST_F(interfaceFileClassesTest, TheStringsOfALineOfLinksAreMeasuredWithItsFontWhereverThatIsInTheFile) {
  const auto links =
      load<MultipleLinksTextField>(R"({"class": "TessalunaUIKit.MultipleLinksTextField", "frame": [0, 0, 90, 20],
      "properties": {"stringValues": ["abc", "de"], "linksEnabled": true, "font": 20}})");
  const auto window = showWindowWith(links);
  links->resetCursorRects();
  // Ten points for each letter of "abc, de".
  for (const auto& [x, isLink] :
       {std::pair(29.5, true), {30.5, false}, {49.5, false}, {50.5, true}, {69.5, true}, {70.5, false}})
    EXPECT_EQ(links->cursorAt({x, 10}) == NSCursor::pointingHandCursor(), isLink) << x;
}

TEST_F(interfaceFileClassesTest, AnUnknownKeyOrPropertyIsAnError) {
  EXPECT_EQ(errorOf(R"({"class": "TessalunaUIKit.CloseButton", "id": "a", "next": true})"),
            "\"a\" has an unknown key \"next\"");
  EXPECT_EQ(errorOf(R"({"class": "TessalunaUIKit.TrackRowMoreButton", "id": "a", "properties": {"isFavorite": true}})"),
            "\"a\" has no property \"isFavorite\"");
  EXPECT_EQ(errorOf(R"({"class": "TessalunaUIKit.PrevNextButton", "id": "a", "properties": {"next": 1}})"),
            "the property \"next\" of \"a\" has a value of the wrong type");
  EXPECT_EQ(errorOf(R"({"class": "TessalunaUIKit.MultipleLinksTextField", "id": "a",
                        "properties": {"stringValues": ["b", 1]}})"),
            "the property \"stringValues\" of \"a\" has a value of the wrong type");
}

TEST_F(interfaceFileClassesTest, TheTargetOfATrackRowControlOrOfLinksIsNotAnOutletAndThatOfAButtonIs) {
  for (const std::string name :
       {"TrackRowPlayButton", "TrackRowFavoriteButton", "TrackRowMoreButton", "MultipleLinksTextField"})
    EXPECT_EQ(errorOf(R"({"id": "a", "class": "TessalunaUIKit.)" + name + R"(", "outlets": {"target": "a"}})"),
              "\"a\" has no outlet \"target\"");
  for (const std::string name : {"PrevNextButton", "CloseButton"}) {
    const auto button =
        load<NSButton>(R"({"id": "a", "class": "TessalunaUIKit.)" + name + R"(", "outlets": {"target": "a"}})");
    EXPECT_EQ(button->target(), button);
  }
}

}  // namespace
}  // namespace TessalunaUIKit
