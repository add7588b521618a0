// The blurred values themselves, beside sums over all neighbours.
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tessaluna/backends/raster/Blur.h"

namespace tessaluna::backend::raster::test {

namespace {

// Values in a box; 0 outside.
struct Values {
  PixelRect box;
  std::vector<float> all = std::vector<float>(box.area());
  float at(int x, int y) const {
    if (x < box.left || x >= box.right || y < box.top || y >= box.bottom) return 0;
    return all[std::size_t(y - box.top) * std::size_t(box.width()) + std::size_t(x - box.left)];
  }
  float& at(int x, int y) { return all[std::size_t(y - box.top) * std::size_t(box.width()) + std::size_t(x - box.left)]; }
  void fill(const PixelRect& part, float value) {
    for (int y = part.top; y < part.bottom; ++y) {
      for (int x = part.left; x < part.right; ++x) at(x, y) = value;
    }
  }
};

void sendRowByRow(const Values& values, Blur& blur) {
  for (int y = values.box.top; y < values.box.bottom; ++y)
    blur.varied(values.box.left, y, values.box.width(), values.all.data() + (y - values.box.top) * values.box.width());
}

double exactly(const Values& values, int x, int y, double deviation) {
  const int reach = Blur::reach(deviation);
  double sum = 0, weights = 0;
  for (int dy = -reach; dy <= reach; ++dy) {
    for (int dx = -reach; dx <= reach; ++dx) {
      const double weight = reach == 0 ? 1 : std::exp(-0.5 * (dx * dx + dy * dy) / (deviation * deviation));
      sum += weight * values.at(x + dx, y + dy);
      weights += weight;
    }
  }
  return sum / weights;
}

Values random(const PixelRect& box) {
  std::mt19937 numbers(7);
  Values values{box};
  for (float& value : values.all) value = float(numbers() % 1001) / 1000;
  return values;
}

void expectBlurred(const Values& values, Blur& blur, const PixelRect& asked, double deviation) {
  for (int y = asked.top; y < asked.bottom; ++y) {
    const float* row = blur.rowsAt(asked.left, y, asked.width()).values;
    for (int x = asked.left; x < asked.right; ++x)
      ASSERT_NEAR(row[x - asked.left], exactly(values, x, y, deviation), 1e-5) << x << ' ' << y << " by " << deviation;
  }
}

}  // namespace

TEST(Blur, AddsUpAllNeighbours) {
  const Values values = random({-3, 4, 38, 30});
  const PixelRect asked{-9, 1, 42, 33};
  for (const double deviation : {0.0, 0.4, 1.0, 3.3}) {
    Blur blur;
    ASSERT_TRUE(blur.begin(values.box, asked, {.deviation = deviation}));
    sendRowByRow(values, blur);
    ASSERT_TRUE(blur.end());
    expectBlurred(values, blur, asked, deviation);
  }
}

TEST(Blur, OfEqualRowsThatComeTogetherIsThatOfEachRow) {
  // Two bars of different rows, and rows without values between them.
  Values values{{2, 0, 60, 70}};
  const float edge[] = {0.25f, 0.5f, 0.75f};
  const PixelRect tall{8, 3, 20, 30}, sides{20, 3, 23, 30}, right{40, 3, 57, 30}, lower{5, 41, 50, 66};
  Blur blur;
  const PixelRect asked{0, 0, 64, 70};
  ASSERT_TRUE(blur.begin(values.box, asked, {.deviation = 2}));
  blur.uniformRows(tall, 1);
  blur.variedRows(sides, edge);
  blur.uniformRows(right, 1);
  blur.uniform(5, 40, 45, 0.5f);
  blur.uniformRows(lower, 1);
  ASSERT_TRUE(blur.end());
  values.fill(tall, 1);
  for (int i = 0; i < 3; ++i) values.fill({20 + i, 3, 21 + i, 30}, edge[i]);
  values.fill(right, 1);
  values.fill({5, 40, 50, 41}, 0.5f);
  values.fill(lower, 1);
  expectBlurred(values, blur, asked, 2);
}

TEST(Blur, SaysHowFarRowsRepeat) {
  const PixelRect bar{10, 10, 90, 90};
  Blur blur;
  ASSERT_TRUE(blur.begin(bar, {0, 0, 100, 100}, {.deviation = 2}));
  blur.uniformRows(bar, 1);
  ASSERT_TRUE(blur.end());
  const int reach = Blur::reach(2);
  const PixelRect repeats[] = {
      {.top = 0, .bottom = 10 - reach}, {.top = 10 + reach, .bottom = 90 - reach}, {.top = 90 + reach, .bottom = 100}};
  for (int y = 0; y < 100; ++y) {
    int expected = y + 1;
    for (const PixelRect& rows : repeats) {
      if (y >= rows.top && y < rows.bottom) expected = rows.bottom;
    }
    EXPECT_EQ(std::min(blur.rowsAt(0, y, 100).bottom, 100), expected) << y;
  }
}

TEST(Blur, ReadsRowsInAnyOrderAndInParts) {
  const Values values = random({0, 0, 70, 40});
  Blur blur;
  ASSERT_TRUE(blur.begin(values.box, values.box, {.deviation = 1.5}));
  sendRowByRow(values, blur);
  ASSERT_TRUE(blur.end());
  for (const int y : {30, 2, 39, 0, 17}) {
    for (const PixelRect part : {PixelRect{3, y, 9, y + 1}, {9, y, 33, y + 1}, {61, y, 70, y + 1}})
      expectBlurred(values, blur, part, 1.5);
  }
}

TEST(Blur, IsUsedAgainForAnotherBox) {
  const Values large = random({0, 0, 80, 60}), small = random({30, 20, 41, 33});
  Blur blur;
  for (const Values* values : {&large, &small, &large}) {
    ASSERT_TRUE(blur.begin(values->box, values->box, {.deviation = 1}));
    sendRowByRow(*values, blur);
    ASSERT_TRUE(blur.end());
    expectBlurred(*values, blur, values->box, 1);
  }
}

}  // namespace tessaluna::backend::raster::test
