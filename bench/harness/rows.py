"""One figure as it was measured."""

import dataclasses
import math
import statistics


@dataclasses.dataclass
class Row:
    key: str
    title: str
    unit: str
    ours: list
    peer: list  # empty: there is none
    peer_name: str
    target_kind: str  # "ratio": ours / peer at most; "faster": peer / ours at least; "value": ours at most
    target: float
    notes: list = dataclasses.field(default_factory=list)
    growth: dict = dataclasses.field(default_factory=dict)  # amount of work: what it took
    growth_of: str = ""  # what the amount counts

    @property
    def our_median(self):
        return statistics.median(self.ours)

    @property
    def peer_median(self):
        return statistics.median(self.peer) if self.peer else None

    @property
    def ratio(self):
        return self.our_median / self.peer_median if self.peer else None

    @property
    def target_text(self):
        if self.target_kind == "value":
            return f"at most {self.target:g} {self.unit}"
        if self.target_kind == "faster":
            return f"at least {self.target:g}× faster"
        return f"at most {self.target:.2f}×"

    @property
    def most(self):
        """Our figure that would just reach the target."""
        if self.target_kind == "value":
            return self.target
        if self.target_kind == "faster":
            return self.peer_median / self.target
        return self.peer_median * self.target

    @property
    def is_reached(self):
        return self.our_median <= self.most

    @property
    def ratio_text(self):
        if not self.peer:
            return "–"
        if self.target_kind == "faster":
            return f"{1 / self.ratio:.1f}× faster"
        return f"{self.ratio:.3f}×"

    @property
    def exponent(self):
        """The slope of time over work in logarithms; nothing where growth was not measured."""
        points = [(math.log(float(work)), math.log(value)) for work, value in self.growth.items() if value > 0]
        if len(points) < 2:
            return None
        return statistics.linear_regression([x for x, _ in points], [y for _, y in points]).slope

    def line(self):
        peer = f", {self.peer_name} {number(self.peer_median)} {self.unit}" if self.peer else ""
        return (f"{self.title}: {number(self.our_median)} {self.unit}{peer}, {self.ratio_text}, "
                f"{self.target_text}: {'reached' if self.is_reached else 'NOT REACHED'}")


def number(value):
    """Three digits that count."""
    if value is None:
        return "–"
    if value == 0:
        return "0"
    decimals = max(0, 2 - math.floor(math.log10(abs(value))))
    return f"{value:,.{decimals}f}"
