#include "tessaluna/platform/views/NSTableCellView.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"

namespace tessaluna::platform {
namespace {

struct NSTableCellViewTest : harness::StillWorld {
  Ref<NSTableCellView> view = make<NSTableCellView>(CGRect{0, 0, 100, 24});
};

TEST_F(NSTableCellViewTest, StartsWithoutContentsOnALightGround) {
  EXPECT_EQ(view->objectValue(), nullptr);
  EXPECT_EQ(view->textField(), nullptr);
  EXPECT_EQ(view->imageView(), nullptr);
  EXPECT_EQ(view->backgroundStyle(), NSBackgroundStyleLight);
  EXPECT_EQ(view->rowSizeStyle(), NSTableViewRowSizeStyleDefault);
}

TEST_F(NSTableCellViewTest, KeepsItsValueAliveAndItsOutletsNot) {
  std::weak_ptr<NSNumber> value;
  {
    const auto number = make<NSNumber>(3);
    value = number;
    view->setObjectValue(number);
    view->setTextField(make<NSTextField>(CGRect{}));
    view->setImageView(make<NSImageView>(CGRect{}));
  }
  EXPECT_FALSE(value.expired());
  EXPECT_EQ(view->textField(), nullptr);
  EXPECT_EQ(view->imageView(), nullptr);
}

TEST_F(NSTableCellViewTest, HandsItsGroundOnToTheCellsOfItsControlsAndToInnerCellViews) {
  const auto label = NSTextField::labelWithString("title");
  const auto inner = make<NSTableCellView>(CGRect{0, 0, 10, 10});
  const auto innerLabel = NSTextField::labelWithString("year");
  inner->addSubview(innerLabel);
  view->addSubview(label);
  view->addSubview(inner);
  view->addSubview(make<NSImageView>(CGRect{}));
  const auto window = showWindowWith(view);
  view->setBackgroundStyle(NSBackgroundStyleDark);
  EXPECT_EQ(view->backgroundStyle(), NSBackgroundStyleDark);
  EXPECT_EQ(label->cell()->backgroundStyle(), NSBackgroundStyleDark);
  EXPECT_TRUE(label->needsDisplay());
  EXPECT_EQ(innerLabel->cell()->backgroundStyle(), NSBackgroundStyleDark);
  view->setBackgroundStyle(NSBackgroundStyleLight);
  EXPECT_EQ(innerLabel->cell()->backgroundStyle(), NSBackgroundStyleLight);
}

TEST_F(NSTableCellViewTest, AnInterfaceFileConnectsItsContents) {
  const auto contents = make<NSNib>(R"({"objects": [{"class": "NSTableCellView", "id": "row", "frame": [0, 0, 100, 24],
      "outlets": {"textField": "title", "imageView": "cover"}, "properties": {"backgroundStyle": "dark"},
      "subviews": [{"class": "NSTextField", "id": "title"}, {"class": "NSImageView", "id": "cover"}]}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  const auto loaded = std::dynamic_pointer_cast<NSTableCellView>(contents.topLevelObjects.at(0));
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->textField(), loaded->subviews()[0]);
  EXPECT_EQ(loaded->imageView(), loaded->subviews()[1]);
  EXPECT_EQ(loaded->backgroundStyle(), NSBackgroundStyleDark);
}

}  // namespace
}  // namespace tessaluna::platform
