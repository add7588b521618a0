// The ready-made side bar over what the gallery invents: places to choose, and sections with views of the host's own, one within
// another. The program changes texts in it, which grow while their section is open and while it is closed, and removes
// sections.
#pragma once

#include <string>

#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/ready/sidebar/SideBar.h"

namespace gallery {

class SectionsHost {
 public:
  SectionsHost();

  const tessaluna::platform::Ref<tessaluna::ready::SideBar>& sideBar() const { return sideBar_; }

  // These change the text of the section that grows, and return how many lines it then has.
  int addLine() { return setLines(lines_ + 1); }
  int removeLine() { return setLines(lines_ - 1); }
  // All sections, with animation.
  void setDisclosed(bool areDisclosed);
  // The section about the album.
  void setHasAbout(bool hasAbout);

 private:
  class Places;
  int setLines(int lines);

  const std::shared_ptr<Places> places_;
  const tessaluna::platform::Ref<tessaluna::ready::SideBar> sideBar_;
  int lines_ = 3;
};

}  // namespace gallery
