"""Reads the report of controls that demo_player writes (see demo/control_report.h)."""
import dataclasses
import pathlib
import re


@dataclasses.dataclass(frozen=True)
class Control:
    name: str
    x: int
    y: int
    width: int
    height: int
    text: str

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2


def parse(text):
    """Name -> Control. A line that is not one of the report's is an error."""
    controls = {}
    for line in text.split("\n"):
        if not line:
            continue
        name, x, y, width, height, shown = line.split(" ", 5)
        shown = re.sub(r"\\(.)", lambda match: "\n" if match[1] == "n" else match[1], shown)
        controls[name] = Control(name, int(x), int(y), int(width), int(height), shown)
    return controls


class Report:
    def __init__(self, path):
        self.path = pathlib.Path(path)

    def controls(self):
        """What is on the screen now; empty before the first report."""
        try:
            return parse(self.path.read_text(encoding="utf-8"))
        except FileNotFoundError:
            return {}

    def find(self, name):
        return self.controls().get(name)

    def text(self, name):
        """The text of a control, None while it is not shown."""
        control = self.find(name)
        return None if control is None else control.text

    def row(self, station):
        """The row of a station in the list that is shown."""
        for name, control in self.controls().items():
            if name.endswith("]") and control.text.split(" | ")[0] == station:
                return control
        return None
