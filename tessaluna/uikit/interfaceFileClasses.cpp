#include "tessaluna/uikit/interfaceFileClasses.h"

#include "tessaluna/platform/interface_files/classRegistry.h"
#include "tessaluna/uikit/cells/DotsLevelIndicatorCell.h"
#include "tessaluna/uikit/cells/ExtPopUpButtonCell.h"
#include "tessaluna/uikit/cells/ImageAndTextCell.h"
#include "tessaluna/uikit/cells/UnderlinedSegmentedCell.h"
#include "tessaluna/uikit/containers/BorderedView.h"
#include "tessaluna/uikit/containers/DisclosureHeaderView.h"
#include "tessaluna/uikit/containers/DisclosureView.h"
#include "tessaluna/uikit/containers/TableCellViewWithBackground.h"
#include "tessaluna/uikit/containers/ViewWithBackground.h"
#include "tessaluna/uikit/coverart/CoverArtThumbnailView.h"
#include "tessaluna/uikit/links/ClickableLabel.h"
#include "tessaluna/uikit/links/ClickableLabelCell.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"
#include "tessaluna/uikit/startup/AppSplashController.h"
#include "tessaluna/uikit/startup/ProgressMonitorView.h"
#include "tessaluna/uikit/stylekit/TessalunaLogo.h"
#include "tessaluna/uikit/suggestions/FlatTextFieldCell.h"
#include "tessaluna/uikit/suggestions/HighlightingView.h"
#include "tessaluna/uikit/suggestions/SuggestionItemViewController.h"
#include "tessaluna/uikit/suggestions/SuggestionsContentView.h"
#include "tessaluna/uikit/suggestions/SuggestionsWindowController.h"
#include "tessaluna/uikit/trackrow/CloseButton.h"
#include "tessaluna/uikit/trackrow/PlaybackStatusIcon.h"
#include "tessaluna/uikit/trackrow/PrevNextButton.h"
#include "tessaluna/uikit/trackrow/TrackRowFavoriteButton.h"
#include "tessaluna/uikit/trackrow/TrackRowMoreButton.h"
#include "tessaluna/uikit/trackrow/TrackRowPlayButton.h"
#include "tessaluna/uikit/transport/PlaybackSlider.h"
#include "tessaluna/uikit/transport/PlaybackTransportButton.h"
#include "tessaluna/uikit/transport/PlaybackTransportSliderCell.h"

namespace TessalunaUIKit {

void registerInterfaceFileClasses() {
  using tessaluna::platform::registerClass;
  registerClass<TessalunaLogo>();
  registerClass<TrackRowPlayButton>();
  registerClass<TrackRowFavoriteButton>();
  registerClass<TrackRowMoreButton>();
  registerClass<PlaybackStatusIcon>();
  registerClass<PrevNextButton>();
  registerClass<CloseButton>();
  registerClass<MultipleLinksTextField>();
  registerClass<ClickableLabel>();
  registerClass<ClickableLabelCell>();
  registerClass<CoverArtThumbnailView>();
  registerClass<CoverArtPanel>();
  registerClass<ViewWithBackground>();
  registerClass<BorderedView>();
  registerClass<DisclosureView>();
  registerClass<DisclosureHeaderView>();
  registerClass<TableCellViewWithBackground>();
  registerClass<SuggestibleTextFieldCell>();
  registerClass<FlatTextFieldCell>();
  registerClass<HighlightingView>();
  registerClass<SuggestionsContentView>();
  registerClass<SuggestionItemViewController>();
  registerClass<SuggestionsWindowController>();
  registerClass<PlaybackTransportButton>();
  registerClass<PlaybackSlider>();
  registerClass<PlaybackTransportSliderCell>();
  registerClass<AppSplashController>();
  registerClass<ProgressMonitorView>();
  registerClass<UnderlinedSegmentedCell>();
  registerClass<ExtPopUpButtonCell>();
  registerClass<DotsLevelIndicatorCell>();
  registerClass<ImageAndTextCell>();
}

}  // namespace TessalunaUIKit
