"""Reading a code in a camera's frame."""

import statistics

from ..processes import Failed, run, told
from ..rows import Row

SIZES = {1: (480, 270), 4: (960, 540), 16: (1920, 1080)}
FRAMES = 64
PICTURES = 33


def measure(bench):
    def frame(scale):
        path = bench.work / f"frame{scale}.pgm"
        if not path.exists():
            run([bench.program("bench_frames"), "make", path, *SIZES[scale]], bench.env)
        return path

    def ours(scale=16):
        return told([bench.program("bench_frames"), "read", frame(scale), bench.scaled(FRAMES, 4)],
                    bench.env)["ms_per_frame"]

    def reader(count):
        wall, said = run(["ZXingReader", "-1", "-fast", "-noscale", "-format", "QRCode,EAN-13,EAN-8,Code128",
                          *[frame(16)] * count], bench.env)
        if said.count("school.example") != count:
            raise Failed("the reader does not read the code")
        return wall

    def peer():
        count = bench.scaled(PICTURES, 5)
        return (reader(count) - reader(1)) / (count - 1)

    our_ms, peer_ms = bench.in_turn(ours, peer)
    growth = {SIZES[scale][0] * SIZES[scale][1]: value for scale, value in bench.grown(ours, SIZES).items()}
    return [Row("camera", "Decoding a 1920×1080 camera frame with a code", "ms", our_ms, peer_ms, "ZXingReader",
                "ratio", 1.05, [
                    "The same kinds of code and the same options of the library. The reader's start is subtracted: it "
                    "is the time for many pictures less that for one.",
                    "The reader also loads the grey picture (raw bytes, no compression), makes it grey again and looks "
                    "for further codes; the client measures the brightness.",
                ], growth, "pixels")]
