#include "tessaluna/platform/cells/CellValue.h"

#include "tessaluna/platform/foundation/NSNumber.h"
#include "tessaluna/platform/foundation/NSString.h"
#include "tessaluna/platform/text/NSAttributedString.h"

namespace tessaluna::platform {

std::string CellValue::textOf(const NSObject* value) {
  if (const auto* text = dynamic_cast<const NSString*>(value)) return text->UTF8String();
  if (const auto* text = dynamic_cast<const NSAttributedString*>(value)) return text->string();
  if (const auto* number = dynamic_cast<const NSNumber*>(value)) return number->stringValue();
  return {};
}

double CellValue::doubleOf(const NSObject* value) {
  if (const auto* number = dynamic_cast<const NSNumber*>(value)) return number->doubleValue();
  return NSString(textOf(value)).doubleValue();
}

std::string CellValue::stringValue() const { return textOf(objectValue().get()); }

void CellValue::setStringValue(std::string_view text) { setObjectValue(make<NSString>(text)); }

double CellValue::doubleValue() const { return doubleOf(objectValue().get()); }

void CellValue::setDoubleValue(double number) { setObjectValue(make<NSNumber>(number)); }

float CellValue::floatValue() const { return static_cast<float>(doubleValue()); }

void CellValue::setFloatValue(float number) { setObjectValue(make<NSNumber>(number)); }

std::int64_t CellValue::integerValue() const {
  const Ref<NSObject> value = objectValue();
  if (const auto* number = dynamic_cast<const NSNumber*>(value.get())) return number->integerValue();
  return NSString(textOf(value.get())).integerValue();
}

void CellValue::setIntegerValue(std::int64_t number) { setObjectValue(make<NSNumber>(number)); }

}  // namespace tessaluna::platform
