"""What the program does to files that are no plain ones, when it is interrupted, and before a file takes its name.

usage: files_run_test.py PROGRAM

Runs where links, pipes, signals and a recorder of system calls are to be had: strace.
"""

import contextlib
import os
import pathlib
import re
import resource
import signal
import stat
import struct
import subprocess
import sys
import tempfile
import threading
import time
import unittest

PROGRAM = ""
COMPONENTS = "class,storey,L\nwall,1,2.5\nwall,2,3\n"
RULES = "class,name,unit,formula\nwall,area,m2,L*2\n"
WORK = ("work", "c.csv", "--rules", "r.csv")
TABLE = b"class,storey,area (m2),not worked\r\nwall,1,5,\r\nwall,2,6,\r\n"
ROW, ROW_OF_TABLE, ROWS = "wall,2,3\n", b"wall,2,6,\r\n", 300_000
# One blue pixel.
IMAGE = b"BM" + struct.pack("<IIIIiiHHIIiiII", 58, 0, 54, 40, 1, 1, 1, 24, 0, 4, 0, 0, 0, 0) + b"\xff\0\0\0"
UNFINISHED = re.compile(r"^\.lorv-[0-9a-f]{16}\.part$")


def run(*words, code=0, **more):
    done = subprocess.run([PROGRAM, *words], capture_output=True, timeout=120, **more)
    assert done.returncode == code, (words, done.returncode, done.stdout[-500:], done.stderr[-2000:])
    return done.stdout, done.stderr.decode("utf-8")


class Scratch(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        pathlib.Path("c.csv").write_text(COMPONENTS)
        pathlib.Path("r.csv").write_text(RULES)
        pathlib.Path("i.bmp").write_bytes(IMAGE)

    def expect_nothing_unfinished(self):
        left = [name for _, _, names in os.walk(".") for name in names if UNFINISHED.match(name)]
        self.assertEqual(left, [])


# Every way by which a verb writes where the user names a file: the words with the goal in its place, and what
# the goal then begins with.
def writers(goal, force=("--force",)):
    return (
        ((*WORK, "--quiet", "--out", goal), b"class,storey,area"),
        ((*WORK, "--quiet", "--bill", goal), b"class,"),
        (("pack", *force, goal, "c.csv"), b"PK\x03\x04"),
        (("squeeze", *force, "c.csv", "--out", goal), len(COMPONENTS).to_bytes(4, "little")),
        (("expand", *force, "c.lzari", "--out", goal), COMPONENTS.encode()),
        (("sheet", "c.csv", "--out", goal), b"class,storey,L\r\n"),
        (("image", *force, "i.bmp", "--out", goal), b"\x89PNG"),
    )


class Outputs(Scratch):
    def setUp(self):
        super().setUp()
        run("squeeze", "c.csv", "--out", "c.lzari")
        os.mkdir("d")

    def each(self, goal, force=("--force",)):
        for words, begin in writers(goal, force):
            with self.subTest(words=words):
                yield words, begin
                self.expect_nothing_unfinished()

    def test_minus_is_standard_output(self):
        for words, begin in self.each("-", force=()):
            out, _ = run(*words)
            self.assertTrue(out.startswith(begin), out)
            self.assertFalse(os.path.exists("-"))
        self.assertEqual(run(*WORK, "--out", "-")[0], TABLE, "and nothing but the table stands there")
        self.assertIn("--json", run(*WORK, "--out", "-", "--json", code=2)[1])

    def test_pipes_and_devices_are_written_to_as_they_stand(self):
        os.mkfifo("pipe")
        for words, begin in self.each("pipe", force=()):
            got = []
            reader = threading.Thread(target=lambda: got.append(pathlib.Path("pipe").read_bytes()))
            reader.start()
            run(*words)
            reader.join(60)
            self.assertTrue(got[0].startswith(begin), got)
            self.assertTrue(stat.S_ISFIFO(os.stat("pipe").st_mode))
        for words, _ in self.each("/dev/null", force=()):
            run(*words)
            self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))
        for words, begin in self.each("/dev/stdout", force=()):
            self.assertTrue(run(*words)[0].startswith(begin))

    def test_full_device_is_told(self):
        for words, _ in self.each("/dev/full", force=()):
            # The codec reports any failure of its target in its own words.
            self.assertRegex(run(*words, code=2)[1], "full|no more room")

    def test_force_leaves_devices_alone(self):
        run("pack", "--force", "/dev/null", "c.csv")
        self.assertTrue(stat.S_ISCHR(os.stat("/dev/null").st_mode))

    def test_links_stay_and_lead_to_the_new_file(self):
        os.symlink("d/goal", "one")
        os.symlink("one", "two")
        for words, begin in self.each("two"):
            pathlib.Path("d/goal").write_bytes(b"old")
            run(*words)
            self.assertTrue(os.path.islink("one") and os.path.islink("two"))
            self.assertFalse(os.path.islink("d/goal"))
            self.assertTrue(pathlib.Path("d/goal").read_bytes().startswith(begin))

    def test_links_that_lead_nowhere_yet_get_their_file(self):
        os.symlink("d/new", "link")
        for words, begin in self.each("link"):
            if os.path.exists("d/new"):
                os.remove("d/new")
            run(*words)
            self.assertTrue(os.path.islink("link"))
            self.assertTrue(pathlib.Path("d/new").read_bytes().startswith(begin))
        os.remove("d/new")
        self.assertIn("--force", run("pack", "link", "c.csv", code=2)[1])
        os.symlink("circle", "circle")
        for words, _ in self.each("circle"):
            self.assertIn("circle", run(*words, code=2)[1])
            self.assertTrue(os.path.islink("circle"))

    def test_modes_are_kept(self):
        for mode in (0o600, 0o640, 0o755, 0o666):
            for words, begin in self.each("goal"):
                pathlib.Path("goal").write_bytes(b"old")
                os.chmod("goal", mode)
                run(*words)
                self.assertEqual(stat.S_IMODE(os.stat("goal").st_mode), mode)
                self.assertTrue(pathlib.Path("goal").read_bytes().startswith(begin))

    def test_read_only_files_and_folders_stay(self):
        pathlib.Path("goal").write_bytes(b"mine")
        os.chmod("goal", 0o444)
        for words, _ in self.each("goal"):
            self.assertIn("read-only", run(*words, code=2)[1])
            self.assertEqual(pathlib.Path("goal").read_bytes(), b"mine")
        for words, _ in self.each("d"):
            self.assertIn("folder", run(*words, code=2)[1])
        for words, _ in self.each("none/goal"):
            self.assertIn("folder", run(*words, code=2)[1])

    def test_nothing_is_replaced_by_failure(self):
        pathlib.Path("goal").write_bytes(b"mine")
        pathlib.Path("bad.lzari").write_bytes(b"\xff\xff\xff\x00bad")
        run("expand", "--force", "bad.lzari", "--out", "goal", code=2)
        run("work", "c.csv", "--rules", "none.csv", "--out", "goal", code=2)
        self.assertEqual(pathlib.Path("goal").read_bytes(), b"mine")
        self.expect_nothing_unfinished()


class Names(Scratch):
    def test_a_file_called_writing_is_the_users_own(self):
        for name in ("x.zip.writing", "goal.writing", "goal.part"):
            pathlib.Path(name).write_bytes(b"mine")
        run("pack", "x.zip", "c.csv", "x.zip.writing")
        run(*WORK, "--out", "goal")
        self.assertEqual(pathlib.Path("x.zip.writing").read_bytes(), b"mine")
        run("unpack", "x.zip", "--to", "back")
        self.assertEqual(sorted(os.listdir("back")), ["c.csv", "x.zip.writing"])

    def test_two_packs_at_once_leave_one_whole_archive(self):
        pathlib.Path("big.dat").write_bytes(os.urandom(1 << 20) * 8)
        for _ in range(4):
            both = [subprocess.Popen([PROGRAM, "pack", "--force", "x.zip", "big.dat", "c.csv"]) for _ in range(2)]
            self.assertEqual([one.wait(120) for one in both], [0, 0])
            self.assertIn("0 damaged", run("test", "x.zip")[0].decode())
        self.expect_nothing_unfinished()

    def test_what_another_run_left_unfinished_is_not_packed(self):
        os.mkdir("p")
        pathlib.Path("p/.lorv-0123456789abcdef.part").write_bytes(b"half")
        pathlib.Path("p/.lorv-mine.part").write_bytes(b"mine")
        self.assertIn("unfinished", run("pack", "x.zip", "p", code=1)[1])
        listed = run("list", "x.zip")[0].decode()
        self.assertNotIn("0123456789abcdef", listed)
        self.assertIn(".lorv-mine.part", listed)

    def test_an_archive_is_not_packed_into_itself(self):
        os.mkdir("p")
        pathlib.Path("p/a").write_bytes(b"a")
        for _ in range(2):
            run("pack", "--force", "p/x.zip", "p")
            self.assertEqual(run("list", "p/x.zip")[0].decode().count("\n"), 2)

    def test_links_in_circles_and_pipes_end(self):
        os.makedirs("p/d")
        os.symlink("..", "p/d/up")
        os.mkfifo("p/pipe")
        os.symlink("nowhere", "p/dangling")
        err = run("pack", "x.zip", "p", "p/pipe", "c.csv", code=1)[1]
        for words in ("p/d/up", "p/pipe", "p/dangling"):
            self.assertIn(words, err)
        self.assertIn("c.csv", run("list", "x.zip")[0].decode())
        self.assertIn("nothing could be packed", run("pack", "y.zip", "p/pipe", code=2)[1])
        self.assertFalse(os.path.exists("y.zip"))

    def test_links_in_the_way_of_unpacking_stay(self):
        run("pack", "x.zip", "c.csv", "r.csv")
        os.mkdir("back")
        os.symlink("../mine", "back/c.csv")
        self.assertIn("--force", run("unpack", "x.zip", "--to", "back", code=2)[1])
        for make in (lambda: None, lambda: pathlib.Path("mine").write_bytes(b"mine")):
            make()
            self.assertIn("link", run("unpack", "x.zip", "--to", "back", "--force", code=1)[1])
            self.assertTrue(os.path.islink("back/c.csv"))
            self.assertEqual(pathlib.Path("back/r.csv").read_text(), RULES)
        self.assertEqual(pathlib.Path("mine").read_bytes(), b"mine")
        os.remove("back/c.csv")
        os.mkfifo("back/c.csv")
        self.assertIn("pipe", run("unpack", "x.zip", "--to", "back", "--force", code=1)[1])
        self.assertTrue(stat.S_ISFIFO(os.stat("back/c.csv").st_mode))


class Interrupted(Scratch):
    feeder = None

    def unfinished(self):
        return [name for _, _, names in os.walk(".") for name in names if UNFINISHED.match(name)]

    # More than is read ahead, so that the table is begun; its end is not sent.
    @staticmethod
    def feed(pipe):
        with contextlib.suppress(BrokenPipeError):
            pipe.write(COMPONENTS.encode() + ROW.encode() * ROWS)
            pipe.flush()

    def interrupt(self, words, signal_number, **more):
        process = subprocess.Popen([PROGRAM, *words], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **more)
        if words[0] == "work":
            self.feeder = threading.Thread(target=self.feed, args=(process.stdin,))
            self.feeder.start()
        until = time.monotonic() + 60
        while not self.unfinished() and process.poll() is None and time.monotonic() < until:
            time.sleep(0.002)
        self.assertIsNone(process.poll(), "it was not to be done yet")
        process.send_signal(signal_number)
        return process

    def end_input(self, process):
        if self.feeder is not None:
            self.feeder.join()
        with contextlib.suppress(BrokenPipeError):
            process.stdin.close()

    def test_half_files_are_taken_away(self):
        with open("huge", "wb") as huge:
            huge.truncate(900_000_000)
        with open("large", "wb") as large:
            large.truncate(150_000_000)
        run("pack", "large.zip", "large")
        pathlib.Path("goal").write_bytes(b"mine")
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGQUIT):
            for words in (
                ("work", "-", "--rules", "r.csv", "--out", "goal"),
                ("pack", "--force", "goal", "huge"),
                ("squeeze", "--force", "huge", "--out", "goal"),
                ("unpack", "large.zip", "--to", "back", "--max-ratio", "9999"),
            ):
                with self.subTest(words=words, signal=number):
                    process = self.interrupt(words, number)
                    self.assertEqual(process.wait(60), -number)
                    self.end_input(process)
                    self.assertEqual(self.unfinished(), [])
                    self.assertEqual(pathlib.Path("goal").read_bytes(), b"mine")
        self.assertFalse(os.path.exists("back/large"))

    def test_signals_that_are_ignored_stay_so(self):
        process = self.interrupt(("work", "-", "--rules", "r.csv", "--out", "goal"), signal.SIGHUP,
                                 preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        self.end_input(process)
        self.assertEqual(process.wait(60), 0)
        self.assertEqual(pathlib.Path("goal").read_bytes(), TABLE + ROW_OF_TABLE * ROWS)

    def test_a_limit_on_the_size_of_files_leaves_nothing(self):
        pathlib.Path("noise").write_bytes(os.urandom(300_000))
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, 100_000))  # noqa: E731
        done = subprocess.run([PROGRAM, "pack", "x.zip", "noise"], capture_output=True, preexec_fn=limit)
        self.assertNotEqual(done.returncode, 0)
        self.assertEqual(self.unfinished(), [])
        self.assertFalse(os.path.exists("x.zip"))


class Order(Scratch):
    """Before a file takes its name the disk has its bytes; then the disk gets the name."""

    CALL = re.compile(r"^(?:\d+ +)?(\w+)\((.*)\) += (-?\d+)")

    def calls(self, *words):
        names = "openat,close,fsync,fdatasync,syncfs,rename,renameat,renameat2,write"
        subprocess.run(["strace", "-f", "-qq", "-s", "0", "-o", "calls", "-e", "trace=" + names, PROGRAM, *words],
                       check=True, capture_output=True, timeout=300,
                       env={**os.environ, "ASAN_OPTIONS": "detect_leaks=0"})
        text = pathlib.Path("calls").read_text()
        # A call that another thread interrupted stands in two pieces.
        begun = {}
        for line in text.splitlines():
            thread = line.split()[0]
            if line.endswith("<unfinished ...>"):
                begun[thread] = line[: -len("<unfinished ...>")]
                continue
            resumed = re.match(r"^\d+ +<\.\.\. \w+ resumed>(.*)$", line)
            if resumed:
                line = begun.pop(thread) + resumed.group(1)
            call = self.CALL.match(line)
            if call:
                yield call.group(1), call.group(2), int(call.group(3))

    def check(self, *words):
        """How many files took their name, and by how many calls they were synced."""
        descriptors, dirty, unsynced_folders, named, syncs = {}, set(), set(), 0, 0
        for name, arguments, result in self.calls(*words):
            paths = re.findall(r'"([^"]*)"', arguments)
            if result < 0:
                continue
            if name == "openat":
                descriptors[result] = paths[0]
            elif name == "write":
                dirty.add(descriptors.get(int(arguments.split(",")[0])))
            elif name in ("fsync", "fdatasync"):
                dirty.discard(descriptors[int(arguments)])
                unsynced_folders.discard(os.path.realpath(descriptors[int(arguments)]))
                syncs += 1
            elif name == "syncfs":
                dirty.clear()
                unsynced_folders.clear()
                syncs += 1
            elif name.startswith("rename"):
                self.assertRegex(os.path.basename(paths[0]), UNFINISHED)
                self.assertNotIn(paths[0], dirty, "it takes its name before the disk has it")
                unsynced_folders.add(os.path.realpath(os.path.dirname(paths[1]) or "."))
                named += 1
        self.assertEqual(unsynced_folders, set(), "the disk does not have the names in these")
        return named, syncs

    def test_single_files(self):
        run("squeeze", "c.csv", "--out", "c.lzari")
        os.mkdir("d")
        for words, _ in writers("d/goal"):
            with self.subTest(words=words):
                self.assertEqual(self.check(*words)[0], 1)
        for words, _ in writers("goal"):
            self.assertEqual(self.check(*words)[0], 1)

    def test_unpacked_files_few_and_many(self):
        for count in (3, 300):
            for i in range(count):
                path = pathlib.Path(f"in{count}/{i % 7}/f{i}")
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_bytes(b"x" * i * 100)
            run("pack", f"{count}.zip", f"in{count}")
            named, syncs = self.check("unpack", f"{count}.zip", "--to", f"back{count}")
            self.assertEqual(named, count)
            if count > 100:
                self.assertLess(syncs, 10, "many files are waited for together")


if __name__ == "__main__":
    PROGRAM = os.path.abspath(sys.argv[1])
    os.environ["LC_ALL"] = "C.UTF-8"
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
