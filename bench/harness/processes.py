"""Programs as they are started, watched and ended; each has a limit of its time."""

import json
import os
import pathlib
import select
import signal
import subprocess
import time


class Failed(Exception):
    """A program did not do what it was started for; what it measured does not count."""


def environment(work):
    """The same for both of a pair: no display, nothing of the user's session, no call home."""
    for name in ("home", "runtime", "tmp"):
        (work / name).mkdir(mode=0o700, exist_ok=True)
    settings = {
        "PATH": os.environ["PATH"],
        "LANG": "C.UTF-8",
        "HOME": str(work / "home"),
        "TMPDIR": str(work / "tmp"),
        "XDG_RUNTIME_DIR": str(work / "runtime"),
        "DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent",
        "QT_QPA_PLATFORM": "offscreen",
        "QT_QUICK_BACKEND": "software",
        "QTWEBENGINE_CHROMIUM_FLAGS": "--disable-quic --no-first-run --disable-background-networking"
                                      " --disable-component-update --disable-sync",
    }
    if os.geteuid() == 0:
        settings["QTWEBENGINE_DISABLE_SANDBOX"] = "1"
    return settings


def run(command, env, limit=120):
    """Runs a program to its end; its wall time in milliseconds and what it printed."""
    begin = time.monotonic()
    try:
        done = subprocess.run([str(word) for word in command], env=env, timeout=limit, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
    except subprocess.TimeoutExpired as late:
        raise Failed(f"{command[0]} took more than {limit} s") from late
    wall = (time.monotonic() - begin) * 1000
    if done.returncode != 0:
        raise Failed(f"{command[0]} ended with {done.returncode}: {done.stderr.decode(errors='replace')[-400:]}")
    return wall, done.stdout.decode()


def told(command, env, limit=120):
    """Runs a program that prints its figures as JSON."""
    return json.loads(run(command, env, limit)[1])


class Running:
    """A program that goes on until it is ended, for a with statement."""

    def __init__(self, command, env, log):
        self._log = open(log, "ab")
        self.began = time.monotonic_ns()
        # A session of its own: its children are found and ended by it.
        self.process = subprocess.Popen([str(word) for word in command], env=env, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=self._log, start_new_session=True)
        self._read = b""

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for ending in (signal.SIGTERM, signal.SIGKILL):
            try:
                os.killpg(self.process.pid, ending)
            except ProcessLookupError:
                break
            try:
                self.process.wait(10)
            except subprocess.TimeoutExpired:
                continue
            self._wait_for_children()
        self.process.stdout.close()
        self._log.close()

    def _wait_for_children(self, limit=5):
        end = time.monotonic() + limit
        while len(self.tree()) > 0 and time.monotonic() < end:
            time.sleep(0.02)

    def line(self, limit):
        """The next line it prints."""
        end = time.monotonic() + limit
        while b"\n" not in self._read:
            ready, _, _ = select.select([self.process.stdout], [], [], max(0, end - time.monotonic()))
            got = os.read(self.process.stdout.fileno(), 65536) if ready else b""
            if not got:
                raise Failed(f"{self.process.args[0]} said nothing for {limit} s, see {self._log.name}")
            self._read += got
        text, _, self._read = self._read.partition(b"\n")
        return text.decode()

    def milliseconds_until(self, event, limit=30):
        """Milliseconds from the start until it reported the event, as a probe does."""
        end = time.monotonic() + limit
        while True:
            words = self.line(max(0.1, end - time.monotonic())).split()
            if len(words) == 2 and words[0] == event:
                return (int(words[1]) - self.began) / 1e6

    def tree(self):
        """The living processes of its session."""
        found = []
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                # "12 (name) S ppid group session …"
                fields = stat.read_text().rpartition(")")[2].split()
            except OSError:
                continue
            if int(fields[3]) == self.process.pid and fields[0] != "Z":
                found.append(stat.parent)
        return found

    def pss(self):
        """Memory of the process tree in MiB, shared pages by their share."""
        total = 0
        for process in self.tree():
            for line in (process / "smaps_rollup").read_text().splitlines():
                if line.startswith("Pss:"):
                    total += int(line.split()[1])
        return total / 1024
