#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

#include <utility>

#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/backend/Backend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/events/keyBindings.h"
#include "tessaluna/platform/events/takenPress.h"
#include "tessaluna/platform/foundation/NSBundle.h"
#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/memberTables.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/time/DispatchQueue.h"
#include "tessaluna/platform/windows/NSScreen.h"
#include "tessaluna/uikit/coverart/coverArtGeometry.h"

namespace TessalunaUIKit {

using namespace tessaluna::platform;

namespace {

constexpr Property properties[] = {property<&CoverArtThumbnailView::setScaleToScreenResolution, "scaleToScreenResolution">(),
                                   property<&CoverArtThumbnailView::setClosesByClickAndEscape, "closesByClickAndEscape">()};

constexpr CGRect frameWithoutWindow{0, 0, 1400, 900};
constexpr CGRect screenOfUnseenWindow{0, 0, 1400, 0};  // its height takes no part
constexpr CGSize sizeWithoutImage{64, 64};
constexpr double closingSeconds = 0.001;

// What a panel shows that its user can close in it.
class ClosableCover : public NSImageView {
 public:
  ClosableCover(CGRect frame, const Ref<CoverArtThumbnailView>& thumbnail) : NSImageView(frame), thumbnail_(thumbnail) {}

  void mouseUp(const Ref<NSEvent>& event) override {
    const Ref<NSView> held = refTo<NSView>(*this);
    NSImageView::mouseUp(event);
    // One that ends because the panel is dragged is not a click.
    if (!endsTakenPress(*event)) close();
  }

  bool performKeyEquivalent(const Ref<NSEvent>& event) override {
    if (commandForKey(*event) != "cancelOperation:") return NSImageView::performKeyEquivalent(event);
    close();
    return true;
  }

 private:
  void close() {
    if (const Ref<CoverArtThumbnailView> thumbnail = thumbnail_.lock()) thumbnail->closeEnlargedView();
  }

  WeakRef<CoverArtThumbnailView> thumbnail_;
};

// To assistive clients, as nothing else in the panel has a name.
constexpr std::string_view nameKey = "Enlarged cover";

double now() {
  const tessaluna::backend::Backend* backend = tessaluna::backend::Backend::current();
  return backend ? backend->now() : 0;
}

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

Ref<NSImageView> CoverArtThumbnailView::makeContentView(CGSize size) {
  const CGRect frame{{}, size};
  const Ref<NSImageView> view =
      closesByClickAndEscape_ ? make<ClosableCover>(frame, refTo(*this)) : make<NSImageView>(frame);
  view->setImageScaling(NSImageScaleProportionallyUpOrDown);
  view->setImageFrameStyle(NSImageFrameNone);
  view->setImage(image());
  if (preparesImages()) {
    // What is there, until the image is: that of the panel, or else the thumbnail's.
    const auto earlier = std::dynamic_pointer_cast<NSImageView>(coverArtPanel_->contentView());
    const Ref<NSImage> picture = earlier ? earlier->pictureToDraw() : nullptr;
    view->setPictureBefore(picture ? picture : pictureToDraw());
    view->setPreparesImages(true);
  }
  const std::string name = accessibleNameOf(refTo<NSView>(*this));
  for (NSAccessibility* element : std::initializer_list<NSAccessibility*>{coverArtPanel_.get(), view.get()})
    element->accessibilitySetOverrideValue(name.empty() ? NSBundle::mainBundle()->localizedStringForKey(nameKey) : name,
                                           NSAccessibilityDescriptionAttribute);
  return view;
}

void CoverArtThumbnailView::mouseUp(const Ref<NSEvent>& event) {
  const Ref<NSView> held = refTo<NSView>(*this);
  NSImageView::mouseUp(event);
  // A press that ends because the view leaves its window, or is dragged with it, is not a click.
  const bool isClosingPress = takeClosingPress();
  if (!endsTakenPress(*event) && !isClosingPress) toggle();
}

void CoverArtThumbnailView::toggle() {
  const Ref<NSView> held = refTo<NSView>(*this);  // the host may release it as a window takes or loses the key status
  if (coverArtPanel_) closeEnlargedView();
  else if (image()) enlarge();
  lostKeyAt_.reset();
}

void CoverArtThumbnailView::mouseDown(const Ref<NSEvent>& event) {
  pressedAt_ = now();
  NSImageView::mouseDown(event);
}

// Whether the press that ends has closed the panel. A desktop gives the key status to the window under it a little before or
// after it.
bool CoverArtThumbnailView::takeClosingPress() {
  constexpr double little = 0.1;  // seconds
  const std::optional<double> pressedAt = std::exchange(pressedAt_, std::nullopt);
  return closesByClickAndEscape_ && !coverArtPanel_ && pressedAt && lostKeyAt_ && *lostKeyAt_ > *pressedAt - little;
}

void CoverArtThumbnailView::enlarge() {
  const CGRect frame = frameOfImage();
  const auto panel = make<CoverArtPanel>(frame, NSWindowStyleMaskBorderless | NSWindowStyleMaskTexturedBackground,
                                         NSBackingStoreBuffered, /*defer=*/false);
  coverArtPanel_ = panel;
  const Ref<NSImageView> view = makeContentView(frame.size);
  panel->setContentView(view);
  view->prepareImageForSize(frame.size);
  panel->setDelegate(std::static_pointer_cast<CoverArtThumbnailView>(shared_from_this()));
  if (window()) window()->addChildWindow(panel, NSWindowAbove);
  panel->makeKeyAndOrderFront(nullptr);
}

void CoverArtThumbnailView::closeEnlargedView() {
  const Ref<CoverArtPanel> panel = coverArtPanel_;
  if (!panel) return;
  const Ref<CoverArtThumbnailView> held = refTo(*this);  // the host may release it as the panel closes
  if (window()) window()->removeChildWindow(*panel);
  // Intentional: a key panel resigns its status here, which comes back to this operation and asks for a second block.
  panel->close();
  lostKeyAt_.reset();
  DispatchQueue::main().asyncAfter(closingSeconds, [weak = WeakRef<CoverArtThumbnailView>(held)] {
    if (const auto self = weak.lock()) self->coverArtPanel_.reset();
  });
}

void CoverArtThumbnailView::windowDidResignKey(const Ref<NSNotification>&) {
  closeEnlargedView();
  // Unless the panel lost it by closing: the next press is a new one then, however soon it comes.
  lostKeyAt_ = now();
}

std::vector<std::string> CoverArtThumbnailView::accessibilityActionNames() const {
  if (coverArtPanel_ || image()) return {std::string(NSAccessibilityPressAction)};
  return NSImageView::accessibilityActionNames();
}

void CoverArtThumbnailView::accessibilityPerformAction(std::string_view action) {
  if (action == NSAccessibilityPressAction) toggle();
  else NSImageView::accessibilityPerformAction(action);
}

void CoverArtThumbnailView::setImage(Ref<NSImage> image) {
  NSImageView::setImage(std::move(image));
  const Ref<CoverArtPanel> panel = coverArtPanel_;
  if (!panel) return;
  if (this->image()) {
    const CGRect frame = frameOfImage();
    const Ref<NSImageView> view = makeContentView(frame.size);
    panel->setContentView(view);
    view->prepareImageForSize(frame.size);
    panel->setFrame(frame, /*display=*/true, /*animate=*/true);
  } else {
    panel->setContentView(closesByClickAndEscape_ ? makeContentView(sizeWithoutImage) : nullptr);
    panel->setBackgroundColor(NSColor::windowBackgroundColor());
    panel->setFrame(coverArtPanelFrame(sizeWithoutImage), /*display=*/true, /*animate=*/true);
  }
}

}  // namespace TessalunaUIKit
