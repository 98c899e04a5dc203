"""tests/abi/check_microsoft_runtimes.py refuses a header that accepts another runtime, or rejects too much."""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row

HEADER = "include/kelmo_localizer.h"
ROWS = (
    Row("no check of the linkage", HEADER, "defined(_DLL) == defined(KELMO_LOCALIZER_STATIC_RUNTIME) || \\\n", "\\\n",
        "a host with /MT of a library with /MD is not refused"),
    Row("no check of the debug runtime", HEADER,
        " || \\\n    defined(_DEBUG) != defined(KELMO_LOCALIZER_DEBUG_RUNTIME)", "",
        "a host with /MD that defines _DEBUG is not refused"),
    Row("no check of the debug level", HEADER, "_ITERATOR_DEBUG_LEVEL != 2 *", "_ITERATOR_DEBUG_LEVEL > 2 *",
        "a host with /MDd and the level 0 is not refused"),
    Row("two debug heaps", HEADER, "#elif !defined(_DLL) && defined(_DEBUG)", "#elif 0",
        "a host with /MTd of a library with /MTd is not refused"),
    Row("a library that refuses itself", HEADER, "defined(_DEBUG) && !defined(KELMO_LOCALIZER_BUILDING)", "defined(_DEBUG)",
        "the library with /MTd is refused"),
    Row("another name of the runtime", HEADER, 'KELMO_LOCALIZER_RUNTIME "/MDd"', 'KELMO_LOCALIZER_RUNTIME "/MD"',
        "a host with /MD of a library with /MDd is not refused"),
    Row("a missing include of the runtime", HEADER, '#include "kelmo_localizer_runtime.h"', "",
        "a host with /MDd of a library with /MDd is refused"),
    Row("no switch to accept any runtime", HEADER, " && \\\n    !defined(KELMO_LOCALIZER_ANY_RUNTIME)", "",
        "a host with /MTd and KELMO_LOCALIZER_ANY_RUNTIME is refused"),
    Row("rejected tests", HEADER, "#if defined(_WIN32) && defined(_MSC_VER) && !defined(KELMO_LOCALIZER_STATIC)",
        "#if defined(_WIN32) && defined(_MSC_VER)", "a host with /MTd and KELMO_LOCALIZER_STATIC is refused"),
    Row("rejected functions", HEADER, "#if defined(KELMO_LOCALIZER_REFUSAL)",
        "#if defined(KELMO_LOCALIZER_REFUSAL)\n#error another runtime", "that calls only functions is refused"),
    Row("no name of the runtime for the linker", HEADER, 'detect_mismatch("kelmo_Mestrel_Localizer"', 'detect_mismatch("kelmo"',
        "the linker is not told"),
)


def write_folder(folder):
    for part in ("include", "tests/abi", "tests/support"):
        shutil.copytree(TOP / part, folder / part)


def command(folder):
    return [sys.executable, TOP / "tests/abi/check_microsoft_runtimes.py", folder]


class MicrosoftRuntimes(RefusalTest):
    def test_each_difference_is_refused(self):
        self.refuses_each(write_folder, command, ROWS)


if __name__ == "__main__":
    unittest.main()
