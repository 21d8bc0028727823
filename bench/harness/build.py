"""Puts in place what the figures need."""

import subprocess
import shutil

TARGETS = ["vant-student", "vant-sandbox", "bench_probe_field", "bench_probe_page", "bench_bridge", "bench_requests",
           "bench_upload", "bench_digest", "bench_chooser", "bench_frames", "peer_window", "peer_window_engine", "peer_login_screen",
           "peer_web_view", "peer_channel", "peer_requests", "peer_upload", "peer_sort"]


def install(here):
    subprocess.run([here.parent / "scripts" / "install-packages", here / "packages.txt"], check=True)


def build(source, folder):
    """The client and the peers by one and the same release configuration."""
    configure = ["cmake", "--preset", "release", "-B", folder, "-DVANT_BENCH=ON"]
    if shutil.which("ccache"):
        configure.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
    subprocess.run(configure, cwd=source, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", folder, "--target", *TARGETS], cwd=source, check=True)
