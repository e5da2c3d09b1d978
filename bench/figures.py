"""What a measurement found, and how it is printed. Not a measurement."""
import dataclasses
import statistics


@dataclasses.dataclass
class Line:
    """One row of the table. `own` and the values of `others` are lists of equal measurements."""
    what: str
    own: list
    unit: str
    wanted: str
    kept: bool | None = None  # None: nothing was asked for
    others: dict = dataclasses.field(default_factory=dict)  # who -> list, or a text
    digits: int = 0


def middle(numbers):
    return statistics.median(numbers)


def spread(numbers, digits=0):
    """The median, and behind it the range."""
    text = f"{middle(numbers):.{digits}f}"
    return text if len(numbers) == 1 else f"{text} ({min(numbers):.{digits}f}–{max(numbers):.{digits}f})"


def ratio(own, other):
    """The median of the ratios of what was measured side by side, or one after the other in the same round."""
    return middle([mine / theirs for mine, theirs in zip(own, other)])


def _others(line):
    def shown(value):
        return value if isinstance(value, str) else f"{middle(value):.{line.digits}f}"
    return ", ".join(f"{who} {shown(value)}" for who, value in line.others.items())


def table(lines):
    rows = [("what", "the program", "in the same run", "wanted", "")]
    for line in lines:
        verdict = {None: "", True: "kept", False: "**missed**"}[line.kept]
        rows.append((line.what, f"{spread(line.own, line.digits)} {line.unit}".rstrip(), _others(line), line.wanted,
                     verdict))
    text = ["| " + " | ".join(row) + " |" for row in rows]
    return "\n".join([text[0], "|---|---|---|---|---|", *text[1:]])
