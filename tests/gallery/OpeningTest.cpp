#include "gallery/Opening.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QListWidget>
#include <QTemporaryDir>

#include "gallery/Arguments.h"
#include "gallery/GalleryWindow.h"
#include "gallery/screenshots.h"
#include "tests/desktop/QtDesktop.h"
#include "tests/gallery/QtApplicationOfSuite.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;

class OpeningTest : public harness::QtDesktop, protected QtApplicationOfSuite {
 public:
  using QtApplicationOfSuite::SetUpTestSuite, QtApplicationOfSuite::TearDownTestSuite;

 protected:
  static std::string chosenPage(const GalleryWindow& window) {
    const auto* list = window.findChild<QListWidget*>("pageList");
    return list->currentItem() ? list->currentItem()->text().toStdString() : std::string();
  }
};

TEST_F(OpeningTest, TheGalleryOpensOnThePlayerAfterTheSplash) {
  GalleryWindow window(ActionLog::Off);
  Opening opening(window, pages().front());
  const Ref<NSWindow> splash = opening.splash()->window();
  EXPECT_TRUE(splash->isVisible());
  EXPECT_FALSE(window.isVisible());
  EXPECT_TRUE(eventually([&] { return window.isVisible(); }));
  EXPECT_EQ(opening.splash(), nullptr);
  EXPECT_FALSE(splash->isVisible());
  EXPECT_EQ(chosenPage(window), "Player");
}

TEST_F(OpeningTest, AnOpeningThatEndsEarlyClosesTheSplash) {
  GalleryWindow window(ActionLog::Off);
  Ref<NSWindow> splash;
  {
    const Opening opening(window, pages().front());
    splash = opening.splash()->window();
  }
  EXPECT_FALSE(splash->isVisible());
  EXPECT_FALSE(window.isVisible());
}

TEST_F(OpeningTest, APictureOfTheFirstPageShowsThePlayer) {
  const QTemporaryDir folder;
  GalleryWindow window(ActionLog::Off);
  const QString file = folder.filePath("player.png");
  EXPECT_EQ(writeScreenshot(window, pages().front(), file.toStdString()), std::nullopt);
  EXPECT_EQ(QImage(file).size(), window.size());
  EXPECT_EQ(chosenPage(window), "Player");
}

TEST_F(OpeningTest, ThePlayerIsTheFirstPageAndFoundByItsName) {
  EXPECT_EQ(pages().front().name, "Player");
  EXPECT_EQ(findPage("player"), &pages().front());
  const char* const arguments[] = {"--page", "Player"};
  EXPECT_EQ(std::get<Arguments>(parseArguments(arguments)).page, &pages().front());
}

}  // namespace
}  // namespace gallery
