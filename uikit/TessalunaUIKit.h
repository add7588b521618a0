// All public headers of the library.
#pragma once

#include "uikit/stylekit/Routines.h"
#include "uikit/stylekit/TessalunaLogo.h"
#include "uikit/stylekit/TessalunaStyleKit.h"
#include "uikit/trackrow/CloseButton.h"
#include "uikit/trackrow/PlaybackStatusIcon.h"
#include "uikit/trackrow/PrevNextButton.h"
#include "uikit/trackrow/TrackListRowActionTarget.h"
#include "uikit/trackrow/TrackRowFavoriteButton.h"
#include "uikit/trackrow/TrackRowMoreButton.h"
#include "uikit/trackrow/TrackRowPlayButton.h"
