// The splash over a simulated start, and background tasks that begin, run and are removed. The host is
// gallery/startup/StartupHost.
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "gallery/BackgroundPanel.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/parts.h"
#include "gallery/startup/StartupHost.h"
#include "tessaluna/uikit/stylekit/TessalunaLogo.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

// A row of buttons: the title of each, and what it does.
QWidget* makeButtons(std::initializer_list<std::pair<const char*, std::function<void()>>> buttons) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(10);
  for (const auto& [title, act] : buttons) {
    auto* button = new QToolButton;
    button->setObjectName("ground");
    button->setText(title);
    button->setAccessibleName(title);
    button->setFocusPolicy(Qt::StrongFocus);
    QObject::connect(button, &QToolButton::clicked, [act = act] { act(); });
    layout->addWidget(button);
  }
  layout->addStretch(1);
  return row;
}

QWidget* makeIndicators() {
  struct Look {
    const char* note;
    CGSize size;
    NSProgressIndicatorStyle style;
    bool isIndeterminate;
  };
  constexpr Look looks[] = {{"a bar", {160, 12}, NSProgressIndicatorStyleBar, false},
                            {"without an end in sight", {160, 12}, NSProgressIndicatorStyleBar, true},
                            {"a wheel that turns", {32, 32}, NSProgressIndicatorStyleSpinning, true},
                            {"and one that fills", {32, 32}, NSProgressIndicatorStyleSpinning, false}};
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(28);
  for (const Look& look : looks) {
    const auto indicator = make<NSProgressIndicator>(CGRect{{0, 0}, look.size});
    indicator->setStyle(look.style);
    indicator->setIndeterminate(look.isIndeterminate);
    indicator->setDoubleValue(40);
    indicator->startAnimation(nullptr);
    auto* column = new QVBoxLayout;
    column->setSpacing(6);
    column->addStretch(1);
    column->addWidget(embed(indicator, look.note), 0, Qt::AlignHCenter);
    column->addStretch(1);
    column->addWidget(makeNote(look.note), 0, Qt::AlignHCenter);
    layout->addLayout(column);
  }
  layout->addStretch(1);
  row->setFixedHeight(64);
  return row;
}

// What the tasks do, as the host reports it, kept up to date.
QLabel* makeTaskLines(const Ref<StartupHost>& host) {
  constexpr int refreshMilliseconds = 100, maxLines = 5;
  QLabel* lines = makeNote("");
  const auto refresh = [host, lines] {
    QString text;
    for (const std::string& line : host->taskLines()) text += QString::fromStdString(line) + "\n";
    if (text.isEmpty()) text = "no task: the line is hidden\n";
    if (text != lines->text()) lines->setText(text);
  };
  refresh();
  auto* clock = new QTimer(lines);
  QObject::connect(clock, &QTimer::timeout, refresh);
  clock->start(refreshMilliseconds);
  lines->setAlignment(Qt::AlignTop);
  lines->setFixedHeight(lines->fontMetrics().lineSpacing() * maxLines);
  return lines;
}

}  // namespace

QWidget* makeStartupPage(Report report) {
  auto* journal = new Journal;
  const auto host = make<StartupHost>();
  host->setReport(journal->addingTo(std::move(report)));
  host->beginTask(100);
  host->beginTask(300);
  host->advance(4);
  host->start();

  auto* page = new QWidget;
  QObject::connect(page, &QObject::destroyed, [host] {
    if (host->splash()) host->splash()->close();
  });
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(0, 0, 32, 24);
  column->setSpacing(12);
  column->addWidget(makeHeading("AppSplashController"));
  column->addWidget(makeButtons({{"Show the splash", [host] { host->showSplash(); }}}));

  column->addSpacing(6);
  column->addWidget(makeHeading("TessalunaLogo"));
  auto* background = new BackgroundPanel(embed(make<TessalunaUIKit::TessalunaLogo>(CGRect{0, 0, 166, 40}), "Tessaluna"));
  background->setFixedSize(240, 64);
  column->addWidget(background);

  column->addSpacing(6);
  column->addWidget(makeHeading("TaskBar, ProgressMonitorView"));
  column->addWidget(makeButtons(
      {{"Begin a task", [host] { host->beginTask(100); }}, {"Begin a long task", [host] { host->beginTask(400); }}}));
  column->addWidget(embed(host->taskBar(), "tasks"));
  column->addWidget(makeTaskLines(host));

  column->addWidget(makeHeading("NSProgressIndicator"));
  column->addWidget(makeIndicators());
  column->addSpacing(6);
  column->addWidget(makeHeading("Reported"));
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
