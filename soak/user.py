"""A user who clicks and types at random, from outside, also while the program waits.

A gentle user never deletes a station nor changes one (but for its mark), so that every station must stay as it is; a
rough one does anything anywhere. Each action is one call. In a file dialog both only type a path or leave: random
clicks there could reach other people's files."""
import os
import subprocess
import time

from desktop import Failure
from screen import LEFT, RIGHT, WHEEL_DOWN, WHEEL_UP

NEW_STATION = "Neue Radiostation einfügen"
GENTLE_BUTTONS = ("Command1", "Command1", "Command6", "Command3", "Command2", "Command7", "ckSavMute", "Check1",
                  "Check2", "Check3", "Command8_5")
ROUGH_BUTTONS = GENTLE_BUTTONS + ("Command8_0", "Command8_1", "Command8_2", "Command8_3", "Command8_4",
                                  "CommandButton1", "CommandButton2")
GENTLE_KEYS = ("Up", "Down", "Prior", "Next", "Home", "End", "Escape", "ctrl+f", "ctrl+s")
ROUGH_KEYS = GENTLE_KEYS + ("Return", "space", "Delete", "ctrl+z", "ctrl+n", "Tab", "shift+Tab", "Menu", "BackSpace",
                            "ctrl+a", "ctrl+v", "ctrl+c", "Left", "Right", "F10", "alt+Down")
MEDIA = ("PlayPause", "Play", "Stop", "Pause", "Next", "Previous")
WORDS = ("Radio", "Welle 7", "http://127.0.0.1:9/x", "a=b", "[x]", ";", "Rock", "99999999999", "-1", "x" * 200)
MENU_LIMIT = 6.0  # seconds; longer than any wait in which the window takes no input
INPUT_LIMIT = 20.0  # seconds until the window does what a key asks for


class User:
    def __init__(self, world, screen, faults, random, places, log):
        self.world, self.screen, self.faults = world, screen, faults
        self.random, self.places, self.log = random, places, log
        self.actions, self.serial = 0, 0
        self.spawned, self.crashed = [], []  # (name, process), (name, exit code)
        self.process, self.main, self.rough, self.focused = None, None, False, None
        self.promised = {}  # name -> when it was entered, not saved

    def meet(self, process, main, rough):
        self.process, self.main, self.rough, self.focused = process, main, rough, None
        self.size = (main.width, main.height)

    # Looking

    def windows(self):
        return [window for window in self.screen.windows() if window.process == self.process.pid]

    def dialog(self, windows):
        """The topmost dialog."""
        found = [window for window in windows if not window.popup and window.number != self.main.number]
        return found[-1] if found else None

    @staticmethod
    def menu(windows):
        """A menu or a choice; hints are lower."""
        return next((window for window in windows if window.popup and window.height > 60), None)

    def kind_of(self, dialog):
        if dialog.title.startswith(NEW_STATION):
            return "station"
        return "box" if dialog.title in ("Funkhausplayer", "") else "file"

    # One action

    def act(self):
        self.actions += 1
        windows = self.windows()
        dialog, menu = self.dialog(windows), self.menu(windows)
        if any(not window.popup and window.number != self.main.number and self.kind_of(window) == "file"
               for window in windows):
            done = self._in_file_dialog(dialog)
        elif menu:
            done = self._in_menu(menu)
        elif dialog and self.random.random() < 0.8:
            self._focus(dialog.number)
            done = self._in_dialog(dialog)
        else:
            if not dialog:
                self._focus(self.main.number)
            done = self._in_window(dialog)
        self.log(done)

    def _focus(self, number):
        if number != self.focused:
            self.screen.focus(number)
            self.focused = number

    def _in_file_dialog(self, dialog):
        self._focus(dialog.number)
        if self.kind_of(dialog) != "file" or self.random.random() < 0.3:
            self.screen.key("Escape")
            self._is_gone(dialog)
            return "file dialog: Escape"
        self.serial += 1
        path = self.world.scratch / "lists" / f"liste-{self.serial}.m3u"
        if "laden" in dialog.title.lower() or "ffnen" in dialog.title:
            self._write_list(path)
        self.screen.key("ctrl+a")
        self.screen.write(str(path))
        self.screen.key("Return")
        # A box takes letters as answers; none of a further path may get there.
        self._is_gone(dialog)
        return f"file dialog {dialog.title!r}: {path.name}"

    def _write_list(self, path):
        """New names, so that saving the list changes no station that is there."""
        entries = "".join(f"#EXTINF:-1,Import {self.serial}-{number}\n{self.world.servers.good}\n"
                          for number in range(3))
        path.write_text("#EXTM3U\n" + entries, encoding="ascii")

    def _in_menu(self, menu):
        if not self.rough or self.random.random() < 0.3:
            self.screen.key("Escape")
            return "menu: Escape"
        self._click_inside(menu)
        return "menu: click"

    def _in_dialog(self, dialog):
        if self.kind_of(dialog) == "station":
            return self._in_station_dialog(dialog)
        key = self.random.choice(("Return", "alt+j", "alt+n", "Escape", "space") if self.rough else ("Return", "alt+j"))
        self.screen.key(key)
        return f"box {dialog.title!r}: {key}"

    def _in_station_dialog(self, dialog):
        if self.random.random() < 0.2:
            self.screen.key("Escape")
            self._is_gone(dialog)
            return "new station: Escape"
        if self.rough and self.random.random() < 0.5:
            self._click_inside(dialog)
            return "new station: click"
        self.serial += 1
        name = f"Neu {self.serial}"
        for field, text in (("dialog.TextBox1_0", name), ("dialog.TextBox1_1", self.world.servers.good)):
            self._click_place(dialog, field)
            self.screen.key("ctrl+a")
            self.screen.write(text)
        self._click_place(dialog, "dialog.CommandButton1")
        # An Escape from before may have closed it instead; only what was entered is followed by a question.
        if self._is_gone(dialog) and not self.rough and self._await_dialog(2):
            self.promised[name] = time.monotonic()
        return f"new station: {name}"

    def _is_gone(self, dialog):
        """Waits for it, so that the next action is not meant for a dialog that is about to close."""
        end = time.monotonic() + 2
        while time.monotonic() < end:
            if all(window.number != dialog.number for window in self.screen.windows()):
                return True
            time.sleep(0.01)
        return False

    def _in_window(self, dialog):
        choices = [(30, self._choose_row), (14, self._press_button), (14, self._press_key), (6, self._write_somewhere),
                   (4, self._click_header), (4, self._choose_genre), (4, self._wheel), (4, self._menu_of_row),
                   (3, self._media_key), (1, self._exchange), (2, self._click_double), (3, self._new_station),
                   (0.3, self._resize), (0.4, self._start_again), (1, self._titles)]
        if self.rough:
            choices.append((12, self._click_anywhere))
        weights, actions = zip(*choices)
        return self.random.choices(actions, weights)[0]() + (" (while a dialog is open)" if dialog else "")

    # What there is to do in the window

    def _corner(self):
        return self.main.x, self.main.y

    def _click_place(self, window, name, button=LEFT, times=1):
        x, y, width, height = self.places[name]
        self.screen.click(window.x + x + min(width // 2, 40), window.y + y + height // 2, button, times)

    def _click_inside(self, window, button=LEFT):
        self.screen.click(window.x + self.random.randrange(max(1, window.width)),
                          window.y + self.random.randrange(max(1, window.height)), button)

    def _row_place(self):
        x, y, width, height = self.places["SymbolListview"]
        return (self.main.x + x + self.random.randrange(20, width - 40),
                self.main.y + y + self.random.randrange(30, height - 30))

    def _choose_row(self):
        self.screen.click(*self._row_place())
        return "row: click"

    def _click_double(self):
        self.screen.click(*self._row_place(), times=2)
        return "row: double click"

    def _menu_of_row(self):
        """A gentle user looks at the menu first: a click that is meant for the list could delete an entry there."""
        if not self.rough and self.dialog(self.windows()):
            return self._choose_row()
        self.screen.click(*self._row_place(), button=RIGHT)
        end = time.monotonic() + (0.05 if self.rough else MENU_LIMIT)
        while time.monotonic() < end and not self.menu(self.windows()):
            time.sleep(0.01)
        if not self.rough:
            self.screen.key("Escape")
        return "row: menu"

    def _wheel(self):
        self.screen.click(*self._row_place(), button=self.random.choice((WHEEL_UP, WHEEL_DOWN)), times=3)
        return "list: wheel"

    def _click_header(self):
        x, y, width, _ = self.places["SymbolListview"]
        self.screen.click(self.main.x + x + self.random.randrange(20, width - 20), self.main.y + y + 10)
        return "header: click"

    def _press_button(self):
        name = self.random.choice(ROUGH_BUTTONS if self.rough else GENTLE_BUTTONS)
        self._click_place(self.main, name)
        return name

    def _titles(self):
        self._click_place(self.main, "Command3", RIGHT)
        return "titles: on or off"

    def _press_key(self):
        key = self.random.choice(ROUGH_KEYS if self.rough else GENTLE_KEYS)
        if not self.rough and key in ("Up", "Down", "Prior", "Next", "Home", "End"):
            self.screen.click(*self._row_place())
        self.screen.key(key)
        return f"key {key}"

    def _write_somewhere(self):
        field = self.random.choice(("TextBox1_0", "TextBox1_1", "Combo1", "UpDownTextBox1"))
        word = self.random.choice(WORDS)
        self._click_place(self.main, field)
        self.screen.key("ctrl+a")
        self.screen.write(word)
        return f"{field}: {word[:20]!r}"

    def _choose_genre(self):
        self._click_place(self.main, "Combo1")
        for _ in range(self.random.randrange(1, 5)):
            self.screen.key(self.random.choice(("Down", "Up")))
        return "genre: another"

    def _exchange(self):
        name = self.random.choice(("Command4", "Command5"))
        self._click_place(self.main, name)
        time.sleep(0.1)
        return name

    def _new_station(self):
        self.screen.key("ctrl+n")
        time.sleep(0.05)
        return "key ctrl+n"

    def _resize(self):
        if not self.rough:
            self.screen.key("Escape")
            return "key Escape"
        size = (self.random.randrange(300, 1390), self.random.randrange(200, 890))
        self.screen.resize(self.main.number, *self.random.choice((size, self.size)))
        return "window: another size"

    def _click_anywhere(self):
        self._click_inside(self.main, self.random.choice((LEFT, LEFT, LEFT, RIGHT)))
        return "click anywhere"

    def _media_key(self):
        if not self.world.has_bus:
            return self._choose_row()
        key = self.random.choice(MEDIA)
        self._spawn(["gdbus", "call", "--session", "--dest", "org.mpris.MediaPlayer2.funkhausplayer", "--object-path",
                     "/org/mpris/MediaPlayer2", "--method", f"org.mpris.MediaPlayer2.Player.{key}"])
        return f"media key {key}"

    def _start_again(self):
        """A later start, with something to open or not. While the folder is away it would make a new one."""
        if self.faults.folder_is_ill():
            return self._choose_row()
        self.serial += 1
        path = self.world.scratch / "lists" / f"liste-{self.serial}.m3u"
        self._write_list(path)
        given = self.random.choice(([], [str(path)], [self.world.servers.good]))
        self._spawn([self.world.build / "bin" / "funkhausplayer", *given], "later start")
        return "later start"

    def _spawn(self, command, name=None):
        self.reap()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, env=self.world.environment)
        self.spawned.append((name, process))

    def a_start_is_under_way(self):
        return any(name and process.poll() is None for name, process in self.spawned)

    def reap(self):
        for entry in list(self.spawned):
            name, process = entry
            if process.poll() is not None:
                self.spawned.remove(entry)
                if name and process.returncode not in (0, 1):
                    self.crashed.append((name, process.returncode))

    def await_starts(self):
        """One that is under way when the program ends would take its place."""
        end = time.monotonic() + 10
        while self.a_start_is_under_way() and time.monotonic() < end:
            time.sleep(0.05)

    def end_starts(self):
        """(name, exit code) of the later starts that crashed; those that took the program's place end here."""
        self.reap()
        for _, process in self.spawned:
            process.kill()
            process.wait()
        self.spawned.clear()
        crashed, self.crashed = self.crashed, []
        return crashed

    # Getting the window's attention

    def close_others(self):
        """The recording tools; their number stays small so."""
        tools = [window for window in self.screen.windows()
                 if window.process != self.process.pid and not window.popup and self.is_recorder(window.process)]
        for window in tools:
            self.screen.close(window.number)
        return len(tools)

    @staticmethod
    def is_recorder(process_id):
        try:
            return os.readlink(f"/proc/{process_id}/exe").endswith("OZRecordFunkhaus")
        except OSError:
            return False

    def clear(self, limit=INPUT_LIMIT):
        """Answers whatever is open, until nothing is."""
        end = time.monotonic() + limit
        keys = ["Return", "Escape"]
        while time.monotonic() < end:
            windows = self.windows()
            dialog = self.dialog(windows)
            if self.menu(windows):
                self.screen.key("Escape")
            elif not dialog:
                return
            else:
                self.screen.focus(dialog.number)
                self.focused = dialog.number
                is_box = self.kind_of(dialog) == "box"
                self.screen.key(keys[0] if is_box else "Escape")
                keys.reverse()
            time.sleep(0.15)
            if self.process.poll() is not None:
                return
        raise Failure(f"a dialog stayed open for {limit:g} s: {self.dialog(self.windows())}")

    def settle(self):
        """Until the window has done all that was asked of it: saving the list, which every view answers by a box,
        comes last. A program that ends meanwhile is somebody else's business."""
        end = time.monotonic() + 2 * INPUT_LIMIT
        while time.monotonic() < end and self.process.poll() is None:
            self.clear()
            self.screen.focus(self.main.number)
            self.focused = self.main.number
            self._click_place(self.main, "Command6")
            self.screen.key("ctrl+s")
            if self._await_dialog(INPUT_LIMIT / 2):
                self.clear()
                return
        if self.process.poll() is None:
            raise Failure(f"the window did nothing for {2 * INPUT_LIMIT:g} s")

    def _await_dialog(self, limit):
        end = time.monotonic() + limit
        while time.monotonic() < end and self.process.poll() is None:
            if self.dialog(self.windows()):
                return True
            time.sleep(0.05)
        return False
