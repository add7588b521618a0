#include "tessaluna/platform/events/keyEquivalents.h"

#include <algorithm>
#include <string>

#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

namespace {

constexpr std::uint32_t modifiersThatCount =
    NSEventModifierFlagShift | NSEventModifierFlagControl | NSEventModifierFlagOption | NSEventModifierFlagCommand;

bool isCapital(char c) { return c >= 'A' && c <= 'Z'; }

std::string smallLetters(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (isCapital(c)) c = static_cast<char>(c - 'A' + 'a');
  return result;
}

}  // namespace

bool isKeyEquivalent(const NSEvent& event, std::string_view characters, std::uint32_t modifiers) {
  if (characters.empty()) return false;
  if (std::any_of(characters.begin(), characters.end(), isCapital)) modifiers |= NSEventModifierFlagShift;
  return smallLetters(event.charactersIgnoringModifiers()) == smallLetters(characters) &&
         (event.modifierFlags() & modifiersThatCount) == modifiers;
}

}  // namespace tessaluna::platform
