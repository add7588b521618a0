// The pages of the gallery, one table: a new page is a row in Pages.cpp and a source of its own. A page shows one or more
// classes of the library at work.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

class QWidget;

namespace gallery {

// What a page tells of what the user did with it; shown at the window's foot.
using Report = std::function<void(const std::string&)>;

struct Page {
  std::string_view name;                      // at the side, and for --page
  std::string_view summary;                   // one sentence below the title
  QWidget* (*make)(Report report) = nullptr;  // owned by whoever shows it
};

std::span<const Page> pages();
// Capitals do not count. Absent if there is no page of this name.
const Page* findPage(std::string_view name);

QWidget* makePlayerPage(Report report);
QWidget* makeArtworkPage(Report report);
QWidget* makeSmallControlsPage(Report report);
QWidget* makeTrackListPage(Report report);
QWidget* makeLinksPage(Report report);
QWidget* makeCellsPage(Report report);
QWidget* makeSearchPage(Report report);
QWidget* makeCoverArtPage(Report report);
QWidget* makeSectionsPage(Report report);
QWidget* makeTransportPage(Report report);
QWidget* makeStartupPage(Report report);

}  // namespace gallery
