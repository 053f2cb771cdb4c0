"""What is written down while the client runs: memory, threads, open files, pictures, and how long events waited."""

import os
import pathlib
import sqlite3
import statistics
import subprocess
import time

WARM = 5  # of the rounds, at most a third: caches fill, pages are made for the first time
TABLES = ("operatelogs", "errlogs", "fireLogs", "loginLogs")


class Block:
    """A time in which an event had to wait, and where the GUI thread was seen meanwhile."""

    def __init__(self, words):
        self.milliseconds, self.computed, self.behind = map(float, words)
        self.stacks = []


def frame_names(frames, program):
    """The functions of a stack, innermost first; those of the program itself by its symbols."""
    names = []
    for frame in frames:
        place, _, name = frame.partition("=")
        module, _, offset = place.rpartition("+")
        if os.path.realpath(module) == os.path.realpath(program) or "corvanta" in os.path.basename(module) \
                or "ipncsdk" in os.path.basename(module):
            # The address is that of the next instruction.
            text = subprocess.run(["addr2line", "-Cfe", module, hex(int(offset, 16) - 1)], capture_output=True,
                                  text=True, check=False).stdout.splitlines()
            names.append("* " + text[0] if text else "* ?")
        else:
            names.append(name or os.path.basename(module))
    return names


def read_blocks(path, program):
    blocks = []
    for row in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        word, _, rest = row.partition("\t")
        if row.startswith("BLOCK "):
            blocks.append(Block(row.split()[1:]))
        elif word == "STACK":
            blocks[-1].stacks.append(frame_names(rest.split("\t"), program))
    return blocks


class Figures:
    def __init__(self, client, data, blocks_file):
        self.client, self.data, self.blocks_file = client, data, blocks_file
        self.samples = []  # (round, MiB, threads, files), one a second
        self.number = 0

    def start(self):
        self.client.order(f"blocked {self.blocks_file}")
        self.begin, self.cpu = time.monotonic(), self.client.cpu_seconds()
        self.received, self.overwritten, self.shown = self.client.counts()

    def sample(self):
        self.samples.append((self.number, self.client.resident_mib(), self.client.thread_count(),
                             self.client.file_count()))

    def round(self):
        self.number += 1
        rest = [sample for sample in self.samples if sample[0] == self.number - 1]
        print(f"# round {self.number}: {statistics.median(one[1] for one in rest):.0f} MiB, "
              f"{statistics.median(one[2] for one in rest):.0f} threads, "
              f"{statistics.median(one[3] for one in rest):.0f} open files", flush=True)

    def finish(self, program):
        self.seconds = time.monotonic() - self.begin
        self.cores = (self.client.cpu_seconds() - self.cpu) / self.seconds
        received, overwritten, shown = self.client.counts()
        self.received, self.overwritten, self.shown = (
            received - self.received, overwritten - self.overwritten, shown - self.shown)
        self.beats, self.median, self.percentile99, self.worst = map(
            float, self.client.order(f"blocked {self.blocks_file}"))
        self.blocks = read_blocks(self.blocks_file, program)
        with sqlite3.connect(f"file:{self.data}/dataBase.db?mode=ro", uri=True) as rows:
            self.rows = {table: rows.execute(f"select count(*) from {table}").fetchone()[0] for table in TABLES}

    def parts(self, column):
        """Medians of the first and the last third of the rounds behind the warm ones."""
        warm = min(WARM, self.number // 3)
        length = max(1, (self.number - warm) // 3)
        first = [one[column] for one in self.samples if warm <= one[0] < warm + length]
        last = [one[column] for one in self.samples if self.number - length <= one[0] < self.number]
        return statistics.median(first), statistics.median(last)
