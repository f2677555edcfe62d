#!/usr/bin/env python3
"""Makes the pictures of views for the user guide.

    python3 tests/desktop/scene_pictures.py --stage build/release/bin/stage --level examples/harbour/harbour.level
"""

import argparse
import shutil
import tempfile
import time
from pathlib import Path

from desktop import Desktop

DRAW_SECONDS = 1.5  # four views drawn without a graphics card


def make(desktop, images):
    time.sleep(DRAW_SECONDS)
    desktop.key("ctrl+4")
    time.sleep(DRAW_SECONDS)
    for number, key in enumerate(("F6", "F7", "F8"), start=1):
        desktop.click(desktop.look()["views"][number]["rect"])
        desktop.key(key)
        time.sleep(DRAW_SECONDS)
    views = [view["rect"] for view in desktop.look()["views"]]
    left, top = views[0][:2]
    right, bottom = views[3][0] + views[3][2], views[3][1] + views[3][3]
    shutil.copy(desktop.picture("views", (left, top, right - left, bottom - top)), images / "views.png")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--stage", required=True)
    parser.add_argument("--level", required=True)
    parser.add_argument("--images", default="docs/images", help="where the pictures of the guide go")
    parser.add_argument("--screenshots", default="out/guide", help="where all pictures go")
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="films_guide_") as work:
        copy = Path(work) / "level"
        shutil.copytree(Path(arguments.level).parent, copy)
        with Desktop(Path(arguments.stage).resolve(), copy / Path(arguments.level).name, work,
                     arguments.screenshots) as desktop:
            make(desktop, Path(arguments.images))


if __name__ == "__main__":
    main()
