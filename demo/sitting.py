"""What a listener does with the window in one sitting, and in the next one. Each chapter does its part with
mouse and keyboard, checks the result, takes a picture, and returns a line for the person who reads the log."""
import os
import signal
import subprocess

from desktop import Failure, close_window, wait_for
from stations import CATALOGUE


def play_and_turn(visitor):
    """Plays a station, mutes it, turns the volume down to nothing and up again."""
    visitor.select("Radio Lichtung")
    visitor.press("Command1")
    visitor.expect_sound()
    visitor.press("ckSavMute")
    visitor.expect_silence()
    visitor.press("ckSavMute")
    visitor.expect_sound()
    visitor.press("hscSavVolume")
    visitor.hands.press_keys("Home")
    visitor.expect_silence()
    visitor.hands.press_keys("End")
    visitor.expect_sound()
    wait_for("the position", visitor.running_position, 20)
    visitor.picture("playing")
    return "Played, muted, turned down and up"


def mark_favourite(visitor, station_file):
    """Marks the playing station, which is in the file at once."""
    visitor.press("Check2")
    wait_for("the mark in the station file", lambda: "Favorit=\r\n" in station_of(station_file, "Radio Lichtung"), 10)
    visitor.press("Check2")
    wait_for("the mark in the station file", lambda: "Favorit=1\r\n" in station_of(station_file, "Radio Lichtung"), 10)
    return "Favourite mark taken off and set again"


def station_of(station_file, name):
    """The section of a station, as text."""
    text = station_file.read_bytes().decode("cp1252")
    return text.partition(f"[{name}]\r\n")[2].partition("[")[0]


def filter_genre(visitor):
    """Narrows the list to a genre, and shows all of it again."""
    everything = visitor.rows()
    visitor.fill("Combo1", "Oldies")
    visitor.press("Check1")
    wait_for("the genre's view", lambda: visitor.report.text("Frame2") == "Genre-Filter: Oldies", 10)
    wait_for("the genre's station", lambda: visitor.rows() == ["Küstenfunk Süd"], 10)
    visitor.picture("genre")
    visitor.press("Check1")
    wait_for("all stations", lambda: visitor.rows() == everything, 10)
    return "Narrowed to a genre and back"


def add_station(visitor, name, link, button):
    """Enters a station in the dialog, which the keyboard opens, and answers the question that follows."""
    visitor.hands.press_keys("ctrl+n")
    wait_for("the new-station dialog", lambda: visitor.report.find("dialog"), 10)
    visitor.fill("dialog.TextBox1_0", name)
    visitor.fill("dialog.TextBox1_1", link)
    visitor.picture("new-station")
    visitor.press("dialog.CommandButton1")
    visitor.answer("Sollen die Änderungen gespeichert werden?", button)
    if button == "Ja":
        visitor.answer("Änderungen gespeichert!", "OK")
    wait_for("the new row", lambda: name in visitor.rows(), 10)


def add_and_save(visitor, station_file):
    add_station(visitor, "Neue Welle", "http://127.0.0.1:9/", "Ja")
    if "Link=http://127.0.0.1:9/\r\n" not in station_of(station_file, "Neue Welle"):
        raise Failure("the new station is not in the file")
    return "New station entered and saved"


def choose_file(visitor, path, picture):
    """Answers the file dialog by a path, as its users write it."""
    wait_for("the file dialog", lambda: visitor.report.find("dialog"), 10)
    visitor.fill("dialog.fileNameEdit", path)
    visitor.picture(picture)
    visitor.hands.press_keys("Return")
    wait_for("the file dialog to close", lambda: not visitor.report.find("dialog"), 10)


def export_and_import(visitor, programs, folder):
    """Writes the list as M3U, then lets the list be emptied and reads it in again."""
    before = visitor.rows()
    playlist = folder / "Radioliste.m3u"
    visitor.press("Command4")
    choose_file(visitor, programs.shown_path(playlist), "export")
    visitor.answer("M3U-Liste gespeichert unter: ", "OK")
    written = playlist.read_bytes()
    if written.count(b"#EXTINF:-1,") != len(before):
        raise Failure("the playlist does not hold every station")
    visitor.press("Command5")
    choose_file(visitor, programs.shown_path(playlist), "import")
    visitor.answer("Sollen die Daten an die bestehende Liste angehängt werden?", "Nein")
    wait_for("the imported rows", lambda: visitor.rows() == before, 10)
    return f"{len(before)} stations exported and imported"


def record(visitor, programs):
    """Starts the recording tool with the window's button, lets it record, and closes its window."""
    music = programs.music
    visitor.select("Radio Lichtung")
    visitor.press("Command8_5")
    process = wait_for("the recording tool", programs.recorders, 20)[0]
    try:
        def size():
            return sum(path.stat().st_size for path in music.glob("*.mp3"))
        wait_for("the recording", lambda: size() > 100_000, 30)
        visitor.picture("recording")
        close_window(visitor.display, process)
        wait_for("the recording tool's end", lambda: process not in programs.recorders(), 10)
    except Failure:
        if process in programs.recorders():
            os.kill(process, signal.SIGTERM)
        raise
    return f"Recorded {size() // 1024} KiB in {len(list(music.glob('*.mp3')))} files"


def close_with_question(visitor, player):
    """Leaves the favourites' view and an unsaved station behind, and closes the window."""
    visitor.press("Command6")
    visitor.expect_silence()
    # The recording tool had the keyboard focus last, and there is no window manager that gives it back.
    visitor.hands.focus(player.pid)
    add_station(visitor, "Nicht gesichert", "http://127.0.0.1:9/", "Nein")
    visitor.press("Check3")
    wait_for("the favourites' view", lambda: visitor.report.text("Frame2") == "Favoriten", 10)
    close_window(visitor.display, player.pid)
    wait_for("the question", lambda: visitor.report.find("box"), 10)
    visitor.picture("question")
    visitor.press_in_box("Sollen die Änderungen gespeichert werden?", "Nein")
    expect_end(player)
    return "Closed, unsaved, from the favourites' view"


def start_again(visitor, player):
    wait_for("the favourites' view", lambda: visitor.report.text("Frame2") == "Favoriten", 30)
    favourites = sorted(entry.name for entry in CATALOGUE if entry.favourite)
    wait_for("the favourites", lambda: visitor.rows() == favourites, 10)
    visitor.picture("favourites")
    close_window(visitor.display, player.pid)
    expect_end(player)
    return "Started again in the favourites' view"


def expect_end(player):
    try:
        code = player.wait(timeout=15)
    except subprocess.TimeoutExpired as error:
        raise Failure("the program did not end after its window was closed") from error
    if code != 0:
        raise Failure(f"the program ended with {code}")
