// What a search field asks its host, one question after the other. Only the last question counts: asking again cancels the
// earlier one, and a late answer to it is dropped.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/ready/search/SearchRow.h"

namespace tessaluna::ready {

namespace search {
struct Asking;
}  // namespace search

// One question. Copies are the same question, and may outlive the field. Used on the main thread: an answer from another thread
// comes through the run loop, as by platform::DispatchQueue::main().answer(work, answer).
class SearchQuestion {
 public:
  const std::string& text() const { return text_; }
  std::uint64_t number() const { return number_; }  // from 1 on, in the order of asking
  // Whether an answer would be shown: false once it was answered or another question was asked, and after the field was
  // destroyed. A host that works in steps may stop then.
  bool isCurrent() const;
  // Immediately, later or never. Only the first answer counts.
  void answer(std::vector<SearchRow> rows) const;

 private:
  friend class SearchQuestions;
  SearchQuestion(std::string text, std::uint64_t number, const std::shared_ptr<search::Asking>& asking)
      : text_(std::move(text)), number_(number), asking_(asking) {}

  std::string text_;
  std::uint64_t number_;
  std::weak_ptr<search::Asking> asking_;
};

class SearchQuestions {
 public:
  using Source = std::function<void(const SearchQuestion&)>;
  using Receiver = std::function<void(std::vector<SearchRow>)>;

  // The receiver gets the answers that count.
  explicit SearchQuestions(Receiver receiver);

  void setSource(Source source) { source_ = std::move(source); }
  // How long to wait for another question before the source is asked, in seconds; zero at first.
  void setDelay(double seconds) { delay_ = seconds; }

  // The source and the receiver may be called before these return.
  void ask(std::string text);
  void cancel();
  // True between a question and its answer, including the delay.
  bool isWaiting() const;

 private:
  void pose(const SearchQuestion& question);

  std::shared_ptr<search::Asking> asking_;
  Source source_;
  double delay_ = 0;
  std::uint64_t count_ = 0;
  backend::Timer delayed_;
};

}  // namespace tessaluna::ready
