// What constraints relate, and how. Baselines are those of the first and the last line of text.
#pragma once

#include "tessaluna/platform/foundation/EnumNames.h"

namespace tessaluna::platform {

enum NSLayoutRelation {
  NSLayoutRelationLessThanOrEqual = -1,
  NSLayoutRelationEqual = 0,
  NSLayoutRelationGreaterThanOrEqual = 1,
};

enum NSLayoutAttribute {
  NSLayoutAttributeNotAnAttribute = 0,
  NSLayoutAttributeLeft = 1,
  NSLayoutAttributeRight = 2,
  NSLayoutAttributeTop = 3,
  NSLayoutAttributeBottom = 4,
  NSLayoutAttributeLeading = 5,
  NSLayoutAttributeTrailing = 6,
  NSLayoutAttributeWidth = 7,
  NSLayoutAttributeHeight = 8,
  NSLayoutAttributeCenterX = 9,
  NSLayoutAttributeCenterY = 10,
  NSLayoutAttributeLastBaseline = 11,
  NSLayoutAttributeBaseline = NSLayoutAttributeLastBaseline,
  NSLayoutAttributeFirstBaseline = 12,
};

template <>
struct EnumNames<NSLayoutRelation> {
  static constexpr NamedValue all[] = {{"equal", NSLayoutRelationEqual},
                                       {"lessThanOrEqual", NSLayoutRelationLessThanOrEqual},
                                       {"greaterThanOrEqual", NSLayoutRelationGreaterThanOrEqual}};
};
template <>
struct EnumNames<NSLayoutAttribute> {
  static constexpr NamedValue all[] = {{"notAnAttribute", NSLayoutAttributeNotAnAttribute},
                                       {"left", NSLayoutAttributeLeft},
                                       {"right", NSLayoutAttributeRight},
                                       {"top", NSLayoutAttributeTop},
                                       {"bottom", NSLayoutAttributeBottom},
                                       {"leading", NSLayoutAttributeLeading},
                                       {"trailing", NSLayoutAttributeTrailing},
                                       {"width", NSLayoutAttributeWidth},
                                       {"height", NSLayoutAttributeHeight},
                                       {"centerX", NSLayoutAttributeCenterX},
                                       {"centerY", NSLayoutAttributeCenterY},
                                       {"lastBaseline", NSLayoutAttributeLastBaseline},
                                       {"firstBaseline", NSLayoutAttributeFirstBaseline}};
};

}  // namespace tessaluna::platform
