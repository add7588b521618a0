// The main queue: blocks that are called later on the main thread, and work that another thread does meanwhile.
//
//   DispatchQueue::main().asyncAfter(0.001, [weak] { ... });
//   DispatchQueue::main().answer([path] { return contentsOf(path); }, [weak](std::string contents) { ... });
//
// Used on the main thread, with a backend; without one the program stops. What a block needs of an object that may go
// meanwhile it holds weakly.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::platform {

class DispatchQueue {
 public:
  static DispatchQueue main() { return {}; }

  // On a later turn of the queue, in the order of asking. A delay that is negative or NaN counts as none.
  void async(std::function<void()> block) const { asyncAfter(0, std::move(block)); }
  void asyncAfter(double seconds, std::function<void()> block) const;

  // Calls `work` on another thread, and then `answer` here with what it returned. Work touches no object of the platform;
  // blocks and result are freed on the main thread. Both must be copyable.
  template <class Work, class Answer>
  void answer(Work work, Answer answer) const {
    using Result = std::invoke_result_t<Work&>;
    if constexpr (std::is_void_v<Result>) {
      callElsewhere(std::move(work), std::move(answer));
    } else {
      const auto result = std::make_shared<std::optional<Result>>();
      callElsewhere([work = std::move(work), result]() mutable { result->emplace(work()); },
                    [answer = std::move(answer), result]() mutable { answer(*std::move(*result)); });
    }
  }

 private:
  DispatchQueue() = default;
  static void callElsewhere(std::function<void()> work, std::function<void()> answer);
};

}  // namespace tessaluna::platform
