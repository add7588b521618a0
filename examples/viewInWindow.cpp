// A button of the library in a window of Qt's. Closing the window ends the program.
#include <QApplication>

#include "backends/qt/QtBackend.h"
#include "backends/qt/QtViewWidget.h"
#include "platform/windows/NSApplication.h"
#include "uikit/trackrow/PrevNextButton.h"

int main(int argc, char** argv) {
  QApplication qt(argc, argv);
  backend::qt::QtBackend desktop;
  const auto application = platform::NSApplication::sharedApplication();

  const auto button = platform::make<TessalunaUIKit::PrevNextButton>(platform::CGRect{0, 0, 48, 48});
  button->setNext(true);
  backend::qt::QtViewWidget widget(button);
  widget.resize(48, 48);
  widget.show();
  return QApplication::exec();
}
