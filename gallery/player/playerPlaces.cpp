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

PlayerPlaces placesIn(CGSize size, TaskLine taskLine, LeftOut leftOut) {
  PlayerPlaces places;
  const CGFloat width = size.width;
  const bool hasSide = width >= minWithSide;
  const CGFloat sideWidth = hasSide ? std::clamp(std::floor(width * shareOfSide), minSide, maxSide) : 0;

  // The top: arrows over the side, the field where the list begins, tasks at the right or, without room, above the transport.
  places.top = rect(0, 0, width, topHeight);
  const CGFloat fieldY = (topHeight - fieldHeight) / 2;
  places.back = rect(margin - 4, fieldY, arrowWidth, fieldHeight);
  places.forward = rect(CGRectGetMaxX(places.back) + 2, fieldY, arrowWidth, fieldHeight);
  const CGFloat searchX = hasSide ? sideWidth + margin : CGRectGetMaxX(places.forward) + gap;
  const CGFloat topRoom = width - margin - searchX;
  const bool hasTasksInTop = topRoom >= minSearch + 2 * gap + minTasks;
  places.search =
      rect(searchX, fieldY,
           std::min(hasTasksInTop ? topRoom - 2 * gap - minTasks : topRoom, hasTasksInTop ? maxSearch : maxSearchAlone),
           fieldHeight);
  const bool hasTasksInFoot = !hasTasksInTop && taskLine == TaskLine::Shown && leftOut < LeftOut::HeadingAndTasks;
  if (hasTasksInTop) {
    const CGFloat room = topRoom - places.search.size.width - 2 * gap, tasksWidth = std::min(room, maxTasks);
    places.tasks = rect(width - margin - tasksWidth, (topHeight - taskHeight) / 2, tasksWidth, taskHeight);
  }

  const CGFloat foot = footHeight + (hasTasksInFoot ? taskHeight + gap : 0);
  const CGFloat bodyHeight = size.height - topHeight - foot;
  places.foot = rect(0, size.height - foot, width, foot);
  places.transport =
      rect(margin, size.height - footHeight + (footHeight - transportHeight) / 2, width - 2 * margin, transportHeight);
  if (hasTasksInFoot)
    places.tasks = rect(margin, places.foot.origin.y + gap, std::min(width - 2 * margin, maxTasks), taskHeight);

  // The side: the cover of what plays, as large as the side bar leaves room for.
  places.side = rect(0, topHeight, sideWidth, bodyHeight);
  CGFloat y = topHeight + margin;
  if (hasSide) {
    const CGFloat cover = std::min(sideWidth - 2 * margin, bodyHeight - minSideBar - 2 * margin);
    if (cover >= minCover) {
      places.cover = rect(margin, y, cover, cover);
      y += cover + gap;
    }
    places.sideBar = rect(0, y, sideWidth, size.height - foot - y);
  }

  // The middle: a heading with tabs beside it, or below it where that is too narrow, and the list.
  places.middle = rect(sideWidth, topHeight, width - sideWidth, bodyHeight);
  CGFloat left = sideWidth + margin;
  const CGFloat right = width - margin;
  const bool hasTabsBeside = right - left >= minTitle + gap + tabsWidth;
  y = topHeight + 10;
  const bool hasHeading = leftOut < LeftOut::Heading, hasTabs = leftOut < LeftOut::HeadingTasksAndTabs;
  if (!hasSide && hasHeading) {
    places.cover = rect(left, y + 4, smallCover, smallCover);
    left += smallCover + gap;
  }
  const CGFloat titleRight = hasTabsBeside ? right - tabsWidth - gap : right;
  CGFloat listTop = topHeight;
  if (hasHeading) {
    places.title = rect(left, y + 6, titleRight - left, titleHeight);
    places.note = rect(left, y + 6 + titleHeight, titleRight - left, noteHeight);
    listTop += headingHeight + 10;
  } else if (hasTabs) {
    listTop += hasTabsBeside ? tabsHeight + 10 : 4;
  }
  if (hasTabs && hasTabsBeside) {
    places.tabs = rect(right - tabsWidth, listTop - tabsHeight - 6, tabsWidth, tabsHeight);
  } else if (hasTabs) {
    const CGFloat start = sideWidth + margin, end = hasSide ? right : right - placesWidth - gap;
    places.tabs = rect(start, listTop, std::min(end - start, tabsWidth), tabsHeight);
    if (!hasSide) places.places = rect(right - placesWidth, listTop, placesWidth, fieldHeight);
    listTop += tabsHeight + 8;
  }
  places.list = rect(sideWidth, listTop, width - sideWidth, size.height - foot - listTop);
  return places;
}

}  // namespace

PlayerPlaces playerPlaces(CGSize size, TaskLine taskLine) {
  PlayerPlaces places;
  for (const LeftOut leftOut :
       {LeftOut::Nothing, LeftOut::Heading, LeftOut::HeadingAndTasks, LeftOut::HeadingTasksAndTabs}) {
    places = placesIn(size, taskLine, leftOut);
    if (places.list.size.height >= minList) break;
  }
  return places;
}

}  // namespace gallery
