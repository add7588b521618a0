#include "tessaluna/platform/text/NSLayoutManager.h"

#include <algorithm>
#include <utility>

namespace tessaluna::platform {

const ClassInfo NSLayoutManager::staticClassInfo{.name = "NSLayoutManager", .base = &NSObject::staticClassInfo};

void NSLayoutManager::setAttributesOfNothing(NSAttributes attributes) {
  attributesOfNothing_ = std::move(attributes);
  invalidateLayout();
}

const TextLayout& NSLayoutManager::layout() const {
  const Setting setting{.editCount = storage_->editCount(),
                        .width = container_->size().width - 2 * container_->lineFragmentPadding(),
                        .wrapsLines = container_->maximumNumberOfLines() != 1};
  if (kept_ && keptFor_ == setting) return *kept_;
  const TextLayout::Options options{
      .width = setting.width, .wrapsLines = setting.wrapsLines, .attributesOfNothing = &attributesOfNothing_};
  const bool isOnlyEdited = kept_ && keptFor_.width == setting.width && keptFor_.wrapsLines == setting.wrapsLines;
  const std::optional<TextEdit> edit = isOnlyEdited ? storage_->editSince(keptFor_.editCount) : std::nullopt;
  std::optional<TextLayout> earlier = std::exchange(kept_, std::nullopt);
  if (edit) earlier->textWasEdited(*storage_, edit->range, edit->change, options);
  else earlier.emplace(*storage_, options);
  kept_ = std::move(earlier);
  keptFor_ = setting;
  storage_->noteEditsFromNow();
  return *kept_;
}

CGRect NSLayoutManager::usedRectForTextContainer(const NSTextContainer& container) const {
  const CGSize size = layout().size();
  return {0, 0, size.width + 2 * container.lineFragmentPadding(), size.height};
}

std::size_t NSLayoutManager::characterIndexForPoint(CGPoint point, const NSTextContainer& container,
                                                    CGFloat* fraction) const {
  const TextLayout& now = layout();
  const CGPoint inText{point.x - container.lineFragmentPadding(), point.y};
  const std::size_t index = now.characterAt(inText);
  if (fraction) {
    *fraction = 0;
    for (const TextLayout::Line& line : now.lines()) {
      for (const backend::TextCluster& cluster : line.shaped->clusters) {
        if (line.rangeOf(cluster).location != index || cluster.right <= cluster.left) continue;
        const CGFloat share = std::clamp((inText.x - line.x - cluster.left) / (cluster.right - cluster.left), 0.0, 1.0);
        *fraction = cluster.isRightToLeft ? 1 - share : share;
      }
    }
  }
  return index;
}

CaretPlace NSLayoutManager::caretPlaceForPoint(CGPoint point) const {
  return layout().caretPlaceAt({point.x - container_->lineFragmentPadding(), point.y});
}

CGRect NSLayoutManager::caretRectForPlace(CaretPlace place) const {
  return NSOffsetRect(layout().caretRectAt(place), container_->lineFragmentPadding(), 0);
}

NSRange NSLayoutManager::glyphRangeForCharacterRange(NSRange range, NSRange* actualCharacterRange) const {
  if (actualCharacterRange) *actualCharacterRange = range;
  return range;
}

std::vector<CGRect> NSLayoutManager::rectArrayForGlyphRange(NSRange range, NSRange, const NSTextContainer& container) const {
  std::vector<CGRect> rects = layout().rectsOf(range);
  for (CGRect& rect : rects) rect = NSOffsetRect(rect, container.lineFragmentPadding(), 0);
  return rects;
}

void NSLayoutManager::enumerateEnclosingRectsForGlyphRange(NSRange range, NSRange selected, const NSTextContainer& container,
                                                           const std::function<void(CGRect, bool& stop)>& block) const {
  bool stop = false;
  for (const CGRect& rect : rectArrayForGlyphRange(range, selected, container)) {
    block(rect, stop);
    if (stop) return;
  }
}

NSRange NSLayoutManager::glyphRangeForBoundingRect(CGRect rect, const NSTextContainer&) const {
  return layout().rangeBetween(CGRectGetMinY(rect), CGRectGetMaxY(rect));
}

void NSLayoutManager::drawGlyphsForGlyphRange(NSRange range, CGPoint atPoint) const {
  const TextLayout& now = layout();
  now.drawRangeInRect(range, {{atPoint.x + container_->lineFragmentPadding(), atPoint.y}, now.size()});
}

CGRect NSLayoutManager::boundingRectForGlyphRange(NSRange range, const NSTextContainer& container) const {
  CGRect all;
  for (const CGRect& rect : rectArrayForGlyphRange(range, range, container)) all = NSUnionRect(all, rect);
  return all;
}

}  // namespace tessaluna::platform
