#include "tessaluna/platform/text/NSParagraphStyle.h"

namespace tessaluna::platform {

const ClassInfo NSParagraphStyle::staticClassInfo{.name = "NSParagraphStyle", .base = &NSObject::staticClassInfo};

Ref<NSParagraphStyle> NSParagraphStyle::defaultParagraphStyle() {
  static const Ref<NSParagraphStyle> style = make<NSParagraphStyle>();
  return style;
}

Ref<NSMutableParagraphStyle> NSParagraphStyle::mutableCopy() const {
  return make<NSMutableParagraphStyle>(alignment_, lineBreakMode_);
}

bool NSParagraphStyle::isEqual(const NSObject* other) const {
  const auto* style = dynamic_cast<const NSParagraphStyle*>(other);
  return style && style->alignment_ == alignment_ && style->lineBreakMode_ == lineBreakMode_;
}

}  // namespace tessaluna::platform
