#include "tessaluna/platform/views/NSPopUpButton.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tests/harness/ActionProbe.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"
#include "tests/harness/recordingOf.h"

using namespace tessaluna::platform;
using tessaluna::backend::MenuEntry;
using tessaluna::backend::MenuMark;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

namespace {

// A pop-up of three items at (10, 100), 120 by 24 points, in a window whose content begins at (100, 100) of the screen.
class NSPopUpButtonTest : public harness::StillWorld {
 protected:
  NSPopUpButtonTest() {
    button->addItemsWithTitles({"Small", "Medium", "Large"});
    button->setTarget(target);
    button->setAction("act:");
    window = showWindowWith(button);
  }
  NSPopUpButtonCell& cell() const { return dynamic_cast<NSPopUpButtonCell&>(*button->cell()); }
  const std::vector<MenuEntry>& entries() const { return desktop.openMenu()->entries; }
  std::vector<std::string> entryTitles() const {
    std::vector<std::string> titles;
    for (const MenuEntry& entry : entries()) titles.push_back(entry.title);
    return titles;
  }
  void choose(std::size_t entry) {
    desktop.chooseFromMenu(entries().at(entry).number);
    desktop.settle();
  }
  void closeMenu() {
    desktop.chooseFromMenu(std::nullopt);
    desktop.settle();
  }

  Ref<NSPopUpButton> button = make<NSPopUpButton>(CGRect{10, 100, 120, 24});
  Ref<harness::ActionProbe> target = make<harness::ActionProbe>();
  Ref<NSWindow> window;
};

}  // namespace

TEST_F(NSPopUpButtonTest, AClickByTheProgramOpensItsMenu) {
  NSButton& asButton = *button;
  asButton.performClick(nullptr);
  ASSERT_NE(desktop.openMenu(), nullptr);
  EXPECT_THAT(entryTitles(), ElementsAre("Small", "Medium", "Large"));
  EXPECT_EQ(target->acts, 0);
  choose(1);
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSPopUpButtonTest, ItsTitleIsThatOfTheSelectedItemWhichIsTheFirstAtTheStart) {
  EXPECT_EQ(button->title(), "Small");
  EXPECT_THAT(button->indexOfSelectedItem(), Optional(0u));
  button->selectItemAtIndex(2);
  EXPECT_EQ(button->title(), "Large");
  EXPECT_EQ(make<NSPopUpButton>(NSZeroRect)->title(), "");
}

TEST_F(NSPopUpButtonTest, NothingIsSelectedWhereThatWasAsked) {
  button->selectItemAtIndex(std::nullopt);
  EXPECT_EQ(button->selectedItem(), nullptr);
  EXPECT_EQ(button->title(), "");
  button->selectItemWithTitle("Large");
  button->selectItemWithTitle("Huge");
  EXPECT_EQ(button->indexOfSelectedItem(), std::nullopt);
}

TEST_F(NSPopUpButtonTest, ATitleSelectsItsItem) {
  button->selectItemWithTitle("Medium");
  EXPECT_THAT(button->indexOfSelectedItem(), Optional(1u));
}

TEST_F(NSPopUpButtonTest, WithoutACellOfAPopUpNothingIsSelected) {
  button->setCell(make<NSCell>());
  button->selectItemAtIndex(1);
  EXPECT_EQ(button->indexOfSelectedItem(), std::nullopt);
  EXPECT_FALSE(button->selectItemWithTag(0));
  user.click(*window, {20, 110});
  EXPECT_EQ(desktop.openMenu(), nullptr);
}

TEST_F(NSPopUpButtonTest, TheFirstItemIsSelectedWhenTheSelectedOneHasGone) {
  button->selectItemAtIndex(1);
  button->removeItemAtIndex(1);
  EXPECT_EQ(button->title(), "Small");
  button->removeAllItems();
  EXPECT_EQ(button->selectedItem(), nullptr);
}

TEST_F(NSPopUpButtonTest, AnItemTakesThePlaceOfAnEarlierOneOfItsTitle) {
  button->addItemWithTitle("Small");
  EXPECT_THAT(cell().itemTitles(), ElementsAre("Medium", "Large", "Small"));
  button->insertItemWithTitle("Large", 0);
  EXPECT_THAT(cell().itemTitles(), ElementsAre("Large", "Medium", "Small"));
}

TEST_F(NSPopUpButtonTest, AnItemWithoutATitleTakesThePlaceOfNoSeparator) {
  button->menu()->addItem(NSMenuItem::separatorItem());
  button->addItemWithTitle("");
  EXPECT_EQ(button->numberOfItems(), 5u);
}

TEST_F(NSPopUpButtonTest, TheSelectedItemOfAPullDownHasNoCheckMark) {
  button->setPullsDown(true);
  button->selectItemAtIndex(1);
  EXPECT_EQ(button->itemAtIndex(1)->state(), NSControlStateValueOff);
}

TEST_F(NSPopUpButtonTest, SettingTheTitleSelectsItsItemAndAddsOneIfThereIsNone) {
  button->setTitle("Large");
  EXPECT_THAT(button->indexOfSelectedItem(), Optional(2u));
  button->setTitle("Huge");
  EXPECT_THAT(button->indexOfSelectedItem(), Optional(3u));
}

TEST_F(NSPopUpButtonTest, ItsValueIsTheIndex) {
  button->setIntegerValue(2);
  EXPECT_EQ(button->title(), "Large");
  EXPECT_EQ(button->integerValue(), 2);
  button->setIntegerValue(7);
  EXPECT_EQ(button->integerValue(), -1);
  button->itemAtIndex(1)->setTag(40);
  EXPECT_TRUE(button->selectItemWithTag(40));
  EXPECT_FALSE(button->selectItemWithTag(41));
  EXPECT_EQ(button->title(), "Medium");
}

TEST_F(NSPopUpButtonTest, APressOpensTheMenuWithTheSelectedItemCheckedAndOverTheButton) {
  button->selectItemAtIndex(1);
  user.press(*window, {20, 110});
  ASSERT_NE(desktop.openMenu(), nullptr);
  EXPECT_THAT(entryTitles(), ElementsAre("Small", "Medium", "Large"));
  EXPECT_EQ(entries()[1].mark, MenuMark::Check);
  EXPECT_EQ(entries()[0].mark, MenuMark::None);
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{110, 200, 120, 24}));
  EXPECT_EQ(desktop.openMenu()->place.entry, entries()[1].number);
  EXPECT_EQ(desktop.openMenu()->place.minimumWidth, 120);
}

TEST_F(NSPopUpButtonTest, TheSelectedItemIsCheckedAlsoIfNobodySelectedIt) {
  user.press(*window, {20, 110});
  EXPECT_EQ(entries()[0].mark, MenuMark::Check);
  closeMenu();
  cell().setAltersStateOfSelectedItem(false);
  button->removeAllItems();
  button->addItemWithTitle("Other");
  user.press(*window, {20, 110});
  EXPECT_EQ(entries()[0].mark, MenuMark::None);
}

TEST_F(NSPopUpButtonTest, ChoosingSelectsAndThenSendsTheControlsAction) {
  std::string titleAtAction;
  target->onAct = [&] { titleAtAction = button->title(); };
  user.click(*window, {20, 110});
  EXPECT_EQ(target->acts, 0);
  choose(2);
  EXPECT_EQ(titleAtAction, "Large");
  EXPECT_EQ(target->acts, 1);
  EXPECT_EQ(target->lastSender, button.get());
  user.click(*window, {20, 110});
  EXPECT_EQ(entries()[2].mark, MenuMark::Check);
  EXPECT_EQ(entries()[0].mark, MenuMark::None);
  choose(2);
  EXPECT_EQ(target->acts, 2);  // also for what was selected
}

TEST_F(NSPopUpButtonTest, ClosingTheMenuChangesNothing) {
  user.click(*window, {20, 110});
  closeMenu();
  EXPECT_EQ(button->title(), "Small");
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSPopUpButtonTest, AnItemWithAnActionOfItsOwnSendsThatAndIsSelected) {
  const auto other = make<harness::ActionProbe>();
  button->itemAtIndex(1)->setAction("act:");
  button->itemAtIndex(1)->setTarget(other);
  user.click(*window, {20, 110});
  choose(1);
  EXPECT_EQ(other->acts, 1);
  EXPECT_EQ(other->lastSender, button->itemAtIndex(1).get());
  EXPECT_EQ(target->acts, 0);
  EXPECT_EQ(button->title(), "Medium");
}

TEST_F(NSPopUpButtonTest, SeparatorsAndDisabledItemsAreShownAsSuch) {
  button->menu()->setAutoenablesItems(false);
  button->menu()->insertItem(NSMenuItem::separatorItem(), 1);
  button->itemAtIndex(2)->setEnabled(false);
  user.click(*window, {20, 110});
  EXPECT_TRUE(entries()[1].isSeparator);
  EXPECT_FALSE(entries()[2].isEnabled);
  EXPECT_TRUE(entries()[3].isEnabled);
}

TEST_F(NSPopUpButtonTest, ItemsWithoutAnActionCanBeChosenAlsoWhereTheMenuEnablesThem) {
  button->itemAtIndex(1)->setAction("nobodyHasThis:");
  user.click(*window, {20, 110});
  EXPECT_TRUE(entries()[0].isEnabled);
  EXPECT_FALSE(entries()[1].isEnabled);
}

TEST_F(NSPopUpButtonTest, SpaceAndTheUpAndDownArrowsOpenIt) {
  window->makeFirstResponder(button.get());
  for (const std::string& key : {std::string(" "), std::string("\xEF\x9C\x80"), std::string("\xEF\x9C\x81")}) {
    user.pressKey(key);
    ASSERT_NE(desktop.openMenu(), nullptr);
    closeMenu();
  }
  user.pressKey(NSRightArrowFunctionKey);
  user.pressKey(NSDownArrowFunctionKey, NSEventModifierFlagCommand);
  // A key that is held and has closed the menu does not open it again.
  NSApp->sendEvent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                 .window = window,
                                                 .characters = " ",
                                                 .charactersIgnoringModifiers = " ",
                                                 .isRepeat = true}));
  EXPECT_EQ(desktop.openMenu(), nullptr);
}

TEST_F(NSPopUpButtonTest, ItsKeyEquivalentOpensItUnlessItIsDisabled) {
  cell().setKeyEquivalent("o");
  cell().setKeyEquivalentModifierMask(NSEventModifierFlagCommand);
  button->setEnabled(false);
  user.pressKey("o", NSEventModifierFlagCommand);
  EXPECT_EQ(desktop.openMenu(), nullptr);
  button->setEnabled(true);
  user.pressKey("o", NSEventModifierFlagCommand);
  EXPECT_NE(desktop.openMenu(), nullptr);
}

TEST_F(NSPopUpButtonTest, AHeldKeyEquivalentOpensItOnceAndReachesNobodyElse) {
  cell().setKeyEquivalent("o");
  NSEvent::Fields press{
      .type = NSEventType::KeyDown, .window = window, .characters = "o", .charactersIgnoringModifiers = "o"};
  EXPECT_TRUE(button->performKeyEquivalent(make<NSEvent>(press)));
  ASSERT_NE(desktop.openMenu(), nullptr);
  closeMenu();
  press.isRepeat = true;
  EXPECT_TRUE(button->performKeyEquivalent(make<NSEvent>(press)));
  EXPECT_EQ(desktop.openMenu(), nullptr);
  button->setEnabled(false);
  press.isRepeat = false;
  EXPECT_FALSE(button->performKeyEquivalent(make<NSEvent>(press))) << "a disabled one leaves it to others";
}

TEST_F(NSPopUpButtonTest, KeyEquivalentOfAnItemChoosesIt) {
  button->itemAtIndex(1)->setKeyEquivalent("k");
  user.pressKey("k", NSEventModifierFlagCommand);
  EXPECT_EQ(desktop.openMenu(), nullptr);
  EXPECT_EQ(button->indexOfSelectedItem(), 1u);
  EXPECT_EQ(target->acts, 1);
  button->setEnabled(false);
  user.pressKey("k", NSEventModifierFlagCommand);
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSPopUpButtonTest, KeyEquivalentSendsTheActionThatAnItemHas) {
  int calls = 0;
  button->itemAtIndex(1)->setKeyEquivalent("k");
  button->itemAtIndex(1)->setAction([&] { ++calls; });
  user.pressKey("k", NSEventModifierFlagCommand);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(button->indexOfSelectedItem(), 1u);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSPopUpButtonTest, AHeldKeyEquivalentOfAnItemChoosesItOnce) {
  button->itemAtIndex(1)->setKeyEquivalent("k");
  NSEvent::Fields press{.type = NSEventType::KeyDown,
                        .modifiers = NSEventModifierFlagCommand,
                        .window = window,
                        .characters = "k",
                        .charactersIgnoringModifiers = "k"};
  EXPECT_TRUE(button->performKeyEquivalent(make<NSEvent>(press)));
  press.isRepeat = true;
  EXPECT_TRUE(button->performKeyEquivalent(make<NSEvent>(press))) << "nobody else gets it";
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSPopUpButtonTest, AnErrorWhileItsMenuOpensLeavesThePullDownAsItWas) {
  class Thrower : public NSObject, public NSMenuDelegate {
   public:
    void menuWillOpen(NSMenu&) override { throw std::runtime_error("not now"); }
  };
  button->setPullsDown(true);
  const auto thrower = make<Thrower>();
  button->menu()->setDelegate(thrower);
  EXPECT_THROW(cell().performClickWithFrame(button->bounds(), *button), std::runtime_error);
  EXPECT_FALSE(button->itemAtIndex(0)->isHidden());
  EXPECT_FALSE(button->isHighlighted());
  button->menu()->setDelegate(nullptr);
  EXPECT_TRUE(cell().performClickWithFrame(button->bounds(), *button));
}

TEST_F(NSPopUpButtonTest, AnErrorDuringAKeyEquivalentLeavesThePullDownsTitleInTheMenu) {
  class Thrower : public NSObject, public NSMenuDelegate {
   public:
    void menuNeedsUpdate(NSMenu&) override { throw std::runtime_error("no items"); }
  };
  button->setPullsDown(true);
  button->itemAtIndex(1)->setKeyEquivalent("k");
  const auto thrower = make<Thrower>();
  button->menu()->setDelegate(thrower);
  const auto press = make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                   .modifiers = NSEventModifierFlagCommand,
                                                   .window = window,
                                                   .characters = "k",
                                                   .charactersIgnoringModifiers = "k"});
  EXPECT_THROW(button->performKeyEquivalent(press), std::runtime_error);
  EXPECT_FALSE(button->itemAtIndex(0)->isHidden());
}

TEST_F(NSPopUpButtonTest, KeyEquivalentOfAPullDownsTitleChoosesNothing) {
  button->setPullsDown(true);
  button->itemAtIndex(0)->setKeyEquivalent("k");
  user.pressKey("k", NSEventModifierFlagCommand);
  EXPECT_EQ(target->acts, 0);
  EXPECT_FALSE(button->itemAtIndex(0)->isHidden());
}

TEST_F(NSPopUpButtonTest, LooksPressedWhileItsMenuIsOpen) {
  user.press(*window, {20, 110});
  user.release();
  EXPECT_TRUE(button->isHighlighted());
  desktop.settle();
  EXPECT_EQ(nativeOf(*window).paints().size(), 1u);
  closeMenu();
  EXPECT_FALSE(button->isHighlighted());
  EXPECT_EQ(nativeOf(*window).paints().size(), 2u);
}

TEST_F(NSPopUpButtonTest, DisablingHidingOrTakingItAwayClosesTheMenu) {
  const auto open = [&] {
    user.click(*window, {20, 110});
    ASSERT_NE(desktop.openMenu(), nullptr);
  };
  open();
  button->setEnabled(false);
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
  user.click(*window, {20, 110});
  EXPECT_EQ(desktop.openMenu(), nullptr);
  button->setEnabled(true);
  open();
  button->setHidden(true);
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
  button->setHidden(false);
  open();
  window->contentView()->setEnablesControls(false);
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
  window->contentView()->setEnablesControls(true);
  open();
  button->removeFromSuperview();
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSPopUpButtonTest, EnablingItOnceMoreLeavesTheMenuOpen) {
  user.click(*window, {20, 110});
  button->setEnabled(true);
  desktop.settle();
  EXPECT_NE(desktop.openMenu(), nullptr);
}

TEST_F(NSPopUpButtonTest, AssistiveClientsObserveWhatDisablesItFromAbove) {
  int changes = 0;
  const Ref<NSObject> token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityEnabledChangedNotification, button->cell(), nullptr, [&](const Ref<NSNotification>&) { ++changes; });
  window->contentView()->setEnablesControls(false);
  EXPECT_EQ(changes, 1);
  accessibilityNotificationCenter().removeObserver(token);
}

TEST_F(NSPopUpButtonTest, AnotherMenuClosesTheOneThatIsOpen) {
  user.click(*window, {20, 110});
  button->setMenu(make<NSMenu>());
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
}

TEST_F(NSPopUpButtonTest, ItMayGoWhileItsMenuIsOpenAndInItsAction) {
  user.click(*window, {20, 110});
  const auto menu = button->menu();
  button->removeFromSuperview();
  button.reset();
  desktop.settle();
  EXPECT_EQ(desktop.openMenu(), nullptr);
  button = make<NSPopUpButton>(CGRect{10, 100, 120, 24});
  button->addItemWithTitle("One");
  button->setTarget(target);
  button->setAction("act:");
  window->contentView()->addSubview(button);
  target->onAct = [&] {
    button->removeFromSuperview();
    button.reset();
  };
  user.click(*window, {20, 110});
  choose(0);
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSPopUpButtonTest, AnEmptyOneOpensNothing) {
  button->removeAllItems();
  user.click(*window, {20, 110});
  EXPECT_EQ(desktop.openMenu(), nullptr);
  EXPECT_FALSE(button->isHighlighted());
}

TEST_F(NSPopUpButtonTest, APullDownHangsItsMenuBelowItselfWithoutTheTitlesItem) {
  button->setPullsDown(true);
  user.click(*window, {20, 110});
  EXPECT_THAT(entryTitles(), ElementsAre("Medium", "Large"));
  EXPECT_EQ(desktop.openMenu()->place.entry, std::nullopt);
  EXPECT_EQ(entries()[0].mark, MenuMark::None);
  choose(1);
  EXPECT_EQ(button->title(), "Small");
  EXPECT_THAT(button->indexOfSelectedItem(), Optional(2u));
  EXPECT_EQ(target->acts, 1);
  EXPECT_FALSE(button->itemAtIndex(0)->isHidden());
  button->setTitle("Sizes");
  EXPECT_EQ(button->itemAtIndex(0)->title(), "Sizes");
}

TEST_F(NSPopUpButtonTest, TheMenusOwnWayToPerformAnItemSelectsItToo) {
  user.click(*window, {20, 110});
  closeMenu();
  button->menu()->performActionForItemAtIndex(1);
  EXPECT_EQ(button->title(), "Medium");
  EXPECT_EQ(target->acts, 1);
}

TEST_F(NSPopUpButtonTest, IsAPopUpButtonWithAValueToAssistiveClients) {
  EXPECT_EQ(cell().accessibilityRole(), NSAccessibilityPopUpButtonRole);
  EXPECT_EQ(cell().accessibilityValue(), AccessibilityValue("Small"));
  EXPECT_THAT(cell().accessibilityActionNames(), ElementsAre(NSAccessibilityPressAction, NSAccessibilityShowMenuAction));
  EXPECT_EQ(cell().accessibilityAttributeValue(NSAccessibilityExpandedAttribute), AccessibilityValue(false));
  cell().accessibilityPerformAction(NSAccessibilityPressAction);
  ASSERT_NE(desktop.openMenu(), nullptr);
  EXPECT_EQ(cell().accessibilityAttributeValue(NSAccessibilityExpandedAttribute), AccessibilityValue(true));
  int heard = 0;
  const auto token = accessibilityNotificationCenter().addObserverForName(
      NSAccessibilityValueChangedNotification, button->cell(), nullptr, [&](const Ref<NSNotification>&) { ++heard; });
  choose(1);
  button->selectItemAtIndex(2);
  accessibilityNotificationCenter().removeObserver(token);
  EXPECT_EQ(heard, 2);
  button->setPullsDown(true);
  EXPECT_EQ(cell().accessibilityRole(), NSAccessibilityMenuButtonRole);
}

TEST_F(NSPopUpButtonTest, IsDecodedWithItsItems) {
  NSCoder coder(R"({"cell": {"selectedIndex": 2, "items": [{"title": "One", "tag": 3}, {"separator": true},
                    {"title": "Two", "enabled": false}]}})");
  const auto decoded = make<NSPopUpButton>(coder);
  EXPECT_EQ(decoded->numberOfItems(), 3u);
  EXPECT_EQ(decoded->title(), "Two");
  EXPECT_EQ(decoded->itemAtIndex(0)->tag(), 3);
  EXPECT_TRUE(decoded->itemAtIndex(1)->isSeparatorItem());
  EXPECT_FALSE(decoded->itemAtIndex(2)->isEnabled());
  EXPECT_FALSE(decoded->pullsDown());
  decoded->setFrame({10, 50, 120, 24});
  window->contentView()->addSubview(decoded);
  decoded->performClick(nullptr);
  EXPECT_TRUE(entries()[0].isEnabled);
  EXPECT_FALSE(entries()[2].isEnabled);
}

TEST_F(NSPopUpButtonTest, ACopyOfTheCellHasItemsOfItsOwn) {
  button->selectItemAtIndex(1);
  button->itemAtIndex(1)->setTag(9);
  button->itemAtIndex(1)->setRepresentedObject(target);
  const auto copy = std::dynamic_pointer_cast<NSPopUpButtonCell>(cell().copy());
  EXPECT_THAT(copy->itemTitles(), ElementsAre("Small", "Medium", "Large"));
  EXPECT_EQ(copy->title(), "Medium");
  EXPECT_EQ(copy->selectedItem()->tag(), 9);
  EXPECT_EQ(copy->selectedItem()->representedObject(), target);
  EXPECT_NE(copy->selectedItem(), button->selectedItem());
  copy->selectItemAtIndex(0);
  EXPECT_EQ(button->title(), "Medium");
  button->selectItemAtIndex(std::nullopt);
  cell().setAltersStateOfSelectedItem(false);
  const auto other = std::dynamic_pointer_cast<NSPopUpButtonCell>(cell().copy());
  EXPECT_EQ(other->indexOfSelectedItem(), std::nullopt);
  EXPECT_FALSE(other->altersStateOfSelectedItem());
}

TEST_F(NSPopUpButtonTest, TheItemsOfACopyAreLikeTheOriginals) {
  const Ref<NSMenu> menu = button->menu();
  menu->setAutoenablesItems(false);
  menu->setMinimumWidth(150);
  menu->addItem(NSMenuItem::separatorItem());
  const auto item = make<NSMenuItem>("Extra", "", "k");
  item->setKeyEquivalentModifierMask(NSEventModifierFlagControl);
  item->setImage(make<NSImage>(CGSize{8, 8}));
  item->setState(NSControlStateValueOn);
  item->setIndentationLevel(2);
  item->setHidden(true);
  item->setEnabled(false);
  item->setSubmenu(make<NSMenu>("sub"));
  item->submenu()->addItemWithTitle("Within", "");
  menu->addItem(item);
  const auto copy = std::dynamic_pointer_cast<NSPopUpButtonCell>(cell().copy());
  EXPECT_FALSE(copy->menu()->autoenablesItems());
  EXPECT_EQ(copy->menu()->minimumWidth(), 150);
  EXPECT_TRUE(copy->itemAtIndex(3)->isSeparatorItem());
  const NSMenuItem& like = *copy->itemAtIndex(4);
  EXPECT_EQ(like.keyEquivalent(), "k");
  EXPECT_EQ(like.keyEquivalentModifierMask(), NSEventModifierFlagControl);
  EXPECT_EQ(like.image(), item->image());
  EXPECT_EQ(like.state(), NSControlStateValueOn);
  EXPECT_EQ(like.indentationLevel(), 2);
  EXPECT_TRUE(like.isHidden());
  EXPECT_FALSE(like.isEnabled());
  ASSERT_TRUE(like.submenu());
  EXPECT_NE(like.submenu(), item->submenu());
  EXPECT_EQ(like.submenu()->itemAtIndex(0)->title(), "Within");
}

TEST_F(NSPopUpButtonTest, AnotherMenuComesWithItsFirstItemSelected) {
  const auto other = make<NSMenu>("other");
  other->addItemWithTitle("Red", "");
  button->selectItemAtIndex(std::nullopt);
  button->setMenu(other);
  EXPECT_EQ(button->menu(), other);
  EXPECT_EQ(button->title(), "Red");
  button->setMenu(nullptr);
  ASSERT_TRUE(button->menu());
  EXPECT_EQ(button->numberOfItems(), 0u);
}

TEST_F(NSPopUpButtonTest, IsDecodedAsAPullDownWithATitleAtTheLeft) {
  NSCoder coder(R"({"cell": {"pullsDown": true, "selectedIndex": 7, "items": [{"title": "One"}, {"title": "Two"}]}})");
  const auto decoded = make<NSPopUpButton>(coder);
  EXPECT_TRUE(decoded->pullsDown());
  EXPECT_EQ(decoded->cell()->alignment(), NSTextAlignmentLeft);
  EXPECT_EQ(decoded->cell()->lineBreakMode(), NSLineBreakByTruncatingTail);
  EXPECT_THAT(decoded->indexOfSelectedItem(), Optional(0u)) << "there is no eighth item";
}

TEST_F(NSPopUpButtonTest, ItemsSendTheActionOfTheControlWhoseMenuWasOpened) {
  user.click(*window, {20, 110});
  closeMenu();
  const auto other = make<NSPopUpButton>(CGRect{10, 50, 120, 24});
  const auto otherTarget = make<harness::ActionProbe>();
  other->setTarget(otherTarget);
  other->setAction("act:");
  window->contentView()->addSubview(other);
  // A copy of a cell that was open, and then its very menu.
  other->setCell(cell().copy());
  user.click(*window, {20, 60});
  choose(1);
  EXPECT_EQ(other->title(), "Medium");
  EXPECT_EQ(otherTarget->acts, 1);
  other->setMenu(button->menu());
  user.click(*window, {20, 60});
  choose(2);
  EXPECT_EQ(other->title(), "Large");
  EXPECT_EQ(otherTarget->acts, 2);
  EXPECT_EQ(target->acts, 0);
}

TEST_F(NSPopUpButtonTest, AnItemThatIsRemovedWhileTheMenuIsOpenIsNotChosen) {
  user.click(*window, {20, 110});
  button->removeItemAtIndex(1);
  choose(1);
  EXPECT_EQ(button->title(), "Small");
  EXPECT_EQ(target->acts, 0);
}

namespace {

// Gives the menu its items only when it opens.
class MenuFiller : public NSObject, public NSMenuDelegate {
 public:
  void menuNeedsUpdate(NSMenu& menu) override {
    menu.removeAllItems();
    for (const char* title : {"Speakers", "Headphones"}) menu.addItem(make<NSMenuItem>(title));
  }
};

}  // namespace

TEST_F(NSPopUpButtonTest, AnItemThatIsRemovedWhenTheMenuHasClosedStillSendsTheAction) {
  class Emptier : public NSObject, public NSMenuDelegate {
   public:
    void menuDidClose(NSMenu& menu) override { menu.removeAllItems(); }
  };
  const auto emptier = make<Emptier>();
  button->menu()->setDelegate(emptier);
  user.click(*window, {20, 110});
  choose(1);
  EXPECT_EQ(target->acts, 1);
  EXPECT_EQ(button->selectedItem(), nullptr);
  EXPECT_EQ(button->menu()->chosenItem(), nullptr) << "no longer than that";
}

TEST_F(NSPopUpButtonTest, ItemsThatTheDelegateAddsAtTheOpeningAreLikeTheOthers) {
  const auto filler = make<MenuFiller>();
  button->menu()->setDelegate(filler);
  user.click(*window, {20, 110});
  EXPECT_THAT(entryTitles(), ElementsAre("Speakers", "Headphones"));
  EXPECT_TRUE(entries()[0].isEnabled && entries()[1].isEnabled);
  EXPECT_EQ(entries()[0].mark, MenuMark::Check);
  EXPECT_EQ(desktop.openMenu()->place.entry, entries()[0].number);
  choose(1);
  EXPECT_EQ(button->title(), "Headphones");
  EXPECT_EQ(target->acts, 1);
  button->setPullsDown(true);
  user.click(*window, {20, 110});
  EXPECT_THAT(entryTitles(), ElementsAre("Headphones"));
}

TEST_F(NSPopUpButtonTest, IsAsWideAsItsWidestTitleNeeds) {
  EXPECT_EQ(button->intrinsicContentSize(), (CGSize{10 + 6 * 6.5 + 22, 15.6 + 8}));
}

TEST_F(NSPopUpButtonTest, DrawsABoxTheArrowsAndTheTitle) {
  const auto lines = harness::recordingOf([&] { button->drawRect({}); });
  EXPECT_THAT(harness::only("fill", lines), ElementsAre(HasSubstr(R"(["roundedRect",0.5,0.5,119,23,5,5])")));
  EXPECT_THAT(harness::only("stroke", lines),
              ElementsAre(HasSubstr("roundedRect"), HasSubstr(R"([["M",104.5,10],["L",108,6.5],["L",111.5,10],)"
                                                              R"(["M",104.5,14],["L",108,17.5],["L",111.5,14]])")));
  EXPECT_EQ(harness::only("glyphs", lines).size(), 1u);
  button->setPullsDown(true);
  EXPECT_THAT(harness::only("stroke", harness::recordingOf([&] { button->drawRect({}); })).back(),
              HasSubstr(R"([["M",104.5,10.5],["L",108,14],["L",111.5,10.5]])"));
}

TEST_F(NSPopUpButtonTest, APullDownThatGoesWhileItsMenuIsOpenLeavesNoItemOfAProgramsMenuHidden) {
  const Ref<NSMenu> menu = button->menu();
  button->setPullsDown(true);
  button->performClick(nullptr);
  ASSERT_TRUE(menu->itemAtIndex(0)->isHidden());
  button->removeFromSuperview();
  button.reset();
  desktop.settle();
  EXPECT_FALSE(menu->itemAtIndex(0)->isHidden());
}
