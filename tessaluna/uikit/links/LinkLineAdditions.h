// What a MultipleLinksTextField does beside its text and its pointer: its links as elements for assistive clients, and, if they
// are switched on, a menu of all links at the "…" and the whole text as a tool tip while it is cut.
#pragma once

#include "tessaluna/uikit/links/AccessibleLinks.h"

namespace TessalunaUIKit {

class MultipleLinksTextField;

class LinkLineAdditions : public LinksForClients {
 public:
  // A part of the field.
  explicit LinkLineAdditions(MultipleLinksTextField& field) : field_(field) {}

  bool showsMenuAtEllipsis = false, showsToolTipWhileCut = false;

  // Called by the field: at a press, true if it opened the menu; after each cut that is drawn; whenever there are other links
  // or they are switched on or off.
  bool openMenuForPressAt(tessaluna::platform::CGPoint point);
  void didCut();
  void linksDidChange() { accessible_.linksDidChange(); }
  tessaluna::platform::AccessibilityElements elements();

  std::size_t numberOfLinks() const override;
  std::string textOfLink(std::size_t index) const override;
  tessaluna::platform::CGRect frameOfLink(std::size_t index) const override;
  void pressLink(std::size_t index) override;
  tessaluna::platform::Ref<tessaluna::platform::NSObject> parentOfLinks() const override;

 private:
  bool isCut() const;
  // Of the link up to where links end, or of the "…" for one that begins after that; in the field's coordinates.
  tessaluna::platform::CGRect boundsOfLink(std::size_t index) const;
  tessaluna::platform::CGRect ellipsisBounds() const;
  void openMenu();

  MultipleLinksTextField& field_;
  AccessibleLinks accessible_;
};

}  // namespace TessalunaUIKit
