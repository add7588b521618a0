// Lines of links with names of all kinds, a text with links in it, and their host, which reports clicks.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tessaluna/uikit/links/ClickableLabel.h"
#include "tessaluna/uikit/links/MultipleLinksTextField.h"

namespace gallery {

class LinksHost : public tessaluna::platform::NSObject,
                  public TessalunaUIKit::LinkTextFieldActionTarget,
                  public TessalunaUIKit::ClickableLabelTarget {
 public:
  LinksHost();
  void didInit() override;

  // The lines and the label keep their target, the host, alive until whoever made the host calls this.
  void close();

  struct Line {
    std::string name;
    std::string note;
    tessaluna::platform::Ref<TessalunaUIKit::MultipleLinksTextField> field;
  };
  const std::vector<Line>& lines() const { return lines_; }
  const tessaluna::platform::Ref<TessalunaUIKit::ClickableLabel>& label() const { return label_; }

  void setLinksEnabled(bool enabled);
  // Is notified in a few words of what was clicked.
  void setReport(std::function<void(const std::string&)> report) { report_ = std::move(report); }

  void linkClicked(std::size_t elementIndex, TessalunaUIKit::MultipleLinksTextField& sender) override;
  void labelClicked(TessalunaUIKit::ClickableLabel& sender) override;
  void linkClicked(const tessaluna::platform::URL& link) override;

 private:
  void report(const std::string& what) const;

  std::vector<Line> lines_;
  tessaluna::platform::Ref<TessalunaUIKit::ClickableLabel> label_;
  std::function<void(const std::string&)> report_;
};

}  // namespace gallery
