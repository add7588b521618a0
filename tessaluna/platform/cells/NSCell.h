// What a control shows and how it follows the mouse, apart from the view that it stands in. A cell knows its control view
// but does not keep it alive.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/text/Forward.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

enum NSControlStateValue { NSControlStateValueMixed = -1, NSControlStateValueOff = 0, NSControlStateValueOn = 1 };

// The ground that a cell stands on. On a dark one a text in the system's color shows in that of selected rows.
enum NSBackgroundStyle { NSBackgroundStyleLight = 0, NSBackgroundStyleDark = 1 };

class NSCell : public NSObject, public NSAccessibility {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSCell() = default;
  explicit NSCell(std::string text);    // initTextCell:
  explicit NSCell(Ref<NSImage> image);  // initImageCell:
  // Keys: "enabled" (true if missing), "highlighted", "state", "tag", "stringValue", "fontSize", "isBold", "alignment",
  // "lineBreakMode" (the last two as their numbers).
  explicit NSCell(NSCoder& coder);
  ~NSCell() override;

  NSView* controlView() const { return controlView_; }
  void setControlView(NSView* view) { controlView_ = view; }

  // Plain stores; the control that sets them asks for the redraw.
  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }
  bool isHighlighted() const { return isHighlighted_; }
  void setHighlighted(bool isHighlighted) { isHighlighted_ = isHighlighted; }
  NSControlStateValue state() const { return state_; }
  void setState(NSControlStateValue state) { state_ = state; }
  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }

  // The text, in UTF-8, and how it stands; title is another name for it. Setting a plain text drops the attributes of an
  // attributed one. An absent font means the system's.
  virtual std::string stringValue() const;
  virtual void setStringValue(std::string_view text);
  std::string title() const { return stringValue(); }
  void setTitle(std::string_view title) { setStringValue(title); }
  // What is drawn: the attributed text, or the plain one in the cell's font, color, alignment and line break mode.
  virtual Ref<NSAttributedString> attributedStringValue() const;
  virtual void setAttributedStringValue(Ref<NSAttributedString> text);
  const Ref<NSFont>& font() const { return font_; }
  void setFont(Ref<NSFont> font) { font_ = std::move(font); }
  NSTextAlignment alignment() const { return alignment_; }
  void setAlignment(NSTextAlignment alignment) { alignment_ = alignment; }
  NSLineBreakMode lineBreakMode() const { return lineBreakMode_; }
  void setLineBreakMode(NSLineBreakMode mode) { lineBreakMode_ = mode; }
  NSBackgroundStyle backgroundStyle() const { return backgroundStyle_; }
  virtual void setBackgroundStyle(NSBackgroundStyle style) { backgroundStyle_ = style; }
  const Ref<NSImage>& image() const { return image_; }
  void setImage(Ref<NSImage> image) { image_ = std::move(image); }

  // The size that the cell's content needs.
  virtual CGSize cellSize() const;

  // In the control view's coordinates. The first draws the whole cell, border included; the second what is inside.
  virtual void drawWithFrame(CGRect frame, NSView& view) { drawInteriorWithFrame(frame, view); }
  virtual void drawInteriorWithFrame(CGRect, NSView&) {}

  // A press, as states and not as a loop: it starts, goes on with each drag, and stops. Points are in the view's
  // coordinates. Start and continue return whether to go on; stop is told whether the button went up over the cell.
  virtual bool startTrackingAt(CGPoint start, NSView& view);
  virtual bool continueTracking(CGPoint last, CGPoint current, NSView& view);
  virtual void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp);

  // The modifier flags of the last left press on the cell; 0 before one, and after one without modifiers.
  std::uint32_t mouseDownFlags() const { return mouseDownFlags_; }
  void setMouseDownFlags(std::uint32_t flags) { mouseDownFlags_ = flags; }  // for the control that tracks

  // A cell that stands in a view is the element in the view's place, if its class says that it is one. It has no children;
  // one that stands in no view has no list of them either.
  bool isAccessibilityEnabled() const override { return isEnabled_; }
  bool isAccessibilityFocused() const override;
  CGRect accessibilityFrame() const override;
  Ref<NSObject> accessibilityParent() const override;
  bool accessibilityIsAttributeSettable(std::string_view attribute) const override;
  void accessibilitySetValue(const AccessibilityValue& value, std::string_view forAttribute) override;

 protected:
  std::optional<AccessibilityElements> accessibilityOwnChildren() const override;
  // The attributes of a plain text; a cell with a color of its own says so here.
  virtual Ref<NSColor> plainTextColor() const;
  NSAttributes plainAttributes() const;

 private:
  NSView* controlView_ = nullptr;
  std::string stringValue_;
  Ref<NSAttributedString> attributed_;
  Ref<NSFont> font_;
  Ref<NSImage> image_;
  NSTextAlignment alignment_ = NSTextAlignmentNatural;
  NSLineBreakMode lineBreakMode_ = NSLineBreakByWordWrapping;
  NSBackgroundStyle backgroundStyle_ = NSBackgroundStyleLight;
  std::int64_t tag_ = 0;
  std::uint32_t mouseDownFlags_ = 0;
  NSControlStateValue state_ = NSControlStateValueOff;
  bool isEnabled_ = true;
  bool isHighlighted_ = false;
};

}  // namespace tessaluna::platform
