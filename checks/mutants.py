#!/usr/bin/env python3
"""Changes one place of the library at a time and says which of these faults (mutants) no test notices.

Usage: mutants.py [--seed N] [--count N] [--from N] [--jobs N] [--at FILE:LINE]...
Takes a sample of lines and of one change for each, from the N-th on; with --at every change of these lines. Each mutant
is built in a copy of the tree below build/mutants, and the tests of its folder run first, then all others. Prints a line
a mutant, and the changes that survived. A survivor of a .cpp file whose optimised code is that of the original is "same".
"""
import argparse, collections, concurrent.futures, difflib, json, os, queue, random, re, resource, shutil, subprocess

FOLDERS = ("Source", "cstring", "Mac", "Platform")
# What this processor does not run.
LEFT_OUT = re.compile("Neon" if "avx512_vbmi2" in open("/proc/cpuinfo").read() else "Neon|Avx512")
SWAPS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
         "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["+"], "/": ["*"], "%": ["/"], "&": ["|"], "|": ["&"],
         "<<": [">>"], ">>": ["<<"], "+=": ["-="], "-=": ["+="], "|=": ["&="], "&=": ["|="]}
OPERATOR = re.compile(r"(?<= )(" + "|".join(re.escape(o) for o in sorted(SWAPS, key=len, reverse=True)) + r")(?= )")
NUMBER = re.compile(r"(?<![\w.'])(0x[0-9A-Fa-f]+|\d+)(?=[uUlL]*\b)(?![.'])")
STATEMENT = re.compile(r"^\s+(?!return|using|const|auto|static|throw|case|default|goto|typedef|\}|for|if|else|while)"
                       r"[\w:.\->\[\]*()]+(\(.*\)| [-+|&^*/%]?= .*);$")
WORDS = {"true": "false", "false": "true", "std::min": "std::max", "std::max": "std::min"}


def mutations(line):
    """Every line that this one may become, with the name of the change."""
    # Texts and comments keep their places but are not changed.
    code = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])*\'', lambda m: "_" * len(m[0]), line)
    code = re.sub(r"//.*|/\*.*?\*/", lambda m: " " * len(m[0]), code)
    if re.match(r"\s*(#|\*|template|static_assert|using |namespace|friend|typedef|class|struct)", code):
        return
    for m in OPERATOR.finditer(code):
        for other in SWAPS[m[0]]:
            yield m[0] + " to " + other, line[:m.start()] + other + line[m.end():]
    for m in NUMBER.finditer(code):
        for step in (1, -1):
            number = int(m[0], 8 if re.match(r"0\d", m[0]) else 0) + step
            if number >= 0:
                yield f"{m[0]} by {step}", line[:m.start()] + str(number) + line[m.end():]
    for m in re.finditer(r"(?<!constexpr )\b(if|while) ?\((?!const |auto )(.*)\) \{", code):
        yield "negated", line[:m.start(2)] + "!(" + line[m.start(2):m.end(2)] + ")" + line[m.end(2):]
    for m in re.finditer("|".join(WORDS), code):
        yield m[0] + " to " + WORDS[m[0]], line[:m.start()] + WORDS[m[0]] + line[m.end():]
    for m in re.finditer(r"\+\+|--", code):
        yield m[0], line[:m.start()] + ("--" if m[0] == "++" else "++") + line[m.end():]
    if STATEMENT.match(code) or re.match(r"\s+(break|continue);$", code):
        yield "removed", re.match(r"\s*", line)[0] + ";"


class Tree:
    """A copy of the tree that was built and whose tests passed."""

    def __init__(self, root):
        self.root, self.build = os.path.abspath(root), os.path.abspath(root + "/../build")
        files = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], capture_output=True, text=True).stdout.split("\n")
        for file in filter(os.path.isfile, files):
            target = os.path.join(root, file)
            if not os.path.exists(target) or open(target, "rb").read() != open(file, "rb").read():
                os.makedirs(os.path.dirname(target), exist_ok=True)
                shutil.copy(file, target)

    def make(self):
        self.must("cmake", "-S", self.root, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                  "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -w", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON", "-DLUM_INSTALL=OFF",
                  "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=gold")
        self.must("cmake", "--build", self.build)
        listed = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.build, capture_output=True, text=True).stdout
        # Beside lum-tests: the other programs, the properties with fewer texts.
        self.programs = [t["command"] for t in json.loads(listed)["tests"] if "." not in t["name"]]
        self.programs = [[c[0], "400", *c[2:]] if "/property-" in c[0] else c for c in self.programs]
        if self.failing("nothing"):
            raise SystemExit("the tests fail without a change: " + str(self.failing("nothing")))
        return self

    def must(self, *command):
        done = self.run(command, 3600)
        if done.returncode:
            raise SystemExit(done.stdout)

    def run(self, command, seconds):
        def limit():
            os.setsid()
            resource.setrlimit(resource.RLIMIT_AS, (12 << 30, 12 << 30))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        process = subprocess.Popen(command, cwd=self.root if "cmake" in command[0] else self.build, text=True, errors="replace",
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, preexec_fn=limit)
        try:
            output = process.communicate(timeout=seconds)[0]
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.communicate()
            return subprocess.CompletedProcess(command, 1, "timeout")
        return subprocess.CompletedProcess(command, process.returncode, output)

    def failing(self, folder):
        """The first test that fails, or None; "invalid" if the tree cannot be built."""
        tests, suites = os.path.join("tests", os.path.basename(folder)), set()
        for name in os.listdir(tests) if os.path.isdir(tests) else []:
            suites.update(re.findall(r"^TEST(?:_F)?\((\w+)", open(os.path.join(tests, name)).read(), re.M))
        if self.run(["cmake", "--build", self.build, "--target", "lum-tests"], 900).returncode:
            return "invalid"
        program, quick = self.build + "/tests/lum-tests", "*Every*:Escaping.Blocks*:*TheFast*"
        for filter in ([":".join(s + ".*" for s in suites) + "-" + quick] if suites else []) + ["*-" + quick, quick]:
            done = self.run([program, "--gtest_fail_fast", "--gtest_brief=1", "--gtest_filter=" + filter], 120)
            if done.returncode:
                return (re.findall(r"FAILED  \] (\w+\.\w+)", done.stdout) or [done.stdout[-60:].strip() or "killed"])[0]
        if self.run(["cmake", "--build", self.build], 900).returncode:
            return "invalid"
        return next((os.path.basename(p[0]) for p in self.programs if self.run(p, 120).returncode), None)

    def code(self, file):
        """The optimised code of one file."""
        commands = json.load(open(self.build + "/compile_commands.json"))
        command = [c["command"] for c in commands if c["file"].endswith("/" + file)][0]
        command = re.sub(r" -o \S+ -c", " -O2 -DNDEBUG -S -o - ", command)
        return subprocess.run(command, shell=True, cwd=self.build, capture_output=True).stdout

    def judge(self, mutant):
        file, line, name, new = mutant
        path = os.path.join(self.root, file)
        text = open(path).read()
        lines = text.split("\n")
        diff = f"-{lines[line]}\n+{new}"
        original = self.code(file) if file.endswith(".cpp") else b""
        lines[line] = new
        open(path, "w").write("\n".join(lines))
        result = self.failing(os.path.dirname(file)) or "SURVIVED"
        if result == "SURVIVED" and original and original == self.code(file):
            result = "same"
        open(path, "w").write(text)
        return result, mutant, diff


def main():
    options = argparse.ArgumentParser()
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--count", type=int, default=100)
    options.add_argument("--from", type=int, default=0, dest="first")
    options.add_argument("--jobs", type=int, default=2)
    options.add_argument("--at", action="append", default=[])
    options = options.parse_args()
    files = subprocess.run(["git", "ls-files", *FOLDERS], capture_output=True, text=True).stdout.split()
    places = []
    for file in sorted(f for f in files if f.endswith((".h", ".cpp")) and not LEFT_OUT.search(f)):
        for number, line in enumerate(open(file).read().split("\n")):
            found = [(file, number, *m) for m in mutations(line)]
            places += [found] if found else []
    if options.at:
        mutants = [m for p in places for m in p if f"{m[0]}:{m[1] + 1}" in options.at]
    else:
        choice = random.Random(options.seed)
        # Sorted: a file that changes twice in a row is compiled twice and not three times.
        mutants = sorted(choice.choice(p) for p in choice.sample(places, min(options.count, len(places))))[options.first:]
    trees = queue.Queue()
    copies = [Tree(f"build/mutants/{job}/tree") for job in range(options.jobs)]
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for tree in pool.map(Tree.make, copies):
            trees.put(tree)

    def judge(mutant):
        tree = trees.get()
        try:
            return tree.judge(mutant)
        finally:
            trees.put(tree)

    counts, survivors = collections.Counter(), []
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for future in concurrent.futures.as_completed([pool.submit(judge, m) for m in mutants]):
            result, (file, line, name, _), diff = future.result()
            kind = result if result in ("invalid", "SURVIVED", "same") else "killed"
            counts[kind] += 1
            print(f"{kind}\t{file}:{line + 1}\t{name}\t{result}", flush=True)
            if kind == "SURVIVED":
                print(diff, flush=True)
    print(" ".join(f"{kind} {count}" for kind, count in sorted(counts.items())), "of", len(places), "lines")


if __name__ == "__main__":
    main()
