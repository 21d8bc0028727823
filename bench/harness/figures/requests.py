"""Calls to the platform through the request layer."""

import statistics

from ..processes import told
from ..rows import Row, number
from ..sandbox import Sandbox

CALLS = 10_000


def measure(bench):
    with Sandbox(bench) as sandbox:
        site = sandbox.schools()[0]["site_id"]

        def ours(count=bench.scaled(CALLS)):
            return told([bench.program("bench_requests"), sandbox.base + "/", count, site], bench.env, 300)

        def peer(*threads):
            return told([bench.program("peer_requests"), sandbox.settings_url(site), bench.scaled(CALLS), *threads],
                        bench.env, 300)

        our_runs, peer_runs, apart_runs = bench.in_turn(ours, peer, lambda: peer("two"))
        rows = []
        for key, title, part in (("requests-wall", "Request layer, 10,000 calls, wall time", "wall_ms"),
                                 ("requests-cpu", "Request layer, 10,000 calls, CPU time", "cpu_ms")):
            apart = statistics.median(run[part] for run in apart_runs)
            over = statistics.median(run[part] for run in our_runs) / apart
            growth = bench.grown(lambda count, part=part: ours(count)[part], (CALLS // 16, CALLS // 4, CALLS))
            rows.append(Row(key, title, "ms", [run[part] for run in our_runs], [run[part] for run in peer_runs],
                            "a bare libcurl loop", "ratio", 1.25, [
                                "One call after the other over one connection, the same address, user agent and answer.",
                                "The bare loop has its address ready and reads the answer into JSON; the layer writes "
                                "the address from module, operation and parameters, limits time, size and content "
                                "type, keeps cookies and reads the envelope.",
                                "The bare loop is one thread. The layer hands each call to the network thread and its "
                                "answer back; the least program that does so and nothing else takes "
                                f"{number(apart)} ms, of which the layer takes {over:.2f}×.",
                            ], growth, "calls"))
        return rows
