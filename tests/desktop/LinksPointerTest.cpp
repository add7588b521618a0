// A line of links in the desktop's own font under a real pointer: a click reports the name that is painted there, at any device
// scale.
#include <QWidget>
#include <QWindow>
#include <cmath>

#include "tessaluna/backends/qt/QtViewWidget.h"
#include "tessaluna/platform/text/NSFont.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tests/desktop/QtDesktop.h"

using namespace tessaluna::platform;
using TessalunaUIKit::MultipleLinksTextField;

namespace {

class Clicked : public TessalunaUIKit::LinkTextFieldActionTarget {
 public:
  std::vector<std::size_t> elements;
  void linkClicked(std::size_t element, MultipleLinksTextField&) override { elements.push_back(element); }
};

constexpr int left = 60, top = 80, width = 420, height = 30;  // points

class LinksPointer : public harness::QtDesktop {
 protected:
  LinksPointer() {
    field_->setFont(NSFont::systemFontOfSize(NSFont::systemFontSize()));
    field_->setStringValues(std::vector<std::string>{"Mira Holt", "The Quiet Engine", "A", "Jonas Wehr & Will"});
    field_->setLinksEnabled(true);
    field_->setTarget(target_);
    widget_ = new tessaluna::backend::qt::QtViewWidget(field_, &window_);
    widget_->setGeometry(0, 0, width, height);
    window_.setWindowFlags(Qt::FramelessWindowHint | Qt::X11BypassWindowManagerHint);
    xdotool({"mousemove", "5", "5"});
    window_.setGeometry(left, top, width, height);
    window_.show();
    EXPECT_TRUE(eventually([&] { return window_.windowHandle() && window_.windowHandle()->isExposed(); }));
    settle();
  }
  ~LinksPointer() override {
    field_->setTarget(nullptr);
    xdotool({"mousemove", "5", "5"});
  }

  double scale() const { return window_.devicePixelRatioF(); }
  // Moves it to a column of device pixels of the field, in the middle of its height.
  void movePointerTo(int column) {
    const double x = left * scale() + column, y = (top + height / 2) * scale();
    xdotool({"mousemove", QString::number(std::lround(x)), QString::number(std::lround(y))});
  }
  QImage picture() { return window_.grab().toImage(); }

  // The columns in which two pictures differ; end is after the last one.
  struct Columns {
    int first = 0, end = 0;
  };
  static Columns differing(const QImage& a, const QImage& b) {
    Columns columns{a.width(), 0};
    for (int x = 0; x < a.width(); ++x)
      for (int y = 0; y < a.height(); ++y)
        if (a.pixel(x, y) != b.pixel(x, y)) {
          columns.first = std::min(columns.first, x);
          columns.end = x + 1;
        }
    return columns;
  }

  // The element that a click on the column reports; absent if it reports none.
  std::optional<std::size_t> clickOn(int column) {
    movePointerTo(column);
    target_->elements.clear();
    xdotool({"click", "1"});
    EXPECT_LE(target_->elements.size(), 1u);
    return target_->elements.empty() ? std::nullopt : std::optional(target_->elements.front());
  }

  const Ref<MultipleLinksTextField> field_ = make<MultipleLinksTextField>(CGRect{0, 0, width, height});
  const std::shared_ptr<Clicked> target_ = std::make_shared<Clicked>();
  tessaluna::backend::qt::QtViewWidget* widget_ = nullptr;
  QWidget window_;
};

TEST_F(LinksPointer, AClickAtEitherEndOfEachNameReportsTheNameUnderThePointer) {
  xdotool({"mousemove", "5", "5"});
  const QImage atRest = picture();
  const int point = static_cast<int>(std::ceil(scale()));
  int column = 0;
  for (std::size_t element = 0; element < field_->stringValues()->size(); ++element) {
    SCOPED_TRACE(element);
    // Enters the name from the left; the hovered name is underlined from its first letter to its last.
    Columns name{};
    for (; name.end <= name.first && column < width * scale(); column += point) {
      movePointerTo(column);
      name = differing(atRest, picture());
    }
    ASSERT_GT(name.end, name.first);
    EXPECT_NE(window_.childAt(1, 1), nullptr);
    EXPECT_EQ(clickOn(name.first + point), element);
    EXPECT_EQ(clickOn(name.end - 1 - point), element);
    // The separators beside the name are wider than this.
    EXPECT_EQ(clickOn(name.first - 1 - point), std::nullopt);
    EXPECT_EQ(clickOn(name.end + point), std::nullopt);
    column = name.end + point;
  }
}

TEST_F(LinksPointer, TheHandShowsOverNamesAndNotBetweenThem) {
  xdotool({"mousemove", "5", "5"});
  const QImage atRest = picture();
  const int point = static_cast<int>(std::ceil(scale()));
  const auto isHand = [&] {
    const QWindow* native = window_.windowHandle();
    return (native && native->cursor().shape() == Qt::PointingHandCursor) ||
           widget_->cursor().shape() == Qt::PointingHandCursor;
  };
  movePointerTo(3 * point);
  const Columns name = differing(atRest, picture());
  ASSERT_GT(name.end, name.first);
  for (const auto& [column, isOver] : std::initializer_list<std::pair<int, bool>>{
           {name.first + point, true}, {name.end - 1 - point, true}, {name.end + 1 + point, false}}) {
    movePointerTo(column);
    EXPECT_TRUE(eventually([&] { return isHand() == isOver; })) << column;
  }
}

}  // namespace
