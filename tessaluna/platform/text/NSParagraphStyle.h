// How a paragraph is laid out in its width.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

enum NSTextAlignment {
  NSTextAlignmentLeft = 0,
  NSTextAlignmentRight = 1,
  NSTextAlignmentCenter = 2,
  NSTextAlignmentJustified = 3,  // drawn as left
  NSTextAlignmentNatural = 4,    // drawn as left
};

enum NSLineBreakMode {
  NSLineBreakByWordWrapping = 0,    // into lines, at words
  NSLineBreakByCharWrapping = 1,    // into lines, at characters
  NSLineBreakByClipping = 2,        // one line, cut by the edge
  NSLineBreakByTruncatingHead = 3,  // one line, "…" where text is left out
  NSLineBreakByTruncatingTail = 4,
  NSLineBreakByTruncatingMiddle = 5,
};
template <>
struct EnumNames<NSTextAlignment> {
  static constexpr NamedValue all[] = {{"left", NSTextAlignmentLeft},
                                       {"right", NSTextAlignmentRight},
                                       {"center", NSTextAlignmentCenter},
                                       {"justified", NSTextAlignmentJustified},
                                       {"natural", NSTextAlignmentNatural}};
};
template <>
struct EnumNames<NSLineBreakMode> {
  static constexpr NamedValue all[] = {{"wordWrapping", NSLineBreakByWordWrapping},
                                       {"charWrapping", NSLineBreakByCharWrapping},
                                       {"clipping", NSLineBreakByClipping},
                                       {"truncatingHead", NSLineBreakByTruncatingHead},
                                       {"truncatingTail", NSLineBreakByTruncatingTail},
                                       {"truncatingMiddle", NSLineBreakByTruncatingMiddle}};
};
constexpr bool wraps(NSLineBreakMode mode) { return mode <= NSLineBreakByCharWrapping; }

class NSParagraphStyle : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Natural alignment, wrapped at words.
  static Ref<NSParagraphStyle> defaultParagraphStyle();

  NSParagraphStyle() = default;
  NSParagraphStyle(NSTextAlignment alignment, NSLineBreakMode mode) : alignment_(alignment), lineBreakMode_(mode) {}

  NSTextAlignment alignment() const { return alignment_; }
  NSLineBreakMode lineBreakMode() const { return lineBreakMode_; }
  Ref<class NSMutableParagraphStyle> mutableCopy() const;
  bool isEqual(const NSObject* other) const override;

 protected:
  NSTextAlignment alignment_ = NSTextAlignmentNatural;
  NSLineBreakMode lineBreakMode_ = NSLineBreakByWordWrapping;
};

class NSMutableParagraphStyle : public NSParagraphStyle {
 public:
  using NSParagraphStyle::NSParagraphStyle;
  void setAlignment(NSTextAlignment alignment) { alignment_ = alignment; }
  void setLineBreakMode(NSLineBreakMode mode) { lineBreakMode_ = mode; }
};

}  // namespace tessaluna::platform
