#include "gallery/GalleryWindow.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

#include "gallery/controlNames.h"
#include "gallery/parts.h"

namespace gallery {

namespace {

constexpr int sidebarWidth = 208, contentMargin = 32, widestPage = 1500;

QString textOf(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QLabel* makeLabel(std::string_view text, const char* role) {
  auto* label = new QLabel(textOf(text));
  label->setObjectName(role);
  label->setIndent(0);
  return label;
}

// In a small window it scrolls.
QWidget* scrolledPage(QWidget* content) {
  auto* scroller = new QScrollArea;
  scroller->setObjectName("pageScroller");
  scroller->setWidget(content);
  scroller->setWidgetResizable(true);
  scroller->setFocusPolicy(Qt::NoFocus);
  scroller->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  for (QScrollBar* bar : {scroller->horizontalScrollBar(), scroller->verticalScrollBar()})
    bar->setAccessibleName("Place in the page");
  return scroller;
}

QWidget* framedPage(const Page& page, Report report) {
  auto* frame = new QWidget;
  auto* column = new QVBoxLayout(frame);
  column->setContentsMargins(contentMargin, 24, 0, 0);
  column->setSpacing(4);
  column->addWidget(makeLabel(page.name, "pageTitle"));
  column->addWidget(makeLabel(page.summary, "pageSummary"));
  column->addSpacing(14);
  // In a wide window a page stays together.
  auto* row = new QHBoxLayout;
  QWidget* content = page.make(std::move(report));
  content->setMaximumWidth(widestPage);
  row->addWidget(scrolledPage(content), 1);
  row->addStretch();
  column->addLayout(row, 1);
  return frame;
}

}  // namespace

GalleryWindow::GalleryWindow(ActionLog log) : log_(log), made_(pages().size()) {
  setWindowTitle("TessalunaUIKit gallery");
  resize(1180, 760);
  auto* body = new QWidget;
  setCentralWidget(body);
  auto* row = new QHBoxLayout(body);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(makeSidebar());
  row->addWidget(makeContent(), 1);
  connect(list_, &QListWidget::currentRowChanged, this, &GalleryWindow::showRow);
}

QWidget* GalleryWindow::makeSidebar() {
  QWidget* sidebar = makePanel("sidebar");
  sidebar->setFixedWidth(sidebarWidth);
  auto* column = new QVBoxLayout(sidebar);
  column->setContentsMargins(0, 0, 0, 12);
  column->setSpacing(0);
  column->addWidget(makeLabel("Tessaluna", "brand"));
  column->addWidget(makeLabel("the kit, page by page", "brandLine"));
  list_ = new QListWidget;
  list_->setObjectName("pageList");
  list_->setAccessibleName("Pages");
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  for (const Page& page : pages()) list_->addItem(textOf(page.name));
  column->addWidget(list_, 1);
  return sidebar;
}

QWidget* GalleryWindow::makeContent() {
  QWidget* content = makePanel("content");
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  stack_ = new QStackedWidget;
  foot_ = makeLabel("", "foot");
  foot_->setTextFormat(Qt::PlainText);
  column->addWidget(stack_, 1);
  column->addWidget(foot_);
  return content;
}

void GalleryWindow::showPage(const Page& page) { list_->setCurrentRow(static_cast<int>(&page - pages().data())); }

void GalleryWindow::showRow(int row) {
  if (row < 0) return;
  const auto index = static_cast<std::size_t>(row);
  if (!made_[index]) {
    made_[index] = framedPage(pages()[index], [this](const std::string& what) { report(what); });
    stack_->addWidget(made_[index]);
  }
  stack_->setCurrentWidget(made_[index]);
  foot_->clear();
  printPlaces();
}

void GalleryWindow::report(const std::string& what) {
  foot_->setText(QString::fromStdString(what));
  printLine("action " + QString::fromStdString(what));
}

bool GalleryWindow::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::Show:
    case QEvent::Move:
    case QEvent::Resize: printPlaces(); break;
    default: break;
  }
  return QMainWindow::event(event);
}

// For programs that operate the controls: prints "place NAME X Y WIDTH HEIGHT" for each named control of the visible page, in
// screen coordinates with y from the top, once the layouts have settled.
void GalleryWindow::printPlaces() const {
  if (log_ == ActionLog::Off) return;
  QTimer::singleShot(0, this, [this] {
    for (const QWidget* control : findChildren<QWidget*>()) {
      const std::string name = controlName(*control);
      if (name.empty() || !control->isVisible()) continue;
      const QPoint origin = control->mapToGlobal(QPoint(0, 0));
      printLine(QString("place %1 %2 %3 %4 %5")
                    .arg(QString::fromStdString(name))
                    .arg(origin.x())
                    .arg(origin.y())
                    .arg(control->width())
                    .arg(control->height()));
    }
  });
}

void GalleryWindow::printLine(const QString& line) const {
  if (log_ == ActionLog::Off) return;
  std::printf("%s\n", qUtf8Printable(line));
  std::fflush(stdout);  // the program that reads it is waiting for it
}

}  // namespace gallery
