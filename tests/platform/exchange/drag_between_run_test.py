"""A drag from one program to another, by the mouse of an X server of its own.

usage: drag_between_run_test.py PROGRAM MOUSE      (on a screen)

The source's window stands at 0,0 and the target's at 300,0, each 200 by 200; the target takes what is dropped on its
left half.
"""

import queue
import subprocess
import sys
import threading
import time
import unittest

PROGRAM, MOUSE = sys.argv[1], sys.argv[2]
PATIENCE = 30  # seconds


class Started:
    def __init__(self, role):
        self.process = subprocess.Popen([PROGRAM, role], stdout=subprocess.PIPE)
        self.lines = queue.Queue()
        threading.Thread(target=self.read, daemon=True).start()

    def read(self):
        for line in self.process.stdout:
            self.lines.put(line.decode("utf-8").rstrip("\n"))

    def line(self):
        return self.lines.get(timeout=PATIENCE)

    def rest(self):
        said = []
        while not self.lines.empty():
            said.append(self.lines.get())
        return said

    def end(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


def mouse(*words):
    subprocess.run([MOUSE, *map(str, words)], check=True, timeout=PATIENCE)


def glide(start, end, y):
    """In steps, at the pace of the protocol between the two programs."""
    step = 10 if end > start else -10
    for x in range(start, end, step):
        mouse("move", x, y)
        time.sleep(0.02)
    mouse("move", end, y)
    time.sleep(0.3)


class Between(unittest.TestCase):
    def setUp(self):
        self.target = Started("target")
        self.addCleanup(self.target.end)
        self.source = Started("source")
        self.addCleanup(self.source.end)
        self.assertEqual((self.target.line(), self.source.line()), ("ready", "ready"))
        mouse("move", 100, 100, "down")
        self.addCleanup(mouse, "up")
        self.assertEqual(self.source.line(), "drag")

    def test_text_and_bytes_arrive_and_the_source_hears_of_it(self):
        glide(110, 350, 120)
        mouse("up")
        self.assertEqual(self.target.line(), "drop 50,120 by 1: 梁 KL1|C30, 3 bytes")
        self.assertEqual(self.source.line(), "done 1")

    def test_what_is_refused_does_nothing(self):
        glide(110, 450, 120)
        mouse("up")
        self.assertEqual(self.source.line(), "done 0")
        self.assertNotIn("drop", " ".join(self.target.rest()))

    def test_a_drag_may_pass_through(self):
        glide(110, 350, 120)
        glide(350, 600, 120)
        self.assertEqual(self.target.line(), "leave")
        mouse("up")
        self.assertEqual(self.source.line(), "done 0")

    def test_the_target_may_die_in_the_middle(self):
        glide(110, 350, 120)
        self.target.end()
        glide(350, 600, 120)
        mouse("up")
        self.assertEqual(self.source.line(), "done 0")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
