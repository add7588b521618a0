#include "tessaluna/backends/qt/ToolTip.h"

#include <QApplication>
#include <QCursor>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

namespace tessaluna::backend::qt {

namespace {

// Qt takes some texts for markup, and ours are none.
QString plainText(const std::string& text) {
  const QString plain = QString::fromStdString(text);
  return Qt::mightBeRichText(plain) ? Qt::convertFromPlainText(plain, Qt::WhiteSpaceNormal) : plain;
}

}  // namespace

ToolTip::ToolTip() {
  timer_.setSingleShot(true);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] {
    if (!widget_) QToolTip::showText(QCursor::pos(), text_);
    else if (*widget_) QToolTip::showText(QCursor::pos(), text_, *widget_);
  });
}

ToolTip::~ToolTip() { hide(); }

void ToolTip::hide() {
  timer_.stop();
  if (!text_.isEmpty() && QToolTip::isVisible() && QToolTip::text() == text_) QToolTip::hideText();
  text_.clear();
}

void ToolTip::set(const std::string& text, QWidget* widget) {
  const QString wanted = plainText(text);
  const bool shows = QToolTip::isVisible() && QToolTip::text() == text_;
  if (shows && wanted == text_) return;
  hide();
  if (wanted.isEmpty()) return;
  text_ = wanted;
  widget_.reset();
  if (widget) widget_ = widget;
  timer_.start(QApplication::style()->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
}

}  // namespace tessaluna::backend::qt
