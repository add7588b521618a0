#include "tessaluna/backends/qt/connectAction.h"

#include <QLabel>
#include <memory>

#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/NSButton.h"
#include "tests/backends/qt/EmbeddedViews.h"

using namespace tessaluna::platform;

namespace tessaluna::backend::qt {
namespace {

class connectActionTest : public EmbeddedViews {
 protected:
  Ref<NSButton> button = makeButton<NSButton>();
  std::unique_ptr<QLabel> receiver = std::make_unique<QLabel>("text");
};

}  // namespace

TEST_F(connectActionTest, TheSlotIsCalledByAClick) {
  const QtViewWidget* widget = embed(button);
  connectAction(*button, receiver.get(), &QLabel::clear);
  show();
  const QPoint middle = inTop(*widget, widget->rect().center());
  press(middle);
  release(middle);
  EXPECT_EQ(receiver->text(), "");
}

TEST_F(connectActionTest, TheReceiversEndDisconnectsItAndLetsTheSlotGo) {
  const auto calls = std::make_shared<int>(0);
  connectAction(*button, receiver.get(), [calls] { ++*calls; });
  button->performClick(nullptr);
  EXPECT_EQ(*calls, 1);
  receiver.reset();
  EXPECT_EQ(calls.use_count(), 1);
  button->performClick(nullptr);
  EXPECT_EQ(*calls, 1);
}

TEST_F(connectActionTest, TheConnectionCanBeEnded) {
  int calls = 0;
  const QMetaObject::Connection connection = connectAction(*button, receiver.get(), [&] { ++calls; });
  QObject::disconnect(connection);
  button->performClick(nullptr);
  EXPECT_EQ(calls, 0);
}

TEST_F(connectActionTest, TheSlotMayDeleteReceiverAndSender) {
  const WeakRef<NSButton> weak = button;
  connectAction(*button, receiver.get(), [this] {
    receiver.reset();
    button.reset();
  });
  weak.lock()->performClick(nullptr);
  EXPECT_TRUE(weak.expired());
}

TEST_F(connectActionTest, AnItemOfAMenuIsConnectedAsAControlIs) {
  const auto menu = make<NSMenu>();
  connectAction(*menu->addItemWithTitle("Clear", ""), receiver.get(), &QLabel::clear);
  menu->performActionForItemAtIndex(0);
  EXPECT_EQ(receiver->text(), "");
}

}  // namespace tessaluna::backend::qt
