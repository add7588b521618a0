// The first part of a text view: the text, how it is set in lines, and which character is where. Points and rectangles are
// in the view's coordinates, indexes count UTF-16 units.
#pragma once

#include <vector>

#include "tessaluna/platform/text/NSLayoutManager.h"
#include "tessaluna/platform/views/NSText.h"

namespace tessaluna::platform {

class TextViewLayout : public NSText, protected NSTextStorageDelegate {
 public:
  explicit TextViewLayout(CGRect frame);
  ~TextViewLayout() override;
  void didInit() override;

  const Ref<NSTextStorage>& textStorage() const { return storage_; }
  const Ref<NSLayoutManager>& layoutManager() const { return layoutManager_; }
  const Ref<NSTextContainer>& textContainer() const { return container_; }
  // The container's upper left corner; zero unless set.
  CGSize textContainerInset() const { return inset_; }
  void setTextContainerInset(CGSize inset);

  std::string string() const override;
  std::size_t length() const { return storage_->length(); }

  // What typed text looks like, and all of a text that has one look.
  const NSAttributes& typingAttributes() const { return typingAttributes_; }
  Ref<NSFont> font() const override;
  void setFont(Ref<NSFont> font) override;
  void setTextColor(Ref<NSColor> color) override;
  void setAlignment(NSTextAlignment alignment) override;

  // The caret place nearest to the point.
  CaretPlace caretPlaceAtPoint(CGPoint point) const;
  std::size_t characterIndexForInsertionAtPoint(CGPoint point) const { return caretPlaceAtPoint(point).index; }
  CGRect caretRectForPlace(CaretPlace place) const;
  CGRect caretRectForIndex(std::size_t index) const { return caretRectForPlace({index}); }
  std::vector<CGRect> rectsForRange(NSRange range) const;

  // As wide as its text, but not narrower than the clip view around it: a text longer than its place scrolls.
  bool isHorizontallyResizable() const { return isHorizontallyResizable_; }
  void setHorizontallyResizable(bool isResizable);
  // As high as its lines, and in a scroll view as wide as what shows and not lower: a text of several lines, which scrolls. False
  // initially.
  bool isVerticallyResizable() const { return isVerticallyResizable_; }
  void setVerticallyResizable(bool isResizable);
  void sizeToFit();
  void layout() override;
  void prepareContentInRect(CGRect rect) override;

 protected:
  void setWholeText(std::u16string text);
  // The characters of the lines that may show in the rectangle, and these lines.
  NSRange characterRangeIn(CGRect rect) const;
  void drawText(NSRange range) const;
  CGPoint textOrigin() const { return {inset_.width, inset_.height}; }
  void textStorageDidProcessEditing(NSTextStorage& storage, NSRange range, std::ptrdiff_t changeInLength) override;

 private:
  void setTypingAttribute(NSAttributedStringKey key, NSAttributeValue value);
  void fitContainer();
  CGSize sizeOfText() const;
  void fitWidth();
  void fitHeight();

  Ref<NSTextStorage> storage_;
  Ref<NSTextContainer> container_;
  Ref<NSLayoutManager> layoutManager_;
  NSAttributes typingAttributes_;
  Ref<NSObject> appearanceObserver_;
  CGSize inset_;
  bool isHorizontallyResizable_ = false, isVerticallyResizable_ = false;
};

}  // namespace tessaluna::platform
