#!/usr/bin/env python3
"""Compares what quorvex_same_bits printed on two platforms.

usage: compare_bits.py FIRST SECOND

Digests and texts must be equal, and numbers of functions that call exp, log, pow, sin, cos or atan
must agree within 2 units in the last place (ulp). Prints the functions that differ, the largest
distance of those that may, and fails on a difference or when a function that computes numbers is
not among the lines.
"""
import collections
import pathlib
import re
import struct
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
MOST_ULP = 2

# Functions of the list of exports that compute no numbers: they keep records, move bytes, draw, or
# are steps of a simulation whose numbers are compared as a whole.
NO_NUMBERS = re.compile(
    r"qx(Alloc|ReAlloc|ReSize|Free|Copy|Graph|FILE|OrderSystem|(Buy|Sell)To)\w+|"
    r"qx(CT|CSI|DJ|FS|TC|TT|AIQ)(read|readarray|list|findrec)|"
    r"qxTXT(readinfo|writeinfo|readarray|findrec|list|write|writeline)|"
    r"qx(Set|Get)\w*(FirstValid|Item|Cutoff|DateFormat)|"
    r"qxErr\w+|qxFindDate|qxCandleFree|qxCancelOrder|qxOptionInit")


def place(bits):
    """The place of a double among all doubles, so that neighbours differ by 1."""
    number = int(bits, 16)
    return number if number < 1 << 63 else (1 << 63) - number


def distance(first, second):
    if first == second:
        return 0
    numbers = [struct.unpack(">d", bytes.fromhex(bits))[0] for bits in (first, second)]
    if any(number != number for number in numbers):
        return 1 << 63
    return abs(place(first) - place(second))


def main():
    first, second = (pathlib.Path(path).read_text().splitlines() for path in sys.argv[1:3])
    faults, farthest = [], collections.OrderedDict()
    names, name, digests = set(), "", 0
    if len(first) != len(second):
        faults.append(f"{len(first)} lines against {len(second)}")
    for one, other in zip(first, second):
        kind, _, rest = one.partition(" ")
        if kind != "|":
            name = rest.split()[0]
            names.add(name)
        digests += kind == "exact"
        if kind == "near" and one.split(":")[0] == other.split(":")[0]:
            apart = [distance(a, b) for a, b in zip(one.split(":")[1].split(),
                                                    other.split(":")[1].split())]
            farthest[name] = max([farthest.get(name, 0)] + apart)
            if max(apart) > MOST_ULP:
                faults.append(f"{one.split(':')[0].strip()}: {max(apart)} ulp")
        elif one != other:
            faults.append(f"{name}: {one[:100]} against {other[:100]}")
    exports = (ROOT / "tests" / "abi" / "exports.txt").read_text().split()
    faults += [f"{export} is not computed" for export in exports
               if export not in names and not NO_NUMBERS.fullmatch(export)]
    for fault in faults[:100]:
        print(fault)
    for name, ulp in farthest.items():
        print(f"{name}: {ulp} ulp at most")
    print(f"{len(names)} functions, {digests} digests, {len(faults)} differences")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
