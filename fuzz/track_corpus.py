"""Writes the seeds of the track file fuzzer into a folder: each kind with no key, one and several, and files that are cut."""
import struct
import sys

POSITION, ROTATION = 10, 11
KINDS = range(20)


def vector_key(time, value, end=None, flags=None, methods=(0, 0)):
    marks = (1 if end is not None else 0) | (2 if flags is not None else 0)
    key = struct.pack("<Bf", marks, time)
    key += struct.pack("<f", end) if end is not None else b""
    key += struct.pack("<I", flags) if flags is not None else b""
    key += struct.pack("<9f", *value, *value, *value)
    for method in methods:
        key += struct.pack("<B", method) if method < 255 else struct.pack("<Bi", 255, method)
    return key


def track(kind, keys):
    body = struct.pack("<I", len(keys)) + b"".join(keys)
    return struct.pack("<II", kind, len(body)) + body


def main():
    folder = sys.argv[1]
    files = {f"empty_{kind}": track(kind, []) for kind in KINDS}
    files["header"] = struct.pack("<I", POSITION)
    for kind in (POSITION, ROTATION):
        walk = [vector_key(0.5 * i, (i, -i, 90.0 * i), methods=(i % 6, 1)) for i in range(6)]
        files[f"walk_{kind}"] = track(kind, walk)
        files[f"cut_{kind}"] = track(kind, walk)[:-7]
        files[f"behind_{kind}"] = track(kind, walk) + b"more"
        files[f"odd_{kind}"] = track(kind, [vector_key(2.0, (1, 2, 3), end=2.5, flags=3, methods=(1000, 5)),
                                            vector_key(-1.0, (0, 0, 0), end=float("nan"))])
    for name, data in files.items():
        with open(f"{folder}/{name}.track", "wb") as file:
            file.write(data)


if __name__ == "__main__":
    main()
