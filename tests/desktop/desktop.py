"""A display of its own with a window manager and the editor on it, driven with real X input."""

import argparse
import json
import os
import select
import shutil
import signal
import subprocess
import time
from pathlib import Path

WAIT_SECONDS = 10  # for one effect; a busy machine needs far less
SETTLE_SECONDS = 0.25  # between input and a picture


class Failure(Exception):
    pass


class Desktop:
    """Xvfb, openbox and Stage, with an empty level if `level` is None. Use with `with`; everything that was started
    ends with it."""

    def __init__(self, stage, level, work, screenshots, size="1600x1000", scale="1", settings="",
                 window="1280x800"):
        """`scale` is the toolkit's factor, `settings` the text of the user's settings file, `window` the size that Stage
        is asked for, in its own pixels."""
        self.stage_path, self.level, self.size = stage, level, size
        self.scale, self.settings, self.window_size = scale, settings, window
        self.work, self.screenshots = Path(work), Path(screenshots)
        self.started = []
        self.pictures = 0

    def __enter__(self):
        try:
            self._start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.started):
            if process.poll() is None:
                process.terminate()
                try:
                    process.wait(5)
                except subprocess.TimeoutExpired:
                    process.kill()
                    process.wait()

    def _spawn(self, *command, **options):
        process = subprocess.Popen([str(part) for part in command], env=self.environment, **options)
        self.started.append(process)
        return process

    def _start(self):
        for tool in ("Xvfb", "openbox", "xdotool", "import", "compare"):
            if shutil.which(tool) is None:
                raise Failure(f"{tool} is missing; tests/desktop/run.sh installs it")
        self.screenshots.mkdir(parents=True, exist_ok=True)
        home = self.work / "home"
        home.mkdir(parents=True, mode=0o700)
        if self.settings:
            (home / "config" / "Stage").mkdir(parents=True)
            (home / "config" / "Stage" / "Stage.conf").write_text(self.settings)
        self.environment = {
            **os.environ, "HOME": str(home), "XDG_CONFIG_HOME": str(home / "config"), "XDG_RUNTIME_DIR": str(home),
            "QT_QPA_PLATFORM": "xcb", "QT_SCALE_FACTOR": self.scale, "LC_ALL": "C.UTF-8",
        }
        self.environment.pop("WAYLAND_DISPLAY", None)
        read_end, write_end = os.pipe()
        self._spawn("Xvfb", "-displayfd", write_end, "-screen", "0", self.size + "x24", "-nolisten", "tcp",
                    pass_fds=[write_end], stderr=subprocess.DEVNULL)
        os.close(write_end)
        number = self._read_line(read_end, "the display")
        os.close(read_end)
        self.environment["DISPLAY"] = ":" + number
        self._start_window_manager()
        self.log = open(self.work / "stage.log", "w")
        opened = [self.level] if self.level else []
        self.stage = self._spawn(self.stage_path, *opened, "--inspect", "--size", self.window_size, "--data",
                                 self.work / "data", stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=self.log)
        self.pending = b""
        self.window = self.x("search", "--sync", "--onlyvisible", "--pid", self.stage.pid, "--name", "Stage$").split()[0]
        self.x("windowactivate", "--sync", self.window)

    def _start_window_manager(self):
        """Returns when it manages windows: what is mapped while it starts may stay hidden."""
        ready = self.work / "window_manager_is_ready"
        self._spawn("openbox", "--startup", f"touch {ready}", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        end = time.monotonic() + WAIT_SECONDS
        while not ready.exists():
            if time.monotonic() > end:
                raise Failure("the window manager does not start")
            time.sleep(0.02)

    @staticmethod
    def _read_line(descriptor, what):
        line, end = b"", time.monotonic() + WAIT_SECONDS
        while not line.endswith(b"\n"):
            if not select.select([descriptor], [], [], max(0, end - time.monotonic()))[0]:
                raise Failure(f"{what} does not answer")
            part = os.read(descriptor, 1)
            if not part:
                raise Failure(f"{what} has ended")
            line += part
        return line.decode().strip()

    def x(self, *arguments):
        done = subprocess.run(["xdotool", *map(str, arguments)], env=self.environment, capture_output=True, text=True,
                              timeout=30)
        if done.returncode != 0:
            raise Failure(f"xdotool {' '.join(map(str, arguments))}: {done.stderr.strip()}")
        return done.stdout

    # What the editor shows

    def look(self):
        """The editor's own description of its windows and the level."""
        self.stage.stdin.write(b"\n")
        self.stage.stdin.flush()
        end = time.monotonic() + WAIT_SECONDS
        while b"\n" not in self.pending:
            if not select.select([self.stage.stdout], [], [], max(0, end - time.monotonic()))[0]:
                raise Failure("the editor does not answer")
            part = os.read(self.stage.stdout.fileno(), 65536)
            if not part:
                raise Failure("the editor has ended")
            self.pending += part
        line, self.pending = self.pending.split(b"\n", 1)
        state = json.loads(line)
        # A menu that is about to open has no place yet.
        state["menus"] = [entry for entry in state["menus"] if entry["rect"][0] >= 0 and entry["rect"][1] >= 0]
        return state

    def until(self, what, condition):
        """Waits until condition(look()) is something true, and returns that."""
        end = time.monotonic() + WAIT_SECONDS
        while True:
            result = condition(self.look())
            if result:
                return result
            if time.monotonic() > end:
                raise Failure(f"{what}: not so after {WAIT_SECONDS} s")
            time.sleep(0.05)

    def button(self, text):
        return self.until(f"button '{text}'", lambda s: find(s["buttons"], text))

    def item(self, text):
        return self.until(f"list entry '{text}'", lambda s: find(s["items"], text))

    def tool(self, title):
        return next((t for t in self.look()["toolWindows"] if t["title"] == title), None)

    def ends(self):
        """Waits for the program's own end, answering that changes may be lost."""
        end = time.monotonic() + WAIT_SECONDS
        while self.stage.poll() is None and time.monotonic() < end:
            try:
                discard = find(self.look()["buttons"], "Discard")
            except (Failure, BrokenPipeError):
                discard = None  # it has just ended
            if discard:
                self.click(discard["rect"])
            time.sleep(0.2)
        if self.stage.poll() is None:
            raise Failure("the program goes on after its window was closed")
        check(self.stage.returncode == 0, f"the program ended with {self.stage.returncode}")

    # Input

    def move(self, x, y):
        self.x("mousemove", round(x), round(y))  # --sync waits in vain where the mouse already is

    def click(self, rect, times=1, button=1):
        self.move(rect[0] + rect[2] / 2, rect[1] + rect[3] / 2)
        self.x("click", "--repeat", times, "--delay", 60, button)

    def drag(self, start, end, steps=12, button=1):
        self.move(*start)
        self.x("mousedown", button)
        for i in range(1, steps + 1):
            self.move(*(a + (b - a) * i / steps for a, b in zip(start, end)))
        self.x("mouseup", button)

    def key(self, name):
        self.x("key", name)

    # Pictures

    def picture(self, name, rect=None):
        """Saves what the display shows, whole or a part, and returns the file."""
        time.sleep(SETTLE_SECONDS)
        self.pictures += 1
        path = self.screenshots / f"{self.pictures:02d}_{name}.png"
        crop = ["-crop", "{2}x{3}+{0}+{1}".format(*rect), "+repage"] if rect else []
        done = subprocess.run(["import", "-window", "root", *crop, str(path)], env=self.environment,
                              capture_output=True, text=True, timeout=30)
        if done.returncode != 0:
            raise Failure(f"no picture {path}: {done.stderr.strip()}")
        return path


def find(entries, text):
    return next((entry for entry in entries if entry["text"] == text), None)


def different_pixels(first, second):
    """Number of pixels that differ by more than a shade."""
    done = subprocess.run(["compare", "-metric", "AE", "-fuzz", "3%", str(first), str(second), "null:"],
                          capture_output=True, text=True, timeout=30)
    if done.returncode > 1:
        raise Failure(f"pictures {first.name} and {second.name} can't be compared: {done.stderr.strip()}")
    return int(float(done.stderr.split()[0]))


def check(condition, what):
    if not condition:
        raise Failure(what)


def arguments_of(description, screenshots):
    """What a script is called with; the pictures go to `screenshots` unless it is told otherwise."""
    parser = argparse.ArgumentParser(description=description, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--stage", required=True, help="the program")
    parser.add_argument("--level", required=True, help="the sample level; a copy is used")
    parser.add_argument("--screenshots", default=screenshots, help="where the pictures go")
    return parser


signal.signal(signal.SIGTERM, lambda *_: (_ for _ in ()).throw(SystemExit(1)))
