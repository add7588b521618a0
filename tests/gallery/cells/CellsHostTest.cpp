#include "gallery/cells/CellsHost.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tessaluna/platform/views/NSText.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tests/harness/StillWorld.h"
#include "tests/harness/recordingOf.h"

namespace gallery {
namespace {

using namespace tessaluna::platform;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class CellsHostTest : public harness::StillWorld {
 protected:
  // What is drawn of a row's text while it is edited.
  harness::Lines drawingOfEditedRow(CellTheme theme, NSRange selected) {
    const std::vector<CellsHost::Sample> samples = host->makeSamples(theme);
    const std::string name = theme == CellTheme::Dark ? "row-dark" : "row-light";
    const Ref<NSControl> row = std::ranges::find(samples, name, &CellsHost::Sample::name)->control;
    row->setFrame({20, 20, 200, 18});
    const Ref<NSWindow> window = showWindow();
    window->contentView()->addSubview(row);
    window->makeFirstResponder(row.get());
    desktop.settle();
    const Ref<NSText> editor = std::dynamic_pointer_cast<NSTextField>(row)->currentEditor();
    editor->setSelectedRange(selected);
    return harness::recordingOf([&] { editor->drawRect(editor->bounds()); });
  }

  const Ref<CellsHost> host = make<CellsHost>([](const std::string&) {});
};

const std::string darkSelection = R"("color":[0.15,0.3,0.6,1])", pale = R"("color":[0.9,0.9,0.9,1])";

TEST_F(CellsHostTest, WhatIsSelectedInARowOnADarkGroundIsDarkUnderItsWhiteText) {
  EXPECT_THAT(drawingOfEditedRow(CellTheme::Dark, {0, 6}), Contains(HasSubstr(darkSelection)));
  EXPECT_THAT(drawingOfEditedRow(CellTheme::Light, {0, 6}), Not(Contains(HasSubstr(darkSelection))));
}

TEST_F(CellsHostTest, TheCaretOfARowOnADarkGroundIsAsPaleAsItsText) {
  // The caret is drawn last.
  const auto lastColor = [this](CellTheme theme) {
    const harness::Lines colors = harness::only("setFillColor", drawingOfEditedRow(theme, {0, 0}));
    return colors.empty() ? std::string() : colors.back();
  };
  EXPECT_THAT(lastColor(CellTheme::Dark), HasSubstr(pale));
  EXPECT_THAT(lastColor(CellTheme::Light), Not(HasSubstr(pale)));
}

}  // namespace
}  // namespace gallery
