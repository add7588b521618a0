// Parts that several pages are made of.
#pragma once

#include <QString>

#include "tessaluna/platform/foundation/Reference.h"
#include "tessaluna/platform/views/Forward.h"

class QGridLayout;
class QLabel;
class QWidget;

namespace gallery {

// Has that look of the style sheet. It is not a QFrame, which assistive clients on Linux take for a window.
QWidget* makePanel(const char* look);
void setPanelLook(QWidget& widget, const char* look);
QLabel* makeHeading(const QString& text);
QLabel* makeNote(const QString& text);  // small and pale
// The view in a widget of its size, whose name assistive clients show.
QWidget* embed(const tessaluna::platform::Ref<tessaluna::platform::NSView>& view, const QString& name);
// A layout of the widget, without margins.
QGridLayout* makeGrid(QWidget* widget, int horizontalSpacing, int verticalSpacing);

}  // namespace gallery
