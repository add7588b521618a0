#include "uikit/interfaceFileClasses.h"

#include "platform/interface_files/classRegistry.h"
#include "uikit/suggestions/FlatTextFieldCell.h"
#include "uikit/suggestions/HighlightingView.h"
#include "uikit/suggestions/SuggestionItemViewController.h"
#include "uikit/suggestions/SuggestionsContentView.h"
#include "uikit/suggestions/SuggestionsWindowController.h"

namespace TessalunaUIKit {

void registerInterfaceFileClasses() {
  using platform::registerClass;
  registerClass<SuggestibleTextFieldCell>();
  registerClass<FlatTextFieldCell>();
  registerClass<HighlightingView>();
  registerClass<SuggestionsContentView>();
  registerClass<SuggestionItemViewController>();
  registerClass<SuggestionsWindowController>();
}

}  // namespace TessalunaUIKit
