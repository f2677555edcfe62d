"""A script's run: what it is called with, Stage with a copy of the sample level, and the steps, a line for each."""

import argparse
import contextlib
import shutil
import sys
import tempfile
import time
from pathlib import Path

from desktop import Desktop, Failure

LOG_TAIL = 2000  # characters of the program's log that a failure shows


def arguments_of(description, screenshots):
    """What a script is called with; the pictures go to `screenshots` unless it is told otherwise."""
    parser = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--stage", required=True, type=lambda path: Path(path).resolve(), help="the program")
    parser.add_argument("--level", required=True, type=Path, help="the sample level; a copy is used")
    parser.add_argument("--screenshots", default=screenshots, type=Path, help="where the pictures go")
    parser.add_argument("--images", type=Path, help="docs/images, where pictures are to be made anew for the guide")
    return parser


@contextlib.contextmanager
def work_folder():
    """A folder that goes afterwards."""
    with tempfile.TemporaryDirectory(prefix="films_desktop_") as folder:
        yield Path(folder)


def copy_of(level, folder):
    """Copies the level with all that stands beside it to a new folder; the level there."""
    shutil.copytree(level.parent, folder)
    return folder / level.name


@contextlib.contextmanager
def sample_opened(arguments, screenshots=None, kind=Desktop, **options):
    """Stage with a copy of the sample level, on a desktop of that kind; `options` are the desktop's."""
    with work_folder() as work:
        level = copy_of(arguments.level, work / "level")
        with kind(arguments.stage, level, work, screenshots or arguments.screenshots, images=arguments.images,
                  **options) as desktop:
            yield desktop


def do_all(desktop, steps, *given):
    """Does the steps in their order, each with what is given, or with the desktop alone. The first that fails ends the
    script with 1; its reason, a picture and the end of the program's log are there then."""
    for step in steps:
        name = step.__name__.replace("_", " ")
        begin = time.monotonic()
        try:
            step(*(given or [desktop]))
        except Exception as error:
            reason = error if isinstance(error, Failure) else repr(error)
            print(f"FAILED  {name}: {reason}", flush=True)
            tell_what_is_there(desktop)
            sys.exit(1)
        print(f"ok      {name} ({time.monotonic() - begin:.1f} s)", flush=True)


def tell_what_is_there(desktop):
    """After a failure, of which the program may be the reason: nothing here may hide that one."""
    for tell in (show_state, lambda d: d.picture("failed"), show_log):
        try:
            tell(desktop)
        except Exception as error:
            print(f"        {error}", flush=True)


def show_state(desktop):
    state = desktop.look()
    print(f"        status bar: '{state['status']}', selected: {state['selected']}", flush=True)


def show_log(desktop):
    print((desktop.work / "stage.log").read_text()[-LOG_TAIL:], flush=True)


def run(description, screenshots, steps):
    """A whole script of steps in one Stage with the sample level."""
    arguments = arguments_of(description, screenshots).parse_args()
    with sample_opened(arguments) as desktop:
        do_all(desktop, steps)
    print(f"{len(steps)} steps; pictures in {arguments.screenshots}")
