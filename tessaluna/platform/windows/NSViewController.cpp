#include "tessaluna/platform/windows/NSViewController.h"

#include <utility>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/interface_files/NSNib.h"

namespace tessaluna::platform {

const Outlet NSViewController::outlets_[] = {outlet<&NSViewController::setView>("view")};
const ClassInfo NSViewController::staticClassInfo{
    .name = "NSViewController", .base = &NSResponder::staticClassInfo, .outlets = NSViewController::outlets_};

NSViewController::NSViewController(std::optional<std::string> nibName, NSBundle*) : nibName_(std::move(nibName)) {}
NSViewController::NSViewController(NSCoder& coder) : NSResponder(coder), nibName_(coder.decodeStringForKey("nibName")) {}
NSViewController::~NSViewController() = default;

const Ref<NSView>& NSViewController::view() {
  if (!view_) {
    loadView();
    if (!view_) stopProgram(className() + ": loading gave no view");
    viewDidLoad();
  }
  return view_;
}

void NSViewController::loadView() {
  const std::string name = nibName_.value_or(className());
  Ref<NSNib> nib = NSNib::nibNamed(name);
  if (!nib && !nibName_) nib = NSNib::nibNamed(std::string_view(name).substr(name.rfind('.') + 1));
  if (!nib) stopProgram(className() + ": there is no interface file \"" + name + "\"");
  NSNib::Contents contents = nib->instantiateWithOwner(refTo(*this));
  if (contents.error) stopProgram(className() + ": interface file \"" + name + "\": " + *contents.error);
  topLevelObjects_ = std::move(contents.topLevelObjects);
  for (const Ref<NSObject>& object : topLevelObjects_)
    if (const auto view = std::dynamic_pointer_cast<NSView>(object); view && !view_) view_ = view;
}

}  // namespace tessaluna::platform
