"""Prints the benchmarks' medians beside what they are measured against, with the limits."""
import json
import statistics
import sys

# name, what it is divided by, highest ratio
RATIOS = [
    ("pose_seq_300/S", "bare_seq_300/S", 2.7),
    ("pose_seq_300/M", "bare_seq_300/M", 2.7),
    ("pose_seq_300/W", "bare_seq_300/W", 2.7),
    ("pose_rand_300/M", "bare_rand_300/M", 1.6),
    ("pose_rand_300/W", "bare_rand_300/W", 1.6),
    ("SetFrame/M", "pose_seq_300/M", 1.3),
    ("drag_key_and_pose/M", "pose_seq_300/M", 3.0),
    ("insert_key/M", "insert_key/one_track", 1.5),
    ("build/M", "bare_build/M", 1.0),
    ("save/M", "plain_write/M", 2.0),
    ("load/M", "arena_load/M", 1.0),
    ("ShowFilm/600rows_300k", "bare_ShowFilm/600rows_300k", 2.0),
    ("ShowFilm/600rows_300k", "ShowFilm/600rows_30k", 12.0),
    ("PaintFrame/8000keys", "PaintFrame/8000keys_naive", 0.8),
    ("PaintKeys/8000", "PaintKeys/8000_naive", 0.8),
    ("KeyDrag/100000", "KeyDrag/10000", 30.0),
    ("KeyDragRun/100000", "KeyDragRun/10000", 30.0),
    ("GroupMove/10000", "GroupMove/1000", 30.0),
]
# name, counter, highest value
COUNTERS = [
    ("memory/M", "bytes_per_key", 144.0),
    ("save/M", "bytes_per_key", 45.0),
    ("view_memory/300k", "bytes_per_key", 150.0),
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
]
UNIT_NANOSECONDS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def base_name(name):
    return "/".join(name.split("/")[:2])


def medians(runs):
    """Median nanoseconds and counters by benchmark."""
    times, counters = {}, {}
    for run in runs:
        if run.get("run_type") != "iteration":
            continue
        name = base_name(run["name"])
        # Processor time, so that other programs count less, but for what waits for the disk or times itself.
        key = "real_time" if ("manual_time" in run["name"] or "real_time" in run["name"]) else "cpu_time"
        times.setdefault(name, []).append(run[key] * UNIT_NANOSECONDS[run["time_unit"]])
        if "bytes_per_key" in run:
            counters.setdefault(name, []).append(run["bytes_per_key"])
    return ({name: statistics.median(values) for name, values in times.items()},
            {name: statistics.median(values) for name, values in counters.items()})


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        times, counters = medians(json.load(file)["benchmarks"])
    failed = False
    print(f"{'benchmark':28}{'us':>12}{'against':>30}{'us':>12}{'ratio':>8}{'limit':>8}")
    for name, against, limit in RATIOS:
        ratio = times[name] / times[against]
        failed = failed or ratio > limit
        print(f"{name:28}{times[name] / 1e3:12.2f}{against:>30}{times[against] / 1e3:12.2f}"
              f"{ratio:8.2f}{limit:8.2f}{'' if ratio <= limit else '  OVER'}")
    for name, counter, limit in COUNTERS:
        failed = failed or counters[name] > limit
        print(f"{name + ' ' + counter:28}{counters[name]:12.1f}{'':50}{limit:8.1f}"
              f"{'' if counters[name] <= limit else '  OVER'}")
    for name, limit in TIMES:
        failed = failed or times[name] / 1e3 > limit
        print(f"{name:28}{times[name] / 1e3:12.2f}{'':50}{limit:8.1f}"
              f"{'' if times[name] / 1e3 <= limit else '  OVER'}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
