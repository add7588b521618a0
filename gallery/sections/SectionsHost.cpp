#include "gallery/sections/SectionsHost.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/uikit/containers/BorderedView.h"
#include "tessaluna/uikit/containers/TableCellViewWithBackground.h"
#include "tessaluna/uikit/containers/ViewWithBackground.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;
using tessaluna::ready::SideBar;
using tessaluna::ready::SideBarModel;
using tessaluna::ready::SideSection;

namespace {

constexpr int maxLines = 12;

std::string textOf(int lines) {
  constexpr std::string_view tracks[] = {"Morning tide", "Glass harbor",  "Seven lanterns", "Slow orbit",
                                         "Paper moons",  "North of here", "Amber street",   "The long way",
                                         "Low clouds",   "Second light",  "Salt and snow",  "Last tram"};
  std::string text;
  for (int i = 0; i < lines; ++i) {
    if (i > 0) text += '\n';
    text += tracks[i];
  }
  return text;
}

// Puts the inner view into the view, which takes its size from it.
template <class View>
Ref<View> framed(const Ref<View>& view, const Ref<NSView>& inner, CGFloat margin) {
  view->addSubview(inner);
  inner->setTranslatesAutoresizingMaskIntoConstraints(false);
  for (const auto& [edge, inset] : {std::pair{NSLayoutAttributeLeft, margin},
                                    {NSLayoutAttributeTop, margin},
                                    {NSLayoutAttributeRight, -margin},
                                    {NSLayoutAttributeBottom, -margin}})
    view->addConstraint(NSLayoutConstraint::constraintWithItem(inner, edge, NSLayoutRelationEqual, view, edge, 1, inset));
  return view;
}

template <class View>
Ref<View> onControlColor() {
  const auto view = make<View>(CGRect{});
  view->setBackgroundColor(NSColor::controlColor());
  return view;
}

Ref<NSView> makeAbout() {
  NSCoder archive;  // a bordered view can only be made from one
  const auto panel = make<BorderedView>(archive);
  panel->setBorderColor(NSColor::colorWithCalibratedRed(0.55, 0.55, 0.6, 1));
  const auto text = NSTextField::labelWithString("Recorded in four nights,\nin a hall by the sea.");
  text->setTextColor(NSColor::colorWithCalibratedWhite(0.2, 1));
  return framed(panel, text, 10);
}

Ref<NSView> makeNotes() {
  const auto note = make<NSTextField>(CGRect{});
  note->setPlaceholderString("A note about the album");
  note->cell()->accessibilitySetOverrideValue("Note", NSAccessibilityDescriptionAttribute);
  return framed(onControlColor<ViewWithBackground>(), note, 8);
}

Ref<NSView> makeLater() {
  const auto text = NSTextField::labelWithString("Two albums and a radio hour");
  const auto row = framed(onControlColor<TableCellViewWithBackground>(), text, 4);
  row->setTextField(text);
  return row;
}

}  // namespace

class SectionsHost::Places : public SideBarModel {
 public:
  std::vector<SideSection> sections() const override {
    const auto star = [](CGRect frame) { TessalunaStyleKit::drawTidalIconPlaylist(frame); };
    const auto note = [](CGRect frame) { TessalunaStyleKit::drawTidalMusicIcon(frame); };
    std::vector<SideSection> all{
        {.title = "Library",
         .items = {{.title = "Songs", .icon = note, .count = 1204}, {.title = "Playlists", .icon = star, .count = 7}}},
        {.title = "Up next", .view = upNext, .sections = {{.title = "Later", .view = later}}}};
    if (hasAbout) all.push_back({.title = "About the album", .view = about});
    all.push_back({.title = "Notes", .view = notes});
    return all;
  }
  void setHasAbout(bool has) {
    hasAbout = has;
    didChange();
  }

  const Ref<NSTextField> upNext = NSTextField::labelWithString(textOf(3));

 private:
  const Ref<NSView> later = makeLater(), about = makeAbout(), notes = makeNotes();
  bool hasAbout = true;
};

SectionsHost::SectionsHost() : places_(std::make_shared<Places>()), sideBar_(make<SideBar>(places_)) {
  sideBar_->setSelected("Songs");
}

int SectionsHost::setLines(int lines) {
  lines_ = std::clamp(lines, 1, maxLines);
  places_->upNext->setStringValue(textOf(lines_));
  return lines_;
}

void SectionsHost::setDisclosed(bool areDisclosed) {
  for (const char* title : {"Library", "Up next", "Later", "About the album", "Notes"})
    sideBar_->setIsOpen(title, areDisclosed);
}

void SectionsHost::setHasAbout(bool hasAbout) { places_->setHasAbout(hasAbout); }

}  // namespace gallery
