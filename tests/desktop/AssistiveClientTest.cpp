// A completion pop-up as a real client of the accessibility bus finds it, from a process of its own.
#include <algorithm>

#include "tessaluna/platform/foundation/URL.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextFieldDelegate.h"
#include "tessaluna/uikit/links/ClickableLabel.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tests/desktop/AssistiveDesktop.h"
#include "tests/harness/AccessiblePlayer.h"

using namespace tessaluna::platform;

namespace {

// Completes what is written, as a host does.
class Completing : public NSObject, public NSTextFieldDelegate {
 public:
  void controlTextDidChange(const Ref<NSNotification>&) override { onChange(); }
  std::function<void()> onChange;
};

class AssistiveClient : public harness::AssistiveDesktop, protected harness::AccessiblePlayer {
 protected:
  AssistiveClient() {
    setTarget(clicks);
    window->makeKeyAndOrderFront(nullptr);
  }
  void SetUp() override {
    ASSERT_TRUE(eventually([] { return QAccessible::isActive(); }));
    ASSERT_TRUE(eventually([&] { return window->isKeyWindow(); }));
    window->makeFirstResponder(field.get());
    settle();
  }
  Ref<harness::ClickCount> clicks = make<harness::ClickCount>();
};

TEST_F(AssistiveClient, FindsTheListBelowTheFieldWhileItIsShown) {
  const std::string without =
      "application \"desktop_tests\"\n"
      "  frame \"Player\" active\n"
      "    text \"\" editable focusable focused\n"
      "    push button \"Play\" focusable\n";
  EXPECT_EQ(client("tree"), without);
  begin({"Abba", "Can"});
  EXPECT_EQ(client("tree"),
            "application \"desktop_tests\"\n"
            "  frame \"Player\" active\n"
            "    text \"\" editable focusable focused\n"
            "      list \"\"\n"
            "        list item \"Abba, by Abba\" selectable selected\n"
            "          label \"Abba\"\n"
            "          label \"by Abba\"\n"
            "        list item \"Can, by Can\" selectable\n"
            "          label \"Can\"\n"
            "          label \"by Can\"\n"
            "    push button \"Play\" focusable\n");
  controller->cancelSuggestions();
  EXPECT_EQ(client("tree"), without);
}

TEST_F(AssistiveClient, FindsARowWhereItIsOnTheScreen) {
  begin({"Abba", "Can"});
  const QRect row = list()->child(1)->rect();
  const std::string expected = std::to_string(row.x()) + " " + std::to_string(row.y()) + " 200 20\n";
  EXPECT_EQ(client("place", {"Can, by Can"}), expected);
  // The rows hang 2 points below the field, the first one 20 points high.
  EXPECT_EQ(row.topLeft(), of(field->cell())->rect().bottomLeft() + QPoint(0, 1 + 2 + 20));
}

TEST_F(AssistiveClient, SelectsARowByPressingAndChoosesIt) {
  begin({"Abba", "Can"});
  EXPECT_EQ(client("actions", {"Can, by Can"}), "Press\nchoose\n");
  client("do", {"Can, by Can", "Press"});
  EXPECT_EQ(controller->selectedSuggestion()->label, "Can");
  EXPECT_EQ(clicks->count, 0);
  const std::string tree = client("tree");
  EXPECT_NE(tree.find("list item \"Can, by Can\" selectable selected\n"), tree.npos) << tree;
  EXPECT_NE(tree.find("list item \"Abba, by Abba\" selectable\n"), tree.npos) << tree;
  client("do", {"Can, by Can", "choose"});
  EXPECT_TRUE(eventually([&] { return !controller->window()->isVisible(); }));
  EXPECT_EQ(clicks->count, 1);
  EXPECT_EQ(client("tree").find("list"), std::string::npos);
}

TEST_F(AssistiveClient, ObservesTheSelectionWhileTheKeyboardStaysInTheField) {
  startListening();
  begin({"Abba", "Can"});
  EXPECT_TRUE(eventuallyObserves("object:children-changed:add 1 text \"\" of list \"\""));
  EXPECT_TRUE(eventuallyObserves("object:state-changed:selected 1 list item \"Abba, by Abba\""));
  observed.clear();
  controller->moveDown(nullptr);
  EXPECT_TRUE(eventuallyObserves("object:state-changed:selected 1 list item \"Can, by Can\""));
  EXPECT_EQ(observed, (std::vector<std::string>{"object:state-changed:selected 0 list item \"Abba, by Abba\"",
                                                "object:state-changed:selected 1 list item \"Can, by Can\""}));
  suggest({"Queen"});
  EXPECT_TRUE(eventuallyObserves("object:state-changed:selected 1 list item \"Queen, by Queen\""));
  controller->cancelSuggestions();
  EXPECT_TRUE(eventuallyObserves("object:children-changed:remove -1 text \"\" of list \"\""));
  EXPECT_EQ(std::count_if(observed.begin(), observed.end(),
                          [](const std::string& line) { return line.find("focused") != line.npos; }),
            0)
      << testing::PrintToString(observed);
}

TEST_F(AssistiveClient, ObservesTheFocusAndWritesIntoTheField) {
  startListening();
  window->makeFirstResponder(button.get());
  EXPECT_TRUE(eventuallyObserves("object:state-changed:focused 1 push button \"Play\""));
  client("write", {"text", "new words"});
  EXPECT_EQ(field->stringValue(), "new words");
  EXPECT_TRUE(eventuallyObserves("object:text-changed:insert 0 text \"\""));
}

TEST_F(AssistiveClient, ObservesWhatIsTypedAndWhereTheCaretIs) {
  startListening();
  xdotool({"key", "End", "x"});
  EXPECT_TRUE(eventuallyObserves("object:text-changed:insert 5 text \"\""));
  EXPECT_TRUE(eventuallyObserves("object:text-caret-moved 6 text \"\"")) << testing::PrintToString(observed);
  EXPECT_EQ(client("text", {"text"}), "queryx\ncaret at 6\n");
  xdotool({"key", "shift+Home"});
  EXPECT_TRUE(eventually([&] { return of(field->cell())->textInterface()->selectionCount() == 1; }));
  EXPECT_EQ(client("text", {"text"}), "queryx\ncaret at 0\nselected 0 to 6\n") << "it goes backward";
}

TEST_F(AssistiveClient, ObservesATextThatGetsShorterOrIsReplaced) {
  startListening();
  xdotool({"key", "End", "BackSpace"});
  EXPECT_TRUE(eventuallyObserves("object:text-changed:delete 4 text \"\"")) << testing::PrintToString(observed);
  EXPECT_TRUE(eventuallyObserves("object:text-caret-moved 4 text \"\"")) << testing::PrintToString(observed);
  observed.clear();
  field->currentEditor()->setString("quay");
  EXPECT_TRUE(eventuallyObserves("object:text-changed:insert 2 text \"\"")) << testing::PrintToString(observed);
  EXPECT_EQ(std::count(observed.begin(), observed.end(), "object:text-changed:delete 2 text \"\""), 1);
  observed.clear();
  field->setStringValue("q");
  EXPECT_TRUE(eventuallyObserves("object:text-caret-moved 1 text \"\"")) << testing::PrintToString(observed);
  EXPECT_EQ(std::count(observed.begin(), observed.end(), "object:text-changed:delete 1 text \"\""), 1);
}

TEST_F(AssistiveClient, FindsTheCharactersOfATextOnTheScreen) {
  const QRect second = of(field->cell())->textInterface()->characterRect(1);
  const QRect around = of(field->cell())->rect();
  EXPECT_TRUE(around.contains(second.center()));
  const std::string place = std::to_string(second.x()) + " " + std::to_string(second.y()) + " " +
                            std::to_string(second.width()) + " " + std::to_string(second.height());
  EXPECT_EQ(client("character", {"text", "1"}), place + "\noffset 1\n");
}

TEST_F(AssistiveClient, WritesTextThatOpensThePopUpAsTypingDoes) {
  const auto delegate = make<Completing>();
  delegate->onChange = [&] {
    if (!controller->window()->isVisible()) begin({"Abba", "Can"});
  };
  field->setDelegate(delegate);
  window->makeFirstResponder(button.get());
  client("write", {"text", "ab"});
  EXPECT_TRUE(eventually([&] { return controller->window()->isVisible(); }));
  EXPECT_EQ(field->stringValue(), "ab");
  const std::string tree = client("tree");
  EXPECT_NE(tree.find("list item \"Abba, by Abba\" selectable selected\n"), tree.npos) << tree;
}

TEST_F(AssistiveClient, CannotPressADisabledButton) {
  startListening();
  client("do", {"Play", "Press"});
  EXPECT_EQ(clicks->count, 1);
  button->setEnabled(false);
  EXPECT_TRUE(eventuallyObserves("object:state-changed:enabled 0 push button \"Play\""));
  EXPECT_EQ(client("actions", {"Play"}), "\n");
  client("do", {"Play", "Press"}, 1);
  EXPECT_EQ(clicks->count, 1);
}

TEST_F(AssistiveClient, ObservesAButtonThatIsCheckedAndOneThatExpands) {
  button->setButtonType(NSButtonType::Toggle);
  const auto details = make<NSButton>(CGRect{100, 60, 80, 24});
  details->setTitle("Details");
  details->setButtonType(NSButtonType::Toggle);
  details->cell()->accessibilitySetOverrideValue(NSAccessibilityDisclosureTriangleRole, NSAccessibilityRoleAttribute);
  window->contentView()->addSubview(details);
  client("tree");  // what no client has asked for reports nothing
  startListening();
  button->setState(NSControlStateValueOn);
  EXPECT_TRUE(eventuallyObserves("object:state-changed:checked 1 check box \"Play\"")) << testing::PrintToString(observed);
  button->setState(NSControlStateValueOff);
  EXPECT_TRUE(eventuallyObserves("object:state-changed:checked 0 check box \"Play\"")) << testing::PrintToString(observed);
  details->setState(NSControlStateValueOn);
  EXPECT_TRUE(eventuallyObserves("object:state-changed:checked 1 push button \"Details\""))
      << testing::PrintToString(observed);
  const std::string tree = client("tree");
  EXPECT_NE(tree.find("push button \"Details\" checked expanded focusable\n"), tree.npos) << tree;
}

// Records every notification.
class LinkListener : public TessalunaUIKit::LinkTextFieldActionTarget, public TessalunaUIKit::ClickableLabelTarget {
 public:
  void linkClicked(std::size_t element, TessalunaUIKit::MultipleLinksTextField&) override {
    clicked.push_back(std::to_string(element));
  }
  void labelClicked(TessalunaUIKit::ClickableLabel&) override { clicked.push_back("the label"); }
  void linkClicked(const URL& link) override { clicked.push_back(link.absoluteString()); }
  std::vector<std::string> clicked;
};

TEST_F(AssistiveClient, PressesTheLinksOfALineEvenIfCutOffAndTheLinksOfAText) {
  const auto listening = std::make_shared<LinkListener>();
  const auto artists = make<TessalunaUIKit::MultipleLinksTextField>(CGRect{10, 60, 90, 20});
  artists->setLinksEnabled(true);
  artists->setTarget(listening);
  artists->setStringValues({{"Mira Holt", "The Quiet Engine", "Jonas Wehr"}});
  window->contentView()->addSubview(artists);
  const auto notes = make<TessalunaUIKit::ClickableLabel>(CGRect{10, 90, 180, 20});
  const auto text = make<NSMutableAttributedString>("See the booklet");
  text->addAttribute(NSLinkAttributeName, *URL::URLWithString("https://example.org/booklet"), {8, 7});
  notes->setAttributedStringValue(text);
  notes->setActionTarget(listening);
  window->contentView()->addSubview(notes);
  window->displayIfNeeded();

  const std::string tree = client("tree");
  for (const char* link : {"Mira Holt", "The Quiet Engine", "Jonas Wehr", "booklet"})
    EXPECT_NE(tree.find("link \"" + std::string(link) + "\""), tree.npos) << link << "\n" << tree;
  client("do", {"Jonas Wehr", "Press"});
  EXPECT_TRUE(eventually([&] { return listening->clicked.size() == 1; }));
  client("do", {"booklet", "Press"});
  EXPECT_TRUE(eventually([&] { return listening->clicked.size() == 2; }));
  EXPECT_EQ(listening->clicked, (std::vector<std::string>{"2", "https://example.org/booklet"}));
}

TEST_F(AssistiveClient, NoKeyIsLostOrDoubledWhileItListens) {
  startListening();
  xdotool({"key", "End"});
  const QString typed = "the quick brown fox jumps over the lazy dog aabbccddeeff";
  xdotool({"type", "--delay", "3", typed});
  const std::string expected = "query" + typed.toStdString();
  EXPECT_TRUE(eventually([&] { return field->stringValue().size() >= expected.size(); }));
  settle();
  EXPECT_EQ(field->stringValue(), expected);
}

}  // namespace
