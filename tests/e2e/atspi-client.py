#!/usr/bin/python3
"""A screen reader's view of a running program, over the AT-SPI bus.

atspi-client.py APP dump          every element: role, name and text, tab-separated
atspi-client.py APP press NAME    presses the button called NAME
atspi-client.py APP watch NAME    waits up to 10 s for NAME's text to change, prints it
atspi-client.py APP at X Y W H    the name of the element that covers exactly this
                                  rectangle of the screen

Exits 1 when the program or the element is not found (in time).
"""
import sys
import time

import pyatspi
from gi.repository import GLib


def find_app(name, seconds=20):
    end = time.time() + seconds
    while time.time() < end:
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == name:
                return app
        time.sleep(0.1)
    return None


def elements(node):
    for child in node:
        if child is None:
            continue
        yield child
        yield from elements(child)


def text_of(element):
    try:
        return element.queryText().getText(0, -1)
    except NotImplementedError:
        return ""


def find(app, name):
    for element in elements(app):
        if element.name == name:
            return element
    return None


def main():
    app = find_app(sys.argv[1])
    if app is None:
        return 1
    command = sys.argv[2]
    if command == "dump":
        for element in elements(app):
            print("\t".join([element.getRoleName(), element.name, text_of(element)]))
        return 0
    if command == "at":
        wanted = tuple(int(n) for n in sys.argv[3:7])
        for element in elements(app):
            try:
                box = element.queryComponent().getExtents(pyatspi.DESKTOP_COORDS)
            except NotImplementedError:
                continue
            if (box.x, box.y, box.width, box.height) == wanted:
                print(element.name)
                return 0
        return 1
    element = find(app, sys.argv[3])
    if element is None:
        return 1
    if command == "press":
        element.queryAction().doAction(0)
        return 0
    if command == "watch":
        before = text_of(element)
        seen = []

        def changed(event):
            if event.source == element and text_of(element) != before:
                seen.append(text_of(element))
                pyatspi.Registry.stop()

        pyatspi.Registry.registerEventListener(changed, "object:text-changed")
        GLib.timeout_add_seconds(10, pyatspi.Registry.stop)
        pyatspi.Registry.start()
        if not seen:
            return 1
        print(seen[0])
        return 0
    return 2


sys.exit(main())
