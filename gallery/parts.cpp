#include "gallery/parts.h"

#include <QGridLayout>
#include <QLabel>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/views/NSView.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

QLabel* makeLabel(const QString& text, const char* look) {
  auto* label = new QLabel(text);
  label->setObjectName(look);
  return label;
}

}  // namespace

void setPanelLook(QWidget& widget, const char* look) {
  widget.setObjectName(look);
  widget.setAttribute(Qt::WA_StyledBackground);
}

QWidget* makePanel(const char* look) {
  auto* panel = new QWidget;
  setPanelLook(*panel, look);
  return panel;
}

QLabel* makeHeading(const QString& text) { return makeLabel(text, "family"); }
QLabel* makeNote(const QString& text) { return makeLabel(text, "cardNote"); }

QWidget* embed(const Ref<NSView>& view, const QString& name) {
  auto* widget = new tessaluna::backend::qt::QtViewWidget(view);
  const CGSize size = view->frame().size;
  widget->setFixedSize(static_cast<int>(size.width), static_cast<int>(size.height));
  widget->setAccessibleName(name);
  return widget;
}

QGridLayout* makeGrid(QWidget* widget, int horizontalSpacing, int verticalSpacing) {
  auto* grid = new QGridLayout(widget);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(horizontalSpacing);
  grid->setVerticalSpacing(verticalSpacing);
  return grid;
}

}  // namespace gallery
