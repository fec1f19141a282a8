#!/usr/bin/env python3
"""Runs the measuring programs alternately and prints one Markdown table of medians and ratios.

compare.py PROGRAMS DATA TREE [--repeats N] [--only GROUP]

PROGRAMS is the folder with the bench_* programs, DATA that of the generated scripts, TREE the folder
to search in. A program that is not there leaves its column empty; a group that takes longer than
SLOW seconds runs once.
"""

import argparse
import contextlib
import os
import pathlib
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

SLOW = 20
TIMEOUT = 240
GROUPS = ["load_10mb", "load_100mb", "comment", "keys", "pages", "long_line", "selection", "find"]
OURS, SCINTILLA, PLAIN = "quill", "scintilla", "plaintext"
EDITORS = [OURS, SCINTILLA, PLAIN]

# name, text of the row, unit, what is wanted of ours:
#   ("times", n, peers): n times better than each of the peers;  ("most", n): at most n of the unit
ROWS = [
    ("load_10mb", "load 10 MB", "ms", [("times", 4, [SCINTILLA])]),
    ("load_100mb", "load 100 MB", "ms", [("times", 4, [SCINTILLA])]),
    ("first_paint_100mb", "first paint after the load of 100 MB", "ms", [("most", 50)]),
    ("memory_100mb", "memory for 100 MB", "MB", [("most", 250)]),
    ("colour_10mb", "colour all of 10 MB", "ms", [("times", 12, [SCINTILLA, PLAIN])]),
    ("comment_opener_10mb", "comment opener in line 1, view at the end, repaint", "ms",
     [("times", 15, [SCINTILLA, PLAIN])]),
    ("key_median", "key in the middle of 10 MB, own repaint, median", "ms",
     [("most", 0.3), ("times", 10, [SCINTILLA, PLAIN])]),
    ("key_p99", "the same, 99th percentile", "ms", [("most", 1.5)]),
    ("key_whole_view", "the same, whole view repainted, median", "ms", []),
    ("enter_median", "Enter there, median", "ms", [("most", 0.6)]),
    ("enter_p99", "the same, 99th percentile", "ms", [("most", 3)]),
    ("backspace_median", "Backspace there, median", "ms", [("most", 0.6)]),
    ("backspace_p99", "the same, 99th percentile", "ms", [("most", 3)]),
    ("typing_2000", "2,000 characters of indented code typed there", "ms", []),
    ("pages", "page down, 1,000 pages, repaint", "/s", [("times", 2, [SCINTILLA, PLAIN])]),
    ("long_line_first_paint", "one line of 20 MB, to the first paint", "ms", [("times", 10, [SCINTILLA])]),
    ("long_line_key", "a key in its middle", "ms", [("times", 10, [SCINTILLA])]),
    ("long_line_scroll", "a step sideways there", "ms", [("most", 30)]),
    ("replace_selection", "replace a selection of 100,000 lines", "ms", [("most", 100)]),
    ("replace_selection_undo", "its undo", "ms", [("most", 100)]),
    ("find_absent", "search of an absent text, 10 MB, any case", "ms", [("times", 6, [SCINTILLA])]),
    ("replace_all", "replace all of 100,000 hits in 10 MB, one step", "ms", [("times", 5, [SCINTILLA])]),
    ("replace_all_undo", "its undo", "ms", [("times", 5, [SCINTILLA])]),
]


def environment():
    """The programs' own settings and state stay out of the user's and out of the next run."""
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    home = tempfile.mkdtemp(prefix="quill-bench-")
    for name in ("XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"):
        env[name] = os.path.join(home, name)
        os.mkdir(env[name], 0o700)
    return env, home


def run_lines(command, env):
    """A program's "name value unit" lines, as a dictionary; what came before a failure counts."""
    try:
        done = subprocess.run(command, env=env, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=TIMEOUT)
        output, error = done.stdout, done.stderr.decode().strip() if done.returncode else ""
    except subprocess.TimeoutExpired as late:
        output, error = late.stdout or b"", f"took more than {TIMEOUT} s"
    if error:
        print(f"  {' '.join(map(str, command[:2]))}: {error}", file=sys.stderr)
    values = {}
    for line in output.decode().splitlines():
        fields = line.split("\t")
        if len(fields) == 3:
            values[fields[0]] = float(fields[1])
    return values


def run_editors(programs, data, groups, repeats, env):
    """{editor: {name: median}}; the editors take turns, so that a busy machine hits all alike."""
    samples = {editor: {} for editor in EDITORS}
    present = [e for e in EDITORS if (programs / f"bench_{e}").exists()]
    for editor in set(EDITORS) - set(present):
        print(f"bench_{editor} is not built; its column stays empty", file=sys.stderr)
    for group in groups:
        slow = set()
        for turn in range(repeats):
            for editor in present:
                if editor in slow:
                    continue
                print(f"{group} {turn + 1}/{repeats}: {editor}", file=sys.stderr)
                start = time.monotonic()
                for name, value in run_lines([programs / f"bench_{editor}", group, data], env).items():
                    samples[editor].setdefault(name, []).append(value)
                if time.monotonic() - start > SLOW:
                    slow.add(editor)
    return {e: {name: statistics.median(v) for name, v in named.items()} for e, named in samples.items()}


@contextlib.contextmanager
def display(env):
    """An environment with a virtual display: a start is measured up to a window that a person sees."""
    read, write = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                              pass_fds=[write], stderr=subprocess.DEVNULL)
    os.close(write)
    with os.fdopen(read) as number:
        yield dict(env, QT_QPA_PLATFORM="xcb", DISPLAY=":" + number.readline().strip())
    server.terminate()
    server.wait()


def start_time(programs, program, env):
    env = dict(env, LD_PRELOAD=str(programs / "libfirst_paint.so"), STARTED_AT_NS=str(time.monotonic_ns()))
    return run_lines([program], env).get("start")


def large_script(data):
    """A script of 100 MB made of the sample's text, some million definitions; written once."""
    path = data / "lander100.vsl"
    if not path.exists():
        sample = pathlib.Path(__file__).parent.parent / "samples" / "lander"
        text = b"".join(p.read_bytes() for p in sorted(sample.iterdir()) if p.suffix in (".vsl", ".h"))
        path.write_bytes(text * (100_000_000 // len(text) + 1))
    return path


def large_times(programs, command, env):
    """What the watch in a program says that opens a large script."""
    env = dict(env, LD_PRELOAD=str(programs / "liblarge_script.so"), STARTED_AT_NS=str(time.monotonic_ns()))
    return run_lines(command, env)


def print_large(programs, data, env, repeats):
    """The rows of the outline of a large script, measured in the program's window on a virtual display."""
    quill, bare = programs.parent / "bin" / "quill", programs / "bare_script"
    if not quill.exists() or not bare.exists():
        return
    script = large_script(data)
    samples = {quill: {}, bare: {}}
    with display(env) as shown:
        for _ in range(repeats):
            for program, named in samples.items():
                for name, value in large_times(programs, [program, script], shown).items():
                    named.setdefault(name, []).append(value)
    ours, beside = ({name: statistics.median(v) for name, v in named.items()} for named in samples.values())
    first, alone = ours.get("large_first_paint"), beside.get("large_first_paint")
    ratio = first / alone if first and alone else None
    met = "" if ratio is None else ("yes" if ratio <= 1.5 else "no")
    print(f"| start with a script of 100 MB, to its first paint (ms) | {figure(first)} | {figure(alone)} "
          f"(a window with the text alone) | {figure(ratio)} | at most 1.5 times | {met} |")
    for name, text, most in (
            ("large_first_memory", "memory then (MB)", 300),
            ("large_outline", "from there to its outline of a million names (ms)", None),
            ("large_outline_held", "the longest that this holds the window's thread (ms)", 5),
            ("large_outline_memory", "memory then (MB)", 300),
            ("large_again", "from a line that is typed to the next outline (ms)", None),
            ("large_again_held", "the longest that this holds the window's thread (ms)", 5),
            ("large_again_memory", "memory then (MB)", 300)):
        value = ours.get(name)
        met = "" if value is None or most is None else ("yes" if value <= most else "no")
        wanted = "" if most is None else f"at most {most}"
        print(f"| {text} | {figure(value)} | {figure(beside.get(name)) if name == 'large_first_memory' else ''} "
              f"| | {wanted} | {met} |")


def timed(command):
    start = time.monotonic()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                   env=dict(os.environ, LC_ALL="C"), check=False)
    return (time.monotonic() - start) * 1000


def alternate(works, repeats):
    """Medians of several measurements that take turns; None for one that gives nothing."""
    samples = [[] for _ in works]
    for work in works:
        work()
    for _ in range(repeats):
        for sample, work in zip(samples, works):
            value = work()
            if value is not None:
                sample.append(value)
    return [statistics.median(s) if s else None for s in samples]


def figure(value):
    if value is None:
        return ""
    if value >= 100:
        return f"{value:,.0f}"
    return f"{value:.3g}"


def verdict(ours, values, unit, wanted):
    """The ratio to the better peer, the wish in words, and whether it is met."""
    higher = unit == "/s"
    factor = lambda peer: ours / peer if higher else peer / ours
    peers = [values[p] for p in (SCINTILLA, PLAIN) if values.get(p)]
    ratio = f"{min(map(factor, peers)):.1f}" if ours and peers else ""
    wishes, met = [], True
    for wish in wanted:
        if wish[0] == "most":
            wishes.append(f"at most {wish[1]:g} {unit}")
            met = met and ours is not None and ours <= wish[1]
        else:
            against = [values[p] for p in wish[2] if values.get(p)]
            wishes.append(f"{wish[1]} times {' and '.join(wish[2])}")
            met = met and bool(ours and against) and all(factor(p) >= wish[1] for p in against)
    answer = "" if ours is None or not wanted else ("yes" if met else "no")
    return ratio, "; ".join(wishes), answer


def print_editors(medians):
    print("| work | quill | QScintilla | QPlainTextEdit | ratio to the better | wanted | met |")
    print("|---|---:|---:|---:|---:|---|---|")
    for name, text, unit, wanted in ROWS:
        values = {editor: medians[editor].get(name) for editor in EDITORS}
        if not any(values.values()):
            continue
        ratio, wish, met = verdict(values[OURS], values, unit, wanted)
        cells = " | ".join(figure(values[e]) for e in EDITORS)
        print(f"| {text} ({unit}) | {cells} | {ratio} | {wish} | {met} |")


def print_others(programs, data, tree, medians, repeats, env):
    """Work that is compared with other programs: starting, counting hits, searching a tree."""
    print("\n| work | quill | beside it | ratio | wanted | met |")
    print("|---|---:|---:|---:|---|---|")

    def row(text, ours, beside, name, most):
        ratio = ours / beside if ours and beside else None
        met = "" if ratio is None else ("yes" if ratio <= most else "no")
        print(f"| {text} | {figure(ours)} | {figure(beside)} ({name}) | {figure(ratio)} | "
              f"at most {most:g} times | {met} |")

    quill = programs.parent / "bin" / "quill"
    with display(env) as shown:
        starts = [lambda: start_time(programs, programs / "smallest_window", shown)]
        if quill.exists():
            starts.append(lambda: start_time(programs, quill, shown))
        window, *own = alternate(starts, max(repeats, 9))
    row("start to the first painted window (ms)", own[0] if own else None, window, "smallest Qt window", 2.5)

    grep, = alternate([lambda: timed(["grep", "-ciF", "There_Is_No_Such_Text", data / "10mb.vsl"])],
                      max(repeats, 5))
    row("search of an absent text in 10 MB (ms)", medians[OURS].get("find_absent"), grep, "grep -ciF", 2.5)

    finder = programs / "bench_find_in_files"
    if shutil.which("rg") and tree.exists():
        works = [lambda: timed(["rg", "-j1", "-inF", "hidden_treasure", tree])]
        if finder.exists():
            works.append(lambda: timed([finder, tree, "hidden_treasure"]))
        search, *own = alternate(works, max(repeats, 3))
        row("find in 20,000 files, 450 MB (ms)", own[0] if own else None, search, "rg -j1 -inF", 1)


    jumper = {}
    if (programs / "bench_intel_windows").exists():
        jumper = run_lines([programs / "bench_intel_windows"], env)
    row("outline of 10 MB (ms)", jumper.get("outline_scan"), jumper.get("count_lines"), "counting its lines", 10)
    for name, text, limit in (
            ("jumper_rebuild", "rebuild of the Code Jumper, 5,000 lines (ms)", 10),
            ("jumper_rebuild_definitions", "the same, a definition in every line (ms)", 10),
            ("completion_open", "completion list of 20,000 names, to the paint (ms)", 30),
            ("completion_narrow", "a key more in it, to the paint (ms)", 5)):
        value = jumper.get(name)
        met = "" if value is None else ("yes" if value <= limit else "no")
        print(f"| {text} | {figure(value)} | | | at most {limit} ms | {met} |")
    print_large(programs, data, env, max(repeats, 3))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("programs", type=pathlib.Path)
    parser.add_argument("data", type=pathlib.Path)
    parser.add_argument("tree", type=pathlib.Path)
    parser.add_argument("--repeats", type=int, default=3)
    parser.add_argument("--only", choices=GROUPS + ["others"])
    args = parser.parse_args()
    groups = [g for g in GROUPS if args.only in (None, g)]
    env, home = environment()
    try:
        medians = run_editors(args.programs, args.data, groups, args.repeats, env)
        print_editors(medians)
        if args.only in (None, "others"):
            print_others(args.programs, args.data, args.tree, medians, args.repeats, env)
    finally:
        shutil.rmtree(home, ignore_errors=True)


if __name__ == "__main__":
    main()
