"""tests/consumer/check_microsoft_consumer.py refuses a package that does not suit hosts of Microsoft's compiler."""

import sys
import unittest

from refusals import TOP, RefusalTest, Row, copy_library

HOSTS, INSTALL, LIST = "cmake/microsoft_hosts.cmake", "cmake/install.cmake", "tests/consumer/installed_files_microsoft.txt"
OPTIONS = '"$<$<COMPILE_LANG_AND_ID:CXX,MSVC>:/EHs;/EHc->"'
ROWS = (
    Row("a file that is not listed", LIST, "include/kelmo_localizer_runtime.h\n", "", "the installation has bin/"),
    Row("hosts that do not catch", HOSTS, OPTIONS, '""', "microsoft: the host has no handler"),
    Row("/EHsc that stays active", HOSTS, ":/EHs;/EHc->", ":/EHs>", "microsoft: the host has no handler"),
    Row("options for other compilers", HOSTS, OPTIONS, '"/EHs;/EHc-"', "clang: the host has a handler"),
    Row("options that cannot be disabled", HOSTS, "if(KELMO_LOCALIZER_HOSTS_EHS)", "if(TRUE)",
        "microsoft_without: the host has a handler"),
    Row("a library that claims a debug runtime", HOSTS, "set(runtime MultiThreaded$<$<CONFIG:Debug>:Debug>DLL)",
        "set(runtime MultiThreadedDebugDLL)", "microsoft: the host does not compile"),
    Row("a runtime that follows the host", INSTALL,
        "  install(FILES ${runtime_folder}/kelmo_localizer_runtime.h TYPE INCLUDE)",
        """  target_compile_definitions(kelmo_localizer INTERFACE $<$<CONFIG:Debug>:KELMO_LOCALIZER_DEBUG_RUNTIME>)
  file(WRITE ${PROJECT_BINARY_DIR}/kelmo_localizer_runtime.h "")
  install(FILES ${PROJECT_BINARY_DIR}/kelmo_localizer_runtime.h TYPE INCLUDE)""",
        "microsoft_debug: the host is not rejected"),
)


def write_folder(folder):
    copy_library(folder, "NOTICES.md", "docs", "examples", "tests/abi", "tests/consumer", "units")


def command(folder):
    return [sys.executable, TOP / "tests/consumer/check_microsoft_consumer.py", folder, folder / "work"]


class MicrosoftConsumer(RefusalTest):
    def test_each_fault_of_a_package_is_refused(self):
        self.refuses_each(write_folder, command, ROWS)


if __name__ == "__main__":
    unittest.main()
