// A font: a family, a size in points, and whether it is bold. Immutable.
#pragma once

#include <string>

#include "tessaluna/platform/backend/TextEngine.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSFont : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Sizes of the system's texts, in points.
  static CGFloat systemFontSize() { return 13; }
  static CGFloat smallSystemFontSize() { return 11; }
  static CGFloat labelFontSize() { return 10; }

  // A size of 0 or less means the usual one.
  static Ref<NSFont> systemFontOfSize(CGFloat size);
  static Ref<NSFont> boldSystemFontOfSize(CGFloat size);
  static Ref<NSFont> labelFontOfSize(CGFloat size);
  // Null unless exactly this family is installed.
  static Ref<NSFont> fontWithName(const std::string& family, CGFloat size);

  CGFloat pointSize() const { return description_.size; }
  const std::string& familyName() const { return description_.family; }  // empty for the system's own
  bool isBold() const { return description_.isBold; }
  CGFloat ascender() const { return metrics().ascent; }
  CGFloat descender() const { return -metrics().descent; }  // below the baseline, so negative
  backend::FontMetrics metrics() const;

  bool isEqual(const NSObject* other) const override;
  const backend::FontDescription& description() const { return description_; }

  explicit NSFont(backend::FontDescription description) : description_(std::move(description)) {}

 private:
  backend::FontDescription description_;
};

// The engine of the current backend. Without one the program stops: text cannot be measured.
const backend::TextEngine& textEngine();

}  // namespace tessaluna::platform
