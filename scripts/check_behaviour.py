#!/usr/bin/env python3
"""Checks docs/behaviour.md, docs/behaviour-windows.md and docs/security.md against the tests: every row names a test, and
every test named exists and runs. The source files named there exist, too.

Usage: check_behaviour.py TABLE BUILD_FOLDER            the tests named are known to CTest and not disabled
       check_behaviour.py TABLE --results JUNIT_FILE    the tests named were run, and passed
       check_behaviour.py TABLE --sources FOLDER        the tests named are written there, for a system that CTest does
                                                        not know here, as "Suite.Case"
       check_behaviour.py --self-test

A row of the table is "| behaviour | `test` `test` ... |", with any number of columns before the tests; a test's name is
CTest's own, and a "*" in it stands for anything, so that one name can mean the cases of a parametrised test.
"""
import fnmatch
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

ROW = re.compile(r"^\|(.*)\|([^|]*)\|\s*$")
NAME = re.compile(r"`([^`]+)`")
HEADING = {"Test", "Tests"}


def read_table(text):
    """Returns [(line number, behaviour, [test, ...])], and what is wrong with the other rows."""
    rows, errors = [], []
    for number, line in enumerate(text.splitlines(), 1):
        if not line.startswith("|"):
            continue
        match = ROW.match(line)
        if not match:
            errors.append(f"line {number}: not a row of two columns")
            continue
        behaviour, tests = match.group(1).strip(), match.group(2).strip()
        if tests in HEADING or (tests and set(tests) <= set("-: ")):
            continue
        names = NAME.findall(tests)
        if not names or NAME.sub("", tests).strip():
            errors.append(f'line {number}: "{tests}" is not a list of tests in backticks')
        elif not behaviour:
            errors.append(f"line {number}: no behaviour")
        else:
            rows.append((number, behaviour, names))
    return rows, errors


SOURCE = re.compile(r"`((?:\w+/)+\w+\.(?:h|cpp))`")


def missing_sources(text, exists):
    """exists: whether a path from the root of the repository is there."""
    return [f"line {number}: there is no {name}" for number, line in enumerate(text.splitlines(), 1)
            for name in SOURCE.findall(line) if not exists(name)]


def check(table, good, verdict):
    """table: the document's text; good: names of the tests that count; verdict: what is wrong with others."""
    rows, errors = read_table(table)
    if not rows:
        errors.append("no behaviour at all")
    for number, _, names in rows:
        for name in names:
            if name not in good and not ("*" in name and fnmatch.filter(good, name)):
                errors.append(f"line {number}: {name} {verdict}")
    return errors


def known_tests(build_folder):
    """The tests that CTest would run in a build folder."""
    # CTest begins a new log in the folder where it is asked; the log of the run that this is part of is to stay.
    with tempfile.TemporaryDirectory() as scratch:
        folder = json.dumps(str(pathlib.Path(build_folder).resolve()))
        pathlib.Path(scratch, "CTestTestfile.cmake").write_text(f"subdirs({folder})\n", encoding="utf-8")
        answer = subprocess.run(["ctest", "--test-dir", scratch, "--show-only=json-v1"], check=True,
                                stdout=subprocess.PIPE)
    names = set()
    for test in json.loads(answer.stdout)["tests"]:
        properties = {entry["name"]: entry["value"] for entry in test.get("properties", [])}
        if not properties.get("DISABLED"):
            names.add(test["name"])
    return names


def passed_tests(junit):
    """The tests that were run and passed, of CTest's --output-junit."""
    cases = xml.etree.ElementTree.fromstring(junit).iter("testcase")
    return {case.get("name") for case in cases if case.get("status") == "run" and case.find("skipped") is None}


CASE = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\)", re.MULTILINE)


def cases_in(source):
    """The cases that a source file has and that are not disabled."""
    return {f"{suite}.{case}" for suite, case in CASE.findall(source) if not f"{suite}.{case}".count("DISABLED_")}


def written_tests(folder):
    return {case for file in pathlib.Path(folder).rglob("*_test.cpp")
            for case in cases_in(file.read_text(encoding="utf-8"))}


def self_test():
    table = "# A\n\n| Behaviour | Test |\n|---|---|\n| It works. | `a.B.C` |\n| All of them. | `a.D.*` `a.B.C` |\n"
    good = {"a.B.C", "a.D.0"}
    broken = {
        "a test that is gone": (table, {"a.D.0"}),
        "a pattern without a test": (table, {"a.B.C"}),
        "a row without a test": (table + "| It hopes. | |\n", good),
        "a test without backticks": (table + "| It hopes. | a.B.C |\n", good),
        "a row without a behaviour": (table + "| | `a.B.C` |\n", good),
        "a row of one column": (table + "| It hopes |\n", good),
        "an empty table": ("# A\n", good),
    }
    failures = [f"let through: {name}" for name, case in broken.items() if not check(*case, "is missing")]
    failures += [f"refused a good table: {error}" for error in check(table, good, "is missing")]
    failures += ["a bar in a behaviour"] if read_table("| a \\| b | `c` |")[0] != [(1, "a \\| b", ["c"])] else []
    wide = "| What | Where | Limit | Test |\n|---|---|---|---|\n| A | `a/b.h` | 3 | `a.B.C` |\n"
    failures += [f"refused a wide table: {error}" for error in check(wide, good, "is missing")]
    failures += ["a test of a wide table that is gone"] if not check(wide, {"a.D.0"}, "is missing") else []
    failures += ["a source that is there"] if missing_sources(wide, {"a/b.h"}.__contains__) else []
    failures += ["a source that is gone"] if len(missing_sources(wide, {"b.h"}.__contains__)) != 1 else []
    junit = ('<testsuite><testcase name="ran" status="run"/><testcase name="failed" status="fail"/>'
             '<testcase name="skipped" status="run"><skipped/></testcase>'
             '<testcase name="off" status="disabled"/></testsuite>')
    failures += [f"wrong results: {passed_tests(junit)}"] if passed_tests(junit) != {"ran"} else []
    cases = "TEST(A, One) {\n}\nTEST_F(B,\n       Two) {\n}\nTEST_F(B, DISABLED_Three) {\n}\n// TEST(A, Four)\n"
    failures += [f"wrong cases: {cases_in(cases)}"] if cases_in(cases) != {"A.One", "B.Two"} else []
    return failures


def main(arguments):
    def held(good, verdict):
        path = pathlib.Path(arguments[0]).resolve()
        table = path.read_text(encoding="utf-8")
        exists = lambda name: (path.parent.parent / name).exists()
        return check(table, good, verdict) + missing_sources(table, exists)

    if arguments == ["--self-test"]:
        errors = self_test()
    elif len(arguments) == 3 and arguments[1] == "--results":
        good = passed_tests(pathlib.Path(arguments[2]).read_text(encoding="utf-8"))
        errors = held(good, "was not run, or failed")
    elif len(arguments) == 3 and arguments[1] == "--sources":
        errors = held(written_tests(arguments[2]), "is written nowhere")
    elif len(arguments) == 2:
        errors = held(known_tests(arguments[1]), "is no test that runs")
    else:
        print(__doc__, file=sys.stderr)
        return 2
    for error in errors:
        print(error)
    print("every row has its tests" if not errors else f"{len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
