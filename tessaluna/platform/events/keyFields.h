// The characters of keys.
#pragma once

#include <optional>

#include "tessaluna/platform/backend/Input.h"
#include "tessaluna/platform/events/NSEvent.h"

namespace tessaluna::platform {

// What a key's event says of it; window, place and time are the sender's. A modifier key is a change of flags, which count it
// from its press to its release, whatever the desktop counts. Absent for what is not an event: releases between the repeats of a
// key that is down.
std::optional<NSEvent::Fields> keyFieldsOf(const backend::KeyInput& key);

struct NamedKey {
  backend::KeyName name = backend::KeyName::Character;
  int functionNumber = 0;
  friend bool operator==(const NamedKey&, const NamedKey&) = default;
};
// The key whose events have the character; of those that type what they show, Character.
NamedKey keyOfCharacter(char32_t character);

}  // namespace tessaluna::platform
