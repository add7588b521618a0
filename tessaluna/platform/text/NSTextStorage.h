// The text of a text view: an attributed string that reports every edit, whoever makes it.
#pragma once

#include "tessaluna/platform/text/Forward.h"
#include "tessaluna/platform/text/NSAttributedString.h"

namespace tessaluna::platform {

class NSTextStorageDelegate {
 public:
  virtual ~NSTextStorageDelegate() = default;
  // textStorage:didProcessEditing:range:changeInLength: The range is of the text as it is now.
  virtual void textStorageDidProcessEditing(NSTextStorage& storage, NSRange editedRange, std::ptrdiff_t changeInLength) = 0;
};

// Several edits as one: what they have touched, in the text as it is now, and by how much that is longer than it was.
struct TextEdit {
  NSRange range;
  std::ptrdiff_t change = 0;

  void add(NSRange range, std::ptrdiff_t change, std::size_t textLength);
};

class NSTextStorage : public NSMutableAttributedString {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  using NSMutableAttributedString::NSMutableAttributedString;

  // Not kept alive.
  void setDelegate(const Ref<NSTextStorageDelegate>& delegate) { delegate_ = delegate; }

  // Edits in between are reported as one, when the outermost pair ends.
  void beginEditing() { ++depth_; }
  void endEditing();

  // Grows with each edit, also within such a pair.
  std::size_t editCount() const { return editCount_; }
  // All edits since the count was that; absent without any, or if the count was not that when noteEditsFromNow was called last.
  std::optional<TextEdit> editSince(std::size_t count) const;
  void noteEditsFromNow();

 protected:
  void edited(NSRange range, std::ptrdiff_t changeInLength) override;

 private:
  void notifyDelegate();

  WeakRef<NSTextStorageDelegate> delegate_;
  std::size_t editCount_ = 0;
  int depth_ = 0;
  std::optional<TextEdit> edit_;         // that is to be reported
  std::optional<TextEdit> editFromNow_;  // since the count was that:
  std::size_t countOfNow_ = 0;
};

}  // namespace tessaluna::platform
