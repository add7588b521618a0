// A section that folds down to its header and opens again to the height that its content needs. Everything in it places itself
// by constraints; the section itself has one more, a limit of its height, whose constant moves. So the section's own bottom must
// hang on its content with less than the required priority, or the content could not be cut off.
//
// The host sets the outlets and connects the header's button to toggleDisclosure:. One that makes the section in code then calls
// awakeFromNib itself, once, when header and content are in their places.
#pragma once

#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSView.h"

namespace TessalunaUIKit {

class DisclosureHeaderView;

class DisclosureView : public tessaluna::platform::NSView {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit DisclosureView(tessaluna::platform::CGRect frame) : NSView(frame) {}
  // Outlets: "headerView", "contentView".
  explicit DisclosureView(tessaluna::platform::NSCoder& coder);

  // All are null, 0 or false initially, but for isDisclosed. The setters store and do nothing else.
  // The header's frame height is the folded height. It refers back to its section strongly: a wired pair keeps itself alive
  // until the host breaks the cycle.
  const tessaluna::platform::Ref<DisclosureHeaderView>& headerView() const { return headerView_; }
  void setHeaderView(tessaluna::platform::Ref<DisclosureHeaderView> view) { headerView_ = std::move(view); }
  // Kept for the host.
  const tessaluna::platform::Ref<tessaluna::platform::NSView>& contentView() const { return contentView_; }
  void setContentView(tessaluna::platform::Ref<tessaluna::platform::NSView> view) { contentView_ = std::move(view); }
  bool isDisclosed() const { return isDisclosed_; }  // while it changes, still as before
  void setIsDisclosed(bool isDisclosed) { isDisclosed_ = isDisclosed; }
  // Of the open section, in points: as measured by awakeFromNib and at each opening.
  tessaluna::platform::CGFloat disclosedHeight() const { return disclosedHeight_; }
  void setDisclosedHeight(tessaluna::platform::CGFloat height) { disclosedHeight_ = height; }
  bool isChanging() const { return isChanging_; }  // an animation is under way
  void setIsChanging(bool isChanging) { isChanging_ = isChanging; }

  void awakeFromNib() override;

  // The action of a header's button: opens or closes with animation.
  void toggleDisclosure(NSObject* sender);
  // Nothing happens if the section is open or folded already, as asked, or is changing. Otherwise the program stops before
  // awakeFromNib.
  void setDisclosureTo(bool to, bool animate);

  // An addition: what the folded section cuts off wholly leaves the Tab chain and what assistive clients are shown. Off at the
  // start.
  bool leavesOutFoldedViews() const { return leavesOutFoldedViews_; }
  void setLeavesOutFoldedViews(bool does) { leavesOutFoldedViews_ = does; }
  bool leavesOutWhatItCutsOff() const override { return leavesOutFoldedViews_; }

 private:
  void open(bool animate);
  void close(bool animate);
  void animateTo(tessaluna::platform::CGFloat height, void (DisclosureView::*completion)());
  void didOpen();
  void didClose();
  void reportChange();
  void measure();
  void updateButton(std::string_view titleKey);
  tessaluna::platform::CGFloat foldedHeight() const;

  tessaluna::platform::Ref<DisclosureHeaderView> headerView_;
  tessaluna::platform::Ref<tessaluna::platform::NSView> contentView_;
  bool isDisclosed_ = true, isChanging_ = false, leavesOutFoldedViews_ = false;
  tessaluna::platform::CGFloat disclosedHeight_ = 0;
  tessaluna::platform::Required<tessaluna::platform::Ref<tessaluna::platform::NSLayoutConstraint>> collapseConstraint_{
      "collapseConstraint"};
};

}  // namespace TessalunaUIKit
