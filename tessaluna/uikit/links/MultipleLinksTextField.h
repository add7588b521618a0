// One line of text made of a list of strings, each of which is a link of its own, such as the artists of a track. What does not
// fit is cut off at the tail and replaced by "…"; the hovered link is underlined.
//
//   artists->setFont(font);  // before stringValues: the links' places are measured when the strings are assigned
//   artists->setStringValues({{"First Artist", "Second Artist"}});
//   artists->setLinksEnabled(true);
//   artists->setTarget(host);
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/accessibility/NSAccessibilityButton.h"
#include "tessaluna/platform/text/Forward.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/uikit/links/JoinedLinks.h"
#include "tessaluna/uikit/links/LinkTextFieldActionTarget.h"

namespace TessalunaUIKit {

class LinkLineAdditions;

class MultipleLinksTextField : public tessaluna::platform::NSView, public tessaluna::platform::NSAccessibilityButton {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit MultipleLinksTextField(tessaluna::platform::CGRect frame);
  // The target is not reachable by name, and so not an outlet. Of the properties in an interface file the font is set before the
  // strings, which are measured with it.
  explicit MultipleLinksTextField(tessaluna::platform::NSCoder& coder);
  ~MultipleLinksTextField() override;

  // Whether the strings are links; otherwise, as initially, they are only text, and clicks pass to the superview.
  bool linksEnabled() const { return linksEnabled_; }
  void setLinksEnabled(bool enabled);

  // The strings in display order, in UTF-8; absent looks like an empty list. Joined by ", ". Setting them measures the links
  // with the current font and requests a redraw. A width that no integer holds stops the program.
  const std::optional<std::vector<std::string>>& stringValues() const { return stringValues_; }
  void setStringValues(std::optional<std::vector<std::string>> values);

  // Plain stores, which neither redraw nor measure: a font that is set after the strings is drawn, but the links stay where the
  // earlier font had them. Null: the system font at its standard size, and the color of control texts.
  const tessaluna::platform::Ref<tessaluna::platform::NSFont>& font() const { return font_; }
  void setFont(tessaluna::platform::Ref<tessaluna::platform::NSFont> font) { font_ = std::move(font); }
  const tessaluna::platform::Ref<tessaluna::platform::NSColor>& textColor() const { return textColor_; }
  void setTextColor(tessaluna::platform::Ref<tessaluna::platform::NSColor> color) { textColor_ = std::move(color); }
  // Of the paragraph style that is drawn with. The cut does not depend on it.
  tessaluna::platform::NSLineBreakMode lineBreakMode() const { return lineBreakMode_; }
  void setLineBreakMode(tessaluna::platform::NSLineBreakMode mode) { lineBreakMode_ = mode; }

  // The mouse button is down in the view. Still true while the target is notified. Setting it requests no redraw; hiding the
  // view sets it to false.
  bool isPressed() const { return isPressed_; }
  void setIsPressed(bool isPressed) { isPressed_ = isPressed; }

  // Kept alive: a target that owns the view has to break that cycle itself. Null: a click is swallowed.
  const tessaluna::platform::Ref<LinkTextFieldActionTarget>& target() const { return target_; }
  void setTarget(tessaluna::platform::Ref<LinkTextFieldActionTarget> target) { target_ = std::move(target); }

  // An addition: a press on the "…" opens a menu of all strings, from which each can be clicked. Off initially, and without
  // effect while links are off.
  bool showsMenuAtEllipsis() const;
  void setShowsMenuAtEllipsis(bool shows);
  // An addition: the Tab key enters the line, Left and Right go from link to link and to the "…" with its menu, Return presses.
  // A press with the mouse does not take the keyboard. Off initially, and without effect while links are off.
  bool takesKeyboard() const;
  void setTakesKeyboard(bool takes);
  // An addition: the whole text is the tool tip while it is drawn cut, and there is none otherwise. Off initially.
  bool showsToolTipWhileCut() const;
  void setShowsToolTipWhileCut(bool shows);

  // What is drawn in a width in points: all of the text, also where it is up to a point too wide, or its beginning and "…". The
  // hovered link is underlined. From then on the links end where this "…" begins, or one character before. A width that is no
  // greater than that of "…" can stop the program, as it can when it is that of the bounds that are drawn.
  tessaluna::platform::Ref<tessaluna::platform::NSAttributedString> truncatedString(tessaluna::platform::CGFloat width);

  // Of the whole text, whatever the width of the view.
  tessaluna::platform::CGSize intrinsicContentSize() const override;

  void viewDidHide() override;  // ends a press without a click
  void drawRect(tessaluna::platform::CGRect rect) override;
  bool mouseDownCanMoveWindow() const override { return !linksEnabled_; }
  void resetCursorRects() override;
  void updateTrackingAreas() override;
  void mouseEntered(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseExited(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseMoved(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseDragged(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override {
    MultipleLinksTextField::mouseMoved(event);
  }
  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;

  // To assistive clients the view is a button with the whole text, whatever is cut off. Pressing it clicks the first string;
  // the press is offered only while there is one that is a link.
  // An addition: while links are on, each string is a link in it, cut off or not, whose press clicks that string.
  std::string accessibilityLabel() const override;
  bool accessibilityPerformPress() override;
  std::vector<std::string> accessibilityActionNames() const override;

 protected:
  std::optional<tessaluna::platform::AccessibilityElements> accessibilityOwnChildren() const override;

 private:
  friend class LinkLineAdditions;
  bool isInSelectedRow() const;  // of the nearest table
  tessaluna::platform::NSAttributes textAttributes() const;
  tessaluna::platform::Ref<tessaluna::platform::NSAttributedString> truncatedString(
      tessaluna::platform::CGFloat width, const tessaluna::platform::NSAttributes& attributes);
  void underlineActiveElement(tessaluna::platform::NSMutableAttributedString& text, std::size_t suffixLength) const;
  void hitTestElements(const tessaluna::platform::NSEvent& event);
  void addLinkCursorRects();

  bool linksEnabled_ = false;
  bool isPressed_ = false;
  std::optional<std::vector<std::string>> stringValues_;
  JoinedLinks links_;
  std::optional<tessaluna::platform::CGFloat> suffixPosition_;  // where the links of the last cut end
  std::optional<std::size_t> activeElement_;                    // under the pointer
  tessaluna::platform::Ref<tessaluna::platform::NSFont> font_;
  tessaluna::platform::Ref<tessaluna::platform::NSColor> textColor_;
  tessaluna::platform::NSLineBreakMode lineBreakMode_ = tessaluna::platform::NSLineBreakByClipping;
  tessaluna::platform::Ref<LinkTextFieldActionTarget> target_;
  tessaluna::platform::Ref<tessaluna::platform::NSTrackingArea> trackingArea_;  // made once
  bool cursorRectsActive_ = false;
  const std::unique_ptr<LinkLineAdditions> additions_;
};

}  // namespace TessalunaUIKit
