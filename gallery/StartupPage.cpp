// The splash over a simulated start, and background tasks that come, run and are taken away. What a host does is in
// gallery/startup/StartupHost.
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "gallery/Ground.h"
#include "gallery/Journal.h"
#include "gallery/Pages.h"
#include "gallery/startup/StartupHost.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/uikit/stylekit/TessalunaLogo.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

QWidget* embed(const Ref<NSView>& view) {
  auto* widget = new tessaluna::backend::qt::QtViewWidget(view);
  const CGSize size = view->frame().size;
  widget->setFixedSize(static_cast<int>(size.width), static_cast<int>(size.height));
  return widget;
}

QLabel* makeLabel(const QString& text, const char* role) {
  auto* label = new QLabel(text);
  label->setObjectName(role);
  return label;
}

// A row of buttons: what is written on each, and what it does.
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
  layout->setSpacing(36);
  for (const Look& look : looks) {
    const auto indicator = make<NSProgressIndicator>(CGRect{{0, 0}, look.size});
    indicator->setStyle(look.style);
    indicator->setIndeterminate(look.isIndeterminate);
    indicator->setDoubleValue(40);
    indicator->startAnimation(nullptr);
    auto* column = new QVBoxLayout;
    column->setSpacing(6);
    column->addStretch(1);
    QWidget* widget = embed(indicator);
    widget->setAccessibleName(look.note);
    column->addWidget(widget, 0, Qt::AlignHCenter);
    column->addStretch(1);
    column->addWidget(makeLabel(look.note, "cardNote"), 0, Qt::AlignHCenter);
    layout->addLayout(column);
  }
  layout->addStretch(1);
  row->setFixedHeight(64);
  return row;
}

}  // namespace

QWidget* makeStartupPage(Report report) {
  auto* journal = new Journal;
  const auto host = make<StartupHost>();
  host->setReport([report = std::move(report), journal](const std::string& what) {
    journal->add(what);
    report(what);
  });
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
  column->addWidget(makeLabel("AppSplashController", "family"));
  column->addWidget(makeButtons({{"Show the splash", [host] { host->showSplash(); }}}));

  column->addSpacing(6);
  column->addWidget(makeLabel("TessalunaLogo", "family"));
  QWidget* logo = embed(make<TessalunaUIKit::TessalunaLogo>(CGRect{0, 0, 166, 40}));
  logo->setAccessibleName("Tessaluna");
  auto* ground = new Ground(logo);
  ground->setFixedSize(240, 76);
  column->addWidget(ground);

  column->addSpacing(6);
  column->addWidget(makeLabel("ProgressMonitorView", "family"));
  column->addWidget(makeButtons({{"Begin a task", [host] { host->beginTask(100); }},
                                 {"Begin a long task", [host] { host->beginTask(400); }},
                                 {"Abort the oldest task", [host] { host->abortOldestTask(); }}}));
  QWidget* monitor = embed(host->monitor());
  monitor->setAccessibleName("tasks");
  column->addWidget(monitor);
  auto* tasks = makeLabel("", "cardNote");
  const auto showTasks = [host, tasks] {
    QString text;
    for (const std::string& line : host->taskLines()) text += QString::fromStdString(line) + "\n";
    if (text.isEmpty()) text = "no task: the monitor is hidden\n";
    if (text != tasks->text()) tasks->setText(text);
  };
  showTasks();
  constexpr int refreshMilliseconds = 100;
  auto* refresh = new QTimer(page);
  QObject::connect(refresh, &QTimer::timeout, showTasks);
  refresh->start(refreshMilliseconds);
  tasks->setAlignment(Qt::AlignTop);
  tasks->setFixedHeight(tasks->fontMetrics().lineSpacing() * 5);
  column->addWidget(tasks);

  column->addWidget(makeLabel("NSProgressIndicator", "family"));
  column->addWidget(makeIndicators());
  column->addSpacing(6);
  column->addWidget(makeLabel("Reported", "family"));
  column->addWidget(journal, 1);
  return page;
}

}  // namespace gallery
