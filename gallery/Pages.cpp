#include "gallery/Pages.h"

namespace gallery {

namespace {

constexpr Page table[] = {
    {"Artwork", makeArtworkPage},
    {"Small controls", makeSmallControlsPage},
    {"Track list", makeTrackListPage},
};

}  // namespace

std::span<const Page> pages() { return table; }

const Page* findPage(std::string_view name) {
  for (const Page& page : table)
    if (page.name == name) return &page;
  return nullptr;
}

}  // namespace gallery
