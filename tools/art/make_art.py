#!/usr/bin/env python3
"""Draws the program's pictures: make_art.py FOLDER writes icons and the clip into FOLDER."""

import pathlib
import sys

import clip
import icons


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    folder = pathlib.Path(sys.argv[1])
    for name, (draw, sizes) in icons.ICONS.items():
        (folder / name).write_bytes(icons.icon(draw, sizes))
    (folder / "FILECOPY.avi").write_bytes(clip.clip())


if __name__ == "__main__":
    main()
