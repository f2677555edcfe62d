#!/usr/bin/env python3
"""Makes a scene and a film of 20 seconds with two characters from an empty level, with real mouse and keys, and takes steps
back on the way. Saves, opens it in another Stage, renders it, and looks for both characters in the pictures.

    python3 tests/desktop/record_making.py --stage build/debug/bin/stage --level examples/harbour/harbour.level

The sample level gives the models and sounds.
"""

import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

from check_desktop import at, is_moving, rows, ruler, scenario
from check_undo import REDO, UNDO, choose, expect_status, saved, select_in_list
from desktop import Desktop, Failure, arguments_of, check, find
from record_attributes import closes, inside, type_text, window_of
from record_dialogs import accept, field, fields_in, opens
from record_session import drag_handle, empty_place, menu_at, orbit

FILM, FILM_SECONDS = "Meeting", 20.0
SAILOR, MASTER = "sailor", "harbour_master"
PLANE, BOX, LIGHT = "Plane", "Box", "Light"
LEVEL_ROW, CAMERA_ROW = 0, 2  # the sun is between them
IMPORT = "Import models and sounds"
GRASS, BRICK = "#4f7a3a", "#a8543a"
LEAST_UNDOS = 10
NEXT_ID = 16  # where that number stands in the file, with 4 bytes
RENDER_RATE = 2  # pictures of a second
RENDER_SIZE = "640x360"
LEAST_PIXELS = 150  # of a character, in a rendered picture
LEAST_WAY = 20  # pixels, in ten seconds
NEAR = 0.01  # centimetres, for places that went through a file


class Making:
    """The session: the desktop, where the level is, and what has been taken back so far."""

    def __init__(self, desktop, folder, assets):
        self.desktop, self.assets = desktop, assets
        self.level = folder / "meeting.level"
        self.undos = 0

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
    field = desktop.until(f"the field {name}", lambda s: next((f for f in s["fields"] if f["name"] == name), None))
    desktop.click(field["rect"])
    desktop.key("ctrl+a")
    desktop.x("type", "--delay", 20, "--", number)
    desktop.key("Return")
    time.sleep(0.15)


def type_into(desktop, title, number, text):
    """Over the field of that number in a box, once more if the box was not ready for it yet."""
    for _ in range(3):
        desktop.click(field(desktop, title, number)["rect"])
        desktop.key("ctrl+a")
        type_text(desktop, text)
        time.sleep(0.3)
        if field(desktop, title, number)["text"] == text:
            return
    raise Failure(f"'{title}' does not take '{text}'")


def answer_file(desktop, title, text):
    """Types a path, or several in quotes, into a box for files once that listens."""
    desktop.until(f"'{title}' listens", lambda s: window_of(s, title) and any(
        f["focused"] for f in fields_in(s, title)))
    for _ in range(3):
        desktop.key("ctrl+a")
        type_text(desktop, text)
        if any(f["focused"] and f["text"] == text for f in fields_in(desktop.look(), title)):
            break
    desktop.key("Return")
    time.sleep(0.3)
    if window_of(desktop.look(), title):  # the first press may only put a list of completions away
        desktop.key("Return")
    closes(desktop, title)


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
    desktop.click(desktop.button("Choose a colour")["rect"])
    x, y, width, height = opens(desktop, "Colour")
    field = desktop.until("the field for a code", lambda s: next(
        (f for f in s["fields"] if f["text"].startswith("#") and x < f["rect"][0] < x + width), None))
    desktop.click(field["rect"])
    desktop.key("ctrl+a")
    type_text(desktop, code)
    accept(desktop, "Colour")


def go_to(desktop, seconds):
    rect = ruler(desktop)
    place = at(rect, seconds / FILM_SECONDS)
    desktop.drag((place[0] + (30 if seconds < FILM_SECONDS / 2 else -30), place[1]), place)
    time.sleep(0.2)


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
    desktop.click(desktop.button("Move")["rect"])
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
    select_in_list(desktop, SAILOR)
    item = desktop.item(MASTER)["rect"]
    desktop.x("keydown", "ctrl")
    desktop.click(item)
    desktop.x("keyup", "ctrl")
    desktop.until("both are selected", lambda s: sorted(s["selected"]) == sorted([SAILOR, MASTER]))
    desktop.click(desktop.button("Focus")["rect"])
    time.sleep(0.8)
    desktop.picture("scene")


# The film


def new_film(making):
    def make(desktop):
        choose(desktop, "i", "New film...")
        opens(desktop, "New film")
        type_into(desktop, "New film", 0, FILM)
        desktop.key("Return")
        desktop.until("the film is open", lambda s: s["film"] == FILM and scenario(s) and "Camera 1" in s["status"])
    making.step("new_film", make)
    making.desktop.until("the film is open", lambda s: s["film"] == FILM)


def length(making):
    def settings(desktop):
        menu_at(desktop, empty_place(desktop), "Settings")
        opens(desktop, "Settings")
        for number in (1, 2):
            type_into(desktop, "Settings", number, "20")
        accept(desktop, "Settings")
    making.step("length", settings)


def animate(desktop):
    if not find(desktop.look()["buttons"], "Animate object")["checked"]:
        desktop.click(desktop.button("Animate object")["rect"])
        desktop.until("it is pressed", lambda s: find(s["buttons"], "Animate object")["checked"])


def walk(desktop, name, seconds, handle, pixels):
    animate(desktop)
    select_in_list(desktop, name)
    go_to(desktop, seconds)
    before = desktop.look()["objects"][name]
    drag_handle(desktop, handle, pixels)
    desktop.until(f"{name} has gone on", lambda s: s["objects"][name] != before)


def camera_all_the_time(making):
    """The new film's camera key ends where the film ended when it was made."""
    desktop = making.desktop
    desktop.click(rows(desktop.look())[LEVEL_ROW]["children"][0]["rect"])
    time.sleep(0.3)

    def duration(_):
        x, y, _, height = rows(desktop.look())[LEVEL_ROW + 1]["rect"]
        menu_at(desktop, (at(ruler(desktop), 0.25)[0], y + height / 2), "Set duration")
        title = desktop.until("the box for a number", lambda s: next(
            (w["title"] for w in s["windows"] if "uration" in w["title"]), None))
        type_into(desktop, title, 0, "20")
        accept(desktop, title)
    making.step("camera_key", duration)
    desktop.click(rows(desktop.look())[LEVEL_ROW]["children"][0]["rect"])
    time.sleep(0.3)


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
            title = desktop.until("the browser", lambda s: next(
                (w["title"] for w in s["windows"] if "nimation" in w["title"]), None))
            desktop.click(inside(desktop, title, "Walk")["rect"])
            time.sleep(0.5)
            desktop.picture("animation_browser")
            desktop.key("Return")
            closes(desktop, title)
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
        title = desktop.until("the box for a file", lambda s: next(
            (w["title"] for w in s["windows"] if w["title"].startswith("Open")), None))
        answer_file(desktop, title, str(copies[0]))
    making.step("speech", add)


def camera_moves(making):
    desktop = making.desktop
    x, y, _, height = rows(desktop.look())[CAMERA_ROW]["rect"]
    desktop.move(x + 50, y + height / 2)
    desktop.x("click", 1)
    time.sleep(0.3)
    go_to(desktop, 20.0)
    orbit(desktop, 160, -30)

    def frame(_):
        desktop.click(desktop.button("Create camera frame")["rect"])
        time.sleep(0.3)
    making.step("camera_frame", frame)


def play(making):
    desktop = making.desktop
    x, y, width, _ = desktop.look()["views"][0]["rect"]
    desktop.move(x + width - 40, y + 30)
    desktop.x("click", 3)
    desktop.click(desktop.until("Attach movie", lambda s: find(s["menus"], "Attach movie"))["rect"])
    desktop.until("the view is attached", lambda s: s["views"][0]["attached"])
    go_to(desktop, 0.0)
    desktop.key("ctrl+Return")
    desktop.until("it plays", lambda _: is_moving(desktop))
    for number in range(3):
        time.sleep(1.5)
        desktop.picture(f"playing_{number + 1}")
    desktop.key("space")
    desktop.until("it stands still", lambda _: not is_moving(desktop))
    saved(desktop)
    making.poses = poses_of_the_film(desktop)
    check(making.undos >= LEAST_UNDOS, f"{making.undos} steps were taken back")


# Afterwards


def poses_of_the_film(desktop):
    """Where both are at the start and at the end of the film, as the window Scenario shows it."""
    poses = []
    for button in ("Move to begin of the movie", "Move to end of the movie"):
        desktop.click(desktop.button(button)["rect"])
        time.sleep(0.4)
        objects = desktop.look()["objects"]
        poses.append([objects[SAILOR], objects[MASTER]])
    return poses


def reload(making, stage, work, screenshots):
    """Another Stage opens what was saved. It then saves a level without each of the two, for comparison."""
    with Desktop(stage, making.level, work, screenshots / "reloaded") as desktop:
        desktop.until("the level", lambda s: SAILOR in s.get("objects", {}))
        for name in (SAILOR, MASTER):
            select_in_list(desktop, name)
            x, y, _, height = desktop.button("Visible")["rect"]
            desktop.move(x + 8, y + height / 2)
            desktop.x("click", 1)
            desktop.until("it is hidden", lambda s: not find(s["buttons"], "Visible")["checked"])
            saved(desktop)
            shutil.copy(making.level, making.level.with_name(f"without_{name}.level"))
            desktop.key(UNDO)
            expect_status(desktop, f"Undone: Hide {name}")
        saved(desktop)
        desktop.click(desktop.button("Movies")["rect"])
        desktop.click(desktop.item(FILM)["rect"], times=2)
        desktop.until("the film is open", lambda s: s["film"] == FILM and scenario(s))
        desktop.picture("film")
        poses = poses_of_the_film(desktop)
        far = max(abs(a - b) for old, new in zip(making.poses, poses) for o, n in zip(old, new) for a, b in zip(o, n))
        check(far < NEAR, f"both move as they did: {far}")
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


def film_shows_both(making, stage, work, screenshots):
    whole = render(stage, making.level, work / "frames")
    check(len(whole) == FILM_SECONDS * RENDER_RATE, f"20 seconds are {len(whole)} pictures")
    for number, picture in enumerate(whole):
        if number % (2 * RENDER_RATE) == 0:
            shutil.copy(picture, screenshots / f"film_{number // RENDER_RATE:02d}s.png")
    for name in (SAILOR, MASTER):
        without = render(stage, making.level.with_name(f"without_{name}.level"), work / f"without_{name}")
        found = [where(whole[i], without[i]) for i in (0, len(whole) // 2, len(whole) - 1)]
        print(f"        {name}: pixels and column at 0, 10 and 20 s: {found}")
        check(all(pixels > LEAST_PIXELS for pixels, _ in found), f"{name} is in the pictures: {found}")
        check(abs(found[0][1] - found[1][1]) > LEAST_WAY, f"{name} moves: {found}")


def main():
    arguments = arguments_of(__doc__, "out/making").parse_args()
    stage, screenshots = Path(arguments.stage).resolve(), Path(arguments.screenshots)
    steps = [save_new_level, ground, wall, characters, light, look_for_begin, new_film, length, camera_all_the_time, motion,
             animations, speech, camera_moves, play]
    with tempfile.TemporaryDirectory(prefix="films_making_") as folder:
        work = Path(folder)
        for part in ("meeting", "first", "second"):
            (work / part).mkdir()
        try:
            with Desktop(stage, None, work / "first", screenshots) as desktop:
                making = Making(desktop, work / "meeting", Path(arguments.level).resolve().parent)
                for step in steps:
                    begin = time.monotonic()
                    try:
                        step(making)
                    except Failure:
                        desktop.picture("failed")
                        print((work / "first" / "stage.log").read_text()[-2000:])
                        raise
                    print(f"ok      {step.__name__} ({time.monotonic() - begin:.1f} s)", flush=True)
                print(f"        {making.undos} steps taken back and done again")
            for step in (reload, film_shows_both):
                step(making, stage, work / "second", screenshots)
                print(f"ok      {step.__name__}", flush=True)
        except Failure as failure:
            print(f"FAILED: {failure}")
            return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
