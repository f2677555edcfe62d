#!/usr/bin/env python3
"""Follows "Your first film in ten minutes" of the user guide, step by step, with real mouse and keys."""

import shutil
import sys
import tempfile
import time
from pathlib import Path

from desktop import Desktop, Failure, arguments_of, check, find

MAIN_CONTROL, RULER, ROW = 1234, 20, 55  # control numbers of the parts of the window "Scenario"
GUIDE = Path(__file__).resolve().parents[2] / "docs" / "USER_GUIDE.md"
STEPS = 11


def guide_steps():
    """The numbered steps, each as one line."""
    section = GUIDE.read_text().split("## Your first film in ten minutes")[1].split("\n## ")[0]
    steps = []
    for line in section.splitlines():
        if line.split(".")[0].isdigit():
            steps.append(line.split(". ", 1)[1])
        elif steps and line.startswith("   "):
            steps[-1] += " " + line.strip()
    return steps


def menu(desktop, letter, text):
    desktop.key("alt+" + letter)
    desktop.click(desktop.until(f"menu entry '{text}'", lambda s: find(s["menus"], text))["rect"])


def scenario(state):
    return next((t for t in state["toolWindows"] if t["title"] == "Scenario" and t["shown"]), None)


def timeline(state):
    return next(c for c in scenario(state)["children"] if c["id"] == MAIN_CONTROL)


def view(desktop):
    return desktop.look()["views"][0]["rect"]


def turn_view(desktop, by):
    x, y, width, height = view(desktop)
    middle = (x + width / 2, y + height / 2)
    before = desktop.look()["views"][0]["onScreen"]
    desktop.drag(middle, (middle[0] + by, middle[1]), button=2)
    desktop.until("the view has turned", lambda s: s["views"][0]["onScreen"] != before)


def open_level(desktop, level):
    desktop.key("ctrl+o")
    desktop.until("the box for a file", lambda s: any(w["title"].startswith("Open") for w in s["windows"]))
    desktop.x("type", str(level))
    desktop.key("Return")
    desktop.until("the level is open", lambda s: "Fishing boat" in s.get("objects", {}))


def look_for_begin(desktop, _):
    turn_view(desktop, 90)
    x, y, width, height = view(desktop)
    desktop.move(x + width / 2, y + height / 2)
    desktop.x("click", "--repeat", 3, 4)


def new_film(desktop, _):
    menu(desktop, "i", "New film...")
    desktop.until("the box for a name", lambda s: any(w["title"] == "New film" for w in s["windows"]))
    desktop.x("type", "My first film")
    desktop.key("Return")
    desktop.until("the film is open", lambda s: s["film"] == "My first film" and scenario(s))
    desktop.until("the camera is there", lambda s: "Camera 1" in s["status"])


def click_camera(desktop, _):
    # Level, sun, camera: the third row that has a plus.
    rows = sorted((c for c in timeline(desktop.look())["children"] if c["id"] == ROW), key=lambda c: c["rect"][1])
    tracks = [row for row in rows if row["children"]]
    x, y, _, height = tracks[2]["rect"]
    desktop.move(x + 50, y + height / 2)
    desktop.x("click", 1)


def press_ruler(desktop, _):
    x, y, width, height = next(c for c in timeline(desktop.look())["children"] if c["id"] == RULER)["rect"]
    desktop.move(x + width / 2, y + height / 2)
    desktop.x("click", 1)


def second_place(desktop, _):
    turn_view(desktop, -160)
    desktop.click(desktop.button("Create camera frame")["rect"])


def animate(desktop, _):
    desktop.click(desktop.button("Animate object")["rect"])


def move_boat(desktop, _):
    before = desktop.look()["objects"]["Fishing boat"]
    search = min((f for f in desktop.look()["fields"] if min(f["rect"]) > 0), key=lambda f: f["rect"][0])  # at the left
    desktop.click(search["rect"])
    desktop.x("type", "Fishing")
    desktop.click(desktop.until("the boat is listed", lambda s: next(
        (i for i in s["items"] if i["text"] == "Fishing boat" and min(i["rect"][2:]) > 0), None))["rect"])
    desktop.until("the boat is selected", lambda s: s["selected"] == ["Fishing boat"])
    desktop.click(desktop.button("Move")["rect"])
    handles = desktop.until("the arrows are there", lambda s: s["views"][0]["handles"])
    origin = desktop.look()["views"][0]["onScreen"]["Fishing boat"]
    x, y, width, height = view(desktop)
    seen = [h for h in (handles[0], handles[2]) if x < h[0] < x + width and y < h[1] < y + height]
    check(seen, "an arrow of the boat can be seen")
    grip = seen[0]
    away = max(1, ((grip[0] - origin[0]) ** 2 + (grip[1] - origin[1]) ** 2) ** 0.5)
    desktop.drag(grip, tuple(g + 40 * (g - o) / away for g, o in zip(grip, origin)))
    desktop.until("the boat has moved", lambda s: s["objects"]["Fishing boat"] != before)


def attach(desktop, _):
    x, y, width, _ = view(desktop)
    desktop.move(x + width - 40, y + 40)  # the sky
    desktop.x("click", 3)
    desktop.click(desktop.until("Attach movie", lambda s: find(s["menus"], "Attach movie"))["rect"])
    desktop.until("the view is attached", lambda s: s["views"][0]["attached"])


def play(desktop, _):
    x, y, _, _ = scenario(desktop.look())["rect"]
    # The first button behind undo and redo.
    bar = next(c for c in scenario(desktop.look())["children"] if c["id"] != MAIN_CONTROL)["rect"]
    buttons = sorted((b for b in desktop.look()["buttons"] if bar[1] <= b["rect"][1] < bar[1] + bar[3]
                      and b["rect"][2] < 40 and b["rect"][0] >= x), key=lambda b: b["rect"][0])
    before = desktop.look()["objects"]["Fishing boat"]
    desktop.click(buttons[2]["rect"])
    desktop.until("the boat is back", lambda s: s["objects"]["Fishing boat"] != before)
    start = desktop.look()["objects"]["Fishing boat"]
    desktop.key("ctrl+Return")
    desktop.until("the boat moves", lambda s: s["objects"]["Fishing boat"] != start)
    desktop.picture("playing")
    desktop.until("the film is over", lambda s: still(desktop))


def still(desktop):
    before = desktop.look()["objects"]["Fishing boat"]
    time.sleep(0.8)
    return desktop.look()["objects"]["Fishing boat"] == before


def save_as(desktop, level):
    menu(desktop, "f", "Save as...")
    desktop.until("the box for a file", lambda s: any(w["title"].startswith("Save") for w in s["windows"]))
    path = level.parent / "mine.level"
    desktop.key("ctrl+a")
    desktop.x("type", str(path))
    desktop.key("Return")
    desktop.until("the level is saved", lambda s: path.exists())
    check(b"My first film" in path.read_bytes(), "the film is in the saved level")


DOINGS = [open_level, look_for_begin, new_film, click_camera, press_ruler, second_place, animate, move_boat, attach, play,
          save_as]


def run(stage, level, screenshots):
    steps = guide_steps()
    with tempfile.TemporaryDirectory() as folder:
        work = Path(folder)
        shutil.copytree(Path(level).parent, work / "harbour")
        copy = work / "harbour" / Path(level).name
        try:
            check(len(steps) == len(DOINGS) == STEPS, f"the guide has {len(steps)} steps, the script {len(DOINGS)}")
            with Desktop(stage, copy, work, screenshots) as desktop:
                for number, (step, do) in enumerate(zip(steps, DOINGS), 1):
                    print(f"{number}. {step}", flush=True)
                    do(desktop, copy)
                    desktop.picture(f"{do.__name__}")
        except Failure as failure:
            print(f"FAILED: {failure}")
            return 1
    print("The guide's first film works as it is written")
    return 0


def main():
    arguments = arguments_of(__doc__, "out/first_film").parse_args()
    return run(arguments.stage, arguments.level, arguments.screenshots)


if __name__ == "__main__":
    sys.exit(main())
