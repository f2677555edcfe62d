#!/usr/bin/env python3
"""Drives Stage on a plain X desktop as a user does. See run.sh."""

import argparse
import shutil
import sys
import tempfile
import time
from pathlib import Path

from desktop import Desktop, Failure, check, different_pixels

FILM = "Intro"
MOTION_SECONDS = 0.4  # the sample's actors move in any stretch of this length while it plays


def poses(desktop):
    return desktop.look()["objects"]


def is_moving(desktop):
    before = poses(desktop)
    time.sleep(MOTION_SECONDS)
    return poses(desktop) != before


def level_opens(desktop):
    state = desktop.until("the sample level", lambda s: s if "objects" in s and len(s["objects"]) > 5 else None)
    check(state["film"] == "", "no film is open at the start")
    desktop.picture("level")


def panel_opens(desktop):
    desktop.click(desktop.button("Movies")["rect"])
    desktop.item(FILM)
    desktop.picture("panel")


def film_opens(desktop):
    desktop.click(desktop.item(FILM)["rect"])
    desktop.until("the film is open", lambda s: s["film"] == FILM)


def film_plays_and_space_stops_it(desktop):
    desktop.key("ctrl+Return")
    start = poses(desktop)
    desktop.until("actors move", lambda s: s["objects"] != start)
    check(is_moving(desktop), "the film goes on playing")
    desktop.picture("playing")
    desktop.key("space")
    desktop.until("the film stands still", lambda s: not is_moving(desktop))
    check(desktop.look()["film"] == FILM, "the film stays open")



STEPS = [level_opens, panel_opens, film_opens, film_plays_and_space_stops_it]


def run(stage, level, screenshots):
    with tempfile.TemporaryDirectory(prefix="films_desktop_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(level).parent, copy)
        with Desktop(stage, copy / Path(level).name, work, screenshots) as desktop:
            for step in STEPS:
                name = step.__name__.replace("_", " ")
                begin = time.monotonic()
                try:
                    step(desktop)
                except Exception as error:
                    print(f"FAILED  {name}: {error}", flush=True)
                    try:
                        desktop.picture("failed")
                    except Failure as second:
                        print(f"        {second}")
                    print((Path(work) / "stage.log").read_text()[-2000:])
                    return 1
                print(f"ok      {name} ({time.monotonic() - begin:.1f} s)", flush=True)
    print(f"{len(STEPS)} steps; pictures in {screenshots}")
    return 0


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--stage", required=True, help="the program")
    parser.add_argument("--level", required=True, help="the sample level; a copy is used")
    parser.add_argument("--screenshots", required=True, help="folder for the pictures")
    arguments = parser.parse_args()
    return run(arguments.stage, arguments.level, arguments.screenshots)


if __name__ == "__main__":
    sys.exit(main())
