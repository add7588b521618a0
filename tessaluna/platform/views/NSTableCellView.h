// The usual view of a table's row: it knows which of its subviews shows the row's text and which its image, and keeps the value
// that they show. Whoever fills the row sets both.
#pragma once

#include <cstdint>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/views/NSView.h"

namespace tessaluna::platform {

enum NSTableViewRowSizeStyle {
  NSTableViewRowSizeStyleDefault = -1,
  NSTableViewRowSizeStyleCustom = 0,
  NSTableViewRowSizeStyleSmall = 1,
  NSTableViewRowSizeStyleMedium = 2,
  NSTableViewRowSizeStyleLarge = 3,
};

class NSTableCellView : public NSView {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Outlets: "textField", "imageView", "objectValue". Property: "backgroundStyle".
  using NSView::NSView;

  // Kept alive. An override shows it.
  const Ref<NSObject>& objectValue() const { return objectValue_; }
  virtual void setObjectValue(Ref<NSObject> value) { objectValue_ = std::move(value); }

  // Not kept alive: they are among the subviews, which are.
  Ref<NSTextField> textField() const { return textField_.lock(); }
  void setTextField(const Ref<NSTextField>& field) { textField_ = field; }
  Ref<NSImageView> imageView() const { return imageView_.lock(); }
  void setImageView(const Ref<NSImageView>& view) { imageView_ = view; }

  // The ground of the row: dark where it is selected. Passed to the cells of the controls among the subviews, and to cell
  // views among them.
  NSBackgroundStyle backgroundStyle() const { return backgroundStyle_; }
  virtual void setBackgroundStyle(NSBackgroundStyle style);

  // A plain store.
  NSTableViewRowSizeStyle rowSizeStyle() const { return rowSizeStyle_; }
  virtual void setRowSizeStyle(NSTableViewRowSizeStyle style) { rowSizeStyle_ = style; }

 private:
  Ref<NSObject> objectValue_;
  WeakRef<NSTextField> textField_;
  WeakRef<NSImageView> imageView_;
  NSBackgroundStyle backgroundStyle_ = NSBackgroundStyleLight;
  NSTableViewRowSizeStyle rowSizeStyle_ = NSTableViewRowSizeStyleDefault;
};

}  // namespace tessaluna::platform
