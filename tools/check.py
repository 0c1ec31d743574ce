#!/usr/bin/env python3
"""Checks of the sources that no compiler makes: floors, forms, texts, pictures and documents.

Prints one line for each fault, "file:line: what", and ends with 1 if there was any.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
faults = []


def tell(path, line, what):
    faults.append(f"{path}:{line}: {what}")


def tracked(*patterns):
    names = subprocess.check_output(["git", "ls-files", *patterns], cwd=ROOT, text=True)
    return [name for name in names.splitlines() if (ROOT / name).exists()]


def lines_of(path):
    return (ROOT / path).read_text(encoding="utf-8").splitlines()


def check_floors():
    """A folder includes only folders above it in src/CMakeLists.txt; no rule includes a form."""
    order = re.findall(r"add_subdirectory\((\w+)\)", (ROOT / "src/CMakeLists.txt").read_text())
    forms = set()
    for folder in order:
        listed = (ROOT / f"src/{folder}/CMakeLists.txt").read_text()
        for block in re.findall(r"\bFORMS\b([^)]*?)(?:NEEDS|FORMS_NEED|SIGNALS|\))", listed):
            forms |= {f"{folder}/{name[:-4]}" for name in re.findall(r"\S+\.cpp", block)}
    open_floors = {"ui", "app"}
    for path in tracked("src/*.cpp", "src/*.h"):
        folder, stem = path.split("/")[1], path[len("src/"):].rsplit(".", 1)[0]
        for number, line in enumerate(lines_of(path), 1):
            included = re.match(r'#include "(\w+)/(.+)\.h"', line)
            if not included or included[1] not in order:
                continue
            other = f"{included[1]}/{included[2]}"
            if order.index(included[1]) > order.index(folder):
                tell(path, number, f"{folder} must not use {included[1]}, a floor above it")
            is_form = stem in forms or pathlib.Path(stem).name.startswith("frm")
            names_form = other in forms or included[1] == "ui"
            if names_form and not is_form and folder not in open_floors and path.endswith(".cpp"):
                tell(path, number, f"a rule includes the form {other}")


def check_texts():
    """Texts are called by name."""
    bare = re.compile(r"\b(?:m_s|s|texts|m_texts|(?:\w+[.>])+s)\((\d+)[,)]")
    for path in tracked("src/*.cpp", "src/*.h", "tests/*.cpp", "tests/*.h", "bench/*.cpp"):
        for number, line in enumerate(lines_of(path), 1):
            if found := bare.search(line.split("//")[0]):
                tell(path, number, f"text {found[1]} is called by its number")


def check_pictures():
    """Pictures that the code names are there."""
    have = {pathlib.Path(name).stem.lower() for name in tracked("resources/pictures/*.svg")}
    for path in tracked("src/*.cpp"):
        for number, line in enumerate(lines_of(path), 1):
            for name in re.findall(r'\b(?:icon|picture|namedIcon)\(u"(\w+)"', line):
                if name.lower() not in have:
                    tell(path, number, f"there is no picture {name}")


def check_documents():
    """Documents name only files and folders that exist."""
    known_roots = tuple(p.name + "/" for p in ROOT.iterdir() if p.is_dir() and p.name != "build")
    for path in tracked("README.md", "docs/*.md"):
        for number, line in enumerate(lines_of(path), 1):
            named = re.findall(r"`([^`\s]+)`", line) + re.findall(r"\]\(([^)#:]+)\)", line)
            for name in named:
                place = name.rstrip("/")
                is_path = place.startswith(known_roots) or re.search(r"/.*\.\w+$", place)
                if not is_path or "*" in place or "<" in place or place.startswith("/"):
                    continue
                if not any((base / place).exists() for base in (ROOT, ROOT / "src", (ROOT / path).parent)):
                    tell(path, number, f"there is no {name}")


def check_resources():
    """Every table of texts and every report definition is built into the program."""
    listed = "".join((ROOT / p).read_text() for p in tracked("src/**/CMakeLists.txt", "src/*/CMakeLists.txt"))
    for path in tracked("resources/strings/*.txt", "resources/seeds/*.txt", "resources/schema/*.txt"):
        if pathlib.Path(path).name not in listed:
            tell(path, 1, "no target builds this in")


def check_styles():
    """What a style sheet asks for exists: a property that some control is given, a class of ours by
    its namespace ("agenda--HoursView")."""
    sources = tracked("src/*.cpp", "src/*.h")
    code = "".join((ROOT / p).read_text() for p in sources)
    given = set(re.findall(r'setProperty\(\s*"(\w+)"', code))
    ours = set(re.findall(r"^class (\w+)[^;]*$", code, re.M))
    for path in tracked("resources/theme/*.qss", "src/*.cpp"):
        for number, line in enumerate(lines_of(path), 1):
            for name in re.findall(r'\[(\w+)="\w+"\]', line):
                if name not in given:
                    tell(path, number, f"no control has a property {name}")
            for name in re.findall(r"^([A-Z]\w+)[:\w ]*\{.*\}$", line):
                if name in ours:
                    tell(path, number, f"the style of {name} needs its namespace")


for check in (check_floors, check_texts, check_pictures, check_documents, check_resources, check_styles):
    check()
print("\n".join(faults) if faults else "The sources keep the house rules.")
sys.exit(1 if faults else 0)
