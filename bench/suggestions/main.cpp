// Assigns suggestions to a visible completion pop-up: a thousand and ten thousand of them, on the headless backend and on
// Qt. It is compared with QCompleter, which has a thousand rows in its visible pop-up. All are measured in turns. The kit
// makes all rows, QCompleter only the visible ones. Empty rows are measured too, 400 and 40,000: if a removal from a list
// moves all later rows, it shows there first.
//
//   bench_suggestions [--rounds N]
#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QStringListModel>
#include <cstdio>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/harness/cpuTime.h"
#include "bench/harness/statistics.h"
#include "bench/suggestions/SuggestionRow.h"
#include "gallery/search/Library.h"
#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace {

using namespace tessaluna::platform;
using TessalunaUIKit::Suggestion;
using TessalunaUIKit::SuggestionsWindowController;

constexpr std::size_t few = 1000, many = 10000;

std::vector<Suggestion> suggestionsOf(const std::vector<gallery::LibraryItem>& library, std::size_t count) {
  std::vector<Suggestion> suggestions;
  for (std::size_t i = 0; i < count; ++i) {
    suggestions.emplace_back(library[i].label, std::int64_t(i));
    suggestions.back().detailedLabel = library[i].detail;
  }
  return suggestions;
}

std::vector<Suggestion> bareSuggestions(std::size_t count) {
  std::vector<Suggestion> suggestions;
  for (std::size_t i = 0; i < count; ++i) suggestions.emplace_back(std::to_string(i), std::int64_t(i));
  return suggestions;
}

std::string registerBareRow() {
  NSNib::registerFactory("bareRow", [](NSObject&) { return make<TessalunaUIKit::HighlightingView>(CGRect{0, 0, 50, 20}); });
  return "bareRow";
}

// A contestant opens something and assigns rows to it. Only the second assignment of a turn is measured: the first one
// replaces what other contestants left there, and is the first to be shown.
class Contestant {
 public:
  explicit Contestant(const char* name) : name_(name) {}
  virtual ~Contestant() = default;

  const char* name() const { return name_; }
  const std::vector<double>& milliseconds() const { return milliseconds_; }
  void forget() { milliseconds_.clear(); }

  void takeTurn() {
    open();
    assign();
    if (!isOpen()) {
      std::fprintf(stderr, "bench_suggestions: %s is not open\n", name_);
      std::exit(1);
    }
    const double start = bench::cpuSeconds();
    assign();
    milliseconds_.push_back((bench::cpuSeconds() - start) * 1e3);
    close();
  }

 protected:
  virtual void open() = 0;
  virtual void assign() = 0;  // and waits until the rows are painted
  virtual bool isOpen() const = 0;
  virtual void close() = 0;

 private:
  const char* name_;
  std::vector<double> milliseconds_;
};

// The kit's pop-up under a field, on the backend of the application.
class KitPopUp : public Contestant {
 public:
  KitPopUp(const char* name, std::vector<Suggestion> suggestions, std::function<void()> settle,
           std::string prototype = bench::registerSuggestionRow())
      : Contestant(name), suggestions_(std::move(suggestions)), settle_(std::move(settle)) {
    window_->contentView()->addSubview(field_);
    controller_->setSuggestionPrototype(std::move(prototype));
  }

 protected:
  void open() override {
    window_->makeKeyAndOrderFront(nullptr);
    settle_();
    controller_->beginForTextField(field_);
  }
  void assign() override {
    controller_->setSuggestions(suggestions_);
    settle_();
  }
  bool isOpen() const override { return controller_->window()->isVisible(); }
  void close() override {
    controller_->cancelSuggestions();
    window_->orderOut(nullptr);
    settle_();
  }

 private:
  std::vector<Suggestion> suggestions_;
  std::function<void()> settle_;
  Ref<NSWindow> window_ = make<NSWindow>(CGRect{100, 500, 500, 300}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  Ref<NSTextField> field_ = make<NSTextField>(CGRect{50, 100, 320, 24});
  Ref<SuggestionsWindowController> controller_ = make<SuggestionsWindowController>();
};

class Completer : public Contestant {
 public:
  Completer(const char* name, QStringList rows) : Contestant(name), rows_(std::move(rows)) {
    completer_.setModel(&model_);
    completer_.setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    edit_.setCompleter(&completer_);
    edit_.resize(320, 30);
  }

 protected:
  void open() override { edit_.show(); }
  void assign() override {
    model_.setStringList(rows_);
    completer_.complete();
    QApplication::processEvents();
  }
  bool isOpen() const override { return completer_.popup()->isVisible(); }
  void close() override {
    completer_.popup()->hide();
    edit_.hide();
    QApplication::processEvents();
  }

 private:
  QStringList rows_;
  QStringListModel model_;
  QCompleter completer_;
  QLineEdit edit_;
};

// Measures the contestants in turn, in rounds, after one round that is not counted.
void play(std::initializer_list<Contestant*> contestants, int rounds) {
  for (int round = 0; round <= rounds; ++round) {
    for (Contestant* contestant : contestants) {
      contestant->takeTurn();
      if (round == 0) contestant->forget();
    }
  }
}

void print(const Contestant& contestant) {
  std::printf("  %-34s %8.2f ms  (%.2f to %.2f)\n", contestant.name(), bench::median(contestant.milliseconds()),
              bench::quantile(contestant.milliseconds(), 0.25), bench::quantile(contestant.milliseconds(), 0.75));
}

void printRatio(const char* what, const Contestant& above, const Contestant& below) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < above.milliseconds().size(); ++i)
    ratios.push_back(above.milliseconds()[i] / below.milliseconds()[i]);
  std::printf("  %-34s %8.2f     (%.2f to %.2f)\n", what, bench::median(ratios), bench::quantile(ratios, 0.25),
              bench::quantile(ratios, 0.75));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  const int asked = arguments.contains("--rounds") ? arguments.value(arguments.indexOf("--rounds") + 1).toInt() : 15;
  const int rounds = std::max(asked, 1);

  const std::vector<gallery::LibraryItem> library = gallery::inventedLibrary(20000);
  const std::vector<Suggestion> fewSuggestions = suggestionsOf(library, few), manySuggestions = suggestionsOf(library, many);
  QStringList fewRows;
  for (std::size_t i = 0; i < few; ++i) fewRows << QString::fromStdString(library[i].label);

  std::printf("Assigning suggestions to a visible pop-up, CPU time of %d rounds: median (quartiles)\n", rounds);
  {
    tessaluna::backend::headless::HeadlessBackend desktop;
    NSApplication::sharedApplication();
    const auto settle = [&] { desktop.settle(); };
    KitPopUp thousand("1,000, headless", fewSuggestions, settle), tenThousand("10,000, headless", manySuggestions, settle);
    play({&thousand, &tenThousand}, rounds);
    print(thousand);
    print(tenThousand);
    printRatio("10,000 to 1,000, headless", tenThousand, thousand);

    const std::string bareRow = registerBareRow();
    KitPopUp fewBare("400 bare rows, headless", bareSuggestions(400), settle, bareRow);
    KitPopUp manyBare("40,000 bare rows, headless", bareSuggestions(40000), settle, bareRow);
    play({&fewBare, &manyBare}, rounds);
    print(fewBare);
    print(manyBare);
    printRatio("40,000 to 400 bare rows", manyBare, fewBare);
  }
  NSApp.reset();
  {
    const tessaluna::backend::qt::QtBackend desktop;
    NSApplication::sharedApplication();
    const auto settle = [] { QApplication::processEvents(); };
    KitPopUp thousand("1,000, Qt", fewSuggestions, settle), tenThousand("10,000, Qt", manySuggestions, settle);
    Completer completer("1,000, QCompleter", fewRows);
    play({&thousand, &tenThousand, &completer}, rounds);
    print(thousand);
    print(tenThousand);
    print(completer);
    printRatio("10,000 to 1,000, Qt", tenThousand, thousand);
    printRatio("1,000, Qt, to QCompleter", thousand, completer);
  }
  NSApp.reset();
  return 0;
}
