"""From the start of the process: the login screen, and the portal with a stored login."""

import json
import shutil
import statistics
import time

from ..processes import Running
from ..rows import Row, number
from ..sandbox import Sandbox

# The client shows its home view this long after the sign-in, by design.
SWITCH_DELAY_MS = 250
# After a load the engine still frees and compiles for a while.
SETTLE_S = 3
COOKIES = (25, 100, 400)
PORTAL_PATH = "/portal/index.html"
TOKEN_LOGINS = 21


def _stored_cookies(count):
    """As many cookies of other sites, as the client keeps them."""
    expires = int((time.time() + 86_400) * 1000)
    return [{"Name": f"visit{i}", "Value": "v" * 40, "Domain": f".site{i}.example", "Path": "/", "Secure": False,
             "HttpOnly": False, "SameSite": 0, "Expires": expires} for i in range(count)]


class Client:
    """vant-student with a profile of its own, which is the same before each start."""

    def __init__(self, bench, sandbox, name, settings):
        self._bench = bench
        self._profile = bench.work / f"profile-{name}"
        self._profile.mkdir()
        self._settings = settings
        self._config = bench.work / f"{name}.toml"
        self._config.write_bytes(sandbox.get("/deployment.toml"))

    def start(self, probe, cookies=0, **env):
        # Both notices were accepted, and the program has run before.
        lines = ["[General]", "isFirstInstall=true", "JurisdictionNotice=true", "UserGuideAuthorizationTip=true"]
        lines += [f'{key}="{value}"' if isinstance(value, str) else f"{key}={str(value).lower()}"
                  for key, value in self._settings.items()]
        (self._profile / "settings.ini").write_text("\n".join(lines) + "\n", encoding="utf-8")
        (self._profile / "cookies.json").write_text(json.dumps(_stored_cookies(cookies)), encoding="utf-8")
        command = [self._bench.program("vant-student"), "--profile", self._profile, "--config", self._config]
        return _probed(self._bench, command, probe, "client.log", **env)


def _probed(bench, command, probe, log, **env):
    return Running(command, bench.env | {"LD_PRELOAD": str(bench.probe(probe))} | env, bench.work / log)


def _until_usable(program):
    with program:
        return program.milliseconds_until("usable")


def login(bench):
    """The login screen is usable when a field that can be seen takes a key."""
    with Sandbox(bench) as sandbox:
        client = Client(bench, sandbox, "login", {"isLoginForST": False})

        def ours(cookies=0):
            return _until_usable(client.start("field", cookies))

        def window(name):
            return lambda: _until_usable(_probed(bench, [bench.program(name)], "field", "peer.log"))

        client_ms, peer_ms, engine_ms, field_ms = bench.in_turn(
            ours, *map(window, ("peer_login_screen", "peer_window_engine", "peer_window")))
        notes = [
            "The peer shows the client's own screen in a window of its own, with the web engine linked and set up as in "
            "the client. It has no configuration, no launch picture, no push, no lock, and asks nothing of a server.",
            "For scale, without a bar: a window with one text field on white takes "
            f"{number(statistics.median(field_ms))} ms, and {number(statistics.median(engine_ms))} ms where the engine "
            "is linked to it and set up.",
        ]
        return [Row("login", "Login screen usable", "ms", client_ms, peer_ms, "the same screen alone", "ratio",
                    1.15, notes, bench.grown(ours, COOKIES), "stored cookies")]


def portal(bench):
    """From the start of the process to the end of the portal's load, and the memory then."""
    with Sandbox(bench) as sandbox:
        site_code, data, cookies = sandbox.sign_in()
        client = Client(bench, sandbox, "portal", {"isLoginForST": True, "loginTokenForST": data["login_token"],
                                                   "siteCodeForST": site_code})
        web_view = [bench.program("peer_web_view"), data["redirect_url"], *cookies]

        def seen(program):
            with program:
                load_ms = program.milliseconds_until("loaded")
                time.sleep(SETTLE_S)
                return load_ms, program.pss()

        def ours(cookies=0):
            load_ms, pss = seen(client.start("page", cookies, BENCH_PAGE=PORTAL_PATH))
            return load_ms - SWITCH_DELAY_MS, pss

        def peer():
            return seen(_probed(bench, web_view, "page", "peer.log", BENCH_PAGE=PORTAL_PATH))

        our_runs, peer_runs = bench.in_turn(ours, peer)
        grown = {count: [ours(count) for _ in range(bench.growth_runs)] for count in COOKIES}
        token_ms = statistics.median(sandbox.token_login_ms(site_code, data["login_token"])
                                     for _ in range(TOKEN_LOGINS))
    shutil.rmtree(bench.work / "home", ignore_errors=True)
    (bench.work / "home").mkdir()

    def row(key, title, unit, part, target, notes):
        growth = {count: statistics.median(run[part] for run in runs) for count, runs in grown.items()}
        return Row(key, title, unit, [run[part] for run in our_runs], [run[part] for run in peer_runs],
                   "a bare web view", "ratio", target, notes, growth, "stored cookies")

    our_load = statistics.median(run[0] for run in our_runs)
    return [
        row("portal", "Portal loaded, stored login", "ms", 0, 1.15, [
            f"The fixed {SWITCH_DELAY_MS} ms between the sign-in and the home view are subtracted from the client's "
            "time. The engine's profile and view are made in that time.",
            "The web view knows its address and its cookies beforehand; the client must ask the platform for both by a "
            f"token login, whose round trip alone is {number(token_ms)} ms ({100 * token_ms / our_load:.1f} % of the "
            "client's time).",
            "The web view has no bridge: the page's two calls and its user scripts run in the client alone.",
        ]),
        row("portal-memory", "Memory after the portal has loaded", "MiB", 1, 1.10, [
            f"Proportional set size of the process tree, {SETTLE_S} s after the end of the load.",
            "The web view has no login screen, no request layer and no bridge.",
        ]),
    ]
