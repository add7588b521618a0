#include "tessaluna/uikit/startup/ProgressMonitorView.h"

#include <gmock/gmock.h>

#include <limits>

#include "tessaluna/platform/foundation/NSData.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/TextsScope.h"
#include "tests/harness/printing.h"

using namespace tessaluna::platform;
using TessalunaUIKit::ProgressMonitorView;
using testing::ElementsAre;

namespace {

class ProgressMonitorViewTest : public harness::StillWorld {
 protected:
  NSProgressIndicator& bar() const { return dynamic_cast<NSProgressIndicator&>(*view->subviews()[0]); }
  NSTextField& label() const { return dynamic_cast<NSTextField&>(*view->subviews()[1]); }
  Ref<NSDictionary> record(std::string_view task) const { return view->backgroundTasks()->objectForKey<NSDictionary>(task); }
  double number(std::string_view task, std::string_view name) const {
    return record(task)->objectForKey<NSNumber>(name)->doubleValue();
  }
  const void* semaphoreOf(std::string_view task) const {
    const void* pointer = nullptr;
    record(task)->objectForKey<NSData>("abortSem")->getBytes(&pointer, sizeof pointer);
    return pointer;
  }
  // Whether there is a number beside the bar, and which.
  std::string shownCount() const { return label().isHidden() ? "hidden" : label().stringValue(); }

  Ref<ProgressMonitorView> view = make<ProgressMonitorView>(CGRect{5, 6, 200, 24});
  const int first = 1, second = 2;  // semaphores
};

}  // namespace

TEST_F(ProgressMonitorViewTest, IsMadeHiddenWithABarAndALabel) {
  EXPECT_TRUE(view->isHidden());
  ASSERT_EQ(view->subviews().size(), 2u);
  EXPECT_EQ(bar().frame(), (CGRect{0, 8, 184, 8}));
  EXPECT_EQ(bar().style(), NSProgressIndicatorStyleBar);
  EXPECT_EQ(bar().controlTint(), NSBlueControlTint);
  EXPECT_FALSE(bar().isIndeterminate());
  EXPECT_EQ(label().frame(), (CGRect{186, 6, 14, 14}));
  EXPECT_EQ(label().stringValue(), "1");
  EXPECT_EQ(label().textColor(), NSColor::blueColor());
  EXPECT_FALSE(label().cell()->isBezeled());
  EXPECT_EQ(label().cell()->alignment(), NSTextAlignmentCenter);
  EXPECT_FALSE(dynamic_cast<NSTextFieldCell&>(*label().cell()).drawsBackground());
  EXPECT_FALSE(label().isHidden());
  EXPECT_FALSE(label().isEditable());
  EXPECT_EQ(view->backgroundTasks()->count(), 0u);
}

TEST_F(ProgressMonitorViewTest, TheCountHasAllOfTheLabelAndStaysOnOneLine) {
  const auto& cell = dynamic_cast<NSTextFieldCell&>(*label().cell());
  EXPECT_EQ(cell.drawingRectForBounds({0, 0, 14, 14}), (CGRect{0, 0, 14, 14}));
  EXPECT_EQ(cell.lineBreakMode(), NSLineBreakByClipping);
}

TEST_F(ProgressMonitorViewTest, TheLabelsFontIsTheNamedOneOrTheLabelFontOfItsSize) {
  EXPECT_EQ(label().font()->pointSize(), 10);
  if (const auto named = NSFont::fontWithName("Helvetica Neue", 10)) EXPECT_TRUE(label().font()->isEqual(named.get()));
  else EXPECT_TRUE(label().font()->isEqual(NSFont::labelFontOfSize(10).get()));
}

TEST_F(ProgressMonitorViewTest, WhereTheNamedFontIsInstalledTheLabelHasIt) {
  const auto without = label().font();
  desktop.textEngine().addFamily("Helvetica Neue");
  view = make<ProgressMonitorView>(CGRect{5, 6, 200, 24});
  EXPECT_TRUE(label().font()->isEqual(NSFont::fontWithName("Helvetica Neue", 10).get()));
  EXPECT_FALSE(label().font()->isEqual(without.get()));
}

TEST_F(ProgressMonitorViewTest, FromAnInterfaceFileItIsTheSame) {
  TessalunaUIKit::registerInterfaceFileClasses();
  const auto contents = make<NSNib>(R"({"objects": [{"class": "TessalunaUIKit.ProgressMonitorView", "frame": [0, 0, 100, 20],
          "hidden": false}]})")
                            ->instantiateWithOwner(nullptr);
  ASSERT_EQ(contents.error, std::nullopt);
  view = std::dynamic_pointer_cast<ProgressMonitorView>(contents.topLevelObjects.at(0));
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(bar().frame(), (CGRect{0, 6, 84, 8}));
  view->addBackgroundTaskProgress("scan", 10, nullptr);
  EXPECT_FALSE(view->isHidden());
}

TEST_F(ProgressMonitorViewTest, ATaskShowsTheViewAndNoNumber) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  EXPECT_FALSE(view->isHidden());
  EXPECT_EQ(shownCount(), "hidden");
  EXPECT_EQ(bar().minValue(), 0);
  EXPECT_EQ(bar().maxValue(), 100);
  EXPECT_EQ(bar().doubleValue(), 0);
  EXPECT_THAT(record("scan")->allKeys(), ElementsAre("Length", "Pos", "abortSem"));
  EXPECT_EQ(number("scan", "Length"), 100);
  EXPECT_EQ(number("scan", "Pos"), 0);
  EXPECT_EQ(record("scan")->objectForKey<NSData>("abortSem")->length(), 8u);
  EXPECT_EQ(semaphoreOf("scan"), &first);
}

TEST_F(ProgressMonitorViewTest, TwoTasksOf100And300At50And150FillHalfOf400AndShow2) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->addBackgroundTaskProgress("import", 300, &second);
  view->setBackgroundTaskProgressPosition(50, "scan");
  view->setBackgroundTaskProgressPosition(150, "import");
  EXPECT_EQ(bar().maxValue(), 400);
  EXPECT_EQ(bar().doubleValue(), 200);
  EXPECT_EQ(shownCount(), "2");
}

TEST_F(ProgressMonitorViewTest, RemovingOneOfTwoTasksHidesTheLabelRescalesTheBarAndKeepsTheView) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->addBackgroundTaskProgress("import", 300, &second);
  view->setBackgroundTaskProgressPosition(50, "scan");
  view->setBackgroundTaskProgressPosition(150, "import");
  view->removeBackgroundTaskProgress("import");
  EXPECT_EQ(shownCount(), "hidden");
  EXPECT_EQ(bar().maxValue(), 100);
  EXPECT_EQ(bar().doubleValue(), 50);
  EXPECT_FALSE(view->isHidden());
}

TEST_F(ProgressMonitorViewTest, RemovingTheLastTaskHidesTheView) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(view->backgroundTasks()->count(), 0u);
  EXPECT_EQ(shownCount(), "hidden");
}

TEST_F(ProgressMonitorViewTest, AddingAndRemovingBeginTheBarAtZero) {
  bar().setMinValue(5);
  view->addBackgroundTaskProgress("scan", 100, &first);
  EXPECT_EQ(bar().minValue(), 0);
  bar().setMinValue(5);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_EQ(bar().minValue(), 0);
}

TEST_F(ProgressMonitorViewTest, ATaskOfLengthZeroShowsTheViewAndDoesNotKeepIt) {
  view->addBackgroundTaskProgress("endless", 0, &first);
  EXPECT_FALSE(view->isHidden());
  view->addBackgroundTaskProgress("scan", 100, &second);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_TRUE(view->isHidden());
  EXPECT_NE(record("endless"), nullptr);
}

TEST_F(ProgressMonitorViewTest, ANegativeTotalHidesTheViewToo) {
  view->addBackgroundTaskProgress("owed", -50, &first);
  view->addBackgroundTaskProgress("scan", 20, &second);
  EXPECT_FALSE(view->isHidden());
  view->removeBackgroundTaskProgress("nothing");
  EXPECT_TRUE(view->isHidden());
}

TEST_F(ProgressMonitorViewTest, AnyLengthAboveZeroKeepsTheViewAndSoDoesOneThatIsNotANumber) {
  for (const double length : {1e-300, std::numeric_limits<double>::quiet_NaN()}) {
    view->addBackgroundTaskProgress("odd", length, &first);
    view->removeBackgroundTaskProgress("nothing");
    EXPECT_FALSE(view->isHidden()) << length;
    view->removeBackgroundTaskProgress("odd");
    EXPECT_TRUE(view->isHidden()) << length;
  }
}

TEST_F(ProgressMonitorViewTest, AddingAKeyAgainShowsAViewThatWasHidden) {
  view->addBackgroundTaskProgress("endless", 0, &first);
  view->removeBackgroundTaskProgress("nothing");
  EXPECT_TRUE(view->isHidden());
  view->addBackgroundTaskProgress("endless", 10, &first);
  EXPECT_FALSE(view->isHidden());
}

TEST_F(ProgressMonitorViewTest, APositionDoesNotShowAHiddenView) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->setHidden(true);
  view->setBackgroundTaskProgressPosition(30, "scan");
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(bar().doubleValue(), 30);
}

TEST_F(ProgressMonitorViewTest, ARemovalShowsNoHiddenView) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->addBackgroundTaskProgress("import", 300, &second);
  view->setHidden(true);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(bar().maxValue(), 300);
}

TEST_F(ProgressMonitorViewTest, AFinishedTaskStaysUntilItIsRemoved) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->setBackgroundTaskProgressPosition(100, "scan");
  EXPECT_FALSE(view->isHidden());
  EXPECT_EQ(bar().doubleValue(), 100);
}

TEST_F(ProgressMonitorViewTest, ThePositionAloneMovesOnWithANewPosition) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  bar().setMaxValue(7);
  label().setHidden(false);
  view->setBackgroundTaskProgressPosition(30, "scan");
  EXPECT_EQ(bar().doubleValue(), 30);
  EXPECT_EQ(bar().maxValue(), 7);
  EXPECT_FALSE(label().isHidden());
}

TEST_F(ProgressMonitorViewTest, AnUnknownTaskIsIgnoredByAPositionAndHarmlessToRemove) {
  view->setBackgroundTaskProgressPosition(30, "nothing");
  EXPECT_TRUE(view->isHidden());
  EXPECT_EQ(view->backgroundTasks()->count(), 0u);
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->removeBackgroundTaskProgress("nothing");
  EXPECT_FALSE(view->isHidden());
  EXPECT_EQ(bar().maxValue(), 100);
}

TEST_F(ProgressMonitorViewTest, AddingAKeyTwiceChangesItsLengthAndKeepsPositionAndTheFirstSemaphore) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->setBackgroundTaskProgressPosition(40, "scan");
  view->addBackgroundTaskProgress("scan", 200, &second);
  EXPECT_EQ(semaphoreOf("scan"), &first);
  EXPECT_EQ(bar().maxValue(), 200);
  EXPECT_EQ(bar().doubleValue(), 40);
  EXPECT_EQ(shownCount(), "hidden");
}

TEST_F(ProgressMonitorViewTest, RecordsAreReplacedAndOnlyTheFirstOfATaskIsImmutable) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  const Ref<NSDictionary> fresh = record("scan");
  EXPECT_EQ(std::dynamic_pointer_cast<NSMutableDictionary>(fresh), nullptr);
  view->setBackgroundTaskProgressPosition(40, "scan");
  EXPECT_NE(record("scan"), fresh);
  EXPECT_EQ(fresh->objectForKey<NSNumber>("Pos")->doubleValue(), 0);
  EXPECT_NE(std::dynamic_pointer_cast<NSMutableDictionary>(record("scan")), nullptr);
}

TEST_F(ProgressMonitorViewTest, BackgroundTasksIsTheLiveDictionary) {
  const Ref<NSMutableDictionary> tasks = view->backgroundTasks();
  view->addBackgroundTaskProgress("scan", 100, &first);
  EXPECT_EQ(tasks->count(), 1u);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_EQ(tasks->count(), 0u);
  EXPECT_EQ(view->backgroundTasks(), tasks);
}

TEST_F(ProgressMonitorViewTest, TheSemaphoreIsNotKeptAlive) {
  auto semaphore = make<NSObject>();
  const WeakRef<NSObject> weak = semaphore;
  view->addBackgroundTaskProgress("scan", 100, semaphore.get());
  EXPECT_EQ(semaphoreOf("scan"), semaphore.get());
  semaphore.reset();
  EXPECT_TRUE(weak.expired());
}

TEST_F(ProgressMonitorViewTest, ToAssistiveClientsItIsAGroupCalledByItsTasksAndPercent) {
  EXPECT_EQ(view->accessibilityRole(), "AXGroup");
  EXPECT_EQ(view->accessibilityTitle(), "0 tasks, 0 percent");
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->setBackgroundTaskProgressPosition(10, "scan");
  EXPECT_EQ(view->accessibilityTitle(), "1 task, 10 percent");
  view->addBackgroundTaskProgress("import", 300, &second);
  view->setBackgroundTaskProgressPosition(150, "import");
  EXPECT_EQ(view->accessibilityTitle(), "2 tasks, 40 percent");
  view->setBackgroundTaskProgressPosition(900, "import");
  EXPECT_EQ(view->accessibilityTitle(), "2 tasks, 100 percent");
  view->addBackgroundTaskProgress("scan", -900, &first);
  EXPECT_EQ(view->accessibilityTitle(), "2 tasks, 0 percent");
}

TEST_F(ProgressMonitorViewTest, ItsNameIsInTheUsersLanguage) {
  const harness::TextsScope german({{"task", "Aufgabe"}, {"tasks", "Aufgaben"}, {"percent", "Prozent"}});
  EXPECT_EQ(view->accessibilityTitle(), "0 Aufgaben, 0 Prozent");
  view->addBackgroundTaskProgress("scan", 100, &first);
  EXPECT_EQ(view->accessibilityTitle(), "1 Aufgabe, 0 Prozent");
}

TEST_F(ProgressMonitorViewTest, EveryTaskIsAProgressIndicatorToAssistiveClientsAsLongAsItIsThere) {
  const auto window = showWindowWith(view);
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->addBackgroundTaskProgress("import", 300, &second);
  view->setBackgroundTaskProgressPosition(50, "scan");
  const auto children = view->accessibilityChildren();
  ASSERT_TRUE(children && children->size() == 2);
  const Ref<NSObject> scan = children->at(1);
  const NSAccessibility& element = *accessibilityOf(scan);
  EXPECT_EQ(element.accessibilityRole(), "AXProgressIndicator");
  EXPECT_EQ(element.accessibilityTitle(), "scan");
  EXPECT_EQ(element.accessibilityAttributeValue(NSAccessibilityValueAttribute), AccessibilityValue(50.0));
  EXPECT_EQ(element.accessibilityAttributeValue(NSAccessibilityMinValueAttribute), AccessibilityValue(0.0));
  EXPECT_EQ(element.accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(100.0));
  EXPECT_EQ(element.accessibilityParent(), view);
  EXPECT_EQ(element.accessibilityFrame(), view->accessibilityFrame());
  // The same one at each question.
  EXPECT_EQ(view->accessibilityChildren()->at(1), scan);
  view->removeBackgroundTaskProgress("scan");
  EXPECT_EQ(view->accessibilityChildren()->size(), 1u);
  EXPECT_EQ(element.accessibilityParent(), nullptr);
  EXPECT_TRUE(element.accessibilityValue().isAbsent());
}

TEST_F(ProgressMonitorViewTest, ATaskThatComesBackIsANewElement) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  const Ref<NSObject> earlier = view->accessibilityChildren()->at(0);
  view->removeBackgroundTaskProgress("scan");
  view->addBackgroundTaskProgress("scan", 50, &first);
  const Ref<NSObject> later = view->accessibilityChildren()->at(0);
  EXPECT_NE(later, earlier);
  EXPECT_EQ(accessibilityOf(later)->accessibilityAttributeValue(NSAccessibilityMaxValueAttribute), AccessibilityValue(50.0));
}

TEST_F(ProgressMonitorViewTest, ATaskMayBeRemovedByTheKeyInTheLiveDictionary) {
  view->addBackgroundTaskProgress("a name too long to be kept in place by a string", 100, &first);
  const Ref<NSObject> task = view->accessibilityChildren()->at(0);
  view->removeBackgroundTaskProgress(view->backgroundTasks()->entries().begin()->first);
  EXPECT_EQ(accessibilityOf(task)->accessibilityParent(), nullptr);
}

TEST_F(ProgressMonitorViewTest, ToAssistiveClientsATaskWithoutEndIsAtItsBeginning) {
  const double endless = std::numeric_limits<double>::infinity();
  view->addBackgroundTaskProgress("scan", endless, &first);
  view->setBackgroundTaskProgressPosition(endless, "scan");
  EXPECT_EQ(view->accessibilityTitle(), "1 task, 0 percent");
}

TEST_F(ProgressMonitorViewTest, AnElementMayOutliveTheView) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  const Ref<NSObject> scan = view->accessibilityChildren()->at(0);
  view.reset();
  EXPECT_EQ(accessibilityOf(scan)->accessibilityParent(), nullptr);
  EXPECT_TRUE(accessibilityOf(scan)->accessibilityValue().isAbsent());
}

TEST_F(ProgressMonitorViewTest, ChangesOfTheViewAndOfTasksThatTheyHaveMetAreReportedToAssistiveClients) {
  view->addBackgroundTaskProgress("scan", 100, &first);
  view->addBackgroundTaskProgress("import", 100, &first);
  const Ref<NSObject> scan = view->accessibilityChildren()->at(1);
  std::vector<std::string> heard;
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName("", nullptr, nullptr, [&](const Ref<NSNotification>& notification) {
    if (notification->object() == view) heard.push_back("view " + notification->name());
    if (notification->object() == scan) heard.push_back("scan " + notification->name());
  });
  view->setBackgroundTaskProgressPosition(10, "scan");
  view->addBackgroundTaskProgress("copy", 100, nullptr);
  view->removeBackgroundTaskProgress("scan");
  center.removeObserver(token);
  EXPECT_THAT(heard, ElementsAre("view AXTitleChanged", "scan AXValueChanged", "view AXTitleChanged", "view AXTitleChanged",
                                 "scan AXUIElementDestroyed"));
}

TEST_F(ProgressMonitorViewTest, AClientMayReleaseTheViewAsItsBarOrItsNameChanges) {
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName("", nullptr, nullptr, [&](const Ref<NSNotification>&) { view.reset(); });
  const auto operations = {
      +[](ProgressMonitorView& one) { one.addBackgroundTaskProgress("import", 100, nullptr); },
      +[](ProgressMonitorView& one) { one.setBackgroundTaskProgressPosition(10, "scan"); },
      +[](ProgressMonitorView& one) { one.removeBackgroundTaskProgress("scan"); },
  };
  for (const auto operation : operations) {
    view = make<ProgressMonitorView>(CGRect{5, 6, 200, 24});
    const Ref<NSMutableDictionary> tasks = view->backgroundTasks();
    tasks->setObjectForKey(make<NSDictionary>(NSDictionary::Entries{{"Length", make<NSNumber>(100)}}), "scan");
    view->accessibilityChildren();
    const Ref<NSView> itsBar = view->subviews()[0];
    operation(*view);
    EXPECT_EQ(view, nullptr);
    EXPECT_EQ(itsBar->superview(), nullptr);
  }
  center.removeObserver(token);
}

TEST_F(ProgressMonitorViewTest, AClientMayRemoveTheTaskThatMovesByTheKeyInTheLiveDictionary) {
  view->addBackgroundTaskProgress("a name too long to be kept in place by a string", 100, &first);
  const Ref<NSObject> task = view->accessibilityChildren()->at(0);
  auto& center = accessibilityNotificationCenter();
  const auto token = center.addObserverForName(
      "", nullptr, nullptr, [&](const Ref<NSNotification>&) { view->backgroundTasks()->removeAllObjects(); });
  view->setBackgroundTaskProgressPosition(10, view->backgroundTasks()->entries().begin()->first);
  center.removeObserver(token);
  EXPECT_EQ(accessibilityOf(task)->accessibilityParent(), nullptr);
}
