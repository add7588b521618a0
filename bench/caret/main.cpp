// Measures a blink of the caret in a text of 10,000 lines, some of which are visible in a window of 400 by 300 points: the
// view's requests and the painting that follows. For comparison, it measures one redraw of everything visible.
//
//   bench_caret
#include <QApplication>
#include <cstdio>
#include <string>

#include "bench/harness/cpuTime.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

using namespace tessaluna::platform;

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  {
    const tessaluna::backend::qt::QtBackend desktop;
    NSApplication::sharedApplication();
    constexpr int lines = 10000;
    std::string text;
    for (int i = 0; i < lines; ++i) text += "The words of line " + std::to_string(i) + ", which is of middling length\n";
    const auto view = make<NSTextView>(CGRect{0, 0, 400, 20.0 * lines});
    view->setString(text);
    const auto scrollView = make<NSScrollView>(CGRect{0, 0, 400, 300});
    scrollView->setDocumentView(view);
    const auto window =
        make<NSWindow>(CGRect{100, 100, 400, 300}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, /*defer=*/true);
    window->setContentView(scrollView);
    window->makeKeyAndOrderFront(nullptr);
    window->makeFirstResponder(view.get());
    constexpr std::size_t caret = 100;
    view->setSelectedRange({caret, 0});
    QApplication::processEvents();
    window->displayIfNeeded();

    const double blink = bench::secondsOf(
        [&] {
          view->setNeedsDisplayInRect(view->caretRectForIndex(caret));
          window->displayIfNeeded();
        },
        0.5);
    const double all = bench::secondsOf(
        [&] {
          view->setNeedsDisplay(true);
          window->displayIfNeeded();
        },
        0.5);
    std::printf("A text of 10,000 lines, CPU time of the thread\n");
    std::printf("  a blink of the caret     %9.4f ms\n", blink * 1e3);
    std::printf("  a redraw of what shows   %9.4f ms\n", all * 1e3);
    window->close();
  }
  NSApp.reset();
  return 0;
}
