"""What the figures were measured on."""

import datetime
import os
import pathlib
import platform
import subprocess


def _said(*command):
    """The first line that a program says; a dash where there is no such program."""
    try:
        done = subprocess.run(command, capture_output=True, text=True, timeout=20, check=False)
        return (done.stdout or done.stderr).splitlines()[0].strip()
    except (OSError, IndexError, subprocess.TimeoutExpired):
        return "–"


def _field(path, key, separator):
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        name, _, value = line.partition(separator)
        if name.strip() == key:
            return value.strip().strip('"')
    return "–"


def _version(package):
    return _said("dpkg-query", "-W", "-f", "${Version}", package)


def facts(source, command):
    dirty = "" if not _said("git", "-C", source, "status", "--porcelain", "--untracked-files=no").strip("–") else ", changed"
    return {
        "machine": f"{_field('/proc/cpuinfo', 'model name', ':')}, {os.cpu_count()} cores, "
                   f"{_field('/proc/meminfo', 'MemTotal', ':')}",
        "system": f"{_field('/etc/os-release', 'PRETTY_NAME', '=')}, Linux {platform.release()}",
        "versions": f"{_said('c++', '--version')}; Qt {_version('qt6-base-dev')}, web engine "
                    f"{_version('libqt6webenginecore6')}; ICU {_version('libicu72')}; ZXing {_version('libzxing2')}; "
                    f"curl {_version('libcurl4')}; {_said('openssl', 'version')}; {_said('md5sum', '--version')}; "
                    f"{_said('grep', '--version')}",
        "source": _said("git", "-C", source, "rev-parse", "--short", "HEAD") + dirty,
        "date": datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%d %H:%M UTC"),
        "command": command.strip(),
        "load": "%.2f" % os.getloadavg()[0],
    }
