// The context that drawing goes to. There is at most one current context on each thread; with none, drawing does nothing.
#pragma once

#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/CGContext.h"

namespace tessaluna::platform {

class NSGraphicsContext : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // On a context or a canvas that the caller keeps alive. Flipped is what text and images ask for when they are upright
  // in a space whose y axis points down; it changes no transform.
  static Ref<NSGraphicsContext> graphicsContextWithCGContext(platform::CGContext& context, bool flipped);

  // This thread's; null outside a drawing pass.
  static Ref<NSGraphicsContext> currentContext();
  static void setCurrentContext(Ref<NSGraphicsContext> context);

  // The current context's CGContext. Without a current context the program stops.
  static platform::CGContext& currentCgContext();
  // The same, null without a current context.
  static platform::CGContext* currentCGContextIfAny();

  // Of the current context, if there is one.
  static void saveGraphicsState();
  static void restoreGraphicsState();

  platform::CGContext& CGContext() const { return context_; }
  platform::CGContext& graphicsPort() const { return context_; }  // the same under its older name
  bool isFlipped() const { return isFlipped_; }
  void setFlipped(bool isFlipped) { isFlipped_ = isFlipped; }  // follows the view that draws

  NSGraphicsContext(platform::CGContext& context, bool flipped) : context_(context), isFlipped_(flipped) {}

 private:
  platform::CGContext& context_;
  bool isFlipped_;
};

// Makes a context current until the closing brace, then brings the earlier one back.
class CurrentContextScope {
 public:
  explicit CurrentContextScope(Ref<NSGraphicsContext> context) : earlier_(NSGraphicsContext::currentContext()) {
    NSGraphicsContext::setCurrentContext(std::move(context));
  }
  explicit CurrentContextScope(CGContext& context)
      : CurrentContextScope(NSGraphicsContext::graphicsContextWithCGContext(context, false)) {}
  ~CurrentContextScope() { NSGraphicsContext::setCurrentContext(std::move(earlier_)); }
  CurrentContextScope(const CurrentContextScope&) = delete;
  CurrentContextScope& operator=(const CurrentContextScope&) = delete;

 private:
  Ref<NSGraphicsContext> earlier_;
};

// All drawing of this scope goes to the canvas: CanvasScope scope(canvas); TessalunaStyleKit::drawPlay();
class CanvasScope {
 public:
  explicit CanvasScope(backend::Canvas& canvas) : context_(canvas), current_(context_) {}

 private:
  CGContext context_;
  CurrentContextScope current_;
};

}  // namespace tessaluna::platform
