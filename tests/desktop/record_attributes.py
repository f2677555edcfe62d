#!/usr/bin/env python3
"""Fills keys with what they hold by mouse and keyboard alone, plays, saves and opens the film again, in pictures.

    python3 tests/desktop/record_attributes.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

A new film shows only rows of kinds that have keys, so the kinds that a new actor lacks are worked on in the sample film.
"""

import time
from pathlib import Path

from desktop import Desktop, check, different_pixels, find
from dialogs import accept, enter_colour, inside, press, press_and_close, type_text, window_of
from key_window import attributes, browse, enter, line_place, open_key, press_line, window_is_closed, window_picture
from level import by_button, place_of, saved
from menus import choose_at
from object_list import select_by_wheel
from opening import FILM, film_opens, film_opens_in_scenario, level_opens, new_film, panel_opens
from runner import arguments_of, copy_of, do_all, work_folder
from timeline import (count_rows, empty_place, fold_all, go_to, key_place, plays_in_pictures, rows, scroll_until_room,
                      stands_still, taller_window, tracks, unfold, unfolded_row)
from views import focus, view_picture

ACTOR = "Sailor"
SAMPLE_SECONDS = 24.0  # of the sample film, which are all shown
SPEECH = "Ahoy, Müllers Käpt’n — שלום!"
ROWS_BELOW = 8  # there is room for all rows of the actor if its own stands no further down

# Rows below their track's own, in the sample film
ANIMATION, SPEECH_ROW, SOUND = 4, 5, 6
CAMERA_CUTS, SEQUENCES = 1, 5
COLOR = 2


def open_actor(desktop):
    """Unfolds the actor's row and turns the wheel until there is room for all rows below it."""
    fold_all(desktop)
    unfold(desktop, tracks(desktop.look())[-4])
    scroll_until_room(desktop, ROWS_BELOW)


def height_of(desktop):
    return place_of(desktop, ACTOR)[1]


# A new film


def actor(desktop):
    select_by_wheel(desktop, ACTOR)
    focus(desktop)
    choose_at(desktop, empty_place(desktop), "Add actors")
    count_rows(desktop, "with its row", 3)
    unfold(desktop, 2)
    check(len(rows(desktop.look())) == 6, "a new actor has keys of position, rotation and scale")


def window_opens(desktop):
    open_key(desktop, 3, 0.03)
    desktop.picture("window_opens")
    left, top, _, _ = attributes(desktop)
    desktop.drag((left + 200, top - 12), (1350, 520))  # off the rows
    time.sleep(0.3)


def wheel_turns_the_height(desktop):
    before = height_of(desktop)
    press_line(desktop, 1)
    desktop.picture("height_under_edit")
    number = line_place(desktop, 1, 250)
    for notch in range(1, 6):
        desktop.wheel(number, 1)
        desktop.until("the actor follows", lambda _: height_of(desktop) == before + notch)
    desktop.picture("height_turned")
    desktop.wheel(number, -1)
    desktop.until("the actor follows", lambda _: height_of(desktop) == before + 4)


def enter_writes(desktop):
    press_line(desktop, 1)
    type_text(desktop, "30")
    enter(desktop)
    go_to(desktop, 1.0)
    go_to(desktop, 0.0)
    check(abs(height_of(desktop) - 30) < 0.001, "Enter has written what was typed")


def next_and_prev(desktop):
    choose_at(desktop, key_place(desktop, 3, 4.0), "Add Key")
    open_key(desktop, 3, 0.03)
    first = window_picture(desktop, "first_key")
    check(desktop.button("Next")["enabled"] and not desktop.button("Prev")["enabled"], "the first of two keys")
    press_line(desktop, 1)
    type_text(desktop, "70")
    desktop.click_button("Next")
    desktop.until("the second key", lambda s: find(s["buttons"], "Prev")["enabled"])
    check(not desktop.button("Next")["enabled"], "there is no third key")
    desktop.picture("next")
    desktop.click_button("Prev")
    desktop.until("the first key", lambda s: find(s["buttons"], "Next")["enabled"])
    check(different_pixels(first, window_picture(desktop, "prev")) > 0, "Next has written what was typed")


def escape_hides(desktop):
    press_line(desktop, 1)
    desktop.key("Escape")
    window_is_closed(desktop)


# The sample film


def sample_film(desktop):
    film_opens(desktop)
    desktop.shown_seconds = SAMPLE_SECONDS
    taller_window(desktop)
    desktop.until("all tracks of the film fit in", lambda s: len(tracks(s)) == 18)
    desktop.picture("sample_film")


def sound_file(desktop, line, name, picture):
    """Chooses a file of the level's in the dialog of a line, having looked at its wave and played it."""
    title = browse(desktop, line)
    type_text(desktop, str(Path(desktop.level).parent / "sounds") + "/")
    desktop.key("Return")
    time.sleep(0.5)
    press(desktop, title, "Open")  # puts the list of completions away
    time.sleep(0.3)
    press(desktop, title, name)
    desktop.until("it can be played", lambda _: inside(desktop, title, "Play")["enabled"])
    press(desktop, title, "Play")
    inside(desktop, title, "Stop")
    desktop.picture(picture, window_of(desktop.look(), title))
    press_and_close(desktop, title, "Open")


def speech(desktop):
    open_actor(desktop)
    order = unfolded_row(desktop) + SPEECH_ROW
    choose_at(desktop, key_place(desktop, order, 5.0), "Add Key")
    open_key(desktop, order, 5.2)
    sound_file(desktop, 0, "sailor_hello.wav", "speech_file")
    press_line(desktop, 1)
    type_text(desktop, SPEECH)
    desktop.picture("speech_text")
    enter(desktop)
    desktop.picture("speech_key")


def sound(desktop):
    order = unfolded_row(desktop) + SOUND
    choose_at(desktop, key_place(desktop, order, 0.5), "Add Key")
    open_key(desktop, order, 0.7)
    sound_file(desktop, 0, "gull.wav", "sound_file")
    press_line(desktop, 1)
    desktop.picture("sound_values")
    enter(desktop)


def animation(desktop):
    order = unfolded_row(desktop) + ANIMATION
    choose_at(desktop, key_place(desktop, order, 2.0), "Remove key")
    choose_at(desktop, key_place(desktop, order, 0.3), "Add Key")
    open_key(desktop, order, 0.5)
    title = browse(desktop, 1)
    press(desktop, title, "Wave")
    time.sleep(0.6)
    desktop.picture("animation_browser", window_of(desktop.look(), title))
    accept(desktop, title)


def mesh_element(desktop):
    title = browse(desktop, 0)
    press(desktop, title, "Bip01 R Hand")
    time.sleep(0.4)
    desktop.picture("element_browser", window_of(desktop.look(), title))
    accept(desktop, title)
    window_picture(desktop, "animation_values")
    press_line(desktop, 2)
    enter(desktop)
    desktop.picture("row_of_the_element")


def effect(desktop):
    fold_all(desktop)
    unfold(desktop, 0)
    choose_at(desktop, key_place(desktop, SEQUENCES, 2.0), "Add Key")
    open_key(desktop, SEQUENCES, 2.2)
    title = browse(desktop, 0)
    type_text(desktop, "Fire")
    time.sleep(0.7)
    desktop.picture("effect_browser", window_of(desktop.look(), title))
    accept(desktop, title)
    window_picture(desktop, "effect_values")
    press_line(desktop, 3)
    enter(desktop)


def add_camera(desktop, name):
    choose_at(desktop, key_place(desktop, 0, 9.0)[:1] + (empty_place(desktop)[1],), "Add camera")
    desktop.key("ctrl+a")
    type_text(desktop, name)
    desktop.picture("add_camera")
    desktop.key("Return")
    time.sleep(0.6)


def camera_cuts(desktop):
    fold_all(desktop)
    before = len(tracks(desktop.look()))
    for name in ("Cut one", "Cut two"):
        add_camera(desktop, name)
    fold_all(desktop)
    check(len(tracks(desktop.look())) > before, "the cameras have rows, of which the window may not hold all")
    unfold(desktop, 0)
    choose_at(desktop, key_place(desktop, CAMERA_CUTS, 1.0), "Remove key")
    for seconds, name in ((0.2, "Cut one"), (5.6, "Cut two")):
        choose_at(desktop, key_place(desktop, CAMERA_CUTS, seconds), "Add Key")
        open_key(desktop, CAMERA_CUTS, seconds + 0.4)
        title = browse(desktop, 0)
        press(desktop, title, name)
        desktop.picture("choose_camera")
        press_and_close(desktop, title, "OK")
        press_line(desktop, 1)
        enter(desktop)
    desktop.picture("camera_cuts")


def color_fade(desktop):
    fold_all(desktop)
    go_to(desktop, 3.0)
    before = view_picture(desktop, "before_the_fade")
    unfold(desktop, 1)
    for seconds in (3.0, 6.0):
        choose_at(desktop, key_place(desktop, 1 + COLOR, seconds), "Add Key")
    open_key(desktop, 1 + COLOR, 3.0)
    title = browse(desktop, 0)
    enter_colour(desktop, title, "#ff4020")
    desktop.picture("color_dialog", window_of(desktop.look(), title))
    accept(desktop, title)
    press_line(desktop, 0)
    window_picture(desktop, "color_values")
    enter(desktop)
    go_to(desktop, 6.0)
    go_to(desktop, 3.0)
    desktop.picture("color_fade")
    check(different_pixels(before, view_picture(desktop, "red_light")) > 1000, "the light has the chosen colour")


def play(desktop):
    go_to(desktop, 0.0)
    plays_in_pictures(desktop, 1.5)
    desktop.click_button("Stop movie")
    stands_still(desktop)


def look_at_keys(desktop, prefix):
    """Pictures of what the keys that were made say."""
    fold_all(desktop)
    unfold(desktop, 0)
    pictures = []
    for name, order, seconds in (("effect", SEQUENCES, 2.4), ("cut_one", CAMERA_CUTS, 0.6),
                                 ("cut_two", CAMERA_CUTS, 6.0)):
        open_key(desktop, order, seconds)
        pictures.append(window_picture(desktop, f"{prefix}_{name}"))
    fold_all(desktop)
    unfold(desktop, 1)
    open_key(desktop, 1 + COLOR, 3.0)
    pictures.append(window_picture(desktop, f"{prefix}_color"))
    open_actor(desktop)
    below = unfolded_row(desktop) + 1  # the element has a row of its own now
    for name, order, seconds in (("animation", below + ANIMATION - 1, 0.5), ("speech", below + SPEECH_ROW, 5.2)):
        open_key(desktop, order, seconds)
        pictures.append(window_picture(desktop, f"{prefix}_{name}"))
    press_line(desktop, 1)
    enter(desktop)
    return pictures


class Kept:
    """What the window said of the keys when the film was saved: a picture each."""

    def __init__(self):
        self.pictures = []


def save(desktop, kept):
    kept.pictures = look_at_keys(desktop, "kept")
    saved(desktop, by_button)


def opened_again(desktop, kept):
    level_opens(desktop)
    panel_opens(desktop)
    film_opens_in_scenario(desktop, FILM)
    taller_window(desktop)
    desktop.shown_seconds = SAMPLE_SECONDS
    again = look_at_keys(desktop, "again")
    # The last is the speech, whose sound is named from the level's folder once it is saved.
    for before, after in zip(kept.pictures[:-1], again[:-1], strict=True):
        check(different_pixels(before, after) == 0, f"{after.name} shows what was saved, as {before.name} did")


STEPS = [level_opens, new_film, actor, window_opens, wheel_turns_the_height, enter_writes, next_and_prev, escape_hides,
         sample_film, speech, sound, animation, mesh_element, effect, camera_cuts, color_fade, play]


def main():
    arguments = arguments_of(__doc__, "out/attributes").parse_args()
    stage, pictures, kept = arguments.stage, arguments.screenshots, Kept()
    with work_folder() as work:
        level = copy_of(arguments.level, work / "level")
        with Desktop(stage, level, work / "first", pictures) as desktop:
            do_all(desktop, STEPS)
            do_all(desktop, [save], desktop, kept)
        with Desktop(stage, level, work / "second", pictures / "opened_again") as desktop:
            do_all(desktop, [opened_again], desktop, kept)


if __name__ == "__main__":
    main()
