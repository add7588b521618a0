// Between the platform's accessibility tree and Qt: gives each element its interface, one and the same as long as the
// element lives, and hands what changes on to Qt.
//
//   qApp > a window of our own > its elements
//   qApp > a program's widgets > a QtViewWidget > the elements of its view
//
// Qt does not see a window that is not an element itself, such as a pop-up whose list is below its field.
#pragma once

#include <QAccessible>
#include <QObject>
#include <QTimer>
#include <unordered_set>
#include <vector>

#include "tessaluna/platform/accessibility/AccessibleChanges.h"
#include "tessaluna/platform/views/Forward.h"

namespace tessaluna::backend::qt {

class AccessibleElement;
class EmbeddingHosts;

class AccessibilityBridge : public QObject {
 public:
  explicit AccessibilityBridge(EmbeddingHosts& hosts);
  ~AccessibilityBridge() override;

  // Null for a null element, and for a window that Qt is not to see.
  QAccessibleInterface* interfaceOf(const platform::Ref<platform::NSObject>& element);
  // Of one of the elements; null for an index that is none of theirs.
  QAccessibleInterface* interfaceOf(const platform::AccessibilityElements& elements, int index);
  static int indexIn(const platform::AccessibilityElements& elements, const QAccessibleInterface* interface);  // or -1
  // That of the widget that the view is embedded in; null if in none.
  QAccessibleInterface* widgetAround(const platform::Ref<platform::NSView>& view);
  // What Qt sees of a window of our own. The window is an element below the application, and shown.
  QAccessibleInterface* rootOf(const platform::Ref<platform::NSWindow>& window);

  // Qt's focus came to what an element is embedded in, or left it.
  void focusMayHaveChanged() { changes_.focusMayHaveChanged(); }

  // Qt's focus came to a widget and has been passed on from there. Qt then reports the widgets that it came through after the one
  // where it is now: that one is reported once more.
  void focusWasPassedOn() { passedOn_.start(0); }

  // Called by the elements' interfaces.
  void elementWasMade(AccessibleElement& interface) { interfaces_.insert(&interface); }
  void elementIsForgotten(AccessibleElement& interface);
  void elementHasGone(AccessibleElement& interface);

 private:
  static QAccessibleInterface* makeInterface(const QString& className, QObject* object);
  void changed(const platform::AccessibleChange& change);
  void reportFocusAgain();
  void deleteGone();

  EmbeddingHosts& hosts_;
  platform::AccessibleChanges changes_;
  std::unordered_set<AccessibleElement*> interfaces_;  // owned by Qt
  std::vector<AccessibleElement*> gone_;               // of elements that have gone, to be deleted
  QTimer timer_;
  QTimer passedOn_;  // runs until the focus that was passed on has been reported once more
};

}  // namespace tessaluna::backend::qt
