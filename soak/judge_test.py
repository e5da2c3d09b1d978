#!/usr/bin/env python3
"""Tests that the soak's judge of the station file notices what it is there for."""
import pathlib
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
import catalogue  # noqa: E402


class JudgeTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.path = pathlib.Path(scratch.name) / "Funkhaus.ini"
        self.failures = []
        self.judge = catalogue.Judge(self.path, lambda kind, what: self.failures.append(kind))
        self.write(catalogue.make(["http://a/", "http://b/", "http://c/"]))
        self.judge.look(None)

    def write(self, content):
        catalogue.replace(self.path, content)

    def change(self, old, new):
        content = self.path.read_bytes()
        self.assertIn(old, content)
        self.write(content.replace(old, new, 1))

    def section(self, name):
        lines = catalogue.make(["http://a/", "http://b/", "http://c/"]).split(b"\r\n")
        begin = lines.index(b"[" + name + b"]")
        return b"\r\n".join(lines[begin:begin + 8]) + b"\r\n"

    def test_what_stays_as_it_is_is_no_failure(self):
        self.write(self.path.read_bytes())
        self.judge.look(None)
        self.assertEqual((self.failures, self.judge.looks), ([], 2))

    def test_a_mark_and_a_new_station_are_no_failure(self):
        self.change(b"Favorit=\r\n", b"Favorit=1\r\n")
        self.write(self.path.read_bytes() + b"[Neu]\r\nLink=x\r\n")
        self.judge.look(None)
        self.assertEqual(self.failures, [])
        self.assertTrue(self.judge.contains("NEU"))

    def test_a_station_that_vanishes_is_lost(self):
        self.change(self.section(b"Sender 01"), b"")
        self.judge.look(None)
        self.assertEqual(self.failures, ["lost"])

    def test_a_rough_user_may_have_deleted_as_many_as_he_acted(self):
        self.change(self.section(b"Sender 01"), b"")
        self.judge.look(1)
        self.assertEqual(self.failures, [])
        self.write(catalogue.make([]))
        self.judge.look(1)
        self.assertEqual(self.failures, ["lost"])

    def test_a_rough_user_may_have_written_a_station_anew_but_not_all_of_them(self):
        self.change(b"; Notiz zu Sender 01\r\n", b"")
        self.judge.look(1)
        self.assertEqual(self.failures, [])
        for foreign in (b"; Notiz zu Sender 00\r\n", b"Fremd=34\r\n"):
            self.change(foreign, b"")
        self.judge.look(1)
        self.assertEqual(self.failures, ["lost"])

    def test_many_actions_without_an_effect_allow_no_later_loss(self):
        self.write(catalogue.make([f"http://{number}/" for number in range(40)]))
        for _ in range(100):
            self.judge.look(1)
        self.assertEqual(self.failures, [])
        self.write(self.path.read_bytes().replace(b"; Notiz", b";"))
        self.judge.look(1)
        self.assertEqual(self.failures, ["lost"])

    def test_lines_that_change_by_themselves_are_lost(self):
        for old, new in ((b"Link=http://b/", b"Link=http://x/"), (b"Fremd=17\r\n", b""),
                         (b"; Notiz zu Sender 02\r\n", b"")):
            self.failures.clear()
            self.change(old, new)
            self.judge.look(None)
            self.assertEqual(self.failures, ["lost"], old)

    def test_torn_files(self):
        whole = self.path.read_bytes()
        for torn in (b"", whole[:-1], whole[:-2], whole[:-5] + b"\0\r\n", whole + b"[Sender 00]\r\n", whole[30:],
                     whole.replace(b"Link=", b"Li", 1), whole.replace(b"\r\n", b"\n", 1)):
            self.failures.clear()
            self.write(torn)
            self.judge.look(1)
            self.assertEqual(self.failures, ["torn"], torn[-40:])

    def test_an_edit_from_outside_is_nobodys_loss_and_is_judged_from_then_on(self):
        catalogue.edit_from_outside(self.path, self.judge, None, "Fremdsender", 5)
        self.judge.look(None)
        self.assertEqual(self.failures, [])
        self.assertTrue(self.judge.contains("Fremdsender"))
        self.change(b"Fremd=5\r\n", b"Fremd=6\r\n")
        self.judge.look(None)
        self.assertEqual(self.failures, ["lost"])


if __name__ == "__main__":
    unittest.main()
