// Types a key into the middle of one long line, and paints what changes: the kit's text field in a QtViewWidget and a
// QLineEdit, in turns, so that other work of the machine affects both. Prints the CPU time per key.
//
//   bench_text
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <cstdio>
#include <vector>

#include "bench/harness/cpuTime.h"
#include "bench/harness/statistics.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

using namespace tessaluna::platform;

namespace {

constexpr int rounds = 15, keysInTurn = 6;

void settle() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

// The mean CPU time per key over one turn. The keys are all different, so that no widget has shown the line before.
double turn(QWidget& widget) {
  static int keys = 0;
  widget.activateWindow();
  widget.setFocus();
  settle();
  const double start = bench::cpuSeconds();
  for (int i = 0; i < keysInTurn; ++i) {
    const int letter = 'a' + ++keys % 26;
    QKeyEvent press(QEvent::KeyPress, letter - 'a' + Qt::Key_A, Qt::NoModifier, QString(QChar(letter)));
    QApplication::sendEvent(&widget, &press);
    settle();
  }
  return (bench::cpuSeconds() - start) * 1e3 / keysInTurn;
}

// False if a key did not arrive.
bool compare(const char* what, const QString& text) {
  const auto field = make<NSTextField>(CGRect{0, 0, 400, 22});
  field->setStringValue(text.toStdString());
  tessaluna::backend::qt::QtViewWidget kit(field);
  QLineEdit qt;
  qt.setMaxLength(1 << 20);
  qt.setText(text);
  kit.resize(400, 30);
  qt.resize(400, 30);
  kit.show();
  qt.show();
  settle();
  const qsizetype middle = text.size() / 2;
  kit.setFocus();
  settle();
  if (!field->currentEditor()) return false;
  field->currentEditor()->setSelectedRange({static_cast<std::size_t>(middle), 0});
  qt.setCursorPosition(static_cast<int>(middle));

  std::vector<double> kitTimes, qtTimes, ratios;
  turn(kit);
  turn(qt);
  // Focus selects the whole text.
  field->currentEditor()->setSelectedRange({static_cast<std::size_t>(middle), 0});
  for (int round = 0; round < rounds; ++round) {
    kitTimes.push_back(turn(kit));
    qtTimes.push_back(turn(qt));
    ratios.push_back(kitTimes.back() / qtTimes.back());
  }
  constexpr qsizetype typed = (rounds + 1) * keysInTurn;
  const auto length = static_cast<qsizetype>(QString::fromStdString(field->stringValue()).size());
  std::printf("%s: kit %.2f ms, QLineEdit %.2f ms, ratio %.2f (%.2f to %.2f)\n", what, bench::median(kitTimes),
              bench::median(qtTimes), bench::median(ratios), bench::quantile(ratios, 0.25), bench::quantile(ratios, 0.75));
  if (length == text.size() + typed && qt.text().size() == text.size() + typed) return true;
  std::fprintf(stderr, "%s: keys were lost: %lld and %lld letters in place of %lld\n", what, length, qt.text().size(),
               text.size() + typed);
  return false;
}

QString lettersOf(qsizetype count, const char* words) {
  const QString unit = QString::fromUtf8(words);
  QString text = unit.repeated(count / unit.size() + 1);
  text.truncate(count);
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  bool isWhole = true;
  {
    const tessaluna::backend::qt::QtBackend desktop;
    NSApplication::sharedApplication();
    for (const qsizetype count : {100, 10000, 40000}) {
      const std::string words = std::to_string(count) + " letters in words",
                        plain = std::to_string(count) + " letters without a blank",
                        turned = std::to_string(count) + " letters from right to left";
      isWhole = compare(words.c_str(), lettersOf(count, "the quick brown fox jumps over a lazy dog while ")) && isWhole;
      isWhole = compare(plain.c_str(), lettersOf(count, "thequickbrownfoxjumpsoveralazydogwhile")) && isWhole;
      isWhole = compare(turned.c_str(), lettersOf(count, "נועה לביא ציירה את העטיפה של האלבום הזה ")) && isWhole;
    }
  }
  NSApp.reset();
  return isWhole ? 0 : 1;
}
