#include "tessaluna/platform/text/NSTextStorage.h"

#include <algorithm>
#include <utility>

namespace tessaluna::platform {

const ClassInfo NSTextStorage::staticClassInfo{.name = "NSTextStorage", .base = &NSAttributedString::staticClassInfo};

void TextEdit::add(NSRange added, std::ptrdiff_t addedChange, std::size_t textLength) {
  // What an earlier edit after this place touched has moved with it.
  const auto end = static_cast<std::ptrdiff_t>(range.location + range.length) + addedChange;
  const auto movedEnd = static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, end));
  const std::size_t start = std::min(range.location, added.location);
  range = {start, std::min(textLength, std::max(movedEnd, added.location + added.length)) - start};
  change += addedChange;
}

void NSTextStorage::edited(NSRange range, std::ptrdiff_t changeInLength) {
  ++editCount_;
  for (std::optional<TextEdit>* edit : {&edit_, &editFromNow_}) {
    if (*edit) (*edit)->add(range, changeInLength, length());
    else *edit = {range, changeInLength};
  }
  if (depth_ == 0) notifyDelegate();
}

std::optional<TextEdit> NSTextStorage::editSince(std::size_t count) const {
  return count == countOfNow_ ? editFromNow_ : std::nullopt;
}

void NSTextStorage::noteEditsFromNow() {
  editFromNow_.reset();
  countOfNow_ = editCount_;
}

void NSTextStorage::endEditing() {
  if (depth_ > 0 && --depth_ == 0 && edit_) notifyDelegate();
}

void NSTextStorage::notifyDelegate() {
  const TextEdit edit = *std::exchange(edit_, std::nullopt);
  if (const Ref<NSTextStorageDelegate> delegate = delegate_.lock())
    delegate->textStorageDidProcessEditing(*this, edit.range, edit.change);
}

}  // namespace tessaluna::platform
