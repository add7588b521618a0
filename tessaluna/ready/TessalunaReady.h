// All public headers of the library of ready-made hosts.
#pragma once

#include "tessaluna/ready/search/SearchField.h"
#include "tessaluna/ready/search/matchedLetters.h"
#include "tessaluna/ready/sidebar/SideBar.h"
#include "tessaluna/ready/sidebar/SideBarModel.h"
#include "tessaluna/ready/tasks/TaskBar.h"
#include "tessaluna/ready/tracks/TrackModel.h"
#include "tessaluna/ready/tracks/TrackTable.h"
#include "tessaluna/ready/transport/TransportBar.h"
