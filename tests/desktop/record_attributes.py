#!/usr/bin/env python3
"""Fills keys with what they hold by mouse and keyboard alone, plays, saves and opens the film again, in pictures.

    python3 tests/desktop/record_attributes.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

A new film shows only rows of kinds that have keys, so the kinds that a new actor lacks are worked on in the sample film.
"""

import shutil
import sys
import tempfile
import time
from pathlib import Path

import record_session
from check_desktop import is_moving, panel_opens, poses, rows, scenario
from desktop import Desktop, Failure, arguments_of, check, different_pixels, find
from record_session import empty_place, go_to, key_place, menu_at, new_film, unfold

ACTOR, FILM = "Sailor", "Intro"
WINDOW = "Key attributes"
SAMPLE_SECONDS = 24.0
SPEECH = "Ahoy, Müllers Käpt’n — שלום!"
ROW_HEIGHT = 20  # of a line of the window
LIST_EDGE = 9  # from the window's edge to its first line

# Rows below their track's own, in the sample film
ANIMATION, SPEECH_ROW, SOUND = 4, 5, 6
CAMERA_CUTS, SEQUENCES = 1, 5
COLOR = 2


def window_of(state, title):
    return next((w["rect"] for w in state["windows"] if w["title"] == title), None)


def attributes(desktop):
    return desktop.until("the attributes window", lambda s: window_of(s, WINDOW))


def window_picture(desktop, name):
    """What the attributes window says, without the mouse over it."""
    left, top, width, height = attributes(desktop)
    desktop.move(left + width / 2, top + height - 20)
    return desktop.picture(name, (left, top, width, height))


def inside(desktop, title, text):
    """The last entry or button of that text in the window of that title: lists above it in a popup come first."""
    def look(state):
        window = window_of(state, title)
        found = [e for e in state["items"] + state["buttons"] if e["text"] == text and window and
                 window[0] <= e["rect"][0] < window[0] + window[2] and
                 window[1] <= e["rect"][1] < window[1] + window[3]]
        return found[-1] if found else None
    return desktop.until(f"'{text}' in '{title}'", look)


def open_key(desktop, order, seconds):
    desktop.move(*key_place(desktop, order, seconds))
    desktop.x("click", "--repeat", 2, "--delay", 60, 1)
    attributes(desktop)
    time.sleep(0.3)


def press_line(desktop, line):
    left, top, _, _ = attributes(desktop)
    desktop.move(left + 70, top + LIST_EDGE + ROW_HEIGHT * (line + 0.5))
    desktop.x("click", 1)
    time.sleep(0.2)


def type_text(desktop, text):
    desktop.x("type", "--delay", 20, "--", text)
    time.sleep(0.2)


def enter(desktop):
    """From a line of the window: writes the key and closes."""
    desktop.key("Return")
    desktop.until("the window closes", lambda s: not window_of(s, WINDOW))


def browse(desktop, line):
    """Presses the "..." of a line; the title of what it opens."""
    press_line(desktop, line)
    before = {w["title"] for w in desktop.look()["windows"]}
    desktop.click(desktop.button("...")["rect"])
    title = desktop.until("a browser", lambda s: next(
        (w["title"] for w in s["windows"] if w["title"] and w["title"] not in before), None))
    time.sleep(0.5)
    return title


def closes(desktop, title):
    desktop.until(f"'{title}' closes", lambda s: not window_of(s, title))
    time.sleep(0.3)


def tree_entry(desktop, name):
    """Turns the wheel over the tree of objects until the name is whole in it."""
    for _ in range(20):
        entries = [e for e in desktop.look()["items"] if e["rect"][0] < 400]
        entry = find(entries, name)
        if entry and entry["rect"][3] > 15:
            return entry["rect"]
        left, top, width, _ = entries[0]["rect"]
        desktop.move(left + width / 2, top + 30)
        desktop.x("click", "--repeat", 2, 5)
        time.sleep(0.1)
    raise Failure(f"the tree has no {name}")


def roots(desktop):
    """The rows of tracks, from the top: which of all rows they are."""
    return [i for i, r in enumerate(rows(desktop.look())) if r["children"]]


def opened_row(desktop):
    """The row of the track that is unfolded."""
    return next(i for i, r in enumerate(rows(desktop.look())) if r["children"] and r["children"][0]["text"] == "-")


def open_actor(desktop):
    """Unfolds the actor's row and turns the wheel until there is room for all rows below it."""
    fold_all(desktop)
    unfold(desktop, roots(desktop)[-4])
    for _ in range(20):
        if opened_row(desktop) <= 8:
            return
        desktop.move(*key_place(desktop, opened_row(desktop), 9.0))
        desktop.x("click", 5)
        time.sleep(0.2)
    raise Failure("the rows can't be scrolled")


def to_top(desktop):
    """Turns the wheel until the level's row is at the top."""
    left, top, width, height = rows(desktop.look())[0]["rect"]
    desktop.move(left + width - 60, top + height / 2)
    desktop.x("click", "--repeat", 20, "--delay", 20, 4)
    time.sleep(0.3)


def fold_all(desktop):
    to_top(desktop)
    while any(not r["children"] for r in rows(desktop.look())):
        unfold(desktop, opened_row(desktop))
        to_top(desktop)


def height_of(desktop):
    return poses(desktop)[ACTOR][1]


def taller_window(desktop):
    """Pulls up the scenario window's upper edge."""
    left, top, width, _ = scenario(desktop.look())["frame"]
    desktop.drag((left + width / 2, top - 3), (left + width / 2, 330))
    desktop.until("the scenario window is taller", lambda s: scenario(s)["frame"][1] < 365)


# A new film


def actor(desktop):
    desktop.click(tree_entry(desktop, ACTOR))
    desktop.until(f"{ACTOR} is selected", lambda s: s["selected"] == [ACTOR])
    desktop.click(desktop.button("Focus")["rect"])
    menu_at(desktop, empty_place(desktop), "Add actors")
    desktop.until("its row", lambda s: len(rows(s)) == 3)
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
    left, top, _, _ = attributes(desktop)
    desktop.move(left + 250, top + LIST_EDGE + ROW_HEIGHT * 1.5)
    for notch in range(1, 6):
        desktop.x("click", 4)
        desktop.until("the actor follows", lambda _: height_of(desktop) == before + notch)
    desktop.picture("height_turned")
    desktop.x("click", 5)
    desktop.until("the actor follows", lambda _: height_of(desktop) == before + 4)


def enter_writes(desktop):
    press_line(desktop, 1)
    type_text(desktop, "30")
    enter(desktop)
    go_to(desktop, 1.0)
    go_to(desktop, 0.0)
    check(abs(height_of(desktop) - 30) < 0.001, "Enter has written what was typed")


def next_and_prev(desktop):
    menu_at(desktop, key_place(desktop, 3, 4.0), "Add Key")
    open_key(desktop, 3, 0.03)
    first = window_picture(desktop, "first_key")
    check(desktop.button("Next")["enabled"] and not desktop.button("Prev")["enabled"], "the first of two keys")
    press_line(desktop, 1)
    type_text(desktop, "70")
    desktop.click(desktop.button("Next")["rect"])
    desktop.until("the second key", lambda s: find(s["buttons"], "Prev")["enabled"])
    check(not desktop.button("Next")["enabled"], "there is no third key")
    desktop.picture("next")
    desktop.click(desktop.button("Prev")["rect"])
    desktop.until("the first key", lambda s: find(s["buttons"], "Next")["enabled"])
    check(different_pixels(first, window_picture(desktop, "prev")) > 0, "Next has written what was typed")


def escape_hides(desktop):
    press_line(desktop, 1)
    desktop.key("Escape")
    desktop.until("the window hides", lambda s: not window_of(s, WINDOW))


# The sample film


def sample_film(desktop):
    desktop.click(desktop.item(FILM)["rect"])
    desktop.until("the film is open", lambda s: s["film"] == FILM)
    taller_window(desktop)
    desktop.until("all tracks of the film fit in", lambda _: len(roots(desktop)) == 18)
    desktop.picture("sample_film")


def sound_file(desktop, line, name, picture):
    """Chooses a file of the level's in the dialog of a line, having looked at its wave and played it."""
    title = browse(desktop, line)
    type_text(desktop, str(Path(desktop.level).parent / "sounds") + "/")
    desktop.key("Return")
    time.sleep(0.5)
    desktop.click(inside(desktop, title, "Open")["rect"])  # puts the list of completions away
    time.sleep(0.3)
    desktop.click(inside(desktop, title, name)["rect"])
    desktop.until("it can be played", lambda _: inside(desktop, title, "Play")["enabled"])
    desktop.click(inside(desktop, title, "Play")["rect"])
    inside(desktop, title, "Stop")
    desktop.picture(picture, window_of(desktop.look(), title))
    desktop.click(inside(desktop, title, "Open")["rect"])
    closes(desktop, title)


def speech(desktop):
    open_actor(desktop)
    order = opened_row(desktop) + SPEECH_ROW
    menu_at(desktop, key_place(desktop, order, 5.0), "Add Key")
    open_key(desktop, order, 5.2)
    sound_file(desktop, 0, "sailor_hello.wav", "speech_file")
    press_line(desktop, 1)
    type_text(desktop, SPEECH)
    desktop.picture("speech_text")
    enter(desktop)
    desktop.picture("speech_key")


def sound(desktop):
    order = opened_row(desktop) + SOUND
    menu_at(desktop, key_place(desktop, order, 0.5), "Add Key")
    open_key(desktop, order, 0.7)
    sound_file(desktop, 0, "gull.wav", "sound_file")
    press_line(desktop, 1)
    desktop.picture("sound_values")
    enter(desktop)


def animation(desktop):
    order = opened_row(desktop) + ANIMATION
    menu_at(desktop, key_place(desktop, order, 2.0), "Remove key")
    menu_at(desktop, key_place(desktop, order, 0.3), "Add Key")
    open_key(desktop, order, 0.5)
    title = browse(desktop, 1)
    desktop.click(inside(desktop, title, "Wave")["rect"])
    time.sleep(0.6)
    desktop.picture("animation_browser", window_of(desktop.look(), title))
    desktop.key("Return")
    closes(desktop, title)


def mesh_element(desktop):
    title = browse(desktop, 0)
    desktop.click(inside(desktop, title, "Bip01 R Hand")["rect"])
    time.sleep(0.4)
    desktop.picture("element_browser", window_of(desktop.look(), title))
    desktop.key("Return")
    closes(desktop, title)
    window_picture(desktop, "animation_values")
    press_line(desktop, 2)
    enter(desktop)
    desktop.picture("row_of_the_element")


def effect(desktop):
    fold_all(desktop)
    unfold(desktop, 0)
    menu_at(desktop, key_place(desktop, SEQUENCES, 2.0), "Add Key")
    open_key(desktop, SEQUENCES, 2.2)
    title = browse(desktop, 0)
    type_text(desktop, "Fire")
    time.sleep(0.7)
    desktop.picture("effect_browser", window_of(desktop.look(), title))
    desktop.key("Return")
    closes(desktop, title)
    window_picture(desktop, "effect_values")
    press_line(desktop, 3)
    enter(desktop)


def add_camera(desktop, name):
    menu_at(desktop, key_place(desktop, 0, 9.0)[:1] + (empty_place(desktop)[1],), "Add camera")
    desktop.key("ctrl+a")
    type_text(desktop, name)
    desktop.picture("add_camera")
    desktop.key("Return")
    time.sleep(0.6)


def camera_cuts(desktop):
    fold_all(desktop)
    before = len(roots(desktop))
    for name in ("Cut one", "Cut two"):
        add_camera(desktop, name)
    fold_all(desktop)
    check(len(roots(desktop)) > before, "the cameras have rows, of which the window may not hold all")
    unfold(desktop, 0)
    menu_at(desktop, key_place(desktop, CAMERA_CUTS, 1.0), "Remove key")
    for seconds, name in ((0.2, "Cut one"), (5.6, "Cut two")):
        menu_at(desktop, key_place(desktop, CAMERA_CUTS, seconds), "Add Key")
        open_key(desktop, CAMERA_CUTS, seconds + 0.4)
        title = browse(desktop, 0)
        desktop.click(inside(desktop, title, name)["rect"])
        desktop.picture("choose_camera")
        desktop.click(inside(desktop, title, "OK")["rect"])
        closes(desktop, title)
        press_line(desktop, 1)
        enter(desktop)
    desktop.picture("camera_cuts")


def view_picture(desktop, name):
    return desktop.picture(name, desktop.look()["views"][0]["rect"])


def color_fade(desktop):
    fold_all(desktop)
    go_to(desktop, 3.0)
    before = view_picture(desktop, "before_the_fade")
    unfold(desktop, 1)
    for seconds in (3.0, 6.0):
        menu_at(desktop, key_place(desktop, 1 + COLOR, seconds), "Add Key")
    open_key(desktop, 1 + COLOR, 3.0)
    title = browse(desktop, 0)
    desktop.key("alt+h")
    desktop.key("ctrl+a")
    type_text(desktop, "#ff4020")
    desktop.picture("color_dialog", window_of(desktop.look(), title))
    desktop.key("Return")
    closes(desktop, title)
    press_line(desktop, 0)
    window_picture(desktop, "color_values")
    enter(desktop)
    go_to(desktop, 6.0)
    go_to(desktop, 3.0)
    desktop.picture("color_fade")
    check(different_pixels(before, view_picture(desktop, "red_light")) > 1000, "the light has the chosen colour")


def play(desktop):
    go_to(desktop, 0.0)
    desktop.click(desktop.button("Play movie")["rect"])
    desktop.until("the film plays", lambda _: is_moving(desktop))
    for name in ("playing_early", "playing_middle", "playing_late"):
        desktop.picture(name)
        time.sleep(1.5)
    desktop.click(desktop.button("Stop movie")["rect"])
    desktop.until("the film stands still", lambda _: not is_moving(desktop))


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
    below = opened_row(desktop) + 1  # the element has a row of its own now
    for name, order, seconds in (("animation", below + ANIMATION - 1, 0.5), ("speech", below + SPEECH_ROW, 5.2)):
        open_key(desktop, order, seconds)
        pictures.append(window_picture(desktop, f"{prefix}_{name}"))
    press_line(desktop, 1)
    enter(desktop)
    return pictures


STEPS = [new_film, actor, window_opens, wheel_turns_the_height, enter_writes, next_and_prev, escape_hides, sample_film,
         speech, sound, animation, mesh_element, effect, camera_cuts, color_fade, play]


def run(desktop, steps):
    for step in steps:
        try:
            step(desktop)
        except Failure as error:
            desktop.picture("failed")
            print(f"FAILED  {step.__name__}: {error}")
            print(Path(desktop.log.name).read_text()[-2000:])
            return False
        print(f"ok      {step.__name__}", flush=True)
    return True


def main():
    arguments = arguments_of(__doc__, "out/attributes").parse_args()
    stage, pictures = Path(arguments.stage).resolve(), Path(arguments.screenshots)
    kept = []

    def save(desktop):
        kept.extend(look_at_keys(desktop, "kept"))
        file = Path(desktop.level)
        before = file.stat().st_mtime_ns
        desktop.click(desktop.button("Save")["rect"])
        desktop.until("the level is saved", lambda _: file.stat().st_mtime_ns != before)

    def opened_again(desktop):
        desktop.until("the level", lambda s: len(s.get("objects", {})) > 5)
        panel_opens(desktop)
        desktop.click(desktop.item(FILM)["rect"], times=2)
        desktop.until("the scenario window", lambda s: (scenario(s) or {}).get("shown"))
        taller_window(desktop)
        record_session.FILM_SECONDS = SAMPLE_SECONDS  # which are all shown, unlike behind a shorter film
        again = look_at_keys(desktop, "again")
        # The last is the speech, whose sound is named from the level's folder once it is saved.
        for before, after in zip(kept[:-1], again[:-1], strict=True):
            check(different_pixels(before, after) == 0, f"{after.name} shows what was saved, as {before.name} did")

    with tempfile.TemporaryDirectory(prefix="films_attributes_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(arguments.level).parent, copy)
        level = copy / Path(arguments.level).name
        with Desktop(stage, level, Path(work) / "first", pictures) as desktop:
            if not run(desktop, [*STEPS, save]):
                return 1
        with Desktop(stage, level, Path(work) / "second", pictures / "opened_again") as desktop:
            if not run(desktop, [opened_again]):
                return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
