// A side bar of 200 points with two sections, one below the other, as a host would write it in an interface file. Each has a
// header of 24 points and content of a certain height, which its bottom follows as far as it may.
#pragma once

#include <string>

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tessaluna/uikit/containers/DisclosureView.h"
#include "tessaluna/uikit/interfaceFileClasses.h"
#include "tests/harness/ProbeView.h"
#include "tests/harness/StillWorld.h"

namespace harness {

inline std::string constraintJson(const std::string& first, const std::string& attribute, const std::string& second,
                                  const std::string& secondAttribute, double constant, double priority = 1000) {
  std::string json = R"({"class": "NSLayoutConstraint", "firstAttribute": ")" + attribute + R"(", "constant": )" +
                     std::to_string(constant) + R"(, "priority": )" + std::to_string(priority);
  json += R"(, "identifier": ")" + first + "." + attribute + "\"";
  if (!second.empty()) json += R"(, "secondAttribute": ")" + secondAttribute + "\"";
  json += R"(, "outlets": {"firstItem": ")" + first + "\"";
  if (!second.empty()) json += R"(, "secondItem": ")" + second + "\"";
  return json + "}}";
}

inline constexpr std::string_view freeOfFrame = R"("properties": {"translatesAutoresizingMaskIntoConstraints": false})";

// The JSON of a section. Its parts have ids that begin with the name: "aHeader", "aButton", "aContent".
inline std::string sectionJson(const std::string& name, double contentHeight) {
  const std::string header = name + "Header", button = name + "Button", content = name + "Content", free(freeOfFrame);
  const auto equal = [&](const std::string& first, const std::string& attribute, const std::string& second) {
    return constraintJson(first, attribute, second, attribute, 0) + ", ";
  };
  return R"({"id": ")" + name + R"(", "class": "TessalunaUIKit.DisclosureView", )" + free +
         R"(, "outlets": {"headerView": ")" + header + R"(", "contentView": ")" + content + R"("}, "subviews": [)" +
         R"({"id": ")" + header + R"(", "class": "TessalunaUIKit.DisclosureHeaderView", )" + free +
         R"(, "outlets": {"disclosureButton": ")" + button + R"(", "parentDisclosure": ")" + name + R"("}, "subviews": [)" +
         R"({"id": ")" + button + R"(", "class": "NSButton", "frame": [150, 2, 40, 20], "action": "toggleDisclosure:", )" +
         R"("properties": {"title": "?"}, "outlets": {"target": ")" + name + R"("}}]}, )" +  //
         R"({"id": ")" + content + R"(", "class": "NSView", )" + free + R"(}], "constraints": [)" +
         equal(header, "left", name) + equal(header, "right", name) + equal(header, "top", name) +
         constraintJson(header, "height", "", "", 24) + ", " + equal(content, "left", name) + equal(content, "right", name) +
         constraintJson(content, "top", header, "bottom", 0) + ", " +
         constraintJson(content, "height", "", "", contentHeight) + ", " +
         constraintJson(name, "bottom", content, "bottom", 0, 500) + "]}";
}

class SectionsWorld : public StillWorld {
 protected:
  using DisclosureView = TessalunaUIKit::DisclosureView;
  template <class T>
  using Ref = tessaluna::platform::Ref<T>;

  // In a window of 200 by 600 points at the given place.
  explicit SectionsWorld(tessaluna::platform::CGPoint origin = {100, 100}) {
    using namespace tessaluna::platform;
    TessalunaUIKit::registerInterfaceFileClasses();
    const std::string json =
        R"({"objects": [{"id": "bar", "class": "NSView", "frame": [0, 0, 200, 600], "subviews": [)" + sectionJson("a", 100) +
        ", " + sectionJson("b", 60) + R"(], "constraints": [)" + constraintJson("a", "left", "bar", "left", 0) + ", " +
        constraintJson("a", "right", "bar", "right", 0) + ", " + constraintJson("a", "top", "bar", "top", 0) + ", " +
        constraintJson("b", "left", "bar", "left", 0) + ", " + constraintJson("b", "right", "bar", "right", 0) + ", " +
        constraintJson("b", "top", "a", "bottom", 0) + "]}]}";
    const auto contents = make<NSNib>(json)->instantiateWithOwner(nullptr);
    EXPECT_EQ(contents.error, std::nullopt);
    bar = std::dynamic_pointer_cast<NSView>(contents.topLevelObjects.at(0));
    section = std::dynamic_pointer_cast<DisclosureView>(Ref<NSView>(bar->subviews()[0]));
    below = std::dynamic_pointer_cast<DisclosureView>(Ref<NSView>(bar->subviews()[1]));
    window = showWindow({origin.x, origin.y, 200, 600});
    outer = make<ProbeView>(CGRect{0, 0, 200, 600});
    window->contentView()->addSubview(outer);
    outer->addSubview(bar);
    desktop.settle();
  }
  // A wired pair keeps itself alive.
  ~SectionsWorld() override {
    for (const auto& one : {section, below})
      if (one && one->headerView()) one->headerView()->setParentDisclosure(nullptr);
  }

  static Ref<tessaluna::platform::NSLayoutConstraint> constraintNamed(const DisclosureView& view,
                                                                      std::string_view identifier) {
    for (const auto& constraint : view.constraints())
      if (constraint->identifier() == identifier) return constraint;
    return nullptr;
  }
  // The one that the section has made itself.
  static Ref<tessaluna::platform::NSLayoutConstraint> collapse(const DisclosureView& view) {
    return constraintNamed(view, "");
  }
  tessaluna::platform::CGFloat limit() const { return collapse(*section)->constant(); }
  void growContent(double height) { constraintNamed(*section, "aContent.height")->setConstant(height); }
  tessaluna::platform::CGFloat heightOf(const Ref<DisclosureView>& view) {
    window->layoutIfNeeded();
    return view->frame().size.height;
  }
  // From the top of the window, downward.
  tessaluna::platform::CGFloat topOf(const Ref<DisclosureView>& view) {
    window->layoutIfNeeded();
    return 600 - CGRectGetMaxY(view->frame());
  }
  const Ref<tessaluna::platform::NSButton>& button() const { return section->headerView()->disclosureButton(); }
  void finish() { desktop.advance(1); }

  Ref<ProbeView> outer;  // gets what the header does not take
  Ref<tessaluna::platform::NSView> bar;
  Ref<DisclosureView> section, below;
  Ref<tessaluna::platform::NSWindow> window;
};

}  // namespace harness
