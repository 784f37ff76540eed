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
EMULATED = False
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
    done = subprocess.run([*COMMAND, "--lang=en", *words], capture_output=True, timeout=120)
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
        self.assertIn("in/noise.bin: its data are damaged", out)
        self.assertIn("1 damaged", out)
        self.assertIn('"in/noise.bin" was not unpacked: its data are', run("unpack", "bad.zip", "--to", "back", code=1)[1])
        self.assertFalse(pathlib.Path("back/in/noise.bin").exists())
        self.assertFalse(list(pathlib.Path("back").rglob("*.part")))
        os.remove("in/noise.bin")
        for name in FILES:
            if name != "noise.bin":
                self.assertEqual(pathlib.Path("back/in", name).read_bytes(), FILES[name], name)

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
        self.assertFalse(list(pathlib.Path(".").glob("*.part")))
        self.assertIn("2 GB", run("pack", "most.zip", "huge.dat", "in", code=1)[1])
        run("unpack", "most.zip", "--to", "back")
        self.expect_tree("back/in")

    def test_what_is_no_archive_is_told(self):
        pathlib.Path("text.zip").write_bytes(b"no archive")
        for verb in ("unpack", "list", "test"):
            self.assertIn("no ZIP archive", run(verb, "text.zip", code=2)[1])
            self.assertIn("cannot be opened", run(verb, "absent.zip", code=2)[1])


# A character with a code of two bytes of which the second is that of the backslash, and one without a code.
STRANGE = ["誠運工程.txt", "墙\N{GRINNING FACE}.txt", "żółw/Ελλάδα.txt", "نص.txt"]


class UnicodeNames(Scratch):
    def setUp(self):
        super().setUp()
        for name in STRANGE:
            path = pathlib.Path("strange") / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(name.encode())
        run("pack", "s.zip", "strange")

    def expect_strange(self, root):
        found = {p.relative_to(root).as_posix(): p.read_bytes() for p in pathlib.Path(root).rglob("*") if p.is_file()}
        self.assertEqual(found, {name: name.encode() for name in STRANGE})

    def test_they_come_back_by_itself(self):
        run("unpack", "s.zip", "--to", "back")
        self.expect_strange("back/strange")
        listed = run("list", "s.zip")[0]
        for name in STRANGE:
            self.assertIn("strange/" + name, listed)

    def test_other_tools_show_them(self):
        if tool("unzip", "-t", "s.zip") is not None:
            tool("unzip", "-q", "s.zip", "-d", "by_unzip")
            self.expect_strange("by_unzip/strange")
        if tool("bsdtar", "-tf", "s.zip") is not None:
            os.mkdir("by_bsdtar")
            tool("bsdtar", "-xf", "s.zip", "-C", "by_bsdtar")
            self.expect_strange("by_bsdtar/strange")

    def test_the_field_stands_beside_narrow_names(self):
        with zipfile.ZipFile("s.zip") as archive:
            for info in archive.infolist():
                self.assertEqual(info.flag_bits & 0x800, 0, "the narrow name is in the suite's code page")
        data = pathlib.Path("s.zip").read_bytes()
        self.assertIn("strange/墙#U1F600.txt".encode("gbk"), data)
        self.assertEqual(data.count("strange/墙\N{GRINNING FACE}.txt".encode()), 2, "once in either header")
        run("pack", "plain.zip", "in")
        self.assertNotIn(b"up", pathlib.Path("plain.zip").read_bytes()[:200])

    def test_marked_names_of_others_do_not_collide(self):
        with zipfile.ZipFile("f.zip", "w") as archive:
            for name in ("\N{GRINNING FACE}.txt", "\N{WINKING FACE}.txt"):
                archive.writestr(name, name)
        run("unpack", "f.zip", "--to", "back")
        self.assertEqual(sorted(os.listdir("back")), sorted(["\N{GRINNING FACE}.txt", "\N{WINKING FACE}.txt"]))

    def test_a_field_of_another_narrow_name_does_not_count(self):
        data = pathlib.Path("s.zip").read_bytes()
        narrow = "strange/墙#U1F600.txt".encode("gbk")
        pathlib.Path("s.zip").write_bytes(data.replace(narrow, narrow.replace(b"#", b"+")))
        self.assertIn("strange/墙+U1F600.txt", run("list", "s.zip")[0])


class WhatIsPackedIsTaken(Scratch):
    def expect_round_trip(self, *words, code=0):
        run("pack", "--force", "x.zip", *words, code=code)
        shutil.rmtree("back", ignore_errors=True)
        run("unpack", "x.zip", "--to", "back")
        return sorted(p.relative_to("back").as_posix() for p in pathlib.Path("back").rglob("*") if p.is_file())

    def test_paths_from_above_and_twice(self):
        files = sorted(f"in/{name}" for name in FILES)
        self.assertEqual(self.expect_round_trip("in", "in", "./in/text.txt", "in/../in"), files)
        os.mkdir("in/empty")
        os.chdir("in/sub")
        self.assertEqual(self.expect_round_trip(".."), sorted(FILES))
        os.chdir("../..")

    def test_two_files_of_one_name_are_told(self):
        os.makedirs("a/in")
        pathlib.Path("a/in/text.txt").write_bytes(b"another")
        os.chdir("a")
        err = run("pack", "x.zip", "in", "../in", code=1)[1]
        self.assertIn("is that of", err)
        self.assertIn("in/noise.bin", run("list", "x.zip")[0])

    def test_long_names(self):
        for length in (247, 248, 254, 255):
            os.mkdir("p")
            pathlib.Path("p", "n" * length).write_bytes(b"x")
            self.assertEqual(self.expect_round_trip("p"), ["p/" + "n" * length])
            shutil.rmtree("p")
        deep = pathlib.Path("p", "d" * 200, "n" * 100)
        deep.parent.mkdir(parents=True)
        deep.write_bytes(b"x")
        err = run("pack", "y.zip", "p", "in", code=1)[1]
        self.assertIn("too long", err)
        self.assertIn("in/text.txt", run("list", "y.zip")[0])

    def test_colons_where_the_system_has_them(self):
        try:
            pathlib.Path("in/a:b").write_bytes(b"x")
            pathlib.Path("c:d").write_bytes(b"x")
        except OSError:
            return  # the system has no such names
        if EMULATED:
            return  # the other system sees streams of a file in them
        self.assertEqual(self.expect_round_trip("in/a:b", "c:d"), ["c:d", "in/a:b"])

    def test_the_root_is_not_written_to(self):
        run("pack", "x.zip", "in")
        self.assertIn("--to", run("unpack", "x.zip", "--to", "", code=2)[1])


def patched(data, name, offset, value, in_local=False):
    """An archive with other bytes at an offset of an entry's central header, or of its local one."""
    signature, head = (b"PK\x03\x04", 30) if in_local else (b"PK\x01\x02", 46)
    at = data.find(signature)
    while data[at + head:at + head + len(name)] != name:
        at = data.find(signature, at + 1)
    return data[:at + offset] + value + data[at + offset + len(value):]


class Faults(Scratch):
    def setUp(self):
        super().setUp()
        run("pack", "good.zip", "in")
        self.good = pathlib.Path("good.zip").read_bytes()

    def expect_words(self, data, words):
        pathlib.Path("bad.zip").write_bytes(data)
        self.assertIn(f"in/text.txt: {words}", run("test", "bad.zip", code=1)[0])
        shutil.rmtree("back", ignore_errors=True)
        self.assertIn(f'"in/text.txt" was not unpacked: {words}', run("unpack", "bad.zip", "--to", "back", code=1)[1])
        found = {p.relative_to("back/in").as_posix() for p in pathlib.Path("back/in").rglob("*") if p.is_file()}
        self.assertEqual(found, set(FILES) - {"text.txt"}, "all others are there")
        self.assertIn("in/text.txt", run("list", "bad.zip")[0])

    def test_each_has_its_own_words(self):
        name = b"in/text.txt"
        self.expect_words(patched(self.good, name, 8, b"\x01"), "it is encrypted")
        self.expect_words(patched(self.good, name, 10, b"\x63"), "it is packed by a method")
        self.expect_words(patched(self.good, name, 24, b"\x00\x00\x00\x80"), "it has 2 GB")
        self.expect_words(patched(self.good, name, 16, b"\x00\x00\x00\x00"), "its data are damaged: their sum")
        self.expect_words(patched(self.good, name, 24, b"\x09\x00\x00\x00"), "its data are damaged: there are more")
        self.expect_words(patched(self.good, name, 0, b"PKxx", in_local=True), "its place in the archive")
        local = self.good.find(name) + len(name) + 17
        self.expect_words(self.good[:local] + b"\xff" * 8 + self.good[local + 8:], "its data are damaged: they cannot")

    def test_directory_and_parts(self):
        pathlib.Path("bad.zip").write_bytes(patched(self.good, b"in/text.txt", 0, b"xx"))
        self.assertIn("list of entries", run("test", "bad.zip", code=2)[1])
        end = self.good.rfind(b"PK\x05\x06")
        pathlib.Path("bad.zip").write_bytes(b"PK\x05\x06\x03\x00" + self.good[end + 6:])
        self.assertIn("several parts", run("test", "bad.zip", code=2)[1])

    def test_entries_within_one_another_are_refused_at_once(self):
        noise = bytes((i * i) >> 3 & 255 for i in range(900_000))
        with zipfile.ZipFile("one.zip", "w", zipfile.ZIP_STORED) as archive:
            archive.writestr("a", noise)
        data = pathlib.Path("one.zip").read_bytes()
        at, end = data.find(b"PK\x01\x02"), data.rfind(b"PK\x05\x06")
        header, count = data[at:end], 150
        tail = data[end:end + 8] + count.to_bytes(2, "little") * 2 + (count * len(header)).to_bytes(4, "little")
        pathlib.Path("many.zip").write_bytes(data[:at] + header * count + tail + data[end + 16:])
        for words in (("test", "many.zip"), ("unpack", "many.zip", "--to", "back", "--force")):
            self.assertIn("in one another", run(*words, code=2)[1])
        self.assertFalse(os.path.exists("back"))

    def test_testing_has_the_limits_of_unpacking(self):
        with zipfile.ZipFile("h.zip", "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr("zeros.bin", bytes(5_000_000))
        self.assertIn("--max-ratio", run("test", "h.zip", code=2)[1])
        self.assertIn("--max-size", run("test", "h.zip", "--max-size", "4", code=2)[1])
        self.assertIn("0 damaged", run("test", "h.zip", "--max-ratio", "2000")[0])

    def test_control_characters_do_no_harm(self):
        with zipfile.ZipFile("h.zip", "w") as archive:
            archive.writestr("a\x1b[2Jb\nc\u202ed", "x")
        shown = "a\\x1B[2Jb\\x0Ac\\u202Ed"
        self.assertIn(shown, run("list", "h.zip")[0])
        data = pathlib.Path("h.zip").read_bytes()
        pathlib.Path("h.zip").write_bytes(patched(data, b"a\x1b", 16, b"\x00\x00\x00\x00"))
        out, err = run("test", "h.zip", code=1)[0], run("unpack", "h.zip", "--to", "back", code=1)[1]
        for text in (out, err):
            self.assertIn(shown, text)
            self.assertNotIn("\x1b", text)

    def test_entries_shared_among_threads_all_come_back(self):
        with zipfile.ZipFile("h.zip", "w") as archive:
            for i in range(300):
                archive.writestr(f"d{i % 3}/f{i}", str(i))
        run("unpack", "h.zip", "--to", "back")
        for i in range(300):
            self.assertEqual(pathlib.Path(f"back/d{i % 3}/f{i}").read_text(), str(i))


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
        self.assertFalse(list(pathlib.Path(".").glob("*.part")))


if __name__ == "__main__":
    COMMAND = [os.path.abspath(word) for word in sys.argv[1:]]
    EMULATED = len(COMMAND) > 1
    os.environ["LC_ALL"] = "C.UTF-8"
    unittest.main(argv=sys.argv[:1])
