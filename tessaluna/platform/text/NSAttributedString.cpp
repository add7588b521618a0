#include "tessaluna/platform/text/NSAttributedString.h"

#include <algorithm>
#include <iterator>

#include "tessaluna/platform/text/TextLayout.h"
#include "tessaluna/platform/text/unicode.h"

namespace tessaluna::platform {

const ClassInfo NSAttributedString::staticClassInfo{.name = "NSAttributedString", .base = &NSObject::staticClassInfo};

bool areEqual(const NSAttributeValue& a, const NSAttributeValue& b) {
  const auto* objectA = std::get_if<Ref<NSObject>>(&a);
  const auto* objectB = std::get_if<Ref<NSObject>>(&b);
  if (objectA && objectB) return areEqual(objectA->get(), objectB->get());
  return a == b;
}

bool areEqual(const NSAttributes& a, const NSAttributes& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const auto& x, const auto& y) { return x.first == y.first && areEqual(x.second, y.second); });
}

NSAttributedString::NSAttributedString(std::string_view utf8, NSAttributes attributes)
    : NSAttributedString(utf16FromUtf8(utf8), std::move(attributes)) {}

NSAttributedString::NSAttributedString(std::u16string text, NSAttributes attributes) : text_(std::move(text)) {
  if (!text_.empty()) runs_.push_back({text_.size(), std::move(attributes)});
}

std::string NSAttributedString::string() const { return utf8FromUtf16(text_); }

std::size_t NSAttributedString::runAt(std::size_t index, std::size_t& start) const {
  if (index >= text_.size()) stopProgram("NSAttributedString: index " + std::to_string(index) + " is past the end");
  start = 0;
  std::size_t run = 0;
  while (start + runs_[run].length <= index) start += runs_[run++].length;
  return run;
}

const NSAttributes& NSAttributedString::attributesAtIndex(std::size_t index) const {
  std::size_t start = 0;
  return runs_[runAt(index, start)].attributes;
}

std::optional<NSAttributeValue> NSAttributedString::attributeAtIndex(NSAttributedStringKey key, std::size_t index,
                                                                     NSRange* effectiveRange) const {
  const auto valueOf = [&](std::size_t run) -> const NSAttributeValue* {
    const auto found = runs_[run].attributes.find(key);
    return found == runs_[run].attributes.end() ? nullptr : &found->second;
  };
  std::size_t start = 0;
  const std::size_t run = runAt(index, start);
  const NSAttributeValue* value = valueOf(run);
  if (effectiveRange) {
    const auto hasSame = [&](std::size_t other) {
      const NSAttributeValue* otherValue = valueOf(other);
      return value && otherValue ? areEqual(*value, *otherValue) : value == otherValue;
    };
    std::size_t end = start + runs_[run].length;
    for (std::size_t i = run; i > 0 && hasSame(i - 1); --i) start -= runs_[i - 1].length;
    for (std::size_t i = run + 1; i < runs_.size() && hasSame(i); ++i) end += runs_[i].length;
    *effectiveRange = {start, end - start};
  }
  return value ? std::optional(*value) : std::nullopt;
}

Ref<NSAttributedString> NSAttributedString::attributedSubstring(NSRange range) const {
  const std::size_t first = std::min(range.location, text_.size());
  const std::size_t end = first + std::min(range.length, text_.size() - first);
  const auto result = make<NSMutableAttributedString>();
  result->text_ = text_.substr(first, end - first);
  std::size_t start = 0;
  for (const Run& run : runs_) {
    const std::size_t from = std::max(start, first), to = std::min(start + run.length, end);
    if (from < to) result->runs_.push_back({to - from, run.attributes});
    start += run.length;
  }
  return result;
}

Ref<NSMutableAttributedString> NSAttributedString::mutableCopy() const {
  auto copy = make<NSMutableAttributedString>();
  copy->setAttributedString(*this);
  return copy;
}

bool NSAttributedString::isEqual(const NSObject* other) const {
  const auto* string = dynamic_cast<const NSAttributedString*>(other);
  if (!string || string->text_ != text_) return false;
  std::size_t startA = 0, startB = 0;
  for (std::size_t i = 0; i < text_.size();) {
    const Run& a = runs_[runAt(i, startA)];
    const Run& b = string->runs_[string->runAt(i, startB)];
    if (!areEqual(a.attributes, b.attributes)) return false;
    i = std::min(startA + a.length, startB + b.length);
  }
  return true;
}

constexpr auto Lent = TextLayout::Options::Text::Lent;  // to a layout that is used at once

CGSize NSAttributedString::size() const { return TextLayout(*this, {.wrapsLines = false, .text = Lent}).size(); }

CGRect NSAttributedString::boundingRectWithSize(CGSize size, std::uint32_t options) const {
  const bool usesLines = options & NSStringDrawingUsesLineFragmentOrigin;
  const TextLayout layout(*this, {.width = size.width, .wrapsLines = usesLines, .text = Lent});
  const CGFloat bottom = usesLines || layout.lines().empty() ? 0 : -layout.lines().back().metrics.descent;
  return {{0, bottom}, layout.size()};
}

void NSAttributedString::drawInRect(CGRect rect) const {
  TextLayout(*this, {.width = rect.size.width, .wrapsLines = true, .text = Lent}).drawInRect(rect);
}

void NSAttributedString::drawAtPoint(CGPoint point) const {
  const TextLayout layout(*this, {.wrapsLines = false, .text = Lent});
  layout.drawInRect({point, layout.size()});
}

namespace {

// Of a range to nowhere, such as one of NSNotFound, the end is not a number.
void requireWithin(std::u16string_view text, NSRange range) {
  if (range.location > text.size() || range.length > text.size() - range.location)
    stopProgram("NSAttributedString: a range reaches past the end");
}

}  // namespace

std::size_t NSMutableAttributedString::splitAt(std::size_t index) {
  if (index == text_.size()) return runs_.size();
  std::size_t start = 0;
  const std::size_t run = runAt(index, start);
  if (start == index) return run;
  Run rest{start + runs_[run].length - index, runs_[run].attributes};
  runs_[run].length = index - start;
  runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(run) + 1, std::move(rest));
  return run + 1;
}

namespace {

// A run is shaped by itself: letters that were typed one after the other must not be apart, nor be kept apart.
void joinAlike(std::vector<NSAttributedString::Run>& runs) {
  std::size_t last = 0;
  for (std::size_t run = 1; run < runs.size(); ++run) {
    if (areEqual(runs[last].attributes, runs[run].attributes)) runs[last].length += runs[run].length;
    else if (++last != run) runs[last] = std::move(runs[run]);
  }
  if (!runs.empty()) runs.resize(last + 1);
}

}  // namespace

void NSMutableAttributedString::addAttribute(NSAttributedStringKey key, NSAttributeValue value, NSRange range) {
  if (range.length == 0) return;
  requireWithin(text_, range);
  const std::size_t first = splitAt(range.location), end = splitAt(range.location + range.length);
  for (std::size_t run = first; run < end; ++run) runs_[run].attributes[key] = value;
  joinAlike(runs_);
  edited(range, 0);
}

void NSMutableAttributedString::removeAttribute(NSAttributedStringKey key, NSRange range) {
  if (range.length == 0) return;
  requireWithin(text_, range);
  const std::size_t first = splitAt(range.location), end = splitAt(range.location + range.length);
  for (std::size_t run = first; run < end; ++run) runs_[run].attributes.erase(key);
  joinAlike(runs_);
  edited(range, 0);
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString& other) {
  // By a copy: it may be appended to itself.
  std::vector<Run> runs = other.runs();
  const NSRange added{text_.size(), other.length()};
  text_ += other.text();
  runs_.insert(runs_.end(), std::make_move_iterator(runs.begin()), std::make_move_iterator(runs.end()));
  edited(added, static_cast<std::ptrdiff_t>(added.length));
}

void NSMutableAttributedString::setAttributedString(const NSAttributedString& other) {
  const auto before = static_cast<std::ptrdiff_t>(text_.size());
  text_ = other.text();
  runs_ = other.runs();
  edited({0, text_.size()}, static_cast<std::ptrdiff_t>(text_.size()) - before);
}

void NSMutableAttributedString::replaceCharactersInRange(NSRange range, std::u16string_view text) {
  requireWithin(text_, range);
  NSAttributes attributes;
  if (!text_.empty()) {
    const bool isAtEnd = range.length == 0 && range.location > 0;
    attributes = attributesAtIndex(isAtEnd ? range.location - 1 : range.location);
  }
  const std::size_t first = splitAt(range.location), end = splitAt(range.location + range.length);
  runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(first), runs_.begin() + static_cast<std::ptrdiff_t>(end));
  if (!text.empty())
    runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(first), Run{text.size(), std::move(attributes)});
  joinAlike(runs_);
  const std::size_t inserted = text.size();
  text_.replace(range.location, range.length, text);
  edited({range.location, inserted}, static_cast<std::ptrdiff_t>(inserted) - static_cast<std::ptrdiff_t>(range.length));
}

}  // namespace tessaluna::platform
