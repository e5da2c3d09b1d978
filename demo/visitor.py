"""Somebody who operates the player's window with mouse and keyboard, and listens. What is done in which order is up to
the demonstration."""
import time

from desktop import Failure, Hands, screenshot, wait_for

AUDIBLE = -50.0   # The loop is played at about -18 dB; a player's volume may lie lower.
SILENT = -80.0


class Visitor:
    """Operates the window with the mouse and listens."""

    def __init__(self, display, sink, programs, station, output):
        self.display, self.sink, self.station, self.output = display, sink, station, output
        self.report, self.captions = programs.report, programs.captions
        self.hands = Hands(display)

    def press(self, name):
        self.hands.click(*wait_for(f"the control {name}", lambda: self.report.find(name), 10).middle)

    def answer(self, text, button):
        """Answers the message box that begins with `text` and waits until it is gone."""
        self.press_in_box(text, button)
        wait_for("the box to close", lambda: not (self.report.text("box") or "").startswith(text), 10)

    def press_in_box(self, text, button):
        """Waits for the message box that begins with `text` and presses the button of that caption."""
        wait_for(f'the box "{text}"', lambda: (self.report.text("box") or "").startswith(text), 20)
        button = self.captions.get(button, button)
        for name, control in self.report.controls().items():
            if name.startswith("box[") and control.text.replace("&", "") == button:
                return self.hands.click(*control.middle)
        raise Failure(f'the box "{text}" has no button "{button}"')

    def fill(self, name, text):
        """Replaces the text of a field."""
        self.press(name)
        self.hands.press_keys("ctrl+a")
        self.hands.write(text)
        wait_for(f"the text in {name}", lambda: self.report.text(name) == text, 10)

    def rows(self):
        """The names of the stations in the list that is shown."""
        controls = self.report.controls()
        lists = ("SymbolListview[", "ExplorerListFilter[")
        return sorted(control.text.split(" | ")[0] for name, control in controls.items() if name.startswith(lists))

    def picture(self, name):
        screenshot(self.display, self.picture_of(name))

    def expect_sound(self):
        return wait_for("sound", lambda: self.sink.loudness(0.5) > AUDIBLE, 40, pause=0)

    def expect_silence(self):
        return wait_for("silence", lambda: self.sink.loudness(0.5) < SILENT, 15, pause=0)

    def select(self, name):
        row = wait_for(f"the row of {name}", lambda: self.report.row(name), 20)
        # Near the left edge: the middle of a wide column may lie under a scroll bar.
        self.hands.click(row.x + min(row.width // 2, 80), row.middle[1])
        wait_for(f"{name} in the editor", lambda: self.report.text("TextBox1_0") == name, 20)

    def hear(self, name):
        """Plays a station until it is heard, and stops it; returns a line for the person who reads the log."""
        titles_before = len(self.station.lines("title "))
        self.select(name)
        self.press("Command1")
        wait_for(f"sound of {name}", lambda: self.sink.loudness() > AUDIBLE, 40, pause=0)
        position = wait_for(f"the position of {name}", lambda: self.running_position(), 20)
        title = wait_for(f"the title of {name}", self.shown_title, 30)
        sentence = wait_for(f"the status line about {name}", lambda: self.sentence(f"{name} läuft.", f"{name} – "), 20)
        screenshot(self.display, self.picture_of(name))
        loudness = self.sink.loudness(2.0)
        if loudness < AUDIBLE:
            raise Failure(f"{name} fell silent, {loudness:.1f} dB")
        self.press("Command6")
        wait_for(f"silence after {name}", lambda: self.sink.loudness(0.5) < SILENT, 15, pause=0)
        wait_for("an empty position", lambda: not self.report.text("Label1"), 10)
        wait_for("the status line about the stop", lambda: self.sentence("Gestoppt."), 10)
        served = len(self.station.lines("title ")) - titles_before
        return f"{name}: {loudness:.1f} dB, {position}, \"{title}\" ({served} titles served), \"{sentence}\""

    def sentence(self, *beginnings):
        """The status line's text, if it begins like one of these."""
        text = self.report.text("StatusLine") or ""
        return text if text.startswith(beginnings) else None

    def picture_of(self, name):
        return self.output / f"{name.replace(' ', '-')}.png"

    def running_position(self):
        """The text of the position once it has moved."""
        first = self.report.text("Label1")
        if not first or not first.startswith("Pos: "):
            return None
        time.sleep(1.2)
        second = self.report.text("Label1")
        return second if second and second.startswith("Pos: ") and second != first else None

    def shown_title(self):
        title = self.report.text("Label4")
        return title if title and title in self.station.lines("title ") else None

    def meet_dead(self, name, box):
        """Selects and starts a station that is not there: the window shows its message box (`box`, None for
        nothing), stays alive and silent."""
        self.select(name)
        self.press("Command1")
        box = box and self.captions.get(box, box)
        if box:
            wait_for(f"the box of {name}", lambda: (self.report.text("box") or "").strip() == box, 20)
        loudness = self.sink.loudness(2.0)
        if loudness > SILENT:
            raise Failure(f"{name} was heard at {loudness:.1f} dB")
        screenshot(self.display, self.picture_of(name))
        if bool(box) != bool(self.report.find("box")):
            raise Failure(f'{name} was answered by "{self.report.text("box")}"')
        if box:
            self.press("box[0]")
            wait_for("the box to close", lambda: not self.report.find("box"), 10)
        sentence = wait_for(f"the status line about {name}", lambda: self.sentence(f"Der Server von {name} "), 20)
        self.press("Command6")
        return f"{name}: silent" + (f', "{box}"' if box else "") + f', "{sentence}"'
