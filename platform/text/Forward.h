// Names of text, for headers that only pass them on.
#pragma once

#include "platform/foundation/Reference.h"

namespace platform {

class NSAttributedString;
class NSFont;
class NSLayoutManager;
class NSMutableAttributedString;
class NSParagraphStyle;
class NSTextContainer;
class NSTextStorage;
class TextLayout;

}  // namespace platform
