// A top-level widget of a program in which views are embedded, and the one window that they share. The window's content
// covers the widget's; each embedded view hangs in it below a view that cuts it to what shows of its widget. What the window
// calls may delete any of the widgets, the top level and with it the host: each operation survives that.
#pragma once

#include <QObject>
#include <QTimer>
#include <unordered_map>
#include <vector>

#include "tessaluna/backends/qt/KeptPicture.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/foundation/Geometry.h"
#include "tessaluna/platform/views/Forward.h"

class QPainter;
class QWidget;

namespace tessaluna::backend::qt {

class QtViewWidget;

class EmbeddingHost : public QObject {
 public:
  explicit EmbeddingHost(QWidget& topLevel);
  ~EmbeddingHost() override;

  QWidget& topLevel() { return topLevel_; }
  platform::NSWindow& window() { return *window_; }
  platform::WindowInput& input();

  void add(QtViewWidget& widget);
  void remove(QtViewWidget& widget);

  // The widget, which is one of ours, an ancestor of some or the top level itself, was moved, resized, shown or hidden.
  void placeChanged(QWidget& widget);
  // Some widget below the top level is about to get the wheel. What that scrolls, the user scrolls under the pointer.
  void wheelTurned() { wheel_.start(0); }
  void enabledChanged(QtViewWidget& widget);
  void activationChanged();

  QtViewWidget* widgetOf(const platform::NSView& view) const;  // absent if in none of ours

  // Where in the widget the keyboard is, as far as the scroll views in it show that; empty if it is elsewhere.
  QRect placeOfKeyboard(const QtViewWidget& widget) const;

  // Brings the picture up to date and copies what lies under the widget.
  void paintWidget(QtViewWidget& widget, QPainter& painter);

  void focusEntered(QtViewWidget& widget, Qt::FocusReason reason);
  void focusLeft(QtViewWidget& widget, Qt::FocusReason reason);
  void followFirstResponder();

 private:
  class NativeSide;
  friend class NativeSide;
  struct Embedded {
    QtViewWidget* widget;
    platform::Ref<platform::NSView> clip;
  };

  bool isHere(const Embedded& embedded) const;
  std::vector<Embedded> embeddedIn(QWidget& widget) const;  // and itself
  void placeTopLevel();
  void place(const Embedded& embedded);
  void scaleMayHaveChanged();
  void display();
  void paint(std::span<const CGRect> dirty, const std::function<void(Canvas&)>& painter);
  bool moveFocus(FocusStep step);
  void sizeHintChanged(platform::NSView& view);
  QtViewWidget* widgetOf(const platform::NSResponder* responder) const;

  QWidget& topLevel_;
  platform::Ref<platform::NSWindow> window_;
  NativeSide* native_;  // the window's
  KeptPicture picture_;
  double knownScale_;
  std::vector<Embedded> embedded_;
  std::unordered_map<const QWidget*, platform::Ref<platform::NSView>> clips_;  // of the same
  QTimer displayTimer_;
  QTimer wheel_;                // runs until the wheel that turns has been handled
  std::size_t passedOver_ = 0;  // widgets that handed on the focus that is being moved
};

}  // namespace tessaluna::backend::qt
