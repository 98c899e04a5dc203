"""The checks of the configuration refuse wrong warnings as errors, and a wrong configuration without a preset.

    python3 configuration_test.py CMAKE COMPILER
"""

import sys
import unittest

from refusals import TOP, RefusalTest, Row, write

CMAKE, COMPILER = sys.argv[1:] if __name__ == "__main__" else [""] * 2

# ---- tests/build/check_known_compilers.cmake

WARNINGS_FILE = "cmake/warnings.cmake"
COMPILERS_ROWS = (
    Row("a known compiler without errors", WARNINGS_FILE, "Clang-19", "Clang-18",
        "with Clang-19.1.7 the build passes and says warning, not fails and error"),
    Row("errors with another compiler", WARNINGS_FILE, "Clang-19", "Clang-19 GNU-15",
        "with GNU-15.1.0 the build fails and says error, not passes and warning"),
    Row("a version with a known prefix", WARNINGS_FILE, "[.].*", "0?[.].*",
        "with GNU-120.1.0 the build fails and says error, not passes and warning"),
    Row("a disabled warning", WARNINGS_FILE, " -Wextra", "",
        "with GNU-12.2.0 the build passes and says nothing, not fails and error"),
    Row("a user who does not want errors", WARNINGS_FILE, "NOT DEFINED CMAKE_COMPILE_WARNING_AS_ERROR AND ", "",
        "with GNU-12.2.0 -D CMAKE_COMPILE_WARNING_AS_ERROR=OFF the build fails and says error, not passes and warning"),
    Row("a user who wants errors", WARNINGS_FILE, "set(CMAKE_COMPILE_WARNING_AS_ERROR ON)\n",
        "set(CMAKE_COMPILE_WARNING_AS_ERROR ON)\n  else()\n    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)\n",
        "with GNU-15.1.0 -D CMAKE_COMPILE_WARNING_AS_ERROR=ON the build passes and says warning, not fails and error"),
    Row("warnings inside another project", WARNINGS_FILE, "if(KELMO_LOCALIZER_STRICT)", "if(TRUE)",
        "with GNU-12.2.0 -D KELMO_LOCALIZER_STRICT=OFF the build fails and says error, not passes and nothing"),
)

# ---- tests/build/check_plain_configuration.cmake

PLAIN = {
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
get_property(several GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
set(own ${CMAKE_CURRENT_SOURCE_DIR})
if(CMAKE_SOURCE_DIR STREQUAL own AND NOT several AND NOT CMAKE_BUILD_TYPE AND "$ENV{CMAKE_BUILD_TYPE}" STREQUAL "")
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
project(plain LANGUAGES NONE)
if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()
enable_testing()
set(missing)
if(CMAKE_DISABLE_FIND_PACKAGE_GTest)
  list(APPEND missing "GoogleTest (Debian: libgtest-dev)")
endif()
if(CMAKE_DISABLE_FIND_PACKAGE_Python3)
  list(APPEND missing "Python 3 (Debian: python3)")
endif()
list(JOIN missing " and " missing)
if(missing AND KELMO_LOCALIZER_TESTS)
  message(FATAL_ERROR "The tests are asked for. Install ${missing}.")
elseif(missing)
  message(STATUS "The tests are left out. To have them, install ${missing}.")
  return()
endif()
add_test(NAME unit_tests COMMAND true)
add_test(NAME long_model_test CONFIGURATIONS heavy COMMAND true)
""",
}
LEFT_OUT = 'message(STATUS "The tests are left out. To have them, install ${missing}.")'
BOTH_MISSING = "does not say in one line that GoogleTest (Debian: libgtest-dev) and Python 3 (Debian: python3) is missing"
PLAIN_ROWS = (
    Row("no build type", "CMakeLists.txt", "Release", "\"\"", "has the build type '' and not 'Release'"),
    Row("a build type with a multi-configuration generator", "CMakeLists.txt", " AND NOT several", "",
        "has the build type 'Release' and not ''"),
    Row("a build type that overrides the user's", "CMakeLists.txt", " AND NOT CMAKE_BUILD_TYPE", "",
        "has the build type 'Release' and not 'Debug'"),
    Row("a build type that overrides the environment's", "CMakeLists.txt", '"$ENV{CMAKE_BUILD_TYPE}" STREQUAL ""',
        "TRUE", "has the build type 'Release' and not 'Debug'"),
    Row("a build type for another project", "CMakeLists.txt", "CMAKE_SOURCE_DIR STREQUAL own", "TRUE",
        "has the build type 'Release' and not ''"),
    Row("no line about the tests", "CMakeLists.txt", LEFT_OUT, "", BOTH_MISSING),
    Row("two lines about the tests", "CMakeLists.txt", LEFT_OUT, f"{LEFT_OUT}\n{LEFT_OUT}", BOTH_MISSING),
    Row("only one of two missing packages", "CMakeLists.txt", '  list(APPEND missing "Python', '  set(missing "Python',
        BOTH_MISSING),
    Row("an error although the tests are not required", "CMakeLists.txt", "missing AND KELMO_LOCALIZER_TESTS", "missing",
        "configuring with -G Ninja Multi-Config"),
    Row("no error although the tests are required", "CMakeLists.txt", "missing AND KELMO_LOCALIZER_TESTS", "FALSE",
        "configuring with -D CMAKE_DISABLE_FIND_PACKAGE_Python3=ON -D KELMO_LOCALIZER_TESTS=ON ended with 0"),
    Row("an error without its reason", "CMakeLists.txt", "The tests are asked for. Install", "Missing:",
        "fails without the reason"),
    Row("tests that ctest does not know", "CMakeLists.txt", "enable_testing()", "",
        "has tests for ctest, or ctest fails"),
    Row("a test in spite of missing packages", "CMakeLists.txt", "set(missing)\n",
        "set(missing)\nadd_test(NAME early COMMAND true)\n", "has tests for ctest, or ctest fails"),
    Row("no tests in spite of all packages", "CMakeLists.txt", "NAME unit_tests", "NAME no_tests",
        "has the wrong tests"),
    Row("long runs", "CMakeLists.txt", " CONFIGURATIONS heavy", "", "has the wrong tests"),
    Row("a line about tests inside another project", "CMakeLists.txt", "if(NOT PROJECT_IS_TOP_LEVEL)",
        "if(NOT PROJECT_IS_TOP_LEVEL)\n  message(STATUS tests)", "inside another project the library mentions its tests"),
)


class Configuration(RefusalTest):
    def test_errors_for_other_compilers_are_refused(self):
        text = (TOP / WARNINGS_FILE).read_text("utf-8")
        self.refuses_each(lambda folder: write(folder, {WARNINGS_FILE: text}), lambda folder: [
            CMAKE, f"-DSOURCE={folder}", f"-DWORK={folder}/work", "-DGENERATOR=Ninja", f"-DCOMPILER={COMPILER}",
            "-P", TOP / "tests/build/check_known_compilers.cmake"], COMPILERS_ROWS)

    def test_a_plain_configuration_that_fails_is_refused(self):
        self.refuses_each(lambda folder: write(folder, PLAIN), lambda folder: [
            CMAKE, f"-DSOURCE={folder}", f"-DWORK={folder}/work", "-P", TOP / "tests/build/check_plain_configuration.cmake"],
            PLAIN_ROWS)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
