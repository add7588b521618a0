// What an interface file calls the selected segment of a segmented cell or of its control: an index, or -1 for none. Any other
// number is an error.
#pragma once

#include <cstdint>
#include <utility>

#include "tessaluna/platform/foundation/memberTables.h"

namespace tessaluna::platform {

template <class Owner>
constexpr Property selectedSegmentProperty() {
  return {"selectedSegment", [](NSObject& object, const NSCoder& values) {
            auto& owner = static_cast<Owner&>(object);
            const auto segment = archivedValue(values, "selectedSegment", std::type_identity<std::int64_t>());
            if (!segment || *segment < -1 || (*segment >= 0 && std::cmp_greater_equal(*segment, owner.segmentCount())))
              return false;
            owner.setSelectedSegment(*segment < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(*segment)));
            return true;
          }};
}

}  // namespace tessaluna::platform
