#include "bench/suggestions/SuggestionRow.h"

#include "tessaluna/platform/interface_files/NSNib.h"
#include "tessaluna/uikit/interfaceFileClasses.h"

namespace bench {

namespace {

constexpr const char* name = "bench.SuggestionRow";

// The pop-up sets the row's width, and the texts grow with it (2: in width). Long texts end in an ellipsis (4).
constexpr std::string_view row = R"({
  "owner": {"view": "row", "imageView": "picture", "labelTextField": "label", "detailedLabelTextField": "detail"},
  "objects": [
    {"id": "row", "class": "TessalunaUIKit.HighlightingView", "frame": [0, 0, 300, 42], "subviews": [
      {"id": "picture", "class": "NSImageView", "frame": [10, 7, 28, 28]},
      {"id": "label", "class": "NSTextField", "frame": [48, 20, 242, 18], "autoresizingMask": 2,
       "cell": {"class": "NSTextFieldCell", "fontSize": 13, "lineBreakMode": 4}},
      {"id": "detail", "class": "NSTextField", "frame": [48, 4, 242, 16], "autoresizingMask": 2,
       "cell": {"class": "NSTextFieldCell", "fontSize": 11, "lineBreakMode": 4}}]}]})";

}  // namespace

std::string registerSuggestionRow() {
  TessalunaUIKit::registerInterfaceFileClasses();
  tessaluna::platform::NSNib::registerDocument(name, row);
  return name;
}

}  // namespace bench
