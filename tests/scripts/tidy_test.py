#!/usr/bin/env python3
"""scripts/tidy looks at the sources that the library is made of, and with --all at every source there is."""

import concurrent.futures
import importlib.machinery
import importlib.util
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import types
import unittest
from unittest import mock

sys.dont_write_bytecode = True
import tidy_defects

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


def answer(code):
    return types.SimpleNamespace(returncode=code, stdout="what was found" if code else "", stderr="")


def written(folder, texts, command="c++ -std=c++20 -c"):
    """The compile commands of sources written into a folder."""
    entries = []
    for name, text in texts.items():
        path = pathlib.Path(folder) / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(text, encoding="utf-8")
        entries.append({"file": str(path), "command": f"{command} {path} -o {name}.o"})
    return entries


class Clean(unittest.TestCase):
    """A source whose content was clean before is not looked at again; any other is."""

    def looked_at(self, clean_of, asked_of):
        tidy = script()
        entry = {"file": str(ROOT / NAMES[0]), "command": "c++"}
        with tempfile.TemporaryDirectory() as folder:
            tidy.CACHE = pathlib.Path(folder)
            (tidy.CACHE / tidy.key_of(entry, clean_of)).touch()
            with mock.patch.object(tidy, "look", return_value=answer(1)) as look, mock.patch("builtins.print"), \
                    mock.patch.object(tidy, "common_of", return_value=asked_of):
                bad = tidy.check_all([entry], folder, [])
                return look.called, bad

    def test_what_was_clean_is_not_looked_at(self):
        self.assertEqual(self.looked_at(b"14", b"14"), (False, 0))

    def test_what_changed_is(self):
        self.assertEqual(self.looked_at(b"14", b"15"), (True, 1))


class Halves(unittest.TestCase):
    """A group is clean as a whole, or the sources that are not are found by halving."""

    def checked(self, fails):
        """The sources with findings, those marked as clean and how many runs it took, of a group of eight."""
        tidy = script()
        with tempfile.TemporaryDirectory() as folder:
            marks = {name: pathlib.Path(folder) / name for name in "abcdefgh"}
            group = [{"file": name} for name in marks]

            def look(part, _build, _options):
                return answer(int(fails({e["file"] for e in part})))

            with mock.patch.object(tidy, "look", side_effect=look) as runs:
                found = [file for file, _ in tidy.check(group, folder, [], marks)]
            return found, "".join(name for name, mark in marks.items() if mark.exists()), runs.call_count

    def test_one_run_of_a_clean_group(self):
        self.assertEqual(self.checked(lambda part: False), ([], "abcdefgh", 1))

    def test_the_source_with_a_finding(self):
        self.assertEqual(self.checked(lambda part: "c" in part), (["c"], "abdefgh", 7))

    def test_sources_that_do_not_stand_together(self):
        self.assertEqual(self.checked(lambda part: {"c", "f"} <= part), ([], "abcdefgh", 3))


class Groups(unittest.TestCase):
    def groups(self, texts, limit=16, others=()):
        """The names of the sources in each group."""
        tidy = script()
        with tempfile.TemporaryDirectory() as folder:
            entries = written(folder, texts) + written(folder, dict(others), "c++ -DOTHER -c")
            return ["".join(pathlib.Path(e["file"]).stem for e in group)
                    for group in tidy.tidy_groups.made_of(entries, tidy.configurations, limit)]

    def test_as_many_as_the_limit_lets(self):
        texts = {f"{name}.cpp": f"int {name}() {{}}" for name in "abcde"}
        self.assertEqual(self.groups(texts), ["abcde"])
        self.assertEqual(self.groups(texts, 2), ["ab", "cd", "e"])

    def test_one_compile_command_each(self):
        self.assertEqual(self.groups({"a.cpp": "", "c.cpp": ""}, others=[("b.cpp", "")]), ["ac", "b"])

    def test_one_configuration_each(self):
        self.assertEqual(self.groups({"a.cpp": "", "in/b.cpp": "", "in/.clang-tidy": "", "c.cpp": ""})[0], "ac")

    def test_what_one_hides_another_does_not_speak_of(self):
        hides = "namespace {\nvoid Put() {}\n}  // namespace"
        self.assertEqual(self.groups({"a.cpp": hides, "b.cpp": "void f() { Put(); }"}), ["a", "b"])
        self.assertEqual(self.groups({"a.cpp": "void f() { Put(); }", "b.cpp": hides}), ["a", "b"])
        self.assertEqual(self.groups({"a.cpp": hides, "b.cpp": '// Put\nchar c[] = "Put";'}), ["ab"])

    def test_what_reaches_the_next_source_stands_alone(self):
        for text in ("#define A", "#if B\n#endif", "using lorv::Put;", "using namespace lorv;", "using enum Kind;"):
            self.assertEqual(self.groups({"a.cpp": text, "b.cpp": "", "c.cpp": text}), ["a", "b", "c"], text)
        for text in ("#include <a>", "using A = int;", "struct A : B {\n  using B::B;\n};"):
            self.assertEqual(self.groups({"a.cpp": text, "b.cpp": ""}), ["ab"], text)

    def test_names_that_a_source_hides(self):
        hidden = script().tidy_groups.hidden
        for text, names in {"int f(int n) { int k = 0; }": "f", "const Map<A, std::set<B>> m{1}; int n = f();": "m n",
                            "struct A : B { int n; };": "A", "enum class K : int { kA };": "K", "using T = A::B;": "T",
                            "template <class T> T* g(T* t) noexcept { for (;;) {} }": "g", "char t[] = {1, 2};": "t",
                            "[[maybe_unused]] const Lock lock;": "lock", "void A::h() const {}": "h",
                            "namespace n { class P; }": "P"}.items():
            source = f"int a(); namespace lorv {{ namespace {{ {text} }} int b = 0; }}"
            self.assertEqual(hidden(source), set(names.split()), text)


class Defects(unittest.TestCase):
    """Every family of checks finds in a group what it finds in the source alone."""

    def found(self, options):
        """The findings in the source with defects, alone and behind another in a group."""
        tidy = script()
        checks = (ROOT / ".clang-tidy").read_text(encoding="utf-8")
        texts = {".clang-tidy": checks, "comm/shapes.h": tidy_defects.HEADER,
                 "comm/neighbour.cpp": tidy_defects.NEIGHBOUR, "comm/shapes.cpp": tidy_defects.DEFECTIVE}
        with tempfile.TemporaryDirectory() as folder:
            command = f"c++ -std=c++20 -Wall -Wextra -Wshadow -I{folder} -c"
            group = written(folder, texts, command)[2:]
            commands = [{**entry, "directory": folder} for entry in group]
            (pathlib.Path(folder) / "compile_commands.json").write_text(json.dumps(commands), encoding="utf-8")
            with concurrent.futures.ThreadPoolExecutor(2) as pool:
                runs = pool.map(lambda part: tidy.look(part, folder, options), (group[1:], group))
            finding = re.compile(r":\d+: (?:error|warning): (.*\[[^]]*\])$", re.MULTILINE)
            return [sorted(finding.findall(run.stdout)) for run in runs]

    def test_the_same_alone_and_in_a_group(self):
        for options in (script().QUICK, []):
            alone, grouped = self.found(options)
            self.assertEqual(alone, grouped)
            checks = {re.search(r"\[([^,\]]*)", finding)[1] for finding in grouped}
            self.assertEqual(tidy_defects.CHECKS - checks, set())


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
