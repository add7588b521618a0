#include "gallery/player/playerPlaces.h"

#include <algorithm>
#include <cmath>

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr CGFloat margin = 16, gap = 12;
constexpr CGFloat topHeight = 56, fieldHeight = 26, arrowWidth = 26, maxSearch = 300, maxSearchAlone = 420, maxTasks = 340,
                  minSearch = 160, minTasks = 250, taskHeight = 20;
constexpr CGFloat minWithSide = 560, minSide = 176, maxSide = 232, shareOfSide = 0.22;
constexpr CGFloat minSideBar = 190, minCover = 72, smallCover = 52;
constexpr CGFloat headingHeight = 60, titleHeight = 26, noteHeight = 18, tabsWidth = 276, tabsHeight = 34, minTitle = 250,
                  placesWidth = 104;
constexpr CGFloat minList = 120;  // its header and most of two rows
constexpr CGFloat footHeight = 76, transportHeight = 52;

CGRect rect(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  return {x, y, std::max<CGFloat>(width, 0), std::max<CGFloat>(height, 0)};
}

// What a low window leaves out, one after the other, until the list has room.
enum class LeftOut { Nothing, Heading, HeadingAndTasks, HeadingTasksAndTabs };

// One arrangement of all parts, from the top of the window to its foot.
class Arrangement {
 public:
  Arrangement(CGSize size, TaskLine taskLine, LeftOut leftOut)
      : width_(size.width),
        height_(size.height),
        hasSide_(size.width >= minWithSide),
        sideWidth_(hasSide_ ? std::clamp(std::floor(size.width * shareOfSide), minSide, maxSide) : 0),
        leftOut_(leftOut) {
    placeTop();
    placeFoot(taskLine);
    placeSide();
    placeMiddle();
  }
  const PlayerPlaces& places() const { return places_; }

 private:
  // Arrows over the side, the field where the list begins, and tasks at the right if there is room.
  void placeTop() {
    places_.top = rect(0, 0, width_, topHeight);
    const CGFloat fieldY = (topHeight - fieldHeight) / 2;
    places_.back = rect(margin - 4, fieldY, arrowWidth, fieldHeight);
    places_.forward = rect(CGRectGetMaxX(places_.back) + 2, fieldY, arrowWidth, fieldHeight);
    const CGFloat searchX = hasSide_ ? sideWidth_ + margin : CGRectGetMaxX(places_.forward) + gap;
    const CGFloat room = width_ - margin - searchX;
    hasTasksInTop_ = room >= minSearch + 2 * gap + minTasks;
    if (!hasTasksInTop_) {
      places_.search = rect(searchX, fieldY, std::min(room, maxSearchAlone), fieldHeight);
      return;
    }
    places_.search = rect(searchX, fieldY, std::min(room - 2 * gap - minTasks, maxSearch), fieldHeight);
    const CGFloat tasksWidth = std::min(room - places_.search.size.width - 2 * gap, maxTasks);
    places_.tasks = rect(width_ - margin - tasksWidth, (topHeight - taskHeight) / 2, tasksWidth, taskHeight);
  }

  // The transport, and above it the tasks that have no room at the top.
  void placeFoot(TaskLine taskLine) {
    const bool hasTasks = !hasTasksInTop_ && taskLine == TaskLine::Shown && leftOut_ < LeftOut::HeadingAndTasks;
    const CGFloat foot = footHeight + (hasTasks ? taskHeight + gap : 0);
    footTop_ = height_ - foot;
    places_.foot = rect(0, footTop_, width_, foot);
    places_.transport =
        rect(margin, height_ - footHeight + (footHeight - transportHeight) / 2, width_ - 2 * margin, transportHeight);
    if (hasTasks) places_.tasks = rect(margin, footTop_ + gap, std::min(width_ - 2 * margin, maxTasks), taskHeight);
  }

  // The cover of what plays, as large as the side bar leaves room for.
  void placeSide() {
    places_.side = rect(0, topHeight, sideWidth_, footTop_ - topHeight);
    if (!hasSide_) return;
    CGFloat y = topHeight + margin;
    const CGFloat cover = std::min(sideWidth_ - 2 * margin, footTop_ - topHeight - minSideBar - 2 * margin);
    if (cover >= minCover) {
      places_.cover = rect(margin, y, cover, cover);
      y += cover + gap;
    }
    places_.sideBar = rect(0, y, sideWidth_, footTop_ - y);
  }

  // A heading with tabs beside it, or below it where that is too narrow, and the list.
  void placeMiddle() {
    places_.middle = rect(sideWidth_, topHeight, width_ - sideWidth_, footTop_ - topHeight);
    const CGFloat left = sideWidth_ + margin, right = width_ - margin;
    const bool hasTabsBeside = right - left >= minTitle + gap + tabsWidth;
    const bool hasTabs = leftOut_ < LeftOut::HeadingTasksAndTabs;
    CGFloat listTop = topHeight;
    if (leftOut_ < LeftOut::Heading) {
      placeHeading(left, hasTabsBeside ? right - tabsWidth - gap : right);
      listTop += headingHeight + 10;
    } else if (hasTabs) {
      listTop += hasTabsBeside ? tabsHeight + 10 : 4;
    }
    if (hasTabs && hasTabsBeside) {
      places_.tabs = rect(right - tabsWidth, listTop - tabsHeight - 6, tabsWidth, tabsHeight);
    } else if (hasTabs) {
      const CGFloat end = hasSide_ ? right : right - placesWidth - gap;
      places_.tabs = rect(left, listTop, std::min(end - left, tabsWidth), tabsHeight);
      if (!hasSide_) places_.places = rect(right - placesWidth, listTop, placesWidth, fieldHeight);
      listTop += tabsHeight + 8;
    }
    places_.list = rect(sideWidth_, listTop, width_ - sideWidth_, footTop_ - listTop);
  }

  // Title and note; without a side the cover is beside them.
  void placeHeading(CGFloat left, CGFloat right) {
    const CGFloat y = topHeight + 10;
    if (!hasSide_) {
      places_.cover = rect(left, y + 4, smallCover, smallCover);
      left += smallCover + gap;
    }
    places_.title = rect(left, y + 6, right - left, titleHeight);
    places_.note = rect(left, y + 6 + titleHeight, right - left, noteHeight);
  }

  const CGFloat width_, height_;
  const bool hasSide_;
  const CGFloat sideWidth_;
  const LeftOut leftOut_;
  bool hasTasksInTop_ = false;
  CGFloat footTop_ = 0;
  PlayerPlaces places_;
};

}  // namespace

PlayerPlaces playerPlaces(CGSize size, TaskLine taskLine) {
  PlayerPlaces places;
  for (const LeftOut leftOut :
       {LeftOut::Nothing, LeftOut::Heading, LeftOut::HeadingAndTasks, LeftOut::HeadingTasksAndTabs}) {
    places = Arrangement(size, taskLine, leftOut).places();
    if (places.list.size.height >= minList) break;
  }
  return places;
}

}  // namespace gallery
