// One line of a menu: a title that performs an action, opens a submenu, or separates others. The item is the sender of its
// action (see ActionSender), and carries what the action needs to know of it: a tag, an object.
#pragma once

#include <cstdint>
#include <string>

#include "tessaluna/platform/cells/NSCell.h"
#include "tessaluna/platform/events/ActionSender.h"
#include "tessaluna/platform/events/NSEvent.h"
#include "tessaluna/platform/foundation/NSObject.h"
#include "tessaluna/platform/graphics/Forward.h"

namespace tessaluna::platform {

class NSMenu;
class NSMenuItem;

// What the target of an item's action derives from to say whether the item can be chosen now. Asked whenever the menu opens
// and before a key equivalent.
class NSMenuItemValidation {
 public:
  virtual ~NSMenuItemValidation() = default;
  virtual bool validateMenuItem(NSMenuItem& item) = 0;
};

class NSMenuItem : public NSObject, public ActionSender {
 public:
  static const ClassInfo staticClassInfo;
  const ClassInfo& classInfo() const override { return staticClassInfo; }

  // The action is a selector's name. The key equivalent is pressed with Command unless its mask is set.
  explicit NSMenuItem(std::string title = {}, std::string action = {}, std::string keyEquivalent = {});
  static Ref<NSMenuItem> separatorItem();
  bool isSeparatorItem() const { return isSeparator_; }

  const std::string& title() const { return title_; }
  void setTitle(std::string title) { title_ = std::move(title); }
  const Ref<NSImage>& image() const { return image_; }  // at the left of the title; null for none
  void setImage(Ref<NSImage> image) { image_ = std::move(image); }
  NSControlStateValue state() const { return state_; }  // a mark in front of the title: none, a check, a dash
  void setState(NSControlStateValue state) { state_ = state; }
  int indentationLevel() const { return indentationLevel_; }
  void setIndentationLevel(int level);  // 0 to 15: more is 15, and a negative one stops the program
  bool isHidden() const { return isHidden_; }
  void setHidden(bool isHidden) { isHidden_ = isHidden; }
  // What was set, or what the menu found where it enables its items itself.
  bool isEnabled() const { return isEnabled_; }
  void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }

  std::int64_t tag() const { return tag_; }
  void setTag(std::int64_t tag) { tag_ = tag; }
  const Ref<NSObject>& representedObject() const { return representedObject_; }  // the program's own
  void setRepresentedObject(Ref<NSObject> object) { representedObject_ = std::move(object); }

  // The characters that choose the item, none if empty, and the modifiers that must be down with them.
  const std::string& keyEquivalent() const { return keyEquivalent_; }
  void setKeyEquivalent(std::string characters) { keyEquivalent_ = std::move(characters); }
  std::uint32_t keyEquivalentModifierMask() const { return keyEquivalentModifierMask_; }
  void setKeyEquivalentModifierMask(std::uint32_t mask) { keyEquivalentModifierMask_ = mask; }

  // An item with a submenu performs no action. A menu that is a submenu already, or a menu above this item, stops the program.
  const Ref<NSMenu>& submenu() const { return submenu_; }
  bool hasSubmenu() const { return submenu_ != nullptr; }
  void setSubmenu(Ref<NSMenu> menu);
  Ref<NSMenu> menu() const { return menu_.lock(); }  // that the item is in; null for none

 private:
  friend class NSMenu;
  bool sendAction() { return send(action(), target(), *this); }

  std::string title_, keyEquivalent_;
  std::uint32_t keyEquivalentModifierMask_ = NSEventModifierFlagCommand;
  Ref<NSObject> representedObject_;
  Ref<NSImage> image_;
  Ref<NSMenu> submenu_;
  WeakRef<NSMenu> menu_;
  std::int64_t tag_ = 0;
  NSControlStateValue state_ = NSControlStateValueOff;
  int indentationLevel_ = 0;
  bool isEnabled_ = true, isHidden_ = false, isSeparator_ = false;
};

}  // namespace tessaluna::platform
