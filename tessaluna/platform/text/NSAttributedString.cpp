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

std::size_t NSAttributedString::runAt(std::size_t index) const {
  if (index >= text_.size()) stopProgram("NSAttributedString: index " + std::to_string(index) + " is past the end");
  const auto after =
      std::partition_point(runs_.begin(), runs_.end(), [index](const Run& run) { return run.start <= index; });
  return static_cast<std::size_t>(after - runs_.begin()) - 1;
}

void NSAttributedString::placeRunsFrom(std::size_t first) {
  std::size_t start = first == 0 ? 0 : runs_[first - 1].start + runs_[first - 1].length;
  for (std::size_t run = first; run < runs_.size(); ++run) {
    runs_[run].start = start;
    start += runs_[run].length;
  }
}

const NSAttributes& NSAttributedString::attributesAtIndex(std::size_t index) const { return runs_[runAt(index)].attributes; }

std::optional<NSAttributeValue> NSAttributedString::attributeAtIndex(NSAttributedStringKey key, std::size_t index,
                                                                     NSRange* effectiveRange) const {
  const auto valueOf = [&](std::size_t run) -> const NSAttributeValue* {
    const auto found = runs_[run].attributes.find(key);
    return found == runs_[run].attributes.end() ? nullptr : &found->second;
  };
  const std::size_t run = runAt(index);
  const NSAttributeValue* value = valueOf(run);
  if (effectiveRange) {
    const auto hasSame = [&](std::size_t other) {
      const NSAttributeValue* otherValue = valueOf(other);
      return value && otherValue ? areEqual(*value, *otherValue) : value == otherValue;
    };
    std::size_t start = runs_[run].start, end = start + runs_[run].length;
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
  for (std::size_t run = first < end ? runAt(first) : runs_.size(); run < runs_.size() && runs_[run].start < end; ++run) {
    const std::size_t from = std::max(runs_[run].start, first), to = std::min(runs_[run].start + runs_[run].length, end);
    result->runs_.push_back({to - from, runs_[run].attributes, from - first});
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
  for (std::size_t i = 0; i < text_.size();) {
    const Run& a = runs_[runAt(i)];
    const Run& b = string->runs_[string->runAt(i)];
    if (!areEqual(a.attributes, b.attributes)) return false;
    i = std::min(a.start + a.length, b.start + b.length);
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
  const std::size_t run = runAt(index);
  if (runs_[run].start == index) return run;
  Run rest{runs_[run].start + runs_[run].length - index, runs_[run].attributes, index};
  runs_[run].length = index - runs_[run].start;
  runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(run) + 1, std::move(rest));
  if (run < joinedRuns_) ++joinedRuns_;
  return run + 1;
}

// A run is shaped by itself: letters that were typed one after the other must not be apart, nor be kept apart. The runs that were
// changed are joined with those beside them, and all that have come since runs were joined last.
void NSMutableAttributedString::joinAlike(std::size_t first, std::size_t end) {
  const bool areOthersJoined = joinedRuns_ >= runs_.size();
  const std::size_t from = areOthersJoined ? first : std::min(first, joinedRuns_);
  const std::size_t to = areOthersJoined ? std::min(end + 1, runs_.size()) : runs_.size();
  std::size_t last = from == 0 ? 0 : from - 1;
  for (std::size_t run = last + 1; run < to; ++run) {
    if (areEqual(runs_[last].attributes, runs_[run].attributes)) runs_[last].length += runs_[run].length;
    else if (++last != run) runs_[last] = std::move(runs_[run]);
  }
  if (last + 1 < to)
    runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(last) + 1, runs_.begin() + static_cast<std::ptrdiff_t>(to));
  joinedRuns_ = runs_.size();
}

void NSMutableAttributedString::addAttribute(NSAttributedStringKey key, NSAttributeValue value, NSRange range) {
  if (range.length == 0) return;
  requireWithin(text_, range);
  const std::size_t first = splitAt(range.location), end = splitAt(range.location + range.length);
  for (std::size_t run = first; run < end; ++run) runs_[run].attributes[key] = value;
  joinAlike(first, end);
  edited(range, 0);
}

void NSMutableAttributedString::removeAttribute(NSAttributedStringKey key, NSRange range) {
  if (range.length == 0) return;
  requireWithin(text_, range);
  const std::size_t first = splitAt(range.location), end = splitAt(range.location + range.length);
  for (std::size_t run = first; run < end; ++run) runs_[run].attributes.erase(key);
  joinAlike(first, end);
  edited(range, 0);
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString& other) {
  // By a copy: it may be appended to itself.
  std::vector<Run> runs = other.runs();
  const NSRange added{text_.size(), other.length()};
  const std::size_t firstAdded = runs_.size();
  text_ += other.text();
  runs_.insert(runs_.end(), std::make_move_iterator(runs.begin()), std::make_move_iterator(runs.end()));
  placeRunsFrom(firstAdded);
  edited(added, static_cast<std::ptrdiff_t>(added.length));
}

void NSMutableAttributedString::setAttributedString(const NSAttributedString& other) {
  const auto before = static_cast<std::ptrdiff_t>(text_.size());
  text_ = other.text();
  runs_ = other.runs();
  joinedRuns_ = 0;
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
  joinedRuns_ -= std::min(end, joinedRuns_) - std::min(first, joinedRuns_);
  if (!text.empty()) {
    runs_.insert(runs_.begin() + static_cast<std::ptrdiff_t>(first), Run{text.size(), std::move(attributes)});
    if (first < joinedRuns_) ++joinedRuns_;
  }
  placeRunsFrom(first);
  joinAlike(first, std::min(first + 1, runs_.size()));
  const std::size_t inserted = text.size();
  text_.replace(range.location, range.length, text);
  edited({range.location, inserted}, static_cast<std::ptrdiff_t>(inserted) - static_cast<std::ptrdiff_t>(range.length));
}

}  // namespace tessaluna::platform
