// Who is notified of clicks on the controls of a track list's row. The row is known from the button that comes along.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace TessalunaUIKit {

class TrackRowFavoriteButton;
class TrackRowMoreButton;
class TrackRowPlayButton;

class TrackListRowActionTarget {
 public:
  virtual ~TrackListRowActionTarget() = default;
  virtual void trackRowPlayButtonClicked(TrackRowPlayButton& button) = 0;
  virtual void trackRowFavoriteButtonClicked(TrackRowFavoriteButton& button) = 0;
  virtual void trackRowMoreButtonClicked(TrackRowMoreButton& button) = 0;
};

}  // namespace TessalunaUIKit
