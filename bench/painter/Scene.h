// One row of the comparison: a kind of drawing that a player's window needs, in device pixels, y down.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/outlines/Contestant.h"

namespace bench {

// The exact picture: channels of 0 to 255, premultiplied.
struct ExactPixels {
  struct Pixel {
    double red = 0, green = 0, blue = 0, alpha = 0;
  };
  int width = 0, height = 0;
  std::vector<Pixel> pixels = {};
};

struct Entrant {
  std::string name;
  std::function<std::unique_ptr<Contestant>()> make;
  bool isPeer = true;
};

struct Scene {
  std::string name;
  double wanted = 1;                   // the wanted ratio of our time to the fastest peer's
  std::vector<Entrant> entrants;       // ours first, cold if the canvas remembers what it draws
  std::function<ExactPixels()> exact;  // empty if the pictures need not be the same
};

struct GradientWork {
  int width = 0, height = 0;  // of the rectangle, which is the whole bitmap
  std::vector<tessaluna::backend::GradientStop> stops = {};
  tessaluna::backend::CGPoint start, end;
};

struct ImageWork {
  int width = 0, height = 0;  // of the bitmap
  tessaluna::backend::ImagePixels image = {};
  tessaluna::backend::CGRect place;
  double degrees = 0;  // the clockwise turn about the middle of its place
};

struct ShadowWork {
  int width = 0, height = 0;
  tessaluna::backend::CGRect rect;
  double radius = 0;
  double blur = 0;  // twice the standard deviation
  double below = 0;
};

enum class Filter { Good, Best };

std::unique_ptr<Contestant> makeOurs(const GradientWork& work);
std::unique_ptr<Contestant> makeOurs(const ImageWork& work);
std::unique_ptr<Contestant> makeOurs(const ShadowWork& work);
std::unique_ptr<Contestant> makeQt(const GradientWork& work);
std::unique_ptr<Contestant> makeQt(const ImageWork& work);
std::unique_ptr<Contestant> makeCairo(const GradientWork& work);
std::unique_ptr<Contestant> makeCairo(const ImageWork& work, Filter filter);
// Cairo has no blur; programs that use it make three box passes over a mask.
std::unique_ptr<Contestant> makeCairo(const ShadowWork& work);

std::vector<Scene> allScenes();

}  // namespace bench
