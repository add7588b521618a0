#include "tessaluna/platform/menus/NSMenu.h"

#include <gmock/gmock.h>

#include "tessaluna/platform/graphics/NSImage.h"
#include "tests/harness/PlayingView.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using harness::PlayingView;
using tessaluna::backend::MenuEntry;
using tessaluna::backend::MenuMark;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Log = std::vector<std::string>;

// Has the action "play:", and writes down which item sent it.
class MenuPlayer : public NSObject, public NSMenuItemValidation {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }
  void play(NSObject* sender) { log.push_back("play " + dynamic_cast<NSMenuItem&>(*sender).title()); }
  bool validateMenuItem(NSMenuItem& item) override { return item.title() != forbidden; }
  Log log;
  std::string forbidden;
};
constexpr Selector playerSelectors[] = {action<&MenuPlayer::play>("play:")};
const ClassInfo MenuPlayer::staticClassInfo{
    .name = "Tests.MenuPlayer", .base = &NSObject::staticClassInfo, .selectors = playerSelectors};

class ListeningDelegate : public NSObject, public NSMenuDelegate {
 public:
  explicit ListeningDelegate(Log& log) : log_(log) {}
  void menuNeedsUpdate(NSMenu& menu) override {
    log_.push_back("update " + menu.title());
    if (onUpdate) onUpdate();
  }
  void menuWillOpen(NSMenu& menu) override {
    log_.push_back("open " + menu.title());
    if (onOpen) onOpen();
  }
  void menuDidClose(NSMenu& menu) override { log_.push_back("close " + menu.title()); }
  std::function<void()> onUpdate, onOpen;

 private:
  Log& log_;
};

class NSMenuTest : public harness::StillWorld {
 protected:
  NSMenuTest() {
    window = showWindowWith(view);
    for (const char* title : {"first", "second", "third"}) menu->addItemWithTitle(title, "play:")->setTarget(player);
  }
  bool open(const Ref<NSMenuItem>& item = nullptr) {
    return menu->popUpMenuPositioningItem(item, {10, 20}, view.get(), [this](const Ref<NSMenuItem>& chosen) {
      player->log.push_back(chosen ? "chosen " + chosen->title() : "nothing chosen");
    });
  }
  const std::vector<MenuEntry>& entries() const { return desktop.openMenu()->entries; }
  Log titles() const {
    Log result;
    for (const MenuEntry& entry : entries()) result.push_back(entry.title);
    return result;
  }
  std::vector<bool> enabled() const {
    std::vector<bool> result;
    for (const MenuEntry& entry : entries()) result.push_back(entry.isEnabled);
    return result;
  }
  void choose(std::optional<std::size_t> number) {
    desktop.chooseFromMenu(number);
    desktop.settle();
  }

  Ref<NSView> view = make<NSView>(CGRect{30, 40, 100, 50});
  Ref<NSWindow> window;
  Ref<MenuPlayer> player = make<MenuPlayer>();
  Ref<NSMenu> menu = make<NSMenu>("Menu");
};

using NSMenuDeathTest = NSMenuTest;

}  // namespace

TEST_F(NSMenuTest, OpensAtAPointOfAViewAndReturnsAtOnce) {
  EXPECT_TRUE(open());
  ASSERT_TRUE(desktop.openMenu());
  EXPECT_TRUE(menu->isOpen());
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{100 + 30 + 10, 100 + 40 + 20, 0, 0}));
  EXPECT_EQ(desktop.openMenu()->place.entry, std::nullopt);
  EXPECT_THAT(titles(), ElementsAre("first", "second", "third"));
  EXPECT_THAT(player->log, IsEmpty());
}

TEST_F(NSMenuTest, WithoutAViewThePointIsOnTheScreen) {
  EXPECT_TRUE(menu->popUpMenuPositioningItem(nullptr, {300, 400}, nullptr));
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{300, 400, 0, 0}));
}

TEST_F(NSMenuTest, AnItemMayBeAtThePoint) {
  menu->itemAtIndex(0)->setHidden(true);
  open(menu->itemAtIndex(2));
  ASSERT_TRUE(desktop.openMenu()->place.entry);
  EXPECT_EQ(entries()[1].number, desktop.openMenu()->place.entry);
  EXPECT_EQ(entries()[1].title, "third");
}

TEST_F(NSMenuTest, AnItemThatIsHiddenOrOfAnotherMenuIsAtNoPoint) {
  menu->itemAtIndex(1)->setHidden(true);
  open(menu->itemAtIndex(1));
  EXPECT_EQ(desktop.openMenu()->place.entry, std::nullopt);
  open(make<NSMenuItem>("stranger"));
  EXPECT_EQ(desktop.openMenu()->place.entry, std::nullopt);
}

TEST_F(NSMenuTest, OverARectangleItIsAtLeastAsWide) {
  EXPECT_TRUE(menu->popUpMenuPositioningItemOverRect(menu->itemAtIndex(1), {10, 5, 80, 24}, *view));
  EXPECT_EQ(desktop.openMenu()->place.over, (CGRect{140, 145, 80, 24}));
  EXPECT_EQ(desktop.openMenu()->place.entry, entries()[1].number);
  EXPECT_EQ(desktop.openMenu()->place.minimumWidth, 80);
  menu->setMinimumWidth(200);
  menu->popUpMenuPositioningItemOverRect(nullptr, {10, 5, 80, 24}, *view);
  EXPECT_EQ(desktop.openMenu()->place.minimumWidth, 200);
}

TEST_F(NSMenuTest, AnItemMayHaveNoAction) {
  const auto menu = make<NSMenu>();
  const auto item = menu->addItemWithTitle("Heading", nullptr);
  EXPECT_EQ(item->action(), "");
  EXPECT_EQ(menu->itemArray().back(), item);
}

TEST_F(NSMenuTest, TheChosenItemIsTheSenderOfItsActionAfterTheMenuHasClosed) {
  const auto delegate = make<ListeningDelegate>(player->log);
  menu->setDelegate(delegate);
  open();
  choose(1);
  EXPECT_THAT(player->log, ElementsAre("update Menu", "open Menu", "close Menu", "chosen second", "play second"));
  EXPECT_FALSE(menu->isOpen());
}

TEST_F(NSMenuTest, ClosedWithoutAChoiceItSendsNothing) {
  open();
  choose(std::nullopt);
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
  EXPECT_FALSE(menu->isOpen());
}

TEST_F(NSMenuTest, CancelledItClosesWithoutAChoice) {
  open();
  menu->cancelTracking();
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_THAT(player->log, IsEmpty());
  desktop.settle();
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
  EXPECT_FALSE(menu->isOpen());
  menu->cancelTracking();
}

TEST_F(NSMenuTest, CancelledByTheDelegateThatHearsOfItsOpeningItNeverShows) {
  const auto delegate = make<ListeningDelegate>(player->log);
  menu->setTitle("menu");
  menu->setDelegate(delegate);
  delegate->onOpen = [&] {
    EXPECT_TRUE(menu->isOpen());
    menu->cancelTracking();
  };
  EXPECT_TRUE(open());
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_THAT(player->log, ElementsAre("update menu", "open menu"));
  desktop.settle();
  EXPECT_THAT(player->log, ElementsAre("update menu", "open menu", "close menu", "nothing chosen"));
  EXPECT_FALSE(menu->isOpen());
}

TEST_F(NSMenuTest, AWindowThatItsDelegateHidesShowsNoMenu) {
  const auto delegate = make<ListeningDelegate>(player->log);
  menu->setDelegate(delegate);
  delegate->onOpen = [&] { window->orderOut(nullptr); };
  EXPECT_TRUE(open());
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_THAT(player->log, ElementsAre("update Menu", "open Menu", "close Menu", "nothing chosen"));
  player->log.clear();
  delegate->onOpen = nullptr;
  window->orderFront(nullptr);
  delegate->onUpdate = [&] { window->orderOut(nullptr); };
  EXPECT_FALSE(open());
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_THAT(player->log, ElementsAre("update Menu"));
}

TEST_F(NSMenuTest, CancellingOneThatHasClosedLeavesAnotherOpen) {
  open();
  const auto other = make<NSMenu>();
  other->setAutoenablesItems(false);
  other->addItemWithTitle("other", "");
  other->popUpMenuPositioningItem(nullptr, {}, view.get());
  menu->cancelTracking();
  desktop.settle();
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
  EXPECT_TRUE(other->isOpen());
  EXPECT_THAT(titles(), ElementsAre("other"));
}

TEST_F(NSMenuTest, OpenedAgainWhileOpenItClosesAndStaysOpenInTheNewPlace) {
  open();
  open();
  desktop.settle();
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
  EXPECT_TRUE(menu->isOpen());
  choose(0);
  EXPECT_THAT(player->log, ElementsAre("nothing chosen", "chosen first", "play first"));
}

TEST_F(NSMenuTest, AMenuStaysAliveWhileItIsOpenAndNoLonger) {
  const WeakRef<NSMenu> weak = menu;
  open();
  menu = nullptr;
  EXPECT_FALSE(weak.expired());
  choose(0);
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(player->log, ElementsAre("chosen first", "play first"));
}

TEST_F(NSMenuTest, AMenuClosesWithItsWindow) {
  open();
  window->close();
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_FALSE(menu->isOpen());
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
}

TEST_F(NSMenuTest, AMenuStaysOpenWhileAnotherWindowCloses) {
  const auto other = showWindow();
  open();
  other->close();
  desktop.settle();
  EXPECT_TRUE(menu->isOpen());
}

TEST_F(NSMenuTest, TheWindowMayBeReleasedWhileTheMenuIsOpen) {
  open();
  window->close();
  window->setContentView(nullptr);
  window = nullptr;
  desktop.settle();
  EXPECT_THAT(player->log, ElementsAre("nothing chosen"));
}

TEST_F(NSMenuTest, AnActionMayReleaseTheMenuAndTheItem) {
  open();
  menu->removeAllItems();
  menu = nullptr;
  choose(2);
  EXPECT_THAT(player->log, ElementsAre("chosen third", "play third"));
}

TEST_F(NSMenuTest, WithoutAWindowOrAnythingToShowItDoesNotOpen) {
  view->removeFromSuperview();
  EXPECT_FALSE(open());
  window->contentView()->addSubview(view);
  for (const Ref<NSMenuItem>& item : menu->itemArray()) item->setHidden(true);
  EXPECT_FALSE(open());
  desktop.settle();
  EXPECT_FALSE(desktop.openMenu());
  EXPECT_FALSE(menu->isOpen());
  EXPECT_THAT(player->log, IsEmpty());
}

// What the desktop is told of the items.

TEST_F(NSMenuTest, EntriesShowWhatTheirItemsSay) {
  const auto image = NSImage::imageWithSize({16, 16}, false, [](CGRect) { return true; });
  menu->removeAllItems();
  const auto item = menu->addItemWithTitle("Love", "play:", "l");
  item->setImage(image);
  item->setState(NSControlStateValueMixed);
  item->setIndentationLevel(2);
  menu->addItem(NSMenuItem::separatorItem());
  menu->addItemWithTitle("Skip", "play:")->setState(NSControlStateValueOn);
  open();
  ASSERT_EQ(entries().size(), 3u);
  EXPECT_EQ(entries()[0].image, image);
  EXPECT_EQ(entries()[0].mark, MenuMark::Dash);
  EXPECT_EQ(entries()[0].indentation, 2);
  EXPECT_EQ(entries()[0].keyEquivalent, "l");
  EXPECT_EQ(entries()[0].keyEquivalentModifiers, NSEventModifierFlagCommand);
  EXPECT_TRUE(entries()[1].isSeparator);
  EXPECT_EQ(entries()[2].mark, MenuMark::Check);
}

TEST_F(NSMenuTest, ASubmenuIsAPartOfTheMenu) {
  const auto sub = make<NSMenu>("Sub");
  sub->addItemWithTitle("inner", "play:")->setTarget(player);
  menu->itemAtIndex(0)->setSubmenu(sub);
  EXPECT_EQ(sub->supermenu(), menu);
  open();
  ASSERT_TRUE(entries()[0].hasSubmenu);
  EXPECT_TRUE(entries()[0].isEnabled);
  ASSERT_EQ(entries()[0].submenu.size(), 1u);
  choose(entries()[0].submenu[0].number);
  EXPECT_THAT(player->log, ElementsAre("chosen inner", "play inner"));
}

TEST_F(NSMenuTest, TheDelegateMayChangeTheItemsBeforeTheyShow) {
  Log log;
  const auto delegate = make<ListeningDelegate>(log);
  delegate->onUpdate = [&] {
    menu->removeAllItems();
    menu->addItemWithTitle("fresh", "play:");
  };
  menu->setDelegate(delegate);
  open();
  EXPECT_THAT(titles(), ElementsAre("fresh"));
}

// Who can be chosen.

TEST_F(NSMenuTest, ASubmenuMayTakeItselfAwayWhenItIsAskedForChanges) {
  Log log;
  const auto delegate = make<ListeningDelegate>(log);
  const Ref<NSMenuItem> item = menu->itemAtIndex(0);
  item->setSubmenu(make<NSMenu>("sub"));
  item->submenu()->setDelegate(delegate);
  const WeakRef<NSMenu> sub = item->submenu();
  delegate->onUpdate = [&] {
    item->setSubmenu(nullptr);
    EXPECT_FALSE(sub.expired());
  };
  open();
  EXPECT_TRUE(sub.expired());
  EXPECT_THAT(titles(), ElementsAre("first", "second", "third"));
  EXPECT_FALSE(entries()[0].hasSubmenu);
}

TEST_F(NSMenuTest, AnItemWhoseTargetLacksTheActionCannotBeChosen) {
  menu->itemAtIndex(0)->setAction("rewind:");
  menu->itemAtIndex(1)->setAction("");
  open();
  EXPECT_THAT(enabled(), ElementsAre(false, false, true));
}

TEST_F(NSMenuTest, TheTargetSaysWhetherAnItemCanBeChosenNow) {
  player->forbidden = "second";
  open();
  EXPECT_THAT(enabled(), ElementsAre(true, false, true));
  player->forbidden = "";
  open();
  EXPECT_THAT(enabled(), ElementsAre(true, true, true));
}

TEST_F(NSMenuTest, AnUpdateFindsOutWhichItemsOfSubmenusCanBeChosen) {
  const auto sub = make<NSMenu>();
  const Ref<NSMenuItem> inner = sub->addItemWithTitle("inner", "play:");
  inner->setTarget(player);
  menu->itemAtIndex(0)->setSubmenu(sub);
  player->forbidden = "inner";
  menu->update();
  EXPECT_FALSE(inner->isEnabled());
  player->forbidden = "";
  menu->update();
  EXPECT_TRUE(inner->isEnabled());
  player->forbidden = "inner";
  open();
  EXPECT_FALSE(inner->isEnabled());
}

TEST_F(NSMenuTest, WithoutATargetTheResponderChainIsAsked) {
  const auto responder = make<PlayingView>(CGRect{0, 0, 10, 10});
  responder->acceptsFirst = true;
  menu->removeAllItems();
  menu->addItemWithTitle("play", "play:");
  open();
  EXPECT_THAT(enabled(), ElementsAre(false));
  window->contentView()->addSubview(responder);
  window->makeFirstResponder(responder.get());
  open();
  EXPECT_THAT(enabled(), ElementsAre(true));
  choose(0);
  EXPECT_EQ(responder->plays, 1);
}

TEST_F(NSMenuTest, AMenuThatDoesNotEnableItsItemsLeavesThemAsTheyWereSet) {
  menu->setAutoenablesItems(false);
  menu->itemAtIndex(0)->setAction("");
  menu->itemAtIndex(1)->setEnabled(false);
  open();
  EXPECT_THAT(enabled(), ElementsAre(true, false, true));
}

// Keys.

TEST_F(NSMenuTest, AKeyEquivalentSendsTheActionOfItsItem) {
  menu->itemAtIndex(1)->setKeyEquivalent("p");
  const auto key = [&](std::uint32_t modifiers) {
    return menu->performKeyEquivalent(make<NSEvent>(
        NSEvent::Fields{.type = NSEventType::KeyDown, .modifiers = modifiers, .charactersIgnoringModifiers = "p"}));
  };
  EXPECT_FALSE(key(0));
  EXPECT_TRUE(key(NSEventModifierFlagCommand));
  EXPECT_THAT(player->log, ElementsAre("play second"));
  menu->itemAtIndex(1)->setHidden(true);
  EXPECT_FALSE(key(NSEventModifierFlagCommand));
  menu->itemAtIndex(1)->setHidden(false);
  player->forbidden = "second";
  EXPECT_FALSE(key(NSEventModifierFlagCommand));
}

TEST_F(NSMenuTest, AKeyEquivalentIsFoundInASubmenu) {
  const auto sub = make<NSMenu>();
  sub->addItemWithTitle("inner", "play:", "i")->setTarget(player);
  menu->itemAtIndex(0)->setSubmenu(sub);
  EXPECT_TRUE(menu->performKeyEquivalent(make<NSEvent>(NSEvent::Fields{
      .type = NSEventType::KeyDown, .modifiers = NSEventModifierFlagCommand, .charactersIgnoringModifiers = "i"})));
  EXPECT_THAT(player->log, ElementsAre("play inner"));
}

TEST_F(NSMenuTest, AKeyEquivalentIsNotFoundInASubmenuThatNobodyCanOpen) {
  const auto sub = make<NSMenu>();
  sub->addItemWithTitle("inner", "play:", "i")->setTarget(player);
  const Ref<NSMenuItem> item = menu->itemAtIndex(0);
  item->setSubmenu(sub);
  const auto press = make<NSEvent>(NSEvent::Fields{
      .type = NSEventType::KeyDown, .modifiers = NSEventModifierFlagCommand, .charactersIgnoringModifiers = "i"});
  item->setHidden(true);
  EXPECT_FALSE(menu->performKeyEquivalent(press));
  item->setHidden(false);
  menu->setAutoenablesItems(false);
  item->setEnabled(false);
  EXPECT_FALSE(menu->performKeyEquivalent(press));
  EXPECT_THAT(player->log, IsEmpty());
  item->setEnabled(true);
  EXPECT_TRUE(menu->performKeyEquivalent(press));
}

TEST_F(NSMenuTest, PerformingAnItemIsWhatAChoiceDoes) {
  menu->performActionForItemAtIndex(2);
  menu->itemAtIndex(0)->setEnabled(false);
  menu->performActionForItemAtIndex(0);
  EXPECT_THAT(player->log, ElementsAre("play third"));
}

// The list.

TEST_F(NSMenuTest, ItemsAreInsertedFoundAndRemoved) {
  const auto item = make<NSMenuItem>("inserted");
  item->setTag(7);
  item->setRepresentedObject(player);
  menu->insertItem(item, 1);
  EXPECT_EQ(menu->numberOfItems(), 4u);
  EXPECT_EQ(menu->itemAtIndex(1), item);
  EXPECT_EQ(item->menu(), menu);
  EXPECT_EQ(menu->indexOfItem(*item), 1u);
  EXPECT_EQ(menu->itemWithTag(7), item);
  EXPECT_EQ(menu->itemWithTitle("inserted"), item);
  EXPECT_EQ(menu->itemWithTitle("nowhere"), nullptr);
  EXPECT_EQ(menu->indexOfItemWithRepresentedObject(player.get()), 1u);
  menu->removeItemAtIndex(1);
  EXPECT_EQ(item->menu(), nullptr);
  EXPECT_EQ(menu->indexOfItem(*item), std::nullopt);
}

TEST_F(NSMenuTest, AnItemOfAnotherMenuIsNotRemoved) {
  const auto other = make<NSMenu>("other");
  const auto stranger = other->addItemWithTitle("stranger", "play:");
  menu->removeItem(stranger);
  EXPECT_EQ(menu->numberOfItems(), 3u);
  EXPECT_EQ(stranger->menu(), other);
}

TEST_F(NSMenuTest, ItemsThatAreAllRemovedMayGoToAnotherMenu) {
  const auto first = menu->itemAtIndex(0);
  menu->removeAllItems();
  EXPECT_EQ(first->menu(), nullptr);
  const auto other = make<NSMenu>("other");
  other->addItem(first);
  EXPECT_EQ(first->menu(), other);
}

TEST_F(NSMenuTest, ASubmenuThatIsSetOnceMoreStaysTheItems) {
  const auto submenu = make<NSMenu>("sub");
  menu->itemAtIndex(0)->setSubmenu(submenu);
  menu->itemAtIndex(0)->setSubmenu(submenu);
  EXPECT_EQ(submenu->supermenu(), menu);
}

TEST_F(NSMenuTest, ASeparatorOrAnItemWithASubmenuHasNoKeyEquivalent) {
  const auto separator = NSMenuItem::separatorItem();
  const auto holder = make<NSMenuItem>("holder", "play:", "h");
  holder->setTarget(player);
  holder->setSubmenu(make<NSMenu>("sub"));
  separator->setTarget(player);
  separator->setAction("play:");
  separator->setKeyEquivalent("s");
  menu->setAutoenablesItems(false);
  menu->addItem(separator);
  menu->addItem(holder);
  const auto press = [&](const std::string& key) {
    return menu->performKeyEquivalent(make<NSEvent>(NSEvent::Fields{.type = NSEventType::KeyDown,
                                                                    .modifiers = NSEventModifierFlagCommand,
                                                                    .window = window,
                                                                    .characters = key,
                                                                    .charactersIgnoringModifiers = key}));
  };
  EXPECT_FALSE(press("s"));
  EXPECT_FALSE(press("h"));
  EXPECT_THAT(player->log, IsEmpty());
}

TEST_F(NSMenuDeathTest, WhatNoMenuCanBeStopsTheProgram) {
  const auto other = make<NSMenu>();
  EXPECT_DEATH(other->addItem(menu->itemAtIndex(0)), "an item of two menus");
  EXPECT_DEATH((void)menu->itemAtIndex(3), "no item at that index");
  EXPECT_DEATH(menu->insertItem(make<NSMenuItem>(), 4), "beyond the end");
  EXPECT_DEATH(menu->itemAtIndex(0)->setSubmenu(menu), "a menu within itself");
  const auto holder = make<NSMenuItem>();
  holder->setSubmenu(menu);
  EXPECT_DEATH(menu->addItem(holder), "a menu within itself");
  holder->setSubmenu(nullptr);
  EXPECT_DEATH(menu->itemAtIndex(0)->setIndentationLevel(-1), "negative indentation");
  menu->itemAtIndex(0)->setSubmenu(other);
  EXPECT_DEATH(menu->itemAtIndex(1)->setSubmenu(other), "a submenu of two menus");
}

TEST_F(NSMenuTest, AnIndentationOfMoreThanFifteenLevelsIsFifteen) {
  menu->itemAtIndex(0)->setIndentationLevel(40);
  EXPECT_EQ(menu->itemAtIndex(0)->indentationLevel(), 15);
}

TEST_F(NSMenuTest, ASubmenuThatIsTakenAwayMayGoToAnotherItem) {
  const auto sub = make<NSMenu>();
  menu->itemAtIndex(0)->setSubmenu(sub);
  menu->itemAtIndex(0)->setSubmenu(nullptr);
  EXPECT_EQ(sub->supermenu(), nullptr);
  menu->itemAtIndex(1)->setSubmenu(sub);
  EXPECT_EQ(sub->supermenu(), menu);
}
