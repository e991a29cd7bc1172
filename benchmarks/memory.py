#!/usr/bin/env python3
"""Measures the most memory that the tool holds while it converts or parses a stream of 1 GB, beside programs
that do the same, and writes it as JSON. Usage: memory.py LUM-TOOL RESULT.json"""
import json
import shutil
import subprocess
import sys
import time

STREAM_BYTES = 1 << 30
PROSE = "The ferry to Tromsø leaves at 7:45; Été comme hiver, la traversée dure 3 heures. Двери закрываются. 日本語\n"
URL = "https://www.example.com/magazine/2023/05/walking-the-coast-path.html?page=2&lang=en#comments\n"


def high_water(pid):
    """What the kernel says; what it says of a child that has ended includes this interpreter's memory."""
    with open(f"/proc/{pid}/status", encoding="utf-8") as file:
        return max((int(line.split()[1]) for line in file if line.startswith("VmHWM")), default=0)


def peak_kilobytes(command, piece):
    """Feeds the command copies of `piece`, 1 GB in all; its peak of resident memory."""
    block = piece.encode() * (65536 // len(piece))
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
    written = 0
    while written < STREAM_BYTES:
        written += process.stdin.write(block)
    peak = high_water(process.pid)
    process.stdin.close()
    # Some begin only when they have read all.
    while process.poll() is None:
        peak = max(peak, high_water(process.pid))
        time.sleep(0.01)
    if process.returncode != 0:
        sys.exit(f"{' '.join(command)} has failed")
    return peak


def main():
    tool, result = sys.argv[1:]
    rows = []
    for operation, piece, commands in [
        ("UTF-8 to UTF-16", PROSE, {
            "lum convert": [tool, "convert", "--from", "utf-8", "--to", "utf-16le"],
            "iconv": ["iconv", "-f", "utf-8", "-t", "utf-16le"],
            "uconv": ["uconv", "-f", "utf-8", "-t", "utf-16le"]}),
        ("URLs to JSON", URL, {"lum parse --json": [tool, "parse", "--json"]}),
    ]:
        for name, command in commands.items():
            if shutil.which(command[0]):
                rows.append({"operation": operation, "program": name, "peak_kb": peak_kilobytes(command, piece)})
                print(f"{operation:20} {name:20} {rows[-1]['peak_kb']:8} KB")
    with open(result, "w", encoding="utf-8") as file:
        json.dump({"stream_bytes": STREAM_BYTES, "rows": rows}, file, indent=2)


main()
