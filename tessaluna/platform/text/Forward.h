// Names of text, for headers that only pass them on.
#pragma once

#include "tessaluna/platform/foundation/Reference.h"

namespace tessaluna::platform {

class NSAttributedString;
class NSFont;
class NSLayoutManager;
class NSMutableAttributedString;
class NSParagraphStyle;
class NSTextContainer;
class NSTextStorage;
class TextLayout;

}  // namespace tessaluna::platform
