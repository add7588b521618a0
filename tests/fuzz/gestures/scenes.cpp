#include <algorithm>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSSortDescriptor.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/text/NSAttributedString.h"
#include "tessaluna/platform/views/NSImageView.h"
#include "tessaluna/platform/views/NSLevelIndicator.h"
#include "tessaluna/platform/views/NSPopUpButton.h"
#include "tessaluna/platform/views/NSProgressIndicator.h"
#include "tessaluna/platform/views/NSScrollView.h"
#include "tessaluna/platform/views/NSSegmentedControl.h"
#include "tessaluna/platform/views/NSTableColumn.h"
#include "tessaluna/platform/views/NSTableHeaderView.h"
#include "tessaluna/platform/views/NSTableView.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSTextView.h"
#include "tessaluna/ready/TessalunaReady.h"
#include "tessaluna/uikit/TessalunaUIKit.h"
#include "tests/fuzz/gestures/Scene.h"

namespace fuzz {

using namespace tessaluna::platform;
using namespace tessaluna::ready;
using namespace TessalunaUIKit;

namespace {

constexpr std::string_view texts[] = {
    "Slow orbit", "",    "A much longer name than there is room for", "שלום עולם", "日本語 の 歌", "e\u0301 👩‍🚀 x",
    "two\nlines", "abba"};
std::string textOf(FuzzInput& input) { return std::string(texts[input.below(std::size(texts))]); }

Ref<NSImage> pictureOf(FuzzInput& input) {
  const int width = 1 + static_cast<int>(input.below(200)), height = 1 + static_cast<int>(input.below(200));
  std::string bytes = "P6 " + std::to_string(width) + " " + std::to_string(height) + " 255\n";
  bytes.resize(bytes.size() + static_cast<std::size_t>(3 * width * height), static_cast<char>(input.byte()));
  return NSImage::initWithData(std::as_bytes(std::span(bytes)));
}

// The program behind all controls of a scene: it does nothing but what the gestures have it do.
class Program : public NSObject,
                public NSTextFieldDelegate,
                public LinkTextFieldActionTarget,
                public ClickableLabelTarget,
                public TrackListRowActionTarget {
 public:
  explicit Program(std::function<void()> act) : act_(std::move(act)) {}
  void controlTextDidBeginEditing(const Ref<NSNotification>&) override { act_(); }
  void controlTextDidChange(const Ref<NSNotification>&) override { act_(); }
  void controlTextDidEndEditing(const Ref<NSNotification>&) override { act_(); }
  void linkClicked(std::size_t, MultipleLinksTextField& sender) override {
    const Ref<NSObject> held = refTo(sender);
    act_();
    sender.setIsPressed(false);
  }
  void labelClicked(ClickableLabel&) override { act_(); }
  void linkClicked(const URL&) override { act_(); }
  void trackRowPlayButtonClicked(TrackRowPlayButton&) override { act_(); }
  void trackRowFavoriteButtonClicked(TrackRowFavoriteButton&) override { act_(); }
  void trackRowMoreButtonClicked(TrackRowMoreButton&) override { act_(); }

 private:
  std::function<void()> act_;
};

// As a program has it whose other views move over it: by itself the glyph fills what is to be redrawn.
template <class Glyph>
class Whole : public Glyph {
 public:
  using Glyph::Glyph;
  void drawRect(CGRect) override { Glyph::drawRect(this->bounds()); }
};

// A program leaves it room for its "…": a narrower line of links is a mistake.
class Links : public MultipleLinksTextField {
 public:
  using MultipleLinksTextField::MultipleLinksTextField;
  void setFrame(CGRect frame) override {
    constexpr CGFloat leastWidth = 10;
    MultipleLinksTextField::setFrame({frame.origin, {std::max(frame.size.width, leastWidth), frame.size.height}});
  }
};

template <class Kept>
std::shared_ptr<Kept> keep(Scene& scene, const std::shared_ptr<Kept>& kept) {
  scene.kept.push_back(kept);
  return kept;
}

std::function<void(std::size_t)> acting(Scene& scene) {
  return [&scene](std::size_t) { scene.act(); };
}

// Stock and themed controls.
void fillWithControls(Scene& scene) {
  const auto act = [&scene] { scene.act(); };
  const auto button = scene.add<NSButton>(CGRect{10, 270, 80, 22});
  button->setTitle("Press");
  button->setKeyEquivalent("p");
  button->setAction(act);
  const auto box = scene.add<NSButton>(CGRect{100, 270, 80, 22});
  box->setButtonType(NSButtonType::Toggle);
  box->setAllowsMixedState(true);
  box->setTitle("Check");
  box->setAction(act);
  const auto close = scene.add<Whole<CloseButton>>(CGRect{190, 270, 20, 20});
  close->setAction(act);
  const auto arrow = scene.add<Whole<PrevNextButton>>(CGRect{220, 270, 20, 20});
  arrow->setAction(act);
  const auto play = scene.add<PlaybackTransportButton>(CGRect{250, 264, 32, 32});
  play->setAction(act);
  for (const auto& each : {button, box})
    scene.mayChange(each, [](NSButton& view, FuzzInput& input) {
      if (input.flag()) view.setTitle(textOf(input));
      else view.setNextState();
    });
  scene.mayChange(play,
                  [](PlaybackTransportButton& view, FuzzInput& input) { view.setTransportButtonStyle(input.below(8)); });

  const auto slider = scene.add<NSSlider>(CGRect{10, 240, 150, 20});
  slider->setMaxValue(10);
  slider->setContinuous(true);
  slider->setAction(act);
  scene.mayChange(slider, [](NSSlider& view, FuzzInput& input) {
    switch (input.below(4)) {
      case 0: view.setDoubleValue(input.below(12)); break;
      case 1: view.setMaxValue(input.below(12)); break;
      case 2: view.setNumberOfTickMarks(input.below(12)); break;
      case 3: view.setAllowsTickMarkValuesOnly(input.flag()); break;
    }
  });
  const auto upright = scene.add<NSSlider>(CGRect{370, 160, 20, 100});
  upright->setMaxValue(1);
  upright->setAction(act);

  const auto plain = scene.add<NSSegmentedControl>(CGRect{170, 235, 190, 24});
  const auto underlined = make<NSSegmentedControl>(CGRect{10, 205, 200, 26});
  underlined->setCell(make<UnderlinedSegmentedCell>());
  scene.put(underlined);
  for (const auto& each : {plain, underlined}) {
    each->setSegmentCount(4);
    for (std::size_t i = 0; i < 4; ++i) each->setLabelForSegment("Tab " + std::to_string(i), i);
    each->setAction(act);
    each->setPutsOverflowIntoMenu(true);
    scene.mayChange(each, [](NSSegmentedControl& view, FuzzInput& input) {
      if (input.below(3) == 0) return view.setSegmentCount(input.below(6));
      if (view.segmentCount() == 0) return;
      const std::size_t segment = input.below(static_cast<unsigned>(view.segmentCount()));
      switch (input.below(4)) {
        case 0: view.setLabelForSegment(textOf(input), segment); break;
        case 1: view.setEnabledForSegment(input.flag(), segment); break;
        case 2: view.setSelectedSegment(segment); break;
        case 3: view.setWidthForSegment(input.below(90), segment); break;
      }
    });
  }

  const auto popUp = scene.add<NSPopUpButton>(CGRect{220, 205, 140, 24});
  popUp->addItemsWithTitles({"One", "Two", "Three"});
  popUp->setAction(act);
  scene.mayChange(popUp, [](NSPopUpButton& view, FuzzInput& input) {
    switch (input.below(4)) {
      case 0: view.addItemWithTitle(textOf(input)); break;
      case 1: view.removeAllItems(); break;
      case 2:
        if (view.numberOfItems() > 0) view.removeItemAtIndex(view.numberOfItems() - 1);
        break;
      case 3: view.setPullsDown(input.flag()); break;
    }
  });

  const auto level = scene.add<NSLevelIndicator>(CGRect{10, 180, 120, 18});
  level->setEditable(true);
  level->setAction(act);
  NSCoder archive;
  archive.encode(3, "doubleValue").encode(true, "editable");
  const auto dots = make<NSLevelIndicator>(CGRect{140, 180, 100, 18});
  dots->setCell(make<DotsLevelIndicatorCell>(archive));
  dots->setAction(act);
  scene.put(dots);
  for (const auto& each : {level, dots})
    scene.mayChange(each, [](NSLevelIndicator& view, FuzzInput& input) {
      if (input.flag()) view.setDoubleValue(input.below(7));
      else view.setMaxValue(input.below(9));
    });

  const auto bar = scene.add<NSProgressIndicator>(CGRect{250, 180, 100, 16});
  bar->setIndeterminate(false);
  const auto wheel = scene.add<NSProgressIndicator>(CGRect{10, 140, 32, 32});
  wheel->setStyle(NSProgressIndicatorStyleSpinning);
  for (const auto& each : {bar, wheel})
    scene.mayChange(each, [](NSProgressIndicator& view, FuzzInput& input) {
      switch (input.below(6)) {
        case 0: view.setDoubleValue(input.below(120)); break;
        case 1: view.setIndeterminate(input.flag()); break;
        case 2: view.startAnimation(nullptr); break;
        case 3: view.stopAnimation(nullptr); break;
        case 4: view.setDisplayedWhenStopped(input.flag()); break;
        case 5: view.setStyle(input.flag() ? NSProgressIndicatorStyleSpinning : NSProgressIndicatorStyleBar); break;
      }
    });

  const auto image = scene.add<NSImageView>(CGRect{50, 130, 48, 48});
  const auto cover = scene.add<CoverArtThumbnailView>(CGRect{105, 130, 48, 48});
  cover->setClosesByClickAndEscape(true);
  for (const Ref<NSImageView>& each : {image, Ref<NSImageView>(cover)})
    scene.mayChange(each, [](NSImageView& view, FuzzInput& input) {
      switch (input.below(3)) {
        case 0: view.setImage(pictureOf(input)); break;
        case 1: view.setImage(nullptr); break;
        case 2: view.setPreparesImages(input.flag()); break;
      }
    });

  const auto program = keep(scene, make<Program>(act));
  const auto favorite = scene.add<TrackRowFavoriteButton>(CGRect{160, 140, 24, 24});
  const auto more = scene.add<TrackRowMoreButton>(CGRect{190, 140, 24, 24});
  const auto rowPlay = scene.add<TrackRowPlayButton>(CGRect{220, 140, 24, 24});
  for (const Ref<TrackRowControl>& each :
       {Ref<TrackRowControl>(favorite), Ref<TrackRowControl>(more), Ref<TrackRowControl>(rowPlay)}) {
    each->setTarget(program);
    scene.mayChange(each, [](TrackRowControl& view, FuzzInput& input) {
      view.setHasMouseOnRow(input.flag());
      view.setNeedsDisplay(true);
    });
  }

  const auto links = scene.add<Links>(CGRect{10, 100, 150, 18});
  links->setTarget(program);
  links->setStringValues(std::vector<std::string>{"Amber Quartet", "The Old Mill", "Ines Calder"});
  links->setLinksEnabled(true);
  links->setTakesKeyboard(true);
  links->setShowsMenuAtEllipsis(true);
  scene.mayChange(links, [](MultipleLinksTextField& view, FuzzInput& input) {
    if (input.below(4) == 0) return view.setLinksEnabled(input.flag());
    std::vector<std::string> names(input.below(5));
    for (std::string& name : names) name = textOf(input);
    view.setStringValues(names);
  });
  const auto label = scene.add<ClickableLabel>(CGRect{170, 80, 150, 50});
  label->setBezeled(false);
  label->setEditable(false);
  label->setActionTarget(program);
  label->setTakesKeyboard(true);
  const auto linked = [](const std::string& name) {
    const auto text = make<NSMutableAttributedString>();
    text->appendAttributedString(NSAttributedString(std::string_view("by ")));
    text->appendAttributedString(
        NSAttributedString(std::string_view(name), {{NSLinkAttributeName, std::string("https://example.org/a")}}));
    text->appendAttributedString(NSAttributedString(std::string_view(" and others of the label")));
    return text;
  };
  label->setAttributedStringValue(linked("Amber Quartet"));
  scene.mayChange(
      label, [linked](ClickableLabel& view, FuzzInput& input) { view.setAttributedStringValue(linked(textOf(input))); });
}

// Texts that are written in.
void fillWithTexts(Scene& scene) {
  const auto program = keep(scene, make<Program>([&scene] { scene.act(); }));
  for (int i = 0; i < 3; ++i) {
    const auto field = scene.add<NSTextField>(CGRect{10, 260.0 - 30 * i, 150, 24});
    field->setDelegate(program);
    field->setAction([&scene] { scene.act(); });
    field->setPlaceholderString("Nothing yet");
    scene.mayChange(field, [](NSTextField& view, FuzzInput& input) {
      switch (input.below(6)) {
        case 0: view.setStringValue(textOf(input)); break;
        case 1: view.selectText(nullptr); break;
        case 2: view.setEditable(input.flag()); break;
        case 3: view.setAlignment(input.flag() ? NSTextAlignmentRight : NSTextAlignmentNatural); break;
        case 4: view.abortEditing(); break;
        case 5: view.setPlaceholderString(textOf(input)); break;
      }
    });
  }
  const auto scroll = scene.add<NSScrollView>(CGRect{170, 150, 220, 140});
  scroll->setHasVerticalScroller(true);
  scroll->setAutohidesScrollers(true);
  const auto text = make<NSTextView>(CGRect{0, 0, 200, 140});
  text->setAutoresizingMask(NSViewWidthSizable);
  scroll->setDocumentView(text);
  text->setString("One line\nand another one that is long enough to be wrapped where the view ends\n\nthe last");
  scene.mayChange(text, [](NSTextView& view, FuzzInput& input) {
    switch (input.below(6)) {
      case 0: view.setString(textOf(input)); break;
      case 1: view.setEditable(input.flag()); break;
      case 2: view.setString(view.string() + "\n" + textOf(input)); break;
      case 3: {
        const std::size_t length = view.textStorage()->length();
        const std::size_t start = length ? input.byte() % length : 0;
        view.setSelectedRange({start, length ? input.byte() % (length - start) : 0});
        break;
      }
      case 4: view.setTextContainerInset({input.below(9) * 1.0, input.below(9) * 1.0}); break;
      case 5: view.setHidden(input.flag()); break;
    }
  });
  const auto group = scene.add<NSView>(CGRect{10, 10, 380, 120});
  const auto inner = make<NSTextField>(CGRect{10, 10, 100, 24});
  inner->setAutoresizingMask(NSViewWidthSizable);
  group->addSubview(inner);
  scene.parts.push_back({inner});
  const auto ok = make<NSButton>(CGRect{120, 10, 80, 24});
  ok->setTitle("OK");
  ok->setKeyEquivalent("\r");
  ok->setAction([&scene] { scene.act(); });
  group->addSubview(ok);
  scene.parts.push_back({ok});
  const auto row = make<NSTextField>(CGRect{210, 10, 150, 24});
  row->setCell(make<ImageAndTextCell>());
  group->addSubview(row);
  scene.parts.push_back({row});
}

class Queue : public TrackModel {
 public:
  Queue() {
    for (int i = 0; i < 12; ++i) add(rows_.size(), "Track " + std::to_string(i));
  }
  std::size_t count() const override { return rows_.size(); }
  TrackRow row(std::size_t index) const override { return rows_.at(index).row; }
  std::uint64_t identityOf(std::size_t index) const override { return rows_.at(index).identity; }
  bool isSortable() const override { return true; }
  void sortBy(TrackColumn, bool ascending) override {
    std::stable_sort(rows_.begin(), rows_.end(), [ascending](const Song& a, const Song& b) {
      return ascending ? a.row.title < b.row.title : b.row.title < a.row.title;
    });
    didChangeAll();
  }
  void toggle(std::size_t index) {
    if (index >= rows_.size()) return;
    rows_[index].row.isFavorite = !rows_[index].row.isFavorite;
    didChangeRows(index);
  }
  void play(std::size_t index, Playback playback) {
    if (index >= rows_.size()) return;
    rows_[index].row.playback = playback;
    didChangeRows(index);
  }
  void change(FuzzInput& input) {
    const std::size_t place = rows_.empty() ? 0 : input.byte() % rows_.size();
    switch (input.below(6)) {
      case 0:
        add(place, textOf(input));
        didInsertRows(place);
        break;
      case 1:
        if (rows_.empty()) break;
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
        didRemoveRows(place);
        break;
      case 2: {
        if (rows_.empty()) break;
        const std::size_t to = input.byte() % rows_.size();
        const Song moved = rows_[place];
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(place));
        rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(to), moved);
        didMoveRow(place, to);
        break;
      }
      case 3:
        if (rows_.empty()) break;
        rows_[place].row.title = textOf(input);
        rows_[place].row.artists.push_back(textOf(input));
        didChangeRows(place);
        break;
      case 4:
        rows_.resize(std::min(rows_.size(), std::size_t{input.below(12)}));
        didChangeAll();
        break;
      case 5: {
        const std::size_t many = 1 + input.below(20);
        for (std::size_t i = 0; i < many; ++i) add(place, textOf(input));
        didInsertRows(place, many);
        break;
      }
    }
  }

 private:
  struct Song {
    TrackRow row;
    std::uint64_t identity = 0;
  };
  void add(std::size_t place, const std::string& title) {
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(place),
                 {{.title = title, .artists = {"Amber Quartet", "The Old Mill"}, .seconds = 245}, ++identities_});
  }
  std::vector<Song> rows_;
  std::uint64_t identities_ = 0;
};

class Places : public SideBarModel {
 public:
  std::vector<SideSection> sections() const override { return sections_; }
  void change(FuzzInput& input) {
    switch (input.below(5)) {
      case 0:
        sections_.insert(sections_.begin() + input.below(static_cast<unsigned>(sections_.size() + 1)),
                         section(textOf(input)));
        break;
      case 1:
        if (!sections_.empty()) sections_.erase(sections_.begin() + input.below(static_cast<unsigned>(sections_.size())));
        break;
      case 2:
        if (!sections_.empty()) sections_.front().items.push_back({.title = textOf(input), .id = std::to_string(++ids_)});
        break;
      case 3:
        if (!sections_.empty() && !sections_.front().items.empty())
          sections_.front().items.erase(sections_.front().items.begin());
        break;
      case 4:
        if (!sections_.empty()) std::rotate(sections_.begin(), sections_.begin() + 1, sections_.end());
        break;
    }
    didChange();
  }

 private:
  SideSection section(const std::string& title) {
    return {.title = title,
            .id = "section " + std::to_string(++ids_),
            .items = {{.title = "Songs", .id = std::to_string(++ids_), .count = 12},
                      {.title = "Albums", .id = std::to_string(++ids_)}},
            .sections = {{.title = "Later",
                          .id = "section " + std::to_string(++ids_),
                          .items = {{.title = "Radio", .id = std::to_string(++ids_)}}}}};
  }
  int ids_ = 0;
  std::vector<SideSection> sections_ = {section("Library"), section("Playlists")};
};

// A player's ready-made hosts.
void fillWithHosts(Scene& scene) {
  const auto act = [&scene] { scene.act(); };
  const auto search = scene.add<SearchField>(CGRect{10, 268, 180, 26});
  const auto questions = keep(scene, std::make_shared<std::vector<SearchQuestion>>());
  search->setSource([&scene, questions](const SearchQuestion& question) {
    questions->push_back(question);
    if (question.text().size() % 2 == 1) {
      std::vector<SearchRow> rows;
      for (int i = 0; i < 12; ++i)
        rows.push_back({.title = question.text() + std::to_string(i), .section = i < 3 ? "Artists" : "Tracks"});
      question.answer(std::move(rows));
    }
    scene.act();
  });
  search->setOnPick([&scene](const SearchRow&) { scene.act(); });
  search->setOnSearch([&scene](const std::string&) { scene.act(); });
  scene.mayChange(search, [questions](SearchField& view, FuzzInput& input) {
    switch (input.below(4)) {
      case 0: view.setText(textOf(input)); break;
      case 1: view.setMaximumRows(1 + input.below(12)); break;
      case 2: view.setDelay(input.below(3) / 10.0); break;
      case 3: {
        if (questions->empty()) break;
        std::vector<SearchRow> rows(input.below(15));
        for (SearchRow& row : rows) row = {.title = textOf(input), .detail = textOf(input)};
        questions->at(input.byte() % questions->size()).answer(std::move(rows));
        break;
      }
    }
  });

  const auto tasks = scene.add<TaskBar>(CGRect{200, 272, 190, 20});
  const auto shown = keep(scene, std::make_shared<std::vector<ShownTask>>());
  scene.mayChange(tasks, [&scene, shown](TaskBar& view, FuzzInput& input) {
    const unsigned what = input.below(3);
    if (what == 0 || shown->empty()) {
      TaskDescription task{.title = textOf(input), .length = input.below(5) * 25.0};
      if (input.flag()) task.abort = [&scene] { scene.act(); };
      shown->push_back(view.begin(std::move(task)));
      return;
    }
    const std::size_t which = input.byte() % shown->size();
    if (what == 1) shown->at(which).setPosition(input.byte());
    else shown->erase(shown->begin() + static_cast<std::ptrdiff_t>(which));
  });

  const auto places = keep(scene, std::make_shared<Places>());
  const auto bar = scene.add<SideBar>(places);
  bar->setFrame({10, 60, 110, 200});
  bar->setOnChoose([&scene](const SideItem&) { scene.act(); });
  scene.changes.push_back([places](FuzzInput& input) { places->change(input); });
  scene.mayChange(bar, [places](SideBar& view, FuzzInput& input) {
    const std::vector<SideSection> sections = places->sections();
    if (sections.empty()) return;
    const SideSection& section = sections[input.byte() % sections.size()];
    if (input.flag()) view.setIsOpen(section.id, input.flag());
    else if (!section.items.empty()) view.setSelected(section.items.back().id);
  });

  const auto queue = keep(scene, std::make_shared<Queue>());
  const auto table =
      scene.add<TrackTable>(queue, TrackActions{.play =
                                                    [&scene, queue](std::size_t row) {
                                                      queue->play(row, Playback::Playing);
                                                      scene.act();
                                                    },
                                                .pause =
                                                    [&scene, queue](std::size_t row) {
                                                      queue->play(row, Playback::Paused);
                                                      scene.act();
                                                    },
                                                .favorite =
                                                    [&scene, queue](std::size_t row) {
                                                      scene.act();
                                                      queue->toggle(row);
                                                    },
                                                .more =
                                                    [&scene](std::size_t) {
                                                      return std::vector<TrackCommand>{
                                                          {"Play next", acting(scene)},
                                                          {},
                                                          {.title = "Remove", .choose = acting(scene), .isChecked = true}};
                                                    },
                                                .artist = [&scene](std::size_t, std::size_t) { scene.act(); }});
  table->setFrame({130, 60, 260, 200});
  table->setOnSelectionChange(act);
  scene.changes.push_back([queue](FuzzInput& input) { queue->change(input); });
  scene.mayChange(table, [](TrackTable& view, FuzzInput& input) {
    switch (input.below(3)) {
      case 0: view.setShowsHeader(input.flag()); break;
      case 1: view.table()->setRowHeight(12 + input.below(40)); break;
      case 2: view.table()->scrollRowToVisible(input.below(30)); break;
    }
  });

  const auto transport = scene.add<TransportBar>(CGRect{0, 0, 400, 52});
  transport->setAutoresizingMask(NSViewWidthSizable);
  const auto actions = [&scene, act](unsigned which) {
    TransportActions result;
    const auto isSet = [&which] {
      const bool is = which & 1;
      which >>= 1;
      return is;
    };
    if (isSet()) result.previous = act, result.next = act;
    if (isSet()) result.playOrPause = act;
    if (isSet()) result.stop = act;
    if (isSet()) result.shuffle = [&scene](bool) { scene.act(); };
    if (isSet()) result.repeat = [&scene](bool) { scene.act(); };
    if (isSet()) result.seek = [&scene](double) { scene.act(); };
    if (isSet()) result.setVolume = [&scene](double) { scene.act(); };
    return result;
  };
  transport->setActions(actions(0xff));
  transport->showSong({.title = "Slow orbit", .artists = "Amber Quartet", .seconds = 245});
  scene.mayChange(transport, [actions](TransportBar& view, FuzzInput& input) {
    switch (input.below(4)) {
      case 0: view.setActions(actions(input.byte())); break;
      case 1:
        view.showSong({.title = textOf(input),
                       .artists = textOf(input),
                       .seconds = input.flag() ? std::optional(245.0) : std::nullopt});
        break;
      default:
        view.showState({.isPlaying = input.flag(),
                        .position = input.byte() * 1.0,
                        .isSeeking = input.flag(),
                        .isShuffled = input.flag(),
                        .isRepeated = input.flag(),
                        .volume = input.below(11) / 10.0,
                        .note = textOf(input),
                        .first = {.start = 0, .frames = std::uint64_t{input.byte()} * 44100}});
    }
  });
}

// A table of cells that are edited in place.
class Albums : public NSTableViewDataSource, public NSTableViewCellSource, public NSTableViewDelegate {
 public:
  explicit Albums(std::function<void()> act) : act_(std::move(act)) {}
  std::size_t numberOfRowsInTableView(NSTableView&) override { return albums.size(); }
  Ref<NSView> tableViewViewForRow(NSTableView&, std::size_t) override { return nullptr; }
  Ref<NSObject> tableViewObjectValue(NSTableView&, NSTableColumn& column, std::size_t row) override {
    const auto& [title, rating] = albums.at(row);
    if (column.identifier() == "title") return make<NSString>(title);
    return make<NSNumber>(rating);
  }
  void tableViewSetObjectValue(NSTableView&, const Ref<NSObject>& value, NSTableColumn& column, std::size_t row) override {
    if (const auto* number = dynamic_cast<const NSNumber*>(value.get())) albums.at(row).second = number->doubleValue();
    const auto* text = dynamic_cast<const NSString*>(value.get());
    if (text && column.identifier() == "title") albums.at(row).first = text->UTF8String();
    act_();
  }
  void tableViewSortDescriptorsDidChange(NSTableView& table) override {
    std::reverse(albums.begin(), albums.end());
    table.reloadData();
    act_();
  }
  void tableViewSelectionDidChange(NSTableView&) override { act_(); }
  void tableViewRowWasDoubleClicked(NSTableView&, std::size_t) override { act_(); }

  std::vector<std::pair<std::string, double>> albums = {
      {"Harbor lights", 4}, {"Slow weather", 2}, {"Nine rooms", 5}, {"A map of rivers", 3}, {"Second winter", 0}};

 private:
  std::function<void()> act_;
};

void fillWithTable(Scene& scene) {
  const auto albums = keep(scene, std::make_shared<Albums>([&scene] { scene.act(); }));
  const auto table = make<NSTableView>(CGRect{});
  const auto addColumn = [&](const std::string& key, CGFloat width, const Ref<NSCell>& cell) {
    const auto column = make<NSTableColumn>(key);
    column->setTitle(key);
    column->setWidth(width);
    column->setSortDescriptorPrototype(make<NSSortDescriptor>(key, true));
    column->setDataCell(cell);
    table->addTableColumn(column);
  };
  addColumn("title", 150, make<ImageAndTextCell>());
  NSCoder coder;
  addColumn("rating", 90, make<DotsLevelIndicatorCell>(coder));
  addColumn("check", 60, make<NSButtonCell>());
  table->setDataSource(albums);
  table->setDelegate(albums);
  table->setHeaderView(make<NSTableHeaderView>(NSZeroRect));
  const auto scroll = scene.add<NSScrollView>(CGRect{10, 60, 300, 150});
  scroll->setHasVerticalScroller(true);
  scroll->setHasHorizontalScroller(true);
  scroll->setAutohidesScrollers(true);
  scroll->setDocumentView(table);
  table->reloadData();
  scene.mayChange(table, [albums](NSTableView& view, FuzzInput& input) {
    const std::size_t count = albums->albums.size(), row = count ? input.byte() % count : 0;
    switch (input.below(9)) {
      case 0:
        albums->albums.insert(albums->albums.begin() + static_cast<std::ptrdiff_t>(row), {textOf(input), 1});
        view.insertRowsAtIndexes(NSIndexSet(row));
        break;
      case 1:
        if (!count) break;
        albums->albums.erase(albums->albums.begin() + static_cast<std::ptrdiff_t>(row));
        view.removeRowsAtIndexes(NSIndexSet(row));
        break;
      case 2:
        if (!count) break;
        albums->albums[row].first = textOf(input);
        view.reloadDataForRowIndexes(NSIndexSet(row));
        break;
      case 3: view.reloadData(); break;
      case 4: view.setRowHeight(10 + input.below(40)); break;
      case 5: view.tableColumns().at(input.below(3))->setHidden(input.flag()); break;
      case 6: view.tableColumns().at(input.below(3))->setWidth(input.byte()); break;
      case 7:
        if (count) view.editColumn(input.below(3), row);
        break;
      case 8: view.tableColumns().at(input.below(3))->setEditable(input.flag()); break;
    }
  });
  const auto field = scene.add<NSTextField>(CGRect{10, 10, 100, 24});
  field->setAction([&scene] { scene.act(); });
}

constexpr SceneMaker makers[] = {fillWithControls, fillWithTexts, fillWithHosts, fillWithTable};

}  // namespace

std::span<const SceneMaker> sceneMakers() { return makers; }

}  // namespace fuzz
