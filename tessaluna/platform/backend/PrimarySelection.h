// What a backend derives from, beside Backend, whose desktop has a second clipboard: what the user has selected last with the mouse,
// anywhere, and a click with the middle button inserts. X11 has one.
#pragma once

#include <string>

#include "tessaluna/platform/foundation/languageVersion.h"

namespace tessaluna::backend {

class PrimarySelection {
 public:
  virtual ~PrimarySelection() = default;
  virtual bool hasPrimarySelection() const { return true; }
  virtual std::string primarySelectionText() const = 0;  // in UTF-8; empty where there is none
  virtual void setPrimarySelectionText(const std::string& text) = 0;
};

}  // namespace tessaluna::backend
