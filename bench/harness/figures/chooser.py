"""The school chooser: sorting and searching names."""

import statistics

from ..processes import run, told
from ..rows import Row, number
from ..sandbox import Sandbox

SORTED = 10_000
FILTERED = 100_000
PRESSES = ("一", "一中", "小学", "b", "X", "第一中学", "实验", "zzz")


def _names(bench, count):
    """The names of as many schools, one a line."""
    path = bench.work / f"{count}.names"
    if not path.exists():
        with Sandbox(bench, schools=count) as sandbox:
            names = [school["full_name"] for school in sandbox.schools()]
        path.write_text("".join(name + "\n" for name in names), encoding="utf-8")
    return path


def sort(bench):
    def timed(program, *words):
        return lambda count=SORTED: told([bench.program(program), *words, _names(bench, count)], bench.env)

    ours, peer = timed("bench_chooser", "sort"), timed("peer_sort")
    our_runs, peer_runs = bench.in_turn(ours, peer)
    growth = bench.grown(lambda count: ours(count)["wall_ms"], (SORTED // 16, SORTED // 4, SORTED))
    loading = statistics.median(run["loading_ms"] for run in our_runs)
    return [Row("sort", "Chooser: sort and group 10,000 names", "ms", [run["wall_ms"] for run in our_runs],
                [run["wall_ms"] for run in peer_runs], "a plain loop over the ICU transliterator", "faster", 10, [
                    f"Without the conversion's rules, which both load once ({number(loading)} ms; the client does so "
                    "before it needs them).",
                    "The plain loop knows no polyphonic names and sorts by the reading alone; the client keeps "
                    "syllables apart.",
                ], growth, "names")]


def filter_rows(bench):
    def presses(count=FILTERED):
        return told([bench.program("bench_chooser"), "filter", _names(bench, count), *PRESSES], bench.env)["press_ms"]

    keys = bench.work / "keys"
    keys.write_text(run([bench.program("bench_chooser"), "keys", _names(bench, FILTERED)], bench.env)[1],
                    encoding="utf-8")

    def grep():
        times = []
        for text in PRESSES:
            # It ends with 1 where it finds nothing.
            times.append(run(["sh", "-c", 'grep -c -i -F -e "$1" "$2" || [ $? = 1 ]', "sh", text, keys], bench.env)[0])
        return times

    our_runs, grep_runs = bench.in_turn(presses, grep)
    growth = bench.grown(lambda count: max(presses(count)), (FILTERED // 16, FILTERED // 4, FILTERED))
    slowest = max(range(len(PRESSES)), key=lambda press: statistics.median(run[press] for run in our_runs))
    empty_ms = statistics.median(run(["sh", "-c", "grep -c -i -F -e x /dev/null || [ $? = 1 ]"], bench.env)[0]
                                 for _ in range(11))
    return [Row("filter", "Chooser: filter 100,000 rows, slowest key press", "ms",
                [run[slowest] for run in our_runs], [run[slowest] for run in grep_runs], "grep -i -F", "value", 8, [
                    f"The slowest of {len(PRESSES)} texts, “{PRESSES[slowest]}”: from the text to the new rows in the "
                    "list.",
                    f"grep is a process for each text, of which its start is {number(empty_ms)} ms; it counts lines "
                    "and makes no rows.",
                ], growth, "rows")]
