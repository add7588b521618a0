#include "tessaluna/platform/views/textMenu.h"

#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSPasteboard.h"

namespace tessaluna::platform {

void popUpTextMenu(NSTextView& view, CGPoint corner) {
  const auto menu = make<NSMenu>();
  // The commands are the view's own, and nobody in the responder chain is asked about them.
  menu->setAutoenablesItems(false);
  const NSRange selected = view.selectedRange();
  const bool canChange = view.isEditable(), hasSelection = selected.length > 0;
  const bool hasText = NSPasteboard::generalPasteboard()->stringForType(NSPasteboardTypeString).has_value();
  const auto add = [&menu](const char* title, const char* command, bool isEnabled) {
    const auto item = menu->addItemWithTitle(NSBundle::mainBundle()->localizedStringForKey(title), command);
    item->setEnabled(isEnabled);
  };
  add("Undo", "undo:", canChange && view.undoManager()->canUndo());
  add("Redo", "redo:", canChange && view.undoManager()->canRedo());
  menu->addItem(NSMenuItem::separatorItem());
  add("Cut", "cut:", canChange && hasSelection);
  add("Copy", "copy:", hasSelection);
  add("Paste", "paste:", canChange && hasText);
  menu->addItem(NSMenuItem::separatorItem());
  add("Select All", "selectAll:", selected.length < view.length());
  // The action goes to the view, whoever has the keyboard by then.
  for (const Ref<NSMenuItem>& item : menu->itemArray()) item->setTarget(refTo<NSObject>(view));
  menu->popUpMenuPositioningItem(nullptr, corner, &view);
}

}  // namespace tessaluna::platform
