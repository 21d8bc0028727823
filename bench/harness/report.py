"""What was measured, kept between runs, and written as a page with plots."""

import dataclasses
import json
import tomllib

from . import plot
from .rows import Row, number

EXPLAINED = ("Medians; each pair was run in turn, A B A B …, after a warm-up. “Ratio” is ours over the peer's. A figure "
             "grows by an exponent: what it takes is proportional to the work to that power, over 1, 4 and 16 times "
             f"the work; up to {plot.LINEAR} counts as linear, for runs scatter.")


class Store:
    """The figures measured so far, each with the machine it was measured on."""

    def __init__(self, folder):
        self._folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def put(self, name, facts, rows):
        content = {"facts": facts, "rows": [dataclasses.asdict(row) for row in rows]}
        (self._folder / f"{name}.json").write_text(json.dumps(content, indent=1, ensure_ascii=False), encoding="utf-8")

    def get(self, name):
        path = self._folder / f"{name}.json"
        if not path.exists():
            return None, []
        content = json.loads(path.read_text(encoding="utf-8"))
        return content["facts"], [Row(**row) for row in content["rows"]]


def _cells(*cells):
    return "| " + " | ".join(cells) + " |"


def _summary(rows):
    lines = [_cells("Figure", "Ours", "Peer", "Ratio", "To reach", "Reached"), "| --- | ---: | ---: | ---: | --- | --- |"]
    for row in rows:
        peer = f"{number(row.peer_median)} {row.unit}" if row.peer else "–"
        lines.append(_cells(f"[{row.title}](#{row.key})", f"{number(row.our_median)} {row.unit}", peer, row.ratio_text,
                            row.target_text, "yes" if row.is_reached else "**no**"))
    return lines


def _growth(rows):
    lines = ["## Growth", "", "![growth](plots/growth.svg)", "",
             _cells("Figure", "Work", "What it took", "Exponent", "No worse than linear"),
             "| --- | --- | --- | ---: | --- |"]
    for row in rows:
        if row.exponent is None:
            continue
        lines.append(_cells(row.title, " / ".join(f"{int(work):,}" for work in row.growth) + " " + row.growth_of,
                            " / ".join(number(value) for value in row.growth.values()) + " " + row.unit,
                            f"{row.exponent:.2f}", "yes" if row.exponent <= plot.LINEAR else "**no**"))
    return lines


def _section(row, facts, causes):
    spread = f"{number(min(row.ours))} to {number(max(row.ours))} {row.unit}"
    lines = [f'## <a id="{row.key}"></a>{row.title}', "", f"![{row.title}](plots/{row.key}.svg)", "",
             f"Ours {number(row.our_median)} {row.unit} ({len(row.ours)} runs, {spread})"
             + (f"; {row.peer_name} {number(row.peer_median)} {row.unit} ({len(row.peer)} runs, "
                f"{number(min(row.peer))} to {number(max(row.peer))} {row.unit})" if row.peer else "")
             + f". To reach: {row.target_text}; {'reached' if row.is_reached else '**not reached**'}.", ""]
    if not row.is_reached:
        lines += [f"- **Cause:** {causes.get(row.key, 'not known yet.')}"]
    lines += [f"- {note}" for note in row.notes]
    return lines + ["", f"Measured {facts['date']} at {facts['source']}, load {facts['load']} before, "
                        f"`{facts['command']}`.", ""]


def write(store, folder, causes_file, names):
    causes = tomllib.loads(causes_file.read_text(encoding="utf-8"))
    measured = [(facts, row) for facts, rows in map(store.get, names) for row in rows]
    if not measured:
        return
    newest = max((facts for facts, _ in measured), key=lambda facts: facts["date"])
    rows = [row for _, row in measured]
    lines = ["# Figures against peers", "", EXPLAINED, ""]
    lines += [f"- {key.capitalize()}: {newest[key]}" for key in ("machine", "system", "versions", "date")]
    lines += [f"- Command: `{newest['command']}`", ""]
    lines += _summary(rows) + [""]
    for facts, row in measured:
        lines += _section(row, facts, causes)
    lines += _growth(rows) + [""]

    plots = folder / "plots"
    plots.mkdir(parents=True, exist_ok=True)
    for row in rows:
        (plots / f"{row.key}.svg").write_text(plot.pair(row), encoding="utf-8")
    (plots / "growth.svg").write_text(plot.growth(rows), encoding="utf-8")
    (folder / "RESULTS.md").write_text("\n".join(lines), encoding="utf-8")
