// Measures a window with a side bar of 50 sections, some within others, and about 1,000 constraints: the first layout, a
// change of one constant, and a frame of a section that folds, with its redraw. In turns with it, nested QVBoxLayouts of the
// same boxes are measured. Then follow the growth of the first layout, and the first layout of a side bar that is at least
// as high as the window.
//
//   bench_layout
#include <QApplication>
#include <QVBoxLayout>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench/harness/cpuTime.h"
#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/layout/NSLayoutConstraint.h"
#include "tessaluna/platform/views/NSView.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/NSWindow.h"

using namespace tessaluna::platform;

namespace {

constexpr int sectionsWithin = 4;  // in each section that is not within another
constexpr int textsOfSection = 2;
constexpr double textHeight = 16, headerHeight = 24;

class Text : public NSView {
 public:
  using NSView::NSView;
  CGSize wanted{80, textHeight};
  CGSize intrinsicContentSize() const override { return wanted; }
};

enum class Height { OfItsSections, AtLeastTheWindows };

struct SideBar {
  Ref<NSWindow> window = make<NSWindow>(CGRect{0, 0, 300, 800}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, false);
  Ref<NSView> root;
  std::vector<Ref<NSLayoutConstraint>> limits;  // of the heights of sections
  std::vector<Ref<NSLayoutConstraint>> gaps;    // above texts
  int constraints = 0;

  Ref<NSLayoutConstraint> add(const Ref<NSView>& item, NSLayoutAttribute attribute, NSLayoutRelation relation,
                              const Ref<NSView>& other, NSLayoutAttribute otherAttribute, double constant,
                              double priority = NSLayoutPriorityRequired) {
    auto constraint = NSLayoutConstraint::constraintWithItem(item, attribute, relation, other, otherAttribute, 1, constant);
    constraint->setPriority(priority);
    constraint->setActive(true);
    ++constraints;
    return constraint;
  }
  Ref<NSLayoutConstraint> equal(const Ref<NSView>& item, NSLayoutAttribute attribute, const Ref<NSView>& other,
                                NSLayoutAttribute otherAttribute, double constant = 0) {
    return add(item, attribute, NSLayoutRelationEqual, other, otherAttribute, constant);
  }
  template <class View>
  Ref<View> addView(const Ref<NSView>& superview) {
    const auto view = make<View>(CGRect{});
    view->setTranslatesAutoresizingMaskIntoConstraints(false);
    superview->addSubview(view);
    equal(view, NSLayoutAttributeLeft, superview, NSLayoutAttributeLeft);
    equal(view, NSLayoutAttributeRight, superview, NSLayoutAttributeRight);
    return view;
  }

  // Adds a section below the view `above`, or at the top if that is null.
  Ref<NSView> addSection(const Ref<NSView>& superview, const Ref<NSView>& above, int within) {
    const auto section = addView<NSView>(superview);
    equal(section, NSLayoutAttributeTop, above ? above : superview, above ? NSLayoutAttributeBottom : NSLayoutAttributeTop);
    const auto header = addView<NSView>(section);
    equal(header, NSLayoutAttributeTop, section, NSLayoutAttributeTop);
    equal(header, NSLayoutAttributeHeight, nullptr, NSLayoutAttributeNotAnAttribute, headerHeight);
    const auto content = addView<NSView>(section);
    equal(content, NSLayoutAttributeTop, header, NSLayoutAttributeBottom);
    Ref<NSView> last;
    for (int i = 0; i < textsOfSection; ++i) {
      const auto text = addView<Text>(content);
      gaps.push_back(equal(text, NSLayoutAttributeTop, last ? last : content,
                           last ? NSLayoutAttributeBottom : NSLayoutAttributeTop, 4));
      last = text;
    }
    for (int i = 0; i < within; ++i) last = addSection(content, last, 0);
    equal(content, NSLayoutAttributeBottom, last, NSLayoutAttributeBottom, 4);
    add(section, NSLayoutAttributeBottom, NSLayoutRelationEqual, content, NSLayoutAttributeBottom, 0, 500);
    limits.push_back(add(section, NSLayoutAttributeHeight, NSLayoutRelationLessThanOrEqual, nullptr,
                         NSLayoutAttributeNotAnAttribute, 32760));
    return section;
  }

  SideBar(int sections, Height height) {
    window->orderFront(nullptr);
    const Ref<NSView> content = window->contentView();
    root = addView<NSView>(content);
    equal(root, NSLayoutAttributeTop, content, NSLayoutAttributeTop);
    Ref<NSView> last;
    for (int made = 0; made < sections; made += 1 + sectionsWithin) last = addSection(root, last, sectionsWithin);
    equal(root, NSLayoutAttributeBottom, last, NSLayoutAttributeBottom);
    if (height == Height::AtLeastTheWindows)
      add(root, NSLayoutAttributeHeight, NSLayoutRelationGreaterThanOrEqual, content, NSLayoutAttributeHeight, 0);
  }
  ~SideBar() { window->close(); }
  void layOut() { window->layoutIfNeeded(); }
};

// The same boxes with nested QVBoxLayouts.
struct WidgetSideBar {
  QWidget root;
  std::vector<QWidget*> contents, texts;

  QVBoxLayout* columnOf(QWidget& widget) {
    auto* column = new QVBoxLayout(&widget);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    return column;
  }
  QWidget* makeSection(int within) {
    auto* section = new QWidget;
    QVBoxLayout* column = columnOf(*section);
    auto* header = new QWidget;
    header->setFixedHeight(static_cast<int>(headerHeight));
    column->addWidget(header);
    auto* content = new QWidget;
    QVBoxLayout* inside = columnOf(*content);
    for (int i = 0; i < textsOfSection; ++i) {
      auto* text = new QWidget;
      text->setFixedHeight(static_cast<int>(textHeight));
      inside->addWidget(text);
      texts.push_back(text);
    }
    for (int i = 0; i < within; ++i) inside->addWidget(makeSection(0));
    column->addWidget(content);
    contents.push_back(content);
    return section;
  }
  explicit WidgetSideBar(int sections) {
    root.setAttribute(Qt::WA_DontShowOnScreen);
    root.resize(300, 4000);
    QVBoxLayout* column = columnOf(root);
    for (int made = 0; made < sections; made += 1 + sectionsWithin) column->addWidget(makeSection(sectionsWithin));
    column->addStretch(1);
  }
  void layOut() {
    root.layout()->invalidate();
    root.layout()->activate();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  }
};

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

template <class Action>
double once(Action action) {
  const double start = bench::cpuSeconds();
  action();
  return (bench::cpuSeconds() - start) * 1e3;
}

struct Row {
  std::vector<double> ours, widgets;
  void print(const char* name) const { std::printf("  %-24s %9.4f ms   %9.4f ms\n", name, median(ours), median(widgets)); }
};

void printGrowth(const char* title, Height height) {
  std::printf("%s\n", title);
  double earlierTime = 0;
  int earlierCount = 0;
  for (const int count : {5, 15, 50, 150, 525}) {
    std::vector<double> times;
    int made = 0;
    for (int round = 0; round < 9; ++round) {
      SideBar bar(count, height);
      made = bar.constraints;
      times.push_back(once([&] { bar.layOut(); }));
    }
    const double time = median(times);
    std::printf("  %6d  %10.3f ms", made, time);
    if (earlierCount > 0)
      std::printf("   as n to the power of %.2f", std::log(time / earlierTime) / std::log(double(made) / earlierCount));
    std::printf("\n");
    earlierTime = time;
    earlierCount = made;
  }
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  tessaluna::backend::headless::HeadlessBackend desktop;
  NSApplication::sharedApplication();
  constexpr int sections = 50, rounds = 15, changes = 100;
  Row first, constant, fold;
  int constraints = 0;
  for (int round = 0; round < rounds; ++round) {
    SideBar bar(sections, Height::OfItsSections);
    constraints = bar.constraints;
    first.ours.push_back(once([&] { bar.layOut(); }));
    desktop.settle();
    constant.ours.push_back(once([&] {
                              for (int i = 0; i < changes; ++i) {
                                bar.gaps[bar.gaps.size() / 2]->setConstant(4 + i % 5);
                                bar.layOut();
                              }
                            }) /
                            changes);
    fold.ours.push_back(once([&] {
                          for (int i = 0; i < changes; ++i) {
                            bar.limits[sectionsWithin]->setConstant(headerHeight + i);
                            desktop.settle();
                          }
                        }) /
                        changes);
    WidgetSideBar widgets(sections);
    first.widgets.push_back(once([&] { widgets.root.show(); }));
    constant.widgets.push_back(once([&] {
                                 for (int i = 0; i < changes; ++i) {
                                   widgets.texts[widgets.texts.size() / 2]->setFixedHeight(16 + i % 5);
                                   widgets.layOut();
                                 }
                               }) /
                               changes);
    fold.widgets.push_back(once([&] {
                             for (int i = 0; i < changes; ++i) {
                               widgets.contents[sectionsWithin]->setFixedHeight(10 + i);
                               widgets.layOut();
                             }
                           }) /
                           changes);
  }
  std::printf("A side bar of %d sections, %d constraints; CPU time, medians of %d rounds\n", sections, constraints, rounds);
  std::printf("  %-24s %12s   %12s\n", "", "constraints", "QVBoxLayout");
  first.print("the first layout");
  constant.print("one constant changed");
  fold.print("a frame of a fold");

  printGrowth("The first layout by the number of constraints", Height::OfItsSections);
  printGrowth("The same of a side bar that is at least as high as the window", Height::AtLeastTheWindows);
  return 0;
}
