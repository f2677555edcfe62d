#!/usr/bin/env python3
"""Cuts the plug-in's chunks out of a level file as corpora: fuzz/chunk_corpus.py LEVEL FOLDER.

The chunks of the older forms are made from the newer ones.
"""
import struct
import sys
from pathlib import Path

CHUNKS = (5752, 5780, 5782, 5784, 5785)


def find(data, chunk):
    """Data of each place that reads like the chunk and lies inside the file."""
    mark = struct.pack("<H", chunk)
    place = data.find(mark)
    while place >= 0 and place + 6 <= len(data):
        size, = struct.unpack_from("<I", data, place + 2)
        if place + 6 + size <= len(data):
            yield data[place + 6:place + 6 + size]
        place = data.find(mark, place + 1)


def main():
    data = Path(sys.argv[1]).read_bytes()
    folder = Path(sys.argv[2])
    found = {chunk: list(find(data, chunk)) for chunk in CHUNKS}
    found[5750] = found[5752] + [body for light in found[5782] for body in [light]]
    found[5781] = [struct.pack("<I", 1) + struct.pack("<H", 5) + b"Intro" + b"\1" + bytes(9)]
    found[5752].append(struct.pack("<HI", 5753, 12) + struct.pack("<H", 10) + b"MeshObject")
    for chunk, bodies in found.items():
        corpus = folder / str(chunk)
        corpus.mkdir(parents=True, exist_ok=True)
        for number, body in enumerate(bodies):
            (corpus / f"sample{number}").write_bytes(body)


if __name__ == "__main__":
    main()
