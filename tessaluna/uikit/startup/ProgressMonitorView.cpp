#include "tessaluna/uikit/startup/ProgressMonitorView.h"

#include <algorithm>
#include <cmath>

#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/NSData.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/text/NSFont.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr std::string_view lengthName = "Length", positionName = "Pos", abortName = "abortSem";

double numberOf(const NSDictionary& record, std::string_view name) {
  const auto number = record.objectForKey<NSNumber>(name);
  return number ? number->doubleValue() : 0;
}

// Two digits of a wide font need the whole label; the sides that a stock cell leaves would cut off the second.
class CountCell : public NSTextFieldCell {
 public:
  using NSTextFieldCell::NSTextFieldCell;
  Ref<NSCell> copy() const override { return make<CountCell>(*this); }
  CGRect drawingRectForBounds(CGRect bounds) const override { return bounds; }
};

}  // namespace

const ClassInfo ProgressMonitorView::staticClassInfo{.name = "TessalunaUIKit.ProgressMonitorView",
                                                     .base = &NSView::staticClassInfo};

// One task to assistive clients. It knows its view as long as its task is there.
class ProgressMonitorView::TaskElement : public NSObject, public NSAccessibility {
 public:
  TaskElement(const Ref<const ProgressMonitorView>& view, std::string task) : view_(view), task_(std::move(task)) {}
  void leaveView() { view_.reset(); }

  bool isAccessibilityElement() const override { return true; }
  std::string accessibilityRole() const override { return std::string(NSAccessibilityProgressIndicatorRole); }
  std::string accessibilityTitle() const override { return task_; }
  AccessibilityValue accessibilityValue() const override { return number(positionName); }
  AccessibilityValue accessibilityAttributeValue(std::string_view attribute) const override {
    if (attribute == NSAccessibilityMinValueAttribute) return 0.0;
    if (attribute == NSAccessibilityMaxValueAttribute) return number(lengthName);
    return NSAccessibility::accessibilityAttributeValue(attribute);
  }
  CGRect accessibilityFrame() const override {
    const auto view = view_.lock();
    return view ? view->accessibilityFrame() : CGRect{};
  }
  Ref<NSObject> accessibilityParent() const override {
    return NSAccessibilityUnignoredAncestor(std::const_pointer_cast<ProgressMonitorView>(view_.lock()));
  }

 private:
  AccessibilityValue number(std::string_view name) const {
    const auto view = view_.lock();
    const auto record = view ? view->recordOf(task_) : nullptr;
    return record ? AccessibilityValue(numberOf(*record, name)) : AccessibilityValue();
  }

  WeakRef<const ProgressMonitorView> view_;
  std::string task_;
};

void ProgressMonitorView::didInit() {
  NSView::didInit();
  const auto [width, height] = frame().size;
  constexpr CGFloat labelRoom = 16, barHeight = 8;
  progressIndicator_ = make<NSProgressIndicator>(CGRect{0, (height - barHeight) * 0.5, width - labelRoom, barHeight});
  progressIndicator_->setStyle(NSProgressIndicatorStyleBar);
  progressIndicator_->setControlTint(NSBlueControlTint);
  progressIndicator_->setIndeterminate(false);
  addSubview(progressIndicator_);

  constexpr CGFloat fontSize = 10;
  numberTasks_ = make<NSTextField>(CGRect{(width - labelRoom) + 2, (height - 12) * 0.5, 14, 14});
  numberTasks_->setCell(make<CountCell>());
  numberTasks_->cell()->setLineBreakMode(NSLineBreakByClipping);
  numberTasks_->setBezeled(false);
  numberTasks_->setEditable(false);  // it only shows the number
  numberTasks_->setStringValue("1");
  numberTasks_->setTextColor(NSColor::blueColor());
  numberTasks_->setDrawsBackground(false);
  const Ref<NSFont> font = NSFont::fontWithName("Helvetica Neue", fontSize);
  numberTasks_->setFont(font ? font : NSFont::labelFontOfSize(fontSize));
  numberTasks_->setAlignment(NSTextAlignmentCenter);
  addSubview(numberTasks_);

  setHidden(true);
  backgroundTasks_ = make<NSMutableDictionary>();
}

Ref<NSDictionary> ProgressMonitorView::recordOf(std::string_view task) const {
  return backgroundTasks_->objectForKey<NSDictionary>(task);
}

void ProgressMonitorView::replaceValue(const NSDictionary& record, std::string_view name, double value,
                                       std::string_view task) {
  const auto copy = record.mutableCopy();
  copy->setObjectForKey(make<NSNumber>(value), name);
  backgroundTasks_->setObjectForKey(copy, task);
}

double ProgressMonitorView::sumOf(std::string_view name) const {
  double sum = 0;
  for (const auto& [task, record] : backgroundTasks_->entries())
    if (const auto* dictionary = dynamic_cast<const NSDictionary*>(record.get())) sum += numberOf(*dictionary, name);
  return sum;
}

void ProgressMonitorView::showTotals() {
  progressIndicator_->setMaxValue(sumOf(lengthName));
  progressIndicator_->setMinValue(0);
  progressIndicator_->setDoubleValue(sumOf(positionName));
}

void ProgressMonitorView::showCount() {
  const std::size_t count = backgroundTasks_->count();
  if (count < 2) return numberTasks_->setHidden(true);
  numberTasks_->setStringValue(std::to_string(count));
  numberTasks_->setHidden(false);
}

// Who is notified of what the next three change may release the view and remove the task, whose key the caller's text may be.

void ProgressMonitorView::addBackgroundTaskProgress(std::string_view task, double totalLength, const void* abortSem) {
  const Ref<NSView> held = refTo<NSView>(*this);
  const std::string key(task);
  if (const Ref<NSDictionary> record = recordOf(key)) {
    replaceValue(*record, lengthName, totalLength, key);
  } else {
    backgroundTasks_->setObjectForKey(
        make<NSDictionary>(NSDictionary::Entries{{std::string(lengthName), make<NSNumber>(totalLength)},
                                                 {std::string(positionName), make<NSNumber>(0.0)},
                                                 {std::string(abortName), make<NSData>(&abortSem, sizeof abortSem)}}),
        key);
  }
  showTotals();
  showCount();
  setHidden(false);
  notifyAssistiveClients(key);
}

void ProgressMonitorView::setBackgroundTaskProgressPosition(double position, std::string_view forTask) {
  const Ref<NSDictionary> record = recordOf(forTask);
  if (!record) return;
  const Ref<NSView> held = refTo<NSView>(*this);
  const std::string key(forTask);
  replaceValue(*record, positionName, position, key);
  progressIndicator_->setDoubleValue(sumOf(positionName));
  notifyAssistiveClients(key);
}

void ProgressMonitorView::removeBackgroundTaskProgress(std::string_view task) {
  const Ref<NSView> held = refTo<NSView>(*this);
  const std::string key(task);
  backgroundTasks_->removeObjectForKey(key);
  showTotals();
  showCount();
  // The length and not the number of tasks: tasks without a length do not keep the view in sight.
  if (sumOf(lengthName) <= 0) setHidden(true);
  notifyAssistiveClients(key);
}

std::string ProgressMonitorView::accessibilityTitle() const {
  const std::size_t count = backgroundTasks_->count();
  const double length = sumOf(lengthName), position = sumOf(positionName);
  const double share = length > 0 ? position / length : 0;
  // Endless lengths make it NaN.
  const auto percent = share > 0 ? static_cast<int>(std::lround(std::min(share, 1.0) * 100)) : 0;
  const NSBundle& texts = *NSBundle::mainBundle();
  return std::to_string(count) + ' ' + texts.localizedStringForKey(count == 1 ? "task" : "tasks") + ", " +
         std::to_string(percent) + ' ' + texts.localizedStringForKey("percent");
}

// Bar and number say nothing that the view and its tasks do not.
std::optional<AccessibilityElements> ProgressMonitorView::accessibilityOwnChildren() const {
  AccessibilityElements result;
  for (const std::string& task : backgroundTasks_->allKeys()) {
    Ref<TaskElement>& element = elements_[task];
    if (!element) element = make<TaskElement>(refTo(*this), task);
    result.push_back(element);
  }
  return result;
}

void ProgressMonitorView::notifyAssistiveClients(std::string_view task) {
  NSAccessibilityPostNotification(refTo<NSObject>(*this), NSAccessibilityTitleChangedNotification);
  const auto found = elements_.find(task);
  if (found == elements_.end()) return;
  const Ref<TaskElement> element = found->second;
  if (recordOf(task)) return NSAccessibilityPostNotification(element, NSAccessibilityValueChangedNotification);
  elements_.erase(found);
  NSAccessibilityPostNotification(element, NSAccessibilityUIElementDestroyedNotification);
  element->leaveView();
}

}  // namespace TessalunaUIKit
