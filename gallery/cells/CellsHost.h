// A host of the themed cells: it makes the controls for a dark or a light background, and reports what the user did with them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/views/NSControl.h"

namespace gallery {

enum class CellTheme { Dark, Light };

class CellsHost : public tessaluna::platform::NSObject {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  explicit CellsHost(std::function<void(const std::string&)> report);

  struct Sample {
    std::string note;  // above the control
    std::string name;  // in reports, with the theme after it
    tessaluna::platform::Ref<tessaluna::platform::NSControl> control;
    double height = 0;  // points
  };
  // The samples of the theme, in the order of the page. The controls have the host as their target and do not keep it alive.
  std::vector<Sample> makeSamples(CellTheme theme);

  // A table of albums with its header above it: pictures, titles that can be edited, ratings. Its data is the host's.
  tessaluna::platform::Ref<tessaluna::platform::NSView> makeTable(tessaluna::platform::CGRect frame);

  void changed(tessaluna::platform::NSObject* sender);  // "changed:"

 private:
  class Albums;
  std::function<void(const std::string&)> report_;
  std::shared_ptr<Albums> albums_;
  std::vector<std::pair<tessaluna::platform::WeakRef<tessaluna::platform::NSObject>, std::string>> names_;
};

}  // namespace gallery
