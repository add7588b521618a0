// A text field under a real keyboard: the X server's, which xdotool operates.
#include <QClipboard>
#include <QFile>
#include <QTemporaryDir>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;

namespace {

// Qt must know before the program's first key what a dead key makes of the next letter, whatever the machine's locale.
const bool hasComposeFile = [] {
  static const QTemporaryDir folder;
  QFile file(folder.filePath("Compose"));
  if (!file.open(QIODevice::WriteOnly)) return false;
  file.write("<dead_acute> <e> : \"\xC3\xA9\" eacute\n");
  qputenv("XCOMPOSEFILE", file.fileName().toLocal8Bit());
  return true;
}();

class RealKeyboard : public harness::QtDesktop {
 protected:
  RealKeyboard() {
    window_->contentView()->addSubview(field);
    window_->makeKeyAndOrderFront(nullptr);
    isReady = eventually([&] { return window_->isKeyWindow(); });
    field->selectText(nullptr);
    settle();
  }
  ~RealKeyboard() override { window_->close(); }

  bool comesToBe(const std::string& text) {
    return eventually([&] { return field->stringValue() == text; });
  }

  bool isReady = false;
  Ref<NSTextField> field = make<NSTextField>(CGRect{10, 10, 280, 24});

 private:
  Ref<NSWindow> window_ = make<NSWindow>(CGRect{200, 400, 300, 50}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
};

}  // namespace

TEST_F(RealKeyboard, AThousandKeysFiveMillisecondsApartAllArrive) {
  ASSERT_TRUE(isReady);
  std::string all;
  for (int i = 0; i < 1000; ++i) all += static_cast<char>('a' + i % 26);
  xdotool({"type", "--delay", "5", QString::fromStdString(all)});
  EXPECT_TRUE(comesToBe(all)) << field->stringValue().size() << " arrived";
}

TEST_F(RealKeyboard, KeysMoveSelectCopyAndPaste) {
  ASSERT_TRUE(isReady);
  xdotool({"type", "one two"});
  ASSERT_TRUE(comesToBe("one two")) << field->stringValue();
  xdotool({"key", "ctrl+Left", "shift+End", "ctrl+c", "Home", "ctrl+v"});
  EXPECT_TRUE(comesToBe("twoone two")) << field->stringValue();
  EXPECT_EQ(QApplication::clipboard()->text(), "two");
  xdotool({"key", "ctrl+BackSpace", "ctrl+Delete", "End", "BackSpace"});
  EXPECT_TRUE(comesToBe(" tw")) << field->stringValue();
  xdotool({"key", "ctrl+z", "ctrl+z"});
  EXPECT_TRUE(comesToBe("one two")) << field->stringValue();
}

TEST_F(RealKeyboard, ADeadKeyAndALetterAreOneCharacter) {
  ASSERT_TRUE(isReady);
  ASSERT_TRUE(hasComposeFile);
  xdotool({"key", "--delay", "500", "dead_acute", "e", "x"});
  EXPECT_TRUE(comesToBe("\u00E9x")) << field->stringValue();
}
