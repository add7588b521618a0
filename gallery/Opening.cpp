#include "gallery/Opening.h"

#include "gallery/GalleryWindow.h"
#include "gallery/startup/splash.h"
#include "tessaluna/platform/backend/Backend.h"

namespace gallery {

using tessaluna::backend::Backend;

namespace {

// How long the splash takes to be on the screen, and how long somebody needs to read it.
constexpr double secondsToAppear = 0.15, secondsToRead = 0.7;

}  // namespace

Opening::Opening(GalleryWindow& window, const Page& page) : window_(window), page_(page), splash_(makeSplash()) {
  splash_->setInformativeText("The kit, page by page");
  splash_->setCurrentStepText("Opening the library");
  splash_->showWindow(nullptr);
  next_ = Backend::current()->timer(secondsToAppear, [this] { makePage(); });
}

Opening::~Opening() {
  if (splash_) splash_->close();
}

void Opening::makePage() {
  window_.showPage(page_);
  splash_->setCurrentStepText("Ready");
  next_ = Backend::current()->timer(secondsToRead, [this] { showWindow(); });
}

void Opening::showWindow() {
  // First, because a program ends with its last window.
  window_.show();
  splash_->progressIndicator()->stopAnimation(nullptr);
  splash_->close();
  splash_.reset();
}

}  // namespace gallery
