// How the gallery opens: a splash shows the progress, the first page is made under it, and then the window appears.
#pragma once

#include "gallery/Pages.h"
#include "tessaluna/platform/backend/Timer.h"
#include "tessaluna/uikit/startup/AppSplashController.h"

namespace gallery {

class GalleryWindow;

class Opening {
 public:
  // The window must outlive it. Destroying it closes the splash and cancels the steps that remain.
  Opening(GalleryWindow& window, const Page& page);
  ~Opening();
  Opening(const Opening&) = delete;
  Opening& operator=(const Opening&) = delete;

  // Null once the window is shown.
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
