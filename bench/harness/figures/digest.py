"""The fingerprint of a big file."""

import statistics

from ..processes import Failed, run
from ..rows import Row, number
from .upload import sample_file

SIZE_MIB = 1024


def measure(bench):
    size = bench.scaled(SIZE_MIB)

    def timed(*command):
        def once(size_mib=size):
            wall, said = run([*command, sample_file(bench, size_mib)], bench.env)
            digests.add((size_mib, next(word for word in said.split() if len(word) == 32)))
            return wall
        return once

    digests = set()
    ours, md5sum, openssl = (timed(bench.program("bench_digest")), timed("md5sum"), timed("openssl", "md5"))
    our_ms, md5sum_ms, openssl_ms = bench.in_turn(ours, md5sum, openssl)
    growth = bench.grown(ours, (size // 16, size // 4))
    growth[size] = statistics.median(our_ms)
    if len(digests) != len(growth):
        raise Failed("the programs do not agree on the digest")
    sample_file(bench, size).unlink()
    named = {"md5sum": md5sum_ms, "openssl md5": openssl_ms}
    name = min(named, key=lambda name: statistics.median(named[name]))
    others = ", ".join(f"{one} {number(statistics.median(ms))} ms" for one, ms in named.items())
    return [Row("digest", "MD5 of 1 GiB", "ms", our_ms, named[name], name, "ratio", 1.05, [
        f"Whole processes, the file in the page cache, the same digest from all: {others}.",
        "The client's process also loads the toolkit. It reads 8,192 bytes at a time; md5sum and openssl read more.",
    ], growth, "MiB")]
