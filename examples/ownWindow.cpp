// A window of the library's own, without widgets, and a menu whose keys work wherever the keyboard is in it.
#include <QApplication>
#include <cstdio>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/menus/NSMenu.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

using namespace tessaluna::platform;

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  desktop.setCommandKey(tessaluna::backend::qt::CommandKey::Control);
  const auto application = NSApplication::sharedApplication();

  const auto window = make<NSWindow>(CGRect{200, 300, 400, 100},
                                     NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskResizable,
                                     NSBackingStoreBuffered, true);
  window->setTitle("Player");

  const auto menu = make<NSMenu>();
  menu->addItemWithTitle("Playback", "");
  menu->addItemWithTitle("Play", [] { std::puts("play"); })->setKeyEquivalent("p");
  menu->addItemWithTitle("Close", [&] { window->close(); })->setKeyEquivalent("w");
  const auto button = make<NSPopUpButton>(CGRect{20, 60, 110, 24}, /*pullsDown=*/true);
  button->setMenu(menu);
  button->setAutoresizingMask(NSViewMinYMargin);

  const auto note = make<NSTextField>(CGRect{20, 20, 360, 22});
  note->setPlaceholderString("A note");
  note->setAutoresizingMask(NSViewWidthSizable | NSViewMinYMargin);

  window->contentView()->addSubview(button);
  window->contentView()->addSubview(note);
  window->makeKeyAndOrderFront(nullptr);
  return QApplication::exec();
}
