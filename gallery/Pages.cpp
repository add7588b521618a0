#include "gallery/Pages.h"

#include <QString>

namespace gallery {

namespace {

constexpr Page table[] = {
    {"Player", "A small player's window: ready-made hosts over invented music.", makePlayerPage},
    {"Artwork", "Every glyph of the style kit, drawn as vectors at any size.", makeArtworkPage},
    {"Small controls", "Glyph buttons and a status mark, and what they report.", makeSmallControlsPage},
    {"Track list", "Ten thousand tracks, each row with its play, favorite and more controls.", makeTrackListPage},
    {"Links", "Lines of links that shorten themselves, and a text with links in it.", makeLinksPage},
    {"Cells", "Tabs, pop-up buttons, ratings and rows, for dark and light grounds.", makeCellsPage},
    {"Search", "A field that completes over twenty thousand tracks, albums and artists.", makeSearchPage},
    {"Cover art", "Album covers that a click enlarges, as far as the screen goes.", makeCoverArtPage},
    {"Sections", "A side bar of sections that fold, with texts that grow.", makeSectionsPage},
    {"Transport", "A position slider over a player, and the buttons of its bar.", makeTransportPage},
    {"Start-up", "A splash over a start, and a monitor of background tasks.", makeStartupPage},
};

}  // namespace

std::span<const Page> pages() { return table; }

const Page* findPage(std::string_view name) {
  const auto folded = [](std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toCaseFolded();
  };
  for (const Page& page : table)
    if (folded(page.name) == folded(name)) return &page;
  return nullptr;
}

}  // namespace gallery
