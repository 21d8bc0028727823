"""Calls from a page to the shell and back."""

from ..processes import told
from ..rows import Row

PAYLOADS = {
    # key: title, characters, calls, at a time, what of the page's result, target, works that it grows by
    "bridge-100b": ("Bridge round trip, 100 B", 100, 4_000, 1, "ms_per_call", 1.05),
    "bridge-100k": ("Bridge round trip, 100 KiB", 100 * 1024, 240, 1, "ms_per_call", 1.05),
    "bridge-flight": ("Bridge, 1,000 calls in flight", 100, 20_000, 1_000, "ms_per_round", 0.80),
}


def _growth(bench, key, call):
    """How the time grows with the calls, the whole of them; in flight, with how many there are at once."""
    _, size, calls, flight, _, _ = PAYLOADS[key]
    if flight > 1:
        return bench.grown(lambda count: call(size, 5 * count, count)["ms_per_round"], (1_000, 4_000, 16_000))
    return bench.grown(lambda count: call(size, count, 1)["wall_ms"], (calls // 16, calls // 4, calls))


def measure(bench):
    def caller(program):
        def call(size, calls, flight):
            page = bench.page(f"echo.html?size={size}&calls={calls}&flight={flight}")
            return told([bench.program(program), page], bench.env)
        return call

    ours, peer = caller("bench_bridge"), caller("peer_channel")
    rows = []
    for key, (title, size, calls, flight, part, target) in PAYLOADS.items():
        wanted = (size, flight * bench.scaled(calls // flight), flight)
        our_ms, peer_ms = bench.in_turn(lambda: ours(*wanted)[part], lambda: peer(*wanted)[part])
        rows.append(Row(key, title, "ms", our_ms, peer_ms, "an echo over a plain QWebChannel", "ratio", target, [
            "Timed in the page, by the same script for both; every answer is held against what was sent.",
            "The client's bridge also keeps the channel in a world of its own, and checks the document with each call.",
        ], _growth(bench, key, ours), "calls in flight" if flight > 1 else "calls"))
    return rows
