#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

#include <utility>

#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tessaluna/uikit/coverart/coverArtGeometry.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {
    property<&CoverArtThumbnailView::setScaleToScreenResolution, "scaleToScreenResolution">()};

constexpr CGRect frameWithoutWindow{0, 0, 1400, 900};
constexpr CGRect screenOfUnseenWindow{0, 0, 1400, 0};  // its height takes no part
constexpr CGSize sizeWithoutImage{64, 64};
constexpr double closingSeconds = 0.001;

}  // namespace

const ClassInfo CoverArtThumbnailView::staticClassInfo{
    .name = "TessalunaUIKit.CoverArtThumbnailView", .base = &NSImageView::staticClassInfo, .properties = properties};

CoverArtThumbnailView::CoverArtThumbnailView(NSCoder& coder) : NSImageView(coder) {
  coder.overlookKeys({"scaleToScreenResolution"});
}

// Its window would keep the panel, and nothing would close that any more.
CoverArtThumbnailView::~CoverArtThumbnailView() {
  if (coverArtPanel_) coverArtPanel_->close();
}

CGRect CoverArtThumbnailView::coverArtPanelFrame(CGSize size) const {
  if (!window()) return frameWithoutWindow;
  const Ref<NSScreen> screen = window()->screen();
  const CGRect inWindow = convertRectToView(bounds(), nullptr);
  if (scaleToScreenResolution_) size = window()->convertRectFromBacking({{}, size}).size;
  return frameOfEnlargedCover(size, window()->convertRectToScreen(inWindow),
                              screen ? screen->visibleFrame() : screenOfUnseenWindow);
}

CGRect CoverArtThumbnailView::frameOfImage() const { return coverArtPanelFrame(naturalSizeOf(image()->representations())); }

Ref<NSImageView> CoverArtThumbnailView::makeContentView(CGSize size) const {
  auto view = make<NSImageView>(CGRect{{}, size});
  view->setImageScaling(NSImageScaleProportionallyUpOrDown);
  view->setImageFrameStyle(NSImageFrameNone);
  view->setImage(image());
  return view;
}

void CoverArtThumbnailView::mouseUp(const Ref<NSEvent>& event) {
  const Ref<NSView> held = refTo<NSView>(*this);
  NSImageView::mouseUp(event);
  // A press that ends because the view leaves its window, or is dragged with it, is not a click.
  if (endsTakenPress(*event)) return;
  if (coverArtPanel_) closeEnlargedView();
  else if (image()) enlarge();
}

void CoverArtThumbnailView::enlarge() {
  const CGRect frame = frameOfImage();
  const auto panel = make<CoverArtPanel>(frame, NSWindowStyleMaskBorderless | NSWindowStyleMaskTexturedBackground,
                                         NSBackingStoreBuffered, /*defer=*/false);
  coverArtPanel_ = panel;
  panel->setContentView(makeContentView(frame.size));
  panel->setDelegate(std::static_pointer_cast<CoverArtThumbnailView>(shared_from_this()));
  if (window()) window()->addChildWindow(panel, NSWindowAbove);
  panel->makeKeyAndOrderFront(nullptr);
}

void CoverArtThumbnailView::closeEnlargedView() {
  const Ref<CoverArtPanel> panel = coverArtPanel_;
  if (!panel) return;
  const WeakRef<CoverArtThumbnailView> weak = refTo(*this);
  if (window()) window()->removeChildWindow(*panel);
  // Intentional: a key panel resigns its status here, which comes back to this operation and asks for a second block.
  panel->close();
  DispatchQueue::main().asyncAfter(closingSeconds, [weak] {
    if (const auto self = weak.lock()) self->coverArtPanel_.reset();
  });
}

void CoverArtThumbnailView::windowDidResignKey(const Ref<NSNotification>&) { closeEnlargedView(); }

void CoverArtThumbnailView::setImage(Ref<NSImage> image) {
  NSImageView::setImage(std::move(image));
  const Ref<CoverArtPanel> panel = coverArtPanel_;
  if (!panel) return;
  if (this->image()) {
    const CGRect frame = frameOfImage();
    panel->setContentView(makeContentView(frame.size));
    panel->setFrame(frame, /*display=*/true, /*animate=*/true);
  } else {
    panel->setContentView(nullptr);
    panel->setBackgroundColor(NSColor::windowBackgroundColor());
    panel->setFrame(coverArtPanelFrame(sizeWithoutImage), /*display=*/true, /*animate=*/true);
  }
}

}  // namespace TessalunaUIKit
