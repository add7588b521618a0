#include "gallery/player/PlayerSideBar.h"

namespace gallery {

using tessaluna::ready::SideSection;

std::vector<SideSection> PlayerSideBar::sections() const {
  std::vector<SideSection> sections;
  for (const CollectionSection& section : collections_.sections()) {
    SideSection shown{.title = section.title};
    for (const Collection& collection : section.collections)
      shown.items.push_back({.title = collection.title, .icon = collection.icon, .count = collection.songs().size()});
    sections.push_back(std::move(shown));
  }
  return sections;
}

}  // namespace gallery
