// The page's Qt side: what the arrow keys do to the width of the lines.
#include <gtest/gtest.h>

#include <QKeyEvent>
#include <QSplitter>

#include "gallery/Pages.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tests/gallery/QtApplicationOfSuite.h"

namespace gallery {
namespace {

class LinksPageTest : public testing::Test, protected QtApplicationOfSuite {
 public:
  using QtApplicationOfSuite::SetUpTestSuite, QtApplicationOfSuite::TearDownTestSuite;

 protected:
  ~LinksPageTest() override { tessaluna::platform::NSApp = nullptr; }

  tessaluna::backend::qt::QtBackend desktop;
  tessaluna::platform::Ref<tessaluna::platform::NSApplication> nsApplication =
      tessaluna::platform::NSApplication::sharedApplication();
};

}  // namespace

TEST_F(LinksPageTest, ArrowKeysMoveTheHandleBesideTheLines) {
  const std::unique_ptr<QWidget> page(makeLinksPage([](const std::string&) {}));
  page->resize(900, 700);
  page->show();
  const auto* sides = page->findChild<QSplitter*>("sides");
  ASSERT_NE(sides, nullptr);
  QWidget* handle = sides->handle(1);
  EXPECT_EQ(handle->focusPolicy(), Qt::TabFocus);
  const auto press = [&](int key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(handle, &event);
    return event.isAccepted();
  };
  const int before = sides->sizes().front();
  EXPECT_TRUE(press(Qt::Key_Right));
  EXPECT_EQ(sides->sizes().front(), before + 10);
  press(Qt::Key_Left);
  press(Qt::Key_Left);
  EXPECT_EQ(sides->sizes().front(), before - 10);
}

}  // namespace gallery
