#!/usr/bin/env python3
"""Opens every dialog of the timeline's menus by mouse and keyboard, fills it and looks at its effect, in pictures.

    python3 tests/desktop/record_dialogs.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

Motion is moved by files into a film of another level, which a second Stage opens and plays.
"""

import shutil
import sys
import tempfile
import time
from pathlib import Path

import record_session
from check_desktop import panel_opens, rows, scenario
from desktop import Desktop, arguments_of, check, different_pixels, find
from record_attributes import (browse, closes, enter, fold_all, inside, open_key, press_line, run, taller_window,
                               type_text, view_picture, window_of)
from record_session import (animate_on, drag_handle, empty_place, go_to, key_place, new_film, orbit, row, select,
                            step_back, unfold)

BOAT, SAILOR, OTHER_BOAT, BARREL = "Fishing boat", "Sailor", "Row boat", "Barrel"
LEVEL_ROW = 0
MESSAGE = "Stage"  # the title of message boxes
TITLE_HEIGHT = 24  # of the window manager's, in pixels
NEAR = 0.01  # centimetres, for places that went through files and dialogs


# Dialogs


def choose(desktop, place, text):
    """Takes an entry of the context menu at a place."""
    desktop.move(*place)
    desktop.x("click", 3)
    entry = desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))
    check(entry["enabled"], f"'{text}' can be chosen")
    desktop.click(entry["rect"])
    desktop.until("the menu is gone", lambda s: not find(s["menus"], text))


def on_row(desktop, order):
    """A place on a row that is free of keys: close to its right end."""
    x, y, width, height = row(desktop, order)
    return x + width - 12, y + height / 2


def opens(desktop, title, name=None):
    """Waits for a dialog and takes its picture where a name is given."""
    rect = desktop.until(f"'{title}'", lambda s: window_of(s, title))
    if name:
        portrait(desktop, title, name)
    return rect


def portrait(desktop, title, name):
    """A picture of a dialog, with its title bar."""
    x, y, width, height = opens(desktop, title)
    return desktop.picture(name, (x - 2, y - TITLE_HEIGHT, width + 4, height + TITLE_HEIGHT + 2))


def fields_in(state, title):
    """The fields for typing in the window of that title, from the top and the left."""
    x, y, width, height = window_of(state, title)
    return sorted((f for f in state["fields"] if x <= f["rect"][0] < x + width and y <= f["rect"][1] < y + height),
                  key=lambda f: (f["rect"][1], f["rect"][0]))


def field(desktop, title, number):
    return fields_in(desktop.look(), title)[number]


def fill(desktop, title, texts):
    """Types over the fields of these numbers. The first has the focus and its text selected, as it must."""
    desktop.until(f"the focus in the first field of '{title}'", lambda s: fields_in(s, title)[0]["focused"])
    for number, text in texts.items():
        if number > 0:
            desktop.click(field(desktop, title, number)["rect"])
            desktop.key("ctrl+a")
        type_text(desktop, text)
    desktop.until(f"'{title}' shows what was typed", lambda s: all(
        fields_in(s, title)[number]["text"] == text for number, text in texts.items()))


def type_over(desktop, title, number, text):
    """Types over a field that was used before."""
    desktop.click(field(desktop, title, number)["rect"])
    desktop.key("ctrl+a")
    type_text(desktop, text)
    desktop.until(f"'{title}' shows '{text}'", lambda s: fields_in(s, title)[number]["text"] == text)


def press(desktop, title, text):
    desktop.click(inside(desktop, title, text)["rect"])


def press_box(desktop, title, text):
    """A check box or radio button, which becomes checked."""
    x, y, _, height = inside(desktop, title, text)["rect"]
    desktop.move(x + 8, y + height / 2)
    desktop.x("click", 1)
    desktop.until(f"'{text}' is checked", lambda _: inside(desktop, title, text)["checked"])


def accept(desktop, title):
    desktop.key("Return")
    closes(desktop, title)


def refused(desktop, words, name):
    """A message that Enter takes away."""
    desktop.until(f"a message that {words}", lambda s: window_of(s, MESSAGE))
    portrait(desktop, MESSAGE, name)
    desktop.key("Return")
    closes(desktop, MESSAGE)


def choose_file(desktop, title, path, button):
    """Types the path of a file. A first press on the button may only put a list of completions away."""
    opens(desktop, title)
    type_text(desktop, str(path))
    found = inside(desktop, title, button)["rect"]
    desktop.click(found)
    end = time.monotonic() + 1
    while window_of(desktop.look(), title) and time.monotonic() < end:
        time.sleep(0.05)
    if window_of(desktop.look(), title):
        desktop.click(found)
    closes(desktop, title)


def changes(desktop, before, name, rect, pixels):
    """Waits until that part of the display differs from an earlier picture by more than so many pixels."""
    desktop.until(f"{name} differs from {before.name} by {pixels} pixels",
                  lambda _: different_pixels(before, desktop.picture(name, rect)) > pixels)


# What the film does


def place_of(desktop, name):
    return desktop.look()["objects"][name]


def near(first, second, tolerance=NEAR):
    return all(abs(a - b) <= tolerance for a, b in zip(first, second, strict=True))


def stands(desktop, name, seconds, place):
    """Goes to a time, at which the actor is at that place."""
    go_to(desktop, seconds)
    desktop.until(f"{name} at {seconds} s", lambda s: near(s["objects"][name], place))


def tree(desktop, name):
    """Selects an object in the tree, which keeps only those of that name on show."""
    search = next(f for f in desktop.look()["fields"] if 0 < f["rect"][0] < TREE_RIGHT)
    desktop.click(search["rect"])
    desktop.key("ctrl+a")
    desktop.x("type", "--delay", 10, name)
    entry = desktop.until(f"{name} alone in the tree", lambda s: find_in_tree(s, name))
    desktop.click(entry["rect"])
    desktop.until(f"{name} is selected", lambda s: s["selected"] == [name])


TREE_RIGHT = 400  # in pixels of the screen: lists further right are not the tree


def find_in_tree(state, name):
    """The entry of that name once it stands at the top, with its parents at most above it."""
    entries = [e for e in state["items"] if e["rect"][0] < TREE_RIGHT and e["rect"][3] > 15]
    return find(entries[:2], name)


def count(desktop, what, number):
    desktop.until(f"{what}: {number} rows", lambda s: len(rows(s)) == number)


# The first level


class Session:
    """What the steps know of each other: where the boat stands at its keys, and the files."""

    def __init__(self, folder, other):
        self.motion = folder / "boat.track"
        self.looks = folder / "looks.fkd"
        self.other = other  # the level to which the motion goes
        self.first = self.last = self.film = None


def boat_gets_keys(desktop, session):
    new_film(desktop)
    record_session.FILM_SECONDS = 10.0
    animate_on(desktop)
    select(desktop, BOAT)
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    go_to(desktop, 4.0)
    drag_handle(desktop, 0, 60)
    count(desktop, "level, sun and boat", 3)
    session.first = place_of(desktop, BOAT)
    go_to(desktop, 8.0)
    drag_handle(desktop, 2, 60)
    session.last = place_of(desktop, BOAT)
    check(not near(session.first, session.last, 10), "the boat goes on")
    desktop.click(desktop.button("Animate object")["rect"])


def movie_frame(desktop, session):
    title = "Set movie frame"
    choose(desktop, empty_place(desktop), title)
    opens(desktop, title, "movie_frame")
    fill(desktop, title, {0: "301"})
    desktop.key("Return")
    refused(desktop, "the film ends at frame 300", "movie_frame_refused")
    type_over(desktop, title, 0, "120")
    accept(desktop, title)
    desktop.until("frame 120 is at four seconds", lambda s: near(s["objects"][BOAT], session.first))
    choose(desktop, empty_place(desktop), title)
    opens(desktop, title)
    desktop.key("Escape")
    closes(desktop, title)
    check(near(place_of(desktop, BOAT), session.first), "Escape leaves the frame")


def settings(desktop, session):
    choose(desktop, empty_place(desktop), "Settings")
    opens(desktop, "Settings", "settings")
    fill(desktop, "Settings", {1: "12", 2: "12"})
    accept(desktop, "Settings")
    record_session.FILM_SECONDS = 12.0
    stands(desktop, BOAT, 8.0, session.last)
    stands(desktop, BOAT, 4.0, session.first)


def adjust(desktop, texts, at_end=False, name=None):
    """At two seconds. "End" says that the stretch goes on to the film's end."""
    go_to(desktop, 2.0)
    choose(desktop, empty_place(desktop), "Adjust time")
    opens(desktop, "Adjust time")
    fill(desktop, "Adjust time", texts)
    if at_end:
        press_box(desktop, "Adjust time", "End")
    if name:
        portrait(desktop, "Adjust time", name)
    accept(desktop, "Adjust time")


def adjust_time(desktop, session):
    adjust(desktop, {0: "1"}, name="adjust_time_insert")
    stands(desktop, BOAT, 5.0, session.first)
    stands(desktop, BOAT, 9.0, session.last)
    adjust(desktop, {0: "-1"})
    stands(desktop, BOAT, 4.0, session.first)
    # Four seconds become two: a key at 4 goes to 2 + 2 * 2 / 4, one at 8 two seconds ahead.
    adjust(desktop, {0: "0", 1: "4", 2: "2"}, name="adjust_time_static")
    stands(desktop, BOAT, 3.0, session.first)
    stands(desktop, BOAT, 6.0, session.last)
    # Ten seconds up to the end become five: 2 + 1 / 2 and 2 + 4 / 2.
    adjust(desktop, {2: "5"}, at_end=True, name="adjust_time_end")
    stands(desktop, BOAT, 2.5, session.first)
    stands(desktop, BOAT, 4.0, session.last)


def tick(desktop, title, kind):
    """The box at the right end of a line."""
    x, y, width, height = inside(desktop, title, kind)["rect"]
    desktop.move(x + width - 9, y + height / 2)
    desktop.x("click", 1)


def line_part(desktop, title, kind, from_right):
    x, y, width, height = inside(desktop, title, kind)["rect"]
    return x + width - from_right, y + height / 2


FILTER = "Keys filter & settings"
NUMBER, NORMAL = 110, 85  # from the right end of a line of the filter


def filter_keys(desktop, _):
    unfold(desktop, LEVEL_ROW)
    count(desktop, "the level has no keys", 3)
    choose(desktop, on_row(desktop, LEVEL_ROW), "Filter keys")
    opens(desktop, FILTER)
    tick(desktop, FILTER, "Camera keys")
    portrait(desktop, FILTER, "filter_keys")
    press(desktop, FILTER, "OK")
    closes(desktop, FILTER)
    count(desktop, "with the row of cuts", 4)
    before = desktop.picture("row_of_cuts", row(desktop, 1))
    choose(desktop, key_place(desktop, 1, 6.0), "Add Key")
    deselect(desktop)
    changes(desktop, before, "cut", row(desktop, 1), 300)


def deselect(desktop):
    """A press on an empty time, and the mouse off the rows."""
    x, y, width, height = row(desktop, LEVEL_ROW)
    desktop.move(x + width - 12, y + height / 2)
    desktop.x("click", 1)
    desktop.move(*empty_place(desktop))


def looks_of_keys(desktop, session):
    """A height, a colour, and both through a file and back behind the defaults."""
    before = desktop.picture("blue_cut", row(desktop, 1))
    choose(desktop, on_row(desktop, LEVEL_ROW), "Filter keys")
    opens(desktop, FILTER)
    desktop.move(*line_part(desktop, FILTER, "Camera keys", NUMBER))
    desktop.x("click", "--repeat", 2, "--delay", 60, 1)
    desktop.until("the height can be typed", lambda s: fields_in(s, FILTER))
    type_text(desktop, "30")
    desktop.move(*line_part(desktop, FILTER, "Camera keys", 250))
    desktop.x("click", 1)
    desktop.until("the height is taken", lambda s: not fields_in(s, FILTER))
    desktop.move(*line_part(desktop, FILTER, "Camera keys", NORMAL))
    desktop.x("click", "--repeat", 2, "--delay", 60, 1)
    opens(desktop, "Select Color")
    desktop.key("alt+h")
    desktop.key("ctrl+a")
    type_text(desktop, "#ff4020")
    accept(desktop, "Select Color")
    press(desktop, FILTER, "Export")
    choose_file(desktop, "Save As", session.looks, "Save")
    press(desktop, FILTER, "Defaults")
    defaults = portrait(desktop, FILTER, "filter_keys_defaults")
    press(desktop, FILTER, "Import")
    choose_file(desktop, "Open", session.looks, "Open")
    imported = portrait(desktop, FILTER, "filter_keys_imported")
    check(different_pixels(defaults, imported) > 20, "the file gives the look back")
    press(desktop, FILTER, "OK")
    closes(desktop, FILTER)
    deselect(desktop)
    changes(desktop, before, "red_cut", row(desktop, 1), 1000)


def filter_actors(desktop, _):
    title = "Filter tracks"
    shown = len(rows(desktop.look()))
    choose(desktop, empty_place(desktop), "Filter actors")
    opens(desktop, title, "filter_actors")
    press(desktop, title, "None")
    press(desktop, title, "OK")
    closes(desktop, title)
    count(desktop, "no track is chosen", 0)
    choose(desktop, empty_place(desktop), "Filter actors")
    opens(desktop, title)
    press(desktop, title, "All")
    press(desktop, title, "OK")
    closes(desktop, title)
    count(desktop, "all are chosen", shown)


# Lights


def press_name(desktop, order):
    """Selects the row's object, or shows its camera."""
    x, y, _, height = row(desktop, order)
    desktop.move(x + 60, y + height / 2)
    desktop.x("click", 1)


def light(desktop, command, name, order):
    """Made before the view, seen from further off and moved with "Animate object"."""
    go_to(desktop, 0.0)
    choose(desktop, empty_place(desktop), command)
    desktop.until(f"{name} is there", lambda s: name in s["objects"])
    press_name(desktop, order)
    desktop.until(f"{name} is selected", lambda s: s["selected"] == [name])
    step_back(desktop, 4)
    animate_on(desktop)
    begin = place_of(desktop, name)
    go_to(desktop, 6.0)
    drag_handle(desktop, 1, 40)
    moved = desktop.until(f"{name} is moved", lambda s: s["objects"][name] if s["objects"][name] != begin else None)
    stands(desktop, name, 0.0, begin)
    stands(desktop, name, 6.0, moved)
    desktop.click(desktop.button("Animate object")["rect"])
    desktop.picture(f"light_{name}")


def lights(desktop, _):
    """Rows of lights stand last, by name."""
    shown = len(rows(desktop.look()))
    light(desktop, "Add GL light", "MovieGLLight1", shown)
    light(desktop, "Add dyn light", "MovieDynLight1", shown)


def light_gets_a_colour(desktop, _):
    taller_window(desktop)
    fold_all(desktop)
    order = len(rows(desktop.look())) - 1
    choose(desktop, on_row(desktop, order), "Filter keys")
    opens(desktop, FILTER)
    tick(desktop, FILTER, "Color keys")
    portrait(desktop, FILTER, "filter_keys_of_a_light")
    press(desktop, FILTER, "OK")
    closes(desktop, FILTER)
    unfold(desktop, order)
    color_row = order + 2  # below the positions
    go_to(desktop, 0.0)
    press_name(desktop, order)
    desktop.until("the light is selected", lambda s: s["selected"] == ["MovieGLLight1"])
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    before = view_picture(desktop, "white_light")
    choose(desktop, key_place(desktop, color_row, 0.0), "Add Key")
    open_key(desktop, color_row, 0.03)
    title = browse(desktop, 0)
    desktop.key("alt+h")
    desktop.key("ctrl+a")
    type_text(desktop, "#ff4020")
    accept(desktop, title)
    press_line(desktop, 0)
    enter(desktop)
    go_to(desktop, 3.0)
    go_to(desktop, 0.0)
    changes(desktop, before, "red_light", desktop.look()["views"][0]["rect"], 300)
    unfold(desktop, order)


# Cameras


EYE = "CameraPositionEditorObject"


def camera(desktop, name, taken=None):
    choose(desktop, empty_place(desktop), "Add camera")
    opens(desktop, "Add camera")
    if taken:
        fill(desktop, "Add camera", {0: taken})
        desktop.key("Return")
        refused(desktop, "the name is taken", "add_camera_refused")
        type_over(desktop, "Add camera", 0, name)
    else:
        fill(desktop, "Add camera", {0: name})
    portrait(desktop, "Add camera", "add_camera")
    accept(desktop, "Add camera")


def cameras(desktop, session):
    fold_all(desktop)
    shown = len(rows(desktop.look()))
    camera(desktop, "First")
    fold_all(desktop)
    count(desktop, "with a camera", shown + 1)
    camera(desktop, "Second", taken="First")
    fold_all(desktop)
    count(desktop, "with two cameras", shown + 2)


FIRST_CAMERA = 2  # behind the level and the sun


def eye_gets_keys(desktop):
    unfold(desktop, FIRST_CAMERA)
    press_name(desktop, FIRST_CAMERA)
    desktop.until("the eye is shown", lambda s: EYE in s["objects"])
    go_to(desktop, 4.0)
    orbit(desktop, 80, 20)
    desktop.click(desktop.button("Create camera frame")["rect"])
    time.sleep(0.3)


def eye_at(desktop, seconds):
    go_to(desktop, seconds)
    return place_of(desktop, EYE)


def track_parameters(desktop, _):
    eye_gets_keys(desktop)
    begin, end = eye_at(desktop, 0.0), eye_at(desktop, 4.0)
    check(not near(begin, end, 10), "the eye moves")
    order = FIRST_CAMERA + 1
    title = "Track parameters"
    choose(desktop, on_row(desktop, order), title)
    opens(desktop, title)
    press_box(desktop, title, "loop")
    type_over(desktop, title, 0, "4")
    portrait(desktop, title, "track_parameters")
    accept(desktop, title)
    one = eye_at(desktop, 1.0)
    check(not near(one, begin, 1), "the eye has left at one second")
    stands(desktop, EYE, 5.0, one)
    fold_all(desktop)


def camera_parameters(desktop, _):
    title = "Camera parameters"
    choose(desktop, on_row(desktop, FIRST_CAMERA), title)
    opens(desktop, title)
    fill(desktop, title, {0: "Second"})
    desktop.key("Return")
    refused(desktop, "the name is taken", "camera_parameters_refused")
    type_over(desktop, title, 0, "Pier")
    portrait(desktop, title, "camera_parameters")
    accept(desktop, title)
    fold_all(desktop)
    unfold(desktop, LEVEL_ROW)
    open_key(desktop, 1, 7.0)
    browser = browse(desktop, 0)
    inside(desktop, browser, "Pier")
    check(not find(desktop.look()["items"], "First"), "the camera has its new name only")
    press(desktop, browser, "Pier")
    portrait(desktop, browser, "choose_camera")
    accept(desktop, browser)
    press_line(desktop, 1)
    enter(desktop)


def add_camera_track(desktop, _):
    """The newest row of cuts stands first and is empty; "Remove track" takes it away."""
    shown = len(rows(desktop.look()))
    choose(desktop, on_row(desktop, LEVEL_ROW), "Add camera track")
    count(desktop, "with a second row of cuts", shown + 1)
    desktop.picture("camera_track_added")
    choose(desktop, on_row(desktop, 1), "Remove track")
    count(desktop, "with one", shown)
    fold_all(desktop)


# Actors


ATTACH = "Attach movie object"


def actor(desktop, name):
    """Makes an object of the tree an actor; actors stand by name behind the cameras."""
    shown = len(rows(desktop.look()))
    tree(desktop, name)
    choose(desktop, empty_place(desktop), "Add actors")
    count(desktop, f"with {name}", shown + 1)


def waits_for(desktop, *words):
    """Until the status bar says what the user is to choose, in these words; without words, that it is nothing."""
    desktop.until(f"the status bar says {words or 'nothing'}", lambda s: all(word in s["mode"] for word in words) and
                  (words or not s["mode"]))


BOAT_ROW, SAILOR_ROW = 4, 5


def offset(desktop):
    places = desktop.look()["objects"]
    return [a - b for a, b in zip(places[SAILOR], places[BOAT], strict=True)]


def attach(desktop, _):
    """The sailor goes along with the boat, and stays again where it was when the parent is taken back."""
    go_to(desktop, 0.0)
    alone = place_of(desktop, SAILOR)
    actor(desktop, SAILOR)
    choose(desktop, on_row(desktop, SAILOR_ROW), "Attach to object")
    opens(desktop, ATTACH)
    waits_for(desktop, "Attach to", SAILOR)
    tree(desktop, BOAT)
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.4)
    place = desktop.look()["views"][0]["onScreen"][BOAT]
    desktop.move(*place)
    desktop.x("click", 3)
    entry = desktop.until("'Attach to'", lambda s: next(
        (m for m in s["menus"] if m["text"].startswith(f"Attach to {BOAT}(")), None))
    desktop.picture("attach_menu")
    desktop.click(entry["rect"])
    desktop.until("an element can be chosen", lambda _: inside(desktop, ATTACH, "...")["enabled"])
    press(desktop, ATTACH, "...")
    browser = f"Mesh element of {BOAT}"
    opens(desktop, browser, "attach_element")
    desktop.key("Escape")
    closes(desktop, browser)
    portrait(desktop, ATTACH, "attach")
    press(desktop, ATTACH, "OK")
    closes(desktop, ATTACH)
    go_to(desktop, 0.0)
    begin = offset(desktop)
    go_to(desktop, 2.5)
    check(near(offset(desktop), begin, 0.1), "the sailor goes along")
    choose(desktop, on_row(desktop, SAILOR_ROW), "Attach to object")
    opens(desktop, ATTACH)
    press(desktop, ATTACH, "X")
    press(desktop, ATTACH, "OK")
    closes(desktop, ATTACH)
    waits_for(desktop)
    stands(desktop, SAILOR, 4.0, alone)


def change_actor(desktop, session):
    go_to(desktop, 2.5)
    rowing = place_of(desktop, OTHER_BOAT)
    choose(desktop, on_row(desktop, BOAT_ROW), "Change actor")
    waits_for(desktop, BOAT)
    desktop.picture("change_actor")
    desktop.key("Escape")
    waits_for(desktop)
    tree(desktop, OTHER_BOAT)
    check(near(place_of(desktop, OTHER_BOAT), rowing), "after Escape a selection changes no actor")
    tree(desktop, SAILOR)
    choose(desktop, on_row(desktop, BOAT_ROW), "Change actor")
    waits_for(desktop, BOAT)
    tree(desktop, OTHER_BOAT)
    waits_for(desktop)
    stands(desktop, OTHER_BOAT, 2.5, session.first)
    stands(desktop, OTHER_BOAT, 4.0, session.last)


def convert(desktop, _):
    def icon():
        x, y, _, height = find_in_tree(desktop.look(), BARREL)["rect"]
        return [x, y, height, height]

    def button(text):
        found = [b for b in desktop.look()["buttons"] if b["text"] == text and b["enabled"]]
        return min(found, key=lambda b: b["rect"][1])["rect"]  # the one of Stage's own toolbar

    tree(desktop, BARREL)
    normal = desktop.picture("normal_object", icon())
    desktop.click(button("Convert to virtual object"))
    desktop.until("a question", lambda s: window_of(s, MESSAGE))
    portrait(desktop, MESSAGE, "convert_question")
    press(desktop, MESSAGE, "Yes")
    closes(desktop, MESSAGE)
    changes(desktop, normal, "virtual_object", icon(), 10)
    desktop.click(button("Convert to normal object"))
    desktop.move(*empty_place(desktop))
    desktop.until("the tree shows it as a normal one",
                  lambda _: different_pixels(normal, desktop.picture("normal_again", icon())) == 0)


# Another level


def position_row(desktop, order):
    unfold(desktop, order)
    return order + 1


def export(desktop, session):
    fold_all(desktop)
    choose(desktop, on_row(desktop, position_row(desktop, BOAT_ROW)), "Export")
    choose_file(desktop, "Save As", session.motion.with_suffix(""), "Save")
    check(session.motion.stat().st_size > 4, f"{session.motion.name} holds more than the kind of its keys")


def saves(desktop, file):
    before = file.stat().st_mtime_ns
    desktop.click(desktop.button("Save")["rect"])
    desktop.until(f"{file.name} is saved", lambda _: file.stat().st_mtime_ns != before)


def open_other_level(desktop, session):
    saves(desktop, Path(desktop.level))
    desktop.key("ctrl+o")
    opens(desktop, "Open level")
    choose_file(desktop, "Open level", session.other, "Open")
    desktop.until("the other level", lambda s: s.get("film") == "" and "objects" in s)


def import_motion(desktop, session):
    record_session.FILM_SECONDS = 10.0
    before = {item["text"] for item in desktop.look()["items"]}
    desktop.click(desktop.button("Add")["rect"])
    session.film = desktop.until("a new film", lambda s: s["film"] if s["film"] and s["film"] not in before else None)
    count(desktop, "level and sun", 2)
    actor(desktop, SAILOR)
    choose(desktop, on_row(desktop, position_row(desktop, 2)), "Import")
    choose_file(desktop, "Open", session.motion, "Open")
    stands(desktop, SAILOR, 2.5, session.first)
    stands(desktop, SAILOR, 4.0, session.last)
    saves(desktop, session.other)


def opened_again(desktop, session):
    desktop.until("the level", lambda s: len(s.get("objects", {})) > 5)
    panel_opens(desktop)
    desktop.click(desktop.item(session.film)["rect"], times=2)
    desktop.until("the scenario window", lambda s: (scenario(s) or {}).get("shown"))
    stands(desktop, SAILOR, 2.5, session.first)
    stands(desktop, SAILOR, 4.0, session.last)
    desktop.picture("motion_in_another_level")


STEPS = [boat_gets_keys, movie_frame, settings, adjust_time, filter_keys, looks_of_keys, filter_actors, convert, lights,
         light_gets_a_colour, cameras, track_parameters, camera_parameters, add_camera_track, attach, change_actor,
         export, open_other_level, import_motion]


def main():
    arguments = arguments_of(__doc__, "out/dialogs").parse_args()
    stage, sample, pictures = Path(arguments.stage).resolve(), Path(arguments.level), Path(arguments.screenshots)
    with tempfile.TemporaryDirectory(prefix="films_dialogs_") as folder:
        work = Path(folder)
        for name in ("first", "other"):
            shutil.copytree(sample.parent, work / name)
        session = Session(work, work / "other" / sample.name)

        def steps(functions):
            return [named(function, session) for function in functions]

        with Desktop(stage, work / "first" / sample.name, work / "one", pictures) as desktop:
            if not run(desktop, steps(STEPS)):
                return 1
        with Desktop(stage, session.other, work / "two", pictures / "opened_again") as desktop:
            if not run(desktop, steps([opened_again])):
                return 1
    return 0


def named(function, session):
    """The step as `run` takes it."""
    def step(desktop):
        function(desktop, session)
    step.__name__ = function.__name__
    return step


if __name__ == "__main__":
    sys.exit(main())
