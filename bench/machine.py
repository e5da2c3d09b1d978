"""What a table was measured on and with. Not a measurement."""
import datetime
import os
import pathlib
import re
import subprocess

PACKAGES = ("g++", "libqt6widgets6", "libgstreamer1.0-0", "libcurl4", "libicu72", "pulseaudio", "xvfb",
            "gstreamer1.0-plugins-base-apps", "audacious", "vlc", "goodvibes", "mpv", "curl", "ffmpeg")


def _output(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=False).stdout


def processor():
    found = re.search(r"^model name\s*:\s*(.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    return found[1] if found else "unknown"


def versions():
    """"name version", one for each package."""
    lines = _output("dpkg-query", "-W", "-f", "${Package} ${Version}\\n", *PACKAGES).splitlines()
    return dict(line.split(" ", 1) for line in lines if " " in line)


def system():
    found = re.search(r'^PRETTY_NAME="(.*)"$', pathlib.Path("/etc/os-release").read_text(), re.MULTILINE)
    return found[1] if found else "Linux"


def description(load):
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    return "\n".join([
        f"Measured on {datetime.date.today().isoformat()} on {os.cpu_count()} cores ({processor()}), "
        f"{memory:.0f} GB of memory, {system()}, kernel {os.uname().release}; "
        f"the load before the run was {load:.2f}.",
        "",
        "Versions: " + ", ".join(f"{name} {version}" for name, version in versions().items()) + ".",
    ])
