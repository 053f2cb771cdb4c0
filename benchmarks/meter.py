"""What the measuring scripts share: virtual displays, programs under orders, CPU and memory of both.

Every process that is started here is ended by its own id, at the latest when its `with` block ends.
"""

import os
import pathlib
import select
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(os.environ.get("CORVANTA_BUILD_DIR", ROOT / "build" / "release"))
SCREEN = (1920, 1080)
WINDOW = f"{SCREEN[0]}x{SCREEN[1]}"
ANSWERS = ("signed-in", "signed-out", "place", "open", "reopened", "closed", "counts", "shown", "alarms", "blocked", "laid",
           "recording", "page", "painting")
TICKS = os.sysconf("SC_CLK_TCK")


def program(name):
    """A program that benchmarks/ builds."""
    return str(BUILD / "benchmarks" / name)


def note(text):
    print(text, file=sys.stderr, flush=True)


def line(name, ours, unit, peer, theirs, digits=2):
    """Prints one figure. With nothing on either side the two are equal."""
    ours, theirs = round(ours, digits), round(theirs, digits)
    if theirs:
        ratio = f"{ours / theirs:.3f}"
    else:
        ratio = "1.000" if not ours else "inf"
    print(f"{name} {ours:.{digits}f} {unit} vs {peer} {theirs:.{digits}f} ratio {ratio}", flush=True)


class Child:
    """A process that is ended with its `with` block."""

    def __init__(self, command, **options):
        self.process = subprocess.Popen(command, **options)
        self.pid = self.process.pid

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()

    def end(self, patience=10):
        if self.process.stdin is not None:
            try:
                self.process.stdin.close()  # the end of its orders
                self.process.wait(timeout=patience)
            except (BrokenPipeError, subprocess.TimeoutExpired):
                pass
        if self.process.poll() is None:
            self.process.terminate()
        try:
            self.process.wait(timeout=patience)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def cpu_seconds(self):
        """User and system time of all its threads, those that have ended too."""
        fields = pathlib.Path(f"/proc/{self.pid}/stat").read_text().rsplit(")", 1)[1].split()
        return (int(fields[11]) + int(fields[12])) / TICKS

    def resident_mib(self):
        for row in pathlib.Path(f"/proc/{self.pid}/status").read_text().splitlines():
            if row.startswith("VmRSS:"):
                return int(row.split()[1]) / 1024
        return 0.0

    def thread_count(self):
        return len(os.listdir(f"/proc/{self.pid}/task"))

    def file_count(self):
        return len(os.listdir(f"/proc/{self.pid}/fd"))


class Display(Child):
    """An X server of its own, without a screen to be seen."""

    def __init__(self, size=SCREEN):
        reading, writing = os.pipe()
        super().__init__(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", f"{size[0]}x{size[1]}x24", "+extension", "GLX",
             "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            self.name = ":" + numbers.readline().strip()
        if self.name == ":":
            self.end()
            raise RuntimeError("no virtual display")


class Ordered(Child):
    """A program that takes orders on its standard input, one a line, and answers each with a line. What else it says
    goes into `log`, a file, where there is one."""

    def __init__(self, command, display=None, runtime=None, log=None):
        environment = dict(os.environ, QT_QPA_PLATFORM="xcb", QT_LOGGING_RULES="*=false")
        for name in ("WAYLAND_DISPLAY", "DISPLAY"):
            environment.pop(name, None)
        if display is not None:
            environment["DISPLAY"] = display.name
        if runtime is not None:
            environment["XDG_RUNTIME_DIR"] = runtime
        errors = None if os.environ.get("CORVANTA_BENCH_VERBOSE") else subprocess.DEVNULL
        if log is not None:
            del environment["QT_LOGGING_RULES"]
            errors = log
        super().__init__(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=errors, text=True, bufsize=1,
                         env=environment)
        self.command = os.path.basename(command[0])

    def order(self, text, patience=90):
        self.process.stdin.write(text + "\n")
        self.process.stdin.flush()
        return self.answer(patience)

    def answer(self, patience=90):
        """The words after the first of the next answer; other text that a library prints is passed over."""
        end = time.monotonic() + patience
        while time.monotonic() < end:
            if not select.select([self.process.stdout], [], [], max(0.0, end - time.monotonic()))[0]:
                break
            text = self.process.stdout.readline()
            if not text:
                raise RuntimeError(f"{self.command} ended")
            words = text.split()
            if words and words[0] in ANSWERS:
                return words[1:]
            if words and words[0] == "failed":
                raise RuntimeError(f"{self.command}: {text.strip()}")
        raise RuntimeError(f"{self.command} does not answer")

    def counts(self):
        """Pictures received, overwritten and painted since it runs."""
        received, overwritten, painted = map(int, self.order("counts"))
        return received, overwritten, painted


def busy_seconds():
    """What all processes of the machine have used."""
    fields = list(map(int, pathlib.Path("/proc/stat").read_text().splitlines()[0].split()[1:]))
    return (sum(fields) - fields[3] - fields[4]) / TICKS


class Window:
    """What happened between two moments: pictures, CPU, memory, and how much the machine did beside."""

    def __init__(self, ordered, display, seconds):
        members = [ordered] + ([display] if display else [])
        start, busy = time.monotonic(), busy_seconds()
        cpu = [member.cpu_seconds() for member in members]
        first = ordered.counts()
        time.sleep(seconds)
        last = ordered.counts()
        self.seconds = time.monotonic() - start
        self.program_cpu = members[0].cpu_seconds() - cpu[0]
        self.server_cpu = members[1].cpu_seconds() - cpu[1] if display else 0.0
        self.cpu = self.program_cpu + self.server_cpu
        self.received, self.overwritten, self.painted = (b - a for a, b in zip(first, last))
        self.memory = ordered.resident_mib()
        self.others = max(0.0, busy_seconds() - busy - self.cpu) / self.seconds


def steady(ordered, display, seconds=12, tries=3, quiet=0.15):
    """The quietest of up to `tries` windows: one in which others used less than `quiet` cores is taken at once."""
    best = None
    for _ in range(tries):
        window = Window(ordered, display, seconds)
        if best is None or window.others < best.others:
            best = window
        if best.others < quiet:
            break
    return best


def temporary_folder():
    return tempfile.TemporaryDirectory(prefix="corvanta-bench-")
