// One section of a SideBar with its views: the heading, and below it what folds. It decides nothing.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tessaluna/ready/sidebar/SideBarModel.h"
#include "tessaluna/ready/sidebar/SideBarRow.h"
#include "tessaluna/ready/sidebar/SideBarStack.h"
#include "tessaluna/uikit/containers/DisclosureView.h"

namespace tessaluna::ready {

class SideBarSection : public std::enable_shared_from_this<SideBarSection> {
 public:
  SideBarSection(platform::WeakRef<SideBar> bar, int depth);
  ~SideBarSection();
  SideBarSection(const SideBarSection&) = delete;
  SideBarSection& operator=(const SideBarSection&) = delete;
  void didInit();

  // Items and sections that are shown already keep their views.
  void show(const SideSection& section);
  const std::string& id() const { return id_; }
  const platform::Ref<TessalunaUIKit::DisclosureView>& view() const { return view_; }
  platform::Ref<platform::NSView> heading() const;
  const std::string& title() const { return title_; }
  const std::vector<platform::Ref<SideBarRow>>& rows() const { return rows_; }
  const std::vector<std::shared_ptr<SideBarSection>>& sections() const { return sections_; }

  bool isOpen() const { return isOpen_; }  // or will be when it has stopped moving
  // Of a new section.
  void beginFolded();
  // With animation while it shows. A section that moves finishes that first.
  void setIsOpen(bool isOpen);
  void setSelected(const std::optional<std::string>& id);

 private:
  class Heading;
  class List;
  void showRows(const std::vector<SideItem>& items);
  void move();
  void didMove();

  const platform::WeakRef<SideBar> bar_;
  const int depth_;
  std::string id_, title_;
  const platform::Ref<TessalunaUIKit::DisclosureView> view_;
  const platform::Ref<SideBarStack> content_;
  const platform::Ref<List> list_;
  platform::Ref<Heading> heading_;
  std::vector<platform::Ref<SideBarRow>> rows_;
  std::vector<std::shared_ptr<SideBarSection>> sections_;
  bool isOpen_ = true;
};

// What the program calls an item or a section, or else its title.
template <class Named>
const std::string& idOf(const Named& named) {
  return named.id.empty() ? named.title : named.id;
}

// Those of earlier ones that are there again, and new ones for the others.
std::vector<std::shared_ptr<SideBarSection>> sectionsShowing(const std::vector<SideSection>& sections,
                                                             const std::vector<std::shared_ptr<SideBarSection>>& earlier,
                                                             const platform::WeakRef<SideBar>& bar, int depth);

}  // namespace tessaluna::ready
