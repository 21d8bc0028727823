"""What all figures share: the programs, a folder to work in, and the way a pair is run."""

import functools
import http.server
import shutil
import statistics
import threading

from .processes import environment

GROWTH_RUNS = 3


class _Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


class Bench:
    def __init__(self, here, folder, runs, is_quick):
        self.runs = runs
        self.growth_runs = 1 if is_quick else GROWTH_RUNS
        self.is_quick = is_quick
        self._bin = folder / "bin"
        self.work = folder / "work"
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir(parents=True)
        self.env = environment(self.work)
        handler = functools.partial(_Quiet, directory=here / "pages")
        self._pages = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)

    def __enter__(self):
        threading.Thread(target=self._pages.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self._pages.shutdown()
        shutil.rmtree(self.work, ignore_errors=True)

    def program(self, name):
        return self._bin / name

    def probe(self, name):
        return self._bin / f"libbench_probe_{name}.so"

    def page(self, name):
        return f"http://127.0.0.1:{self._pages.server_port}/{name}"

    def scaled(self, amount, least=1):
        """The amount of work; a trial run does a sixteenth of it."""
        return max(least, amount // 16) if self.is_quick else amount

    def in_turn(self, *programs, warm_up=None):
        """Runs the programs A B A B … and gives each one's measurements; the first round, or the warm-up, is dropped."""
        if not self.is_quick or warm_up:
            for program in programs if warm_up is None else warm_up:
                program()
        measured = [[] for _ in programs]
        for _ in range(self.runs):
            for program, samples in zip(programs, measured):
                samples.append(program())
        return measured

    def grown(self, measure, works):
        """The median of what measure(work) gives, for each amount of work."""
        return {work: statistics.median(measure(work) for _ in range(self.growth_runs)) for work in works}
