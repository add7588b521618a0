// A side bar over a program's own places, in a Qt window. Closing the window ends the program.
#include <QApplication>
#include <cstdio>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/ready/sidebar/SideBar.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

using namespace tessaluna;
using TessalunaUIKit::TessalunaStyleKit;

class Places : public ready::SideBarModel {
 public:
  std::vector<ready::SideSection> sections() const override {
    const auto note = [](platform::CGRect frame) { TessalunaStyleKit::drawTidalMusicIcon(frame); };
    return {{.title = "Library", .items = {{.title = "Songs", .icon = note, .count = 1204}, {.title = "Albums"}}},
            {.title = "Playlists", .items = {{.title = "Morning", .id = "playlist 7"}}}};
  }
};

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  backend::qt::QtBackend desktop;
  const auto application = platform::NSApplication::sharedApplication();

  const auto bar = platform::make<ready::SideBar>(std::make_shared<Places>());
  bar->setOnChoose([](const ready::SideItem& item) { std::printf("show %s\n", item.title.c_str()); });
  bar->setSelected("Songs");
  backend::qt::QtViewWidget widget(bar);
  widget.resize(220, 200);
  widget.show();
  // With a file name as its argument, the program writes a picture of the window.
  if (argc == 2) return widget.grab().save(argv[1]) ? 0 : 1;
  return QApplication::exec();
}
