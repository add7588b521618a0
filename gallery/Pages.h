// The pages of the gallery in one table: a new page is a row in Pages.cpp and a source of its own. A page shows one or more
// classes of the library at work.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

class QWidget;

namespace gallery {

// A page calls it with what the user did; the window shows that at its bottom.
using Report = std::function<void(const std::string&)>;

struct Page {
  std::string_view name;                      // in the list at the side, and for --page
  std::string_view summary;                   // one sentence below the title
  QWidget* (*make)(Report report) = nullptr;  // owned by whoever shows it
};

std::span<const Page> pages();
// Ignores case. Null for an unknown name.
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
