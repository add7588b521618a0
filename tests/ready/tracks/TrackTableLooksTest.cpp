// What a track table looks like.
#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tests/harness/LookBook.h"
#include "tests/ready/tracks/TrackTableWorld.h"

namespace tessaluna::ready {
namespace {

using namespace platform;
using TrackTableTest = TrackTableWorld;

TEST_F(TrackTableTest, EveryStateDrawsAsTheExpectedFileSays) {
  open(5);
  songs->songs[0].row.cover = NSImage::imageWithSize({40, 40}, false, [](CGRect rect) {
    NSColor::blueColor()->setFill();
    NSRectFill(rect);
    return true;
  });
  songs->songs[1].row.isFavorite = true;
  songs->songs[2].row.playback = Playback::Playing;
  songs->songs[3].row.playback = Playback::Paused;
  songs->songs[4].row.seconds = 3725;
  songs->didChangeRows(0, 5);
  harness::LookBook look(desktop);
  const char* const rows[] = {"a cover", "a favorite", "what plays", "what is paused", "an hour"};
  for (std::size_t row = 0; row < 5; ++row) look.add(rows[row], rowView(row));
  user.moveTo(*window, beside(1));
  look.add("the favorite under the pointer", rowView(1));
  select(1);
  look.add("and selected", rowView(1));
  user.moveTo(*window, {400, 280});
  window->makeFirstResponder(nullptr);
  for (const std::size_t row : {1, 2, 3}) {
    inner().selectRowIndexes(NSIndexSet(NSRange{row, 1}), NSTableView::Selecting::Replaces);
    look.add(std::string(rows[row]) + ", selected without the keyboard", rowView(row));
  }
  for (const CGFloat narrower : {559.0, 319.0, 219.0, 159.0}) {
    table->setFrameSize({narrower, height});
    look.add("in a table of " + std::to_string(static_cast<int>(narrower)) + " points", rowView(1));
  }
  look.expectSameAsFile("ready/tracks/expected/TrackTable.txt");
}

}  // namespace
}  // namespace tessaluna::ready
