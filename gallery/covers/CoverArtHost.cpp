#include "gallery/covers/CoverArtHost.h"

#include "gallery/covers/KeyboardCover.h"
#include "gallery/covers/coverFiles.h"
#include "tessaluna/platform/foundation/NSNotificationCenter.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/windows/NSWindow.h"

namespace gallery {

using namespace tessaluna::platform;
using namespace TessalunaUIKit;

CoverArtHost::~CoverArtHost() {
  for (const Ref<NSObject>& token : {opened_, closed_}) NSNotificationCenter::defaultCenter().removeObserver(token);
}

void CoverArtHost::didInit() {
  NSObject::didInit();
  for (const CoverFile& file : coverFiles()) {
    addCover(file.name, file.note);
    const Ref<CoverArtThumbnailView> thumbnail = covers_.back().thumbnail;
    if (!file.hasManyPixels) {
      thumbnail->setImage(NSImage::initWithData(file.make()));
      continue;
    }
    const WeakRef<CoverArtThumbnailView> weak = thumbnail;
    DispatchQueue::main().answer(file.make, [weak](const FileBytes& bytes) {
      if (const auto waiting = weak.lock()) waiting->setImage(NSImage::initWithData(bytes));
    });
  }
  addCover("changing", "the images of the others in turn");
  changeImage();

  const auto observe = [this](std::string_view name, bool isOpen) {
    return NSNotificationCenter::defaultCenter().addObserverForName(
        name, nullptr, nullptr,
        [this, isOpen](const Ref<NSNotification>& notification) { panelChanged(notification->object(), isOpen); });
  };
  opened_ = observe(NSWindowDidBecomeKeyNotification, true);
  closed_ = observe(NSWindowDidResignKeyNotification, false);
}

void CoverArtHost::addCover(const std::string& name, const std::string& note) {
  constexpr CGFloat edge = 1;
  const CGRect bounds{0, 0, groundSize, groundSize};
  Cover cover{.name = name,
              .note = note,
              .ground = make<ViewWithBackground>(bounds),
              .thumbnail = make<KeyboardCover>(NSInsetRect(bounds, edge, edge))};
  cover.ground->setBackgroundColor(NSColor::colorWithCalibratedWhite(0.9, 1));
  cover.thumbnail->setImageScaling(NSImageScaleProportionallyUpOrDown);
  cover.thumbnail->accessibilitySetOverrideValue("Cover, " + name, NSAccessibilityDescriptionAttribute);
  cover.ground->addSubview(cover.thumbnail);
  covers_.push_back(std::move(cover));
}

void CoverArtHost::panelChanged(const Ref<NSObject>& window, bool isOpen) {
  const auto panel = std::dynamic_pointer_cast<CoverArtPanel>(window);
  if (!panel || !report_) return;
  for (const Cover& cover : covers_) {
    if (dynamic_cast<CoverArtThumbnailView*>(panel->delegate().get()) != cover.thumbnail.get()) continue;
    const auto whole = [](CGFloat length) { return std::to_string(static_cast<long>(length + 0.5)); };
    const CGSize size = panel->frame().size;
    report_(cover.name + ' ' + (isOpen ? whole(size.width) + " by " + whole(size.height) : "closed"));
  }
}

void CoverArtHost::setScaleToScreenResolution(bool scales) {
  for (const Cover& cover : covers_) cover.thumbnail->setScaleToScreenResolution(scales);
}
void CoverArtHost::setClosesByClickAndEscape(bool closes) {
  for (const Cover& cover : covers_) cover.thumbnail->setClosesByClickAndEscape(closes);
}
void CoverArtHost::setPreparesImages(bool prepares) {
  for (const Cover& cover : covers_) cover.thumbnail->setPreparesImages(prepares);
}

void CoverArtHost::changeImage() {
  // The images of the other thumbnails in turn; the cut-off file and the absent one have none.
  const std::size_t others = covers_.size() - 1;
  covers_.back().thumbnail->setImage(covers_[changes_++ % others].thumbnail->image());
}

}  // namespace gallery
