#include "tessaluna/uikit/interfaceFileClasses.h"

#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"
#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"

namespace TessalunaUIKit {

void registerInterfaceFileClasses() {
  using tessaluna::platform::registerClass;
  registerClass<SuggestibleTextFieldCell>();
  registerClass<FlatTextFieldCell>();
  registerClass<HighlightingView>();
  registerClass<SuggestionsContentView>();
  registerClass<SuggestionItemViewController>();
  registerClass<SuggestionsWindowController>();
}

}  // namespace TessalunaUIKit
