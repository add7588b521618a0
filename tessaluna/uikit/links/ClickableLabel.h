// A text field whose attributed text can hold links: every run with a link shows the hand and can be clicked, and a click
// elsewhere is one on the label as a whole. Links exist once attributedStringValue has been set. They look as the other attributes
// of their runs say, such as a color or an underline, and like the rest of the text without any.
//
//   label->setBezeled(false); label->setDrawsBackground(false); label->setEditable(false);
//   label->setAttributedStringValue(text);  // with NSLinkAttributeName: a URL or its text; others show the hand only
//   label->setActionTarget(host);
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/events/KeyboardAtPress.h"
#include "tessaluna/platform/foundation/URL.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/links/AccessibleLinks.h"
#include "tessaluna/uikit/links/ClickableLabelTarget.h"
#include "tessaluna/uikit/links/LinkKeyboard.h"

namespace TessalunaUIKit {

class ClickableLabel : public tessaluna::platform::NSTextField,
                       public tessaluna::platform::KeyboardAtPress,
                       private LinksForClients,
                       private LinkKeyboard::Line {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit ClickableLabel(tessaluna::platform::CGRect frame) : NSTextField(frame) {}
  // The target is not reachable by name, and so not an outlet. The text of an archive is plain and has no links.
  explicit ClickableLabel(tessaluna::platform::NSCoder& coder) : NSTextField(coder) {}

  // Kept alive: a target that owns the label has to break that cycle itself. Null: clicks are swallowed.
  const tessaluna::platform::Ref<ClickableLabelTarget>& actionTarget() const { return actionTarget_; }
  void setActionTarget(tessaluna::platform::Ref<ClickableLabelTarget> target) { actionTarget_ = std::move(target); }

  // An addition: the Tab key enters the links, Left and Right go from one to the next, Return presses one. The ring is around
  // the link's part in its first line. A press with the mouse does not take the keyboard. Off initially.
  bool takesKeyboard() const { return keyboard_ != nullptr; }
  void setTakesKeyboard(bool takes);

  // A text is taken as it is now: what the program changes in it later does not show.
  void setObjectValue(tessaluna::platform::Ref<tessaluna::platform::NSObject> value) override;

  // From then on a press finds the links where the label's present size has them.
  void resetCursorRects() override;
  // A press never begins to edit, even where the label is editable, as it is initially: the next one is a click, too.
  bool takesKeyboardAtPress() const override { return false; }
  // A press ends without a click if the label leaves its window or is hidden meanwhile.
  void mouseDown(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void mouseUp(const tessaluna::platform::Ref<tessaluna::platform::NSEvent>& event) override;
  void viewDidHide() override;

  // An addition: the links as assistive clients see them, in the label's cell. A press of one reaches the target.
  tessaluna::platform::AccessibilityElements accessibleLinks();

 protected:
  tessaluna::platform::Ref<tessaluna::platform::NSCell> makeCell() override;
  tessaluna::platform::Ref<tessaluna::platform::NSCell> makeCell(tessaluna::platform::NSCoder& coder) override;

 private:
  struct Link {
    tessaluna::platform::NSRange range;
    tessaluna::platform::URL url;
  };
  const std::vector<Link>& links() const;
  void refreshLinks();
  void fill(tessaluna::platform::NSTextView& view) const;
  // The text in the label's present size; once there are links.
  tessaluna::platform::NSTextView& shownText() const;
  void forgetPress();

  std::size_t numberOfLinks() const override { return links().size(); }
  std::string textOfLink(std::size_t index) const override;
  tessaluna::platform::CGRect frameOfLink(std::size_t index) const override;
  void pressLink(std::size_t index) override;
  tessaluna::platform::Ref<tessaluna::platform::NSObject> parentOfLinks() const override { return cell(); }
  bool isLinkFocused(std::size_t index) const override { return keyboard_ && keyboard_->currentStop() == index; }

  std::vector<tessaluna::platform::CGRect> keyboardStops() const override;
  void pressKeyboardStop(std::size_t stop) override { pressLink(stop); }
  void keyboardStopDidChange() override;
  tessaluna::platform::Ref<tessaluna::platform::NSColor> groundOfStops() const override;

  tessaluna::platform::Ref<ClickableLabelTarget> actionTarget_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextView> textView_;         // finds the links; in no window
  mutable tessaluna::platform::Ref<tessaluna::platform::NSTextView> resized_;  // the same while the label has another width
  tessaluna::platform::NSRange clickedLinkRange_;
  std::optional<tessaluna::platform::URL> clickedLink_;  // from a press on a link to its release
  enum class Press { None, Down, Hidden };               // hidden: the label was since it began
  Press press_ = Press::None;
  AccessibleLinks accessible_;
  tessaluna::platform::Ref<LinkKeyboard> keyboard_;  // over the label; null unless the keyboard is taken
  mutable std::vector<Link> links_;                  // those of the text that they were found in
  mutable tessaluna::platform::Ref<const tessaluna::platform::NSAttributedString> textOfLinks_;
};

}  // namespace TessalunaUIKit
