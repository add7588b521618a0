// A button of the library in a Qt window. Closing the window ends the program.
#include <QApplication>
#include <cstdio>

#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  tessaluna::backend::qt::QtBackend desktop;
  const auto application = tessaluna::platform::NSApplication::sharedApplication();

  const auto button = tessaluna::platform::make<TessalunaUIKit::PrevNextButton>(tessaluna::platform::CGRect{0, 0, 48, 48});
  button->setNext(true);
  button->setAction([] { std::puts("next"); });
  tessaluna::backend::qt::QtViewWidget widget(button);
  widget.setAccessibleName("Next");
  widget.resize(48, 48);
  widget.show();
  return QApplication::exec();
}
