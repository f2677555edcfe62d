#!/usr/bin/env python3
"""Drags in the list of objects, the menu of the list of films, cameras of films: with real mouse and keys."""

from desktop import check, find
from dialogs import opens
from level import OTHER_REDO, UNDO
from menus import choose, entry
from object_list import (drag_row, handle_of, indent, pull_row, rect_of, row, search, select_both, select_in_list,
                         stands_below)
from opening import film_opens, level_opens, panel_opens, program_ends
from runner import run

CHILD, PARENT, OTHER = "Crane", "Lighthouse", "Fishing boat"


def a_drag_onto_an_object_makes_it_the_parent(desktop):
    before = desktop.look()
    left = indent(before, CHILD)
    pull_row(desktop, CHILD, handle_of(rect_of(desktop, PARENT)))
    desktop.until("it says what a drop does", lambda s: s["ownMode"].startswith("Drop onto an object"))
    desktop.picture("dragging")
    desktop.release()
    desktop.until("it stands below its parent", lambda s: stands_below(s, CHILD, left))
    after = desktop.look()
    check(after["objects"] == before["objects"], "everything stands where it stood")
    check(after["status"] == f"{CHILD} on {PARENT}", f"the status bar says: {after['status']}")
    desktop.picture("child")


def a_drag_onto_its_own_child_is_refused(desktop):
    drag_row(desktop, PARENT, handle_of(rect_of(desktop, CHILD)))
    desktop.until("a word", lambda s: s["status"] == f"{CHILD} hangs on {PARENT}: it can't be its parent too")
    desktop.picture("refused")


def undo_takes_the_drag_back(desktop):
    left = indent(desktop.look(), PARENT)
    desktop.key(UNDO)
    desktop.until("it is free again", lambda s: indent(s, CHILD) == left)
    desktop.key(OTHER_REDO)
    desktop.until("it hangs again", lambda s: stands_below(s, CHILD, left))


def several_are_dragged_between_rows_and_hang_on_none(desktop):
    left = indent(desktop.look(), PARENT)
    drag_row(desktop, OTHER, handle_of(rect_of(desktop, PARENT)))
    desktop.until("the second hangs too", lambda s: stands_below(s, OTHER, left))
    select_both(desktop, CHILD, OTHER)
    top = rect_of(desktop, PARENT)
    drag_row(desktop, CHILD, (top[0] + 30, top[1] + 1))
    desktop.until("both are free", lambda s: indent(s, CHILD) == left and indent(s, OTHER) == left)
    desktop.picture("free")


def a_group_takes_what_is_dropped_onto_its_row(desktop):
    select_both(desktop, PARENT, CHILD)
    desktop.key("ctrl+g")
    desktop.until("the group has a row", lambda s: row(s, "Group"))
    drag_row(desktop, OTHER, handle_of(rect_of(desktop, "Group")))
    desktop.until("it says so", lambda s: s["status"] == f"{OTHER} added to Group")
    desktop.click(rect_of(desktop, "Group"))
    desktop.until("its row stands for all of it", lambda s: set(s["selected"]) == {PARENT, CHILD, OTHER})
    desktop.picture("group")
    for _ in range(2):
        desktop.key(UNDO)
    desktop.until("the group is gone again", lambda s: not row(s, "Group"))


def helpers_are_listed_when_asked_for(desktop):
    search(desktop, "Sun")
    desktop.until("the list is searched", lambda s: row(s, CHILD) is None)
    check(row(desktop.look(), "SunHelper") is None, "helpers are not listed")
    choose(desktop, "v", "Helper objects in the list")
    desktop.until("the sun's helper", lambda s: row(s, "SunHelper"))
    desktop.picture("helpers")
    choose(desktop, "v", "Helper objects in the list")
    desktop.until("it is not listed", lambda s: row(s, "SunHelper") is None)
    search(desktop, "")


def a_camera_is_made_at_an_object(desktop):
    select_in_list(desktop, CHILD)
    choose(desktop, "i", "Add camera at the selected object")
    desktop.until("it says so", lambda s: "stands at the object" in s["status"])
    desktop.picture("camera")


def the_list_of_films_has_a_menu(desktop):
    desktop.click_item("Intro", button=3)
    rename = entry(desktop, "Rename film...")
    desktop.picture("films_menu")
    desktop.click(rename["rect"])
    opens(desktop, "Rename film")
    desktop.type("Opening")
    desktop.picture("rename")
    desktop.key("Return")
    desktop.item("Opening")
    desktop.click_item("Opening", button=3)
    desktop.click(entry(desktop, "Delete film")["rect"])
    desktop.until("it is gone", lambda s: not find(s["items"], "Opening"))
    desktop.key(UNDO)
    desktop.item("Opening")


STEPS = [
    level_opens,
    a_drag_onto_an_object_makes_it_the_parent,
    a_drag_onto_its_own_child_is_refused,
    undo_takes_the_drag_back,
    several_are_dragged_between_rows_and_hang_on_none,
    a_group_takes_what_is_dropped_onto_its_row,
    panel_opens,
    film_opens,
    helpers_are_listed_when_asked_for,
    a_camera_is_made_at_an_object,
    the_list_of_films_has_a_menu,
    program_ends,
]


if __name__ == "__main__":
    run(__doc__, "out/scene", STEPS)
