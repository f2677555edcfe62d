"""A display of its own with a window manager and the editor on it, driven with real X input."""

import contextlib
import json
import os
import select
import shutil
import signal
import subprocess
import time
from pathlib import Path

WAIT_SECONDS = 10  # for one effect, unless a desktop waits longer; a busy machine needs far less
TOOL_SECONDS = 120  # for one call of a tool; pictures of large screens take seconds
SETTLE_SECONDS = 0.25  # between input and a picture


class Failure(Exception):
    pass


class Desktop:
    """Xvfb, openbox and Stage, with an empty level if `level` is None. Use with `with`; everything that was started
    ends with it."""

    def __init__(self, stage, level, work, screenshots, size="1600x1000", scale="1", settings="",
                 window="1280x800", wait=WAIT_SECONDS, images=None):
        """`scale` is the toolkit's factor, `settings` the text of the user's settings file, `window` the size that
        Stage is asked for, in its own pixels, `wait` how many seconds an effect may take, `images` the folder of the
        guide's pictures if they are to be made anew."""
        self.stage_path, self.level, self.size = stage, level, size
        self.scale, self.settings, self.window_size = scale, settings, window
        self.work, self.screenshots = Path(work), Path(screenshots)
        self.wait, self.images = wait, images
        self.shown_seconds = 10.0  # which the ruler of the films' window shows, as it does of a new film
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
        found = self.x("search", "--sync", "--onlyvisible", "--pid", self.stage.pid, "--name", "Stage$")
        self.window = found.split()[0]
        self.x("windowactivate", "--sync", self.window)

    def _start_window_manager(self):
        """Returns when it manages windows: what is mapped while it starts may stay hidden."""
        ready = self.work / "window_manager_is_ready"
        self._spawn("openbox", "--startup", f"touch {ready}", stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        end = time.monotonic() + self.wait
        while not ready.exists():
            if time.monotonic() > end:
                raise Failure("the window manager does not start")
            time.sleep(0.02)

    def _read_line(self, descriptor, what):
        line, end = b"", time.monotonic() + self.wait
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
                              timeout=TOOL_SECONDS)
        if done.returncode != 0:
            raise Failure(f"xdotool {' '.join(map(str, arguments))}: {done.stderr.strip()}")
        return done.stdout

    # What the editor shows

    def look(self):
        """The editor's own description of its windows and the level."""
        self.stage.stdin.write(b"\n")
        self.stage.stdin.flush()
        end = time.monotonic() + self.wait
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
        end = time.monotonic() + self.wait
        while True:
            result = condition(self.look())
            if result:
                return result
            if time.monotonic() > end:
                raise Failure(f"{what}: not so after {self.wait} s")
            time.sleep(0.05)

    def button(self, text):
        return self.until(f"button '{text}'", lambda s: find(s["buttons"], text))

    def item(self, text):
        return self.until(f"list entry '{text}'", lambda s: find(s["items"], text))

    def field(self, name):
        """The field for typing of that name."""
        return self.until(f"the field {name}", lambda s: next((f for f in s["fields"] if f["name"] == name), None))

    def tool(self, title):
        return next((t for t in self.look()["toolWindows"] if t["title"] == title), None)

    def ends(self):
        """Waits for the program's own end, answering that changes may be lost."""
        end = time.monotonic() + self.wait
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

    def press(self, place, times=1, button=1):
        self.move(*place)
        self.x("click", "--repeat", times, "--delay", 60, button)

    def click(self, rect, times=1, button=1):
        self.press(middle(rect), times, button)

    def click_button(self, text):
        self.click(self.button(text)["rect"])

    def click_item(self, text, times=1, button=1):
        self.click(self.item(text)["rect"], times, button)

    def wheel(self, place, notches, delay=60):
        """Turns it over a place, away from the user for positive numbers; `delay` in milliseconds."""
        self.move(*place)
        self.x("click", "--repeat", abs(notches), "--delay", delay, 4 if notches > 0 else 5)

    def pull(self, start, end, steps=12, button=1, pause=0.0):
        """Presses and moves on in equal steps, `pause` seconds each; the button stays down until `release`."""
        self.move(*start)
        self.x("mousedown", button)
        for i in range(1, steps + 1):
            self.move(*between(start, end, i / steps))
            time.sleep(pause)

    def release(self, button=1):
        self.x("mouseup", button)

    def drag(self, start, end, steps=12, button=1):
        self.pull(start, end, steps, button)
        self.release(button)

    @contextlib.contextmanager
    def held(self, key):
        """With that key down."""
        self.x("keydown", key)
        try:
            yield
        finally:
            self.x("keyup", key)

    def type(self, text, delay=20):
        """Writes where the keyboard is; `delay` in milliseconds of each letter."""
        self.x("type", "--delay", delay, "--", text)

    def type_over(self, text, delay=20):
        """Writes instead of what the field holds that has the keyboard."""
        self.key("ctrl+a")
        self.type(text, delay)

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
                              capture_output=True, text=True, timeout=TOOL_SECONDS)
        if done.returncode != 0:
            raise Failure(f"no picture {path}: {done.stderr.strip()}")
        return path

    def guide_picture(self, name, rect):
        """A picture that the user guide shows under that name."""
        path = self.picture(name, rect)
        if self.images:
            shutil.copy(path, self.images / f"{name}.png")
        return path


def middle(rect):
    return rect[0] + rect[2] / 2, rect[1] + rect[3] / 2


def between(start, end, share):
    """The place at that share of the way."""
    return tuple(a + (b - a) * share for a, b in zip(start, end))


def find(entries, text):
    return next((entry for entry in entries if entry["text"] == text), None)


def different_pixels(first, second):
    """Number of pixels that differ by more than a shade."""
    done = subprocess.run(["compare", "-metric", "AE", "-fuzz", "3%", str(first), str(second), "null:"],
                          capture_output=True, text=True, timeout=TOOL_SECONDS)
    if done.returncode > 1:
        raise Failure(f"pictures {first.name} and {second.name} can't be compared: {done.stderr.strip()}")
    return int(float(done.stderr.split()[0]))


def check(condition, what):
    if not condition:
        raise Failure(what)


signal.signal(signal.SIGTERM, lambda *_: (_ for _ in ()).throw(SystemExit(1)))
