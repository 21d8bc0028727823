"""Uploads of big files in parts."""

import random
import statistics

from ..processes import told
from ..rows import Row, number
from ..sandbox import Sandbox

MIB = 1024 * 1024
SIZE_MIB = 256
MEMORY_SIZE_MIB = 1024
# Latency of each answer, in milliseconds: the most over the peer's time.
LATENCIES = {0: 1.15, 20: 1.02}
BLOCK = 16 * MIB


def sample_file(bench, size_mib):
    """Bytes that do not repeat, made once."""
    path = bench.work / f"{size_mib}.mp4"
    if not path.exists():
        noise = random.Random(size_mib)
        with open(path, "wb") as file:
            for begin in range(0, size_mib * MIB, BLOCK):
                file.write(noise.randbytes(min(BLOCK, size_mib * MIB - begin)))
    return path


def _uploader(bench, sandbox, program):
    def upload(size_mib, *options):
        # No part may be stored from the time before.
        sandbox.reset()
        return told([bench.program(program), sandbox.upload_base, sample_file(bench, size_mib), *options], bench.env,
                    300)
    return upload


def measure(bench):
    rows = []
    for latency, target in LATENCIES.items():
        with Sandbox(bench, latency=latency) as sandbox:
            ours, peer = (_uploader(bench, sandbox, name) for name in ("bench_upload", "peer_upload"))
            size = bench.scaled(SIZE_MIB)
            # With latency a whole round would warm up nothing more than a small one does.
            warm = max(1, size // 16) if latency else size
            our_runs, peer_runs = bench.in_turn(lambda: ours(size), lambda: peer(size),
                                                warm_up=(lambda: ours(warm), lambda: peer(warm)))
            our_ms = [run["wall_ms"] for run in our_runs]
            growth = bench.grown(lambda mib: ours(mib)["wall_ms"], (max(1, size // 16), max(2, size // 4)))
            growth[size] = statistics.median(our_ms)
        copied = statistics.median(run["copied_ms"] for run in our_runs)
        rows.append(Row(f"upload-{latency}ms", f"Upload of {SIZE_MIB} MiB, {latency} ms latency", "ms", our_ms,
                        [run["wall_ms"] for run in peer_runs], "curl", "ratio", target, [
                            "No part is stored before; both compute the MD5, then make the same calls in the same "
                            "order, each after the other. Service and storage are two hosts: one connection to each.",
                            "curl reads the file where it lies. The client first copies it, so that the user may "
                            f"change or delete it meanwhile: {number(copied)} ms "
                            f"({100 * copied / statistics.median(our_ms):.1f} % of its time).",
                        ], growth, "MiB"))
    return rows


def memory(bench):
    size = bench.scaled(MEMORY_SIZE_MIB)
    with Sandbox(bench) as sandbox:
        upload = _uploader(bench, sandbox, "bench_upload")

        def added(size_mib=size):
            return upload(size_mib, "memory")["added_bytes"] / MIB

        (ours,) = bench.in_turn(added, warm_up=(lambda: added(max(1, size // 16)),))
        growth = bench.grown(added, (max(1, size // 16), max(2, size // 4)))
        growth[size] = statistics.median(ours)
    sample_file(bench, size).unlink()
    return [Row("upload-memory", "Anonymous memory added by a 1 GiB upload", "MiB", ours, [], "", "value", 32, [
        "The highest of looks every 2 ms at the process's own anonymous memory, above that before the upload.",
    ], growth, "MiB")]
