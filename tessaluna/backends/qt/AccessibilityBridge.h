// Between the platform's accessibility tree and Qt: gives each element its interface, one and the same as long as the
// element lives, and tells Qt what changes. Nobody is told anything while no client listens.
//
//   qApp > a window of our own > its elements
//   qApp > a program's widgets > a QtViewWidget > the elements of its view
//
// A window that is no element itself, such as a pop-up whose list hangs under its field, is not seen by Qt at all.
#pragma once

#include <QAccessible>
#include <QObject>
#include <QPoint>
#include <QTimer>
#include <unordered_set>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibilityValue.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::backend::qt {

class AccessibleElement;
class EmbeddingHosts;

class AccessibilityBridge : public QObject {
 public:
  explicit AccessibilityBridge(EmbeddingHosts& hosts);
  ~AccessibilityBridge() override;

  // Absent for an absent element, and for a window that Qt is not to see.
  QAccessibleInterface* interfaceOf(const platform::Ref<platform::NSObject>& element);
  // The last of the elements that covers the point of Qt's screen.
  QAccessibleInterface* interfaceAt(const platform::AccessibilityElements& elements, QPoint point);
  // That of the widget that the view is embedded in; absent if in none.
  QAccessibleInterface* widgetAround(const platform::Ref<platform::NSView>& view);
  // What Qt sees of a window of our own. The window is an element below the application, and shown.
  QAccessibleInterface* rootOf(const platform::Ref<platform::NSWindow>& window);

  // Told by the native windows. The focus is told a little later: Qt tells of a widget's by itself, and that of an
  // element in it has to follow. Of being hidden a window tells as an element.
  void focusMayHaveChanged();
  void windowWasShown(const platform::Ref<platform::NSWindow>& window);

  // Told by the elements' interfaces.
  void elementWasMade(AccessibleElement& interface) { interfaces_.insert(&interface); }
  void elementIsForgotten(AccessibleElement& interface);
  void elementHasGone(AccessibleElement& interface);

 private:
  static QAccessibleInterface* makeInterface(const QString& className, QObject* object);
  void changed(const platform::NSNotification& told);
  void tellSelectionLater(const platform::Ref<platform::NSObject>& element);
  void tell();
  void tellFocus();
  void deleteGone();

  EmbeddingHosts& hosts_;
  platform::Ref<platform::NSObject> changes_, keyWindows_;         // tokens
  std::unordered_set<AccessibleElement*> interfaces_;              // owned by Qt
  std::vector<AccessibleElement*> gone_;                           // of elements that have gone, to be deleted
  std::vector<platform::WeakRef<platform::NSObject>> selections_;  // elements whose selection is to be told
  bool isFocusToBeTold_ = false;
  QTimer timer_;
};

}  // namespace tessaluna::backend::qt
