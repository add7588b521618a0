#include "gallery/cells/CellsHost.h"

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
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

Ref<NSControl> makeTabs(Theme theme, const Labels& labels) {
  const auto cell = make<UnderlinedSegmentedCell>();
  cell->setUseDarkTheme(theme == Theme::Dark);
  cell->setUnderlineColor(TessalunaStyleKit::tessalunaBlue());
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  cell->setSegmentCount(labels.size());
  for (std::size_t i = 0; i < labels.size(); ++i) cell->setLabelForSegment(labels[i], i);
  cell->setSelectedSegment(0);
  const auto control = make<NSSegmentedControl>(NSZeroRect);
  control->setCell(cell);
  return control;
}

Ref<NSControl> makePopUp(Theme theme, const Labels& titles) {
  const auto cell = make<ExtPopUpButtonCell>();
  cell->setUseDarkTheme(theme == Theme::Dark);
  cell->addItemsWithTitles(titles);
  const auto button = make<NSPopUpButton>(NSZeroRect);
  button->setCell(cell);
  return button;
}

Ref<NSControl> makeStars(Theme theme, bool isEditable) {
  NSCoder coder;
  coder.encode(3, "doubleValue").encode(isEditable, "editable");
  const auto cell = make<DotsLevelIndicatorCell>(coder);
  if (theme == Theme::Dark) cell->setBackgroundStyle(NSBackgroundStyleDark);
  const auto indicator = make<NSLevelIndicator>(NSZeroRect);
  indicator->setCell(cell);
  return indicator;
}

Ref<NSControl> makeRow(Theme theme, const std::string& text, const Ref<NSImage>& image) {
  const auto cell = make<ImageAndTextCell>();
  cell->setStringValue(text);
  cell->setCellImage(image);
  cell->setEditable(image != nullptr);
  cell->setLineBreakMode(NSLineBreakByTruncatingTail);
  const bool isGroup = cell->isGroupCell();
  if (isGroup) cell->setFont(NSFont::boldSystemFontOfSize(NSFont::smallSystemFontSize()));
  cell->setTextColor(theme == Theme::Dark ? NSColor::colorWithCalibratedWhite(isGroup ? 0.6 : 0.9, 1)
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

std::vector<CellsHost::Sample> CellsHost::makeSamples(Theme theme) {
  const auto separated = std::dynamic_pointer_cast<NSPopUpButton>(makePopUp(theme, {"By title", "By artist", "By date"}));
  separated->menu()->setAutoenablesItems(false);
  separated->menu()->addItem(NSMenuItem::separatorItem());
  separated->addItemWithTitle("By rating (no ratings yet)");
  separated->itemAtIndex(4)->setEnabled(false);
  std::vector<Sample> samples = {
      {"UnderlinedSegmentedCell", "tabs", makeTabs(theme, {"Albums", "Tracks", "Artists"}), 34},
      {"with long labels", "long-tabs",
       makeTabs(theme, {"Recently added albums", "Tracks", "Artists that you follow", "Playlists of friends"}), 34},
      {"ExtPopUpButtonCell", "pop-up", separated, 32},
      {"with a title that is too long", "long-pop-up",
       makePopUp(theme, {"The collected recordings of a very long evening in the small hall, with an introduction",
                         "Something short"}),
       32},
      {"DotsLevelIndicatorCell, editable", "stars", makeStars(theme, true), 18},
      {"not editable", "fixed-stars", makeStars(theme, false), 18},
      {"ImageAndTextCell: a group, and rows to be edited", "group", makeRow(theme, "LIBRARY", nullptr), 24},
      {"", "row", makeRow(theme, "Albums", TessalunaStyleKit::imageOfMissingAlbumArtWithImageSize({32, 32})), 18},
      {"", "long-row",
       makeRow(theme, "Everything that was recorded in the old mill between spring and the end of autumn",
               TessalunaStyleKit::imageOfMissingAlbumArtWithImageSize({32, 32})),
       24},
  };
  const std::string themeName = theme == Theme::Dark ? "dark" : "light";
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
