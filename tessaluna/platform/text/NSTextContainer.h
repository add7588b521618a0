// The area in which a layout manager sets its text: how wide it is, and what stays free beside each line.
#pragma once

#include <limits>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSTextContainer : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSTextContainer(CGSize size) : size_(size) {}

  CGSize size() const { return size_; }
  void setSize(CGSize size) { size_ = size; }
  // At the left and the right of every line.
  CGFloat lineFragmentPadding() const { return padding_; }
  void setLineFragmentPadding(CGFloat padding) { padding_ = padding; }
  // The size's width is that of the text view, less its insets.
  bool widthTracksTextView() const { return widthTracksTextView_; }
  void setWidthTracksTextView(bool tracks) { widthTracksTextView_ = tracks; }
  // 0 for as many as there are. 1 makes a line of each paragraph, whatever the width; other numbers count as 0.
  std::size_t maximumNumberOfLines() const { return maximumNumberOfLines_; }
  void setMaximumNumberOfLines(std::size_t number) { maximumNumberOfLines_ = number; }

 private:
  CGSize size_;
  CGFloat padding_ = 5;
  std::size_t maximumNumberOfLines_ = 0;
  bool widthTracksTextView_ = true;
};

}  // namespace tessaluna::platform
