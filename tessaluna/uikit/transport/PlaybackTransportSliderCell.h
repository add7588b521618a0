// The slider of a player's position: a thin track, the played part in the color of the keyboard focus (pale where
// nothing is loaded), over it up to two spans of buffered audio, and a narrow knob. Value, limits and spans are counted in audio
// frames; with a maximum of 0 the track is empty. A vertical one has a plain bar and no knob.
//
//   span of a buffer        looks
//   before the position     focus
//   across it               focus up to the position, then as after it
//   after it                dark gray once the buffer's load is completed, track gray until then
//
// Spans are compared with the position in single precision, in which frames near the position of a long song are the same.
// The track gray is darker where the kit's version (SystemVersion.h) is below 1187.
//
// Time runs from left to right in every layout.
#pragma once

#include <cstdint>

#include "tessaluna/platform/cells/NSSliderCell.h"

namespace TessalunaUIKit {

class PlaybackTransportSliderCell : public tessaluna::platform::NSSliderCell {
 public:
  static const tessaluna::platform::ClassInfo staticClassInfo;
  const tessaluna::platform::ClassInfo& classInfo() const override { return staticClassInfo; }

  PlaybackTransportSliderCell() = default;
  // Without a bezel.
  explicit PlaybackTransportSliderCell(tessaluna::platform::NSCoder& coder);
  tessaluna::platform::Ref<tessaluna::platform::NSCell> copy() const override {
    return tessaluna::platform::make<PlaybackTransportSliderCell>(*this);
  }

  // What of the song is loaded: for each of two buffers the frame at which its span starts, the length of the span (in spite of
  // the names not its end; 0 shows nothing), and whether its load is completed. A completed first buffer of length 0 shows the
  // whole song as loaded. The scale is that of the slider's maximum; the song's length is not used. The control is not redrawn
  // until somebody asks for it.
  void displayLoadStatusFrom(std::uint64_t from, std::uint64_t to, bool completed, std::uint64_t buffer2From,
                             std::uint64_t buffer2End, bool buf2done, std::uint64_t songLength);

  // Counted in the width of the control's frame and not in the bar, from 0 to 3 points before its end; without a control the
  // width is 0. Empty where the control is a vertical slider; not finite without a range of values.
  tessaluna::platform::CGRect knobRectFlipped(bool flipped) const override;
  bool isMirrored() const override { return false; }
  void drawKnob(tessaluna::platform::CGRect knobRect) override;
  void drawBarInside(tessaluna::platform::CGRect rect, bool flipped) override;
  using NSSliderCell::drawKnob;

 private:
  struct Buffer {
    std::uint64_t firstLoadedFrame = 0;
    std::uint64_t loadedFrames = 0;
    bool isLoadCompleted = false;
  };
  tessaluna::platform::CGRect playedRect(tessaluna::platform::CGRect bar) const;
  void fillSpan(const Buffer& buffer, tessaluna::platform::CGRect bar) const;

  Buffer buffers_[2];
};

}  // namespace TessalunaUIKit
