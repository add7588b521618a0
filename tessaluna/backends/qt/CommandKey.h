// Which of the keyboard's modifiers is the Command key of key equivalents and text commands.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend::qt {

enum class CommandKey {
  Meta,     // the key between Control and Alt, often with a desktop's sign on it
  Control,  // for keyboards without that key; Meta, where there is one, is Control then
};

}  // namespace tessaluna::backend::qt
