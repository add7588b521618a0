#include "gallery/small_controls/ControlReporter.h"

namespace gallery {

using namespace tessaluna::platform;

namespace {

constexpr Selector selectors[] = {
    action<&ControlReporter::showPrevious>("showPrevious:"),
    action<&ControlReporter::showNext>("showNext:"),
    action<&ControlReporter::closeItem>("closeItem:"),
};

}  // namespace

const ClassInfo ControlReporter::staticClassInfo{
    .name = "ControlReporter", .base = &NSObject::staticClassInfo, .selectors = selectors};

}  // namespace gallery
