// The target of the page's controls: it reports which control sent which action.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "tessaluna/platform/foundation/NSObject.h"

namespace gallery {

class ControlReporter : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit ControlReporter(std::function<void(const std::string&)> report) : report_(std::move(report)) {}

  // The name of a sender, which the reporter does not keep alive.
  void nameControl(const tessaluna::platform::NSObject& control, std::string name) { names_[&control] = std::move(name); }

  void showPrevious(tessaluna::platform::NSObject* sender) { report_(names_[sender] + " showPrevious:"); }
  void showNext(tessaluna::platform::NSObject* sender) { report_(names_[sender] + " showNext:"); }
  void closeItem(tessaluna::platform::NSObject* sender) { report_(names_[sender] + " closeItem:"); }

 private:
  std::function<void(const std::string&)> report_;
  std::map<const tessaluna::platform::NSObject*, std::string> names_;
};

}  // namespace gallery
