#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tests/harness/StillWorld.h"

namespace TessalunaUIKit {
namespace {

using namespace tessaluna::platform;

struct SuggestionItemViewControllerTest : harness::StillWorld {
  SuggestionItemViewControllerTest() {
    registerInterfaceFileClasses();
    NSNib::registerDocument("whole", R"({
      "owner": {"view": "row", "labelTextField": "label", "detailedLabelTextField": "detail", "imageView": "image"},
      "objects": [{"id": "row", "class": "TessalunaUIKit.HighlightingView", "frame": [0, 0, 200, 30], "subviews": [
        {"id": "label", "class": "NSTextField", "frame": [30, 0, 80, 30], "cell": {"stringValue": "label"}},
        {"id": "detail", "class": "NSTextField", "frame": [110, 0, 80, 30], "cell": {"stringValue": "detail"}},
        {"id": "image", "class": "NSImageView", "frame": [0, 0, 30, 30]}]}]})");
    NSNib::registerDocument("no image", R"({
      "owner": {"view": "row", "labelTextField": "label", "detailedLabelTextField": "detail"},
      "objects": [{"id": "row", "class": "TessalunaUIKit.HighlightingView", "frame": [0, 0, 200, 30], "subviews": [
        {"id": "label", "class": "NSTextField"}, {"id": "detail", "class": "NSTextField"}]}]})");
  }
  static Suggestion full() {
    Suggestion suggestion("Kind of Blue", 7);
    suggestion.detailedLabel = "Miles Davis";
    suggestion.image = make<NSImage>(CGSize{10, 10});
    return suggestion;
  }
};

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

TEST_F(SuggestionItemViewControllerTest, FillsItsOutlets) {
  const auto row = make<SuggestionItemViewController>("whole");
  ASSERT_TRUE(std::dynamic_pointer_cast<HighlightingView>(row->view()));
  const Suggestion suggestion = full();
  row->setSuggestion(suggestion);
  EXPECT_EQ(row->labelTextField()->stringValue(), "Kind of Blue");
  EXPECT_EQ(row->detailedLabelTextField()->stringValue(), "Miles Davis");
  EXPECT_EQ(row->imageView()->image(), suggestion.image);
  EXPECT_EQ(row->suggestion()->itemId, 7);
}

TEST_F(SuggestionItemViewControllerTest, FillsTheLabelFirstAndTheImageLast) {
  struct ProbeCell : NSTextFieldCell {
    std::function<void()> onValue;
    void setObjectValue(Ref<NSObject> value) override {
      NSTextFieldCell::setObjectValue(std::move(value));
      if (onValue) onValue();
    }
  };
  const auto row = make<SuggestionItemViewController>("whole");
  row->view();
  const auto cell = make<ProbeCell>();
  row->detailedLabelTextField()->setCell(cell);
  std::string label;
  bool hadImage = true;
  cell->onValue = [&] {
    label = row->labelTextField()->stringValue();
    hadImage = row->imageView()->image() != nullptr;
  };
  row->setSuggestion(full());
  EXPECT_EQ(label, "Kind of Blue");
  EXPECT_FALSE(hadImage);
  EXPECT_NE(row->imageView()->image(), nullptr);
}

TEST_F(SuggestionItemViewControllerTest, AnAbsentDetailShowsAnEmptyTextAndDoesNotHideTheField) {
  const auto row = make<SuggestionItemViewController>("whole");
  row->view();
  row->setSuggestion(Suggestion("label", std::nullopt));
  EXPECT_EQ(row->detailedLabelTextField()->stringValue(), "");
  EXPECT_FALSE(row->detailedLabelTextField()->isHidden());
  EXPECT_EQ(row->imageView()->image(), nullptr);
}

TEST_F(SuggestionItemViewControllerTest, FilledBeforeItsViewIsLoadedKeepsTheValueAndShowsNothing) {
  const auto row = make<SuggestionItemViewController>("whole");
  row->setSuggestion(full());
  EXPECT_FALSE(row->isViewLoaded());
  row->view();
  EXPECT_EQ(row->labelTextField()->stringValue(), "label");
  EXPECT_EQ(row->suggestion()->label, "Kind of Blue");
}

TEST_F(SuggestionItemViewControllerTest, AbsentClearsBothTextsAndTheImage) {
  const auto row = make<SuggestionItemViewController>("whole");
  row->view();
  row->setSuggestion(full());
  row->setSuggestion(std::nullopt);
  EXPECT_EQ(row->labelTextField()->stringValue(), "");
  EXPECT_EQ(row->detailedLabelTextField()->stringValue(), "");
  EXPECT_EQ(row->imageView()->image(), nullptr);
}

TEST_F(SuggestionItemViewControllerTest, APrototypeWithoutAnImageViewFillsItsTexts) {
  const auto row = make<SuggestionItemViewController>("no image");
  row->view();
  row->setSuggestion(full());
  EXPECT_EQ(row->labelTextField()->stringValue(), "Kind of Blue");
  EXPECT_EQ(row->detailedLabelTextField()->stringValue(), "Miles Davis");
  EXPECT_EQ(row->imageView(), nullptr);
}

TEST_F(SuggestionItemViewControllerTest, FromACoderStartsEmpty) {
  NSCoder coder(R"({"nibName": "whole"})");
  const auto row = make<SuggestionItemViewController>(coder);
  EXPECT_EQ(row->suggestion(), std::nullopt);
  EXPECT_EQ(row->labelTextField(), nullptr);
  row->view();
  EXPECT_NE(row->labelTextField(), nullptr);
}

TEST_F(SuggestionItemViewControllerTest, ASuggestionWithBytesThatAreNotAnImageHasNone) {
  const Suggestion suggestion("label", 1, "detail", bytesOf("no image"));
  EXPECT_EQ(suggestion.image, nullptr);
  EXPECT_EQ(suggestion.label, "label");
  EXPECT_EQ(suggestion.detailedLabel, "detail");
  EXPECT_EQ(suggestion.itemId, 1);
}

TEST_F(SuggestionItemViewControllerTest, ASuggestionWithTheBytesOfAnImageHasIt) {
  const Suggestion suggestion("label", 1, std::nullopt, bytesOf("P6 1 1 255\nabc"));
  ASSERT_NE(suggestion.image, nullptr);
  const Suggestion copy = suggestion;
  EXPECT_EQ(copy.image, suggestion.image);
  EXPECT_EQ(Suggestion("label", 1, std::nullopt, std::nullopt).image, nullptr);
}

}  // namespace
}  // namespace TessalunaUIKit
