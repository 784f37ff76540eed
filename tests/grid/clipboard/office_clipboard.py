"""The clipboard of a real office: takes its forms of a range, and pastes ours into it.

usage: office_clipboard.py take FOLDER          writes range.txt and range.html, as the office copies kCells
       office_clipboard.py test PROGRAM [ARG]   takes them, has PROGRAM's tests paste them, pastes its copies into the office

Needs an office with its UNO bridge for this python (Debian: libreoffice-calc-nogui, python3-uno). FOLDER is tests/grid/clipboard/office
where the forms that stand there are to be made anew. An office of its own runs hidden, with a profile of its own.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

import uno
from com.sun.star.beans import PropertyValue
from com.sun.star.connection import NoConnectException

HERE = pathlib.Path(__file__).parent
TEXT = "text/plain;charset=utf-16"
HTML = "text/html"
# A row each; what begins with "=" is a formula. The last block is merged, one cell has colours.
CELLS = (
    ("构件", "Grade", "Length", "Remark"),
    ("KL1", "C30", 7.25, "two\nlines"),
    ("梁 2", "007", -0.5, 'a "quoted" word'),
    ("a & b < c", "", "=1/4", "  blanks  "),
    ("tab\there", "1e3", 1234567.875, "=1>0"),
    ("merged", "", "100%", "𠀀 end"),
)
# Our forms, and the office's readers of them: fields end at tabs and stand in quotes, in UTF-8.
OURS = {"ours.html": ("calc_HTML_WebQuery",), "ours.txt": ("Text - txt - csv (StarCalc)", "9,34,76,1,,0,false,false")}
MERGED = (0, 5, 1, 5)  # left, top, right, bottom


class Office:
    """A running office; closed with the block."""

    def __enter__(self):
        self.folder = tempfile.mkdtemp()
        pipe = f"lorv{os.getpid()}"
        program = os.path.join(os.path.dirname(os.path.realpath(shutil.which("soffice"))), "soffice.bin")
        command = [program, "--headless", "--invisible", "--norestore", "--nologo", "--nodefault", "--nolockcheck",
                   f"--accept=pipe,name={pipe};urp;StarOffice.ComponentContext",
                   f"-env:UserInstallation={pathlib.Path(self.folder).as_uri()}"]
        self.command, self.child = command, None
        resolver = uno.getComponentContext().ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
        self.start()
        for _ in range(1200):
            try:
                context = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
                break
            except NoConnectException:
                # A profile that is new wants a second start.
                if self.child.poll() is not None:
                    self.start()
                time.sleep(0.05)
        else:
            raise RuntimeError("the office did not start")
        self.desktop = context.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", context)
        return self

    def start(self):
        self.child = subprocess.Popen(self.command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                      stderr=subprocess.DEVNULL, env={**os.environ, "LC_ALL": "C.UTF-8"})

    def workbook(self):
        return self.desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0,
                                                 (PropertyValue("Hidden", 0, True, 0),))

    def __exit__(self, *_):
        try:
            self.desktop.terminate()
            self.child.wait(30)
        finally:
            self.child.kill()
            self.child.wait()
            shutil.rmtree(self.folder, ignore_errors=True)


def fill(sheet):
    for row, cells in enumerate(CELLS):
        for column, value in enumerate(cells):
            cell = sheet.getCellByPosition(column, row)
            if isinstance(value, float):
                cell.setValue(value)
            elif value.startswith("="):
                cell.setFormula(value)
            elif value:
                cell.setString(value)
    sheet.getCellRangeByPosition(*MERGED).merge(True)
    coloured = sheet.getCellByPosition(1, 1)
    coloured.CellBackColor, coloured.CharColor = 0xFFCC00, 0x000080


def take(office, folder):
    book = office.workbook()
    sheet = book.getSheets().getByIndex(0)
    fill(sheet)
    controller = book.getCurrentController()
    controller.select(sheet.getCellRangeByPosition(0, 0, len(CELLS[0]) - 1, len(CELLS) - 1))
    copied = controller.getTransferable()
    for flavor in copied.getTransferDataFlavors():
        if flavor.MimeType == TEXT:
            (folder / "range.txt").write_bytes(copied.getTransferData(flavor).encode())
        if flavor.MimeType == HTML:
            (folder / "range.html").write_bytes(copied.getTransferData(flavor).value)
    book.close(True)


def imported(office, path, filter_name, options=""):
    """The texts that stand in the office's cells, a row each, once it has read that file."""
    said = [PropertyValue(name, 0, value, 0)
            for name, value in (("Hidden", True), ("FilterName", filter_name), ("FilterOptions", options))]
    book = office.desktop.loadComponentFromURL(path.resolve().as_uri(), "_blank", 0, tuple(said))
    sheet = book.getSheets().getByIndex(0)
    texts = tuple(tuple(sheet.getCellByPosition(column, row).getString() for column in range(len(CELLS[0])))
                  for row in range(len(CELLS)))
    merged = sheet.getCellByPosition(0, MERGED[1]).getIsMerged()
    colour = sheet.getCellByPosition(1, 1).CellBackColor
    book.close(True)
    return texts, merged, colour


# What its readers make of ours, where that is not what we gave: HTML has no blanks around a text, and the office's loses
# characters beyond the basic plane; its text has no place for how a cell is meant.
LOST = {"ours.html": {"  blanks  ": "blanks", "𠀀 end": "end"}, "ours.txt": {"007": "7", "1e3": "1000"}}
SHOWN = (
    ("构件", "Grade", "Length", "Remark"),
    ("KL1", "C30", "7.25", "two\nlines"),
    ("梁 2", "007", "-0.5", 'a "quoted" word'),
    ("a & b < c", "", "0.25", "  blanks  "),
    ("tab here", "1e3", "1234567.875", "1"),
    ("merged", "", "100%", "𠀀 end"),
)


def check(office):
    wrong = 0
    for name, how in OURS.items():
        texts, merged, colour = imported(office, HERE / "office" / name, *how)
        wanted = tuple(tuple(LOST[name].get(text, text) for text in row) for row in SHOWN)
        # Looks are a matter of HTML.
        looks = (True, 0xFFCC00) if name.endswith("html") else (False, -1)
        if (texts, (merged, colour)) != (wanted, looks):
            print(f"{name}: the office has {texts} {merged} {colour:x} and not {wanted} {looks}")
            wrong = 1
    return wrong


def test(program):
    with Office() as office, tempfile.TemporaryDirectory() as folder:
        take(office, pathlib.Path(folder))
        done = subprocess.run(program + ["--gtest_filter=OfficeClipboard.*"], check=False,
                              env={**os.environ, "LORV_OFFICE_CLIPBOARD": folder})
        return done.returncode or check(office)


def main():
    if len(sys.argv) == 3 and sys.argv[1] == "take":
        with Office() as office:
            take(office, pathlib.Path(sys.argv[2]))
        return 0
    if len(sys.argv) > 2 and sys.argv[1] == "test":
        return test(sys.argv[2:])
    sys.exit(__doc__)


if __name__ == "__main__":
    sys.exit(main())
