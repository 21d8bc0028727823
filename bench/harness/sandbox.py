"""The school platform that all figures with a server are measured against."""

import http.client
import json
import time
import urllib.parse
import urllib.request

from .processes import Failed, Running

ACCOUNT = {"user_code": "student01", "user_pwd": "vant1234", "app_type": "IOS", "client_code": "BENCH"}
UPLOAD_ADDRESS = "127.0.0.7"


class Sandbox(Running):
    def __init__(self, bench, schools=100, latency=0):
        super().__init__([bench.program("vant-sandbox"), "--port", 0, "--schools", schools, "--latency", latency],
                         bench.env, bench.work / "sandbox.log")
        self.base = self.line(30).strip()
        self.port = urllib.parse.urlsplit(self.base).port
        self.upload_base = f"http://{UPLOAD_ADDRESS}:{self.port}"

    def get(self, path):
        with urllib.request.urlopen(self.base + path, timeout=60) as answer:
            return answer.read()

    def reset(self):
        """Forgets what was uploaded."""
        request = urllib.request.Request(self.base + "/_control/reset", b"{}", {"Content-Type": "application/json"})
        urllib.request.urlopen(request, timeout=60).close()
        if json.loads(self.get("/_control/storage"))["files"]:
            raise Failed("the school platform has kept files")

    def schools(self):
        answer = json.loads(self.get("/do?action=rb%2Fplatform%2Fsite&start=cndSite"))
        return answer["data"]["list"]

    def settings_url(self, site):
        """The call by which the client asks for a site's settings, as it is on the wire."""
        return f"{self.base}/do?action=gpl%2Fplatform%2Fportal&site_id={site}&start=getSetting4App"

    def _login(self, site_code, parameters):
        query = urllib.parse.urlencode({"action": "gpl/portal", "start": "login4H5"} | parameters)
        with urllib.request.urlopen(f"{self.base}/{site_code}/do?{query}", timeout=60) as answer:
            cookies = answer.headers.get_all("Set-Cookie") or []
            return json.loads(answer.read())["data"], cookies

    def sign_in(self):
        """Signs a pupil in: the site's code, the answer's data and the cookies that came with it."""
        site_code = self.schools()[0]["site_code"]
        data, cookies = self._login(site_code, ACCOUNT)
        return site_code, data, cookies

    def token_login_ms(self, site_code, token):
        """How long the round trip of a token login takes, without the client's work for it."""
        query = urllib.parse.urlencode({"action": "gpl/portal", "start": "login4H5", "login_type": "3",
                                        "login_token": token})
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=60)
        begin = time.monotonic()
        connection.request("GET", f"/{site_code}/do?{query}")
        answer = connection.getresponse().read()
        took = (time.monotonic() - begin) * 1000
        connection.close()
        assert json.loads(answer)["code"] == 200
        return took
