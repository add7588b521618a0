#include "tessaluna/platform/interface_files/classRegistry.h"

#include <map>
#include <string>

#include "tessaluna/platform/cells/NSButtonCell.h"
#include "tessaluna/platform/cells/NSLevelIndicatorCell.h"
#include "tessaluna/platform/cells/NSPopUpButtonCell.h"
#include "tessaluna/platform/cells/NSSegmentedCell.h"
#include "tessaluna/platform/cells/NSSliderCell.h"
#include "tessaluna/platform/cells/NSTextFieldCell.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSSortDescriptor.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSScroller.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSSlider.h"
#include "tessaluna/platform/views/NSTableCellView.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSPanel.h"
#include "tessaluna/platform/windows/NSViewController.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/platform/windows/NSWindowController.h"

namespace tessaluna::platform {

namespace {

using Registry = std::map<std::string, ClassFactory, std::less<>>;

template <class... Classes>
Registry registryOf() {
  Registry result;
  (result.emplace(Classes::staticClassInfo.name, [](NSCoder& coder) -> Ref<NSObject> { return make<Classes>(coder); }), ...);
  return result;
}

Registry& registry() {
  static Registry classes =
      registryOf<NSView, NSWindow, NSViewController, NSWindowController, NSControl, NSButton, NSTextField, NSImageView,
                 NSScrollView, NSScroller, NSSlider, NSProgressIndicator, NSSegmentedControl, NSLevelIndicator, NSTableView,
                 NSTableColumn, NSTableHeaderView, NSSortDescriptor, NSLayoutConstraint, NSCell, NSButtonCell, NSSliderCell,
                 NSSegmentedCell, NSLevelIndicatorCell, NSTextFieldCell, NSTableCellView, NSPanel, NSPopUpButton,
                 NSPopUpButtonCell>();
  return classes;
}

}  // namespace

void registerClass(std::string_view name, ClassFactory factory) { registry().insert_or_assign(std::string(name), factory); }

Ref<NSObject> makeObjectOfClass(std::string_view name, NSCoder& coder) {
  // Classes that read objects of theirs come back to here: a document must not be able to exhaust the stack.
  constexpr int deepestNesting = 20;
  static int nesting = 0;
  ++nesting;
  const AtEndOfScope leave([] { --nesting; });
  if (nesting > deepestNesting) {
    coder.fail("is nested too deeply");
    return nullptr;
  }
  const auto found = registry().find(name);
  if (found == registry().end()) {
    coder.fail("unknown class \"" + std::string(name) + "\"");
    return nullptr;
  }
  return found->second(coder);
}

}  // namespace tessaluna::platform
