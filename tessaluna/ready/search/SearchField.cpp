#include "tessaluna/ready/search/SearchField.h"

#include <limits>
#include <map>

#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyEquivalents.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/parts/CrossButton.h"
#include "tessaluna/uikit/stylekit/image_factory.h"
#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"

namespace tessaluna::ready {

using namespace platform;
using TessalunaUIKit::Suggestion;

const Selector SearchField::selectors_[] = {action<&SearchField::submit>("submit:"), action<&SearchField::clear>("clear:")};
const ClassInfo SearchField::staticClassInfo{
    .name = "tessaluna.ready.SearchField", .base = &NSView::staticClassInfo, .selectors = SearchField::selectors_};

namespace {

constexpr CGFloat usualHeight = 26, glyphSide = 14, glyphLeft = 7, textLeft = 22, buttonSide = 20, buttonRight = 2;
constexpr std::size_t usualRows = 10;
constexpr NSEventMask anyPress =
    maskOf(NSEventType::LeftMouseDown) | maskOf(NSEventType::RightMouseDown) | maskOf(NSEventType::OtherMouseDown);
// In seconds. A search that is answered sooner shows no wheel.
constexpr double busyDelay = 0.2;

// Leaves room for the magnifier and the clear button.
class Cell : public TessalunaUIKit::FlatTextFieldCell {
 public:
  explicit Cell(NSCoder& coder) : FlatTextFieldCell(coder) {}
  Ref<NSCell> copy() const override { return make<Cell>(*this); }
  CGRect drawingRectForBounds(CGRect bounds) const override {
    CGRect rect = FlatTextFieldCell::drawingRectForBounds(bounds);
    rect.origin.x += textLeft;
    rect.size.width -= textLeft + buttonSide;
    return rect;
  }
};

// What is in front of the field for the eye only: the field gets the clicks.
struct Magnifier : NSView {
  explicit Magnifier(CGRect frame) : NSView(frame) {}
  void drawRect(CGRect) override { TessalunaUIKit::ImageFactory::imageOfTidalIconSearch()->drawInRect(bounds()); }
  NSView* hitTest(CGPoint) override { return nullptr; }
};
struct Wheel : NSProgressIndicator {
  explicit Wheel(CGRect frame) : NSProgressIndicator(frame) { setStyle(NSProgressIndicatorStyleSpinning); }
  NSView* hitTest(CGPoint) override { return nullptr; }
  bool isAccessibilityElement() const override { return false; }
};

Ref<NSTextField> makeField(CGRect frame) {
  NSCoder coder(R"({"editable": true, "lineBreakMode": "clipping"})");
  const auto cell = make<Cell>(coder);
  cell->setBorderColor(NSColor::colorWithCalibratedWhite(0.55, 1));
  const auto field = make<NSTextField>(frame);
  field->setCell(cell);
  field->setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  return field;
}

// In the middle of the height, at a distance from the left or, as a negative one, from the right.
template <class View>
Ref<View> besideText(NSView& parent, CGFloat x, CGFloat side) {
  const CGSize size = parent.bounds().size;
  const bool isAtLeft = x >= 0;
  const auto view = make<View>(CGRect{isAtLeft ? x : size.width + x - side, (size.height - side) / 2, side, side});
  view->setAutoresizingMask((isAtLeft ? NSViewMaxXMargin : NSViewMinXMargin) | NSViewMinYMargin | NSViewMaxYMargin);
  parent.addSubview(view);
  return view;
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

}  // namespace

SearchField::SearchField(CGRect frame)
    : NSView(frame),
      questions_([this](std::vector<SearchRow> rows) { showAnswer(std::move(rows)); }),
      field_(makeField({{0, 0}, frame.size})),
      popUp_(make<SearchPopUp>()) {
  popUp_->setMaximumRows(usualRows);
}

void SearchField::didInit() {
  NSView::didInit();
  addSubview(field_);
  magnifier_ = besideText<Magnifier>(*this, glyphLeft, glyphSide);
  wheel_ = besideText<Wheel>(*this, glyphLeft, glyphSide);
  clearButton_ = besideText<CrossButton>(*this, -buttonRight, buttonSide);
  wheel_->setHidden(true);
  clearButton_->setTarget(shared_from_this());
  clearButton_->setAction("clear:");
  field_->setDelegate(std::dynamic_pointer_cast<NSTextFieldDelegate>(shared_from_this()));
  field_->setTarget(shared_from_this());
  field_->setAction("submit:");
  popUp_->setTarget(std::dynamic_pointer_cast<TessalunaUIKit::SuggestionsWindowTarget>(shared_from_this()));
  setTexts({});
  fieldTextDidChange();
}

SearchField::~SearchField() { close(); }

void SearchField::setSource(SearchQuestions::Source source) {
  hasSource_ = source != nullptr;
  questions_.setSource(std::move(source));
  if (!hasSource_) close();
}

void SearchField::setTexts(SearchTexts texts) {
  texts_ = std::move(texts);
  field_->setPlaceholderString(texts_.placeholder);
  field_->cell()->accessibilitySetOverrideValue(texts_.name, NSAccessibilityDescriptionAttribute);
  clearButton_->cell()->accessibilitySetOverrideValue(texts_.clear, NSAccessibilityDescriptionAttribute);
  popUp_->setListName(texts_.list);
}

void SearchField::setText(const std::string& text) {
  close();
  typed_ = text;
  field_->setStringValue(text);
  fieldTextDidChange();
}

CGSize SearchField::intrinsicContentSize() const { return {noIntrinsicMetric, usualHeight}; }

void SearchField::updateTrackingAreas() {
  NSView::updateTrackingAreas();
  if (popUp_->isOpen() && field_->window() && NSIsEmptyRect(field_->visibleRect())) close();
  else popUp_->followField(*field_);
}

void SearchField::resizeSubviewsWithOldSize(CGSize oldSize) {
  NSView::resizeSubviewsWithOldSize(oldSize);
  popUp_->followField(*field_);
}

// Asking and answers.

void SearchField::controlTextDidChange(const Ref<NSNotification>&) {
  typed_ = field_->stringValue();
  fieldTextDidChange();
  if (isBlank(typed_)) close();
  else ask();
}

void SearchField::ask() {
  const Ref<NSObject> held = shared_from_this();
  if (!hasSource_) return;
  if (!popUp_->isOpen()) popUp_->setContent({});
  mayOpen_ = !popUp_->isOpen();
  wasKey_ = window() && window()->isKeyWindow();
  questions_.ask(typed_);
  backend::Backend* backend = backend::Backend::current();
  if (backend && questions_.isWaiting()) busy_ = backend->timer(busyDelay, [this] { showBusy(true); });
}

// The rows of an earlier answer stay; where there are none, a note says that something is under way.
void SearchField::showBusy(bool isBusy) {
  magnifier_->setHidden(isBusy);
  wheel_->setHidden(!isBusy);
  auto& wheel = static_cast<Wheel&>(*wheel_);
  if (isBusy) wheel.startAnimation(nullptr);
  else wheel.stopAnimation(nullptr);
  if (isBusy && popUp_->content().rows.empty()) showPopUp({.typed = typed_, .note = texts_.busy, .isBusy = true});
}

void SearchField::showAnswer(std::vector<SearchRow> rows) {
  busy_.reset();
  showBusy(false);
  std::string note = rows.empty() ? texts_.empty : "";
  showPopUp({.rows = std::move(rows), .typed = typed_, .note = std::move(note)});
}

// The pop-up.

void SearchField::showPopUp(SearchPopUp::Content content) {
  if (!window() || !field_->currentEditor()) return;
  const bool hasLostKeys = wasKey_ && !window()->isKeyWindow();
  if (!popUp_->isOpen() && (!mayOpen_ || hasLostKeys || NSIsEmptyRect(field_->visibleRect()))) return;
  mayOpen_ = false;
  // What the pointer was over is not what it is over now.
  if (std::exchange(pointedAt_, std::nullopt)) popUp_->selectRow(std::nullopt);
  popUp_->setContent(std::move(content));
  if (popUp_->isOpen()) {
    if (isTitleInField_ && !popUp_->selectedRow()) showInField(typed_);
    return;
  }
  // A press elsewhere has ended the pop-up without the field.
  endWatching();
  // Before the pop-up's own monitor, which would take a press in the field or on the clear button as one elsewhere: it would only
  // close the pop-up.
  pressMonitor_ = NSEvent::addLocalMonitorForEventsMatchingMask(anyPress, [this](const Ref<NSEvent>& event) {
    const bool isHere = event->window().get() == window() &&
                        NSPointInRect(convertPointFromView(event->locationInWindow(), nullptr), bounds());
    if (isHere && popUp_->isOpen()) close();
    return event;
  });
  popUp_->openBelow(field_);
  for (const std::string_view name : {NSWindowDidMoveNotification, NSWindowDidResizeNotification})
    windowObservers_.push_back(NSNotificationCenter::defaultCenter().addObserverForName(
        name, refTo<NSObject>(*field_->window()), nullptr,
        [this](const Ref<NSNotification>&) { popUp_->followField(*field_); }));
}

bool SearchField::open() {
  typed_ = field_->stringValue();
  isTitleInField_ = false;
  if (!hasSource_ || isBlank(typed_)) return false;
  ask();
  return true;
}

void SearchField::close() {
  questions_.cancel();
  busy_.reset();
  pointedAt_.reset();
  popUp_->cancelSuggestions();
  popUp_->setContent({});
  endWatching();
  if (wheel_ && !wheel_->isHidden()) showBusy(false);
}

void SearchField::endWatching() {
  for (const Ref<NSObject>& observer : std::exchange(windowObservers_, {}))
    NSNotificationCenter::defaultCenter().removeObserver(observer);
  if (pressMonitor_) NSEvent::removeMonitor(std::exchange(pressMonitor_, nullptr));
}

void SearchField::controlTextDidEndEditing(const Ref<NSNotification>&) {
  close();
  typed_ = field_->stringValue();
  isTitleInField_ = false;
}

// The keyboard.

bool SearchField::performKeyEquivalent(const Ref<NSEvent>& event) {
  static const std::string down = utf8FromScalar(NSDownArrowFunctionKey);
  if (!field_->currentEditor() || popUp_->isOpen() || !isKeyEquivalent(*event, down, NSEventModifierFlagOption))
    return NSView::performKeyEquivalent(event);
  return open();
}

bool SearchField::controlTextViewDoCommandBySelector(NSControl&, NSTextView&, std::string_view selector) {
  if (!popUp_->isOpen()) {
    if (selector == "moveDown:") return open();
    // An answer that is still to come opens nothing.
    if (selector == "cancelOperation:" && questions_.isWaiting()) return close(), true;
    return false;
  }
  if (selector == "cancelOperation:") {
    close();
    showInField(typed_);
    return true;
  }
  if (selector == "insertNewline:") {
    if (popUp_->selectedRow() != pointedAt_) picked_ = popUp_->selected();
    // Closed here, so that the action that follows can be distinguished from that of a click on a row.
    close();
    return false;
  }
  if (popUp_->content().rows.empty()) return false;
  constexpr std::int64_t toTheEnd = std::numeric_limits<std::int64_t>::max();
  const std::map<std::string_view, std::int64_t> steps{{"moveUp:", -1},
                                                       {"moveDown:", 1},
                                                       {"pageUp:", -popUp_->rowsOfPage()},
                                                       {"pageDown:", popUp_->rowsOfPage()},
                                                       {"moveToBeginningOfDocument:", -toTheEnd},
                                                       {"moveToEndOfDocument:", toTheEnd}};
  const auto step = steps.find(selector);
  if (step == steps.end()) return false;
  moveSelectionBy(step->second);
  return true;
}

// Upward from the first row is what was typed.
void SearchField::moveSelectionBy(std::int64_t rows) {
  if (rows == -1 && popUp_->selectedRow().value_or(0) == 0) {
    popUp_->selectRow(std::nullopt);
    pointedAt_.reset();
    return showInField(typed_);
  }
  isMovedByKeys_ = true;
  popUp_->moveSelectionBy(rows);
  isMovedByKeys_ = false;
}

void SearchField::suggestionSelectionChanged(std::optional<Suggestion> suggestion) {
  if (isMovedByKeys_ && suggestion) {
    pointedAt_.reset();
    showInField(suggestion->label);
    isTitleInField_ = true;
    return;
  }
  pointedAt_ = popUp_->selectedRow();
  if (isTitleInField_) showInField(typed_);
}

void SearchField::showInField(std::string_view text) {
  isTitleInField_ = false;
  if (const Ref<NSText> editor = field_->currentEditor()) editor->setString(text);
}

void SearchField::fieldTextDidChange() {
  isTitleInField_ = false;
  const bool isEmpty = field_->stringValue().empty();
  if (clearButton_->isHidden() == isEmpty) return;
  clearButton_->setHidden(isEmpty);
  NSAccessibilityPostNotification(
      clearButton_->cell(), isEmpty ? NSAccessibilityUIElementDestroyedNotification : NSAccessibilityCreatedNotification);
}

// What is done with it.

void SearchField::submit(NSObject* sender) {
  const Ref<NSObject> held = shared_from_this();
  std::optional<SearchRow> picked = std::exchange(picked_, std::nullopt);
  // Return has closed the pop-up by now.
  const bool isRowClick = popUp_->isOpen() && sender == field_.get();
  if (isRowClick || (popUp_->isOpen() && popUp_->selectedRow() != pointedAt_)) picked = popUp_->selected();
  close();
  if (picked) field_->setStringValue(picked->title);
  typed_ = field_->stringValue();
  fieldTextDidChange();
  if (field_->window()) field_->selectText(nullptr);
  // A press on a row that was dragged off it takes nothing.
  if (isRowClick && !picked) return;
  // Copies: the call may set others.
  const auto onPick = onPick_;
  const auto onSearch = onSearch_;
  const std::string typed = typed_;
  if (picked && onPick) onPick(*picked);
  if (!picked && onSearch && !isBlank(typed)) onSearch(typed);
}

void SearchField::clear(NSObject*) {
  const Ref<NSObject> held = shared_from_this();
  setText("");
  if (field_->window()) field_->selectText(nullptr);
  const auto onSearch = onSearch_;
  if (onSearch) onSearch("");
}

}  // namespace tessaluna::ready
