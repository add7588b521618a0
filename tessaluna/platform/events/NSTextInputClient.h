// What takes typed text: keys, and what an input method or a dead key composes of several. A text that is being composed
// is marked text in the client until it is replaced or taken over. Ranges count UTF-16 units; one at NSNotFound
// means none was given.
#pragma once

#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/Geometry.h"

namespace tessaluna::platform {

inline constexpr std::size_t NSNotFound = static_cast<std::size_t>(-1);
inline constexpr NSRange noRange{NSNotFound, 0};

class NSTextInputClient {
 public:
  virtual ~NSTextInputClient() = default;

  // In place of the range; without one of the marked text, or else of the selection.
  virtual void insertText(std::string_view text, NSRange replacementRange) = 0;
  virtual void doCommandBySelector(std::string_view selector) = 0;

  // The same, and the new text is marked. The selected range is counted from its start.
  virtual void setMarkedText(std::string_view text, NSRange selectedRange, NSRange replacementRange) = 0;
  virtual void unmarkText() = 0;  // it stays, as if it were typed
  virtual bool hasMarkedText() const = 0;
  virtual NSRange markedRange() const = 0;  // noRange where nothing is marked

  virtual NSRange selectedRange() const = 0;
  // The whole text, marked text included.
  virtual std::u16string text() const = 0;
  // Whether text is taken at all now.
  virtual bool acceptsTextInput() const = 0;
  // In screen space; of an empty range the caret's place.
  virtual CGRect firstRectForCharacterRange(NSRange range) const = 0;
  virtual std::size_t characterIndexForPoint(CGPoint screenPoint) const = 0;
};

}  // namespace tessaluna::platform
