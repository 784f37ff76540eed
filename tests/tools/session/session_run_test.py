"""Sits at a terminal before the built program: the calculator with its history and completion, colours and their end.

usage: session_run_test.py PROGRAM
"""

import ctypes
import contextlib
import os
import pty
import select
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = ""


def editing_library():
    try:
        return ctypes.CDLL("libedit.so.2")
    except OSError:
        return None


class Terminal:
    """A run of the program whose three streams are a terminal; `on` names the streams that are."""

    def __init__(self, words, home, on=(0, 1, 2), **environment):
        self.master, slave = pty.openpty()
        streams = [slave if stream in on else subprocess.DEVNULL for stream in (0, 1, 2)]
        surroundings = {"TERM": "xterm", "HOME": home, "LC_ALL": "C.UTF-8", "PATH": os.environ["PATH"], **environment}
        self.child = subprocess.Popen([PROGRAM] + words, stdin=streams[0], stdout=streams[1], stderr=streams[2], env=surroundings,
                                      start_new_session=True)
        os.close(slave)
        self.seen = ""

    def type(self, text):
        os.write(self.master, text.encode())

    def read(self):
        """What comes within a tenth of a second; False at the end."""
        if not select.select([self.master], [], [], 0.1)[0]:
            return self.child.poll() is None
        try:
            piece = os.read(self.master, 65536)
        except OSError:
            return False
        self.seen += piece.decode("utf-8", errors="replace")
        return bool(piece)

    def read_until_quiet(self):
        """Reads until a tenth of a second has brought nothing, or the program is at its end."""
        while select.select([self.master], [], [], 0.1)[0] and self.read():
            pass

    def wait_for(self, text, seconds=30):
        """Reads until the text has been seen; what was seen up to its end is then forgotten and given."""
        end = time.monotonic() + seconds
        while text not in self.seen and time.monotonic() < end and self.read():
            pass
        if text not in self.seen:
            raise AssertionError(f"never shown: {text!r}; but {self.seen!r}")
        before, self.seen = self.seen.split(text, 1)
        return before + text

    def end(self, seconds=60):
        end = time.monotonic() + seconds
        while self.read():
            if time.monotonic() > end:
                self.child.kill()
                raise AssertionError(f"does not end; shown last: {self.seen!r}")
        code = self.child.wait(timeout=60)
        os.close(self.master)
        return code


class Session(unittest.TestCase):
    def setUp(self):
        self.home = tempfile.TemporaryDirectory()

    def tearDown(self):
        self.home.cleanup()

    def test_works_keeps_names_and_ends(self):
        terminal = Terminal([], self.home.name)
        terminal.wait_for("type a formula, help, or quit")
        terminal.type("2*(3.6+0.24)*2.8\n")
        terminal.wait_for("21.504")
        terminal.type("L = ans*2\n")
        terminal.wait_for("L = 43.008")
        terminal.type("L*\n")
        terminal.wait_for("the formula ends")
        terminal.type("names\n")
        terminal.wait_for("ans = 43.008")
        terminal.type("quit\n")
        self.assertEqual(terminal.end(), 0)

    def test_end_of_input_ends_it(self):
        terminal = Terminal([], self.home.name)
        terminal.wait_for("quit")
        # The key is lost while the terminal is made ready for editing, and its repetition then means nothing: a line between.
        while terminal.child.poll() is None:
            for key in ("\x04", "\n"):
                terminal.read_until_quiet()
                with contextlib.suppress(OSError):
                    terminal.type(key)
        self.assertEqual(terminal.end(), 0)

    def test_speaks_chinese_by_the_locale(self):
        terminal = Terminal([], self.home.name, LC_ALL="zh_CN.UTF-8")
        terminal.wait_for("请输入公式")
        terminal.type("墙长 = 6\n")
        terminal.wait_for("墙长 = 6")
        terminal.type("quit\n")
        self.assertEqual(terminal.end(), 0)

    def test_history_and_completion(self):
        if not editing_library():
            print("the editing library is not installed here: lines come as they are typed", file=sys.stderr)
            return
        terminal = Terminal([], self.home.name)
        terminal.wait_for("quit")
        terminal.type("height = 3\n")
        terminal.wait_for("height = 3")
        terminal.wait_for("height = 3")
        terminal.type("2*hei\t*2\n")
        terminal.wait_for("\n12\r\n")
        terminal.type("\x1b[A\x1b[A\x01\x0b7*7\n")  # two lines back, then another line in its place
        terminal.wait_for("\n49\r\n")
        terminal.type("\x1b[A\n")
        terminal.wait_for("\n49\r\n")
        terminal.type("quit\n")
        self.assertEqual(terminal.end(), 0)
        with open(os.path.join(self.home.name, ".lorv_history"), encoding="utf-8") as history:
            self.assertIn("7*7", history.read())

    def test_no_verb_and_no_terminal_prints_the_help(self):
        done = subprocess.run([PROGRAM, "--lang=en"], stdin=subprocess.DEVNULL, capture_output=True, timeout=60)
        self.assertEqual(done.returncode, 0)
        self.assertIn(b"Usage: lorv VERB", done.stdout)


class Colours(unittest.TestCase):
    def shown(self, **environment):
        with tempfile.TemporaryDirectory() as home:
            terminal = Terminal(["calc", "1+"], home, on=(2,), **environment)
            self.assertEqual(terminal.end(), 1)
            return terminal.seen

    def test_messages_are_coloured_on_a_terminal(self):
        self.assertIn("\x1b[31m", self.shown())

    def test_and_not_where_the_user_or_the_terminal_wants_none(self):
        self.assertNotIn("\x1b", self.shown(NO_COLOR="1"))
        self.assertNotIn("\x1b", self.shown(TERM="dumb"))
        self.assertIn("\x1b[31m", self.shown(NO_COLOR=""))

    def test_nothing_is_coloured_in_a_file(self):
        done = subprocess.run([PROGRAM, "calc", "1+"], capture_output=True, timeout=60)
        self.assertNotIn(b"\x1b", done.stderr)


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    unittest.main(argv=sys.argv[:1])
