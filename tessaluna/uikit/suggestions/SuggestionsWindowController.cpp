#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

#include <algorithm>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/windows/NSWindowOcclusion.h"
#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

const Selector SuggestionsWindowController::selectors_[] = {
    action<&SuggestionsWindowController::moveUp>("moveUp:"),
    action<&SuggestionsWindowController::moveDown>("moveDown:"),
};

namespace {

constexpr Property properties[] = {
    property<&SuggestionsWindowController::setSuggestionPrototype, "suggestionPrototype">(),
    property<&SuggestionsWindowController::setEndsWithHiddenWindow, "endsWithHiddenWindow">()};

}  // namespace

const ClassInfo SuggestionsWindowController::staticClassInfo{.name = "TessalunaUIKit.SuggestionsWindowController",
                                                             .base = &NSWindowController::staticClassInfo,
                                                             .selectors = SuggestionsWindowController::selectors_,
                                                             .properties = properties};

namespace {

constexpr CGRect startFrame{0, 0, 20, 20};
constexpr CGFloat gapBelowField = 2;
constexpr NSEventMask anyMouseDown =
    maskOf(NSEventType::LeftMouseDown) | maskOf(NSEventType::RightMouseDown) | maskOf(NSEventType::OtherMouseDown);
static_assert(anyMouseDown == 0x200000A);

template <class T>
T& required(T* object, std::string_view what) {
  if (!object) stopProgram("TessalunaUIKit.SuggestionsWindowController: used while absent: " + std::string(what));
  return *object;
}

// Loading it connects the outlets of the row.
Ref<HighlightingView> rowOf(SuggestionItemViewController& item) {
  auto row = std::dynamic_pointer_cast<HighlightingView>(item.view());
  if (!row)
    stopProgram("TessalunaUIKit.SuggestionsWindowController: the root of a row is not a HighlightingView but a " +
                item.view()->className());
  return row;
}

// The frame of a window whose upper edge stays, as high as its content but not beyond the lower edge of the screen.
CGRect growingDownward(CGRect frame, CGFloat contentHeight) {
  const CGFloat top = frame.origin.y + frame.size.height;
  const CGFloat height = std::min(contentHeight, top);
  return {frame.origin.x, top - height, frame.size.width, height};
}

}  // namespace

SuggestionsWindowController::SuggestionsWindowController()
    : NSWindowController(make<SuggestionsWindow>(startFrame, /*defer=*/true)) {
  const auto content = make<SuggestionsContentView>(startFrame);
  fullContentView_ = content;
  content->setAutoresizesSubviews(false);
  content->setAutoresizingMask(NSViewWidthSizable);
  const auto scrollView = make<NSScrollView>(startFrame);
  scrollView->setHasVerticalScroller(true);
  scrollView->setHasHorizontalScroller(false);
  scrollView->setAutohidesScrollers(true);
  scrollView->setBorderType(NSNoBorder);
  scrollView->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  scrollView->setDocumentView(content);
  window()->setContentView(scrollView);
  needsLayoutUpdate_ = true;
}

SuggestionsWindowController::SuggestionsWindowController(NSCoder& coder) : NSWindowController(coder) {}

SuggestionsWindowController::SuggestionsWindowController(Ref<NSWindow>) {
  stopUnimplementedInitializer("TessalunaUIKit.SuggestionsWindowController", "init(window:)");
}

void SuggestionsWindowController::setSuggestions(std::optional<std::vector<Suggestion>> suggestions) {
  suggestions_ = std::move(suggestions);
  // The first layout is before the pop-up shows.
  if (isInLayout_ || (window() && window()->isVisible())) layoutSuggestions();
}

// The selection.

void SuggestionsWindowController::changeSelection(Ref<HighlightingView> view) {
  const Ref<HighlightingView> earlier = std::exchange(selectedView_, std::move(view));
  // Old and new are not compared, and the row's own observer does the same once more.
  const auto highlight = [](HighlightingView& row, bool isHighlighted) {
    row.setIsHighlighted(isHighlighted);
    setBackgroundStyleOfTextFields(row, isHighlighted);
    row.setNeedsDisplay(true);
  };
  if (earlier) highlight(*earlier, false);
  // Looked at again: a text field of the earlier row may have changed the selection meanwhile.
  if (const Ref<HighlightingView> selected = selectedView_) {
    highlight(*selected, true);
    fullContentView_->scrollRectToVisible(withOtherViewsBeside(selected->frame()));
  }
  NSAccessibilityPostNotification(fullContentView_.optional(), NSAccessibilitySelectedChildrenChangedNotification);
}

void SuggestionsWindowController::setSelectedView(Ref<HighlightingView> view) { changeSelection(std::move(view)); }

void SuggestionsWindowController::userSetSelectedView(Ref<HighlightingView> view) {
  changeSelection(std::move(view));
  if (const Ref<SuggestionsWindowTarget> target = target_.lock()) target->suggestionSelectionChanged(selectedSuggestion());
}

std::optional<Suggestion> SuggestionsWindowController::selectedSuggestion() const {
  if (!viewControllers_) return std::nullopt;
  for (const ItemRef& item : *viewControllers_)
    if (areEqual(item->view().get(), selectedView_.get())) return item->suggestion();
  return std::nullopt;
}

void SuggestionsWindowController::setSelectedSuggestionIndex(std::int64_t index) {
  if (index > 0) return;
  if (!viewControllers_) {
    if (index < 0) setSelectedView(nullptr);
    return;
  }
  if (static_cast<std::int64_t>(viewControllers_->size()) <= index) return;
  if (index < 0) stopProgram("TessalunaUIKit.SuggestionsWindowController: a row of a negative index");
  setSelectedView(std::dynamic_pointer_cast<HighlightingView>(viewControllers_->front()->view()));
}

// Selects the row that comes just before the selected one on the way; of a selection that is not a row, the last of the way.
template <class Iterator>
void SuggestionsWindowController::selectBefore(Iterator first, Iterator last) {
  Ref<HighlightingView> previous;
  for (; first != last; ++first) {
    auto row = std::dynamic_pointer_cast<HighlightingView>((*first)->view());
    if (areEqual(row.get(), selectedView_.get())) break;
    previous = std::move(row);
  }
  if (previous) userSetSelectedView(previous);
}

void SuggestionsWindowController::moveUp(NSObject*) {
  if (selectedView_ && viewControllers_) selectBefore(viewControllers_->begin(), viewControllers_->end());
}

void SuggestionsWindowController::moveDown(NSObject*) {
  if (selectedView_ && viewControllers_) selectBefore(viewControllers_->rbegin(), viewControllers_->rend());
}

std::optional<std::size_t> SuggestionsWindowController::selectedRow() const {
  if (!selectedView_ || !viewControllers_) return std::nullopt;
  const auto found =
      std::ranges::find_if(*viewControllers_, [&](const ItemRef& item) { return item->view() == selectedView_; });
  if (found == viewControllers_->end()) return std::nullopt;
  return static_cast<std::size_t>(found - viewControllers_->begin());
}

void SuggestionsWindowController::selectRow(std::optional<std::size_t> row) {
  const bool isThere = row && viewControllers_ && *row < viewControllers_->size();
  setSelectedView(isThere ? std::dynamic_pointer_cast<HighlightingView>((*viewControllers_)[*row]->view()) : nullptr);
}

void SuggestionsWindowController::moveSelectionBy(std::int64_t rows) {
  if (!viewControllers_ || viewControllers_->empty() || rows == 0) return;
  const auto count = static_cast<std::int64_t>(viewControllers_->size());
  const std::optional<std::size_t> selected = selectedRow();
  const std::int64_t from = selected ? static_cast<std::int64_t>(*selected) : rows > 0 ? -1 : count;
  const std::int64_t to = std::clamp<std::int64_t>(from + std::clamp(rows, -count, count), 0, count - 1);
  if (selected && to == from) return;
  userSetSelectedView(
      std::dynamic_pointer_cast<HighlightingView>((*viewControllers_)[static_cast<std::size_t>(to)]->view()));
}

std::int64_t SuggestionsWindowController::rowsOfPage() const {
  if (!viewControllers_ || viewControllers_->empty()) return 1;
  const CGFloat height = viewControllers_->front()->view()->frame().size.height;
  if (height <= 0) return 1;
  const auto showing = static_cast<std::int64_t>(fullContentView_->visibleRect().size.height / height);
  return std::max<std::int64_t>(showing - 1, 1);
}

void SuggestionsWindowController::mouseEntered(const Ref<NSEvent>& event) {
  Ref<HighlightingView> row;
  if (const Ref<NSTrackingArea>& area = event->trackingArea()) {
    const auto found = area->userInfo().find(trackerKey());
    if (found != area->userInfo().end()) row = std::dynamic_pointer_cast<HighlightingView>(found->second);
  }
  userSetSelectedView(row);
}

void SuggestionsWindowController::mouseExited(const Ref<NSEvent>&) { userSetSelectedView(nullptr); }

void SuggestionsWindowController::mouseUp(const Ref<NSEvent>&) {
  const Ref<NSObject> held = refTo<NSObject>(*this);
  const AtEndOfScope end([this] { cancelSuggestions(); });
  if (const Ref<NSTextField> field = parentTextField_) {
    field->validateEditing();
    field->abortEditing();
    field->sendActionTo(field->action(), field->target());
  }
}

// Begin, move and end.

CGPoint SuggestionsWindowController::locationBelow(const NSTextField& field, NSWindow& fieldWindow) const {
  const NSView& superview = required(field.superview(), "the field's superview");
  const CGPoint corner = superview.convertPointToView(field.frame().origin, nullptr);
  const CGPoint location = fieldWindow.convertRectToScreen({corner, {0, 0}}).origin;
  return {location.x, location.y - gapBelowField};
}

void SuggestionsWindowController::beginForTextField(const Ref<NSTextField>& field) {
  const auto popUp = std::dynamic_pointer_cast<SuggestionsWindow>(window());
  required(popUp.get(), "window");
  const auto parent = refTo(required(field->window(), "the field's window"));
  const CGRect frame = popUp->frame();
  const CGPoint location = locationBelow(*field, *parent);
  popUp->setFrame({frame.origin, {field->frame().size.width, frame.size.height}}, false);
  popUp->setFrameTopLeftPoint(location);
  layoutSuggestions();
  parent->addChildWindow(popUp, NSWindowAbove);
  parentTextField_ = field;

  const auto cell = std::dynamic_pointer_cast<SuggestibleTextFieldCell>(NSAccessibilityUnignoredDescendant(field));
  popUp->setParentElement(cell);
  if (cell) cell->setSuggestionsWindow(popUp);
  const Ref<NSObject> list = NSAccessibilityUnignoredDescendant(popUp);
  required(list.get(), "the pop-up's accessibility element");
  NSAccessibilityPostNotification(list, NSAccessibilityCreatedNotification);

  installMonitorAndObserver(popUp, parent, field);
}

// Intentional: what an earlier begin installed is not removed.
void SuggestionsWindowController::installMonitorAndObserver(const Ref<SuggestionsWindow>& popUp, const Ref<NSWindow>& parent,
                                                            const Ref<NSTextField>& field) {
  const Unowned<SuggestionsWindowController> self(refTo(*this));
  localMouseDownEventMonitor_ = NSEvent::addLocalMonitorForEventsMatchingMask(
      anyMouseDown, [=](const Ref<NSEvent>& event) { return self->mouseWentDown(event, popUp, parent, field); });
  lostFocusObserver_ = NSNotificationCenter::defaultCenter().addObserverForName(
      NSWindowDidResignKeyNotification, parent, nullptr, [=](const Ref<NSNotification>&) { self->cancelSuggestions(); });
  if (!endsWithHiddenWindow_) return;
  hiddenObserver_ =
      NSNotificationCenter::defaultCenter().addObserverForName(NSWindowDidChangeOcclusionStateNotification, parent, nullptr,
                                                               [self, window = parent.get()](const Ref<NSNotification>&) {
                                                                 if (!window->isVisible()) self->cancelSuggestions();
                                                               });
}

Ref<NSEvent> SuggestionsWindowController::mouseWentDown(const Ref<NSEvent>& event, const Ref<SuggestionsWindow>& popUp,
                                                        const Ref<NSWindow>& parent, const Ref<NSTextField>& field) {
  if (event->window() == popUp) return event;
  if (event->window() != parent) {
    cancelSuggestions();
    return event;
  }
  // Intentional: a place in the field's window is looked for among the rows. So a click in that window, on the field too, only
  // ends the pop-up as long as the field is being edited.
  const CGPoint point = fullContentView_->convertPointFromView(event->locationInWindow(), nullptr);
  const NSView* hit = fullContentView_->hitTest(point);
  const auto editor = field->currentEditor();
  if (areEqual(hit, field.get())) return event;
  if (!editor || areEqual(hit, editor.get())) return event;
  cancelSuggestions();
  return nullptr;
}

void SuggestionsWindowController::parentControlMoved() {
  if (!window() || !window()->isVisible()) return;
  const NSTextField& field = required(parentTextField_.get(), "parentTextField");
  window()->setFrameTopLeftPoint(locationBelow(field, required(field.window(), "the field's window")));
  CGRect frame = window()->frame();
  if (frame.origin.y < 0) {
    frame.size.height += frame.origin.y;
    frame.origin.y = 0;
  } else if (const CGFloat full = heightToShow(); full > frame.size.height) {
    frame = growingDownward(frame, full);
  }
  window()->setFrame(frame, false);
}

void SuggestionsWindowController::cancelSuggestions() {
  // The host may let the controller go when it is notified that the pop-up does not show any more.
  const Ref<NSObject> held = weak_from_this().lock();  // absent while the controller is being destroyed
  const auto popUp = std::dynamic_pointer_cast<SuggestionsWindow>(window());
  if (popUp && popUp->isVisible()) {
    if (NSWindow* parent = popUp->parentWindow()) parent->removeChildWindow(*popUp);
    popUp->orderOut(nullptr);
    if (const Ref<SuggestibleTextFieldCell> cell = popUp->parentElement()) cell->setSuggestionsWindow(nullptr);
    popUp->setParentElement(nullptr);
  }
  if (lostFocusObserver_) NSNotificationCenter::defaultCenter().removeObserver(std::exchange(lostFocusObserver_, nullptr));
  if (hiddenObserver_) NSNotificationCenter::defaultCenter().removeObserver(std::exchange(hiddenObserver_, nullptr));
  if (localMouseDownEventMonitor_) NSEvent::removeMonitor(std::exchange(localMouseDownEventMonitor_, nullptr));
}

// The rows.

Ref<NSTrackingArea> SuggestionsWindowController::trackingAreaForView(const Ref<HighlightingView>& view) {
  constexpr auto options = NSTrackingEnabledDuringMouseDrag | NSTrackingMouseEnteredAndExited | NSTrackingActiveInActiveApp;
  static_assert(options == 0x441);
  return make<NSTrackingArea>(fullContentView_->convertRectFromView(view->bounds(), view.get()), options,
                              refTo<NSResponder>(*this), NSTrackingArea::UserInfo{{std::string(trackerKey()), view}});
}

bool SuggestionsWindowController::removeRows(NSView& content, std::size_t layout) {
  setSelectedView(nullptr);
  if (layout != layouts_) return false;
  std::vector<Ref<NSView>> views;
  for (const ItemRef& item : viewControllers_.value_or(std::vector<ItemRef>())) views.push_back(item->view());
  views.insert(views.end(), otherViews_.begin(), otherViews_.end());
  for (const Ref<NSView>& view : views) view->removeFromSuperview();
  if (layout != layouts_) return false;
  viewControllers_.emplace();
  otherViews_.clear();
  if (trackingAreas_)
    for (const Ref<NSTrackingArea>& area : *trackingAreas_) content.removeTrackingArea(area);
  trackingAreas_.emplace();
  return true;
}

void SuggestionsWindowController::layoutSuggestions() {
  const Ref<NSWindow> popUp = window();
  const Ref<NSView> content = fullContentView_.optional();
  if (!popUp || !content) return;
  const bool isWithinAnother = std::exchange(isInLayout_, true);
  const AtEndOfScope end([&] { isInLayout_ = isWithinAnother; });
  // Rows and the views beside them run code of the host as they go, are made, selected, added and filled, which may assign other
  // suggestions. Their layout then replaces this one.
  const std::size_t layout = ++layouts_;
  if (!removeRows(*content, layout)) return;

  const CGRect contentFrame = popUp->contentView()->frame();
  CGFloat bottom = 0;  // of what has been added so far
  // Below it; false if this layout was replaced meanwhile.
  const auto add = [&](const Ref<NSView>& view) {
    const CGFloat height = view->frame().size.height;
    view->setFrame({0, bottom, contentFrame.size.width, height});
    content->addSubview(view);
    bottom += height;
    if (layout == layouts_) return true;
    view->removeFromSuperview();
    return false;
  };
  const auto addOther = [&](const Ref<NSView>& view) {
    if (layout != layouts_) return false;
    if (!view) return true;
    if (!add(view)) return false;
    otherViews_.push_back(view);
    return true;
  };
  const std::vector<Suggestion> suggestions = suggestions_.value_or(std::vector<Suggestion>());
  for (const Suggestion& suggestion : suggestions) {
    if (!addOther(viewAboveRow(viewControllers_->size()))) return;
    const ItemRef item = makeItem(suggestion);
    const Ref<HighlightingView> view = rowOf(*item);
    if (layout != layouts_) return;
    if (viewControllers_->empty()) setSelectedView(view);
    if (!add(view)) return;
    trackingAreas_->push_back(trackingAreaForView(view));
    content->addTrackingArea(trackingAreas_->back());
    item->setSuggestion(suggestion);
    if (layout != layouts_) return view->removeFromSuperview();
    viewControllers_->push_back(item);
  }
  if (!addOther(viewBelowRows())) return;
  content->setFrame({contentFrame.origin, {contentFrame.size.width, bottom}});
  // It follows the clip view in width, which a bar that is there already has made narrower.
  if (const NSView* clip = content->superview()) content->setFrameSize({clip->bounds().size.width, bottom});
  popUp->setFrame(growingDownward(popUp->frame(), heightToShow()), true);
}

SuggestionsWindowController::ItemRef SuggestionsWindowController::makeItem(const Suggestion&) {
  return make<SuggestionItemViewController>(suggestionPrototype_.optional(), nullptr);
}

// The rectangle of a row, and with it what belongs to the row: the view above it, and to the last one that below the rows.
CGRect SuggestionsWindowController::withOtherViewsBeside(CGRect row) const {
  CGRect rect = row;
  for (const Ref<NSView>& view : otherViews_) {
    const CGRect frame = view->frame();
    const bool isLast = CGRectGetMaxY(frame) == fullContentView_->frame().size.height;
    if (CGRectGetMaxY(frame) == row.origin.y || (isLast && frame.origin.y == CGRectGetMaxY(row)))
      rect = NSUnionRect(rect, frame);
  }
  return rect;
}

// The height of all rows, or of as many as there may be.
CGFloat SuggestionsWindowController::heightToShow() const {
  if (!maximumRows_ || !viewControllers_ || viewControllers_->size() <= *maximumRows_)
    return fullContentView_->frame().size.height;
  // The top of the first row that is left out, or of what is above it, in a space that counts downward.
  const CGFloat top = (*viewControllers_)[*maximumRows_]->view()->frame().origin.y;
  const auto isAboveIt = [&](const Ref<NSView>& view) { return CGRectGetMaxY(view->frame()) == top; };
  const auto above = std::ranges::find_if(otherViews_, isAboveIt);
  return above == otherViews_.end() ? top : (*above)->frame().origin.y;
}

void SuggestionsWindowController::setMaximumRows(std::optional<std::size_t> rows) {
  if (rows == 0) rows = 1;
  maximumRows_ = rows;
  const Ref<NSWindow> popUp = window();
  if (popUp && popUp->isVisible()) popUp->setFrame(growingDownward(popUp->frame(), heightToShow()), true);
}

}  // namespace TessalunaUIKit
