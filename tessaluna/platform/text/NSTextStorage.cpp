#include "tessaluna/platform/text/NSTextStorage.h"

#include <algorithm>
#include <utility>

namespace tessaluna::platform {

const ClassInfo NSTextStorage::staticClassInfo{.name = "NSTextStorage", .base = &NSAttributedString::staticClassInfo};

void NSTextStorage::edited(NSRange range, std::ptrdiff_t changeInLength) {
  ++editCount_;
  if (!std::exchange(wasEdited_, true)) {
    editedRange_ = range;
    changeInLength_ = changeInLength;
  } else {
    // What an earlier edit after this place touched has moved with it.
    const std::size_t earlierEnd = editedRange_.location + editedRange_.length;
    const auto movedEnd =
        static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, static_cast<std::ptrdiff_t>(earlierEnd) + changeInLength));
    const std::size_t start = std::min(editedRange_.location, range.location);
    editedRange_ = {start, std::min(length(), std::max(movedEnd, range.location + range.length)) - start};
    changeInLength_ += changeInLength;
  }
  if (depth_ == 0) notifyDelegate();
}

void NSTextStorage::endEditing() {
  if (depth_ > 0 && --depth_ == 0 && wasEdited_) notifyDelegate();
}

void NSTextStorage::notifyDelegate() {
  wasEdited_ = false;
  if (const Ref<NSTextStorageDelegate> delegate = delegate_.lock())
    delegate->textStorageDidProcessEditing(*this, editedRange_, changeInLength_);
}

}  // namespace tessaluna::platform
