// Text with attributes: runs of UTF-16 units, each with the same dictionary. Ranges count UTF-16 units.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/foundation/URL.h"

namespace tessaluna::platform {

enum NSAttributedStringKey {
  NSFontAttributeName,             // an NSFont; absent: the system font
  NSForegroundColorAttributeName,  // an NSColor; absent: black
  NSParagraphStyleAttributeName,   // an NSParagraphStyle; absent: the default one
  NSUnderlineStyleAttributeName,   // a number, NSUnderlineStyle
  NSLinkAttributeName,             // a URL or a string
};

enum NSUnderlineStyle { NSUnderlineStyleNone = 0, NSUnderlineStyleSingle = 1, NSUnderlineStyleThick = 2 };

using NSAttributeValue = std::variant<Ref<NSObject>, std::int64_t, std::string, URL>;
using NSAttributes = std::map<NSAttributedStringKey, NSAttributeValue>;

bool areEqual(const NSAttributeValue& a, const NSAttributeValue& b);
bool areEqual(const NSAttributes& a, const NSAttributes& b);

// The object below the key if it is a T, otherwise absent.
template <class T>
Ref<T> attributeObject(const NSAttributes& attributes, NSAttributedStringKey key) {
  const auto found = attributes.find(key);
  if (found == attributes.end()) return nullptr;
  const auto* object = std::get_if<Ref<NSObject>>(&found->second);
  return object ? std::dynamic_pointer_cast<T>(*object) : nullptr;
}

class NSAttributedString : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  NSAttributedString() = default;
  explicit NSAttributedString(std::string_view utf8, NSAttributes attributes = {});
  explicit NSAttributedString(std::u16string text, NSAttributes attributes = {});

  std::string string() const;  // in UTF-8
  const std::u16string& text() const { return text_; }
  std::size_t length() const { return text_.size(); }

  // The value at an index, and in `effectiveRange`, if given, the longest range around it with this value, as its runs are.
  // An index at or past the end stops the program.
  std::optional<NSAttributeValue> attributeAtIndex(NSAttributedStringKey key, std::size_t index,
                                                   NSRange* effectiveRange = nullptr) const;
  const NSAttributes& attributesAtIndex(std::size_t index) const;

  // Calls with each stretch of equal value in the range, stretches without one included, in order.
  template <class Block>
  void enumerateAttribute(NSAttributedStringKey key, NSRange range, Block block) const {
    const std::size_t end = range.location + range.length;
    for (std::size_t i = range.location; i < end;) {
      NSRange stretch;
      const std::optional<NSAttributeValue> value = attributeAtIndex(key, i, &stretch);
      const std::size_t stop = std::min(stretch.location + stretch.length, end);
      block(value, NSRange{i, stop - i});
      i = stop;
    }
  }

  Ref<NSAttributedString> attributedSubstring(NSRange range) const;
  Ref<class NSMutableAttributedString> mutableCopy() const;
  bool isEqual(const NSObject* other) const override;

  // Measuring and drawing; see TextLayout.h for strings without attributes of their own.
  CGSize size() const;
  CGRect boundingRectWithSize(CGSize size, std::uint32_t options) const;
  void drawInRect(CGRect rect) const;
  void drawAtPoint(CGPoint point) const;

  struct Run {
    std::size_t length = 0;
    NSAttributes attributes;
    std::size_t start = 0;
  };
  const std::vector<Run>& runs() const { return runs_; }

 protected:
  std::size_t runAt(std::size_t index) const;
  void placeRunsFrom(std::size_t first);  // after a change of their lengths

  std::u16string text_;
  std::vector<Run> runs_;       // cover the text; neighbours may be alike
  std::size_t joinedRuns_ = 0;  // of so many first ones no neighbours are alike
};

class NSMutableAttributedString : public NSAttributedString {
 public:
  using NSAttributedString::NSAttributedString;
  // A range past the end stops the program.
  void addAttribute(NSAttributedStringKey key, NSAttributeValue value, NSRange range);
  void removeAttribute(NSAttributedStringKey key, NSRange range);
  void appendAttributedString(const NSAttributedString& other);
  void setAttributedString(const NSAttributedString& other);
  // The new text takes the attributes of the first character that it replaces, or of the one before.
  void replaceCharactersInRange(NSRange range, std::u16string_view text);

 protected:
  // Called after each of the operations above that changed something; the range is of the text as it is now.
  virtual void edited(NSRange /*range*/, std::ptrdiff_t /*changeInLength*/) {}

 private:
  std::size_t splitAt(std::size_t index);
  void joinAlike(std::size_t first, std::size_t end);
};

}  // namespace tessaluna::platform
