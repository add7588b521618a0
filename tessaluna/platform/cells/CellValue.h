// A value that reads as an object, a text or a number, whichever of them it was set as. A cell has one; a control passes its
// cell's on.
//
// The object is an NSNumber, an NSString, an NSAttributedString or one of any other class. A number reads as the shortest text
// that reads back the same, a text as the number that it begins with, 0 if there is none. An object of another class, like an
// absent one, reads as an empty text and as 0.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class CellValue {
 public:
  virtual ~CellValue() = default;

  // All others go through these two: a class that keeps its value elsewhere, or limits it, overrides them.
  virtual Ref<NSObject> objectValue() const = 0;
  virtual void setObjectValue(Ref<NSObject> value) = 0;

  std::string stringValue() const;  // in UTF-8, without the attributes of an attributed text
  void setStringValue(std::string_view text);
  double doubleValue() const;
  void setDoubleValue(double number);
  float floatValue() const;
  void setFloatValue(float number);
  std::int64_t integerValue() const;
  void setIntegerValue(std::int64_t number);

 protected:
  // What such a value reads as.
  static std::string textOf(const NSObject* value);
  static double doubleOf(const NSObject* value);
};

}  // namespace tessaluna::platform
