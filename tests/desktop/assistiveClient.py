#!/usr/bin/python3
"""A client of the bus on which applications speak to screen readers.

  assistiveClient.py tree APPLICATION              a line for each object: role, name in quotes, notable states
  assistiveClient.py place APPLICATION NAME        x, y, width and height on the screen
  assistiveClient.py actions APPLICATION NAME      the actions of the object
  assistiveClient.py do APPLICATION NAME ACTION    does one of them
  assistiveClient.py write APPLICATION ROLE TEXT   puts the text into the first object of the role
  assistiveClient.py text APPLICATION ROLE         the text of the first object of the role, its caret and selection
  assistiveClient.py character APPLICATION ROLE N  x, y, width and height on the screen of the character, and which one is there
  assistiveClient.py row APPLICATION TABLE N       how many rows the table has and which are selected; the row's line, where it is
                                                   among the rows, and its actions
  assistiveClient.py select APPLICATION TABLE N    adds a row to the selection
  assistiveClient.py listen APPLICATION            "listening", then a line for each change until the input ends

Debian's packages of the bus are for the system's own Python.
"""
import os
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402
import pyatspi  # noqa: E402

STATES = {
    pyatspi.STATE_ACTIVE: "active",
    pyatspi.STATE_CHECKED: "checked",
    pyatspi.STATE_EDITABLE: "editable",
    pyatspi.STATE_EXPANDED: "expanded",
    pyatspi.STATE_FOCUSABLE: "focusable",
    pyatspi.STATE_FOCUSED: "focused",
    pyatspi.STATE_SELECTABLE: "selectable",
    pyatspi.STATE_SELECTED: "selected",
}
EVENTS = [
    "object:active-descendant-changed",
    "object:children-changed",
    "object:property-change:accessible-name",
    "object:property-change:accessible-value",
    "object:selection-changed",
    "object:state-changed:checked",
    "object:state-changed:enabled",
    "object:state-changed:focused",
    "object:state-changed:selected",
    "object:text-caret-moved",
    "object:text-changed",
]


def application_named(name):
    for _ in range(100):
        for application in pyatspi.Registry.getDesktop(0):
            if application and application.name == name:
                return application
        time.sleep(0.05)
    sys.exit(f"no application is called {name}")


def line(thing):
    states = thing.getState().getStates()
    words = [word for state, word in STATES.items() if state in states]
    if pyatspi.STATE_SHOWING not in states:
        words.append("not showing")
    return " ".join([thing.getRoleName(), f'"{thing.name}"', *words])


def print_tree(thing, depth):
    print("  " * depth + line(thing))
    for child in thing:
        if child is None:
            sys.exit(f"an absent child of {line(thing)}")
        if child.parent != thing:
            sys.exit(f"{line(child)} does not name its parent")
        print_tree(child, depth + 1)


def find(thing, fits):
    if fits(thing):
        return thing
    if thing.childCount > 1000:
        return None
    for child in thing:
        found = find(child, fits)
        if found:
            return found
    return None


def required(application, fits, what):
    return find(application, fits) or sys.exit(f"nothing is called {what}")


def do(thing, wanted):
    actions = thing.queryAction()
    for index in range(actions.nActions):
        if actions.getName(index) == wanted:
            if not actions.doAction(index):
                sys.exit(f"{wanted} was refused")
            return
    sys.exit(f"there is no action {wanted}")


def listen(application):
    def heard(event):
        if event.host_application != application:
            return
        about = event.any_data if event.type.is_subtype(pyatspi.EventType("object:children-changed")) else None
        child = f' of {about.getRoleName()} "{about.name}"' if about else ""
        print(event.type, event.detail1, event.source.getRoleName(), f'"{event.source.name}"{child}', flush=True)

    pyatspi.Registry.registerEventListener(heard, *EVENTS)
    GLib.io_add_watch(sys.stdin, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, lambda *_: os._exit(0))
    # One more query, so that the application knows of the listener when this is printed.
    print("listening" if application.childCount >= 0 else "", flush=True)
    pyatspi.Registry.start()


def main():
    Atspi.set_timeout(5000, 15000)
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    command, name, *rest = sys.argv[1:]
    application = application_named(name)
    if command == "tree":
        print_tree(application, 0)
    elif command == "listen":
        listen(application)
    elif command == "write":
        role, text = rest
        field = required(application, lambda thing: thing.getRoleName() == role, role)
        field.queryEditableText().setTextContents(text)
    elif command == "text":
        text = required(application, lambda thing: thing.getRoleName() == rest[0], rest[0]).queryText()
        print(text.getText(0, -1), f"caret at {text.caretOffset}", sep="\n")
        for index in range(text.getNSelections()):
            print("selected {} to {}".format(*text.getSelection(index)))
    elif command == "character":
        role, index = rest
        text = required(application, lambda thing: thing.getRoleName() == role, role).queryText()
        x, y, width, height = text.getCharacterExtents(int(index), pyatspi.DESKTOP_COORDS)
        middle = text.getOffsetAtPoint(x + width // 2, y + height // 2, pyatspi.DESKTOP_COORDS)
        print(x, y, width, height)
        print("offset", middle)
    elif command in ("row", "select"):
        table = required(application, lambda thing: thing.getRoleName() == "table" and thing.name == rest[0], rest[0])
        rows, index = table.queryTable(), int(rest[1])
        if command == "select":
            print(rows.addRowSelection(index))
        else:
            row = rows.getAccessibleAt(index, 0)
            actions = row.queryAction()
            print(f"{rows.nRows} rows, {table.childCount} children, selected", *rows.getSelectedRows())
            print(line(row))
            print("in its parent", row.getIndexInParent(), "in the table", rows.getRowAtIndex(index))
            print(*[actions.getName(number) for number in range(actions.nActions)], sep=", ")
    else:
        thing = required(application, lambda thing: thing.name == rest[0], rest[0])
        if command == "place":
            place = thing.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            print(place.x, place.y, place.width, place.height)
        elif command == "actions":
            actions = thing.queryAction()
            print(*[actions.getName(index) for index in range(actions.nActions)], sep="\n")
        elif command == "do":
            do(thing, rest[1])
        else:
            sys.exit(__doc__)


main()
