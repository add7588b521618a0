// The target of the page's controls: it tells which control sent which action.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/foundation/NSObject.h"

namespace gallery {

class ControlReporter : public platform::NSObject {
 public:
  static const platform::ClassInfo staticClassInfo;
  const platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit ControlReporter(std::function<void(const std::string&)> report) : report_(std::move(report)) {}

  // How a sender is called; it is not kept alive.
  void nameControl(const platform::NSObject& control, std::string name) { names_[&control] = std::move(name); }

  void showPrevious(platform::NSObject* sender) { report_(names_[sender] + " showPrevious:"); }
  void showNext(platform::NSObject* sender) { report_(names_[sender] + " showNext:"); }
  void closeItem(platform::NSObject* sender) { report_(names_[sender] + " closeItem:"); }

 private:
  std::function<void(const std::string&)> report_;
  std::map<const platform::NSObject*, std::string> names_;
};

}  // namespace gallery
