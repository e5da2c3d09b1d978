"""Catalogues and lists of stations, over the real INI engine and real files, beside the plainest way of doing the same
with the same data: bench/catalogue_bench.cpp. Each pair runs with repetitions in random order."""
import json
import subprocess

from desktop import Failure
from figures import Line, middle

# (name of the pair, what it is, smaller size, size asked about, most times the plain way, what the plain way is)
PAIRS = (("Load", "loading {} stations", 300, 1000, 300, 5, "reading the lines"),
         ("Save", "saving {} stations", 300, 20000, 300, 5, "writing, syncing and renaming the bytes"),
         ("Sort", "sorting {} stations", 5000, 20000, 20000, 1.5, "std::sort of the names"),
         ("Import", "importing {} entries", 10000, 100000, 100000, 3, "reading the lines"))


def milliseconds(program, runs):
    """Name with size -> one number for each repetition."""
    names = "|".join(f"{pair[0]}(Catalogue|Plain)" for pair in PAIRS)
    run = subprocess.run([program, f"--benchmark_filter=({names})", f"--benchmark_repetitions={runs}",
                          "--benchmark_enable_random_interleaving=true", "--benchmark_format=json",
                          "--benchmark_min_time=0.1"], stdout=subprocess.PIPE, check=False)
    if run.returncode != 0:
        raise Failure(f"bench_logic ended with {run.returncode}")
    found = {}
    for one in json.loads(run.stdout)["benchmarks"]:
        if one["run_type"] == "iteration":
            found.setdefault(one["run_name"], []).append(one["real_time"])
    return found


def measure(arguments, _children, _scratch):
    found = milliseconds(arguments.build / "bin" / "bench_logic", arguments.runs)
    lines = []
    for name, what, small, large, asked, most, plain in PAIRS:
        own = found[f"{name}Catalogue/{asked}"]
        other = found[f"{name}Plain/{asked}"]
        times = middle(own) / middle(other)
        growth = middle(found[f"{name}Catalogue/{large}"]) / middle(found[f"{name}Catalogue/{small}"])
        lines.append(Line(what.format(f"{asked:,}"), own, "ms",
                          f"at most {most} times: {times:.1f}; {large / small:.1f} times as many take "
                          f"{growth:.1f} times as long", times <= most, {plain: other}, digits=2))
    return lines
