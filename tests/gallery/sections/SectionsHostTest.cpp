#include "gallery/sections/SectionsHost.h"

#include <gtest/gtest.h>

#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

struct SectionsHostTest : harness::StillWorld {
  SectionsHostTest() {
    NSLayoutConstraint::setConflictHandler([](const std::string& line) { ADD_FAILURE() << line; });
    window->contentView()->addSubview(host.sideBar());
    desktop.settle();
  }
  ~SectionsHostTest() override { NSLayoutConstraint::setConflictHandler(nullptr); }
  // From the top of the side bar to the bottom of its last section.
  CGFloat height() {
    window->layoutIfNeeded();
    return host.sideBar()->frame().size.height - host.sideBar()->subviews()[2]->frame().origin.y;
  }

  SectionsHost host;
  Ref<NSWindow> window = showWindow({100, 100, 300, 520});
};

TEST_F(SectionsHostTest, ATextThatGrowsMovesWhatIsBelow) {
  const CGFloat before = height();
  host.addLine();
  EXPECT_GT(height(), before + 10);
  host.removeLine();
  EXPECT_EQ(height(), before);
}

TEST_F(SectionsHostTest, FoldedThereAreThreeHeaders) {
  host.setDisclosed(false);
  desktop.advance(1);
  EXPECT_EQ(height(), 3 * 26 + 2);
  host.addLine();
  EXPECT_EQ(height(), 3 * 26 + 2);
}

TEST_F(SectionsHostTest, WhatGrewWhileItWasFoldedIsOpenInItsNewHeight) {
  const CGFloat before = height();
  host.setDisclosed(false);
  desktop.advance(1);
  host.addLine();
  host.setDisclosed(true);
  desktop.advance(1);
  EXPECT_GT(height(), before + 10);
}

}  // namespace
}  // namespace gallery
