#include "tessaluna/ready/search/SearchQuestions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/harness/StillWorld.h"

namespace tessaluna::ready {
namespace {

using testing::ElementsAre;

class SearchQuestionsTest : public harness::StillWorld {
 protected:
  SearchQuestionsTest() {
    questions->setSource([this](const SearchQuestion& question) { asked.push_back(question); });
  }
  static std::vector<SearchRow> rowsNamed(const std::string& title) { return {{.title = title}}; }
  std::vector<std::string> texts() const {
    std::vector<std::string> result;
    for (const SearchQuestion& question : asked) result.push_back(question.text());
    return result;
  }

  std::vector<SearchQuestion> asked;
  std::vector<std::string> received;  // the first title of each answer that counted
  std::unique_ptr<SearchQuestions> questions = std::make_unique<SearchQuestions>(
      [this](const std::vector<SearchRow>& rows) { received.push_back(rows.empty() ? "nothing" : rows[0].title); });
};

TEST_F(SearchQuestionsTest, AnAnswerComesAtOnceLaterOrNever) {
  questions->ask("a");
  asked[0].answer(rowsNamed("amber"));
  questions->ask("b");
  desktop.advance(100);
  asked[1].answer({});
  questions->ask("c");
  EXPECT_THAT(received, ElementsAre("amber", "nothing"));
  EXPECT_TRUE(questions->isWaiting());
}

TEST_F(SearchQuestionsTest, QuestionsAreNumberedInTheOrderOfAsking) {
  questions->ask("a");
  questions->ask("b");
  EXPECT_EQ(asked[0].number(), 1u);
  EXPECT_EQ(asked[1].number(), 2u);
}

TEST_F(SearchQuestionsTest, AskingAgainDropsTheAnswerToTheEarlierQuestion) {
  questions->ask("a");
  questions->ask("b");
  EXPECT_FALSE(asked[0].isCurrent());
  asked[0].answer(rowsNamed("late"));
  EXPECT_THAT(received, ElementsAre());
  EXPECT_TRUE(asked[1].isCurrent());
  asked[1].answer(rowsNamed("blue"));
  EXPECT_THAT(received, ElementsAre("blue"));
  EXPECT_FALSE(questions->isWaiting());
}

TEST_F(SearchQuestionsTest, OnlyTheFirstAnswerToAQuestionCounts) {
  questions->ask("a");
  const SearchQuestion copy = asked[0];
  copy.answer(rowsNamed("first"));
  asked[0].answer(rowsNamed("second"));
  EXPECT_THAT(received, ElementsAre("first"));
}

TEST_F(SearchQuestionsTest, ACancelledQuestionHasNoAnswer) {
  questions->ask("a");
  questions->cancel();
  asked[0].answer(rowsNamed("late"));
  EXPECT_THAT(received, ElementsAre());
  EXPECT_FALSE(questions->isWaiting());
}

TEST_F(SearchQuestionsTest, WithADelayOnlyTheLastOfQuicklyTypedTextsIsAsked) {
  questions->setDelay(0.2);
  for (const char* text : {"s", "si", "sil"}) {
    questions->ask(text);
    desktop.advance(0.1);
  }
  EXPECT_THAT(texts(), ElementsAre());
  EXPECT_TRUE(questions->isWaiting());
  desktop.advance(0.15);
  EXPECT_THAT(texts(), ElementsAre("sil"));
}

TEST_F(SearchQuestionsTest, CancelledInItsDelayAQuestionIsNeverAsked) {
  questions->setDelay(0.2);
  questions->ask("a");
  questions->cancel();
  desktop.advance(1);
  EXPECT_THAT(texts(), ElementsAre());
}

TEST_F(SearchQuestionsTest, TheSourceMayAnswerAndAskWithinItsCall) {
  questions->setSource([this](const SearchQuestion& question) {
    if (question.text() == "again") questions->ask("more");
    question.answer(rowsNamed(question.text()));
  });
  questions->ask("a");
  questions->ask("again");
  EXPECT_THAT(received, ElementsAre("a", "more"));
}

TEST_F(SearchQuestionsTest, AnAnswerAfterTheFieldHasGoneIsDropped) {
  questions->ask("a");
  questions.reset();
  EXPECT_FALSE(asked[0].isCurrent());
  asked[0].answer(rowsNamed("late"));
  EXPECT_THAT(received, ElementsAre());
}

TEST_F(SearchQuestionsTest, WithoutASourceAQuestionWaits) {
  questions->setSource(nullptr);
  questions->ask("a");
  EXPECT_TRUE(questions->isWaiting());
}

// Ten thousand questions whose answers come in random order, some twice and some never: what is shown never goes back to an
// earlier question, and comes from the question that was the last one at that moment.
TEST_F(SearchQuestionsTest, AnswersInAnyOrderNeverShowAnEarlierQuestionAgain) {
  constexpr std::size_t count = 10000;
  for (const unsigned seed : {1u, 2u, 3u}) {
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) { return std::size_t(random() % limit); };
    asked.clear();
    received.clear();
    SearchQuestions fresh([this](const std::vector<SearchRow>& rows) { received.push_back(rows.at(0).title); });
    fresh.setSource([this](const SearchQuestion& question) { asked.push_back(question); });
    std::vector<std::string> expected;
    std::vector<bool> isAnswered;
    while (asked.size() < count) {
      if (isAnswered.empty() || below(3) == 0) {
        fresh.ask("text " + std::to_string(asked.size()));
        isAnswered.push_back(false);
        continue;
      }
      // Mostly one of the last few, as with a slow network; now and then any of them.
      const std::size_t back = below(10) == 0 ? below(asked.size()) : below(std::min<std::size_t>(asked.size(), 4));
      const std::size_t index = asked.size() - 1 - back;
      const bool counts = index + 1 == asked.size() && !isAnswered[index];
      ASSERT_EQ(asked[index].isCurrent(), counts) << "question " << index << ", seed " << seed;
      asked[index].answer(rowsNamed(std::to_string(index)));
      if (counts) expected.push_back(std::to_string(index));
      isAnswered[index] = true;
      ASSERT_EQ(fresh.isWaiting(), !isAnswered.back());
    }
    EXPECT_EQ(received, expected) << "seed " << seed;
    EXPECT_GT(received.size(), count / 4);
    EXPECT_TRUE(std::ranges::is_sorted(received, {}, [](const std::string& title) { return std::stoul(title); }));
  }
}

}  // namespace
}  // namespace tessaluna::ready
