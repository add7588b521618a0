// Where everything in the player's window is, worked out from its size alone. Points, y down.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace gallery {

struct PlayerPlaces {
  // Grounds, which fill the window: the side is empty where the window is too narrow for it.
  tessaluna::platform::CGRect top, side, middle, foot;
  // What lies on them. What has no room has no width.
  tessaluna::platform::CGRect back, forward, search, tasks;
  tessaluna::platform::CGRect cover, sideBar;
  tessaluna::platform::CGRect title, note, places, tabs, list;  // places: a pop-up in place of the side bar
  tessaluna::platform::CGRect transport;
};

enum class TaskLine { Absent, Shown };
PlayerPlaces playerPlaces(tessaluna::platform::CGSize size, TaskLine taskLine);

}  // namespace gallery
