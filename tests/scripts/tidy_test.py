#!/usr/bin/env python3
"""scripts/tidy looks at the sources that the library is made of, and with --all at every source there is."""

import importlib.machinery
import importlib.util
import json
import pathlib
import subprocess
import tempfile
import types
import unittest
from unittest import mock

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
NAMES = ["comm/name_rules.cpp", "tools/lorv/program.cpp", "tests/comm/name_rules_test.cpp", "bench/text_bench.cpp",
         "fuzz/parser_fuzz.cpp"]


def listed(*options):
    with tempfile.TemporaryDirectory() as folder:
        # One source twice, as programs that share it have it; one of another tree.
        entries = [{"file": str(ROOT / name), "command": "c++"} for name in [*NAMES, NAMES[0]]]
        entries.append({"file": "/elsewhere/a.cpp", "command": "c++"})
        (pathlib.Path(folder) / "compile_commands.json").write_text(json.dumps(entries), encoding="utf-8")
        flags = [option for option in options if option.startswith("-")]
        parts = [option for option in options if not option.startswith("-")]
        command = [str(ROOT / "scripts/tidy"), "--list", *flags, folder, *parts]
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.split()


def script():
    loader = importlib.machinery.SourceFileLoader("tidy", str(ROOT / "scripts/tidy"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("tidy", loader))
    loader.exec_module(module)
    return module


class Clean(unittest.TestCase):
    """A source whose content was clean before is not looked at again; any other is."""

    def looked_at(self, clean_of, asked_of):
        tidy = script()
        entry = {"file": str(ROOT / NAMES[0]), "command": "c++"}
        with tempfile.TemporaryDirectory() as folder:
            tidy.CACHE = pathlib.Path(folder)
            (tidy.CACHE / tidy.key_of(entry, clean_of)).touch()
            answer = types.SimpleNamespace(returncode=1, stdout="a finding", stderr="")
            with mock.patch.object(tidy.subprocess, "run", return_value=answer) as run, \
                    mock.patch.object(tidy, "key_of", return_value=tidy.key_of(entry, asked_of)):
                code = tidy.check(entry, folder, b"", [])[1]
                return run.called, code

    def test_what_was_clean_is_not_looked_at(self):
        self.assertEqual(self.looked_at(b"14", b"14"), (False, 0))

    def test_what_changed_is(self):
        self.assertEqual(self.looked_at(b"14", b"15"), (True, 1))


class Tidy(unittest.TestCase):
    def test_sources_of_the_library_and_the_tools(self):
        self.assertEqual(listed(), sorted(NAMES[:2]))

    def test_all_are_all(self):
        self.assertEqual(listed("--all"), sorted(NAMES))

    def test_what_is_named_is_looked_at(self):
        self.assertEqual(listed("tests/comm"), [NAMES[2]])

    def test_an_unknown_option_is_refused(self):
        done = subprocess.run([str(ROOT / "scripts/tidy"), "--some", "build"], capture_output=True, check=False)
        self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main(verbosity=1)
