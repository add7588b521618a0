#include "gallery/GalleryWindow.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QSaveFile>
#include <QStackedWidget>
#include <QStatusBar>
#include <cstdio>

namespace gallery {

namespace {

constexpr const char* look = R"(
  QMainWindow, QStackedWidget, QScrollArea, QScrollArea > QWidget > QWidget { background: #ffffff; color: #1d1d22; }
  QListWidget { background: #f2f3f6; color: #1d1d22; border: none; padding: 12px 8px; font-size: 14px; }
  QListWidget::item { padding: 7px 10px; border-radius: 6px; }
  QListWidget::item:selected { background: #2281f7; color: #ffffff; }
  QLabel { color: #1d1d22; }
  QLabel[isTitle="true"] { font-size: 20px; font-weight: 600; }
  QLabel[isHeading="true"] { font-size: 14px; font-weight: 600; color: #60626b; padding-top: 10px; }
  QStatusBar { background: #f2f3f6; } QStatusBar QLabel { color: #60626b; }
)";

QString toQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

GalleryWindow::GalleryWindow(ActionLog log) : log_(log), made_(pages().size()) {
  setWindowTitle("TessalunaUIKit gallery");
  setStyleSheet(look);
  resize(1120, 760);
  list_ = new QListWidget;
  list_->setFixedWidth(180);
  stack_ = new QStackedWidget;
  foot_ = new QLabel;
  statusBar()->addWidget(foot_, 1);
  statusBar()->setSizeGripEnabled(false);

  auto* central = new QWidget;
  auto* row = new QHBoxLayout(central);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
  row->addWidget(list_);
  row->addWidget(stack_, 1);
  setCentralWidget(central);

  for (const Page& page : pages()) list_->addItem(toQString(page.name));
  connect(list_, &QListWidget::currentRowChanged, this, [this](int index) {
    if (index >= 0) showPage(pages()[static_cast<std::size_t>(index)]);
  });
}

// The pages go while the desktop still lives.
GalleryWindow::~GalleryWindow() { delete takeCentralWidget(); }

void GalleryWindow::showPage(const Page& page) {
  const auto index = static_cast<std::size_t>(&page - pages().data());
  if (!made_[index]) {
    auto* framed = new QWidget;
    auto* column = new QVBoxLayout(framed);
    column->setContentsMargins(20, 16, 20, 12);
    auto* title = new QLabel(toQString(page.name));
    title->setProperty("isTitle", true);
    column->addWidget(title);
    column->addWidget(page.make([this](const std::string& what) { report(what); }), 1);
    stack_->addWidget(framed);
    made_[index] = framed;
  }
  stack_->setCurrentWidget(made_[index]);
  list_->setCurrentRow(static_cast<int>(index));
}

void GalleryWindow::report(const std::string& what) {
  foot_->setText(QString::fromStdString(what));
  if (log_ == ActionLog::Off) return;
  std::printf("%s\n", what.c_str());
  std::fflush(stdout);
}

bool GalleryWindow::saveScreenshot(const QString& file) {
  // What was asked to be drawn comes with the events that wait.
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
  QSaveFile out(file);
  return out.open(QIODevice::WriteOnly) && grab().save(&out, "PNG") && out.commit();
}

}  // namespace gallery
