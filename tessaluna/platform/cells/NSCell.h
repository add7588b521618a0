// What a control shows and how it follows the mouse, apart from the view that it is in. A cell knows its control view
// but does not keep it alive.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/accessibility/NSAccessibility.h"
#include "tessaluna/platform/cells/CellValue.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/EnumNames.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"
#include "tessaluna/platform/text/Forward.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/text/NSParagraphStyle.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::platform {

enum NSControlStateValue { NSControlStateValueMixed = -1, NSControlStateValueOff = 0, NSControlStateValueOn = 1 };

// The ground that a cell is on. On a dark one a text in the system's color shows in that of selected rows.
enum NSBackgroundStyle { NSBackgroundStyleLight = 0, NSBackgroundStyleDark = 1 };

template <>
struct EnumNames<NSControlStateValue> {
  static constexpr NamedValue all[] = {
      {"mixed", NSControlStateValueMixed}, {"off", NSControlStateValueOff}, {"on", NSControlStateValueOn}};
};
template <>
struct EnumNames<NSBackgroundStyle> {
  static constexpr NamedValue all[] = {{"light", NSBackgroundStyleLight}, {"dark", NSBackgroundStyleDark}};
};

class NSCell : public NSObject, public NSAccessibility, public CellValue {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSCell() = default;
  explicit NSCell(std::string text);    // initTextCell:
  explicit NSCell(Ref<NSImage> image);  // initImageCell:
  // Keys: "enabled" (true if missing), "highlighted", "state", "tag", "stringValue", "fontSize", "isBold", "alignment",
  // "lineBreakMode".
  explicit NSCell(NSCoder& coder);
  NSCell(const NSCell& other);  // for copy
  ~NSCell() override;

  // copyWithZone: an independent cell of the same class, with the same value and look, that is in no view. Every class
  // overrides it: return make<MyCell>(*this);
  virtual Ref<NSCell> copy() const { return make<NSCell>(*this); }

  NSView* controlView() const { return controlView_; }
  void setControlView(NSView* view) { controlView_ = view; }

  // Plain stores; the control that sets them asks for the redraw.
  bool isEnabled() const;  // false also where a view above the control disables it
  void setEnabled(bool isEnabled) { copied_.isEnabled = isEnabled; }
  bool isHighlighted() const { return copied_.isHighlighted; }
  void setHighlighted(bool isHighlighted) { copied_.isHighlighted = isHighlighted; }
  NSControlStateValue state() const { return copied_.state; }
  void setState(NSControlStateValue state) { copied_.state = state; }
  std::int64_t tag() const { return copied_.tag; }
  void setTag(std::int64_t tag) { copied_.tag = tag; }
  // A thin line around the cell, or a bezel. There is at most one of them: setting either takes the other away, also if it is
  // set to false.
  bool isBordered() const { return copied_.border == Border::Line; }
  void setBordered(bool isBordered) { copied_.border = isBordered ? Border::Line : Border::None; }
  bool isBezeled() const { return copied_.border == Border::Bezel; }
  void setBezeled(bool isBezeled) { copied_.border = isBezeled ? Border::Bezel : Border::None; }

  // The value; stringValue and the others read and set it. A plain text that is set drops the attributes of an earlier one.
  Ref<NSObject> objectValue() const override { return copied_.value; }
  void setObjectValue(Ref<NSObject> value) override { copied_.value = std::move(value); }
  // What is drawn: the attributed text, or the plain one in the cell's font, color, alignment and line break mode. A null
  // font means the system's.
  Ref<NSAttributedString> attributedStringValue() const;
  void setAttributedStringValue(Ref<NSAttributedString> text);
  // The value's text, unless a class has a title beside its value.
  virtual std::string title() const { return stringValue(); }
  virtual void setTitle(std::string_view title) { setStringValue(title); }
  const Ref<NSFont>& font() const { return copied_.font; }
  void setFont(Ref<NSFont> font) { copied_.font = std::move(font); }
  NSTextAlignment alignment() const { return copied_.alignment; }
  void setAlignment(NSTextAlignment alignment) { copied_.alignment = alignment; }
  NSLineBreakMode lineBreakMode() const { return copied_.lineBreakMode; }
  void setLineBreakMode(NSLineBreakMode mode) { copied_.lineBreakMode = mode; }
  NSBackgroundStyle backgroundStyle() const { return copied_.backgroundStyle; }
  virtual void setBackgroundStyle(NSBackgroundStyle style) { copied_.backgroundStyle = style; }
  const Ref<NSImage>& image() const { return copied_.image; }
  void setImage(Ref<NSImage> image) { copied_.image = std::move(image); }

  // The size that the cell's content needs.
  virtual CGSize cellSize() const;

  // In the control view's coordinates. The first draws the whole cell, border included; the second what is inside.
  virtual void drawWithFrame(CGRect frame, NSView& view);
  virtual void drawInteriorWithFrame(CGRect, NSView&) {}

  // A press, as states and not as a loop; NSControl calls these. Tracking starts, continues with each drag and stops. Points
  // are in the view's coordinates. A start or continue that returns false ends the press. Drags out of the control stop the
  // tracking too, and one back in starts it again, unless the cell prefers to be tracked until the button goes up: it then gets
  // the drags outside as well, and a release there counts. mouseIsUp is true only if the button went up.
  virtual bool prefersTrackingUntilMouseUp() const { return false; }
  // Whether the cell is highlighted while it is tracked, and only then; otherwise a press leaves the highlight as it is.
  virtual bool isHighlightedByPress() const { return true; }
  virtual bool startTrackingAt(CGPoint start, NSView& view);
  virtual bool continueTracking(CGPoint last, CGPoint current, NSView& view);
  virtual void stopTracking(CGPoint last, CGPoint stop, NSView& view, bool mouseIsUp);

  // When the control sends its action while it tracks: at the press, with each drag, at the release. Of the mask the bits of the
  // left button count; initially it is NSEventMaskLeftMouseUp. Returns the earlier mask. A continuous cell is one whose mask
  // has the drags.
  NSEventMask sendActionOn(NSEventMask mask) { return std::exchange(copied_.actionMask, mask); }
  bool sendsActionOn(NSEventType type) const { return (copied_.actionMask & maskOf(type)) != 0; }
  bool isContinuous() const { return sendsActionOn(NSEventType::LeftMouseDragged); }
  void setContinuous(bool isContinuous);

  // The modifier flags of the last left press on the cell; 0 before one, and after one without modifiers.
  std::uint32_t mouseDownFlags() const { return mouseDownFlags_; }
  void setMouseDownFlags(std::uint32_t flags) { mouseDownFlags_ = flags; }  // for the control that tracks

  // A cell that is in a view is the element in the view's place, if its class says that it is one. It has no children;
  // one that is in no view has no list of them either.
  bool isAccessibilityEnabled() const override { return isEnabled(); }
  std::string accessibilityHelp() const override;  // the view's tool tip
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
  enum class Border { None, Line, Bezel };

  NSView* controlView_ = nullptr;
  std::uint32_t mouseDownFlags_ = 0;
  struct {
    Ref<NSObject> value;
    Ref<NSFont> font;
    Ref<NSImage> image;
    NSTextAlignment alignment = NSTextAlignmentNatural;
    NSLineBreakMode lineBreakMode = NSLineBreakByWordWrapping;
    NSBackgroundStyle backgroundStyle = NSBackgroundStyleLight;
    std::int64_t tag = 0;
    NSEventMask actionMask = NSEventMaskLeftMouseUp;
    NSControlStateValue state = NSControlStateValueOff;
    Border border = Border::None;
    bool isEnabled = true;
    bool isHighlighted = false;
  } copied_;  // what a copy has as well
};

}  // namespace tessaluna::platform
