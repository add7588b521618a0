#include "tessaluna/platform/foundation/stopHandler.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/menus/NSMenu.h"

using namespace tessaluna::platform;

namespace {

class stopHandlerTest : public testing::Test {
 protected:
  ~stopHandlerTest() override { setStopHandler(nullptr); }
};
using stopHandlerDeathTest = stopHandlerTest;

void logReport(std::string_view report) { std::fprintf(stderr, "logged: %s\n", std::string(report).c_str()); }

}  // namespace

TEST_F(stopHandlerDeathTest, IsCalledBeforeTheEnd) {
  EXPECT_EXIT((setStopHandler(logReport), stopProgram("the report")), testing::KilledBySignal(SIGABRT),
              "^logged: the report\nthe report\n$");
}

TEST_F(stopHandlerDeathTest, OneThatStopsTheProgramItselfEndsIt) {
  EXPECT_EXIT((setStopHandler([](std::string_view report) {
                 logReport(report);
                 stopProgram("in the handler");
               }),
               stopProgram("the report")),
              testing::KilledBySignal(SIGABRT), "^logged: the report\nin the handler\n$");
}

TEST_F(stopHandlerDeathTest, AnEmptyOneTakesItBack) {
  EXPECT_EXIT((setStopHandler(logReport), setStopHandler(nullptr), stopProgram("the report")),
              testing::KilledBySignal(SIGABRT), "^the report\n$");
}

TEST_F(stopHandlerTest, OneThatThrowsLetsTheProgramContinueEachTime) {
  setStopHandler([](std::string_view report) { throw std::logic_error(std::string(report)); });
  const auto menu = make<NSMenu>();
  for (int i = 0; i < 2; ++i) {
    std::string caught;
    try {
      (void)menu->itemAtIndex(3);
    } catch (const std::logic_error& error) {
      caught = error.what();
    }
    EXPECT_EQ(caught, "NSMenu: there is no item at that index");
  }
}
