// An interface file: objects that are made together and connected with each other and with an owner. It is a JSON document,
// or a function of the program; either is registered under a name.
//
//   {"owner": {"view": "row", "labelTextField": "label"},
//    "objects": [{"id": "row", "class": "TessalunaUIKit.HighlightingView", "frame": [0, 0, 200, 24],
//                 "subviews": [{"id": "label", "class": "NSTextField", "frame": [4, 2, 192, 20],
//                               "cell": {"class": "NSTextFieldCell", "fontSize": 13}}]}]}
//
// Of each object: "class", and the keys that its class reads from a coder; "id", by which others name it; "outlets", from
// a member's name to an id or "owner"; "properties", from a member's name to what its setter gets once the object is made: a
// bool, a number, a text, a point, size or rectangle, an enum's value as a name or number, or a color, font or image as
// archivedLooks.h says, limits of a value before the value, in whatever order they are written; and the objects in it, below
// the keys of its class's table: "subviews" of a view, "contentView" of a window, "documentView" of a scroll view, "cell" of a
// control. "owner" at the top holds the outlets of the owner.
//
// A key that nobody knows is an error, and so is a value of another kind, or a key that an object has twice. Keys that a class
// knows and overlooks are neither.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tessaluna/platform/foundation/NSCoder.h"
#include "tessaluna/platform/foundation/NSObject.h"

namespace tessaluna::platform {

class NSNib : public NSObject {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // Makes the objects, sets the owner's outlets itself, and returns the one at the top.
  using Factory = std::function<Ref<NSObject>(NSObject& owner)>;
  explicit NSNib(std::string_view json);
  explicit NSNib(Factory factory);

  // A later one of the same name takes the earlier one's place. The document is read at once.
  static void registerDocument(std::string name, std::string_view json);
  static void registerFactory(std::string name, Factory factory);
  static Ref<NSNib> nibNamed(std::string_view name);  // null if there is none

  // First the objects, then all outlets, then awakeFromNib on each in the order of the document, the owner last. With
  // an error nothing is to be used: some outlets may be connected, and nothing was awakened.
  struct Contents {
    std::vector<Ref<NSObject>> topLevelObjects;
    std::optional<std::string> error;  // what is wrong with the document, and where; for bad JSON with line and column
  };
  Contents instantiateWithOwner(const Ref<NSObject>& owner) const;

 private:
  std::optional<NSCoder> document_;
  mutable bool isChecked_ = false;  // once its objects were made without an error, its keys need no second look
  Factory factory_;
};

}  // namespace tessaluna::platform
