// The window of a scroll view onto its document: the origin of its bounds says which part shows. It is flipped as its
// document is.
#pragma once

#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

class NSClipView : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSView::NSView;

  const Ref<NSView>& documentView() const;  // null for none, also once it has gone to another superview
  void setDocumentView(const Ref<NSView>& view);
  bool isFlipped() const override { return documentView() && documentView()->isFlipped(); }

  // As near to the point as the document reaches. The document and the scroll view are notified of what it then shows.
  void scrollToPoint(CGPoint point);
  CGPoint constrainScrollPoint(CGPoint point) const;  // where scrollToPoint would go
  CGRect documentVisibleRect() const;
  // Beyond the document only until the next pass of layout. They are notified in the same way.
  void setBoundsOrigin(CGPoint origin) override;

  // A table is only as high as its rows: a press below them is one on it. Only the main button's press goes to the table.
  void mouseDown(const Ref<NSEvent>& event) override;

  void layout() override;
  bool isSizedByContent() const override { return false; }
  void subviewFrameDidChange(NSView& view) override;
  void willRemoveSubview(NSView& view) override;

 private:
  void contentDidChange();

  Ref<NSView> documentView_;
};

}  // namespace tessaluna::platform
