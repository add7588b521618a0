// Wrong on purpose: it includes a header that is precompiled for many, and uses a type of a header that it does not include.
#pragma once

#include "tessaluna/platform/views/NSView.h"

inline bool isOn(const tessaluna::platform::NSControl& control) { return control.isEnabled(); }
