// How the gallery opens: a splash says what is under way, the first page is made below it, and then the window shows.
#pragma once

#include "gallery/Pages.h"
#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/uikit/startup/AppSplashController.h"

namespace gallery {

class GalleryWindow;

class Opening {
 public:
  // The window outlives it. What is under way ends with it.
  Opening(GalleryWindow& window, const Page& page);
  ~Opening();
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;

  // Null once the window shows.
  const tessaluna::platform::Ref<TessalunaUIKit::AppSplashController>& splash() const { return splash_; }

 private:
  void makePage();
  void showWindow();

  GalleryWindow& window_;
  const Page& page_;
  tessaluna::platform::Ref<TessalunaUIKit::AppSplashController> splash_;
  tessaluna::backend::Timer next_;
};

}  // namespace gallery
