"""Groups of sources that clang-tidy looks at in one run, so that it reads and matches their headers once.

A group is the text of its sources, one behind the other, as one main file: checks that look at the main file only look
at all of it. By an overlay it seems to stand in the folder of its first source, where its configuration is found.

The sources of a group have the same compile command and configuration, and no name that one declares in an anonymous
namespace occurs in another. A source with other directives than #include stands alone, as its macros would reach the
next one; so does one with using-declarations outside of functions and classes, which the next one could use. Where
that is not enough the group does not compile, and the caller divides it.
"""

import functools
import json
import pathlib
import re
import shlex

LITERAL = r"""R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'"""
PASSED_OVER = re.compile(r"^\s*#\s*include\b[^\n]*|//[^\n]*|/\*.*?\*/|" + LITERAL, re.DOTALL | re.MULTILINE)
# Indented ones are of a class or a function, and end with it.
ALONE = re.compile(r"^\s*#|^using\s+(?!\w+\s*=)", re.MULTILINE)
NAMESPACE = re.compile(r"\s*(?:inline\s+)?namespace\b([^=]*)$")
TYPE = re.compile(r"\s*(?:struct|class|union|enum\s+class|enum|using)\s+(\w+)")
NAME = re.compile(r"(\w+)\s*(?:[(=\[]|$)")


def declared(head):
    """The name that a declaration introduces, given by what stands before its body or its end."""
    brackets = 1
    while brackets:
        head, brackets = re.subn(r"<[^<>]*>|\[\[.*?\]\]", " ", head)
    found = TYPE.match(head) or NAME.search(head)
    return {found[1]} if found else set()


def hidden(text):
    """The names declared in anonymous namespaces, the text being without comments and literals."""
    names, levels, begin = set(), [], 0  # of each open brace: an anonymous namespace, a named one, neither (None)
    for mark in re.finditer("[{};]", text):
        head, begin = text[begin:mark.start()], mark.end()
        namespace = NAMESPACE.match(head)
        if mark[0] != "}" and not namespace and None not in levels and any(levels):
            names |= declared(head)
        if mark[0] == "{":
            levels.append(not namespace[1].strip() if namespace else None)
        elif mark[0] == "}" and levels:
            levels.pop()
    return names


@functools.lru_cache(maxsize=None)
def names_in(file):
    """Whether the source must stand alone, what it hides and every word of it."""
    text = PASSED_OVER.sub(" ", pathlib.Path(file).read_text(encoding="utf-8"))
    return ALONE.search(text) is not None, hidden(text), set(re.findall(r"[A-Za-z_]\w*", text))


def agree(one, other):
    """Whether two sources may stand in one group."""
    alone, hides, words = names_in(one["file"])
    others_alone, others_hides, others_words = names_in(other["file"])
    return not (alone or others_alone) and hides.isdisjoint(others_words) and others_hides.isdisjoint(words)


def flags_of(entry):
    """The compiler's arguments without its name, the source and the object."""
    words = shlex.split(entry["command"])[1:]
    if "-o" in words:
        at = words.index("-o")
        del words[at:at + 2]
    return [word for word in words if word not in ("-c", entry["file"])]


def made_of(entries, configurations, limit):
    """Lists of entries to be looked at together, the largest first; each joins the first that it agrees with."""
    kinds = {}
    for entry in sorted(entries, key=lambda e: e["file"]):
        groups = kinds.setdefault(repr((flags_of(entry), configurations(entry["file"]))), [])
        fitting = (g for g in groups if len(g) < limit and all(agree(entry, other) for other in g))
        group = next(fitting, None)
        if group is None:
            groups.append([entry])
        else:
            group.append(entry)
    return sorted((g for groups in kinds.values() for g in groups), key=len, reverse=True)


def arguments(group, folder):
    """Those of clang-tidy for a group, whose text is put into the folder."""
    text, overlay = folder / "group.cpp", folder / "overlay.json"
    text.write_text("\n".join(pathlib.Path(e["file"]).read_text(encoding="utf-8") for e in group), encoding="utf-8")
    place = pathlib.Path(group[0]["file"]).parent
    shown = {"name": text.name, "type": "file", "external-contents": str(text)}
    root = {"name": str(place), "type": "directory", "contents": [shown]}
    overlay.write_text(json.dumps({"version": 0, "roots": [root]}), encoding="utf-8")
    return [f"--vfsoverlay={overlay}", str(place / text.name), "--", *flags_of(group[0])]
