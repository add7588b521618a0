// What a player does with its covers: it reads their files, gives each thumbnail its image, and observes the panels that open
// and close.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tessaluna/uikit/containers/ViewWithBackground.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

namespace gallery {

class CoverArtHost : public tessaluna::platform::NSObject {
 public:
  struct Cover {
    std::string name, note;
    tessaluna::platform::Ref<TessalunaUIKit::ViewWithBackground> ground;  // contains the thumbnail, one point from its edges
    tessaluna::platform::Ref<TessalunaUIKit::CoverArtThumbnailView> thumbnail;
  };
  static constexpr double groundSize = 98;  // in points, each way

  ~CoverArtHost() override;
  void didInit() override;

  // The image of the last one changes.
  const std::vector<Cover>& covers() const { return covers_; }
  // "wide 1600 by 500" when one is enlarged, and "wide closed".
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }

  // These set all thumbnails.
  void setScaleToScreenResolution(bool scales);
  void setClosesByClickAndEscape(bool closes);
  void setPreparesImages(bool prepares);

  // Gives the last one the next image, which may be none.
  void changeImage();

 private:
  void addCover(const std::string& name, const std::string& note);
  void panelChanged(const tessaluna::platform::Ref<tessaluna::platform::NSObject>& window, bool isOpen);

  std::vector<Cover> covers_;
  std::function<void(const std::string&)> report_;
  std::size_t changes_ = 0;
  tessaluna::platform::Ref<tessaluna::platform::NSObject> opened_, closed_;  // tokens of the notification center
};

}  // namespace gallery
