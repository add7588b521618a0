// A list of tracks in a window of 900 by 600 points. It scrolls to a place, draws everything again and shows it.
#pragma once

#include <QImage>

namespace bench {

// Which rows show their three controls: only the row under the pointer, which is none here, or every row.
enum class Controls { Hidden, OnEveryRow };

class ScrollingList {
 public:
  static constexpr int width = 900, height = 600, rowHeight = 52;

  virtual ~ScrollingList() = default;
  virtual const char* name() const = 0;
  // Scrolls to `y` points from the top. Returns when the frame is on the screen.
  virtual void showFrameAt(int y) = 0;
  virtual int framesPainted() const = 0;
  virtual QImage picture() = 0;
};

}  // namespace bench
