// A font of Qt's at one size: the outlines of its glyphs, and the pictures of those that have colors instead.
#pragma once

#include <QRawFont>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>

#include "tessaluna/platform/backend/TextEngine.h"

namespace tessaluna::backend::qt {

class QtTypeface : public Typeface {
 public:
  explicit QtTypeface(QRawFont font);

  Path outline(std::uint32_t glyph) const override;
  // With the glyph's origin at that place. Absent for a glyph that has an outline, or nothing to show.
  std::optional<GlyphPicture> picture(std::uint32_t glyph, CGPoint origin) const;

 private:
  bool hasTable(const char* name) const;
  std::shared_ptr<const ImagePixels> pixelsOf(std::uint32_t glyph, const QRect& box, double scale) const;

  QRawFont font_;
  bool hasOutlines_, mayHavePictures_;
  mutable std::unordered_map<std::uint32_t, std::weak_ptr<const ImagePixels>> pictures_;  // as long as lines have them
};

}  // namespace tessaluna::backend::qt
