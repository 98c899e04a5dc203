"""tests/host/check_other_compilers.py refuses a library or a host that does not work with another compiler.

    python3 kelmo_compilers_test.py LIBRARY
"""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row

LIBRARY = sys.argv[1] if __name__ == "__main__" else ""
HOSTS = "tests/consumer/kelmo_host"
ROWS = (
    Row("another text", f"{HOSTS}/output.txt", "Öffnen", "Schließen", "C by Clang printed pump.start: Öffnen"),
    Row("a host that fails", f"{HOSTS}/host.c", "return status == KELMO_OK ? 0 : 1;", "return 3;", "c_host ended with 3"),
    Row("a warning of Clang", f"{HOSTS}/host.cpp", "void Run() {", "void Run() {\n  int unused;", "unused variable 'unused'"),
    Row("an older C++", f"{HOSTS}/host.cpp", "void Run() {", "void Run() {\n  std::auto_ptr<int> pointer;", "auto_ptr"),
    Row("a function that the library lacks", f"{HOSTS}/host.c", "int main(void) {",
        "KELMO_API int kelmo_other(void);\nint main(void) {\n  kelmo_other();", "undefined reference to `kelmo_other'"),
)


def write_folder(folder):
    shutil.copytree(TOP / "include", folder / "include")
    shutil.copytree(TOP / HOSTS, folder / HOSTS)


class KelmoCompilers(RefusalTest):
    def test_each_fault_is_refused(self):
        self.refuses_each(write_folder, lambda folder: [
            sys.executable, TOP / "tests/host/check_other_compilers.py", folder, folder / "work", LIBRARY], ROWS)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
