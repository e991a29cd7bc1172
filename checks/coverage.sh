#!/usr/bin/env bash
# Fails where the tests and the properties leave lines of the library unexecuted that checks/uncovered.tsv does not
# explain, or execute fewer than 97 % of lines or 90 % of branches; or where the texts of a property, in its ordinary
# test, execute less of the files that it is about than fuzz/files.tsv says. Branches are those that gcov counts
# without the ways of exceptions; of inlined and instantiated code, a line or branch counts as executed if it was in
# any copy. A row of checks/uncovered.tsv is a file, the text of a line, and why no test executes it.
# Usage: coverage.sh [--report], from the root; --report also prints every line and the branches of every file
set -eu -o pipefail
build=build/coverage
rm -rf "$build"  # What an older build noted would count as well.
cmake --preset coverage -DLUM_BUILD_EXAMPLES=ON -DLUM_BUILD_TOOLS=OFF -DLUM_INSTALL=OFF >/dev/null
cmake --build --preset coverage >/dev/null
exec python3 - "$build" "$@" <<'END'
import collections, json, os, subprocess, sys

build, report, root = sys.argv[1], "--report" in sys.argv, os.getcwd() + "/"
own = ("Source/", "cstring/", "Mac/", "Platform/", "include/")
# What reads bytes of others or keeps memory: told apart.
whole = ("Source/URI/", "cstring/", "Platform/Resources/", "Platform/TextEncoding/", "Source/Utf8/", "Source/Transcoder/")
cpu = open("/proc/cpuinfo").read()


def found(end):
    return [os.path.join(folder, name) for folder, _, names in os.walk(build) for name in names if name.endswith(end)]


def run(*tests):
    """How often these tests execute each line and take each branch of the library."""
    lines, branches = collections.Counter(), collections.Counter()
    for old in found(".gcda"):
        os.remove(old)
    done = subprocess.run(["ctest", "--preset", "coverage", "-j", str(os.cpu_count()), *tests], capture_output=True, text=True)
    if done.returncode:
        sys.exit(done.stdout)
    notes = [note for note in found(".gcno") if os.path.exists(note[:-2] + "da") or not tests]
    for start in range(0, len(notes), 20):
        out = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", *notes[start:start + 20]],
                             capture_output=True, text=True, check=True).stdout
        for unit in map(json.loads, filter(None, out.split("\n"))):
            for file in unit["files"]:
                name = os.path.normpath(os.path.join(unit["current_working_directory"], file["file"]))
                name = name.removeprefix(root)
                if not name.startswith(own) or ("Avx512" in name and "avx512_vbmi2" not in cpu):
                    continue
                for line in file["lines"]:
                    lines[name, line["line_number"]] += line["count"]
                    for i, branch in enumerate(b for b in line["branches"] if not b["throw"]):
                        branches[name, line["line_number"], i] += branch["count"]
    return lines, branches


def share(counter, folders=own):
    counts = [count for key, count in counter.items() if key[0].startswith(folders)]
    return 100 * sum(count > 0 for count in counts) / len(counts), len(counts)


lines, branches = run()
explained = collections.Counter(
    tuple(row.split("\t")[:2]) for row in open("checks/uncovered.tsv").read().split("\n")[1:] if row)
text = {name: open(name).read().split("\n") for name in {name for name, _ in lines}}
failed = share(lines)[0] < 97 or share(branches)[0] < 90
for name, number in sorted(key for key, count in lines.items() if count == 0):
    row = name, text[name][number - 1].strip()
    explained[row] -= 1
    if explained[row] < 0:
        failed = True
        print(f"{name}:{number}: no test executes: {row[1]}")
for row, count in sorted(explained.items()):
    if count > 0:
        print("checks/uncovered.tsv: executed by now, or gone:", *row)
print("figure: lines: %.2f %% of %d; branches: %.2f %% of %d" % (*share(lines), *share(branches)))
print("figure: lines of parsers, storage, resources and converters: %.2f %% of %d" % share(lines, whole))
if report:
    for name in sorted(text):
        print("%s: %.1f %% of %d lines, %.1f %% of branches" % (name, *share(lines, name), share(
            branches, name)[0] if any(key[0] == name for key in branches) else 100))
for row in open("fuzz/files.tsv").read().split("\n")[1:]:
    if row:
        name, least, files = row.split("\t")
        part, count = share(run("-R", f"^property-{name}$")[0], tuple(files.split()))
        print("figure: property %s: %.1f %% of %d lines" % (name, part, count))
        if part < float(least):
            failed = True
            print(f"property {name}: fewer than {least} %: {files}")
sys.exit(failed)
END
