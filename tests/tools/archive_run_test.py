"""Packs with the built program and reads with other tools, and the other way round.

usage: archive_run_test.py [EMULATOR ...] PROGRAM

The other tools are Python's zipfile, Info-ZIP's zip and unzip, and bsdtar; each one that is missing says so.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest
import zipfile

COMMAND = []
TIME = 1_600_000_000
FILES = {
    "text.txt": b"KL1 250*500 C30\r\n" * 4000,
    "empty.dat": b"",
    "noise.bin": bytes((i * i * 31 + i // 7) % 256 for i in range(200_000)),
    "packed.zip": b"PK stored as it is" * 50,
    "sub/inner.csv": b"a,b\n1,2\n",
    "sub/deep/last.txt": b"x",
}


def run(*words, code=0):
    done = subprocess.run([*COMMAND, *words], capture_output=True, timeout=120)
    assert done.returncode == code, (words, done.returncode, done.stdout, done.stderr)
    return done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


def tool(*words):
    """The output of another tool; nothing where it is not installed."""
    if not shutil.which(words[0]):
        print(f"{words[0]} is not installed here", file=sys.stderr)
        return None
    done = subprocess.run(words, capture_output=True, timeout=120)
    assert done.returncode == 0, (words, done.returncode, done.stdout, done.stderr)
    return done.stdout


class Scratch(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        for name, data in FILES.items():
            path = pathlib.Path("in") / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(data)
            os.utime(path, (TIME, TIME))

    def expect_tree(self, root, times=True):
        found = {str(p.relative_to(root)): p for p in pathlib.Path(root).rglob("*") if p.is_file()}
        self.assertEqual(sorted(found), sorted(FILES))
        for name, path in found.items():
            self.assertEqual(path.read_bytes(), FILES[name], name)
            if times:
                self.assertEqual(int(path.stat().st_mtime), TIME, name)


class Packed(Scratch):
    def setUp(self):
        super().setUp()
        run("pack", "out.zip", "in")

    def test_zipfile_reads_it(self):
        with zipfile.ZipFile("out.zip") as archive:
            self.assertIsNone(archive.testzip())
            names = {n for n in archive.namelist() if not n.endswith("/")}
            self.assertEqual(names, {f"in/{n}" for n in FILES})
            for name, data in FILES.items():
                self.assertEqual(archive.read(f"in/{name}"), data)
            methods = {i.filename: i.compress_type for i in archive.infolist()}
            self.assertEqual(methods["in/packed.zip"], zipfile.ZIP_STORED)
            self.assertEqual(methods["in/text.txt"], zipfile.ZIP_DEFLATED)

    def test_unzip_reads_it(self):
        if tool("unzip", "-t", "out.zip") is not None:
            tool("unzip", "-q", "out.zip", "-d", "back")
            self.expect_tree("back/in")

    def test_bsdtar_reads_it(self):
        if tool("bsdtar", "-tf", "out.zip") is not None:
            os.mkdir("back")
            tool("bsdtar", "-xf", "out.zip", "-C", "back")
            self.expect_tree("back/in")

    def test_it_comes_back_by_itself(self):
        run("unpack", "out.zip", "--to", "back")
        self.expect_tree("back/in")
        self.assertIn("0 damaged", run("test", "out.zip")[0])
        self.assertIn("in/sub/inner.csv", run("list", "out.zip")[0])

    def test_nothing_is_replaced_without_being_asked(self):
        before = pathlib.Path("out.zip").read_bytes()
        self.assertIn("--force", run("pack", "out.zip", "in/text.txt", code=2)[1])
        self.assertEqual(pathlib.Path("out.zip").read_bytes(), before)
        run("unpack", "out.zip", "--to", "back")
        pathlib.Path("back/in/text.txt").write_bytes(b"mine")
        run("unpack", "out.zip", "--to", "back", code=2)
        self.assertEqual(pathlib.Path("back/in/text.txt").read_bytes(), b"mine")
        run("unpack", "out.zip", "--to", "back", "--force")
        self.expect_tree("back/in")

    def test_damage_is_found_and_leaves_no_file(self):
        data = bytearray(pathlib.Path("out.zip").read_bytes())
        with zipfile.ZipFile("out.zip") as archive:
            at = archive.getinfo("in/noise.bin").header_offset
        data[at + 300] ^= 0xFF
        pathlib.Path("bad.zip").write_bytes(data)
        out = run("test", "bad.zip", code=1)[0]
        self.assertIn("in/noise.bin: ", out)
        self.assertIn("1 damaged", out)
        run("unpack", "bad.zip", "--to", "back", code=2)
        self.assertFalse(pathlib.Path("back/in/noise.bin").exists())
        self.assertFalse(list(pathlib.Path("back").rglob("*.writing")))

    def test_read_only_goes_both_ways(self):
        os.chmod("in/text.txt", 0o444)
        run("pack", "ro.zip", "in/text.txt")
        run("unpack", "ro.zip", "--to", "back")
        self.assertEqual(pathlib.Path("back/in/text.txt").stat().st_mode & 0o222, 0)


class Foreign(Scratch):
    def test_zipfile_writes_it(self):
        with zipfile.ZipFile("f.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            for name in FILES:
                archive.write(f"in/{name}", name)
        run("unpack", "f.zip", "--to", "back")
        self.expect_tree("back", times=False)

    def test_zip_writes_it(self):
        os.chdir("in")
        if tool("zip", "-qr", "../f.zip", ".") is not None:
            os.chdir("..")
            run("unpack", "f.zip", "--to", "back")
            self.expect_tree("back")

    def test_bsdtar_writes_it(self):
        if tool("bsdtar", "--format=zip", "-cf", "f.zip", "-C", "in", *FILES) is not None:
            run("unpack", "f.zip", "--to", "back")
            self.expect_tree("back")

    def hostile(self, name, data=b"x"):
        with zipfile.ZipFile("h.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr(name, data)

    def test_names_that_lead_out_are_refused(self):
        for name in ("../evil.txt", "a/../../evil.txt", "/tmp/evil.txt", "..\\evil.txt", "C:\\evil.txt"):
            self.hostile(name)
            self.assertIn("--any-place", run("unpack", "h.zip", "--to", "back", code=2)[1], name)
            self.assertFalse(pathlib.Path("evil.txt").exists())
        self.hostile("../evil.txt")
        run("unpack", "h.zip", "--to", "back", "--any-place")
        self.assertTrue(pathlib.Path("evil.txt").exists())

    def test_bombs_are_refused_until_the_limits_are_raised(self):
        self.hostile("zeros.bin", bytes(5_000_000))
        self.assertIn("--max-ratio", run("unpack", "h.zip", "--to", "back", code=2)[1])
        self.assertIn("--max-size", run("unpack", "h.zip", "--to", "back", "--max-size", "4", code=2)[1])
        self.assertFalse(pathlib.Path("back").exists())
        run("unpack", "h.zip", "--to", "back", "--max-ratio", "2000")
        self.assertEqual(pathlib.Path("back/zeros.bin").stat().st_size, 5_000_000)

    def test_a_file_of_2_gb_is_refused_and_nothing_is_left(self):
        with open("huge.dat", "wb") as huge:
            huge.truncate(2**31)
        self.assertIn("2 GB", run("pack", "huge.zip", "huge.dat", code=2)[1])
        self.assertFalse(pathlib.Path("huge.zip").exists())
        self.assertFalse(pathlib.Path("huge.zip.writing").exists())

    def test_what_is_no_archive_is_told(self):
        pathlib.Path("text.zip").write_bytes(b"no archive")
        for verb in ("unpack", "list", "test"):
            self.assertIn("Zipfile is corrupt", run(verb, "text.zip", code=2)[1])
            self.assertIn("cannot be opened", run(verb, "absent.zip", code=2)[1])


class Squeezed(Scratch):
    def test_files_come_back(self):
        for name, data in FILES.items():
            out, err = run("squeeze", f"in/{name}", "--out", "s.lzari", "--force")
            self.assertEqual((out, err), ("", ""))
            run("expand", "s.lzari", "--out", "back", "--force")
            self.assertEqual(pathlib.Path("back").read_bytes(), data, name)

    def test_names_are_made_and_nothing_is_replaced(self):
        run("squeeze", "in/text.txt")
        self.assertTrue(pathlib.Path("in/text.txt.lzari").exists())
        run("squeeze", "in/text.txt", code=2)
        self.assertIn("--force", run("expand", "in/text.txt.lzari", code=2)[1])
        os.remove("in/text.txt")
        run("expand", "in/text.txt.lzari")
        self.expect_tree_entry("in/text.txt")

    def expect_tree_entry(self, path):
        self.assertEqual(pathlib.Path(path).read_bytes(), FILES["text.txt"])

    def test_damage_leaves_the_old_file(self):
        run("squeeze", "in/text.txt", "--out", "s.lzari")
        data = pathlib.Path("s.lzari").read_bytes()
        pathlib.Path("s.lzari").write_bytes(data[:-2])
        pathlib.Path("back").write_bytes(b"old")
        self.assertIn("damaged", run("expand", "s.lzari", "--out", "back", "--force", code=2)[1])
        self.assertEqual(pathlib.Path("back").read_bytes(), b"old")
        self.assertFalse(pathlib.Path("back.writing").exists())


if __name__ == "__main__":
    COMMAND = [os.path.abspath(word) for word in sys.argv[1:]]
    os.environ["LC_ALL"] = "C.UTF-8"
    unittest.main(argv=sys.argv[:1])
