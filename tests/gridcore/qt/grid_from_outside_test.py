#!/usr/bin/env python3
"""A grid as a screen reader of another process sees it, over the accessibility bus.

usage: grid_from_outside_test.py PROGRAM      (within dbus-run-session, on a screen)

The program shows a grid of 1000 rows. The tree is walked from the registry down to a cell, whose action opens its
editor; the text typed there by the reader and an action of a check box are seen in the table again.
"""

import ast
import os
import re
import subprocess
import sys
import time

ROOT = "/org/a11y/atspi/accessible/root"
ATSPI = "org.a11y.atspi."


def gdbus(where, dest, path, method, *args):
    command = ["gdbus", "call", *where, "--dest", dest, "--object-path", path, "--method", method, "--", *args]
    done = subprocess.run(command, capture_output=True, text=True, timeout=20, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{method} of {path}: {done.stderr.strip()}")
    return done.stdout.strip()


class Reader:
    def __init__(self):
        address = gdbus(["--session"], "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        self.bus = ["--address", ast.literal_eval(address)[0]]

    def call(self, thing, interface, *args):
        return gdbus(self.bus, thing[0], thing[1], ATSPI + interface, *args)

    def things(self, answer):
        """Every (':1.7', objectpath '/...') of an answer."""
        return re.findall(r"\('(:[0-9.]+)', (?:objectpath )?'([^']+)'\)", answer)

    def children(self, thing):
        return self.things(self.call(thing, "Accessible.GetChildren"))

    def role(self, thing):
        return ast.literal_eval(self.call(thing, "Accessible.GetRoleName"))[0]

    def get(self, thing, interface, name):
        answer = gdbus(self.bus, thing[0], thing[1], "org.freedesktop.DBus.Properties.Get", ATSPI + interface, name)
        match = re.fullmatch(r"\(<(.*)>,\)", answer)
        return ast.literal_eval(re.sub(r"^[a-z0-9]+ ", "", match.group(1)))

    def name(self, thing):
        return self.get(thing, "Accessible", "Name")

    def find(self, thing, role, depth=6):
        if self.role(thing) == role:
            return thing
        for child in self.children(thing) if depth > 0 else []:
            found = self.find(child, role, depth - 1)
            if found:
                return found
        return None

    def cell(self, table, row, column):
        return self.things("(" + self.call(table, "Table.GetAccessibleAt", str(row), str(column)) + ")")[0]

    def actions(self, thing):
        answer = self.call(thing, "Action.GetActions")
        return [entry[0] for entry in re.findall(r"\('([^']*)', '([^']*)', '([^']*)'\)", answer)]


def until(what, ask):
    for _ in range(100):
        try:
            answer = ask()
        except RuntimeError:
            answer = None
        if answer:
            return answer
        time.sleep(0.1)
    raise SystemExit(f"not seen: {what}")


def expect(what, seen, wanted):
    if seen != wanted:
        raise SystemExit(f"{what}: {seen!r} instead of {wanted!r}")
    print(f"{what}: {seen!r}")


def read(reader, program):
    registry = ("org.a11y.atspi.Registry", ROOT)
    application = until("the program", lambda: reader.children(registry))[0]
    table = until("the table", lambda: reader.find(application, "table"))
    expect("table", reader.name(table), "beams")
    expect("rows", reader.get(table, "Table", "NRows"), 1000)
    expect("columns", reader.get(table, "Table", "NColumns"), 3)
    cell = reader.cell(table, 1, 1)
    expect("cell", (reader.role(cell), reader.name(cell)), ("cell", "3600"))
    expect("where", reader.get(cell, "Accessible", "Description"), "2 length")
    column = ast.literal_eval(reader.call(table, "Table.GetColumnDescription", "1"))[0]
    expect("column header", column, "length")
    reader.call(cell, "Action.DoAction", "0")
    editor = until("the editor", lambda: reader.find(table_editor(reader, table), "text", 0))
    expect("editor", reader.name(editor), "2 length")
    expect("its text", ast.literal_eval(reader.call(editor, "Text.GetText", "0", "-1"))[0], "3600")
    reader.call(editor, "EditableText.SetTextContents", "4200")
    # The action of another cell leaves this one, as a click elsewhere does.
    reader.call(reader.cell(table, 3, 1), "Action.DoAction", "0")
    until("the new text", lambda: reader.name(reader.cell(table, 1, 1)) == "4200")
    check = reader.cell(table, 2, 2)
    checked = 1 << 4
    state = lambda: int(re.search(r"\[(?:uint32 )?(\d+)", reader.call(check, "Accessible.GetState")).group(1))
    expect("unchecked", state() & checked, 0)
    reader.call(check, "Action.DoAction", "0")
    until("the check", lambda: state() & checked)
    expect("still running", program.poll(), None)


def table_editor(reader, table):
    """The windows within the table stand behind its cells."""
    count = reader.get(table, "Accessible", "ChildCount")
    answer = reader.call(table, "Accessible.GetChildAtIndex", str(count - 1))
    return reader.things("(" + answer + ")")[0]


def main():
    environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", QT_QPA_PLATFORM="xcb")
    with subprocess.Popen([sys.argv[1]], stdout=subprocess.PIPE, text=True, env=environment) as program:
        try:
            if program.stdout.readline().strip() != "ready":
                raise SystemExit("the program did not start")
            read(Reader(), program)
        finally:
            program.terminate()


main()
