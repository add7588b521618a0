// All public headers of the library.
#pragma once

#include "uikit/stylekit/Routines.h"
#include "uikit/stylekit/TessalunaStyleKit.h"
#include "uikit/trackrow/CloseButton.h"
#include "uikit/trackrow/PlaybackStatusIcon.h"
#include "uikit/trackrow/PrevNextButton.h"
