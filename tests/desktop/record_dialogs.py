#!/usr/bin/env python3
"""Opens every dialog of the timeline's menus by mouse and keyboard, fills it and looks at its effect, in pictures.

    python3 tests/desktop/record_dialogs.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

Motion is moved by files into a film of another level, which a second Stage opens and plays.
"""


from desktop import Desktop, check, different_pixels, find
from dialogs import (MESSAGE, accept, changes, choose_file, enter_colour, fields_in, fill, inside, leave, opens,
                     portrait, press, press_and_close, press_box, refused, type_over, type_text, window_of)
from key_window import browse, enter, open_key, press_line
from level import by_button, expect_selected, near, place_of, saved
from menus import choose_at
from object_list import find_at_top, select_by_search
from opening import film_is_added, film_opens_in_scenario, level_opens, new_film, panel_opens
from runner import arguments_of, copy_of, do_all, work_folder
from timeline import (CAMERA_ROW, LEVEL_ROW, animate_on, camera_frame, count_rows, empty_place, fold_all, go_to,
                      key_place, on_row, press_name, row, rows, taller_window, unfold)
from views import drag_handle, focus, orbit, places, select, step_back, view, view_picture

BOAT, SAILOR, OTHER_BOAT, BARREL = "Fishing boat", "Sailor", "Row boat", "Barrel"


# What the film does


def stands(desktop, name, seconds, place):
    """Goes to a time, at which the actor is at that place."""
    go_to(desktop, seconds)
    desktop.until(f"{name} at {seconds} s", lambda s: near(s["objects"][name], place))


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
    animate_on(desktop)
    select(desktop, BOAT)
    focus(desktop)
    go_to(desktop, 4.0)
    drag_handle(desktop, 0, 60)
    count_rows(desktop, "level, sun and boat", 3)
    session.first = place_of(desktop, BOAT)
    go_to(desktop, 8.0)
    drag_handle(desktop, 2, 60)
    session.last = place_of(desktop, BOAT)
    check(not near(session.first, session.last, 10), "the boat goes on")
    desktop.click_button("Animate object")


def movie_frame(desktop, session):
    title = "Set movie frame"
    choose_at(desktop, empty_place(desktop), title)
    opens(desktop, title, "movie_frame")
    fill(desktop, title, {0: "301"})
    desktop.key("Return")
    refused(desktop, "the film ends at frame 300", "movie_frame_refused")
    type_over(desktop, title, 0, "120")
    accept(desktop, title)
    desktop.until("frame 120 is at four seconds", lambda s: near(s["objects"][BOAT], session.first))
    choose_at(desktop, empty_place(desktop), title)
    opens(desktop, title)
    leave(desktop, title)
    check(near(place_of(desktop, BOAT), session.first), "Escape leaves the frame")


def settings(desktop, session):
    choose_at(desktop, empty_place(desktop), "Settings")
    opens(desktop, "Settings", "settings")
    fill(desktop, "Settings", {1: "12", 2: "12"})
    accept(desktop, "Settings")
    desktop.shown_seconds = 12.0
    stands(desktop, BOAT, 8.0, session.last)
    stands(desktop, BOAT, 4.0, session.first)


def adjust(desktop, texts, at_end=False, name=None):
    """At two seconds. "End" says that the stretch goes on to the film's end."""
    go_to(desktop, 2.0)
    choose_at(desktop, empty_place(desktop), "Adjust time")
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
    desktop.press((x + width - 9, y + height / 2))


def line_part(desktop, title, kind, from_right):
    x, y, width, height = inside(desktop, title, kind)["rect"]
    return x + width - from_right, y + height / 2


FILTER = "Keys filter & settings"
NUMBER, NORMAL = 110, 85  # from the right end of a line of the filter


def tick_kind(desktop, order, kind, name):
    """Gives the track of a row another row of keys."""
    choose_at(desktop, on_row(desktop, order), "Filter keys")
    opens(desktop, FILTER)
    tick(desktop, FILTER, kind)
    portrait(desktop, FILTER, name)
    press_and_close(desktop, FILTER, "OK")


def filter_keys(desktop, _):
    unfold(desktop, LEVEL_ROW)
    count_rows(desktop, "the level has no keys", 3)
    tick_kind(desktop, LEVEL_ROW, "Camera keys", "filter_keys")
    count_rows(desktop, "with the row of cuts", 4)
    before = desktop.picture("row_of_cuts", row(desktop, 1))
    choose_at(desktop, key_place(desktop, 1, 6.0), "Add Key")
    deselect(desktop)
    changes(desktop, before, "cut", row(desktop, 1), 300)


def deselect(desktop):
    """A press on an empty time, and the mouse off the rows."""
    desktop.press(on_row(desktop, LEVEL_ROW))
    desktop.move(*empty_place(desktop))


def looks_of_keys(desktop, session):
    """A height, a colour, and both through a file and back behind the defaults."""
    before = desktop.picture("blue_cut", row(desktop, 1))
    choose_at(desktop, on_row(desktop, LEVEL_ROW), "Filter keys")
    opens(desktop, FILTER)
    desktop.press(line_part(desktop, FILTER, "Camera keys", NUMBER), times=2)
    desktop.until("the height can be typed", lambda s: fields_in(s, FILTER))
    type_text(desktop, "30")
    desktop.press(line_part(desktop, FILTER, "Camera keys", 250))
    desktop.until("the height is taken", lambda s: not fields_in(s, FILTER))
    desktop.press(line_part(desktop, FILTER, "Camera keys", NORMAL), times=2)
    enter_colour(desktop, "Select Color", "#ff4020")
    accept(desktop, "Select Color")
    press(desktop, FILTER, "Export")
    choose_file(desktop, "Save As", session.looks, "Save")
    press(desktop, FILTER, "Defaults")
    defaults = portrait(desktop, FILTER, "filter_keys_defaults")
    press(desktop, FILTER, "Import")
    choose_file(desktop, "Open", session.looks, "Open")
    imported = portrait(desktop, FILTER, "filter_keys_imported")
    check(different_pixels(defaults, imported) > 20, "the file gives the look back")
    press_and_close(desktop, FILTER, "OK")
    deselect(desktop)
    changes(desktop, before, "red_cut", row(desktop, 1), 1000)


def filter_actors(desktop, _):
    title = "Filter tracks"
    shown = len(rows(desktop.look()))
    choose_at(desktop, empty_place(desktop), "Filter actors")
    opens(desktop, title, "filter_actors")
    press(desktop, title, "None")
    press_and_close(desktop, title, "OK")
    count_rows(desktop, "no track is chosen", 0)
    choose_at(desktop, empty_place(desktop), "Filter actors")
    opens(desktop, title)
    press(desktop, title, "All")
    press_and_close(desktop, title, "OK")
    count_rows(desktop, "all are chosen", shown)


# Lights


def light(desktop, command, name, order):
    """Made before the view, seen from further off and moved with "Animate object"."""
    go_to(desktop, 0.0)
    choose_at(desktop, empty_place(desktop), command)
    desktop.until(f"{name} is there", lambda s: name in s["objects"])
    press_name(desktop, order)
    expect_selected(desktop, name)
    step_back(desktop, 4)
    animate_on(desktop)
    begin = place_of(desktop, name)
    go_to(desktop, 6.0)
    drag_handle(desktop, 1, 40)
    moved = desktop.until(f"{name} is moved", lambda s: s["objects"][name] if s["objects"][name] != begin else None)
    stands(desktop, name, 0.0, begin)
    stands(desktop, name, 6.0, moved)
    desktop.click_button("Animate object")
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
    tick_kind(desktop, order, "Color keys", "filter_keys_of_a_light")
    unfold(desktop, order)
    color_row = order + 2  # below the positions
    go_to(desktop, 0.0)
    press_name(desktop, order)
    expect_selected(desktop, "MovieGLLight1")
    focus(desktop)
    before = view_picture(desktop, "white_light")
    choose_at(desktop, key_place(desktop, color_row, 0.0), "Add Key")
    open_key(desktop, color_row, 0.03)
    title = browse(desktop, 0)
    enter_colour(desktop, title, "#ff4020")
    accept(desktop, title)
    press_line(desktop, 0)
    enter(desktop)
    go_to(desktop, 3.0)
    go_to(desktop, 0.0)
    changes(desktop, before, "red_light", view(desktop), 300)
    unfold(desktop, order)


# Cameras


EYE = "CameraPositionEditorObject"


def camera(desktop, name, taken=None):
    choose_at(desktop, empty_place(desktop), "Add camera")
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
    count_rows(desktop, "with a camera", shown + 1)
    camera(desktop, "Second", taken="First")
    fold_all(desktop)
    count_rows(desktop, "with two cameras", shown + 2)


def eye_gets_keys(desktop):
    unfold(desktop, CAMERA_ROW)
    press_name(desktop, CAMERA_ROW)
    desktop.until("the eye is shown", lambda s: EYE in s["objects"])
    go_to(desktop, 4.0)
    orbit(desktop, 80, 20)
    camera_frame(desktop)


def eye_at(desktop, seconds):
    go_to(desktop, seconds)
    return place_of(desktop, EYE)


def track_parameters(desktop, _):
    eye_gets_keys(desktop)
    begin, end = eye_at(desktop, 0.0), eye_at(desktop, 4.0)
    check(not near(begin, end, 10), "the eye moves")
    order = CAMERA_ROW + 1
    title = "Track parameters"
    choose_at(desktop, on_row(desktop, order), title)
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
    choose_at(desktop, on_row(desktop, CAMERA_ROW), title)
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
    choose_at(desktop, on_row(desktop, LEVEL_ROW), "Add camera track")
    count_rows(desktop, "with a second row of cuts", shown + 1)
    desktop.picture("camera_track_added")
    choose_at(desktop, on_row(desktop, 1), "Remove track")
    count_rows(desktop, "with one", shown)
    fold_all(desktop)


# Actors


ATTACH = "Attach movie object"


def actor(desktop, name):
    """Makes an object of the tree an actor; actors stand by name behind the cameras."""
    shown = len(rows(desktop.look()))
    select_by_search(desktop, name)
    choose_at(desktop, empty_place(desktop), "Add actors")
    count_rows(desktop, f"with {name}", shown + 1)


def waits_for(desktop, *words):
    """Until the status bar says what the user is to choose, in these words; without words, that it is nothing."""
    desktop.until(f"the status bar says {words or 'nothing'}", lambda s: all(word in s["mode"] for word in words) and
                  (words or not s["mode"]))


BOAT_ROW, SAILOR_ROW = 4, 5


def offset(desktop):
    return [a - b for a, b in zip(place_of(desktop, SAILOR), place_of(desktop, BOAT), strict=True)]


def attach(desktop, _):
    """The sailor goes along with the boat, and stays again where it was when the parent is taken back."""
    go_to(desktop, 0.0)
    alone = place_of(desktop, SAILOR)
    actor(desktop, SAILOR)
    choose_at(desktop, on_row(desktop, SAILOR_ROW), "Attach to object")
    opens(desktop, ATTACH)
    waits_for(desktop, "Attach to", SAILOR)
    select_by_search(desktop, BOAT)
    focus(desktop)
    desktop.press(places(desktop.look())[BOAT], button=3)
    entry = desktop.until("'Attach to'", lambda s: next(
        (m for m in s["menus"] if m["text"].startswith(f"Attach to {BOAT}(")), None))
    desktop.picture("attach_menu")
    desktop.click(entry["rect"])
    desktop.until("an element can be chosen", lambda _: inside(desktop, ATTACH, "...")["enabled"])
    press(desktop, ATTACH, "...")
    browser = f"Mesh element of {BOAT}"
    opens(desktop, browser, "attach_element")
    leave(desktop, browser)
    portrait(desktop, ATTACH, "attach")
    press_and_close(desktop, ATTACH, "OK")
    go_to(desktop, 0.0)
    begin = offset(desktop)
    go_to(desktop, 2.5)
    check(near(offset(desktop), begin, 0.1), "the sailor goes along")
    choose_at(desktop, on_row(desktop, SAILOR_ROW), "Attach to object")
    opens(desktop, ATTACH)
    press(desktop, ATTACH, "X")
    press_and_close(desktop, ATTACH, "OK")
    waits_for(desktop)
    stands(desktop, SAILOR, 4.0, alone)


def change_actor(desktop, session):
    go_to(desktop, 2.5)
    rowing = place_of(desktop, OTHER_BOAT)
    choose_at(desktop, on_row(desktop, BOAT_ROW), "Change actor")
    waits_for(desktop, BOAT)
    desktop.picture("change_actor")
    desktop.key("Escape")
    waits_for(desktop)
    select_by_search(desktop, OTHER_BOAT)
    check(near(place_of(desktop, OTHER_BOAT), rowing), "after Escape a selection changes no actor")
    select_by_search(desktop, SAILOR)
    choose_at(desktop, on_row(desktop, BOAT_ROW), "Change actor")
    waits_for(desktop, BOAT)
    select_by_search(desktop, OTHER_BOAT)
    waits_for(desktop)
    stands(desktop, OTHER_BOAT, 2.5, session.first)
    stands(desktop, OTHER_BOAT, 4.0, session.last)


def convert(desktop, _):
    def icon():
        x, y, _, height = find_at_top(desktop.look(), BARREL)["rect"]
        return [x, y, height, height]

    def button(text):
        found = [b for b in desktop.look()["buttons"] if b["text"] == text and b["enabled"]]
        return min(found, key=lambda b: b["rect"][1])["rect"]  # the one of Stage's own toolbar

    select_by_search(desktop, BARREL)
    normal = desktop.picture("normal_object", icon())
    desktop.click(button("Convert to virtual object"))
    desktop.until("a question", lambda s: window_of(s, MESSAGE))
    portrait(desktop, MESSAGE, "convert_question")
    press_and_close(desktop, MESSAGE, "Yes")
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
    choose_at(desktop, on_row(desktop, position_row(desktop, BOAT_ROW)), "Export")
    choose_file(desktop, "Save As", session.motion.with_suffix(""), "Save")
    check(session.motion.stat().st_size > 4, f"{session.motion.name} holds more than the kind of its keys")


def open_other_level(desktop, session):
    saved(desktop, by_button)
    desktop.key("ctrl+o")
    opens(desktop, "Open level")
    choose_file(desktop, "Open level", session.other, "Open")
    desktop.until("the other level", lambda s: s.get("film") == "" and "objects" in s)
    desktop.level = session.other


def import_motion(desktop, session):
    desktop.shown_seconds = 10.0
    session.film = film_is_added(desktop)
    count_rows(desktop, "level and sun", 2)
    actor(desktop, SAILOR)
    choose_at(desktop, on_row(desktop, position_row(desktop, 2)), "Import")
    choose_file(desktop, "Open", session.motion, "Open")
    stands(desktop, SAILOR, 2.5, session.first)
    stands(desktop, SAILOR, 4.0, session.last)
    saved(desktop, by_button)


def opened_again(desktop, session):
    level_opens(desktop)
    panel_opens(desktop)
    film_opens_in_scenario(desktop, session.film)
    stands(desktop, SAILOR, 2.5, session.first)
    stands(desktop, SAILOR, 4.0, session.last)
    desktop.picture("motion_in_another_level")


STEPS = [boat_gets_keys, movie_frame, settings, adjust_time, filter_keys, looks_of_keys, filter_actors, convert, lights,
         light_gets_a_colour, cameras, track_parameters, camera_parameters, add_camera_track, attach, change_actor,
         export, open_other_level, import_motion]


def main():
    arguments = arguments_of(__doc__, "out/dialogs").parse_args()
    stage, pictures = arguments.stage, arguments.screenshots
    with work_folder() as work:
        first, other = (copy_of(arguments.level, work / name) for name in ("first", "other"))
        session = Session(work, other)
        with Desktop(stage, first, work / "one", pictures) as desktop:
            do_all(desktop, [level_opens])
            do_all(desktop, STEPS, desktop, session)
        with Desktop(stage, other, work / "two", pictures / "opened_again") as desktop:
            do_all(desktop, [opened_again], desktop, session)


if __name__ == "__main__":
    main()
