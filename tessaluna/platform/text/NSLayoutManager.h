// Where each character of a text is in its container. A glyph here is what one UTF-16 unit shows: ranges of glyphs
// and of characters are the same. Coordinates are the container's, from its upper left corner, y down. Both directions and
// font fallback are the text engine's. The lines are kept until the container changes; an edit sets its paragraphs again.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "tessaluna/platform/text/NSTextContainer.h"
#include "tessaluna/platform/text/NSTextStorage.h"
#include "tessaluna/platform/text/TextLayout.h"

namespace tessaluna::platform {

class NSLayoutManager : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSLayoutManager(Ref<NSTextStorage> storage, Ref<NSTextContainer> container)
      : storage_(std::move(storage)), container_(std::move(container)) {}

  const Ref<NSTextStorage>& textStorage() const { return storage_; }
  const Ref<NSTextContainer>& textContainer() const { return container_; }
  // How a text without characters would look: it is one line high in them.
  void setAttributesOfNothing(NSAttributes attributes);

  // The text as it is now, until the next change. Its coordinates are the container's without the padding.
  const TextLayout& layout() const;
  // The engine's fonts may have changed: the lines are set again.
  void invalidateLayout() { kept_.reset(); }
  CGRect usedRectForTextContainer(const NSTextContainer& container) const;

  // The character whose box holds the point, or the nearest one; how far into the box the point lies, from 0 to 1 in the
  // direction of the text.
  std::size_t characterIndexForPoint(CGPoint point, const NSTextContainer& inTextContainer,
                                     CGFloat* fractionOfDistanceBetweenInsertionPoints) const;
  // The caret place nearest to the point.
  CaretPlace caretPlaceForPoint(CGPoint point) const;
  CGRect caretRectForPlace(CaretPlace place) const;

  NSRange glyphRangeForCharacterRange(NSRange range, NSRange* actualCharacterRange) const;
  // One rectangle or more a line; the selected range is not looked at. The block sets `stop` to end it.
  void enumerateEnclosingRectsForGlyphRange(NSRange range, NSRange withinSelectedGlyphRange,
                                            const NSTextContainer& inTextContainer,
                                            const std::function<void(CGRect, bool& stop)>& block) const;
  std::vector<CGRect> rectArrayForGlyphRange(NSRange range, NSRange withinSelectedGlyphRange,
                                             const NSTextContainer& inTextContainer) const;
  CGRect boundingRectForGlyphRange(NSRange range, const NSTextContainer& inTextContainer) const;
  // All glyphs of the lines that may reach into the rectangle: letters may be higher and deeper than their line.
  NSRange glyphRangeForBoundingRect(CGRect rect, const NSTextContainer& inTextContainer) const;
  // The lines that have glyphs of the range, as wholes, with the container's upper left corner at the point of the current
  // context.
  void drawGlyphsForGlyphRange(NSRange range, CGPoint atPoint) const;

 private:
  Ref<NSTextStorage> storage_;
  Ref<NSTextContainer> container_;
  NSAttributes attributesOfNothing_;
  // What the lines were set from.
  struct Setting {
    std::size_t editCount = 0;
    CGFloat width = 0;
    bool wrapsLines = true;
    friend bool operator==(const Setting&, const Setting&) = default;
  };
  mutable std::optional<TextLayout> kept_;
  mutable Setting keptFor_;
};

}  // namespace tessaluna::platform
