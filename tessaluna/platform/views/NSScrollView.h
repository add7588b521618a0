// A view that shows a part of a larger one, with scroll bars beside it. The header of a table lies above the rows and scrolls
// sideways with them.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/views/NSClipView.h"

namespace tessaluna::platform {

enum NSBorderType { NSNoBorder = 0, NSLineBorder = 1 };

template <>
struct EnumNames<NSBorderType> {
  static constexpr NamedValue all[] = {{"none", NSNoBorder}, {"line", NSLineBorder}};
};

class NSScrollView : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit NSScrollView(CGRect frame);
  // Keys besides the view's: "hasVerticalScroller", "hasHorizontalScroller", "autohidesScrollers", "drawsBackground"; the
  // object "documentView".
  explicit NSScrollView(NSCoder& coder);
  void didInit() override;

  const Ref<NSClipView>& contentView() const { return clipView_; }
  const Ref<NSView>& documentView() const { return clipView_->documentView(); }
  void setDocumentView(const Ref<NSView>& view) { clipView_->setDocumentView(view); }

  // None initially.
  bool hasVerticalScroller() const { return verticalScroller_ != nullptr; }
  void setHasVerticalScroller(bool has);
  bool hasHorizontalScroller() const { return horizontalScroller_ != nullptr; }
  void setHasHorizontalScroller(bool has);
  const Ref<NSScroller>& verticalScroller() const { return verticalScroller_; }
  const Ref<NSScroller>& horizontalScroller() const { return horizontalScroller_; }
  // Hides a scroll bar while there is nothing to scroll.
  bool autohidesScrollers() const { return autohidesScrollers_; }
  void setAutohidesScrollers(bool hides);
  void setBorderType(NSBorderType type);
  // True initially: the color behind texts, where neither the document nor a scroll bar paints.
  bool drawsBackground() const { return drawsBackground_; }
  void setDrawsBackground(bool draws);

  bool isFlipped() const override { return true; }
  void drawRect(CGRect rect) override;
  void scrollWheel(const Ref<NSEvent>& event) override;
  void layout() override;

  // Brings the scroll bars into line with what shows. Called by the clip view.
  void reflectScrolledClipView(NSClipView& clipView);
  // Places the clip view and the scroll bars. Called by layout().
  void tile();

 private:
  void setHas(bool has, Ref<NSScroller>& scroller);
  struct Bars {
    bool vertical = false, horizontal = false;
  };
  CGRect inside() const;  // the border
  Bars neededBars() const;
  bool areBarsOutdated() const;
  Ref<NSView> headerOfDocument() const;  // null without one
  CGFloat headerHeight() const;
  CGRect insideBelowHeader() const;
  void placeBarsAndClipView();
  void placeHeader();
  void scrollByUser(CGPoint origin);
  void updateScrollers();
  void scrollerMoved(NSObject* sender);
  static const Selector selectors_[];

  Ref<NSClipView> clipView_, headerClipView_;  // the second above the first, while the document has a header
  Ref<NSScroller> verticalScroller_, horizontalScroller_;
  NSBorderType borderType_ = NSNoBorder;
  bool autohidesScrollers_ = false, drawsBackground_ = true;
  CGSize wheelRest_;  // of the way that the wheel asked for, what is less than a point
};

}  // namespace tessaluna::platform
