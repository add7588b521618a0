#include "tessaluna/ready/search/SearchQuestions.h"

#include "tessaluna/platform/backend/Backend.h"

namespace tessaluna::ready {

namespace search {

struct Asking {
  SearchQuestions::Receiver receiver;
  std::uint64_t current = 0;  // the number of the question that waits for its answer; 0: none does
};

}  // namespace search

bool SearchQuestion::isCurrent() const {
  const auto asking = asking_.lock();
  return asking && asking->current == number_;
}

void SearchQuestion::answer(std::vector<SearchRow> rows) const {
  const auto asking = asking_.lock();
  if (!asking || asking->current != number_) return;
  asking->current = 0;
  asking->receiver(std::move(rows));
}

SearchQuestions::SearchQuestions(Receiver receiver) : asking_(std::make_shared<search::Asking>()) {
  asking_->receiver = std::move(receiver);
}

bool SearchQuestions::isWaiting() const { return asking_->current != 0; }

void SearchQuestions::ask(std::string text) {
  cancel();
  asking_->current = ++count_;
  const SearchQuestion question(std::move(text), count_, asking_);
  backend::Backend* backend = backend::Backend::current();
  if (delay_ > 0 && backend) delayed_ = backend->timer(delay_, [this, question] { pose(question); });
  else pose(question);
}

void SearchQuestions::pose(const SearchQuestion& question) {
  // A copy: the source may be replaced, and the field may go, in the call.
  const Source source = source_;
  if (source) source(question);
}

void SearchQuestions::cancel() {
  delayed_.reset();
  asking_->current = 0;
}

}  // namespace tessaluna::ready
