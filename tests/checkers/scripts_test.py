"""tools/fuzz.sh and tools/matrix.sh refuse failures and wrong output of the programs that they run, which are made up
here."""

import os
import unittest

from refusals import TOP, RefusalTest, Row, new_folder, write

# ---- tools/fuzz.sh

FUZZER = "#!/bin/sh\necho '#2 DONE cov: 7 ft: 8'\necho 'stat::number_of_executed_units: 12'\n"
ONE, TWO = "build/linux-fuzz/bin/one_fuzzer", "build/linux-fuzz/bin/two_fuzzer"
FUZZERS = {ONE: FUZZER, TWO: FUZZER}
FUZZ_ROWS = (
    Row("a fuzzer with a finding", ONE, "12'\n", "12'\necho 'ERROR: libFuzzer: deadly signal'\nexit 77\n",
        "one 12 runs 7 branches FOUND SOMETHING"),
    Row("a fuzzer that crashes without output", TWO, None, "#!/bin/sh\nkill -SEGV $$\n",
        "two 0 runs 0 branches FOUND SOMETHING"),
    Row("a fuzzer that has run nothing", ONE, "units: 12", "units: 0", "one 0 runs 7 branches DID NOT RUN"),
    Row("a fuzzer that does not report its runs", TWO, "stat::", "", "two 0 runs 7 branches DID NOT RUN"),
    Row("a missing fuzzer", TWO, None, None, "two 0 runs 0 branches FOUND SOMETHING"),
)

# Like libFuzzer, it restarts itself for a merge without quoting its arguments.
MERGING_FUZZER = """#!/bin/sh
[ "$again" ] || again=1 exec sh -c "$0 $*"
cp "$4"/* "$3"
"""

# ---- tools/matrix.sh

# The folder of a build has its name, for example gcc-O0, and gets a copy of each program.
CMAKE, CTEST, OPERATIONS, NUMBERS = "bin/cmake", "bin/ctest", "programs/generated_operations", "programs/generated_numbers"
PRINTS = "#!/bin/sh\nsum=1234\necho $sum\n"
BUILDS = {
    CMAKE: """#!/bin/sh
[ "$1" = --build ] || exit 0
mkdir -p "$2/bin"
for program in programs/*; do
  case $2 in
    *mingw*) [ "$program" = programs/generated_numbers ] || cp "$program" "$2/bin/${program#*/}.exe" ;;
    *) cp "$program" "$2/bin" ;;
  esac
done
# this build is done
""",
    CTEST: "#!/bin/sh\n# these tests pass\n",
    "tools/wine.sh": '#!/bin/sh\ncase $1 in --*) exit ;; esac\n"$@"\n',
    "bin/qemu-aarch64": '#!/bin/sh\nshift 2\n"$@"\n',
    OPERATIONS: PRINTS,
    NUMBERS: PRINTS,
    "programs/model_test": "#!/bin/sh\n",
    "programs/model_inside_test": "#!/bin/sh\n",
}


def where(build, command):
    return f'case "$0 $*" in *{build}*) {command} ;; esac\n'


MATRIX_ROWS = (
    Row("a build that fails", CMAKE, "# this build is done", where("clang-O2", "exit 1"), "clang-O2 no - -"),
    Row("a build without a program", CMAKE, "# this build is done",
        where("gcc-O2", 'rm "$2/bin/generated_operations"'), "gcc-O2 yes values no"),
    Row("a build for Windows without a program", CMAKE, "# this build is done",
        where("mingw-O2", 'rm "$2/bin/generated_operations.exe"'), "mingw-O2 yes values no"),
    Row("a build without the numbers", CMAKE, "# this build is done",
        where("clang-O0", 'rm "$2/bin/generated_numbers"'), "clang-O0 yes values no"),
    Row("tests that fail", CTEST, "# these tests pass", where("mingw-O3", "exit 8"), "mingw-O3 yes no yes"),
    Row("no tests at all", CTEST, "# these tests pass", where("--no-tests=error", "exit 8"), "clang-O3 yes no yes"),
    Row("a model that differs", "programs/model_test", "#!/bin/sh\n", f"#!/bin/sh\n{where('gcc-O3', 'exit 1')}",
        "gcc-O3 yes no yes"),
    Row("other operations", OPERATIONS, "echo", f"{where('mingw-O0', 'sum=1235')}echo", "mingw-O0 yes values no"),
    Row("other operations on another processor", OPERATIONS, "echo", f"{where('arm64-O2', 'sum=1235')}echo",
        "arm64-O2 yes values no"),
    Row("other numbers", NUMBERS, "echo", f"{where('clang-O3', 'sum=1235')}echo", "clang-O3 yes whole no"),
    Row("operations that fail", OPERATIONS, "echo $sum\n", f"echo $sum\n{where('gcc-O3', 'exit 1')}",
        "gcc-O3 yes values no"),
    Row("operations without output in all builds", OPERATIONS, "echo $sum\n", "", "gcc-O0 yes values no"),
)


class Scripts(RefusalTest):
    def test_a_fuzzer_that_finds_something_or_runs_nothing_is_refused(self):
        def write_folder(folder):
            write(folder, {**FUZZERS, "tests/fuzz/corpus/README": "", "tools/fuzz.sh": (TOP / "tools/fuzz.sh").read_text()})

        self.refuses_each(write_folder, lambda folder: [folder / "tools/fuzz.sh", "1", "one", "two"], FUZZ_ROWS)

    def test_missing_fuzzers_are_refused(self):
        def write_folder(folder):
            write(folder, {ONE: FUZZER, "tools/fuzz.sh": (TOP / "tools/fuzz.sh").read_text()})

        self.refuses_each(write_folder, lambda folder: [folder / "tools/fuzz.sh", "1"],
                          [Row("none", ONE, None, None, "there are no fuzzers")])

    def test_a_merge_adds_to_the_corpus_in_a_folder_with_any_name(self):
        def write_folder(folder):
            write(folder, {ONE: MERGING_FUZZER, "tools/fuzz.sh": (TOP / "tools/fuzz.sh").read_text(),
                           "tests/fuzz/corpus/one/old": "", "build/fuzz/one/corpus/new": "", "build/fuzz/one/work/any": ""})

        with new_folder(write_folder) as folder:
            self.accepts([folder / "tools/fuzz.sh", "--merge", "one"])
            self.assertTrue((folder / "tests/fuzz/corpus/one/new").exists())

    def test_a_build_with_other_results_is_refused(self):
        def write_folder(folder):
            write(folder, {**BUILDS, "tools/matrix.sh": (TOP / "tools/matrix.sh").read_text()})

        self.refuses_each(write_folder, lambda folder: [
            "env", f"PATH={folder}/bin:{os.environ['PATH']}", folder / "tools/matrix.sh"], MATRIX_ROWS)


if __name__ == "__main__":
    unittest.main()
