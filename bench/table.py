"""Prints the benchmarks' least times beside what they are measured against, the ratios of the repetitions from the
least to the largest, the limits and the verdicts."""
import sys

from measure import measure, registered

# Whatever disturbs a measurement makes a ratio larger or smaller by chance; what seems to be over its limit is measured
# so many times more before it is called so.
MORE_REPETITIONS = 12

# name, what it is divided by, highest ratio
RATIOS = [
    ("pose_seq_300/S", "bare_seq_300/S", 2.7),
    ("pose_seq_300/M", "bare_seq_300/M", 2.7),
    ("pose_seq_300/W", "bare_seq_300/W", 2.7),
    ("pose_rand_300/M", "bare_rand_300/M", 1.6),
    ("pose_rand_300/W", "bare_rand_300/W", 1.6),
    ("SetFrame/M", "pose_seq_300/M", 1.3),
    ("SetFrame/M_after_paint", "SetFrame/M", 1.1),
    ("drag_key_and_pose/M", "pose_seq_300/M", 3.0),
    ("insert_key/M", "insert_key/one_track", 1.5),
    ("build/M", "bare_build/M", 1.0),
    ("save/M", "plain_write/M", 2.0),
    ("load/M", "arena_load/M", 1.0),
    ("ShowFilm/600rows_300k", "bare_ShowFilm/600rows_300k", 2.0),
    ("ShowFilm/600rows_300k", "ShowFilm/600rows_30k", 12.0),
    ("AdjustTime/M", "ShowFilm_again/M", 1.3),
    ("PaintFrame/8000keys", "PaintFrame/8000keys_naive", 0.8),
    ("PaintKeys/8000", "PaintKeys/8000_naive", 0.8),
    ("KeyDrag/100000", "KeyDrag/10000", 30.0),
    ("KeyDragRun/100000", "KeyDragRun/10000", 30.0),
    ("GroupMove/10000", "GroupMove/1000", 30.0),
    ("CameraPath/free", "SceneFrame/harbour", 0.1),
    ("CameraPath/free_10x", "SceneFrame/harbour", 0.1),
    ("CameraPath/tied", "SceneFrame/harbour", 0.1),
    ("CameraPath/tied_10x", "SceneFrame/harbour", 0.1),
    ("CameraPathChanged/free_10x", "SceneFrame/harbour", 0.1),
    ("CameraPathChanged/tied_10x", "SceneFrame/harbour", 0.1),
    ("SceneFrame/camera_path", "SceneFrame/harbour", 1.1),
    ("CopyObjects/5000", "CopyObjects/500", 40.0),
    ("LeaveLevel/40000", "LeaveLevel/4000", 40.0),
    ("AttributesWheel/100000", "AttributesWheel/1000", 2.0),
    ("AttributesNext/10000", "AttributesNext/1000", 12.0),
    ("FilterKeys/M", "ShowFilm/600rows_300k", 1.3),
    ("ImportTrack/10000", "ImportTrack/1000", 30.0),
    ("UndoRestore/M", "UndoLoad/M", 2.0),
]
# name, counter, highest value
COUNTERS = [
    ("memory/M", "bytes_per_key", 144.0),
    ("save/M", "bytes_per_key", 45.0),
    ("view_memory/300k", "bytes_per_key", 150.0),
    ("undo_memory/M", "megabytes", 200.0),
]
# name, highest microseconds
TIMES = [
    ("PaintLabels/whole", 4000.0),
    ("PaintLabels/shortened", 4000.0),
    ("PaintLabels/too_narrow", 8000.0),
    ("ScrollRow/M", 1000.0),
    ("MoveCursor/M", 1000.0),
    ("MouseMove_GetKeyAt/M", 5.0),
    ("KeyDrag/10000", 2000.0),
    ("KeyDragRun/10000", 4000.0),
    ("GroupMove/1000", 1000.0),
    ("Rows2000/hide_hidden", 1000.0),
    ("Rows2000/scroll", 1000.0),
    ("AttributesShow", 1000.0),
    ("UndoStep/M", 5000.0),
]


class Table:
    """Prints row by row and keeps what is over its limit."""

    def __init__(self):
        self.rows = 0
        self.over = []
        print(f"{'benchmark':32}{'us':>12}{'against':>28}{'us':>12}{'ratio':>14}{'limit':>8}  verdict")

    def row(self, name, figures, values, limit):
        """Values are one a repetition. The best one counts; without any there is no verdict."""
        self.rows += 1
        verdict = "none" if not values else "ok" if min(values) <= limit else "OVER"
        if verdict != "ok":
            self.over.append(name)
        print(f"{name:32}{figures}{limit:8.2f}  {verdict}")

    def end(self):
        if self.over:
            print(f"{len(self.over)} of {self.rows} rows over their limit: {', '.join(self.over)}")
        else:
            print(f"All {self.rows} rows within their limits.")
        return 1 if self.over else 0


def microseconds(time):
    return "-" if time is None else f"{time / 1e3:.2f}"


def short(ratio):
    return f"{ratio:.4f}" if ratio < 0.01 else f"{ratio:.2f}"


def ratios_of(program, figures, name, against, limit):
    """One a repetition; measured on while all are over the limit."""
    ratios = figures.ratios(name, against)
    for _ in range(MORE_REPETITIONS):
        if not ratios or min(ratios) <= limit:
            break
        ratios += measure(program, [name, against], 1).ratios(name, against)
    return ratios


def print_ratio(table, program, figures, name, against, limit):
    time, base = figures.time(name), figures.time(against)
    ratios = ratios_of(program, figures, name, against, limit)
    shown = f"{short(min(ratios))}-{short(max(ratios))}" if ratios else "-"
    table.row(name, f"{microseconds(time):>12}{against:>28}{microseconds(base):>12}{shown:>14}", ratios, limit)


def names_of_table():
    return list(dict.fromkeys([side for name, against, _ in RATIOS for side in (name, against)] +
                              [row[0] for row in COUNTERS + TIMES]))


def check(program):
    """Whether the program has every benchmark of the table; tells those that it lacks."""
    missing = sorted(set(names_of_table()) - registered(program))
    for name in missing:
        print(f"{program} has no benchmark {name}")
    return 1 if missing else 0


def main():
    if sys.argv[1] == "--check":
        return check(sys.argv[2])
    program, repetitions = sys.argv[1], int(sys.argv[2])
    names = names_of_table()
    figures = measure(program, names, repetitions)
    table = Table()
    for name, against, limit in RATIOS:
        print_ratio(table, program, figures, name, against, limit)
    for name, counter, limit in COUNTERS:
        values = figures.counters.get(name, [])
        shown = f"{min(values):.1f}" if values else "-"
        table.row(f"{name} {counter}", f"{shown:>12}{'':54}", values, limit)
    for name, limit in TIMES:
        times = [time / 1e3 for time in figures.times.get(name, [])]
        table.row(name, f"{microseconds(figures.time(name)):>12}{'':54}", times, limit)
    for name, message in figures.errors.items():
        print(f"{name}: {message}")
    return table.end()


if __name__ == "__main__":
    sys.exit(main())
