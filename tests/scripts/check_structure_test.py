#!/usr/bin/env python3
"""Every rule of scripts/check_structure must refuse a tree that breaks it, and let a good one pass."""

import pathlib
import subprocess
import tempfile
import unittest

CHECKER = pathlib.Path(__file__).resolve().parent.parent.parent / "scripts" / "check_structure"

GOOD = {
    "framework/text/low.h": "#pragma once\n\nint Low();\n",
    "framework/text/low.cpp": '#include "framework/text/low.h"\n\nint Low() { return 1; }\n',
    "comm/high.h": '#pragma once\n\n#include "framework/text/low.h"\n',
    "tests/comm/high_test.cpp": '#include "comm/high.h"\n',
    "framework/posix/twin.cpp": "#include <unistd.h>\n",
    "framework/win32/twin.cpp": "#include <windows.h>\n",
}


def run(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in {**GOOD, **files}.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        done = subprocess.run([str(CHECKER), folder], capture_output=True, text=True, check=False)
        return done.returncode, done.stdout


def joined(*pieces):
    """Words that the tree must not hold, put together only while the test runs."""
    return "".join(pieces)


class CheckStructure(unittest.TestCase):
    def refused(self, files, message):
        code, output = run(files)
        self.assertEqual(code, 1, f"{files} was let pass:\n{output}")
        self.assertIn(message, output)

    def passed(self, files):
        code, output = run(files)
        self.assertEqual(code, 0, output)

    def test_good_tree_passes(self):
        self.passed({})

    def test_include_of_a_lower_folder(self):
        self.refused({"framework/text/a.h": '#include "comm/high.h"\n'},
                     "framework/text/a.h:1: framework/text/ must not include comm/, which stands below it")

    def test_include_of_a_lower_room(self):
        self.refused({"framework/text/a.h": '#include "framework/windows/b.h"\n', "framework/windows/b.h": ""},
                     "framework/text/ must not include framework/windows/, which stands below it")
        self.passed({"framework/windows/b.h": '#include "framework/text/low.h"\n'})

    def test_folder_without_a_place_in_the_order(self):
        self.refused({"framework/attic/a.h": '#include "framework/text/low.h"\n'},
                     "framework/attic/a.h stands in no room of")
        self.passed({"comm/inner/a.h": '#include "comm/high.h"\n'})

    def test_public_header_belongs_to_the_room_of_its_source(self):
        files = {"TEXPRESSCAL/a.h": "", "TEXPRESSCAL/rows/a.cpp": '#include "TEXPRESSCAL/a.h"\n'}
        self.passed({**files, "TEXPRESSCAL/diagnose/b.h": '#include "TEXPRESSCAL/a.h"\n'})
        self.refused({**files, "TEXPRESSCAL/text/b.h": '#include "TEXPRESSCAL/a.h"\n'},
                     "TEXPRESSCAL/text/ must not include TEXPRESSCAL/rows/")

    def test_sources_of_a_peer_know_each_other_but_headers_keep_the_order(self):
        button = {"platform/qt/controls/button.h": ""}
        text = '#include "platform/qt/controls/button.h"\n'
        self.passed({**button, "platform/qt/desktop/a.cpp": text})
        self.refused({**button, "platform/qt/desktop/a.h": text}, "platform/qt/desktop/ must not include")
        self.refused({**button, "platform/ports/a.cpp": text}, "platform/ports/ must not include")
        desktop = {"platform/models/desktop/b.h": ""}
        text = '#include "platform/models/desktop/b.h"\n'
        self.passed({**desktop, "platform/models/window/a.cpp": text})
        self.refused({**desktop, "platform/models/window/a.h": text}, "platform/models/window/ must not include")

    def test_cells_know_their_grid_but_the_sources_of_the_grid_keep_the_order(self):
        grid = {"gridcore/control/grid.h": "", "gridcore/control/input/keys.h": ""}
        text = '#include "gridcore/control/grid.h"\n'
        self.passed({**grid, "gridcore/items/a.cpp": text})
        self.refused({**grid, "gridcore/items/a.h": text}, "gridcore/items/ must not include gridcore/control/")
        text = '#include "gridcore/control/input/keys.h"\n'
        self.refused({**grid, "gridcore/control/a.cpp": text}, "gridcore/control/ must not include gridcore/control/input/")
        self.refused({**grid, "gridcore/control/table/a.cpp": text}, "gridcore/control/table/ must not include")
        self.passed({**grid, "gridcore/control/input/a.cpp": text})

    def test_include_of_a_test_or_tool(self):
        self.refused({"comm/a.h": '#include "tests/b.h"\n', "tests/b.h": ""}, "the library must not include tests/")
        self.refused({"comm/a.h": '#include "tools/b.h"\n', "tools/b.h": ""}, "the library must not include tools/")
        self.refused({"tools/a.h": '#include "tests/b.h"\n', "tests/b.h": ""}, "tools/ must not include tests/")

    def test_rooms_of_the_tools_keep_their_order(self):
        verb = {"tools/lorv/verbs/b.h": ""}
        self.refused({**verb, "tools/lorv/text/a.h": '#include "tools/lorv/verbs/b.h"\n'},
                     "tools/lorv/text/ must not include tools/lorv/verbs/")
        self.passed({**verb, "tools/lorv/a.h": '#include "tools/lorv/verbs/b.h"\n'})

    def test_include_not_from_the_root(self):
        self.refused({"comm/a.h": '#include "high.h"\n'}, "includes go from the root")

    def test_tests_may_include_from_their_own_folder(self):
        self.passed({"tests/low/a.h": "", "tests/low/b.cpp": '#include "low/a.h"\n'})
        self.refused({"tests/low/a.h": "", "comm/b.cpp": '#include "low/a.h"\n'}, "includes go from the root")

    def test_include_named_in_a_comment_only_is_none(self):
        self.passed({"framework/text/a.h": '// see #include "comm/high.h"\n'})

    def test_system_header_outside_its_place(self):
        for name in ("windows.h", "Windows.h", "unistd.h", "sys/stat.h"):
            self.refused({"comm/a.cpp": f"#include <{name}>\n"}, f"<{name}> belongs under")

    def test_system_conditional(self):
        for line in ("#ifdef _WIN32", "#if defined(__linux__)", "#  ifndef _MSC_VER", "#elif defined(__MINGW32__)"):
            self.refused({"comm/a.cpp": f"\n{line}\n#endif\n"}, "comm/a.cpp:2: a system conditional")
        self.passed({"platform/a.cpp": "#ifdef _WIN32\n#endif\n", "framework/native/export.h": "#ifdef _WIN32\n#endif\n"})

    def test_own_header_not_first(self):
        text = '#include "framework/text/low.h"\n#include "comm/a.h"\n'
        self.refused({"comm/a.h": "", "comm/a.cpp": text}, "comm/a.cpp:1: the first include must be comm/a.h")
        self.refused({"comm/a.h": "", "comm/posix/a.cpp": "#include <string>\n"}, "must be comm/a.h")

    def test_source_and_test_sizes(self):
        self.passed({"comm/a.cpp": "\n" * 600, "tests/comm/b.cpp": "\n" * 800})
        self.refused({"comm/a.cpp": "\n" * 601}, "601 lines, at most 600")
        self.refused({"tests/comm/b.cpp": "\n" * 801}, "801 lines, at most 800")
        self.refused({"scripts/c.py": "\n" * 601}, "601 lines, at most 600")

    def test_table_of_any_size_holds_data_only(self):
        rows = "int x[] = {1};\n" * 900
        self.passed({"prompts/name_table.cpp": rows, "prompts/other_data.cpp": rows})
        self.refused({"prompts/name_table.cpp": rows + "int F() { if (1) return 2; }\n"}, "901 lines, at most 600")
        self.refused({"prompts/table_of_names.cpp": rows}, "900 lines, at most 600")
        self.passed({"prompts/name_table.cpp": "int F() { if (1) return 2; }\n"})

    def test_function_sizes(self):
        body = "int F() {\n" + "  G();\n" * 58 + "}\n"
        self.passed({"comm/a.cpp": body + "int F() { return 1; }\n" * 20})
        self.refused({"comm/a.cpp": body.replace("}", "  G();\n}")}, "comm/a.cpp:1: a function of 61 lines")
        method = "class A {\n  int F() const {\n" + "  G();\n" * 60 + "  }\n};\n"
        self.refused({"comm/a.cpp": method}, "comm/a.cpp:2: a function of 62 lines")
        ten = "int F() {\n" + "  G();\n" * 10 + "}\n"
        self.refused({"comm/a.cpp": ten * 20}, "too long on the whole")

    def test_braces_in_texts_and_comments_do_not_count(self):
        self.passed({"comm/a.cpp": 'int F() { return G("{", \'{\'); } // {\n' + "int x;\n" * 80})

    def test_one_name_twice(self):
        self.refused({"comm/low.h": ""}, "low.h: one name for several files")

    def test_source_without_a_test(self):
        low = "framework/text/low.cpp tests/comm/high_test.cpp\n"
        twins = "framework/*/twin.cpp tests/comm/high_test.cpp\n"
        self.passed({"tests/mirror.txt": f"# why\n\n{low}{twins}"})
        self.refused({"tests/mirror.txt": twins}, "framework/text/low.cpp:1: has no test of its name")
        self.passed({"tests/mirror.txt": twins, "tests/framework/text/low_test.cpp": ""})
        self.refused({"tests/mirror.txt": low + twins, "tests/framework/text/low_test.cpp": ""},
                     "tests/mirror.txt:1: framework/text/low.cpp needs no line")
        self.refused({"tests/mirror.txt": low + twins.replace("high", "none")}, "there is no tests/comm/none_test.cpp")

    def test_figures_count_tests_of_every_kind_and_no_benchmark(self):
        self.assertIn("11 lines of source, 1 of tests (0.09 a line)", run({})[1])
        more = {"tests/tools/run_test.py": "a\nb\n", "fuzz/a.cpp": "c\n", "bench/b.cpp": "d\n" * 9, "tests/a.txt": "e\n"}
        self.assertIn("11 lines of source, 4 of tests (0.36 a line)", run(more)[1])

    def test_unfinished(self):
        for text in (joined("TO", "DO: later"), joined("FIX", "ME"), joined("XX", "X"), joined("HA", "CK"),
                     joined("not impl", "emented"), joined("a st", "ub"), joined("GTEST_S", "KIP()"),
                     joined("TEST(A, DIS", "ABLED_B)"), joined("EXPECT_TRUE(tr", "ue)"), joined("SUCC", "EED()")):
            self.refused({"docs/a.md": f"first line\n{text}\n"}, "docs/a.md:2: ")
            self.refused({"comm/a.h": f"// {text}\n"}, "comm/a.h:1: ")
        self.passed({"docs/a.md": "a stubborn hacker\n"})

    def test_pipes_that_are_cut(self):
        begin = "#!/bin/bash\n# Says what.\nset -euo pipefail\n\n"
        for cut in ("ldd a | grep -q b", "ldd a |\n  grep -qE b", "ls | head -1", "ls | grep -m1 b"):
            self.refused({"scripts/a": f"{begin}{cut}\n"}, "scripts/a:")
            self.passed({"scripts/a": f"#!/bin/sh\n{cut}\n"})
        self.passed({"scripts/a": f"{begin}grep -q b <<<\"$(ldd a)\" || grep -q c d\nls | grep -c b\n"})


if __name__ == "__main__":
    unittest.main(verbosity=1)
