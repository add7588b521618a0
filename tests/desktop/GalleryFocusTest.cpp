// Where the keyboard focus is in the gallery, for somebody who goes through it with the Tab key.
#include <QPixmap>
#include <QPointer>

#include "gallery/GalleryWindow.h"
#include "gallery/look.h"
#include "tests/desktop/QtDesktop.h"

namespace {

class GalleryFocus : public harness::QtDesktop {
 protected:
  const gallery::Look look{*qApp, gallery::Theme::Desktop};
};

TEST_F(GalleryFocus, WhateverTheTabKeyReachesShowsThatItHasTheKeyboard) {
  constexpr int maxStops = 12;  // on the pages with very many stops, later ones are like the first
  gallery::GalleryWindow window(gallery::ActionLog::Off);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(eventually([&] { return window.isActiveWindow(); }));
  for (const gallery::Page& page : gallery::pages()) {
    SCOPED_TRACE(page.name);
    window.showPage(page);
    xdotool({"key", "Tab"});
    std::size_t shown = 0;
    for (int stop = 0; stop < maxStops; ++stop) {
      const QPointer<QWidget> widget = QApplication::focusWidget();
      const QImage with = widget ? widget->grab().toImage() : QImage();
      xdotool({"key", "Tab"});
      if (!widget) continue;
      EXPECT_TRUE(eventually([&] { return widget->grab().toImage() != with; }))
          << "stop " << stop << ": " << widget->metaObject()->className() << " " << widget->objectName().toStdString();
      ++shown;
    }
    EXPECT_GE(shown, 3u);
  }
}

}  // namespace
