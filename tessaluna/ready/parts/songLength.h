// Decoders report absurd lengths for streams and for broken files; such a length is unknown.
#pragma once

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::ready {

inline constexpr int longestSong = 1000 * 3600 - 1;  // seconds: "999:59:59"

}  // namespace tessaluna::ready
