#!/usr/bin/env python3
"""scripts/check_commits refuses subjects that do not say where and what."""

import importlib.machinery
import importlib.util
import pathlib
import sys
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parent.parent.parent / "scripts" / "check_commits"
sys.dont_write_bytecode = True
loader = importlib.machinery.SourceFileLoader("check_commits", str(SCRIPT))
check_commits = importlib.util.module_from_spec(importlib.util.spec_from_loader("check_commits", loader))
loader.exec_module(check_commits)


class CheckCommits(unittest.TestCase):
    def faults(self, message):
        return list(check_commits.faults(message))

    def test_good_ones(self):
        for message in ("grid: keep the row in sight", "platform/qt: draw once\n\nWhy.", "comm, report: close files",
                        "formula: " + "x" * 55):
            self.assertEqual(self.faults(message), [], message)

    def test_bad_ones(self):
        for message, fault in (("Keep the row in sight", "subsystem"), ("grid:keep the row", "subsystem"),
                               ("formula: " + "x" * 56, "65 characters"), ("grid: keep the row.", "full stop"),
                               ("grid: added a row", "imperative"), ("grid: keep a row\nand more", "empty line")):
            self.assertEqual(len(self.faults(message)), 1, message)
            self.assertIn(fault, self.faults(message)[0])


if __name__ == "__main__":
    unittest.main(verbosity=1)
