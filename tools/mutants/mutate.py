#!/usr/bin/env python3
"""Makes mutants of the library, which are small faults in its sources, and checks that the tests catch each.

    tools/mutants/mutate.py                       a selection of mutants from all files
    tools/mutants/mutate.py --number 800 --seed 2 a larger selection of other mutants
    tools/mutants/mutate.py --all                 all mutants: takes a day
    tools/mutants/mutate.py text/utf8.cpp phyval  all mutants of a file and of a folder; --number limits them
    tools/mutants/mutate.py utf8.cpp-1f3a9c       one mutant, by the name that a run has printed
    tools/mutants/mutate.py --survivors           the survivors of the last run
    tools/mutants/mutate.py --continue [...]      continues an interrupted run
    tools/mutants/mutate.py --list [...]          prints the mutants and runs nothing

Works on copies of the checkout below build/mutants, which it configures and builds with the presets of
CMakePresets.json. Builds each mutant and runs the tests of its module, then all quick tests, until one fails, hangs or
takes too much memory; then the tests of its module and of the model under valgrind. Survivors in code that differs on
Windows then meet the tests of the Windows build under Wine. Mutants in code for Windows only meet just those.

tools/mutants/equivalent.txt lists the equivalent mutants, which no host can notice, with reasons. They are not run. A
run fails if a mutant survives or was not tried, or if the list names a mutant that does not exist.
"""

import argparse
import bisect
import collections
import hashlib
import json
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORK = ROOT / "build" / "mutants"
RESULTS = WORK / "results.txt"
EQUIVALENT = "tools/mutants/equivalent.txt"
FOLDERS = ("cldr", "dictionary", "frame", "host", "phyval", "platform", "storage", "text", "unittables")
HEADER = "include/kelmo_localizer.h"
GENERATED = {"cldr/number_table.h", "cldr/plural_table.h"}  # tests compare them with the data
DEFAULT_NUMBER = 440
MIN_PER_FILE = 3

# ---- The mutants

TOKEN = re.compile(
    r"""(?P<blank>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
    |(?P<text>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
    |(?P<char>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)*')
    |(?P<number>\.?\d(?:[\w.']|(?<=[eEpP])[+-])*)
    |(?P<word>[A-Za-z_]\w*)
    |(?P<sign><<=|>>=|\.\.\.|->|::|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[^\w\s])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)
PAIRS = {"(": ")", "[": "]", "{": "}"}
BINARY = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"), "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",), "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",),
    "<<": (">>",), ">>": ("<<",), "&": ("|",), "|": ("&",), "^": ("|",),
    "+=": ("-=",), "-=": ("+=",), "*=": ("/=",), "/=": ("*=",), "|=": ("&=",), "&=": ("|=",), "^=": ("|=",),
}
WORDS = {"true": "false", "false": "true", "find_if": "find_if_not", "find_if_not": "find_if"}
NO_STATEMENT = set("""auto case catch class const constexpr default do else extern for friend if namespace return static
static_assert struct switch template try typedef using while""".split())
NO_CALL = set("""catch decltype for if noexcept operator return sizeof static_assert switch while alignof defined
static_cast reinterpret_cast const_cast min max _mm_and_si128 _mm_or_si128""".split())
# What a function returns that {} is too, and true, which is changed to false.
NO_OTHER_VALUE = {"{}", "nullptr", "0", "false", "true", "std::nullopt", "KELMO_OK"}
DECLARATION = re.compile(r"(?:[\w:]|<[^;=]*>)+[&*\s]*[&*\s](?:const\s)?[&*\s]*\w+\s*(?:=|\(|\{|;|\[)")

Token = collections.namedtuple("Token", "kind text begin end")
Mutant = collections.namedtuple("Mutant", "name file line source change begin end replacement")


def tokens_of(source):
    tokens = []
    for match in TOKEN.finditer(source):
        if match.lastgroup != "blank":
            tokens.append(Token(match.lastgroup, match.group(), match.start(), match.end()))
    return tokens


def other_characters(literal):
    """For 'x' or L'x': the neighbouring characters."""
    prefix, body = literal[: literal.index("'")], literal[literal.index("'") + 1 : -1]
    code = ord(body.encode("ascii").decode("unicode_escape"))
    for other in (code + 1, code - 1):
        if other >= 0:
            plain = 0x20 <= other < 0x7F and chr(other) not in "\\'"
            escape = f"\\u{other:04X}" if other >= 0xA0 else f"\\{other:03o}"
            yield f"{prefix}'{chr(other) if plain else escape}'"


def other_texts(literal):
    """For "text": each text with the first, middle or last character changed."""
    begin = literal.index('"') + 1
    units = [m.span() for m in re.finditer(r"\\(?:u[0-9A-Fa-f]{4}|.)|.", literal[begin:-1])]
    for i in sorted({0, len(units) // 2, len(units) - 1}) if units else ():
        first, last = (begin + offset for offset in units[i])
        unit = literal[first:last]
        other = "\\t" if unit == "\\n" else "\\n" if unit.startswith("\\") else "y" if unit == "x" else "x"
        yield literal[:first] + other + literal[last:]


def other_numbers(literal):
    value, suffix = re.fullmatch(r"(0[xX][0-9A-Fa-f]+|[\d.]+(?:[eE][+-]?\d+)?)([uUlLfF]*)", literal).groups()
    if re.search(r"[.eE]", value) and not value.lower().startswith("0x"):
        more = float(value) + 1.0
        yield repr(more if more != float(value) else 2 * more) + suffix
        if float(value) != 0.0:
            yield repr(float(value) / 2) + suffix
        return
    base, form = 10, "%d"
    if value.lower().startswith("0x"):
        base, form = 16, "0x%X"
    elif value.startswith("0") and value != "0":
        base, form = 8, "0%o"
    number = int(value, base)
    yield form % (number + 1) + suffix
    if number > 0:
        yield form % (number - 1) + suffix


class Changes:
    """Makes all mutants of one file."""

    def __init__(self, file, source):
        self.file, self.source = file, source
        self.tokens = tokens_of(source)
        self.changes = {}  # (begin, end, replacement): description
        self.partner = {}  # opening bracket: closing bracket, and the other way round
        self.blocks = {}  # token: whether its innermost braces are a block of statements
        self.values = set()  # the brackets that contain no statements
        self.in_function = {}
        self.skipped = set()
        self.pair_brackets()

    def pair_brackets(self):
        stack, kinds = [], []
        statement = 0
        for i, token in enumerate(self.tokens):
            self.blocks[i] = bool(kinds) and kinds[-1] == "block"
            self.in_function[i] = "block" in kinds
            if token.kind != "sign":
                continue
            if token.text in PAIRS:
                stack.append(i)
                kinds.append(self.kind_of_brace(statement, i) if token.text == "{" else "other")
                if kinds[-1] == "other":
                    self.values.add(i)
            elif token.text in PAIRS.values() and stack:
                self.partner[stack[-1]] = i
                self.partner[i] = stack.pop()
                kinds.pop()
                self.blocks[i] = False
            if token.text in ("{", "}", ";"):
                statement = i + 1

    def kind_of_brace(self, statement, i):
        first = [t.text for t in self.tokens[statement:i]]
        named = {"namespace", "class", "struct", "enum", "union"} & set(first)
        if (named or first[:1] == ["extern"] and len(first) == 2) and "(" not in first:
            return "scope"
        before = self.tokens[i - 1].text if i else ""
        return "block" if before in (")", "const", "noexcept", "else", "try", "do", "override") else "other"

    def text(self, first, last):
        return self.source[self.tokens[first].begin : self.tokens[last].end]

    def add(self, first, last, replacement, change=None):
        begin, end = self.tokens[first].begin, self.tokens[last].end
        old = " ".join(self.source[begin:end].split())
        if old != replacement:
            self.changes.setdefault((begin, end, replacement), change or f"{old} -> {replacement}")

    def skip_declarations(self):
        for i, token in enumerate(self.tokens):
            after = self.tokens[i + 1].text if i + 1 < len(self.tokens) else ""
            if token.text in ("static_assert", "using", "namespace"):
                end = i
                while self.tokens[end].text not in (";", "{"):
                    end += 1
                self.skipped.update(range(i, end))
            elif token.text == "template":
                depth, end = 0, i + 1
                while True:
                    depth += {"<": 1, ">": -1}.get(self.tokens[end].text, 0)
                    if depth == 0:
                        break
                    end += 1
                self.skipped.update(range(i, end + 1))
            elif token.text == "extern" and after.startswith('"'):
                self.skipped.add(i + 1)
            elif token.text == "operator":
                self.skipped.add(i + 1)

    def change_token(self, i):
        token = self.tokens[i]
        before = self.tokens[i - 1] if i else Token("sign", "", 0, 0)
        spaced = self.source[token.begin - 1].isspace() and self.source[token.end : token.end + 1].isspace()
        starts_operand = before.kind == "sign" and before.text not in (")", "]", "}") or before.text == "return"
        if token.text == "0" and before.text == "=" and self.tokens[i - 2].text in (")", "const", "noexcept"):
            return  # a pure virtual function
        if token.kind == "number":
            for other in other_numbers(token.text):
                self.add(i, i, other)
        elif token.kind == "char":
            for other in other_characters(token.text):
                self.add(i, i, other)
        elif token.kind == "text":
            for other in other_texts(token.text):
                self.add(i, i, other)
        elif token.text in WORDS:
            self.add(i, i, WORDS[token.text])
        elif token.text in ("min", "max") and before.text == "::":
            self.add(i, i, "max" if token.text == "min" else "min")
        elif token.text in BINARY and spaced:
            for other in BINARY[token.text]:
                self.add(i, i, other)
        elif token.text in ("++", "--"):
            self.add(i, i, "--" if token.text == "++" else "++")
        elif token.text == "!" or (
                token.text in ("-", "~") and not spaced and starts_operand and not self.ends_a_class(i)):
            self.add(i, i, "", f"{token.text}{self.tokens[i + 1].text} without the {token.text}")
        elif token.text == "?":
            self.swap_choices(i)
        elif token.text == "(" and before.kind == "word":
            self.change_call_or_condition(i, before.text)

    def ends_a_class(self, i):
        in_expression = self.in_function[i] or self.tokens[i - 1].text in ("=", "(", "return")
        return self.tokens[i].text == "~" and not in_expression

    def walk(self, i, stops):
        """The first token from i on that is one of stops, outside of nested brackets; None if the bracket ends before."""
        while i < len(self.tokens):
            text = self.tokens[i].text
            if text in stops:
                return i
            if text in PAIRS and i in self.partner:
                i = self.partner[i]
            elif text in PAIRS.values():
                return None
            i += 1
        return None

    def swap_choices(self, i):
        nested, j = 0, i + 1
        while j is not None:
            j = self.walk(j, ("?", ":"))
            if j is None:
                return
            if self.tokens[j].text == ":" and nested == 0:
                break
            nested += 1 if self.tokens[j].text == "?" else -1
            j += 1
        end = j + 1
        while self.tokens[end].text not in (";", ",", "?") and self.tokens[end].text not in PAIRS.values():
            end = self.partner[end] + 1 if self.tokens[end].text in PAIRS else end + 1
        if self.tokens[end].text == "?":
            return
        first, second = self.text(i + 1, j - 1), self.text(j + 1, end - 1)
        self.add(i + 1, end - 1, f"{second} : {first}", "? : the other way round")

    def change_call_or_condition(self, i, name):
        last = self.partner.get(i)
        if last is None or last == i + 1:
            return
        if name in ("if", "while"):
            if self.walk(i + 1, (";", "=")) is None:
                condition = " ".join(self.text(i + 1, last - 1).split())
                for constant in ("true", "false") if name == "if" else ("false",):
                    self.add(i + 1, last - 1, constant, f"{name} ({condition}) -> {constant}")
        elif self.in_function[i] and name not in NO_CALL:
            comma = self.walk(i + 1, (",",))
            if comma is not None and comma < last and self.walk(comma + 1, (",",)) is None:
                first, second = self.text(i + 1, comma - 1), self.text(comma + 1, last - 1)
                if not {"{", "["} & {t.text for t in self.tokens[i:last]}:
                    self.add(i + 1, last - 1, f"{second}, {first}", f"{name}: the arguments the other way round")

    def change_statement(self, i):
        first = self.tokens[i].text
        if not self.blocks[i] or self.tokens[i - 1].text not in ("{", "}", ";") or i in self.skipped:
            return
        if self.tokens[i - 1].text == "}" and self.partner[i - 1] in self.values:
            return
        end = self.walk(i, (";",))
        if end is None:
            return
        text = " ".join(self.text(i, end).split())
        if first == "return":
            if end > i + 1 and self.text(i + 1, end - 1) not in NO_OTHER_VALUE:
                self.add(i + 1, end - 1, "{}", f"{text} -> return {{}};")
            elif end == i + 1:
                self.add(i, end, ";", f"{text} removed")
        elif first not in NO_STATEMENT and (first in ("break", "continue", "throw") or not DECLARATION.match(text)):
            self.add(i, end, ";", f"{text} removed")

    def all(self):
        self.skip_declarations()
        for i in range(len(self.tokens)):
            if i not in self.skipped:
                self.change_token(i)
                self.change_statement(i)
        starts = [0] + [m.end() for m in re.finditer("\n", self.source)]
        lines = self.source.split("\n")
        equal = collections.Counter()
        mutants = []
        for (begin, end, replacement), change in sorted(self.changes.items()):
            number = bisect.bisect_right(starts, begin)
            line = lines[number - 1].strip()
            equal[line, change] += 1
            if equal[line, change] > 1:
                change += f" ({equal[line, change]})"
            code = hashlib.sha256(f"{self.file}\n{line}\n{change}".encode()).hexdigest()[:6]
            name = f"{pathlib.PurePath(self.file).name}-{code}"
            mutants.append(Mutant(name, self.file, number, line, change, begin, end, replacement))
        return mutants


def library_files():
    files = [HEADER]
    for folder in FOLDERS:
        files += [f.relative_to(ROOT).as_posix() for f in sorted((ROOT / folder).rglob("*")) if f.suffix in (".cpp", ".h")]
    return [file for file in files if file not in GENERATED]


def all_mutants():
    """{file: its mutants in the order of the text}"""
    return {file: Changes(file, (ROOT / file).read_text()).all() for file in library_files()}


def equivalent_mutants(mutants, listed):
    """{name: reason} from the list, and the errors of the list."""
    known, wrong = {}, []
    by_line = collections.defaultdict(list)
    for mutant in (m for file in mutants.values() for m in file):
        by_line[mutant.file, mutant.source, mutant.change].append(mutant)
        by_line[mutant.file, mutant.source, "any change"].append(mutant)
    file = source = None
    changes, reasons = [], 1  # of the current line: the changes without a reason so far, and whether it has a reason
    for line in [*listed.splitlines(), "the end"]:
        text = line.strip()
        indent = len(line) - len(line.lstrip())
        if not text or text.startswith("#") and indent == 0:
            continue
        if indent <= 2:
            if changes or not reasons:
                wrong.append(f"{file}: {source}: {', '.join(changes) or 'no change'}: no reason")
            changes, reasons = [], indent == 0
            file, source = (file, text) if indent else (text, None)
        elif text.startswith("= "):
            if not changes:
                wrong.append(f"{file}: {source}: no change: {text}")
            known.update((mutant.name, text[2:]) for change in changes for mutant in by_line[file, source, change])
            changes, reasons = [], True
        else:
            changes.append(text)
            if not by_line[file, source, text]:
                wrong.append(f"{file}: {source}: {text}: there is no such mutant")
    return known, wrong


# ---- Building and testing

Test = collections.namedtuple("Test", "name command folder environment seconds")

# Excluded: tests of pages, scripts and checkers, and tests that also exist with the library's objects linked in.
EXCLUDED_TESTS = re.compile(r"""^(pages|pictures|presets|equivalent_mutants|(?:kelmo_)?refusals.*|microsoft_names
    |warnings_are_errors|consumer_.*|fault_.*|notices|allocation_failures_test|model_of_a_comma_user)$""", re.VERBOSE)
# These catch most in the shortest time.
FIRST = ("end_to_end_test", "file_faults_test", "failing_source_test", "export_test", "values_test",
         "model_inside_test", "system_calls_test")
MODEL = re.compile(r"^model_(inside_)?(test|of_a_comma_user)$")
# The long runs that detect invalid reads and writes of memory.
MEMCHECK = "memcheck_"
MEMCHECK_OF_ALL = {"memcheck_model_inside_test": ("--rounds=6", "--gtest_filter=*EverySequence*")}
MEMCHECK_SECONDS = 300

SYSTEMS = {
    "linux": dict(preset="linux-debug", rounds=150, options=("-DCMAKE_CXX_FLAGS_DEBUG=-O1",)),
    "windows": dict(preset="mingw-release", rounds=40, options=("-DCMAKE_CXX_FLAGS_RELEASE=-O1",), programs=set(
        """c_host end_to_end_test export_test exports_test file_faults_test memory_limit_test missing_table_test
        module_test regional_settings_test renamed_library_test renamed_library_with_a_table_test resources_test
        unit_tests unload_test values_test""".split())),  # those that depend on the system
}
USUAL_OPTIONS = ("-DKELMO_LOCALIZER_STRICT=OFF", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON")
ONLY_ON_WINDOWS = re.compile(r"^platform/windows/|_windows\.cpp$")
# Code for all systems that differs on Windows.
DIFFERS_ON_WINDOWS = re.compile(r"kSurrogatePairs|kVectors\b|sizeof\((?:wchar_t|Unit)\)|_mm_")
NOT_COVERED = re.compile(r"^( *)// not covered: .*Windows only")
MEMORY_KIB = 6 * 1024 * 1024
FILE_BLOCKS = 4 * 1024 * 1024  # of 512 bytes

# The names of a file's own tests, if they differ from the name of the file.
OWN_TESTS = {
    "text/byte_source.h": "line_reader",
    "platform/posix/character_classes.h": "characters",
    "platform/posix/embedded_table.cpp": "default_table",
    "platform/windows/embedded_table.cpp": "default_table",
    "storage/text_block.h": "text_hash",
    "platform/file_descriptor.h": "files",
    "platform/file_source.h": "files",
    "platform/posix/file_descriptor.cpp": "files",
    "platform/windows/file_descriptor.cpp": "files",
    "storage/word.h": "dictionary_line",
    "phyval/double.cpp": "double",
    "phyval/rounding.h": "rounding",
}


def environment(*more):
    variables = {k: v for k, v in os.environ.items() if not k.startswith("GTEST_")}
    variables.update({"LC_ALL": "C.UTF-8"}, **{k: v for part in more for k, v in part.items()})
    return variables


class Tree:
    """A copy of the checkout with its own build."""

    def __init__(self, name, system):
        self.name, self.system = name, system
        self.folder = WORK / name
        self.preset = SYSTEMS[system]["preset"]
        self.build = self.folder / "build" / self.preset
        self.log = WORK / f"{name}.log"
        self.variables = {}
        self.tests = []
        self.memchecks = {}
        self.programs = SYSTEMS[system].get("programs")
        self.changed = None
        self.passed_under_valgrind = set()

    def run(self, command, seconds=None, folder=None, variables=None, limited=False):
        """The exit code; None after so many seconds. The output goes to the log."""
        if limited:
            memory = "" if command[0].endswith("valgrind") else f"ulimit -v {MEMORY_KIB};"
            limits = f'ulimit -c 0; ulimit -f {FILE_BLOCKS}; {memory} exec "$@"'
            command = ["sh", "-c", limits, "sh", *command]
        with open(self.log, "w", encoding="utf-8") as log:
            with subprocess.Popen(command, cwd=folder or self.folder, env=environment(variables or {}),
                                  stdin=subprocess.DEVNULL, stdout=log, stderr=subprocess.STDOUT,
                                  start_new_session=True) as process:
                try:
                    return process.wait(seconds)
                except subprocess.TimeoutExpired:
                    return None
                finally:
                    try:
                        os.killpg(process.pid, signal.SIGKILL)  # with all processes that it has started
                    except ProcessLookupError:
                        pass

    def must_run(self, command, **more):
        if self.run(command, **more) != 0:
            print(self.log.read_text(errors="replace")[-4000:], file=sys.stderr)
            raise SystemExit(f"{self.name}: this fails without a mutant: {' '.join(map(str, command))}")

    def copy_checkout(self):
        listed = subprocess.run(["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"], cwd=ROOT,
                                check=True, capture_output=True).stdout.decode().split("\0")
        checkout = hashlib.sha256()
        for name in sorted(filter(None, listed)):
            source, target = ROOT / name, self.folder / name
            if source.is_file():
                content = source.read_bytes()
                if not name.startswith(("docs/", "tools/")):
                    checkout.update(content)
                if not target.is_file() or target.read_bytes() != content:
                    target.parent.mkdir(parents=True, exist_ok=True)
                    target.write_bytes(content)
                target.chmod(source.stat().st_mode)
        for folder in (*FOLDERS, "tests", "include", "examples"):
            for file in (self.folder / folder).rglob("*"):
                if file.is_file() and not (ROOT / file.relative_to(self.folder)).is_file():
                    file.unlink()
        return checkout.hexdigest()

    def prepare(self):
        checkout = self.copy_checkout()
        preset = json.loads((ROOT / "CMakePresets.json").read_text())["testPresets"]
        self.variables = next((p.get("environment", {}) for p in preset if p["name"] == self.preset), {})
        self.must_run(["cmake", "--preset", self.preset, *USUAL_OPTIONS, *SYSTEMS[self.system]["options"],
                       *self.linker()])
        self.must_run(["cmake", "--build", self.build, *(["--target", *self.programs] if self.programs else [])])
        if self.system == "windows":
            subprocess.run([self.folder / "tools/wine.sh", "--start"], check=True)
        # With the long runs, which include those under valgrind.
        listed = subprocess.run(["ctest", "--build-config", "heavy", "--show-only=json-v1"], cwd=self.build, check=True,
                                capture_output=True)
        passed = WORK / f"{self.name}.passed"  # the checkout that passed without a mutant, and the time of each test
        known = json.loads(passed.read_text()) if passed.exists() else {}
        if known.get("checkout") != checkout:
            known = {"checkout": checkout, "seconds": {}}
        for test in json.loads(listed.stdout)["tests"]:
            self.add_test(test, known["seconds"])
        passed.write_text(json.dumps(known))
        self.tests.sort(key=lambda test: (FIRST.index(test.name) if test.name in FIRST else len(FIRST), test.seconds))

    def linker(self):
        if self.system == "windows" or subprocess.run(["sh", "-c", "command -v ld.gold"], stdout=subprocess.DEVNULL,
                                                      check=False).returncode != 0:
            return ()
        return ("-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=gold", "-DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=gold")

    def add_test(self, listed, seconds):
        properties = {p["name"]: p["value"] for p in listed.get("properties", [])}
        command = list(listed["command"])
        slow = {"slow", "heavy"} & set(properties.get("LABELS", []))
        if self.programs and listed["name"] != "make_locales" and not self.programs & {
                pathlib.PurePath(word).stem for word in command}:
            return
        if EXCLUDED_TESTS.match(listed["name"]) or slow and not listed["name"].startswith(MEMCHECK):
            return
        if MODEL.match(listed["name"]):
            command.append(f"--rounds={SYSTEMS[self.system]['rounds']}")
        variables = dict(self.variables)
        variables.update(entry.split("=", 1) for entry in properties.get("ENVIRONMENT", []))
        test = Test(listed["name"], command, properties.get("WORKING_DIRECTORY", str(self.build)), variables, 0.0)
        if slow:
            self.memchecks[test.name] = test._replace(seconds=MEMCHECK_SECONDS / 8)
            return
        if test.name not in seconds or "FIXTURES_SETUP" in properties:
            begun = time.monotonic()
            self.must_run(test.command, folder=test.folder, variables=variables, limited=True)
            seconds[test.name] = time.monotonic() - begun
        if "FIXTURES_SETUP" not in properties:
            self.tests.append(test._replace(seconds=seconds[test.name]))

    def own_test(self, file):
        """The program, its test and the argument that run the tests of a file of the library; None without tests."""
        stem = OWN_TESTS.get(file, pathlib.PurePath(file).stem)
        ends = ("_test", "_text_test", "_posix_test", "_windows_test")
        texts = [text for end in ends for text in (ROOT / "tests").rglob(f"{stem}{end}.cpp")]
        rules = (texts[0].parent / "CMakeLists.txt").read_text() if texts else ""
        for program, sources in re.findall(r"(?:kelmo_add_\w+|target_sources)\((\w+)\s+([^)]*)\)", rules):
            if texts[0].name in sources.split():
                suite = re.compile(r"^TEST(?:_[FP])?\((\w+),", re.MULTILINE)
                suites = sorted({name for text in texts for name in suite.findall(text.read_text())})
                test = next((t for t in self.tests if t.name == program), None)
                if test:
                    return program, test, f"--gtest_filter={':'.join(f'*{name}.*' for name in suites)}"
        return None

    def compile(self, *targets):
        named = ("--target", *targets) if targets else ()
        code = self.run(["cmake", "--build", self.build, *named], seconds=900)
        if code is None:
            raise SystemExit(f"{self.name}: the build does not end")
        return code == 0

    def notices(self, test, *arguments):
        seconds = 15 + 8 * test.seconds
        code = self.run([*test.command, *arguments], seconds, test.folder, test.environment, limited=True)
        return code if code is None else code != 0

    def put_back(self):
        if self.changed:
            (self.folder / self.changed).write_bytes((ROOT / self.changed).read_bytes())
            self.changed = None

    def try_mutant(self, mutant, under_valgrind):
        """The state of the mutant, and the test that caught it."""
        if self.changed != mutant.file:
            self.put_back()
        if under_valgrind:
            self.must_pass_unchanged(self.memchecks_for(mutant.file))
        source = (ROOT / mutant.file).read_text()
        self.changed = mutant.file
        (self.folder / mutant.file).write_text(source[: mutant.begin] + mutant.replacement + source[mutant.end :])
        if not self.compile("kelmo_localizer", "kelmo"):
            return "not compiled", ""
        if under_valgrind:
            return self.try_under_valgrind(self.memchecks_for(mutant.file))
        own = self.own_test(mutant.file)
        built = [test for test in self.tests if test.name in ("end_to_end_test", "values_test")]
        plan = [(None, test, ()) for test in built] if mutant.file.endswith(".h") else []
        if own:
            plan.append((own[0], own[1], own[2:]))
        plan += [("all", test, ()) for test in self.tests if test not in built or not mutant.file.endswith(".h")]
        ready = set()
        for target, test, arguments in plan:
            targets = self.programs or () if target == "all" else (target,)
            if target and target not in ready and not self.compile(*targets):
                return "caught", "the build of the tests"
            ready.add(target)
            noticed = self.notices(test, *arguments)
            if noticed is None:
                return "timed out", test.name
            if noticed:
                return "caught", test.name
        return "survived", ""

    def memchecks_for(self, file):
        """The programs, their tests under valgrind and the arguments."""
        own = self.own_test(file)
        test = own and self.memchecks.get(MEMCHECK + own[0])
        checks = [(own[0], test, (own[2],))] if test else []
        return checks + [(name[len(MEMCHECK) :], self.memchecks[name], arguments)
                         for name, arguments in MEMCHECK_OF_ALL.items() if name in self.memchecks]

    def must_pass_unchanged(self, checks):
        for target, test, arguments in checks:
            if (target, arguments) not in self.passed_under_valgrind:
                self.put_back()
                if not self.compile(target) or self.notices(test, *arguments) is not False:
                    raise SystemExit(f"{self.name}: this fails or does not end without a mutant: {test.name}")
                self.passed_under_valgrind.add((target, arguments))

    def try_under_valgrind(self, checks):
        for target, test, arguments in checks:
            if not self.compile(target):
                return "caught", "the build of the tests"
            if self.notices(test, *arguments):  # a timeout does not count: valgrind is slow
                return "caught", test.name
        return "survived", ""

    def end(self):
        self.put_back()
        if self.system == "windows":
            self.run([self.folder / "tools/wine.sh", "--stop"])


def windows_decides(mutant):
    """Whether only the Windows build compiles or covers that code."""
    if ONLY_ON_WINDOWS.search(mutant.file):
        return True
    lines = (ROOT / mutant.file).read_text().split("\n")
    for number in range(mutant.line - 1, -1, -1):
        reason = NOT_COVERED.match(lines[number])
        if reason:
            between = [line for line in lines[number:mutant.line] if line.strip()]
            return all(line.startswith(reason.group(1)) for line in between)
        if not lines[number].startswith(" "):
            return False
    return False


# ---- The run


class Run:
    """`chosen` and `wanted` as choose() gives them."""

    def __init__(self, chosen, wanted, jobs, earlier):
        self.waiting, self.wanted, self.jobs = chosen, wanted, jobs
        self.lock = threading.Lock()
        self.at_work = set()
        self.results = {}  # name: (mutant, state, test)
        self.failure = None
        for group, mutants in self.waiting.items():
            for mutant in [m for m in mutants if m.name in earlier]:
                self.results[mutant.name] = (mutant, *earlier[mutant.name])
                mutants.remove(mutant)
                self.wanted[group] -= earlier[mutant.name][0] != "not compiled"

    def take(self, windows, last_file):
        """The next mutant of the worker's file, or of the file with the most work left, preferably one without a worker."""
        with self.lock:
            for group, missing in self.wanted.items():  # takes from others if too many did not compile
                if missing > 0 and not self.waiting[group]:
                    other = max(self.waiting, key=lambda g: len(self.waiting[g]) - self.wanted[g])
                    self.wanted[group] = 0
                    self.wanted[other] += missing if other != group else 0
            groups = [g for g in self.waiting if g[1] == windows and self.wanted[g] > 0 and self.waiting[g]]
            if not groups:
                return None
            group = (last_file, windows)
            if group not in groups:
                group = max(groups, key=lambda g: (g not in self.at_work, g[0].endswith(".cpp"), self.wanted[g]))
            self.at_work.add(group)
            self.wanted[group] -= 1
            return self.waiting[group].pop(0)

    def note(self, mutant, state, test, seconds):
        with self.lock:
            self.results[mutant.name] = (mutant, state, test)
            with open(RESULTS, "a", encoding="utf-8") as log:
                print(mutant.name, state, test, sep="\t", file=log)
            if state == "not compiled":
                self.wanted[mutant.file, windows_decides(mutant)] += 1  # try another one instead
            by = f" by {test}" if test else ""
            print(f"{len(self.results):5} {state}{by} ({seconds:.0f} s): {mutant.name}: {mutant.file}:{mutant.line}: "
                  f"{mutant.change}", flush=True)

    def work(self, tree, next_mutant, under_valgrind=False):
        try:
            tree.prepare()
            file = None
            while True:
                mutant = next_mutant(file)
                if mutant is None:
                    break
                file = mutant.file
                begun = time.monotonic()
                state, test = tree.try_mutant(mutant, under_valgrind)
                (WORK / "logs" / mutant.name).write_bytes(tree.log.read_bytes())
                self.note(mutant, state, test and f"{test}, {tree.system}", time.monotonic() - begun)
        except BaseException as error:  # the run must fail if a worker fails
            self.failure = error
            raise
        finally:
            tree.end()

    def in_parallel(self, *workers):
        threads = [threading.Thread(target=self.work, args=worker) for worker in workers]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        if self.failure:
            raise SystemExit(str(self.failure))

    def survivors(self):
        return [m for m, state, _ in self.results.values() if state == "survived"]

    def pop(self, mutants):
        with self.lock:
            return mutants.pop(0) if mutants else None

    def all(self):
        if any(not windows and self.wanted[file, windows] for file, windows in self.waiting):
            self.in_parallel(*((Tree(f"linux-{i}", "linux"), lambda file: self.take(False, file))
                               for i in range(self.jobs)))
        # Grouped by file, because a change of the file compiles two files again.
        survivors = sorted(self.survivors(), key=lambda m: (windows_decides(m), m.file, m.line))
        left = [m for m in survivors if not windows_decides(m)]
        if left:
            self.in_parallel(*((Tree(f"linux-{i}", "linux"), lambda file: self.pop(left), True)
                               for i in range(self.jobs)))
        on_windows = [m for m in self.survivors() if DIFFERS_ON_WINDOWS.search(m.source)]
        if on_windows or any(windows and self.wanted[file, windows] for file, windows in self.waiting):
            self.in_parallel((Tree("windows", "windows"), lambda file: self.take(True, file) or
                              self.pop(on_windows)))


def choose(mutants, known, arguments):
    """{(file, whether Windows decides): mutants in the order of trying}, and how many of each group to build."""
    everything = [m for file in mutants.values() for m in file]
    chosen, limit = mutants, arguments.number
    if arguments.what or arguments.survivors:
        names = set(arguments.what)
        if arguments.survivors:
            names |= set((WORK / "survivors.txt").read_text().split())
        here = [m for m in everything if m.name in names or m.file in names
                or any(m.file.startswith(name.rstrip("/") + "/") for name in names)]
        chosen = collections.defaultdict(list)
        for mutant in here:
            chosen[mutant.file].append(mutant)
        limit = limit or len(here)
    elif arguments.all:
        limit = len(everything)
    limit = limit or DEFAULT_NUMBER
    run = collections.defaultdict(list)
    for file, list_ in chosen.items():
        mixed = list(list_)  # also equivalent ones: new entries in the list do not change the order of the others
        random.Random(f"{arguments.seed} {file}").shuffle(mixed)
        for mutant in mixed:
            if mutant.name not in known or mutant.name in arguments.what:
                run[file, windows_decides(mutant)].append(mutant)
    total = sum(map(len, run.values()))
    wanted = {g: min(len(list_), max(MIN_PER_FILE, round(limit * len(list_) / total))) for g, list_ in run.items()}
    while sum(wanted.values()) < min(limit, total):
        wanted[max(run, key=lambda g: len(run[g]) - wanted[g])] += 1
    return dict(run), wanted


def report(results, known, mutants, wanted, minutes):
    states = ("caught", "timed out", "survived", "not compiled")
    files = sorted({m.file for m, _, _ in results.values()})
    print(f"\n{'':38}" + "".join(f"{state:>14}" for state in states) + f"{'equivalent':>14}")
    totals = collections.Counter()
    for file in files:
        counts = collections.Counter(state for m, state, _ in results.values() if m.file == file)
        counts["equivalent"] = sum(m.name in known for m in mutants[file])
        totals += counts
        print(f"{file:38}" + "".join(f"{counts[state]:14}" for state in (*states, "equivalent")))
    print(f"{'all':38}" + "".join(f"{totals[state]:14}" for state in (*states, "equivalent")))
    survivors = sorted((m for m, state, _ in results.values() if state == "survived"), key=lambda m: (m.file, m.line))
    if survivors:
        print("\nSurvivors. Write a test for each, or list it with a reason in " + EQUIVALENT)
    for m in survivors:
        print(f"{m.name}\n  {m.file}:{m.line}: {m.source}\n    {m.change}")
    caught = totals["caught"] + totals["timed out"]
    built = caught + totals["survived"]
    share = caught / built if built else 0.0
    print(f"\n{sum(map(len, mutants.values()))} mutants exist, {built} built and tested in {minutes:.0f} minutes: "
          f"{caught} caught ({100 * share:.1f} %), {totals['survived']} survived; "
          f"{totals['not compiled']} did not compile.")
    (WORK / "survivors.txt").write_text("".join(f"{m.name}\n" for m in survivors))
    lost = wanted - built - totals["not compiled"]
    if lost > 0:
        print(f"{lost} mutants were not tried.")
    return not survivors and lost <= 0 and built > 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("what", nargs="*", help="files, folders or names of mutants")
    parser.add_argument("--number", type=int, help=f"how many mutants to build (default: {DEFAULT_NUMBER})")
    parser.add_argument("--seed", type=int, default=1, help="seed of the random selection")
    parser.add_argument("--all", action="store_true", help="all mutants")
    parser.add_argument("--survivors", action="store_true", help="the survivors of the last run")
    parser.add_argument("--continue", dest="go_on", action="store_true", help="continue an interrupted run")
    parser.add_argument("--jobs", type=int, default=2, help="how many mutants at a time")
    parser.add_argument("--list", action="store_true", help="only print the mutants")
    arguments = parser.parse_args()

    mutants = all_mutants()
    known, wrong = equivalent_mutants(mutants, (ROOT / EQUIVALENT).read_text())
    if wrong:
        sys.exit(f"{EQUIVALENT} is out of date:\n" + "\n".join(wrong))
    chosen, wanted = choose(mutants, known, arguments)
    if not chosen:
        sys.exit("There is no such mutant, or all of them are listed as equivalent.")
    if arguments.list:
        for group, list_ in chosen.items():
            for m in sorted(list_[: wanted[group]], key=lambda m: m.begin):
                print(f"{m.name}\t{m.file}:{m.line}: {m.source}\t{m.change}")
        return
    (WORK / "logs").mkdir(parents=True, exist_ok=True)
    earlier = {}
    if arguments.go_on and RESULTS.exists():
        earlier = {line.split("\t")[0]: line.split("\t")[1:] for line in RESULTS.read_text().splitlines()}
    else:
        RESULTS.write_text("")
    number = sum(wanted.values())
    run = Run(chosen, wanted, arguments.jobs, earlier)
    begun = time.monotonic()
    run.all()
    if not report(run.results, known, mutants, number, (time.monotonic() - begun) / 60):
        sys.exit(1)


if __name__ == "__main__":
    main()
