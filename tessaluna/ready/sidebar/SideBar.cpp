#include "tessaluna/ready/sidebar/SideBar.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/foundation/AtEndOfScope.h"
#include "tessaluna/platform/foundation/stopProgram.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/time/durations.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/ready/sidebar/SideBarSection.h"

namespace tessaluna::ready {

using namespace platform;

const ClassInfo SideBar::staticClassInfo{.name = "tessaluna.ready.SideBar", .base = &NSView::staticClassInfo};

namespace {

using Sections = std::vector<std::shared_ptr<SideBarSection>>;

std::shared_ptr<SideBarSection> sectionNamed(const Sections& sections, std::string_view id) {
  for (const auto& section : sections) {
    if (section->id() == id) return section;
    if (const auto inner = sectionNamed(section->sections(), id)) return inner;
  }
  return nullptr;
}

bool hasItem(const Sections& sections, const std::string& id) {
  return std::ranges::any_of(sections, [&](const auto& section) {
    return std::ranges::any_of(section->rows(), [&](const auto& row) { return idOf(row->item()) == id; }) ||
           hasItem(section->sections(), id);
  });
}

void addAll(const Sections& sections, Sections& all) {
  for (const auto& section : sections) {
    all.push_back(section);
    addAll(section->sections(), all);
  }
}

Sections allOf(const Sections& sections) {
  Sections all;
  addAll(sections, all);
  return all;
}

// A section that moved into or out of another one has new views. It is folded if it was.
void foldAgain(const Sections& before, const Sections& now) {
  const auto isAmong = [](const Sections& sections, const auto& section) {
    return std::ranges::find(sections, section) != sections.end();
  };
  for (const auto& section : now) {
    if (isAmong(before, section)) continue;
    const auto gone =
        std::ranges::find_if(before, [&](const auto& one) { return one->id() == section->id() && !isAmong(now, one); });
    if (gone != before.end() && !(*gone)->isOpen()) section->beginFolded();
  }
}

bool hasKeyboard(const NSView& view) {
  const auto* first = view.window() ? dynamic_cast<const NSView*>(view.window()->firstResponder()) : nullptr;
  return first && first->isDescendantOf(&view);
}

}  // namespace

// A heading, or an item below it.
struct SideBar::Place {
  std::shared_ptr<SideBarSection> section;
  Ref<SideBarRow> row{};                        // null for a heading
  std::shared_ptr<SideBarSection> around = {};  // the section that this one is in; null for an outer one
  Ref<NSView> view() const { return row ? Ref<NSView>(row) : section->heading(); }
  const std::string& title() const { return row ? row->item().title : section->title(); }
  const std::string& id() const { return row ? idOf(row->item()) : section->id(); }

  static void add(const Sections& sections, const std::shared_ptr<SideBarSection>& around, std::vector<Place>& places) {
    for (const auto& section : sections) {
      places.push_back({.section = section, .around = around});
      if (!section->isOpen()) continue;
      for (const Ref<SideBarRow>& row : section->rows())
        places.push_back({.section = section, .row = row, .around = around});
      add(section->sections(), section, places);
    }
  }
};

SideBar::SideBar(std::shared_ptr<SideBarModel> model)
    : NSView(CGRect{0, 0, 220, 400}),
      model_(std::move(model)),
      scrollView_(make<NSScrollView>(CGRect{0, 0, 220, 400})),
      stack_(make<SideBarStack>(SideBarStack::Kind::Document)),
      search_(typeSelectInterval) {
  if (!model_) stopProgram("SideBar: made without a model");
  setAutoresizingMask(NSViewWidthSizable | NSViewHeightSizable);
  scrollView_->setHasVerticalScroller(true);
  scrollView_->setAutohidesScrollers(true);
  scrollView_->setDrawsBackground(false);
  // A scroll bar that comes or goes makes the clip view narrower or wider, also while the bar keeps its size.
  stack_->setAutoresizingMask(NSViewWidthSizable);
  scrollView_->setDocumentView(stack_);
  addSubview(scrollView_);
  setName("Side bar");
}

SideBar::~SideBar() { model_->removeObserver(*this); }

void SideBar::didInit() {
  NSView::didInit();
  update();
  model_->addObserver(*this);
}

void SideBar::setName(const std::string& name) { accessibilitySetOverrideValue(name, NSAccessibilityDescriptionAttribute); }

std::string SideBar::accessibilityRole() const { return std::string(NSAccessibilityGroupRole); }

void SideBar::layout() {
  NSView::layout();
  scrollView_->setFrame(bounds());
  scrollView_->tile();
  const CGFloat width = scrollView_->contentView()->bounds().size.width;
  if (stack_->frame().size.width != width) stack_->setFrameSize({width, stack_->frame().size.height});
}

// What shows.

void SideBar::sideBarDidChange() { update(); }

// A view that goes may end the editing of a field, and whoever handles that may change the model once more, or remove the bar.
void SideBar::update() {
  isAskedAgain_ = true;
  if (isUpdating_) return;
  const Ref<NSView> self = refTo<NSView>(*this);
  isUpdating_ = true;
  const AtEndOfScope end([this] { isUpdating_ = false; });
  while (std::exchange(isAskedAgain_, false)) showModel();
}

void SideBar::showModel() {
  const bool hadKeyboard = hasKeyboard(*stack_);
  const std::vector<Place> before = places();
  const auto keyBefore = std::ranges::find(before, keyPlace_.lock(), &Place::view);
  const Sections earlier = allOf(sections_);
  sections_ = sectionsShowing(model_->sections(), sections_, std::dynamic_pointer_cast<SideBar>(shared_from_this()), 0);
  foldAgain(earlier, allOf(sections_));
  std::vector<SideBarStack::Entry> entries;
  for (const auto& section : sections_) entries.push_back({.view = section->view()});
  stack_->show(std::move(entries));
  // What was selected in a change that is still to show may be new in it.
  if (selected_ && !isAskedAgain_ && !hasItem(sections_, *selected_)) selected_ = std::nullopt;
  showSelection();
  const std::vector<Place> now = places();
  if (!hadKeyboard || !window() || hasKeyboard(*stack_) || now.empty()) return;
  // An item that moved to another section has a new view. Whoever takes places away with keys continues at the next one.
  auto next = std::ranges::find_if(now, [&](const Place& place) {
    return keyBefore != before.end() && !place.row == !keyBefore->row && place.id() == keyBefore->id();
  });
  if (next == now.end()) next = now.begin() + std::min(keyBefore - before.begin(), std::ssize(now) - 1);
  window()->makeFirstResponder(next->view().get());
}

std::vector<SideBar::Place> SideBar::places() const {
  std::vector<Place> places;
  Place::add(sections_, nullptr, places);
  return places;
}

void SideBar::showSelection() {
  for (const auto& section : sections_) section->setSelected(selected_);
}

void SideBar::setSelected(std::optional<std::string> id) {
  if (id && !isUpdating_ && !hasItem(sections_, *id)) id = std::nullopt;
  if (selected_ == id) return;
  selected_ = std::move(id);
  // Tab goes to what is selected, unless the keyboard is here.
  if (!hasKeyboard(*stack_)) keyPlace_.reset();
  showSelection();
}

bool SideBar::isOpen(std::string_view section) const {
  const auto found = sectionNamed(sections_, section);
  return found && found->isOpen();
}

void SideBar::setIsOpen(std::string_view section, bool isOpen) {
  if (const auto found = sectionNamed(sections_, section)) setIsOpen(*found, isOpen);
}

void SideBar::setIsOpen(SideBarSection& section, bool isOpen) {
  if (section.isOpen() == isOpen) return;
  // The keyboard must not stay on what is cut off.
  const bool isInside = hasKeyboard(*section.view()) && !hasKeyboard(*section.heading());
  section.setIsOpen(isOpen);
  if (isInside && !isOpen) window()->makeFirstResponder(section.heading().get());
}

void SideBar::toggle(SideBarSection& section) { setIsOpen(section, !section.isOpen()); }

// The user chooses.

void SideBar::choose(const SideItem& item) {
  const Ref<NSView> self = refTo<NSView>(*this);
  selected_ = idOf(item);
  showSelection();
  const auto chosen = chosen_;
  if (chosen) chosen(item);
}

// The keyboard.

// Asked of every place when the Tab key looks for a stop: what was found is kept.
Ref<NSView> SideBar::keyPlace() const {
  const Ref<NSView> last = keyPlace_.lock();
  if (last && last->isDescendantOf(stack_.get()) && !last->isLeftOut()) return last;
  const std::vector<Place> shown = places();
  if (shown.empty()) return nullptr;
  const auto selected = std::ranges::find_if(shown, [](const Place& place) { return place.row && place.row->isSelected(); });
  const Ref<NSView> found = (selected == shown.end() ? shown.front() : *selected).view();
  keyPlace_ = found;
  return found;
}

bool SideBar::isKeyPlace(const NSView& place) const { return keyPlace().get() == &place; }

void SideBar::keyboardCameTo(NSView& place) {
  keyPlace_ = refTo<NSView>(place);
  place.scrollRectToVisible(place.bounds());
}

std::size_t SideBar::page() const {
  const CGFloat shown = scrollView_->contentView()->bounds().size.height;
  return static_cast<std::size_t>(std::max(1.0, std::floor(shown / sideBarRowHeight) - 1));
}

bool SideBar::handleKey(NSView& view, const NSEvent& event) {
  const Ref<NSView> self = refTo<NSView>(*this);
  const std::vector<Place> all = places();
  const auto found = std::ranges::find_if(all, [&](const Place& place) { return place.view().get() == &view; });
  constexpr std::uint32_t shortcuts = NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;
  if (found == all.end() || !window() || (event.modifierFlags() & shortcuts)) return false;
  const auto at = static_cast<std::size_t>(found - all.begin());
  return moveByKey(all, at, event) || chooseByKey(*found, event) || searchByKey(all, at, event);
}

void SideBar::goTo(const Ref<NSView>& place) { window()->makeFirstResponder(place.get()); }

bool SideBar::moveByKey(const std::vector<Place>& all, std::size_t at, const NSEvent& event) {
  const Place& here = all[at];
  const std::size_t last = all.size() - 1;
  switch (firstScalar(event.characters())) {
    case NSUpArrowFunctionKey: goTo(all[at > 0 ? at - 1 : 0].view()); return true;
    case NSDownArrowFunctionKey: goTo(all[std::min(at + 1, last)].view()); return true;
    case NSPageUpFunctionKey: goTo(all[at - std::min(at, page())].view()); return true;
    case NSPageDownFunctionKey: goTo(all[std::min(at + page(), last)].view()); return true;
    case NSHomeFunctionKey: goTo(all.front().view()); return true;
    case NSEndFunctionKey: goTo(all.back().view()); return true;
    case NSLeftArrowFunctionKey:
      if (here.row) goTo(here.section->heading());
      else if (here.section->isOpen()) toggle(*here.section);
      else if (here.around) goTo(here.around->heading());
      return true;
    case NSRightArrowFunctionKey:
      if (!here.row && !here.section->isOpen()) toggle(*here.section);
      else if (!here.row) goTo(all[std::min(at + 1, last)].view());
      return true;
    default: return false;
  }
}

bool SideBar::chooseByKey(const Place& here, const NSEvent& event) {
  if (commandForKey(event) != "insertNewline:" && event.characters() != " ") return false;
  // A key that is held chooses once.
  if (event.isARepeat()) return true;
  if (here.row) here.row->choose();
  else toggle(*here.section);
  return true;
}

bool SideBar::searchByKey(const std::vector<Place>& all, std::size_t at, const NSEvent& event) {
  if (!search_.takesText(textOfKey(event), event.timestamp())) return false;
  const auto titleAt = [&](std::size_t i) { return all[i].title(); };
  if (const std::optional<std::size_t> match = search_.entryAmong(all.size(), titleAt, at)) {
    goTo(all[*match].view());
    return true;
  }
  if (!search_.beganWord()) return true;
  // No title begins so: a program's shortcut.
  search_.takeBack();
  return false;
}

}  // namespace tessaluna::ready
