"""tests/consumer/check_consumer.cmake refuses a wrong installation, and a library that affects the build of its users.
So does check_kelmo_consumer.cmake with a wrong installation of kelmo.

    python3 consumer_test.py CMAKE C-COMPILER COMPILER OBJDUMP NM BUILD-FOLDER INSTALLED-FILES
"""

import shutil
import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

CMAKE, C_COMPILER, COMPILER, OBJDUMP, NM, BUILD, INSTALLED = sys.argv[1:] if __name__ == "__main__" else [""] * 7

# The rows change the installed package of the library in BUILD. Another library, made up here, is built with the host.
HOST, SECOND_HOST, LIBRARY = "examples/first_host.cpp", "examples/first_values.cpp", "CMakeLists.txt"
PROJECT, INSTALL, LIST = "tests/consumer/host/CMakeLists.txt", "build/cmake_install.cmake", "installed_files.txt"
README = "README.md"
FILES = {
    HOST: 'int Print(const char*);\nint main() { return Print("Hello"); }\n',
    SECOND_HOST: 'int Print(const char*);\nint main() { return Print("1.5 m"); }\n',
    "examples/print.h": "",
    "library.cpp": "#include <cstdio>\nint Print(const char* text) { return std::puts(text) == EOF; }\n",
    LIBRARY: """add_library(kelmo_localizer SHARED library.cpp)
add_library(kelmo::localizer ALIAS kelmo_localizer)
""",
    "tests/data/examples/first_host.txt": "Hello\n",
    "tests/data/examples/first_values.txt": "1.5 m\n",
}
REAL_HOST = '#include <cstdio>\n#include "kelmo_localizer.h"\nint main() { ClearErrors(); std::puts("Hello"); }\n'
REACHED = "the library's tests, examples or definitions reach its users"
WARNED = "the library's warnings reach its users"
INSTALLED_ROWS = (
    Row("a file that is not listed", LIST, "include/kelmo_localizer.h\n", "", "the installation has include/kelmo"),
    Row("a listed file that is not installed", LIST, "include/kelmo_localizer.h", "include/kelmo_localized.h\ninclude/kelmo_localizer.h",
        "include/kelmo_localized.h include/kelmo_localizer.h"),
    Row("a symbol table", README, " --strip", "", "There is a symbol table in"),
    Row("a name that is not listed", "exported_names.txt", "GetError\n", "", "GetErrorsCount Init"),
    Row("another text", "tests/data/examples/first_host.txt", "Hello", "Hallo", "printed Hello instead of Hallo"),
    Row("another text of the second host", "tests/data/examples/first_values.txt", "Hello", "Hallo",
        "printed Hello instead of Hallo"),
    Row("a host that fails", HOST, 'std::puts("Hello");', "return 3;", "ended with 3 after"),
    Row("a host that does not compile", HOST, "ClearErrors();", "ClearFaults();", "ClearFaults"),
    Row("a host without the library's files", PROJECT, "install(IMPORTED_RUNTIME_ARTIFACTS kelmo::localizer)", "",
        "shipped/bin/host ended with"),
    Row("a package for all systems", INSTALL, "# and nothing more", 'file(APPEND "${package}ConfigVersion.cmake"'
        ' "set(PACKAGE_VERSION_UNSUITABLE FALSE)\\n")', "the package was accepted for another system"),
)
KELMO = "tests/consumer/kelmo_host"
KELMO_ROWS = (
    Row("another text", f"{KELMO}/output.txt", "Öffnen", "Schließen", "printed pump.start: Öffnen"),
    Row("a name that is not listed", "host/kelmo_exports_windows.def", "    kelmo_version\n", "", "kelmo_version"),
    Row("a symbol table", README, " --strip", "", "There is a symbol table in"),
    Row("options without the library", INSTALL, "# and nothing more",
        'file(WRITE "${CMAKE_INSTALL_PREFIX}/lib/pkgconfig/kelmo.pc" "Name: kelmo\nDescription: none\nVersion: 0.1\n")',
        "kelmo/kelmo.h: No such file"),
    Row("a host without the library's file", f"{KELMO}/CMakeLists.txt", "install(IMPORTED_RUNTIME_ARTIFACTS kelmo::kelmo)", "",
        "shipped/bin/c_host ended with"),
    Row("a first program that prints something else", "tests/data/examples/first_texts.txt", "3 Alarme", "3 Alarms",
        "first_texts printed Pumpe einschalten"),
    Row("a first project without the library", "tests/consumer/first_texts/CMakeLists.txt",
        "target_link_libraries(first_texts PRIVATE kelmo::kelmo)", "", "kelmo/kelmo.hpp: No such file"),
    Row("a host in C++ that does not compile", f"{KELMO}/host.cpp", "#include <optional>\n", "#include <optimal>\n", "optimal"),
)
WITH_THE_HOST_ROWS = (
    Row("the library's warnings", LIBRARY, "ALIAS kelmo_localizer)\n",
        "ALIAS kelmo_localizer)\ntarget_compile_options(kelmo_localizer PUBLIC -Wall)\n", WARNED),
    Row("a warning", "library.cpp", "int Print(const", "#warning here\nint Print(const", WARNED),
    Row("the library's definitions", LIBRARY, "ALIAS kelmo_localizer)\n",
        "ALIAS kelmo_localizer)\ntarget_compile_definitions(kelmo_localizer PUBLIC KELMO_LOCALIZER_BUILDING)\n", REACHED),
    Row("the library's tests", LIBRARY, "ALIAS kelmo_localizer)\n",
        "ALIAS kelmo_localizer)\nconfigure_file(examples/first_host.cpp some_test.cpp)\n"
        "add_library(some_test OBJECT ${CMAKE_CURRENT_BINARY_DIR}/some_test.cpp)\n", REACHED),
    Row("the library's install rules", LIBRARY, "ALIAS kelmo_localizer)\n",
        "ALIAS kelmo_localizer)\ninstall(FILES library.cpp DESTINATION include)\n", "the library's install rules reach"),
)


def write_folder(folder):
    write(folder, FILES)
    shutil.copytree(TOP / "tests/consumer", folder / "tests/consumer")
    shutil.copytree(TOP / "tests/abi", folder / "tests/abi")
    (folder / "host").mkdir()
    shutil.copy(TOP / "host/kelmo_exports_windows.def", folder / "host")


def write_folder_to_install(folder):
    write_folder(folder)
    shutil.copy(INSTALLED, folder / LIST)
    shutil.copy(TOP / "tests/abi/exported_names_gnu.txt", folder / "exported_names.txt")
    shutil.copytree(TOP / "examples/texts", folder / "examples/texts")
    write(folder, {name: (TOP / name).read_text("utf-8")
                   for name in ("examples/first_texts.cpp", "tests/data/examples/first_texts.txt")})
    write(folder, {
        HOST: REAL_HOST,
        SECOND_HOST: REAL_HOST,
        "tests/data/examples/first_values.txt": "Hello\n",
        README: "cmake --install build/linux-release --prefix DIR --strip\n",
        INSTALL: f"""
if(CMAKE_INSTALL_DO_STRIP)
  set(strip --strip)
endif()
execute_process(COMMAND ${{CMAKE_COMMAND}} --install "{BUILD}" --prefix ${{CMAKE_INSTALL_PREFIX}} ${{strip}}
  COMMAND_ERROR_IS_FATAL ANY)
set(package "${{CMAKE_INSTALL_PREFIX}}/lib/cmake/kelmo_Mestrel_Localizer/kelmo_Mestrel_Localizer")
# and nothing more
"""})


NAME = "да"  # no blank: CMake does not quote the folders of a program's libraries for the linker


def command(folder, way, checker="check_consumer"):
    return [CMAKE, f"-DBY={way}", f"-DWORK={folder}/work", f"-DLIBRARY_SOURCE={folder}", f"-DLIBRARY_BUILD={folder}/build",
            "-DGENERATOR=Ninja", f"-DOPTIONS=-D;CMAKE_C_COMPILER={C_COMPILER};-D;CMAKE_CXX_COMPILER={COMPILER}",
            "-DEMULATOR=", f"-DC_COMPILER={C_COMPILER}", "-DPKG_CONFIG=pkg-config",
            f"-DINSTALLED_FILES={folder / LIST}", f"-DEXPORTED_NAMES={folder}/exported_names.txt", f"-DOBJDUMP={OBJDUMP}",
            f"-DNM={NM}", "-P", folder / f"tests/consumer/{checker}.cmake"]


class Consumer(RefusalTest):
    def test_each_fault_of_an_installation_is_refused(self):
        self.refuses_each(write_folder_to_install, lambda folder: command(folder, "find_package"), INSTALLED_ROWS, NAME)

    def test_each_fault_of_an_installation_of_kelmo_is_refused(self):
        self.refuses_each(write_folder_to_install, lambda folder: command(folder, "find_package", "check_kelmo_consumer"),
                          KELMO_ROWS, NAME)

    def test_a_library_that_affects_the_build_of_its_host_is_refused(self):
        self.refuses_each(write_folder, lambda folder: command(folder, "add_subdirectory"), WITH_THE_HOST_ROWS, NAME)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
