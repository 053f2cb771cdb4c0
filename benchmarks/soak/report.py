"""The soak's table."""

import pathlib

import meter

PAGE = meter.ROOT / "docs" / "reliability.md"
BEGIN, END = "<!-- soak: begin -->", "<!-- soak: end -->"
MEMORY = 1.05  # what is used at the end against what was used when everything had been shown
THREADS, FILES = 4, 8
NAMED = 10  # of the longest blocks
IDLE = ("poll", "ppoll", "__poll", "__ppoll")


def cause(block):
    """Where the GUI thread was: the program's own innermost functions, and what they were calling."""
    if not block.stacks:
        return "ended before it could be asked"
    stack = max(block.stacks, key=lambda names: sum(name.startswith("* ") for name in names))
    stack = stack[2:]  # the signal
    own = [name[2:].split("(")[0] for name in stack if name.startswith("* ") and "GuiWatch" not in name]
    inner = next((name.split("(")[0] for name in stack if name and not name.startswith("lib")), "?")
    if inner in IDLE or block.computed < 0.2 * block.milliseconds and not own[:1]:
        return "waited for a core"
    shown = [name for name in own if name not in ("main", "run", "_start")][:3]
    return " < ".join(dict.fromkeys([inner, *shown]))


def table(minutes, figures, shift, found):
    memory, threads, files = (figures.parts(column) for column in (1, 2, 3))
    broken = []

    def check(holds, what):
        if not holds:
            broken.append(what)
        return "" if holds else " (!)"

    rows = [
        ("Time", f"{minutes} minutes, {figures.cores:.2f} cores used by the client"),
        ("Pictures", f"{figures.received} came to the tiles, {figures.shown} were painted, {figures.overwritten} "
                     "were replaced by a newer one before"),
        ("Cameras", f"{shift.dropped} times one dropped" + (f"; {shift.absent} times some did not come back" +
         check(False, "cameras") if shift.absent else "; all came back")),
        ("Signed out and in", f"{len(shift.signed_out)} times"),
        ("Rows written", ", ".join(f"{count} {name}" for name, count in figures.rows.items())),
        ("Recordings", f"{found.files} files, {found.frames} frames; {found.missing} missing in them, {found.between} "
                       f"between them, {found.strange} that were never sent" +
         check(found.frames > 0 and not found.problems, "recordings")),
        ("Memory", f"{memory[0]:.0f} MiB at first, {memory[1]:.0f} MiB at last (bound: {MEMORY:.2f} times)" +
         check(memory[1] <= MEMORY * memory[0], "memory")),
        ("Threads", f"{threads[0]:.0f}, then {threads[1]:.0f} (bound: {THREADS} more)" +
         check(threads[1] <= threads[0] + THREADS, "threads")),
        ("Open files", f"{files[0]:.0f}, then {files[1]:.0f} (bound: {FILES} more)" +
         check(files[1] <= files[0] + FILES, "open files")),
        ("An event waited", f"{figures.median:.1f} ms (median), {figures.percentile99:.1f} ms (99th percentile), "
                            f"{figures.worst:.0f} ms (worst), of {figures.beats:.0f} events"),
    ]
    text = ["| | |", "|---|---|", *(f"| {name} | {value} |" for name, value in rows), "",
            "The longest waits:", "", "| ms | of them computing | where |", "|---|---|---|"]
    for block in figures.blocks[:NAMED]:
        where = cause(block).replace("|", "\\|").replace("<", "&lt;")
        text.append(f"| {block.milliseconds:.0f} | {block.computed:.0f} | {where} |")
    text += ["", *(f"Not as it must be: {what}." for what in broken)]
    return "\n".join([*text, *found.problems[:NAMED]]).rstrip(), broken


def write(text):
    page = PAGE.read_text(encoding="utf-8")
    before, _, rest = page.partition(BEGIN)
    _, _, behind = rest.partition(END)
    PAGE.write_text(f"{before}{BEGIN}\n{text}\n{END}{behind}", encoding="utf-8")
