"""All figures by the names that bench/run knows them by."""

from . import bridge, camera, chooser, digest, requests, start, upload

FIGURES = {
    "login": start.login,
    "portal": start.portal,
    "bridge": bridge.measure,
    "requests": requests.measure,
    "upload": upload.measure,
    "memory": upload.memory,
    "digest": digest.measure,
    "sort": chooser.sort,
    "filter": chooser.filter_rows,
    "camera": camera.measure,
}
