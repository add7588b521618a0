#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

#include <gtest/gtest.h>

using TessalunaUIKit::TessalunaStyleKit;

TEST(TessalunaStyleKit, IsAnOrdinaryObjectThatNobodyNeedsToMake) {
  const auto kit = tessaluna::platform::make<TessalunaStyleKit>();
  EXPECT_EQ(kit->className(), "TessalunaUIKit.TessalunaStyleKit");
  EXPECT_TRUE(kit->isEqual(kit.get()));
}
