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

 protected:
  void edited(NSRange range, std::ptrdiff_t changeInLength) override;

 private:
  void notifyDelegate();

  WeakRef<NSTextStorageDelegate> delegate_;
  std::size_t editCount_ = 0;
  int depth_ = 0;
  bool wasEdited_ = false;
  NSRange editedRange_;
  std::ptrdiff_t changeInLength_ = 0;
};

}  // namespace tessaluna::platform
