// A side bar of sections that fold, one within another, as a host describes it in an interface file. What a program changes in
// it are texts: they grow while their section is open, and while it is closed.
#pragma once

#include <map>
#include <string>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/containers/DisclosureView.h"

namespace gallery {

class SectionsHost {
 public:
  SectionsHost();
  ~SectionsHost();  // lets the sections and their headers go, which keep each other alive
  SectionsHost(const SectionsHost&) = delete;
  SectionsHost& operator=(const SectionsHost&) = delete;

  const tessaluna::platform::Ref<tessaluna::platform::NSView>& sideBar() const { return sideBar_; }

  // The text of the section that grows, and how many lines it then has.
  int addLine() { return setLines(lines_ + 1); }
  int removeLine() { return setLines(lines_ - 1); }
  // All sections, with animation.
  void setDisclosed(bool areDisclosed);

 private:
  int setLines(int lines);

  tessaluna::platform::Ref<tessaluna::platform::NSView> sideBar_;
  tessaluna::platform::Ref<tessaluna::platform::NSTextField> growingText_;
  std::vector<tessaluna::platform::Ref<TessalunaUIKit::DisclosureView>> sections_;
  int lines_ = 3;
};

}  // namespace gallery
