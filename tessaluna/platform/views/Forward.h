// Names of events, views, cells and windows, for headers that only pass them on.
#pragma once

#include "tessaluna/platform/foundation/Reference.h"

namespace tessaluna::platform {

class NSAnimationContext;
class LayoutEngine;
class NSApplication;
class NSButton;
class NSButtonCell;
class NSCell;
class NSClipView;
class NSControl;
class NSCursor;
class NSEvent;
class NSImageView;
class NSLayoutConstraint;
class NSLayoutConstraintAnimator;
class NSMenu;
class NSMenuItem;
class NSResponder;
class NSScroller;
class NSScrollView;
class NSTableView;
class NSText;
class NSTextDelegate;
class NSTextField;
class NSTextView;
class NSTrackingArea;
class NSView;
class NSViewAnimator;
class NSViewController;
class NSWindow;
class NSWindowAnimator;
class NSWindowController;
class NSWindowDelegate;

}  // namespace tessaluna::platform
