#!/usr/bin/env python3
"""Compares the exported names of the built libraries with the header and the checked-in list.

usage: check_exports.py [--update] LIBRARY...

Every name that the header declares must be exported by each library, undecorated, nothing else
may be, and tests/abi/exports.txt must list just those names. --update rewrites the list from the
header. A name that the table of every function leaves out or that no test calls is reported as
well.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LIST = ROOT / "tests" / "abi" / "exports.txt"


def declared():
    header = (ROOT / "include" / "quorvex.h").read_text()
    header = re.sub(r"/\*.*?\*/", "", header, flags=re.S)
    return set(re.findall(r"QX_API[^;{]*?\b(qx\w+)\(", header))


def exported(library):
    if library.endswith(".dll"):
        text = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", library], check=True,
                              capture_output=True, text=True).stdout
        table = text.split("[Ordinal/Name Pointer] Table", 1)[1]
        return set(re.findall(r"^\s*\[\s*\d+\]\s+(\S+)$", table, flags=re.M))
    text = subprocess.run(["nm", "-D", "--defined-only", library], check=True,
                          capture_output=True, text=True).stdout
    return {line.split()[-1].split("@")[0] for line in text.splitlines() if line}


def differences(what, names, wanted):
    faults = [f"{what}: {name} is missing" for name in sorted(wanted - names)]
    return faults + [f"{what}: {name} is not public" for name in sorted(names - wanted)]


def main():
    arguments = sys.argv[1:]
    names = declared()
    if "--update" in arguments:
        arguments.remove("--update")
        LIST.write_text("".join(name + "\n" for name in sorted(names)))
    faults = differences("the list", set(LIST.read_text().split()), names)
    for library in arguments:
        faults += differences(pathlib.Path(library).name, exported(library), names)
    source = (ROOT / "tests" / "every_function" / "function_table.cpp").read_text()
    table = re.search(r"= functions<(.*?)>\(\)", source, flags=re.S).group(1)
    faults += differences("the function table", set(re.findall(r"\bqx\w+", table)), names)
    # A table of every function is no test of one.
    tests = "\n".join(p.read_text() for p in (ROOT / "tests").rglob("*_test.cpp"))
    called = set(re.findall(r"\bqx\w+", tests))
    faults += [f"no test calls {name}" for name in sorted(names - called)]
    for fault in faults:
        print(fault)
    print(f"{len(names)} exported names")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
