#include "tessaluna/backends/qt/inputEvents.h"

#include <QApplication>
#include <QClipboard>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QShortcut>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/NSTextInputClient.h"
#include "tessaluna/platform/events/NSTrackingArea.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tests/backends/qt/QtTest.h"

namespace tessaluna::backend::qt {

using namespace tessaluna::platform;

namespace {

// A field in a window of ours, or in a widget of a program.
class inputEventsTest : public QtTest {
 protected:
  QWindow& showInWindow() {
    window = make<NSWindow>(CGRect{100, 200, 200, 100}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
    window->contentView()->addSubview(field);
    window->makeKeyAndOrderFront(nullptr);
    settle();
    field->selectText(nullptr);
    return qWindowOf(*window);
  }
  QtViewWidget& showInWidget() {
    topLevel = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(topLevel.get());
    auto* widget = new QtViewWidget(field);
    layout->addWidget(widget);
    topLevel->show();
    topLevel->activateWindow();
    settle();
    field->selectText(nullptr);
    settle();
    return *widget;
  }

  static void compose(QObject& receiver, const QString& preedit, const QString& commit = {}) {
    QInputMethodEvent event(preedit, {});
    if (!commit.isNull()) event.setCommitString(commit);
    QCoreApplication::sendEvent(&receiver, &event);
  }
  static QVariant asked(QObject& receiver, Qt::InputMethodQuery query) {
    QInputMethodQueryEvent event(query);
    QCoreApplication::sendEvent(&receiver, &event);
    return event.value(query);
  }

  Ref<NSTextView> editor() const { return std::dynamic_pointer_cast<NSTextView>(field->currentEditor()); }

  Ref<NSWindow> window;
  std::unique_ptr<QWidget> topLevel;
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 20, 150, 24});
};

}  // namespace

TEST_F(inputEventsTest, KeysAreTyped) {
  QWindow& native = showInWindow();
  for (const char key : std::string("Abc 1")) QTest::keyClick(&native, key, key == 'A' ? Qt::ShiftModifier : Qt::NoModifier);
  QTest::keyClick(&native, Qt::Key_Backspace);
  QTest::keyClick(&native, Qt::Key_Home);
  QTest::keyClick(&native, Qt::Key_Delete);
  EXPECT_EQ(field->stringValue(), "bc ");
}

TEST_F(inputEventsTest, KeysAreTypedIntoAnEmbeddedField) {
  QtViewWidget& widget = showInWidget();
  ASSERT_TRUE(widget.hasFocus());
  QTest::keyClicks(&widget, "abc");
  QTest::keyClick(&widget, Qt::Key_Left, Qt::ControlModifier);
  QTest::keyClicks(&widget, "x");
  EXPECT_EQ(field->stringValue(), "xabc");
}

TEST_F(inputEventsTest, AThousandKeysAllArrive) {
  QWindow& native = showInWindow();
  std::string all;
  for (int i = 0; i < 1000; ++i) {
    const char key = static_cast<char>('a' + (i % 7 == 0 ? 0 : i % 26));
    QTest::keyClick(&native, key);
    if (i % 10 == 0) settle();
    all += key;
  }
  EXPECT_EQ(field->stringValue(), all);
}

TEST_F(inputEventsTest, TheClipboardIsTheDesktops) {
  QWindow& native = showInWindow();
  QApplication::clipboard()->setText("caf\u00E9");
  QTest::keyClick(&native, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(field->stringValue(), "caf\u00E9");
  QTest::keyClick(&native, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&native, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(field->stringValue(), "");
  EXPECT_EQ(QApplication::clipboard()->text(), "caf\u00E9");
  QTest::keyClick(&native, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->stringValue(), "caf\u00E9");
  QTest::keyClick(&native, Qt::Key_Insert, Qt::ControlModifier);
  QTest::keyClick(&native, Qt::Key_End);
  QTest::keyClick(&native, Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(field->stringValue(),
            "caf\u00E9"
            "caf\u00E9");
}

TEST_F(inputEventsTest, WhatIsComposedStandsInTheTextUntilItIsCommitted) {
  QWindow& native = showInWindow();
  compose(native, QString::fromUtf8("\u00B4"));
  EXPECT_TRUE(editor()->hasMarkedText());
  EXPECT_EQ(field->stringValue(), "\u00B4");
  compose(native, {}, QString::fromUtf8("\u00E9"));
  EXPECT_FALSE(editor()->hasMarkedText());
  EXPECT_EQ(field->stringValue(), "\u00E9");
  compose(native, QString::fromUtf8("ka"));
  compose(native, QString::fromUtf8(""));
  EXPECT_EQ(field->stringValue(), "\u00E9");
}

// An ibus engine decides in one event and clears what it showed in the next one.
TEST_F(inputEventsTest, IbusDecidesAndThenClears) {
  QWindow& native = showInWindow();
  compose(native, "ni");
  compose(native, QString::fromUtf8("你"));
  EXPECT_EQ(editor()->markedRange(), (NSRange{0, 1}));
  compose(native, {}, QString::fromUtf8("你"));
  compose(native, QString(""));
  EXPECT_EQ(field->stringValue(), "你");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
  EXPECT_FALSE(editor()->hasMarkedText());
}

// An fcitx engine clears first, and decides afterwards; of a syllable that the next key divides it does both in one event.
TEST_F(inputEventsTest, FcitxClearsAndThenDecides) {
  QWindow& native = showInWindow();
  compose(native, "ni");
  compose(native, QString(""));
  EXPECT_EQ(field->stringValue(), "");
  compose(native, {}, QString::fromUtf8("你"));
  EXPECT_EQ(field->stringValue(), "你");
  compose(native, QString::fromUtf8("하"));
  compose(native, QString::fromUtf8("ㄱ"), QString::fromUtf8("한"));
  EXPECT_EQ(field->stringValue(), "你한ㄱ");
  EXPECT_EQ(editor()->markedRange(), (NSRange{2, 1}));
}

// The compose key of X11 only ever decides, and the keys that lead there are no events.
// As ibus and its Hangul engine do after a click into the text.
TEST_F(inputEventsTest, WhatAnInputMethodCommitsAgainAfterAResetIsNotTypedTwice) {
  QWindow& native = showInWindow();
  compose(native, QString::fromUtf8("하"));
  editor()->unmarkText();
  compose(native, "");
  compose(native, {}, QString::fromUtf8("하"));
  EXPECT_EQ(field->stringValue(), "하");
  compose(native, {}, QString::fromUtf8("하"));
  EXPECT_EQ(field->stringValue(), "하하");
}

TEST_F(inputEventsTest, NorIsItInAnEmbeddedField) {
  QtViewWidget& widget = showInWidget();
  compose(widget, QString::fromUtf8("하"));
  editor()->unmarkText();
  compose(widget, "");
  compose(widget, {}, QString::fromUtf8("하"));
  EXPECT_EQ(field->stringValue(), "하");
}

TEST_F(inputEventsTest, InputMethodsAreNotifiedWhenAnEmbeddedTextChangesOrGetsTheKeyboard) {
  QtViewWidget& widget = showInWidget();
  int notified = 0;
  const QMetaObject::Connection connection =
      QObject::connect(QGuiApplication::inputMethod(), &QInputMethod::cursorRectangleChanged, [&] { ++notified; });
  editor()->insertText("a");
  EXPECT_GT(std::exchange(notified, 0), 0);
  NSWindow& window = *field->window();
  const auto view = make<Witness>(CGRect{0, 0, 10, 10});
  widget.view()->superview()->addSubview(view);
  window.makeFirstResponder(view.get());
  EXPECT_GT(std::exchange(notified, 0), 0);
  QObject::disconnect(connection);
}

TEST_F(inputEventsTest, WhatIsCommittedAfterAKeyOrAfterAnotherCompositionIsTyped) {
  QWindow& native = showInWindow();
  compose(native, QString::fromUtf8("하"));
  editor()->unmarkText();
  compose(native, QString::fromUtf8("ㅎ"));
  compose(native, {}, QString::fromUtf8("하"));
  EXPECT_EQ(field->stringValue(), "하하");
  compose(native, QString::fromUtf8("é"));
  editor()->unmarkText();
  QTest::keyClick(&native, 'a');
  compose(native, {}, QString::fromUtf8("é"));
  EXPECT_EQ(field->stringValue(), "하하éaé");
}

TEST_F(inputEventsTest, AComposeKeyDecidesWithoutHavingShownAnything) {
  QWindow& native = showInWindow();
  QTest::keyClick(&native, 'a');
  compose(native, {}, QString::fromUtf8("é"));
  compose(native, {}, QString::fromUtf8("ß"));
  QTest::keyClick(&native, 'b');
  EXPECT_EQ(field->stringValue(), "aéßb");
}

TEST_F(inputEventsTest, TheCaretMayStandWithinWhatIsComposed) {
  QWindow& native = showInWindow();
  QInputMethodEvent event("xyz", {{QInputMethodEvent::Cursor, 1, 1, {}}});
  QCoreApplication::sendEvent(&native, &event);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
}

TEST_F(inputEventsTest, OfWhatIsSaidOfAComposedTextOnlyTheCaretPlacesTheCaret) {
  QWindow& native = showInWindow();
  QInputMethodEvent event("xyz", {{QInputMethodEvent::TextFormat, 0, 1, {}},
                                  {QInputMethodEvent::Cursor, 1, 1, {}},
                                  {QInputMethodEvent::TextFormat, 2, 1, {}}});
  QCoreApplication::sendEvent(&native, &event);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
}

TEST_F(inputEventsTest, EachButtonIsToldApart) {
  class Buttons : public NSView {
   public:
    using NSView::NSView;
    void mouseDown(const Ref<NSEvent>& event) override { note("left", *event); }
    void rightMouseDown(const Ref<NSEvent>& event) override { note("right", *event); }
    void otherMouseDown(const Ref<NSEvent>& event) override { note("other", *event); }
    void note(const char* what, const NSEvent& event) {
      presses.push_back(std::string(what) + " " + std::to_string(event.buttonNumber()));
    }
    std::vector<std::string> presses;
  };
  QWindow& native = showInWindow();
  const auto view = make<Buttons>(CGRect{0, 50, 200, 50});
  window->contentView()->addSubview(view);
  for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton, Qt::BackButton})
    QTest::mouseClick(&native, button, {}, {100, 20});
  const std::vector<std::string> expected{"left 0", "right 1", "other 2", "other 3"};
  EXPECT_EQ(view->presses, expected);
}

TEST_F(inputEventsTest, WhatThePointerEntersWithTheWindowIsEntered) {
  class Entered : public NSView {
   public:
    using NSView::NSView;
    void mouseEntered(const Ref<NSEvent>&) override { ++count; }
    int count = 0;
  };
  QWindow& native = showInWindow();
  const auto view = make<Entered>(CGRect{0, 50, 200, 50});
  view->addTrackingArea(make<NSTrackingArea>(view->bounds(), NSTrackingActiveAlways | NSTrackingMouseEnteredAndExited,
                                             refTo<NSResponder>(*view)));
  window->contentView()->addSubview(view);
  settle();
  QTest::mouseMove(&native, {100, 90});
  settle();
  const QPointF place(100, 20);
  QEnterEvent enter(place, place, native.mapToGlobal(place));
  QCoreApplication::sendEvent(&native, &enter);
  EXPECT_EQ(view->count, 1);
}

TEST_F(inputEventsTest, AfterAResetOnlyWhatWasComposedIsNotTypedAgain) {
  QWindow& native = showInWindow();
  const auto composeAndLetGo = [&] {
    compose(native, "ha");
    editor()->unmarkText();
  };
  composeAndLetGo();
  compose(native, {}, "so");
  EXPECT_EQ(field->stringValue(), "haso");
  composeAndLetGo();
  compose(native, "n", "ha");
  EXPECT_EQ(field->stringValue(), "hasohahan");
  compose(native, "");
  composeAndLetGo();
  QTest::keyRelease(&native, 'a');  // of the key that led to the reset
  compose(native, {}, "ha");
  EXPECT_EQ(field->stringValue(), "hasohahaha");
}

TEST_F(inputEventsTest, ThreeClicksSelectTheParagraph) {
  QWindow& native = showInWindow();
  field->setStringValue("one two");
  const auto click = [&](ulong time) {
    const QPoint place(40, 65);
    for (const auto& [type, held] : {std::pair{QEvent::MouseButtonPress, Qt::MouseButtons(Qt::LeftButton)},
                                     std::pair{QEvent::MouseButtonRelease, Qt::MouseButtons()}}) {
      QMouseEvent event(type, place, native.mapToGlobal(place), Qt::LeftButton, held, {});
      event.setTimestamp(time);
      QCoreApplication::sendEvent(&native, &event);
    }
  };
  click(1000);
  EXPECT_EQ(editor()->selectedRange().length, 0u);
  click(1100);
  EXPECT_EQ(editor()->selectedRange().length, 3u);
  click(1200);
  EXPECT_EQ(editor()->selectedRange().length, 7u);
  click(9000);
  EXPECT_EQ(editor()->selectedRange().length, 0u);
}

TEST_F(inputEventsTest, AnEmbeddedFieldIsComposedInAsWell) {
  QtViewWidget& widget = showInWidget();
  compose(widget, "n", "\u304B");
  EXPECT_EQ(field->stringValue(),
            "\u304B"
            "n");
  EXPECT_EQ(editor()->markedRange(), (NSRange{1, 1}));
  EXPECT_EQ(asked(widget, Qt::ImEnabled), QVariant(true));
}

TEST_F(inputEventsTest, ACommitMayReplaceTextAroundTheCaret) {
  QWindow& native = showInWindow();
  field->setStringValue("teh end");
  editor()->setSelectedRange({3, 0});
  QInputMethodEvent event({}, {});
  event.setCommitString("the", -3, 3);
  QCoreApplication::sendEvent(&native, &event);
  EXPECT_EQ(field->stringValue(), "the end");
}

TEST_F(inputEventsTest, InputMethodsAreToldOfTheTextWithoutWhatIsComposed) {
  QWindow& native = showInWindow();
  field->setStringValue("abcd");
  editor()->setSelectedRange({1, 2});
  EXPECT_EQ(asked(native, Qt::ImEnabled), QVariant(true));
  EXPECT_EQ(asked(native, Qt::ImSurroundingText), QVariant("abcd"));
  EXPECT_EQ(asked(native, Qt::ImAnchorPosition), QVariant(1));
  EXPECT_EQ(asked(native, Qt::ImCursorPosition), QVariant(3));
  EXPECT_EQ(asked(native, Qt::ImCurrentSelection), QVariant("bc"));
  editor()->setSelectedRange({1, 0});
  compose(native, "xy");
  EXPECT_EQ(asked(native, Qt::ImSurroundingText), QVariant("abcd"));
  EXPECT_EQ(asked(native, Qt::ImCursorPosition), QVariant(1));
}

TEST_F(inputEventsTest, TheCaretsPlaceIsToldInTheWindowAndInTheWidget) {
  QWindow& native = showInWindow();
  const auto& cell = dynamic_cast<NSTextFieldCell&>(*field->cell());
  const CGPoint inField = cell.drawingRectForBounds(field->bounds()).origin;
  ASSERT_GT(inField.x, 0);
  // The field stands at (10, 20), its height is 24, and the content is 100 points high.
  const QRectF inWindow = asked(native, Qt::ImCursorRectangle).toRectF();
  EXPECT_EQ(inWindow.left(), 10 + inField.x);
  EXPECT_EQ(inWindow.top(), 100 - 20 - 24 + inField.y);
  EXPECT_GT(inWindow.height(), 10);
  window->close();
  QtViewWidget& widget = showInWidget();
  const QRectF inWidget = asked(widget, Qt::ImCursorRectangle).toRectF();
  // Up to half a device pixel away, where the view begins with the next whole one.
  const double scale = widget.devicePixelRatioF(), away = scale == std::floor(scale) ? 0 : 0.5 / scale + 1e-9;
  EXPECT_NEAR(inWidget.left(), cell.drawingRectForBounds(field->bounds()).origin.x, away);
  EXPECT_NEAR(inWidget.top(), cell.drawingRectForBounds(field->bounds()).origin.y, away);
}

TEST_F(inputEventsTest, InputMethodsRestWhereNoTextIsEdited) {
  QWindow& native = showInWindow();
  window->makeFirstResponder(nullptr);
  EXPECT_EQ(asked(native, Qt::ImEnabled), QVariant(false));
  EXPECT_FALSE(asked(native, Qt::ImSurroundingText).isValid());
  compose(native, "x", "y");
  EXPECT_EQ(field->stringValue(), "");
}

TEST_F(inputEventsTest, InTextFromRightToLeftTheCaretStandsAtTheLeftOfItsEnd) {
  QWindow& native = showInWindow();
  field->setStringValue("\u05D0\u05D1\u05D2");
  const auto caret = [&](std::size_t index) { return editor()->caretRectForIndex(index).origin.x; };
  EXPECT_GT(caret(0), caret(1));
  EXPECT_GT(caret(1), caret(2));
  EXPECT_GT(caret(2), caret(3));
  EXPECT_EQ(caret(3), 0);
  QTest::keyClick(&native, Qt::Key_Home);
  QTest::keyClick(&native, Qt::Key_Left);
  EXPECT_EQ(editor()->selectedRange(), (NSRange{1, 0}));
  // Text of the other direction in a line that begins from left to right.
  field->setStringValue("ab \u05D0\u05D1");
  EXPECT_EQ(editor()->characterIndexForInsertionAtPoint({caret(4) + 0.1, 5}), 4u);
  EXPECT_LT(caret(5), caret(4));
}

TEST_F(inputEventsTest, AProgramsShortcutsGetOnlyWhatTheTextDoesNotTake) {
  QtViewWidget& widget = showInWidget();
  int selectAll = 0, find = 0;
  QObject::connect(new QShortcut(QKeySequence("Ctrl+A"), topLevel.get()), &QShortcut::activated, [&] { ++selectAll; });
  QObject::connect(new QShortcut(QKeySequence("Ctrl+F"), topLevel.get()), &QShortcut::activated, [&] { ++find; });
  QTest::keyClicks(&widget, "abc");
  QTest::keyClick(&widget, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&widget, Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(selectAll, 0);
  EXPECT_EQ(find, 1);
  EXPECT_EQ(field->stringValue(), "abc");
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

TEST_F(inputEventsTest, TabLeavesAnEmbeddedFieldForTheProgramsNextWidget) {
  QtViewWidget& widget = showInWidget();
  auto* next = new QWidget;
  next->setFocusPolicy(Qt::StrongFocus);
  topLevel->layout()->addWidget(next);
  next->show();
  settle();
  QTest::keyClicks(&widget, "abc");
  QTest::keyClick(&widget, Qt::Key_Tab);
  settle();
  EXPECT_TRUE(next->hasFocus());
  EXPECT_EQ(field->currentEditor(), nullptr);
  EXPECT_EQ(field->cell()->stringValue(), "abc");
  QTest::keyClick(next, Qt::Key_Backtab, Qt::ShiftModifier);
  settle();
  EXPECT_TRUE(widget.hasFocus());
  ASSERT_TRUE(editor());
  EXPECT_EQ(editor()->selectedRange(), (NSRange{0, 3}));
}

}  // namespace tessaluna::backend::qt
