#include "gallery/links/LinksHost.h"

#include <gmock/gmock.h>

#include "tests/harness/StillWorld.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::ElementsAre;

class LinksHostTest : public harness::StillWorld {
 protected:
  LinksHostTest() {
    host->setReport([this](const std::string& what) { reports.push_back(what); });
    host->setLinksEnabled(true);
  }
  ~LinksHostTest() override { host->close(); }

  // One below the other, in a window of their own.
  void show(CGFloat width) {
    window = showWindow({100, 100, width, 600});
    CGFloat y = 580;
    for (const LinksHost::Line& line : host->lines()) {
      line.field->setFrame({0, y, width, 20});
      window->contentView()->addSubview(line.field);
      y -= 20;
    }
    host->label()->setFrame({0, 0, width, 200});
    window->contentView()->addSubview(host->label());
    desktop.settle();
  }
  void click(const NSView& view, CGPoint point) {
    const CGPoint place = view.convertPointToView(point, nullptr);
    desktop.advance(10);
    user.moveTo(*window, place);
    user.click(*window, place);
  }

  const Ref<LinksHost> host = make<LinksHost>();
  Ref<NSWindow> window;
  std::vector<std::string> reports;
};

TEST_F(LinksHostTest, AClickIsReportedWithItsLinkAndItsLine) {
  show(400);
  click(*host->lines()[0].field, {3, 10});
  click(*host->label(), {8, 6});
  click(*host->label(), {5 + 26 * 6.5, 6});
  EXPECT_THAT(reports, ElementsAre("Mira Holt, link 1 of artists", "the label, beside its links",
                                   "link to https://example.org/artists/the-quiet-engine"));
}

TEST_F(LinksHostTest, WithLinksOffLinesReportNothing) {
  show(400);
  host->setLinksEnabled(false);
  click(*host->lines()[0].field, {3, 10});
  EXPECT_THAT(reports, ElementsAre());
}

TEST_F(LinksHostTest, EveryLineIsDrawnInAnyWidthThatThePageAllows) {
  show(400);
  for (int width = 48; width <= 800; width += 3) {
    for (const LinksHost::Line& line : host->lines()) {
      const CGFloat shown = line.field->truncatedString(width)->size().width;
      EXPECT_LE(shown, width + 1.0) << line.name;
    }
  }
}

}  // namespace
}  // namespace gallery
