"""Has a program choose and use desktops, a process for every case.

usage: desktop_choice_run_test.py linux|windows [EMULATOR ...] PROGRAM
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

COMMAND = []


def lines_of(*words, **environment):
    """What the program says; a variable of the environment that is None is taken out."""
    variables = {**os.environ, "COMM_LORV_DESKTOP": None, "QT_QPA_PLATFORM": "offscreen", **environment}
    variables = {name: value for name, value in variables.items() if value is not None}
    done = subprocess.run(COMMAND + list(words), capture_output=True, timeout=300, env=variables)
    if done.returncode != 0:
        raise AssertionError(f"exit code {done.returncode}: {done.stderr.decode()}")
    return done.stdout.decode("utf-8").splitlines()


def some_library():
    """The path of a library that loads and is none of ours."""
    import zlib  # noqa: F401, loads it
    maps = pathlib.Path("/proc/self/maps").read_text()
    return next(line.split()[-1] for line in maps.splitlines() if "/libz.so" in line)


class Linux(unittest.TestCase):
    def test_nothing_said_is_headless(self):
        self.assertEqual(lines_of("use"), ["headless, in memory"])
        self.assertEqual(lines_of("use", COMM_LORV_DESKTOP=""), ["headless, in memory"])

    def test_environment_says_which(self):
        self.assertEqual(lines_of("use", COMM_LORV_DESKTOP="headless"), ["headless, in memory"])
        self.assertEqual(lines_of("use", "use", COMM_LORV_DESKTOP="qt"), ["qt, on a screen"] * 2)

    def test_nothing_is_chosen_before_the_first_use(self):
        self.assertEqual(lines_of("look", COMM_LORV_DESKTOP="qt"), ["nothing"])

    def test_call_counts_for_more_than_the_environment(self):
        self.assertEqual(lines_of("qt", "use"), ["qt", "qt, on a screen"])
        self.assertEqual(lines_of("headless", "use", COMM_LORV_DESKTOP="qt"), ["headless", "headless, in memory"])
        self.assertEqual(lines_of("headless", COMM_LORV_DESKTOP="gtk"), ["headless"])

    def test_unknown_word_is_refused_with_the_known_ones(self):
        refused = "refused: COMM_LORV_DESKTOP 不能是“桌面”：只有 headless 和 qt。"
        self.assertEqual(lines_of("use", "look", "use", COMM_LORV_DESKTOP="桌面"), [refused, "nothing", refused])
        for word in ("Qt", "qt ", "windows", "x" * 400):
            self.assertTrue(lines_of("use", COMM_LORV_DESKTOP=word)[0].startswith("refused: "), word)

    def test_second_choice_is_the_first_one_or_refused(self):
        refused = "refused: 桌面已选定为 headless，不能再改为 qt。"
        self.assertEqual(lines_of("headless", "qt", "headless", "use"),
                         ["headless", refused, "headless", "headless, in memory"])
        self.assertEqual(lines_of("use", "qt"), ["headless, in memory", refused])
        self.assertEqual(lines_of("qt", "headless"), ["qt", "refused: 桌面已选定为 qt，不能再改为 headless。"])

    def test_refused_choice_leaves_the_way_open(self):
        self.assertEqual(lines_of("windows", "look", "qt"), ["refused: 此系统没有 Windows 的桌面。", "nothing", "qt"])

    def test_scope_stands_before_the_choice_and_is_none(self):
        self.assertEqual(lines_of("scope", "look", "qt", "scope", "use"),
                         ["the scope's", "nothing", "qt", "the scope's", "qt, on a screen"])

    def test_without_a_screen_qt_is_refused(self):
        nowhere = dict(QT_QPA_PLATFORM=None, DISPLAY=None, WAYLAND_DISPLAY=None)
        self.assertEqual(lines_of("qt", "headless", **nowhere), ["refused: 没有可供 Qt 使用的屏幕。", "headless"])

    def test_missing_library_is_named_with_its_place(self):
        own = pathlib.Path(COMMAND[-1]).parent / "libComm_LORV.so.1"
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(own, folder)
            said = lines_of("use", "look", "headless", COMM_LORV_DESKTOP="qt", LD_LIBRARY_PATH=folder)
            self.assertTrue(said[0].startswith(f"refused: 无法加载 Qt 桌面库：{folder}/libComm_LORV_qt.so.1: "), said)
            self.assertEqual(said[1:], ["nothing", "headless"])

    def test_library_beside_the_own_one_comes_first(self):
        built = pathlib.Path(COMMAND[-1]).parent
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(built / "libComm_LORV.so.1", folder)
            shutil.copy(some_library(), f"{folder}/libComm_LORV_qt.so.1")
            said = lines_of("qt", LD_LIBRARY_PATH=f"{folder}:{built}")
            self.assertEqual(said, [f"refused: 这不是 Qt 桌面库：{folder}/libComm_LORV_qt.so.1"])


class Windows(unittest.TestCase):
    def test_windows_of_the_system_unless_a_call_says_headless(self):
        self.assertEqual(lines_of("look", "use", "headless", COMM_LORV_DESKTOP="headless"),
                         ["nothing", "windows, on a screen", "refused: 桌面已选定为 windows，不能再改为 headless。"])
        self.assertEqual(lines_of("headless", "use"), ["headless", "headless, in memory"])
        self.assertEqual(lines_of("qt", "windows"), ["refused: 此系统没有 Qt 的桌面。", "windows"])


if __name__ == "__main__":
    SYSTEM, *COMMAND = sys.argv[1:]
    suite = unittest.defaultTestLoader.loadTestsFromTestCase(Linux if SYSTEM == "linux" else Windows)
    sys.exit(not unittest.TextTestRunner().run(suite).wasSuccessful())
