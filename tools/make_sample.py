#!/usr/bin/env python3
"""Makes the models and sounds of the sample level. Python 3 alone; the same bytes on every machine.

usage: make_sample.py FOLDER
"""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
sys.dont_write_bytecode = True

from sample import character, glb, props, sounds  # noqa: E402


def main(arguments):
    if len(arguments) != 2 or arguments[1].startswith("-"):
        print(__doc__.strip(), file=sys.stderr)
        return 2
    folder = arguments[1]
    os.makedirs(os.path.join(folder, "models"), exist_ok=True)
    os.makedirs(os.path.join(folder, "sounds"), exist_ok=True)
    for name, make in props.MAKERS.items():
        nodes, clips = make()
        glb.write(os.path.join(folder, "models", name + ".glb"), nodes, clips)
    for name in character.LOOKS:
        nodes, clips, bones = character.make(name)
        glb.write(os.path.join(folder, "models", name + ".glb"), nodes, clips, bones)
    for name, make in sounds.MAKERS.items():
        sounds.save(os.path.join(folder, "sounds", name + ".wav"), make())
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
