#include "gallery/cells/CellsHost.h"

#include <algorithm>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/uikit/cells/DotsLevelIndicatorCell.h"
#include "tessaluna/uikit/cells/ExtPopUpButtonCell.h"
#include "tessaluna/uikit/cells/ImageAndTextCell.h"
#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"
#include "tessaluna/uikit/stylekit/TessalunaStyleKit.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr Selector selectors[] = {action<&CellsHost::changed>("changed:")};

using Labels = std::vector<std::string>;

Ref<NSControl> makeTabs(CellTheme theme, const Labels& labels) {
  const auto cell = make<UnderlinedSegmentedCell>();
  cell->setUseDarkTheme(theme == CellTheme::Dark);
  cell->setUnderlineColor(TessalunaStyleKit::tessalunaBlue());
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  cell->setSegmentCount(labels.size());
  for (std::size_t i = 0; i < labels.size(); ++i) cell->setLabelForSegment(labels[i], i);
  cell->setSelectedSegment(0);
  const auto control = make<NSSegmentedControl>(NSZeroRect);
  control->setCell(cell);
  return control;
}

Ref<NSControl> makePopUp(CellTheme theme, const Labels& titles) {
  const auto cell = make<ExtPopUpButtonCell>();
  cell->setUseDarkTheme(theme == CellTheme::Dark);
  cell->addItemsWithTitles(titles);
  const auto button = make<NSPopUpButton>(NSZeroRect);
  button->setCell(cell);
  return button;
}

Ref<NSControl> makeStars(CellTheme theme, bool isEditable) {
  NSCoder coder;
  coder.encode(3, "doubleValue").encode(isEditable, "editable");
  const auto cell = make<DotsLevelIndicatorCell>(coder);
  if (theme == CellTheme::Dark) cell->setBackgroundStyle(NSBackgroundStyleDark);
  const auto indicator = make<NSLevelIndicator>(NSZeroRect);
  indicator->setCell(cell);
  return indicator;
}

// On a dark ground whatever the desktop's colors, in which the caret and what is selected would not be seen.
class RowOnDark : public ImageAndTextCell {
 public:
  using ImageAndTextCell::ImageAndTextCell;
  Ref<NSCell> copy() const override { return make<RowOnDark>(*this); }
  Ref<NSText> setUpFieldEditorAttributes(const Ref<NSText>& editor) override {
    const Ref<NSText> ready = ImageAndTextCell::setUpFieldEditorAttributes(editor);
    ready->setInsertionPointColor(textColor());
    ready->setSelectedTextBackgroundColor(NSColor::colorWithCalibratedRed(0.15, 0.3, 0.6, 1));
    return ready;
  }
};

Ref<NSControl> makeRow(CellTheme theme, const std::string& text, const Ref<NSImage>& image) {
  const Ref<ImageAndTextCell> cell = theme == CellTheme::Dark ? make<RowOnDark>() : make<ImageAndTextCell>();
  cell->setStringValue(text);
  cell->setCellImage(image);
  cell->setEditable(image != nullptr);
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  const bool isGroup = cell->isGroupCell();
  if (isGroup) cell->setFont(NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize()));
  cell->setTextColor(theme == CellTheme::Dark ? NSColor::colorWithCalibratedWhite(isGroup ? 0.6 : 0.9, 1)
                                              : NSColor::colorWithCalibratedWhite(isGroup ? 0.45 : 0.1, 1));
  const auto field = make<NSTextField>(NSZeroRect);
  field->setCell(cell);
  return field;
}

std::string stateOf(NSObject& sender) {
  if (const auto* tabs = dynamic_cast<NSSegmentedControl*>(&sender)) {
    const auto selected = tabs->selectedSegment();
    return selected ? tabs->labelForSegment(*selected).value_or("") : "nothing";
  }
  if (const auto* popUp = dynamic_cast<NSPopUpButton*>(&sender)) return popUp->titleOfSelectedItem();
  if (const auto* level = dynamic_cast<NSLevelIndicator*>(&sender)) return numberText(level->doubleValue());
  return dynamic_cast<NSControl&>(sender).stringValue();
}

}  // namespace

const ClassInfo CellsHost::staticClassInfo{.name = "CellsHost", .base = &NSObject::staticClassInfo, .selectors = selectors};

// The rows of the table, in the order that its header asks for.
class CellsHost::Albums : public NSTableViewDataSource,
                          public NSTableViewCellSource,
                          public NSTableViewDelegate,
                          public NSTableViewCellDelegate {
 public:
  explicit Albums(std::function<void(const std::string&)> report) : report_(std::move(report)) {}

  std::size_t numberOfRowsInTableView(NSTableView&) override { return albums_.size(); }
  Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t) override { return nullptr; }
  Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn& column, std::size_t row) override {
    const Album& album = albums_.at(row);
    if (column.identifier() == "rating") return make<NSNumber>(album.rating);
    return make<NSString>(column.identifier() == "title" ? album.title : album.artist);
  }
  void tableViewSetObjectValue(NSTableView&, const Ref<NSObject>& value, NSTableColumn& column, std::size_t row) override {
    Album& album = albums_.at(row);
    const auto* number = dynamic_cast<const NSNumber*>(value.get());
    const auto* text = dynamic_cast<const NSString*>(value.get());
    if (column.identifier() == "rating" && number) album.rating = number->doubleValue();
    if (column.identifier() == "title" && text) album.title = text->UTF8String();
    report_(column.identifier() + " of row " + std::to_string(row) + ": " +
            (number ? number->stringValue()
             : text ? text->UTF8String()
                    : ""));
  }
  void tableViewSortDescriptorsDidChange(NSTableView& table) override {
    const NSSortDescriptor& by = *table.sortDescriptors().front();
    std::stable_sort(albums_.begin(), albums_.end(), [&](const Album& a, const Album& b) {
      const Album &one = by.ascending() ? a : b, &two = by.ascending() ? b : a;
      return by.key() == "rating" ? one.rating < two.rating
                                  : (by.key() == "title" ? one.title < two.title : one.artist < two.artist);
    });
    table.reloadData();
    report_("sorted by " + by.key() + (by.ascending() ? "" : ", downward"));
  }
  void tableViewWillDisplayCell(NSTableView&, NSCell& cell, NSTableColumn&, std::size_t) override {
    if (auto* title = dynamic_cast<ImageAndTextCell*>(&cell)) title->setCellImage(picture_);
  }

 private:
  struct Album {
    std::string title, artist;
    double rating = 0;
  };
  std::function<void(const std::string&)> report_;
  std::vector<Album> albums_ = {{"Harbor lights", "Ines Calder", 4},
                                {"Slow weather", "The Old Mill", 2},
                                {"Nine rooms", "Tove Arnesen", 5},
                                {"A map of rivers", "Quartet Bellamy", 3},
                                {"Second winter", "Ines Calder", 0}};
  const Ref<NSImage> picture_ = TessalunaStyleKit::imageOfMissingAlbumArtWithImageSize({32, 32});
};

CellsHost::CellsHost(std::function<void(const std::string&)> report)
    : report_(std::move(report)), albums_(std::make_shared<Albums>(report_)) {}

Ref<NSView> CellsHost::makeTable(CGRect frame) {
  const auto table = make<NSTableView>(NSZeroRect);
  table->accessibilitySetOverrideValue("Albums", NSAccessibilityDescriptionAttribute);
  const auto addColumn = [&](const std::string& key, const std::string& title, CGFloat width) {
    const auto column = make<NSTableColumn>(key);
    column->setTitle(title);
    column->setWidth(width);
    column->setSortDescriptorPrototype(make<NSSortDescriptor>(key, key != "rating"));
    table->addTableColumn(column);
    return column;
  };
  const auto title = make<ImageAndTextCell>();
  title->setLineBreakMode(NSLineBreakByTruncatingTail);
  addColumn("title", "Title", 170)->setDataCell(title);
  const auto artist = addColumn("artist", "Artist", 140);
  artist->setEditable(false);
  artist->dataCell()->setFont(NSFont::systemFontOfSize(NSFont::smallSystemFontSize()));
  NSCoder coder;
  addColumn("rating", "Rating", 80)->setDataCell(make<DotsLevelIndicatorCell>(coder));
  table->setRowHeight(17);
  table->setDataSource(albums_);
  table->setDelegate(albums_);
  table->setHeaderView(make<NSTableHeaderView>(NSZeroRect));
  const auto scrollView = make<NSScrollView>(frame);
  scrollView->setHasVerticalScroller(true);
  scrollView->setAutohidesScrollers(true);
  scrollView->setDocumentView(table);
  table->reloadData();
  return scrollView;
}

std::vector<CellsHost::Sample> CellsHost::makeSamples(CellTheme theme) {
  const auto separated = std::dynamic_pointer_cast<NSPopUpButton>(makePopUp(theme, {"By title", "By artist", "By date"}));
  separated->menu()->setAutoenablesItems(false);
  separated->menu()->addItem(NSMenuItem::separatorItem());
  separated->addItemWithTitle("By rating (no ratings yet)");
  separated->itemAtIndex(4)->setEnabled(false);
  const auto withMenu =
      makeTabs(theme, {"Recently added albums", "Tracks", "Artists that you follow", "Playlists of friends"});
  dynamic_cast<NSSegmentedControl&>(*withMenu).setPutsOverflowIntoMenu(true);
  std::vector<Sample> samples = {
      {"UnderlinedSegmentedCell", "tabs", makeTabs(theme, {"Albums", "Tracks", "Artists"}), 32},
      {"with long labels", "long-tabs",
       makeTabs(theme, {"Recently added albums", "Tracks", "Artists that you follow", "Playlists of friends"}), 32},
      {"with a menu of those that do not fit", "menu-tabs", withMenu, 32},
      {"ExtPopUpButtonCell", "pop-up", separated, 30},
      {"with a title that is too long", "long-pop-up",
       makePopUp(theme, {"The collected recordings of a very long evening in the small hall, with an introduction",
                         "Something short"}),
       30},
      {"DotsLevelIndicatorCell, editable", "stars", makeStars(theme, true), 18},
      {"not editable", "fixed-stars", makeStars(theme, false), 18},
      {"ImageAndTextCell: a group and rows", "group", makeRow(theme, "LIBRARY", nullptr), 24},
      {"", "row", makeRow(theme, "Albums", TessalunaStyleKit::imageOfMissingAlbumArtWithImageSize({32, 32})), 18},
      {"", "long-row",
       makeRow(theme, "Everything that was recorded in the old mill between spring and the end of autumn",
               TessalunaStyleKit::imageOfMissingAlbumArtWithImageSize({32, 32})),
       24},
  };
  const std::string themeName = theme == CellTheme::Dark ? "dark" : "light";
  for (Sample& sample : samples) {
    sample.name += "-" + themeName;
    sample.control->setTarget(refTo(*this));
    sample.control->setAction("changed:");
    names_.emplace_back(sample.control, sample.name);
  }
  return samples;
}

void CellsHost::changed(NSObject* sender) {
  for (const auto& [control, name] : names_)
    if (control.lock().get() == sender) report_(name + ": " + stateOf(*sender));
}

}  // namespace gallery
