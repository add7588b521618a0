#include "tessaluna/platform/events/trackVisibleRect.h"

#include <gtest/gtest.h>

#include "tessaluna/platform/views/NSView.h"
#include "tests/harness/StillWorld.h"

using namespace tessaluna::platform;

namespace {

struct TrackVisibleRectTest : harness::StillWorld {
  Ref<NSView> view = make<NSView>(CGRect{0, 0, 100, 100});
  Ref<NSTrackingArea> area;
  void track() { trackVisibleRect(*view, area, NSTrackingMouseMoved); }
};

}  // namespace

TEST_F(TrackVisibleRectTest, TheViewIsNotifiedOfTheEventsAlways) {
  track();
  ASSERT_EQ(view->trackingAreas(), std::vector<Ref<NSTrackingArea>>{area});
  EXPECT_EQ(area->owner(), view);
  EXPECT_EQ(area->options(), std::uint32_t{NSTrackingInVisibleRect | NSTrackingActiveAlways | NSTrackingMouseMoved});
}

TEST_F(TrackVisibleRectTest, TheAreaIsMadeAndAddedOnce) {
  track();
  const Ref<NSTrackingArea> first = area;
  track();
  EXPECT_EQ(view->trackingAreas(), std::vector<Ref<NSTrackingArea>>{first});
}

TEST_F(TrackVisibleRectTest, AnAreaThatWasRemovedIsAddedAgain) {
  track();
  view->removeTrackingArea(area);
  const auto another =
      make<NSTrackingArea>(CGRect{0, 0, 1, 1}, std::uint32_t{NSTrackingActiveAlways | NSTrackingMouseMoved}, view);
  view->addTrackingArea(another);
  track();
  EXPECT_EQ(view->trackingAreas(), (std::vector<Ref<NSTrackingArea>>{another, area}));
}
