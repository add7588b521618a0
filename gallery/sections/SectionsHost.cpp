#include "gallery/sections/SectionsHost.h"

#include <algorithm>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tessaluna/uikit/interfaceFileClasses.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

namespace {

constexpr int mostLines = 12;

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// A measure of one view by that of another, or with none a size.
struct Constraint {
  std::string first, attribute, second, secondAttribute;
  double constant = 0, priority = NSLayoutPriorityRequired;
};

std::string jsonOf(const Constraint& constraint) {
  const bool isSize = constraint.second.empty();
  return R"({"class": "NSLayoutConstraint", "firstAttribute": )" + quoted(constraint.attribute) +
         (isSize ? "" : R"(, "secondAttribute": )" + quoted(constraint.secondAttribute)) + R"(, "constant": )" +
         numberText(constraint.constant) + R"(, "priority": )" + numberText(constraint.priority) +
         R"(, "outlets": {"firstItem": )" + quoted(constraint.first) +
         (isSize ? "" : R"(, "secondItem": )" + quoted(constraint.second)) + "}}";
}

template <class List, class Json>
std::string arrayOf(const List& list, Json json) {
  std::string result;
  for (const auto& one : list) result += (result.empty() ? "" : ",\n") + json(one);
  return "[" + result + "]";
}

std::string viewJson(std::string_view id, std::string_view className, const std::string& properties,
                     const std::string& rest) {
  return R"({"id": )" + quoted(id) + R"(, "class": )" + quoted(className) +
         R"(, "properties": {"translatesAutoresizingMaskIntoConstraints": false)" + properties + "}" + rest + "}";
}

std::string labelJson(std::string_view id, std::string_view text, const std::string& look) {
  return viewJson(id, "NSTextField", "", R"(, "cell": {"stringValue": )" + quoted(text) + look + "}");
}

// What a section holds: views below each other, each as wide as the section but for a margin.
struct Section {
  std::string name, title;
  std::vector<std::string> ids, views;  // the JSON of each
};

// The bottom of the section hangs on its content with less than the required priority: folding cuts it.
std::string sectionJson(const Section& section) {
  const std::string& name = section.name;
  const std::string header = name + "-header", title = name + "-title", button = name + "-button",
                    content = name + "-content";
  std::vector<Constraint> constraints{{header, "left", name, "left"},
                                      {header, "right", name, "right"},
                                      {header, "top", name, "top"},
                                      {header, "height", "", "", 26},
                                      {title, "leading", header, "leading", 10},
                                      {title, "centerY", header, "centerY"},
                                      {button, "trailing", header, "trailing", -6},
                                      {button, "centerY", header, "centerY"},
                                      {content, "left", name, "left"},
                                      {content, "right", name, "right"},
                                      {content, "top", header, "bottom"},
                                      {name, "bottom", content, "bottom", 0, 500}};
  std::string above = content, edge = "top";
  double gap = 8;
  for (const std::string& id : section.ids) {
    constraints.push_back({id, "leading", content, "leading", 10});
    constraints.push_back({id, "trailing", content, "trailing", -10});
    constraints.push_back({id, "top", above, edge, gap});
    above = id;
    edge = "bottom";
    gap = 6;
  }
  constraints.push_back({content, "bottom", above, edge, 10});
  const std::string inHeader = arrayOf(
      std::vector{
          labelJson(title, section.title, R"(, "isBold": true, "fontSize": 12)"),
          viewJson(button, "NSButton", "",
                   R"(, "cell": {"title": "Hide", "fontSize": 11}, "action": "toggleDisclosure:", "outlets": {"target": )" +
                       quoted(name) + "}")},
      [](const std::string& json) { return json; });
  const std::string inSection = arrayOf(
      std::vector{viewJson(header, "TessalunaUIKit.DisclosureHeaderView",
                           R"(, "isOperable": true, "backgroundColor": "controlColor")",
                           R"(, "outlets": {"disclosureButton": )" + quoted(button) + R"(, "parentDisclosure": )" +
                               quoted(name) + R"(}, "subviews": )" + inHeader),
                  viewJson(content, "NSView", "",
                           R"(, "subviews": )" + arrayOf(section.views, [](const std::string& json) { return json; }))},
      [](const std::string& json) { return json; });
  return viewJson(name, "TessalunaUIKit.DisclosureView", R"(, "leavesOutFoldedViews": true)",
                  R"(, "outlets": {"headerView": )" + quoted(header) + R"(, "contentView": )" + quoted(content) +
                      R"(}, "subviews": )" + inSection + R"(, "constraints": )" + arrayOf(constraints, jsonOf));
}

// A view around another one, with a margin.
std::string framed(const std::string& id, const std::string& className, const std::string& properties,
                   const std::string& innerId, const std::string& innerJson, double margin, const std::string& rest = "") {
  const std::vector<Constraint> constraints{{innerId, "left", id, "left", margin},
                                            {innerId, "right", id, "right", -margin},
                                            {innerId, "top", id, "top", margin},
                                            {innerId, "bottom", id, "bottom", -margin}};
  return viewJson(id, className, properties,
                  R"(, "subviews": [)" + innerJson + R"(], "constraints": )" + arrayOf(constraints, jsonOf) + rest);
}

std::string textOf(int lines) {
  constexpr std::string_view tracks[] = {"Morning tide", "Glass harbor",  "Seven lanterns", "Slow orbit",
                                         "Paper moons",  "North of here", "Amber street",   "The long way",
                                         "Low clouds",   "Second light",  "Salt and snow",  "Last tram"};
  std::string text;
  for (int i = 0; i < lines; ++i) text += (i == 0 ? "" : "\\n") + std::string(tracks[i]);
  return text;
}

std::string document(int lines) {
  const Section later{
      .name = "later",
      .title = "Later",
      .ids = {"later-row"},
      .views = {framed("later-row", "TessalunaUIKit.TableCellViewWithBackground", R"(, "backgroundColor": "controlColor")",
                       "later-text", labelJson("later-text", "Two albums and a radio hour", ""), 4,
                       R"(, "outlets": {"textField": "later-text"})")}};
  const Section upNext{.name = "next",
                       .title = "Up next",
                       .ids = {"next-text", "later"},
                       .views = {labelJson("next-text", textOf(lines), ""), sectionJson(later)}};
  const Section about{
      .name = "about",
      .title = "About the album",
      .ids = {"about-panel"},
      .views = {framed("about-panel", "TessalunaUIKit.BorderedView", R"(, "borderColor": [0.55, 0.55, 0.6])", "about-text",
                       viewJson("about-text", "NSTextField", R"(, "textColor": [0.2, 0.2, 0.2])",
                                R"(, "cell": {"stringValue": "Recorded in four nights,\nin a hall by the sea."})"),
                       10)}};
  const Section notes{
      .name = "notes",
      .title = "Notes",
      .ids = {"notes-ground"},
      .views = {framed(
          "notes-ground", "TessalunaUIKit.ViewWithBackground", R"(, "backgroundColor": "controlColor")", "notes-field",
          viewJson(
              "notes-field", "NSTextField", "",
              R"(, "cell": {"editable": true, "selectable": true, "bezeled": true, "drawsBackground": true, "placeholder": "A note about the album"})"),
          8)}};
  std::vector<Constraint> constraints;
  std::string above = "bar", edge = "top";
  for (const Section* section : {&upNext, &about, &notes}) {
    constraints.push_back({section->name, "left", "bar", "left"});
    constraints.push_back({section->name, "right", "bar", "right"});
    constraints.push_back({section->name, "top", above, edge, edge == "top" ? 0.0 : 1.0});
    above = section->name;
    edge = "bottom";
  }
  return R"({"objects": [{"id": "bar", "class": "NSView", "frame": [0, 0, 300, 520], "constraints": )" +
         arrayOf(constraints, jsonOf) + R"(, "subviews": )" +
         arrayOf(std::vector{sectionJson(upNext), sectionJson(about), sectionJson(notes)},
                 [](const std::string& json) { return json; }) +
         "}]}";
}

template <class View>
void collect(const NSView& view, std::vector<Ref<View>>& result) {
  for (const Ref<NSView>& subview : view.subviews()) {
    if (auto one = std::dynamic_pointer_cast<View>(subview)) result.push_back(std::move(one));
    collect(*subview, result);
  }
}

}  // namespace

SectionsHost::SectionsHost() {
  registerInterfaceFileClasses();
  const NSNib::Contents contents = make<NSNib>(document(lines_))->instantiateWithOwner(nullptr);
  if (contents.error) stopProgram("gallery: " + *contents.error);
  sideBar_ = std::dynamic_pointer_cast<NSView>(contents.topLevelObjects.at(0));
  collect(*sideBar_, sections_);
  // The first text of the first section.
  std::vector<Ref<NSTextField>> fields;
  collect(*sections_.at(0)->contentView(), fields);
  growingText_ = fields.at(0);
  fields.clear();
  collect(*sections_.back()->contentView(), fields);
  fields.at(0)->cell()->accessibilitySetOverrideValue("Note", NSAccessibilityDescriptionAttribute);
}

SectionsHost::~SectionsHost() {
  for (const Ref<DisclosureView>& section : sections_) section->headerView()->setParentDisclosure(nullptr);
}

int SectionsHost::setLines(int lines) {
  lines_ = std::clamp(lines, 1, mostLines);
  std::string text = textOf(lines_);
  for (std::size_t at = text.find("\\n"); at != std::string::npos; at = text.find("\\n")) text.replace(at, 2, "\n");
  growingText_->setStringValue(text);
  return lines_;
}

void SectionsHost::setDisclosed(bool areDisclosed) {
  for (const Ref<DisclosureView>& section : sections_) section->setDisclosureTo(areDisclosed, true);
}

}  // namespace gallery
