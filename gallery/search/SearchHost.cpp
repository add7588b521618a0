#include "gallery/search/SearchHost.h"

#include <algorithm>

#include "gallery/search/SuggestionRow.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/graphics/NSBezierPath.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/graphics/NSRect.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tessaluna/uikit/stylekit/image_factory.h"
#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

const Selector SearchHost::selectors_[] = {action<&SearchHost::search>("search:")};
const ClassInfo SearchHost::staticClassInfo{
    .name = "gallery.SearchHost", .base = &NSObject::staticClassInfo, .selectors = SearchHost::selectors_};

namespace {

constexpr std::size_t mostRows = 50;
constexpr CGFloat fieldHeight = 26;

// The flat cell comes from interface files only: from one that stands in the code, here.
Ref<NSTextField> makeField(CGRect frame) {
  registerInterfaceFileClasses();
  NSCoder coder(R"({"cell": {"class": "TessalunaUIKit.FlatTextFieldCell", "editable": true, "lineBreakMode": 2,
                             "placeholder": "Search tracks, albums and artists"}})");
  const auto field = make<NSTextField>(coder);
  field->setFrame(frame);
  dynamic_cast<FlatTextFieldCell&>(*field->cell()).setBorderColor(NSColor::colorWithCalibratedWhite(0.72, 1));
  field->setAutoresizingMask(NSViewWidthSizable);
  return field;
}

// A white glyph on a tile of its kind's color.
Ref<NSImage> pictureOf(LibraryItem::Kind kind) {
  struct Look {
    CGFloat red, green, blue;
    Ref<NSImage> glyph;
  };
  const auto look = [kind]() -> Look {
    switch (kind) {
      case LibraryItem::Kind::Artist: return {0.82, 0.42, 0.36, ImageFactory::imageOfMoodCelebrities()};
      case LibraryItem::Kind::Album: return {0.33, 0.45, 0.76, ImageFactory::imageOfIconAlbum()};
      case LibraryItem::Kind::Track: return {0.27, 0.58, 0.49, ImageFactory::imageOfTidalMusicIcon()};
    }
    unreachable();
  }();
  return NSImage::imageWithSize({28, 28}, false, [look](CGRect frame) {
    NSColor::colorWithCalibratedRed(look.red, look.green, look.blue, 1)->setFill();
    NSBezierPath::bezierPathWithRoundedRect(frame, 5, 5)->fill();
    look.glyph->drawInRect(NSInsetRect(frame, 4, 4));
    return true;
  });
}

}  // namespace

SearchHost::SearchHost(std::vector<LibraryItem> items)
    : items_(std::move(items)),
      index_(items_),
      view_(make<NSView>(CGRect{0, 0, 360, fieldHeight})),
      field_(makeField({0, 0, 360, fieldHeight})),
      popUp_(make<SuggestionsWindowController>()) {
  view_->addSubview(field_);
  popUp_->setSuggestionPrototype(registerSuggestionRow());
  popUp_->setMaximumRows(10);
}

void SearchHost::didInit() {
  NSObject::didInit();
  field_->setDelegate(std::dynamic_pointer_cast<NSTextFieldDelegate>(shared_from_this()));
  field_->setTarget(shared_from_this());
  field_->setAction("search:");
  popUp_->setTarget(std::dynamic_pointer_cast<SuggestionsWindowTarget>(shared_from_this()));
}

SearchHost::~SearchHost() { close(); }

std::vector<Suggestion> SearchHost::suggestionsFor(std::string_view query) const {
  std::vector<Suggestion> suggestions;
  for (const std::size_t index : index_.bestMatches(query, mostRows)) {
    const LibraryItem& item = items_[index];
    suggestions.emplace_back(item.label, static_cast<std::int64_t>(index));
    suggestions.back().detailedLabel = item.detail;
    suggestions.back().image = pictureOf(item.kind);
  }
  return suggestions;
}

void SearchHost::controlTextDidChange(const Ref<NSNotification>&) {
  typed_ = field_->stringValue();
  showMatches();
}

void SearchHost::showMatches() {
  selected_.reset();
  std::vector<Suggestion> suggestions = suggestionsFor(typed_);
  if (suggestions.empty()) return close();
  popUp_->setSuggestions(std::move(suggestions));
  if (isOpen()) return;
  // The mouse or another window may have closed it: what an earlier begin left is taken back first.
  close();
  popUp_->beginForTextField(field_);
  for (const std::string_view name : {NSWindowDidMoveNotification, NSWindowDidResizeNotification})
    windowObservers_.push_back(NSNotificationCenter::defaultCenter().addObserverForName(
        name, refTo<NSObject>(*field_->window()), nullptr, [this](const Ref<NSNotification>&) { putBelowField(); }));
}

void SearchHost::close() {
  popUp_->cancelSuggestions();
  for (const Ref<NSObject>& observer : windowObservers_) NSNotificationCenter::defaultCenter().removeObserver(observer);
  windowObservers_.clear();
}

// The controller keeps the pop-up under its field, but not as wide as it.
void SearchHost::putBelowField() {
  if (!isOpen()) return;
  NSWindow& window = *popUp_->window();
  CGRect frame = window.frame();
  const CGFloat width = field_->frame().size.width;
  if (frame.size.width != width) {
    const auto selected = popUp_->selectedSuggestion();
    frame.size.width = width;
    window.setFrame(frame, false);
    popUp_->setSuggestions(popUp_->suggestions());
    while (selected && popUp_->selectedSuggestion() && popUp_->selectedSuggestion()->itemId != selected->itemId) {
      const auto before = popUp_->selectedView();
      popUp_->moveDown(nullptr);
      if (popUp_->selectedView() == before) break;
    }
  }
  popUp_->parentControlMoved();
}

void SearchHost::controlTextDidEndEditing(const Ref<NSNotification>&) { close(); }

bool SearchHost::controlTextViewDoCommandBySelector(NSControl&, NSTextView&, std::string_view selector) {
  if (!isOpen()) {
    if (selector != "moveDown:") return false;
    typed_ = field_->stringValue();
    showMatches();
    return isOpen();
  }
  if (selector == "moveUp:") return moveSelection(&SuggestionsWindowController::moveUp), true;
  if (selector == "moveDown:") return moveSelection(&SuggestionsWindowController::moveDown), true;
  if (selector == "cancelOperation:") {
    close();
    showInField(typed_);
    return true;
  }
  // Return takes the selected row, also one that was not moved to, and goes on to the field, which sends its action.
  if (selector == "insertNewline:") {
    suggestionSelectionChanged(popUp_->selectedSuggestion());
    close();
  }
  return false;
}

void SearchHost::moveSelection(void (SuggestionsWindowController::*move)(NSObject*)) {
  if (popUp_->selectedView()) return (popUp_.get()->*move)(nullptr);
  // The mouse has been over the rows and left them.
  popUp_->setSelectedSuggestionIndex(0);
  suggestionSelectionChanged(popUp_->selectedSuggestion());
}

void SearchHost::suggestionSelectionChanged(std::optional<Suggestion> suggestion) {
  selected_ = std::move(suggestion);
  showInField(selected_ ? selected_->label : typed_);
}

void SearchHost::showInField(std::string_view text) {
  if (const Ref<NSText> editor = field_->currentEditor()) editor->setString(text);
}

void SearchHost::search(NSObject*) {
  close();
  const std::string text = field_->stringValue();
  const auto taken = std::exchange(selected_, std::nullopt);
  typed_ = text;
  // The next search is typed over this one.
  field_->selectText(nullptr);
  if (!report_ || text.empty()) return;
  const LibraryItem* item = taken && taken->label == text ? &items_[static_cast<std::size_t>(*taken->itemId)] : nullptr;
  report_(item ? item->label + " – " + item->detail : "search for “" + text + "”");
}

}  // namespace gallery
