// Whatever a user does and a program changes meanwhile, in whatever order: what a window shows is what drawing all of it would
// show, and what checks.h says holds. A gesture, and a change, is a row of a table; a failure prints those that led to it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "tessaluna/backends/headless/HeadlessBackend.h"
#include "tessaluna/platform/accessibility/AccessibleDescription.h"
#include "tessaluna/platform/accessibility/attributes.h"
#include "tessaluna/platform/events/keyFields.h"
#include "tessaluna/platform/foundation/stopHandler.h"
#include "tessaluna/platform/graphics/NSColor.h"
#include "tessaluna/platform/graphics/NeutralAxis.h"
#include "tessaluna/platform/text/unicode.h"
#include "tessaluna/platform/views/NSControl.h"
#include "tessaluna/platform/views/NSTextField.h"
#include "tessaluna/platform/views/NSViewAnimator.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/platform/windows/WindowInput.h"
#include "tessaluna/platform/windows/effectiveAppearance.h"
#include "tests/fuzz/gestures/Scene.h"
#include "tests/fuzz/gestures/checks.h"

namespace {

using namespace tessaluna::platform;
using namespace tessaluna::backend;
using namespace tessaluna::backend::headless;
using fuzz::FuzzInput;
using fuzz::Scene;

std::string story;  // what has happened, a line for each step

void note(const std::string& line) {
  story += line + "\n";
  if (std::getenv("GESTURES_LOG")) std::fprintf(stderr, "%s\n", line.c_str());
}

void failIf(const std::string& fault) {
  if (fault.empty()) return;
  std::fprintf(stderr, "%s%s\n", story.c_str(), fault.c_str());
  std::abort();
}

struct World {
  World() {
    desktop.setPictures(Pictures::Painted);
    NSApplication::sharedApplication();
  }
  ~World() {
    setNeutralsFollowPalette(false);
    NSApp.reset();
  }

  FuzzInput input{{}};  // of the current step
  HeadlessBackend desktop;
  Scene scene;
  Ref<NSWindow> other;  // of the same program, with a field
  unsigned changesInActions = 0;

  // The pointer, which is captured by the window that it was pressed in.
  CGPoint pointer;  // screen space
  std::uint32_t held = 0, modifiers = 0;
  WeakRef<NSWindow> over, captor;

  Ref<NSWindow> windowAt(CGPoint point) const {
    for (auto native = desktop.windows().rbegin(); native != desktop.windows().rend(); ++native)
      if ((*native)->isVisible() && NSPointInRect(point, (*native)->frame()))
        for (const Ref<NSWindow>& window : NSApp->windows())
          if (window->nativeWindow() == *native) return window;
    return nullptr;
  }
  void send(NSWindow& window, PointerInput::What what, int button = 0) {
    const CGPoint base = window.convertPointFromScreen(pointer);
    desktop.setMouseLocation(pointer);
    HeadlessWindow::of(window).input().pointer({.what = what,
                                                .place = {base.x, window.frame().size.height - base.y},
                                                .onScreen = pointer,
                                                .button = button,
                                                .heldButtons = held,
                                                .modifiers = modifiers});
  }
  void moveTo(CGPoint point) {
    pointer = point;
    Ref<NSWindow> now = held ? captor.lock() : nullptr;
    if (!now || !now->isVisible()) now = windowAt(point);
    const Ref<NSWindow> earlier = over.lock();
    if (earlier != now) {
      if (earlier && earlier->isVisible()) send(*earlier, PointerInput::What::Left);
      over = now;
      if (now) send(*now, PointerInput::What::Entered);
    }
    if (now && now->isVisible()) send(*now, PointerInput::What::Moved);
  }
  void press(int button) {
    if (held & 1u << button) return;
    const Ref<NSWindow> window = held && captor.lock() ? captor.lock() : windowAt(pointer);
    held |= 1u << button;
    if (!window || !window->isVisible()) return sendPressElsewhere(pointer, button, modifiers);
    captor = window;
    HeadlessWindow& native = HeadlessWindow::of(*window);
    native.raise();
    native.requestKey();
    if (window->isVisible()) send(*window, PointerInput::What::Pressed, button);
  }
  void release(int button) {
    if (!(held & 1u << button)) return;
    held &= ~(1u << button);
    const Ref<NSWindow> window = captor.lock();
    if (window && window->isVisible()) send(*window, PointerInput::What::Released, button);
    if (!held) captor.reset();
  }
  void key(KeyInput::What what, const std::string& characters, bool isRepeat = false) {
    const Ref<NSWindow> window = NSApp->keyWindow();
    if (!window) return;
    const NamedKey named = keyOfCharacter(firstScalar(characters));
    KeyInput key{.what = what,
                 .name = named.name,
                 .functionNumber = named.functionNumber,
                 .modifiers = modifiers,
                 .isRepeat = isRepeat};
    if (named == NamedKey{}) key.text = key.letter = characters;
    HeadlessWindow::of(*window).input().key(key);
  }
  void typeKey(const std::string& characters) {
    key(KeyInput::What::Pressed, characters);
    key(KeyInput::What::Released, characters);
  }

  // A point of the screen in some view of the window that has the keyboard, or else of the scene's.
  CGPoint place() {
    const Ref<NSWindow> key = NSApp->keyWindow(), window = key && key->isVisible() ? key : scene.window;
    std::vector<Ref<NSView>> views;
    const auto collect = [&](auto& self, const Ref<NSView>& view) -> void {
      if (!view || view->isHidden()) return;
      views.push_back(view);
      for (const Ref<NSView>& subview : view->subviews()) self(self, subview);
    };
    collect(collect, window->contentView());
    if (views.empty()) return pointer;
    const NSView& view = *views[input.byte() % views.size()];
    const CGRect rect = view.convertRectToView(view.bounds(), nullptr);
    const unsigned where = input.byte();
    return window->convertPointToScreen({rect.origin.x + rect.size.width * ((where % 16) + 0.5) / 16,
                                         rect.origin.y + rect.size.height * (where / 16 + 0.5) / 16});
  }
  Scene::Part* part() { return scene.parts.empty() ? nullptr : &scene.parts[input.byte() % scene.parts.size()]; }
  CGRect frame() {
    const auto number = [&] { return input.byte() * 2.0 - 100; };
    const CGPoint origin{number(), number()};
    return {origin, {input.byte() * 1.0, input.byte() * 1.0}};
  }
  void change();
};

struct Row {
  const char* name;
  void (*act)(World&);
};

// What the user does.

const std::string& keyOf(FuzzInput& input) {
  static const std::vector<std::string> keys = [] {
    std::vector<std::string> all{"\r", "\t", "\x19", "\x1b", " ", "\x7f", "a", "p", "x", "c", "v", "z", ".", "\x03"};
    for (const char32_t named :
         {NSUpArrowFunctionKey, NSDownArrowFunctionKey, NSLeftArrowFunctionKey, NSRightArrowFunctionKey, NSDeleteFunctionKey,
          NSHomeFunctionKey, NSEndFunctionKey, NSPageUpFunctionKey, NSPageDownFunctionKey, NSDownArrowFunctionKey,
          NSRightArrowFunctionKey})
      all.push_back(utf8FromScalar(named));
    return all;
  }();
  return keys[input.byte() % keys.size()];
}
constexpr std::string_view typed[] = {"a", "abba ", "sl", "שלום", "歌", "e\u0301", "x y z", "1"};

constexpr Row gestures[] = {
    {"move into a view", [](World& w) { w.moveTo(w.place()); }},
    {"move anywhere",
     [](World& w) {
       w.moveTo({80 + w.input.byte() * 1.8, 80 + w.input.byte() * 1.4});
     }},
    {"move a little",
     [](World& w) {
       w.moveTo({w.pointer.x + w.input.below(21) - 10.0, w.pointer.y + w.input.below(21) - 10.0});
     }},
    {"press", [](World& w) { w.press(0); }},
    {"press another button", [](World& w) { w.press(static_cast<int>(1 + w.input.below(2))); }},
    {"release", [](World& w) { w.release(0); }},
    {"release another button", [](World& w) { w.release(static_cast<int>(1 + w.input.below(2))); }},
    {"lose the release",
     [](World& w) {
       w.held = 0;
       w.captor.reset();
     }},
    {"click",
     [](World& w) {
       w.moveTo(w.place());
       for (unsigned clicks = 1 + w.input.below(3); clicks > 0; --clicks) {
         w.press(0);
         w.release(0);
       }
     }},
    {"click with the right button",
     [](World& w) {
       w.moveTo(w.place());
       w.press(1);
       w.release(1);
     }},
    {"drag",
     [](World& w) {
       w.moveTo(w.place());
       w.press(0);
       w.moveTo(w.place());
     }},
    {"scroll",
     [](World& w) {
       const Ref<NSWindow> window = w.windowAt(w.pointer);
       if (!window) return;
       const CGPoint base = window->convertPointFromScreen(w.pointer);
       const CGSize by{w.input.byte() - 128.0, w.input.byte() - 128.0};
       WheelInput wheel{.place = {base.x, window->frame().size.height - base.y}, .points = by, .modifiers = w.modifiers};
       if (w.input.flag()) std::swap(wheel.points, wheel.lines);
       HeadlessWindow::of(*window).input().wheel(wheel);
     }},
    {"hold modifiers",
     [](World& w) {
       constexpr std::uint32_t all[] = {0,
                                        0,
                                        0,
                                        NSEventModifierFlagShift,
                                        NSEventModifierFlagControl,
                                        NSEventModifierFlagOption,
                                        NSEventModifierFlagCommand,
                                        NSEventModifierFlagControl | NSEventModifierFlagShift};
       w.modifiers = all[w.input.below(std::size(all))];
     }},
    {"key", [](World& w) { w.typeKey(keyOf(w.input)); }},
    {"held key",
     [](World& w) {
       const std::string& key = keyOf(w.input);
       w.key(KeyInput::What::Pressed, key);
       w.key(KeyInput::What::Pressed, key, /*isRepeat=*/true);
       w.key(KeyInput::What::Released, key);
     }},
    {"type",
     [](World& w) {
       std::string_view text = typed[w.input.below(std::size(typed))];
       while (!text.empty()) {
         const std::string key = utf8FromScalar(firstScalar(text));
         text.remove_prefix(std::min(key.size(), text.size()));
         w.typeKey(key);
       }
     }},
    {"compose",
     [](World& w) {
       const Ref<NSWindow> window = NSApp->keyWindow();
       if (!window) return;
       const std::string_view text = typed[w.input.below(std::size(typed))];
       CompositionInput step;
       (w.input.flag() ? step.composed : step.committed) = text;
       HeadlessWindow::of(*window).input().composition(step);
     }},
    {"wait",
     [](World& w) {
       constexpr double seconds[] = {0.01, 0.05, 0.1, 0.3, 1, 3};
       w.desktop.advance(seconds[w.input.below(std::size(seconds))]);
     }},
    {"choose from the menu",
     [](World& w) {
       if (!w.desktop.openMenu()) return;
       std::vector<std::size_t> numbers;
       for (const MenuEntry& entry : w.desktop.openMenu()->entries)
         if (entry.isEnabled && !entry.isSeparator && !entry.hasSubmenu) numbers.push_back(entry.number);
       if (numbers.empty() || w.input.below(4) == 0) w.desktop.chooseFromMenu(std::nullopt);
       else w.desktop.chooseFromMenu(numbers[w.input.byte() % numbers.size()]);
     }},
    {"press elsewhere",
     [](World&) {
       sendPressElsewhere({5, 5}, 0, 0);
     }},
    {"go to the other window", [](World& w) { HeadlessWindow::of(*w.other).requestKey(); }},
    {"come back",
     [](World& w) {
       if (w.scene.window->isVisible()) HeadlessWindow::of(*w.scene.window).requestKey();
     }},
    {"resize by hand",
     [](World& w) {
       HeadlessWindow::of(*w.scene.window).moveByUser({100, 100, 200 + w.input.byte() * 1.0, 150 + w.input.byte() * 1.0});
     }},
    {"close by hand", [](World& w) { HeadlessWindow::of(*w.scene.window).closeByUser(); }},
    {"ask as an assistive client",
     [](World& w) {
       std::vector<Ref<NSObject>> elements{NSApp};
       for (std::size_t i = 0; i < elements.size() && elements.size() < 200; ++i)
         for (const Ref<NSObject>& child : shownAccessibleChildrenOf(elements[i])) elements.push_back(child);
       const Ref<NSObject> element = elements[w.input.byte() % elements.size()];
       const std::vector<std::string> actions = accessibleActionsOf(element);
       if (!actions.empty()) performAccessibleAction(element, actions[w.input.byte() % actions.size()]);
     }},
};

// What the program does, by itself or in an action.

void withPart(World& w, void (*change)(World&, NSView&)) {
  if (const Scene::Part* part = w.part()) change(w, *Ref<NSView>(part->view));
}

constexpr Row changes[] = {
    {"hide or show", [](World& w) { withPart(w, [](World&, NSView& view) { view.setHidden(!view.isHidden()); }); }},
    {"remove or put back",
     [](World& w) {
       Scene::Part* part = w.part();
       if (!part) return;
       const Ref<NSView> view = part->view;
       if (const Ref<NSView> superview = part->superview.lock()) {
         part->superview.reset();
         superview->addSubview(view);
       } else if (view->superview()) {
         part->superview = refTo(*view->superview());
         view->removeFromSuperview();
       }
     }},
    {"delete",
     [](World& w) {
       if (w.input.below(3) != 0 || w.scene.parts.empty()) return;
       const auto part = w.scene.parts.begin() + static_cast<std::ptrdiff_t>(w.input.byte() % w.scene.parts.size());
       const Ref<NSView> view = part->view;
       w.scene.parts.erase(part);
       view->removeFromSuperview();
     }},
    {"disable or enable",
     [](World& w) {
       withPart(w, [](World& w, NSView& view) {
         auto* control = dynamic_cast<NSControl*>(&view);
         if (control && w.input.flag()) control->setEnabled(!control->isEnabled());
         else view.setEnablesControls(w.input.flag());
       });
     }},
    {"move", [](World& w) { withPart(w, [](World& w, NSView& view) { view.setFrame(w.frame()); }); }},
    {"animate", [](World& w) { withPart(w, [](World& w, NSView& view) { view.animator()->setFrame(w.frame()); }); }},
    {"resize",
     [](World& w) {
       withPart(w, [](World& w, NSView& view) { view.setFrameSize({w.input.byte() * 1.0, w.input.below(80) * 1.0}); });
     }},
    {"bring to the front",
     [](World& w) {
       withPart(w, [](World&, NSView& view) {
         if (const Ref<NSView> superview = view.superview() ? refTo(*view.superview()) : nullptr)
           superview->addSubview(refTo(view));
       });
     }},
    {"tint",
     [](World& w) {
       withPart(w, [](World& w, NSView& view) { view.setTintColor(w.input.flag() ? NSColor::redColor() : nullptr); });
     }},
    {"turn the direction",
     [](World& w) {
       withPart(w, [](World& w, NSView& view) {
         view.setUserInterfaceLayoutDirection(w.input.flag() ? NSUserInterfaceLayoutDirectionRightToLeft
                                                             : NSUserInterfaceLayoutDirectionLeftToRight);
       });
     }},
    {"give the keyboard",
     [](World& w) {
       withPart(w, [](World& w, NSView& view) {
         if (!view.isHiddenOrHasHiddenAncestor()) w.scene.window->makeFirstResponder(w.input.below(4) ? &view : nullptr);
       });
     }},
    {"next key view",
     [](World& w) {
       if (w.input.flag()) w.scene.window->selectNextKeyView();
       else w.scene.window->selectPreviousKeyView();
     }},
    {"change what shows",
     [](World& w) {
       if (!w.scene.changes.empty()) w.scene.changes[w.input.byte() % w.scene.changes.size()](w.input);
     }},
    {"change what shows again",
     [](World& w) {
       if (!w.scene.changes.empty()) w.scene.changes[w.input.byte() % w.scene.changes.size()](w.input);
     }},
    {"hide the window", [](World& w) { w.scene.window->orderOut(nullptr); }},
    {"show the window", [](World& w) { w.scene.window->makeKeyAndOrderFront(nullptr); }},
    {"close the window", [](World& w) { w.scene.window->close(); }},
    {"resize the window",
     [](World& w) {
       const CGRect frame{100, 100, w.input.byte() * 2.0, w.input.byte() * 2.0};
       const bool display = w.input.flag();
       w.scene.window->setFrame(frame, display, /*animate=*/w.input.flag());
     }},
    {"replace the content",
     [](World& w) {
       const Ref<NSView> content = w.scene.window->contentView();
       w.scene.window->setContentView(make<NSView>(CGRect{}));
       w.scene.window->setContentView(content);
     }},
    {"another scale",
     [](World& w) {
       constexpr double scales[] = {1, 2, 1.25, 1.5};
       w.desktop.setScale(scales[w.input.below(std::size(scales))]);
     }},
    {"another palette",
     [](World& w) {
       const bool isDark = w.input.flag();
       const Color ground = isDark ? Color{0.1, 0.1, 0.1, 1} : Color{1, 1, 1, 1};
       const Color text = isDark ? Color{0.9, 0.9, 0.9, 1} : Color{0, 0, 0, 1};
       w.desktop.setSystemColor(SystemColor::WindowBackground, ground);
       w.desktop.setSystemColor(SystemColor::ControlText, text);
       setNeutralsFollowPalette(w.input.flag());
       effectiveAppearanceDidChange();
     }},
    {"less motion", [](World& w) { w.desktop.setPrefersReducedMotion(w.input.flag()); }},
};

template <std::size_t count>
void runRow(World& world, const Row (&rows)[count], const char* before) {
  const Row& row = rows[world.input.byte() % count];
  note(std::string(before) + row.name);
  row.act(world);
}

void World::change() {
  if (changesInActions == 0 || !scene.window) return;
  --changesInActions;
  runRow(*this, changes, "    in an action: ");
}

void end(World& world) {
  world.modifiers = 0;
  for (int button = 0; button < 3; ++button) world.release(button);
  world.held = 0;
  world.moveTo({0, 0});
  world.changesInActions = 0;
  if (world.desktop.openMenu()) world.desktop.chooseFromMenu(std::nullopt);
  world.desktop.advance(3);
  failIf(fuzz::faultOf(world.desktop));
  failIf(fuzz::faultAtRest());
  note("close everything");
  for (const Ref<NSWindow>& window : NSApp->windows()) window->close();
  // A view that keeps its events keeps its window.
  for (const Ref<NSWindow>& window : NSApp->windows()) window->setContentView(nullptr);
  world.scene = {};
  world.scene.act = [] {};
  world.other = nullptr;
  world.desktop.advance(3);
  for (const Ref<NSWindow>& window : NSApp->windows()) failIf("a window is kept: " + window->className());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  setStopHandler([](std::string_view report) { failIf(std::string(report)); });
  story.clear();
  World world;
  world.other = make<NSWindow>(CGRect{600, 100, 120, 60}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, /*defer=*/true);
  world.other->contentView()->addSubview(make<NSTextField>(CGRect{10, 10, 100, 24}));
  world.other->orderFront(nullptr);
  world.scene.act = [&world] { world.change(); };
  world.scene.window = make<NSWindow>(CGRect{100, 100, 400, 300}, NSWindowStyleMaskTitled | NSWindowStyleMaskClosable,
                                      NSBackingStoreBuffered, /*defer=*/true);
  const auto makers = fuzz::sceneMakers();
  const std::size_t which = size > 0 ? data[0] % makers.size() : 0;
  note("scene " + std::to_string(which));
  makers[which](world.scene);
  world.scene.window->makeKeyAndOrderFront(nullptr);
  // Each step has its own bytes, so that it stays the same when others are left out.
  constexpr std::size_t bytesPerStep = 12, maxSteps = 60;
  for (std::size_t step = 0, at = 1; step < maxSteps && at < size; ++step, at += bytesPerStep) {
    world.input = FuzzInput({data + at, std::min(bytesPerStep, size - at)});
    // Most is to be seen while the window shows.
    const unsigned kind = world.input.byte();
    if (!world.scene.window->isVisible() && kind % 2 == 0) world.scene.window->makeKeyAndOrderFront(nullptr);
    if (kind & 0x40) world.changesInActions = 1 + (kind >> 7);
    if (kind % 5 == 0) runRow(world, changes, "  ");
    else runRow(world, gestures, "");
    failIf(fuzz::faultOf(world.desktop));
  }
  end(world);
  return 0;
}
