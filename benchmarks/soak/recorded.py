"""Whether every picture of a camera is in its recordings: each is known by its coded slices, whose order is that of
the file that the camera plays over and over."""

import pathlib
import subprocess
from dataclasses import dataclass, field

SLICES = "filter_units=pass_types=1|5"
NEAR = 3  # seconds around a signing-out in which a file may end


def hashes(path, filters):
    text = subprocess.run(["ffmpeg", "-v", "error", "-i", str(path), "-map", "0:v", "-c", "copy", "-bsf:v", filters,
                           "-f", "framemd5", "-"], capture_output=True, text=True, check=True).stdout
    return [row.rsplit(",", 1)[1].strip() for row in text.splitlines() if row and not row.startswith("#")]


@dataclass
class Found:
    files: int = 0
    frames: int = 0
    missing: int = 0  # within files
    between: int = 0  # from a file to the next, where recording went on
    strange: int = 0  # frames that the camera never sent
    problems: list = field(default_factory=list)


def examine(disk, files, signed_out):
    """`files`: those that the recorded cameras play, in the order of the cameras."""
    found = Found()
    for index, source in enumerate(files):
        order = {one: at for at, one in enumerate(hashes(source, f"h264_mp4toannexb,{SLICES}"))}
        before = None
        before_end = 0.0
        for path in sorted(pathlib.Path(disk).glob(f"**/wall{index:02}/**/*.avi")):
            found.files += 1
            for at, one in enumerate(hashes(path, SLICES)):
                found.frames += 1
                if one not in order:
                    found.strange += 1
                    found.problems.append(f"{path.name}: frame {at} was never sent")
                    continue
                place = order[one]
                gap = 0 if before is None else (place - before - 1) % len(order)
                if gap and at > 0:
                    found.missing += gap
                    found.problems.append(f"{path.name}: {gap} missing before frame {at}")
                elif gap and not any(begin - NEAR < before_end < end + NEAR for begin, end in signed_out):
                    found.between += gap
                    found.problems.append(f"{path.name}: {gap} missing before the file")
                before = place
            before_end = path.stat().st_mtime
    return found
