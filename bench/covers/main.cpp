// Measures how a cover of 6,000 by 6,000 pixels is enlarged: the main thread's work when it decodes the cover itself and
// when a background thread does, and the memory that twenty such covers and a thousand panels leave in use.
//
//   bench_covers
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>

#include "gallery/covers/coverFiles.h"
#include "tessaluna/backends/qt/QtBackend.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/graphics/NSImage.h"
#include "tessaluna/platform/windows/NSApplication.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"

using namespace tessaluna::platform;

namespace {

double milliseconds(clockid_t clock) {
  timespec now{};
  clock_gettime(clock, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) * 1e-6;
}

double megabytesOfMemory() {
  malloc_trim(0);
  long pages = 0, resident = 0;
  std::ifstream("/proc/self/statm") >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

// The main thread's work meanwhile, in milliseconds.
struct Work {
  double processor = 0, longestTurn = 0, wall = 0;
};

template <class IsDone>
Work turnUntil(IsDone isDone, double least = 0) {
  Work work;
  const double processor = milliseconds(CLOCK_THREAD_CPUTIME_ID), start = milliseconds(CLOCK_MONOTONIC);
  constexpr double longest = 20000;
  while (milliseconds(CLOCK_MONOTONIC) - start < longest) {
    const double turn = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    work.longestTurn = std::max(work.longestTurn, milliseconds(CLOCK_THREAD_CPUTIME_ID) - turn);
    if (isDone() && milliseconds(CLOCK_MONOTONIC) - start >= least) break;
    usleep(500);
  }
  work.processor = milliseconds(CLOCK_THREAD_CPUTIME_ID) - processor;
  work.wall = milliseconds(CLOCK_MONOTONIC) - start;
  return work;
}

struct Bench {
  Ref<NSWindow> window = make<NSWindow>(CGRect{10, 300, 300, 200}, NSWindowStyleMaskTitled, NSBackingStoreBuffered, true);
  Ref<TessalunaUIKit::CoverArtThumbnailView> thumbnail =
      make<TessalunaUIKit::CoverArtThumbnailView>(CGRect{10, 100, 64, 64});

  Bench() {
    window->contentView()->addSubview(thumbnail);
    window->makeKeyAndOrderFront(nullptr);
  }

  void click() {
    thumbnail->mouseUp(make<NSEvent>(
        NSEvent::Fields{.type = NSEventType::LeftMouseUp, .location = {20, 110}, .window = window, .clickCount = 1}));
  }
  Ref<NSImageView> enlarged() const {
    const auto children = window->childWindows();
    return children.empty() ? nullptr : std::dynamic_pointer_cast<NSImageView>(children[0]->contentView());
  }
  // True if another picture has replaced the one that the panel began with.
  bool showsAnotherThan(const Ref<NSImage>& first) const {
    const Ref<NSImageView> view = enlarged();
    return view && view->pictureToDraw() && view->pictureToDraw() != first && !view->needsDisplay();
  }
  void close() {
    thumbnail->closeEnlargedView();
    turnUntil([&] { return !enlarged(); }, 5);
  }
};

void print(const char* what, const Work& work) {
  std::printf("%-44s %8.1f ms of the main thread's, longest turn %8.1f ms, after %8.1f ms\n", what, work.processor,
              work.longestTurn, work.wall);
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const tessaluna::backend::qt::QtBackend desktop;
  NSApplication::sharedApplication();
  const auto file = std::find_if(gallery::coverFiles().begin(), gallery::coverFiles().end(),
                                 [](const gallery::CoverFile& each) { return each.hasManyPixels; });
  const gallery::FileBytes bytes = file->make();
  Bench bench;
  turnUntil([] { return true; }, 200);

  constexpr int rounds = 2;
  for (int round = 0; round < rounds; ++round) {
    bench.thumbnail->setPreparesImages(true);
    bench.thumbnail->setImage(NSImage::initWithData(bytes));
    print("thumbnail, in the background", turnUntil([&] { return bench.thumbnail->pictureToDraw() != nullptr; }));
    const double start = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    bench.click();
    const double click = milliseconds(CLOCK_THREAD_CPUTIME_ID) - start;
    const Ref<NSImage> first = bench.enlarged()->pictureToDraw();
    Work opening = turnUntil([&] { return bench.showsAnotherThan(first); });
    opening.processor += click;
    opening.longestTurn = std::max(opening.longestTurn, click);
    print("enlarged, in the background", opening);
    bench.close();

    bench.thumbnail->setPreparesImages(false);
    bench.thumbnail->setImage(NSImage::initWithData(bytes));
    const double before = milliseconds(CLOCK_THREAD_CPUTIME_ID);
    bench.click();
    Work direct = turnUntil([&] { return bench.enlarged() && !bench.enlarged()->needsDisplay(); });
    direct.processor = milliseconds(CLOCK_THREAD_CPUTIME_ID) - before;
    print("enlarged, by the main thread", direct);
    bench.close();
    bench.thumbnail->setImage(nullptr);
  }

  bench.thumbnail->setPreparesImages(true);
  std::vector<Ref<NSImage>> images;
  constexpr std::size_t covers = 20;
  for (std::size_t i = 0; i < covers; ++i) images.push_back(NSImage::initWithData(bytes));
  std::printf("the files of %zu covers: %.0f MB\n", covers, static_cast<double>(bytes.size() * covers) / (1 << 20));
  for (std::size_t i = 0; i < covers; ++i) {
    bench.thumbnail->setImage(images[i]);
    bench.click();
    const Ref<NSImage> first = bench.enlarged()->pictureToDraw();
    turnUntil([&] { return bench.showsAnotherThan(first); });
    bench.close();
    if (i == 0 || i + 1 == covers) std::printf("memory after %2zu covers: %.1f MB\n", i + 1, megabytesOfMemory());
  }

  bench.thumbnail->setImage(NSImage::imageWithSize({300, 300}, false, [](CGRect) { return true; }));
  constexpr int cycles = 1000;
  for (int i = 1; i <= cycles; ++i) {
    bench.click();
    bench.close();
    if (i == cycles / 10 || i == cycles) std::printf("memory after %4d panels: %.1f MB\n", i, megabytesOfMemory());
  }
  bench.window->close();
  return 0;
}
