#include "tessaluna/platform/foundation/NSData.h"

#include <gtest/gtest.h>

using namespace tessaluna::platform;

TEST(NSData, KeepsACopyOfTheBytes) {
  char text[] = "abc";
  const auto data = make<NSData>(text, std::size_t{3});
  text[0] = 'x';
  EXPECT_EQ(data->length(), 3u);
  EXPECT_EQ(data->bytes()[0], std::byte{'a'});
}

TEST(NSData, GivesBytesOutAsManyAsThereAre) {
  const int number = 77;
  const auto data = make<NSData>(&number, sizeof number);
  long long room = 0;
  data->getBytes(&room, sizeof room);
  int back = 0;
  data->getBytes(&back, sizeof back);
  EXPECT_EQ(room, 77);
  EXPECT_EQ(back, 77);
  make<NSData>()->getBytes(&back, sizeof back);
  EXPECT_EQ(back, 77);
}

TEST(NSData, IsEqualToTheSameBytesOnly) {
  const auto ab = make<NSData>("ab", std::size_t{2});
  EXPECT_TRUE(ab->isEqual(make<NSData>("ab", std::size_t{2}).get()));
  EXPECT_FALSE(ab->isEqual(make<NSData>("abc", std::size_t{3}).get()));
  EXPECT_FALSE(ab->isEqual(make<NSObject>().get()));
  EXPECT_FALSE(ab->isEqual(nullptr));
}
