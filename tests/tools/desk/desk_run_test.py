"""Starts the built desktop program as a user does and looks at its words, its exit code and its pictures.

usage: desk_run_test.py [EMULATOR ...] PROGRAM
"""

import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
import zlib

COMMAND = []
NAMES = [f"{what}-{language}" for what in ("failure", "description", "workbooks") for language in ("zh", "en")]
GRIDS = ["grid-zh", "grid-en"]


def run(*words, folder=None, env=None):
    done = subprocess.run(COMMAND + list(words), capture_output=True, timeout=300, cwd=folder, env=env)
    # The emulator's services may end badly as they start; that is theirs to report, and no affair of the program's.
    lines = done.stderr.decode("utf-8").splitlines(keepends=True)
    return done.returncode, done.stdout.decode("utf-8"), "".join(line for line in lines if not line.startswith("wine: "))


def size_of(png):
    """Width and height; whatever is wrong with the file fails."""
    assert png[:8] == b"\x89PNG\r\n\x1a\n", png[:8]
    width, height, depth, colours = struct.unpack(">IIBB", png[16:26])
    data, at = b"", 8
    while at < len(png):
        length, name = struct.unpack(">I4s", png[at:at + 8])
        body = png[at + 4:at + 8 + length]
        assert struct.unpack(">I", png[at + 8 + length:at + 12 + length])[0] == zlib.crc32(body), name
        data += body[4:] if name == b"IDAT" else b""
        at += 12 + length
    assert (depth, colours) == (8, 2)
    assert len(zlib.decompress(data)) == height * (width * 3 + 1)
    return width, height


class Desk(unittest.TestCase):
    def test_help_and_version(self):
        code, out, err = run("--help")
        self.assertEqual((code, err), (0, ""))
        for word in ("--dialogs", "--grid FILE", "--images FILE", "--events", "--pictures FOLDER", "Exit codes: 0 fine"):
            self.assertIn(word, out)
        code, out, _ = run("--version")
        self.assertEqual(code, 0)
        self.assertRegex(out, r"^lorv-desk \d+\.\d+\.\d+\n$")

    def test_a_windows_program_says_what_it_knows_of_screens(self):
        program = pathlib.Path(COMMAND[-1])
        if program.suffix != ".exe":
            self.assertNotIn(b"<assembly ", program.read_bytes())
            return
        found = re.findall(rb"<assembly .*?</assembly>", program.read_bytes(), re.DOTALL)
        self.assertEqual(len(found), 1)
        manifest = xml.etree.ElementTree.fromstring(found[0])
        values = {element.tag.split("}")[1]: element for element in manifest.iter()}
        self.assertEqual(values["dpiAwareness"].text, "PerMonitorV2, PerMonitor")
        self.assertEqual(values["dpiAware"].text, "true/pm")
        parts = [element.attrib for element in manifest.iter() if element.tag.endswith("}assemblyIdentity")]
        self.assertIn(("Microsoft.Windows.Common-Controls", "6.0.0.0"), [(p["name"], p["version"]) for p in parts])
        # The code page stays the system's: file names and texts of the library are 16 bits.
        self.assertNotIn("activeCodePage", values)

    def test_words_that_mean_nothing_are_refused(self):
        for words in ((), ("--nothing",), ("墙",), ("--pictures", "x"), ("--dialogs", "--pictures"), ("--grid",),
                      ("--dialogs", "--grid", "x"), ("--images",), ("--events", "--dialogs"),
                      ("--images", "a.gif", "--grid", "x"), ("--events", "--images", "a.gif")):
            code, out, err = run(*words)
            self.assertEqual((code, out), (2, ""), words)
            self.assertTrue(err.startswith("lorv-desk: "), err)
            self.assertIn("lorv-desk --help", err)

    def test_pictures_of_every_dialog(self):
        with tempfile.TemporaryDirectory() as folder:
            # The progress of Windows is a window of its shell's, which is not pictured.
            names = NAMES + GRIDS + ([] if len(COMMAND) > 1 else ["progress-zh", "progress-en"])
            for _ in range(2):  # the second run replaces what the first one wrote
                code, out, err = run("--dialogs", "--pictures", "图片/shots", folder=folder)
                self.assertEqual(code, 0, err)
                self.assertEqual([line.split()[0] for line in out.splitlines()],
                                 [f"图片/shots/{name}.png" for name in names])
            for name in names:
                width, height = size_of((pathlib.Path(folder) / "图片" / "shots" / f"{name}.png").read_bytes())
                self.assertTrue(900 < width < 1000 if name in GRIDS else 300 < width < 700, (name, width))
                self.assertTrue(100 < height < 600, (name, height))

    def test_grids_are_half_as_large_again_at_144_dots(self):
        # The screen of the other system has dots of its own.
        times = 1.0 if len(COMMAND) > 1 else 1.5
        with tempfile.TemporaryDirectory() as folder:
            code, _, err = run("--dialogs", "--pictures", "shots", folder=folder, env={**os.environ, "QT_SCALE_FACTOR": "1.5"})
            self.assertEqual(code, 0, err)
            for name in GRIDS:
                width, height = size_of((pathlib.Path(folder) / "shots" / f"{name}.png").read_bytes())
                self.assertTrue(900 * times < width < 1000 * times, (name, width))
                self.assertTrue(220 * times < height < 300 * times, (name, height))

    def test_pictures_on_a_dark_desktop(self):
        if len(COMMAND) > 1 or shutil.which("xvfb-run") is None:
            return  # its theme is that of a desktop on X11
        with tempfile.TemporaryDirectory() as folder:
            screen = ["xvfb-run", "-a", "-s", "-screen 0 1600x1200x24"]
            dark = {"XDG_CONFIG_HOME": str(pathlib.Path(__file__).parent / "dark_desktop"),
                    "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}
            for shots, theme in (("light", {}), ("dark", dark)):
                env = {**os.environ, "QT_QPA_PLATFORM": "xcb", **theme}
                done = subprocess.run(screen + COMMAND + ["--dialogs", "--pictures", shots], capture_output=True,
                                      timeout=300, cwd=folder, env=env)
                self.assertEqual(done.returncode, 0, done.stderr)
            for name in GRIDS + NAMES:
                light, night = ((pathlib.Path(folder) / shots / f"{name}.png").read_bytes() for shots in ("light", "dark"))
                self.assertEqual(size_of(light), size_of(night), name)
                self.assertNotEqual(light, night, name)

    def test_a_folder_that_cannot_be_made_is_told(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "file").write_bytes(b"")
            code, out, err = run("--dialogs", "--pictures", "file", folder=folder)
            self.assertEqual((code, out), (2, ""))
            self.assertIn("lorv-desk: file cannot be made a folder\n", err)

    def test_a_table_is_shown_in_the_grid(self):
        with tempfile.TemporaryDirectory() as folder:
            table = pathlib.Path(folder) / "梁.csv"
            table.write_bytes("构件;长\r\nKL1;7,2\r\n\r\nKL2;6,6\r\n".encode("gbk"))
            before = table.read_bytes()
            code, out, err = run("--grid", "梁.csv", "--pictures", "shots", folder=folder)
            used = "shots/table-in-use.png  sorted, filtered and searched\n"
            self.assertEqual((code, out), (0, "shots/table.png  梁.csv, 3 rows\n" + used), err)
            for name in ("table.png", "table-in-use.png"):
                width, height = size_of((pathlib.Path(folder) / "shots" / name).read_bytes())
                self.assertTrue(width > 900 and height > 500, (width, height))
            # Nobody saved: nothing was written, nothing is left behind.
            self.assertEqual(table.read_bytes(), before)
            self.assertEqual(sorted(path.name for path in pathlib.Path(folder).iterdir()), ["shots", "梁.csv"])

    def test_what_is_no_table_is_told(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "wrong.csv").write_bytes(b'a,b\n1,"2\n')
            for name, word in (("none.csv", "none.csv"), ("wrong.csv", "wrong.csv"), (".", "."), ("-", "")):
                code, out, err = run("--grid", name, "--pictures", "shots", folder=folder)
                self.assertEqual((code, out), (2, ""), name)
                self.assertRegex(err, "(?m)^lorv-desk: ")
                self.assertIn(word, err)


    def test_an_image_is_shown_by_its_frames_and_in_a_tip(self):
        with tempfile.TemporaryDirectory() as folder:
            beam = pathlib.Path(__file__).parents[3] / "examples" / "pictures" / "beam.gif"
            (pathlib.Path(folder) / "梁.gif").write_bytes(beam.read_bytes())
            code, out, err = run("--images", "梁.gif", "--pictures", "shots", folder=folder)
            self.assertEqual((code, out), (0, "shots/image.png  梁.gif, 8 frames\nshots/tip.png  梁.gif in a tip\n"), err)
            width, height = size_of((pathlib.Path(folder) / "shots" / "image.png").read_bytes())
            self.assertTrue(400 < width < 600 and 450 < height < 650, (width, height))
            width, height = size_of((pathlib.Path(folder) / "shots" / "tip.png").read_bytes())
            self.assertTrue(240 < width < 600 and 150 <= height < 220, (width, height))

    def test_what_is_no_image_is_told(self):
        with tempfile.TemporaryDirectory() as folder:
            (pathlib.Path(folder) / "wrong.gif").write_bytes(b"GIF89a")
            for name in ("none.gif", "wrong.gif", "."):
                code, out, err = run("--images", name, "--pictures", "shots", folder=folder)
                self.assertEqual((code, out), (2, ""), name)
                self.assertRegex(err, "(?m)^lorv-desk: ")
                self.assertIn(name, err)

    def test_events_are_shown_beside_their_table(self):
        with tempfile.TemporaryDirectory() as folder:
            code, out, err = run("--events", "--pictures", "shots", folder=folder)
            self.assertEqual(code, 0, err)
            names = ["events-zh", "events-en"]
            self.assertEqual([line.split()[0] for line in out.splitlines()], [f"shots/{name}.png" for name in names])
            for name in names:
                width, height = size_of((pathlib.Path(folder) / "shots" / f"{name}.png").read_bytes())
                self.assertTrue(1200 < width < 1400 and 350 < height < 500, (width, height))


class DeskOfTheSystem(unittest.TestCase):
    """What an emulator stands in the way of: a program to be ended, an environment of its own."""

    def test_dialogs_wait_for_the_user(self):
        shown = subprocess.Popen(COMMAND + ["--dialogs"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            self.assertEqual(shown.stdout.readline().decode("utf-8"), "a failure, in Chinese\n")
            self.assertIsNone(shown.poll())
        finally:
            shown.terminate()
            shown.wait()
            shown.stdout.close()

    def test_without_a_screen_the_reason_is_told(self):
        bare = {key: value for key, value in os.environ.items()
                if key not in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM")}
        code, out, err = run("--dialogs", env=bare)
        self.assertEqual((code, out), (2, ""))
        self.assertTrue(err.startswith("lorv-desk: there is no screen for windows: "), err)


if __name__ == "__main__":
    COMMAND = sys.argv[1:]
    os.environ["LC_ALL"] = "zh_CN.UTF-8"
    unittest.main(argv=sys.argv[:1], defaultTest=["Desk"] if len(COMMAND) > 1 else None)
