#include <cstdio>
#include <string>

#include "tessaluna/platform/foundation/numberText.h"
#include "tessaluna/uikit/stylekit/Routines.h"
#include "tools/artwork/Command.h"

namespace artwork {

namespace {

using tessaluna::platform::numberText;
using TessalunaUIKit::Routine;
using TessalunaUIKit::RoutineFlag;

std::string frameText(const tessaluna::platform::CGRect& frame) {
  return numberText(frame.origin.x) + "," + numberText(frame.origin.y) + "," + numberText(frame.size.width) + "," +
         numberText(frame.size.height);
}

// The names of the kit are identifiers and the families plain words: nothing in them needs escaping.
std::string string(std::string_view text) { return '"' + std::string(text) + '"'; }
std::string stringOrNull(const std::optional<std::string>& text) { return text ? string(*text) : "null"; }

std::string jsonObject(const Routine& routine) {
  std::string flags;
  for (const RoutineFlag& flag : routine.flags) {
    if (!flags.empty()) flags += ',';
    flags += "{\"name\":" + string(flag.name) + ",\"default\":" + (flag.isOnByDefault ? "true" : "false") + "}";
  }
  return "{\"name\":" + string(routine.member()) + ",\"selector\":" + string(routine.selector()) +
         ",\"family\":" + string(familyName(routine.family)) + ",\"frameArgument\":" + string(routine.frameArgument) +
         ",\"defaultFrame\":[" + frameText(routine.defaultFrame) + "],\"flags\":[" + flags +
         "],\"image\":" + stringOrNull(routine.imageMember()) +
         ",\"imageSelector\":" + stringOrNull(routine.imageSelector()) + "}";
}

void printJson() {
  std::string text = "[\n";
  for (const Routine& routine : TessalunaUIKit::routines()) {
    if (text.size() > 2) text += ",\n";
    text += jsonObject(routine);
  }
  text += "\n]\n";
  std::fputs(text.c_str(), stdout);
}

// Three lines per routine, below the headings of the families.
void printText() {
  const Routine* earlier = nullptr;
  for (const Routine& routine : TessalunaUIKit::routines()) {
    if (!earlier || earlier->family != routine.family)
      std::printf("%s%s\n", earlier ? "\n" : "", std::string(familyName(routine.family)).c_str());
    earlier = &routine;

    std::string arguments = std::string(routine.frameArgument) + " " + frameText(routine.defaultFrame);
    for (const RoutineFlag& flag : routine.flags)
      arguments += ", " + std::string(flag.name) + " " + (flag.isOnByDefault ? "true" : "false");
    std::printf("  %s\n    %s\n", routine.selector().c_str(), arguments.c_str());
    std::printf("    image: %s\n", routine.imageSelector().value_or("none").c_str());
  }
}

constexpr Option options[] = {{"--json", Option::Value::None}};

}  // namespace

const Command listCommand = {
    .name = "list",
    .usage = "[--json]",
    .summary = "Prints all routines: selector, default frame, flags with their defaults, image routine.",
    .options = options,
    .run =
        [](const Arguments& arguments) {
          arguments.rejectWords();
          arguments.has("--json") ? printJson() : printText();
        },
};

}  // namespace artwork
