// A list of tracks in a window of 900 by 600 points: it scrolls to a place and shows it, all of it drawn anew.
#pragma once

#include <QImage>

namespace bench {

// Which rows show their three controls: that under the pointer, which is none here, or every one.
enum class Controls { Hidden, OnEveryRow };

class ScrollingList {
 public:
  static constexpr int width = 900, height = 600, rowHeight = 52;

  virtual ~ScrollingList() = default;
  virtual const char* name() const = 0;
  // In points from the top. Ends when the frame is on the screen.
  virtual void showFrameAt(int y) = 0;
  virtual int framesPainted() const = 0;
  virtual QImage picture() = 0;
};

}  // namespace bench
