// Where everything in the player's window is, computed from its size alone. Points, y down.
#pragma once

#include "tessaluna/platform/foundation/Geometry.h"

namespace gallery {

struct PlayerPlaces {
  // Backgrounds, which fill the window: the side is empty if the window is too narrow for it.
  tessaluna::platform::CGRect top, side, middle, foot;
  // What is on them. What has no room has no width.
  tessaluna::platform::CGRect back, forward, search, tasks;
  tessaluna::platform::CGRect cover, sideBar;
  tessaluna::platform::CGRect title, note, places, tabs, list;  // places: a pop-up in place of the side bar
  tessaluna::platform::CGRect transport;
};

enum class TaskLine { Absent, Shown };
PlayerPlaces playerPlaces(tessaluna::platform::CGSize size, TaskLine taskLine);

}  // namespace gallery
