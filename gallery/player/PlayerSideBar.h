// The collections of the library as items of a side bar, with how many songs are in each.
#pragma once

#include "gallery/player/Collections.h"
#include "tessaluna/ready/sidebar/SideBarModel.h"

namespace gallery {

class PlayerSideBar : public tessaluna::ready::SideBarModel {
 public:
  explicit PlayerSideBar(Collections collections) : collections_(std::move(collections)) {}

  std::vector<tessaluna::ready::SideSection> sections() const override;
  void countsDidChange() { didChange(); }

 private:
  const Collections collections_;
};

}  // namespace gallery
