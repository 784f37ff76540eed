"""Starts the built program as a user does and looks at its bytes and its exit code.

usage: program_run_test.py [EMULATOR ...] PROGRAM
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

COMMAND = []

# A table as an office keeps it in one plain file.
FLAT_SHEET = (
    '<?xml version="1.0" encoding="UTF-8"?><office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
    'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" '
    'office:version="1.2" office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>'
    '<table:table table:name="一"><table:table-row><table:table-cell office:value-type="string"><text:p>007</text:p></table:table-cell>'
    '<table:table-cell office:value-type="string"><text:p>墙</text:p></table:table-cell></table:table-row></table:table>'
    "</office:spreadsheet></office:body></office:document>"
)


def run(*words, stdin=b"", folder=None):
    # In one language whatever the machine's is: --lang holds for all of the program.
    done = subprocess.run(COMMAND + ["--lang=en"] + list(words), input=stdin, capture_output=True, timeout=120, cwd=folder)
    return done.returncode, done.stdout.decode("utf-8"), done.stderr.decode("utf-8")


def loaded_libraries(program):
    """The shared libraries that a start loads, without those of a sanitizer; none where the program is not of this system."""
    done = subprocess.run(["readelf", "-dW", program], capture_output=True, text=True)
    names = re.findall(r"\(NEEDED\).*\[(.*)\]", done.stdout)
    return set() if any("san.so" in name for name in names) else set(names)


class Program(unittest.TestCase):
    def test_starts_without_searching_the_names_of_large_libraries(self):
        names = loaded_libraries(COMMAND[-1])
        self.assertEqual([name for name in names if name.startswith(("libComm_LORV", "libstdc++"))], [])

    def test_version(self):
        code, out, err = run("--version")
        self.assertEqual((code, err), (0, ""))
        self.assertRegex(out, r"^lorv \d+\.\d+\.\d+\n$")

    def test_help_has_no_carriage_returns(self):
        code, out, _ = run("--help")
        self.assertEqual(code, 0)
        self.assertIn("Usage: lorv VERB", out)
        self.assertNotIn("\r", out)

    def test_unknown_verb_comes_back_as_it_was_typed(self):
        code, out, err = run("量度")
        self.assertEqual((code, out), (2, ""))
        self.assertEqual(err, 'lorv: there is no verb "量度"; `lorv --help` lists them\n')

    def test_messages_come_in_chinese_whole(self):
        done = subprocess.run(COMMAND + ["--lang=zh", "量度"], capture_output=True, timeout=120)
        self.assertEqual(done.stderr.decode("utf-8"), "lorv: 没有命令“量度”;`lorv --help`列出全部\n")

    def test_formulas_go_through_the_command_line_whole(self):
        for words, wanted in (
            (("calc", "墙长*墙高-洞口", "墙长=6", "墙高=3", "洞口=2.1"), "15.9\n"),
            (("calc", "2*3"), "6\n"),
            (("calc", "-2^2"), "4\n"),
            (("calc", "FIND(CLMC,'砖 墙')>0", "CLMC='24砖 墙'"), "1\n"),
            (("vars", "*.cpp*B"), None),
        ):
            code, out, err = run(*words)
            self.assertEqual((code, out), (0, wanted) if wanted else (1, ""), (words, err))

    def test_error_has_its_mark_and_its_code(self):
        code, out, err = run("calc", "长度+宽", "长度=2")
        self.assertEqual((code, out), (1, ""))
        self.assertEqual(err, "lorv: the name '宽' is not known\n    长度+宽\n         ^^\n")
        self.assertEqual(run("calc", "A", "A=x")[0], 2)

    def test_work_reads_and_writes_files_with_chinese_names(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in (("构件.csv", "类别,楼层,长\n墙,首层,2.5\n"), ("规则.csv", "类别,名称,单位,公式\n墙,面积,m2,长*2\n")):
                with open(os.path.join(folder, name), "w", encoding="utf-8", newline="") as out:
                    out.write(text)
            code, out, err = run("work", "构件.csv", "--rules", "规则.csv", "--out", "结果.csv", folder=folder)
            self.assertEqual((code, err), (0, ""))
            self.assertIn("墙     面积      m2    首层             1  5.000\n", out)
            with open(os.path.join(folder, "结果.csv"), encoding="utf-8", newline="") as table:
                self.assertEqual(table.read(), "类别,楼层,面积 (m2),not worked\r\n墙,首层,5,\r\n")
            self.assertEqual(sorted(os.listdir(folder)), sorted(["构件.csv", "规则.csv", "结果.csv"]))
            # A second run replaces what the first one wrote.
            self.assertEqual(run("work", "构件.csv", "--rules", "规则.csv", "--out", "结果.csv", folder=folder)[0], 0)
            code, out, err = run("work", "没有.csv", "--rules", "规则.csv", folder=folder)
            self.assertEqual((code, out), (2, ""))
            self.assertEqual(err, "lorv: 没有.csv cannot be opened: there is no such file\n")

    def test_an_office_reads_what_the_engine_does_not(self):
        if not os.path.exists(os.path.join(os.path.dirname(COMMAND[-1]), "libComm_LORV_office.so")):
            return  # built without the bridge
        office = dict(os.environ, COMM_LORV_SPREADSHEET="office")
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "表.fods")
            with open(path, "w", encoding="utf-8") as out:
                out.write(FLAT_SHEET)
            for name, wanted in ((path, (0, "007,墙\r\n", "")), (__file__, (2, "", "不是工作簿"))):
                done = subprocess.run(COMMAND + ["--lang=zh", "sheet", name, "--sheet", "1"], capture_output=True, timeout=120, env=office)
                self.assertEqual((done.returncode, done.stdout.decode()), wanted[:2])
                self.assertIn(wanted[2], done.stderr.decode())

    def test_standard_input_is_utf8(self):
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "r.csv"), "w", encoding="utf-8") as out:
                out.write("class,name,formula\n墙,q,L\n")
            code, out, _ = run("work", "-", "--rules", "r.csv", "--json", stdin="class,L\n墙,2\n".encode(), folder=folder)
            self.assertEqual(code, 0)
            self.assertIn('"class": "墙"', out)


if __name__ == "__main__":
    COMMAND = sys.argv[1:]
    os.environ["LC_ALL"] = "zh_CN.UTF-8"
    unittest.main(argv=sys.argv[:1])
