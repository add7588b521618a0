#include "tessaluna/platform/foundation/NSUndoManager.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace tessaluna::platform;

namespace {

// A number whose changes can be taken back.
class NSUndoManagerTest : public testing::Test {
 protected:
  void set(int value) {
    manager->registerUndo([this, before = number] { set(before); });
    number = value;
  }
  int number = 0;
  Ref<NSUndoManager> manager = make<NSUndoManager>();
};

}  // namespace

TEST_F(NSUndoManagerTest, StepsAreTakenBackAndMadeAgainOneByOne) {
  set(1);
  set(2);
  manager->undo();
  EXPECT_EQ(number, 1);
  manager->undo();
  EXPECT_EQ(number, 0);
  EXPECT_FALSE(manager->canUndo());
  manager->undo();
  EXPECT_EQ(number, 0);
  manager->redo();
  manager->redo();
  EXPECT_EQ(number, 2);
  EXPECT_FALSE(manager->canRedo());
  manager->undo();
  EXPECT_EQ(number, 1);
}

TEST_F(NSUndoManagerTest, WhatWasUndoneMayBeForgotten) {
  set(1);
  set(2);
  manager->undo();
  manager->removeRedoActions();
  EXPECT_FALSE(manager->canRedo());
  manager->undo();
  EXPECT_EQ(number, 0);
}

TEST_F(NSUndoManagerTest, WhileAStepIsTakenBackNothingIsForgotten) {
  manager->registerUndo([this] { manager->removeRedoActions(); });
  set(1);
  manager->undo();
  manager->undo();
  manager->redo();
  EXPECT_EQ(number, 1);
}

TEST_F(NSUndoManagerTest, AGroupIsOneStep) {
  manager->beginUndoGrouping();
  set(1);
  manager->beginUndoGrouping();
  set(2);
  manager->endUndoGrouping();
  manager->endUndoGrouping();
  set(3);
  manager->undo();
  EXPECT_EQ(number, 2);
  manager->undo();
  EXPECT_EQ(number, 0);
  manager->redo();
  EXPECT_EQ(number, 2);
}

TEST_F(NSUndoManagerTest, UndoEndsTheGroupThatIsOpen) {
  set(1);
  manager->beginUndoGrouping();
  set(2);
  set(3);
  EXPECT_TRUE(manager->canUndo());
  manager->undo();
  EXPECT_EQ(number, 1);
  EXPECT_TRUE(manager->canRedo());
  manager->undo();
  EXPECT_EQ(number, 0);
  EXPECT_FALSE(manager->canUndo());
}

TEST_F(NSUndoManagerTest, WhatAnUndoRegistersIsNothingToUndoWhileItRuns) {
  bool canUndo = true;
  manager->beginUndoGrouping();
  manager->registerUndo([&] { canUndo = manager->canUndo(); });
  manager->registerUndo([this] { manager->registerUndo([] {}); });
  manager->undo();
  EXPECT_FALSE(canUndo);
}

TEST_F(NSUndoManagerTest, UndoWithinAGroupOfAGroupStopsTheProgram) {
  manager->beginUndoGrouping();
  manager->beginUndoGrouping();
  EXPECT_DEATH(manager->undo(), "NSUndoManager: undo was asked for within a group that is in another one");
}

TEST_F(NSUndoManagerTest, AnEmptyGroupIsNotAStep) {
  manager->beginUndoGrouping();
  manager->endUndoGrouping();
  EXPECT_FALSE(manager->canUndo());
  manager->endUndoGrouping();  // one too many
  set(1);
  EXPECT_TRUE(manager->canUndo());
}

TEST_F(NSUndoManagerTest, ANewChangeForgetsWhatCouldBeRedone) {
  set(1);
  manager->undo();
  EXPECT_TRUE(manager->canRedo());
  set(5);
  EXPECT_FALSE(manager->canRedo());
  manager->removeAllActions();
  EXPECT_FALSE(manager->canUndo());
}

TEST_F(NSUndoManagerTest, AnActionMayLetTheManagerGo) {
  NSUndoManager& bare = *manager;
  manager->registerUndo([this] { manager = nullptr; });
  bare.undo();
  EXPECT_EQ(manager, nullptr);
}

TEST_F(NSUndoManagerTest, AfterAnActionThatThrowsTheStepsBeforeItCanBeTakenBack) {
  set(1);
  manager->registerUndo([] { throw std::runtime_error("refused"); });
  EXPECT_THROW(manager->undo(), std::runtime_error);
  EXPECT_FALSE(manager->isUndoing());
  manager->undo();
  EXPECT_EQ(number, 0);
}
