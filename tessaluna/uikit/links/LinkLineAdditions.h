// What a MultipleLinksTextField does beside its text and its pointer: its links as elements for assistive clients, and, if they
// are switched on, a menu of all links at the "…", the whole text as a tool tip while it is cut, and the keyboard.
#pragma once

#include "tessaluna/uikit/links/AccessibleLinks.h"
#include "tessaluna/uikit/links/LinkKeyboard.h"

namespace TessalunaUIKit {

class MultipleLinksTextField;

class LinkLineAdditions : public LinksForClients, public LinkKeyboard::Line {
 public:
  // A part of the field.
  explicit LinkLineAdditions(MultipleLinksTextField& field) : field_(field) {}

  bool showsMenuAtEllipsis = false;
  bool showsToolTipWhileCut() const { return showsToolTipWhileCut_; }
  void setShowsToolTipWhileCut(bool shows);
  bool takesKeyboard() const { return keyboard_ != nullptr; }
  void setTakesKeyboard(bool takes);

  // Called by the field: at a press, true if it opened the menu; after each cut that is drawn; whenever there are other links
  // or they are switched on or off.
  bool openMenuForPressAt(tessaluna::platform::CGPoint point);
  void didCut();
  void linksDidChange();
  tessaluna::platform::AccessibilityElements elements();

  std::size_t numberOfLinks() const override;
  std::string textOfLink(std::size_t index) const override;
  tessaluna::platform::CGRect frameOfLink(std::size_t index) const override;
  bool isLinkFocused(std::size_t index) const override;
  void pressLink(std::size_t index) override;
  tessaluna::platform::Ref<tessaluna::platform::NSObject> parentOfLinks() const override;

  std::vector<tessaluna::platform::CGRect> keyboardStops() const override;
  void pressKeyboardStop(std::size_t stop) override;
  void keyboardStopDidChange() override;
  tessaluna::platform::Ref<tessaluna::platform::NSColor> groundOfStops() const override;

 private:
  // Where the keyboard stops: the links that show something of themselves and, in the menu's place, the "…"; without the menu
  // those that are cut off as well.
  struct Stop {
    std::optional<std::size_t> link;  // absent: the menu
    tessaluna::platform::CGRect bounds;
  };
  std::vector<Stop> stops() const;
  bool isCut() const;
  // Of the link up to where links end, or of the "…" for one that begins after that; in the field's coordinates.
  tessaluna::platform::CGRect boundsOfLink(std::size_t index) const;
  tessaluna::platform::CGRect ellipsisBounds() const;
  void openMenu();

  MultipleLinksTextField& field_;
  bool showsToolTipWhileCut_ = false;
  AccessibleLinks accessible_;
  tessaluna::platform::Ref<LinkKeyboard> keyboard_;  // over the field; null unless the keyboard is taken
};

}  // namespace TessalunaUIKit
