// What assistive clients find on each page of the gallery, one line per element: Qt's widgets, and our views in them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QLayout>
#include <QMetaEnum>
#include <algorithm>
#include <cctype>

#include "gallery/Pages.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/accessibility/accessibleTree.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tests/gallery/QtApplicationOfSuite.h"
#include "tests/harness/expectedFile.h"

namespace gallery {

void PrintTo(const Page& page, std::ostream* out) { *out << page.name; }

namespace {

using namespace tessaluna::platform;
using tessaluna::backend::qt::QtViewWidget;
using Lines = std::vector<std::string>;

// A role of Qt's, such as "StaticText", in words.
std::string wordsOf(QAccessible::Role role) {
  std::string words;
  for (const char letter : std::string(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role))) {
    if (std::isupper(static_cast<unsigned char>(letter)) && !words.empty()) words += ' ';
    words += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
  }
  return words;
}

std::string lineOf(QAccessibleInterface& widget) {
  const QAccessible::State state = widget.state();
  const QString name = widget.text(QAccessible::Name).replace('\n', "\\n");
  const struct {
    bool isOn;
    const char* word;
  } states[] = {{state.disabled != 0, "disabled"},     {state.focusable != 0, "focusable"},
                {state.selectable != 0, "selectable"}, {state.selected != 0, "selected"},
                {state.checkable != 0, "checkable"},   {state.checked != 0, "checked"},
                {state.hasPopup != 0, "has pop-up"},   {state.editable != 0, "editable"}};
  std::string line = "(" + wordsOf(widget.role()) + ") \"" + name.toStdString() + "\"";
  if (QAccessibleValueInterface* value = widget.valueInterface())
    line += " = " + value->currentValue().toString().toStdString();
  std::string words;
  for (const auto& each : states)
    if (each.isOn) words += (words.empty() ? "" : ", ") + std::string(each.word);
  return words.empty() ? line : line + " [" + words + "]";
}

// Which elements are off screen depends on the desktop's fonts.
std::string withoutPlace(const std::string& line) {
  constexpr std::string_view words[] = {", off screen", "off screen, ", "off screen"};
  for (const std::string_view word : words)
    if (const std::size_t found = line.rfind(word); found != line.npos && found > line.rfind('['))
      return std::string(line).erase(found, word.size());
  return line;
}

void nameFirst(Lines& lines, const std::string& name) {
  constexpr std::string_view unnamed = "\"\"";
  const std::size_t found = lines.front().find(unnamed);
  if (found != std::string::npos && found < lines.front().find('['))
    lines.front().replace(found, unnamed.size(), "\"" + name + "\"");
}

void addLines(QAccessibleInterface& widget, std::size_t depth, Lines& lines) {
  const std::string indent(2 * depth, ' ');
  if (widget.state().invisible) return;
  lines.push_back(indent + lineOf(widget));
  if (const auto* own = qobject_cast<const QtViewWidget*>(widget.object())) {
    Lines below;
    for (const Ref<NSObject>& element : NSAccessibilityUnignoredChildren({own->view()}))
      for (const std::string& line : accessibleTreeLines(element)) below.push_back(indent + "  " + withoutPlace(line));
    // An element that is its widget's only one may have the widget's name.
    if (widget.childCount() == 1) nameFirst(below, widget.child(0)->text(QAccessible::Name).toStdString());
    lines.insert(lines.end(), below.begin(), below.end());
    return;
  }
  for (int i = 0; i < widget.childCount(); ++i)
    if (QAccessibleInterface* child = widget.child(i)) addLines(*child, depth + 1, lines);
}

class PageTrees : public testing::TestWithParam<Page>, protected QtApplicationOfSuite {
 public:
  using QtApplicationOfSuite::SetUpTestSuite, QtApplicationOfSuite::TearDownTestSuite;

 protected:
  ~PageTrees() override { NSApp = nullptr; }

  tessaluna::backend::qt::QtBackend desktop;
  Ref<NSApplication> nsApplication = NSApplication::sharedApplication();
};

std::string fileNameOf(const Page& page) {
  std::string name(page.name);
  std::replace_if(
      name.begin(), name.end(), [](unsigned char letter) { return !std::isalnum(letter); }, '_');
  return name;
}

TEST_P(PageTrees, HasTheElementsOfTheExpectedFile) {
  const std::unique_ptr<QWidget> page(GetParam().make([](const std::string&) {}));
  page->resize(1000, 700);
  page->show();
  // Handles no events beyond the layouts: a page that plays would continue to play.
  QCoreApplication::sendPostedEvents();
  Lines lines;
  addLines(*QAccessible::queryAccessibleInterface(page.get()), 0, lines);
  harness::expectSameAsFile("gallery/expected/" + fileNameOf(GetParam()) + ".txt", lines);
}

// An element that only arranges others needs no name.
bool isContainer(const QAccessibleInterface& element) {
  constexpr QAccessible::Role roles[] = {QAccessible::Client, QAccessible::Splitter, QAccessible::LayeredPane};
  return std::ranges::find(roles, element.role()) != std::end(roles) && !element.state().focusable;
}

// Adds the visible elements that have no name or role, in the order in which clients visit them; of long lists only the first.
void addUncalled(QAccessibleInterface& element, Lines& lines) {
  constexpr int maxChildren = 40;
  if (element.state().invisible) return;
  const bool isCalled = isContainer(element) || !element.text(QAccessible::Name).isEmpty();
  // Clients on AT-SPI take a border for a window, and then look in vain for the window that has the keyboard.
  const bool isWindowToOthers = element.role() == QAccessible::Border;
  if (!isCalled || isWindowToOthers || element.role() == QAccessible::NoRole) lines.push_back(lineOf(element));
  for (int i = 0; i < std::min(element.childCount(), maxChildren); ++i)
    if (QAccessibleInterface* child = element.child(i)) addUncalled(*child, lines);
}

TEST_P(PageTrees, EveryVisibleElementHasARoleAndAName) {
  const std::unique_ptr<QWidget> page(GetParam().make([](const std::string&) {}));
  page->resize(1000, 700);
  page->show();
  QCoreApplication::sendPostedEvents();
  Lines uncalled;
  addUncalled(*QAccessible::queryAccessibleInterface(page.get()), uncalled);
  EXPECT_EQ(uncalled, Lines());
}

INSTANTIATE_TEST_SUITE_P(All, PageTrees, testing::ValuesIn(pages().begin(), pages().end()),
                         [](const auto& info) { return fileNameOf(info.param); });

}  // namespace
}  // namespace gallery
