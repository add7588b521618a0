// The peers that a routine's picture is compared with.
#pragma once

#include "bench/outlines/Contestant.h"

namespace bench {

// These draw the outlines as a document that was parsed in advance.
std::unique_ptr<Contestant> makeQtSvgContestant(const Drawing& drawing);
std::unique_ptr<Contestant> makeLibrsvgContestant(const Drawing& drawing);

struct Peer {
  std::string_view name;
  std::unique_ptr<Contestant> (*make)(const Drawing& drawing);
};
inline constexpr Peer peers[] = {{"QPainter", makeQtContestant},
                                 {"cairo", makeCairoContestant},
                                 {"AGG", makeAggContestant},
                                 {"QtSvg", makeQtSvgContestant},
                                 {"librsvg", makeLibrsvgContestant}};

}  // namespace bench
