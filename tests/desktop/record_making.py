#!/usr/bin/env python3
"""Makes a scene and a film of 20 seconds with two characters from an empty level, with real mouse and keys, and takes steps
back on the way. Saves, opens it in another Stage, renders it, and looks for both characters in the pictures.

    python3 tests/desktop/record_making.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

The sample level gives the models and sounds.
"""

import shutil
import subprocess
import time

from desktop import Desktop, check, find
from dialogs import accept, answer_file, enter_colour, opens, opens_with, press, type_over
from level import REDO, UNDO, expect_status, near, place_of, saved
from menus import choose, choose_at
from object_list import select_both, select_in_list
from opening import film_is_made, film_opens_in_scenario, panel_opens
from runner import arguments_of, do_all, work_folder
from timeline import (CAMERA_ROW, LEVEL_ROW, animate_on, camera_frame, empty_place, go_to, key_place, plays, press_name,
                      stands_still, unfold)
from views import attach_to_film, drag_handle, focus, orbit

FILM, FILM_SECONDS = "Meeting", 20.0
SAILOR, MASTER = "sailor", "harbour_master"
PLANE, BOX, LIGHT = "Plane", "Box", "Light"
IMPORT = "Import models and sounds"
GRASS, BRICK = "#4f7a3a", "#a8543a"
LEAST_UNDOS = 10
NEXT_ID = 16  # where that number stands in the file, with 4 bytes
RENDER_RATE = 2  # pictures of a second
RENDER_SIZE = "640x360"
LEAST_PIXELS = 150  # of a character, in a rendered picture
LEAST_WAY = 20  # pixels, in ten seconds


class Making:
    """The session: the desktop, where the level is, and what has been taken back so far."""

    def __init__(self, arguments, work):
        self.stage, self.work = arguments.stage, work
        self.assets = arguments.level.resolve().parent
        self.level = work / "meeting" / "meeting.level"
        self.level.parent.mkdir()
        self.desktop = self.ends = None
        self.undos = 0

    def level_without(self, name):
        return self.level.with_name(f"without_{name}.level")

    def step(self, name, do, *what):
        """Does something, takes it back, does it again. Saves say whether all is as it was each time."""
        before = content(self.desktop)
        do(self.desktop, *what)
        self.desktop.picture(name)
        after = content(self.desktop)
        check(after != before, f"{name}: a save holds it")
        self.desktop.key(UNDO)
        expect_status(self.desktop, "Undone: ")
        self.undos += 1
        self.desktop.picture(name + "_undone")
        check(content(self.desktop) == before, f"{name}: after the undo a save holds what it held before")
        self.desktop.key(REDO)
        expect_status(self.desktop, "Redone: ")
        check(content(self.desktop) == after, f"{name}: after the redo a save holds it again")


# Hands


def content(desktop):
    """What a save holds but for the number that the next object gets: what was given away once is not given again."""
    level = saved(desktop)
    return level[:NEXT_ID] + level[NEXT_ID + 4:]


def enter(desktop, name, number):
    """Types into a field of the panel Properties."""
    desktop.click(desktop.field(name)["rect"])
    desktop.type_over(number)
    desktop.key("Return")
    time.sleep(0.15)


def put(desktop, name, x, y, z):
    select_in_list(desktop, name)
    for axis, number in zip("XYZ", (x, y, z)):
        enter(desktop, "Position" + axis, number)
    desktop.until(f"{name} stands there", lambda s: s["objects"][name] == [x, y, z])


def create(desktop, what):
    choose(desktop, "c", what)
    desktop.until(f"{what} is there", lambda s: what in s["objects"])


def colour(desktop, code):
    """Of the selected shape."""
    desktop.click_button("Choose a colour")
    enter_colour(desktop, "Colour", code)
    accept(desktop, "Colour")


# The scene


def save_new_level(making):
    desktop = making.desktop
    desktop.until("the window", lambda s: s["views"])
    check(desktop.look()["objects"] == {}, "the level is empty")
    desktop.picture("empty")
    choose(desktop, "f", "Save as...")
    answer_file(desktop, "Save level", str(making.level))
    desktop.until("the level is saved", lambda _: making.level.exists())
    desktop.level = making.level


def ground(making):
    making.step("ground", create, PLANE)
    desktop = making.desktop
    enter(desktop, "ShapeWidth", "30m")
    enter(desktop, "ShapeDepth", "20m")
    put(desktop, PLANE, 0, 0, 0)
    making.step("ground_green", colour, GRASS)


def wall(making):
    desktop = making.desktop
    create(desktop, BOX)
    for side, size in (("Width", "6m"), ("Height", "1.2m"), ("Depth", "0.3m")):
        enter(desktop, "Shape" + side, size)
    colour(desktop, BRICK)
    put(desktop, BOX, 0, 0, -500)
    desktop.click_button("Move")
    making.step("wall_moved", lambda d: drag_handle(d, 2, 60))


def characters(making):
    desktop = making.desktop
    paths = " ".join(f'"{making.assets / "models" / (name + ".glb")}"' for name in (SAILOR, MASTER))

    def import_models(_):
        desktop.key("ctrl+i")
        answer_file(desktop, IMPORT, paths)
        desktop.until("both are there", lambda s: {SAILOR, MASTER} <= set(s["objects"]))
    making.step("imported", import_models)
    for name, x in ((SAILOR, -350), (MASTER, 350)):
        put(desktop, name, x, 0, 0)
    making.step("turned", lambda d: enter(d, "RotationY", -90))
    select_in_list(desktop, SAILOR)
    enter(desktop, "RotationY", 90)


def light(making):
    making.step("light", create, LIGHT)
    put(making.desktop, LIGHT, 0, 300, 150)


def look_for_begin(making):
    desktop = making.desktop
    select_both(desktop, SAILOR, MASTER)
    focus(desktop)
    desktop.picture("scene")


# The film


def new_film(making):
    making.step("new_film", film_is_made, FILM)
    making.desktop.until("the film is open", lambda s: s["film"] == FILM)


def length(making):
    def settings(desktop):
        choose_at(desktop, empty_place(desktop), "Settings")
        opens(desktop, "Settings")
        for number in (1, 2):
            type_over(desktop, "Settings", number, "20")
        accept(desktop, "Settings")
    making.step("length", settings)
    making.desktop.shown_seconds = FILM_SECONDS


def walk(desktop, name, seconds, handle, pixels):
    animate_on(desktop)
    select_in_list(desktop, name)
    go_to(desktop, seconds)
    before = place_of(desktop, name)
    drag_handle(desktop, handle, pixels)
    desktop.until(f"{name} has gone on", lambda s: s["objects"][name] != before)


def camera_all_the_time(making):
    """The new film's camera key ends where the film ended when it was made."""
    desktop = making.desktop
    unfold(desktop, LEVEL_ROW)

    def duration(_):
        choose_at(desktop, key_place(desktop, LEVEL_ROW + 1, 5.0), "Set duration")
        title = opens_with(desktop, "uration")
        type_over(desktop, title, 0, "20")
        accept(desktop, title)
    making.step("camera_key", duration)
    unfold(desktop, LEVEL_ROW)


def motion(making):
    making.step("sailor_walks", walk, SAILOR, 8.0, 0, 75)
    making.step("master_walks", walk, MASTER, 12.0, 0, -60)
    making.step("sailor_walks_on", walk, SAILOR, 18.0, 2, 50)


def animations(making):
    desktop = making.desktop
    for name in (SAILOR, MASTER):
        select_in_list(desktop, name)
        go_to(desktop, 0.0)

        def add(_):
            choose(desktop, "i", "Add key at the cursor", "Animation...")
            title = opens_with(desktop, "nimation")
            press(desktop, title, "Walk")
            time.sleep(0.5)
            desktop.picture("animation_browser")
            accept(desktop, title)
        making.step(f"{name}_steps", add)


def speech(making):
    desktop = making.desktop
    desktop.key("ctrl+i")
    answer_file(desktop, IMPORT, str(making.assets / "sounds" / "sailor_hello.wav"))
    copies = list(making.level.parent.rglob("sailor_hello.wav"))
    check(len(copies) == 1, "the sound is in the level's folder")
    select_in_list(desktop, SAILOR)
    go_to(desktop, 9.0)

    def add(_):
        choose(desktop, "i", "Add key at the cursor", "Speech...")
        answer_file(desktop, opens_with(desktop, "Open"), str(copies[0]))
    making.step("speech", add)


def camera_moves(making):
    desktop = making.desktop
    press_name(desktop, CAMERA_ROW)
    time.sleep(0.3)
    go_to(desktop, 20.0)
    orbit(desktop, 160, -30)
    making.step("camera_frame", camera_frame)


def play(making):
    desktop = making.desktop
    attach_to_film(desktop)
    go_to(desktop, 0.0)
    desktop.key("ctrl+Return")
    plays(desktop)
    for number in range(3):
        time.sleep(1.5)
        desktop.picture(f"playing_{number + 1}")
    desktop.key("space")
    stands_still(desktop)
    saved(desktop)
    making.ends = ends_of_the_film(desktop)
    check(making.undos >= LEAST_UNDOS, f"{making.undos} steps were taken back")


# Afterwards


def ends_of_the_film(desktop):
    """Where both are at the start and at the end of the film, as the window Scenario shows it."""
    ends = []
    for button in ("Move to begin of the movie", "Move to end of the movie"):
        desktop.click_button(button)
        time.sleep(0.4)
        ends += [place_of(desktop, name) for name in (SAILOR, MASTER)]
    return ends


def levels_without_each(making):
    """Saves a level without each of the two, for comparison."""
    desktop = making.desktop
    desktop.until("the level", lambda s: SAILOR in s.get("objects", {}))
    for name in (SAILOR, MASTER):
        select_in_list(desktop, name)
        x, y, _, height = desktop.button("Visible")["rect"]
        desktop.press((x + 8, y + height / 2))
        desktop.until("it is hidden", lambda s: not find(s["buttons"], "Visible")["checked"])
        saved(desktop)
        shutil.copy(making.level, making.level_without(name))
        desktop.key(UNDO)
        expect_status(desktop, f"Undone: Hide {name}")
    saved(desktop)


def both_move_as_they_did(making):
    desktop = making.desktop
    panel_opens(desktop, FILM)
    film_opens_in_scenario(desktop, FILM)
    desktop.picture("film")
    ends = ends_of_the_film(desktop)
    check(all(near(*places) for places in zip(making.ends, ends, strict=True)), f"{ends}, before it was {making.ends}")
    desktop.picture("film_at_its_end")


def render(stage, level, folder):
    done = subprocess.run([str(stage), "--render", str(level), "--film", FILM, "--out", str(folder), "--fps",
                           str(RENDER_RATE), "--size", RENDER_SIZE], capture_output=True, text=True, timeout=300)
    check(done.returncode == 0, f"the film is rendered: {done.stderr}")
    return sorted(folder.glob("*.png"))


def where(picture, without):
    """Number of pixels that differ from the picture without somebody, and the column of their middle."""
    done = subprocess.run(["compare", "-metric", "AE", "-fuzz", "3%", "-compose", "src", "-highlight-color", "white",
                           "-lowlight-color", "black", str(picture), str(without), "pgm:-"], capture_output=True, timeout=60)
    head, size, most, pixels = done.stdout.split(b"\n", 3)
    width = int(size.split()[0])
    lit = [i % width for i, value in enumerate(pixels) if value > 127]
    return len(lit), sum(lit) / max(1, len(lit))


def film_shows_both(making):
    whole = render(making.stage, making.level, making.work / "frames")
    check(len(whole) == FILM_SECONDS * RENDER_RATE, f"20 seconds are {len(whole)} pictures")
    for number, picture in enumerate(whole):
        if number % (2 * RENDER_RATE) == 0:
            shutil.copy(picture, making.desktop.screenshots.parent / f"film_{number // RENDER_RATE:02d}s.png")
    for name in (SAILOR, MASTER):
        without = render(making.stage, making.level_without(name), making.work / f"without_{name}")
        found = [where(whole[i], without[i]) for i in (0, len(whole) // 2, len(whole) - 1)]
        print(f"        {name}: pixels and column at 0, 10 and 20 s: {found}")
        check(all(pixels > LEAST_PIXELS for pixels, _ in found), f"{name} is in the pictures: {found}")
        check(abs(found[0][1] - found[1][1]) > LEAST_WAY, f"{name} moves: {found}")


STEPS = [save_new_level, ground, wall, characters, light, look_for_begin, new_film, length, camera_all_the_time, motion,
         animations, speech, camera_moves, play]
STEPS_IN_ANOTHER_STAGE = [levels_without_each, both_move_as_they_did, film_shows_both]


def main():
    arguments = arguments_of(__doc__, "out/making").parse_args()
    stage, screenshots = arguments.stage, arguments.screenshots
    with work_folder() as work:
        making = Making(arguments, work)
        with Desktop(stage, None, work / "first", screenshots) as making.desktop:
            do_all(making.desktop, STEPS, making)
        print(f"        {making.undos} steps taken back and done again")
        with Desktop(stage, making.level, work / "second", screenshots / "reloaded") as making.desktop:
            do_all(making.desktop, STEPS_IN_ANOTHER_STAGE, making)


if __name__ == "__main__":
    main()
