#include "tools/artwork/Figure.h"

#include <algorithm>
#include <string>
#include <vector>

#include "tessaluna/platform/graphics/NSGraphicsContext.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tools/artwork/Failure.h"
#include "tools/artwork/nearestNames.h"
#include "tools/artwork/numbers.h"

namespace artwork {

using TessalunaUIKit::Routine;
using TessalunaUIKit::RoutineFlag;

namespace {

// Compares the mistyped name with the one of a name's three forms that it resembles.
std::string nameSuggestion(std::string_view wrong) {
  const std::span<const Routine> all = TessalunaUIKit::routines();
  std::vector<std::string> members;
  for (const Routine& routine : all) members.push_back(routine.member());

  std::vector<std::string_view> candidates;
  if (wrong.find(':') != std::string_view::npos) wrong = wrong.substr(0, wrong.find("With"));
  const std::string member = wrong.starts_with("draw") ? std::string(wrong) : "draw" + std::string(wrong);
  candidates.assign(members.begin(), members.end());
  std::string text = suggestion(member, candidates);
  return text.empty() ? "; `tessaluna-artwork list` prints the names" : text;
}

[[noreturn]] void failOnUnknownFlag(std::string_view flag, const Routine& routine, std::span<const Option> options) {
  const std::string wrong = "--" + std::string(flag);
  std::vector<std::string> flags;
  for (const RoutineFlag& known : routine.flags) flags.push_back("--" + std::string(known.name));
  std::vector<std::string_view> names(flags.begin(), flags.end());
  for (const Option& option : options) names.push_back(option.name);

  std::string text = routine.member() + " has no flag " + inQuotes(wrong);
  const std::string nearest = suggestion(wrong, names);
  if (!nearest.empty()) throw UsageFailure(text + nearest);
  if (flags.empty()) throw UsageFailure(text + "; it has none");
  text += "; it has ";
  for (std::size_t i = 0; i < flags.size(); ++i) text += (i ? ", " : "") + flags[i];
  throw UsageFailure(text);
}

}  // namespace

Figure Figure::parse(const Arguments& arguments) {
  const std::string_view name = arguments.onlyWord("the NAME of a routine");
  Figure figure;
  figure.routine_ = TessalunaUIKit::findRoutine(name);
  if (!figure.routine_) throw UsageFailure("there is no routine " + inQuotes(name) + nameSuggestion(name));
  figure.setFlags(arguments);
  figure.frame_ = figure.routine_->defaultFrame;
  if (const auto frame = arguments.value("--frame")) figure.frame_ = parseFrame({"--frame", *frame});
  return figure;
}

void Figure::setFlags(const Arguments& arguments) {
  const std::span<const RoutineFlag> known = routine_->flags;
  flags_ = std::make_unique<bool[]>(known.size());
  for (std::size_t i = 0; i < known.size(); ++i) flags_[i] = known[i].isOnByDefault;
  std::vector<bool> isGiven(known.size());
  for (const Arguments::Flag& flag : arguments.flags()) {
    const auto found = std::ranges::find(known, flag.name, &RoutineFlag::name);
    if (found == known.end()) failOnUnknownFlag(flag.name, *routine_, arguments.options());
    const auto index = std::size_t(found - known.begin());
    const std::string option = "--" + std::string(flag.name);
    if (!flag.value) throw UsageFailure(option + " needs true or false");
    if (isGiven[index]) throw UsageFailure(option + " is given twice");
    isGiven[index] = true;
    flags_[index] = parseBool({option, *flag.value});
  }
}

void Figure::draw(tessaluna::backend::Canvas& canvas) const {
  const tessaluna::platform::CanvasScope scope(canvas);
  routine_->draw(frame_, flags());
}

void Figure::drawImage(tessaluna::backend::Canvas& canvas) const {
  const tessaluna::platform::CanvasScope scope(canvas);
  routine_->image(frame_.size, flags())->drawInRect(frame_);
}

}  // namespace artwork
