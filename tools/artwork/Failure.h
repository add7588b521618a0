// What a command throws when it cannot do what it was asked: the one line that the user reads.
#pragma once

#include <stdexcept>

namespace artwork {

struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command line itself is wrong.
struct UsageFailure : Failure {
  using Failure::Failure;
};

}  // namespace artwork
