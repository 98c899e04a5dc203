"""Builds the project in the folder host with the package that Microsoft's compiler would install.

    python3 check_microsoft_consumer.py TOP-FOLDER WORK-FOLDER

Clang replaces that compiler; under the name clang-cl it reads the same options. CMake identifies it as Clang or, with
the definitions below, as Microsoft's compiler. Nothing is linked: the files of the library are empty, and only the
object of the host is built.

- The installation has the listed files.
- Only Microsoft's compiler compiles the host so that it catches the exceptions of GetError, unless this is disabled.
- A debug host is rejected, because its runtime differs from that of the installed release build.
"""

import json
import os
import pathlib
import shutil
import subprocess
import sys

top, work = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
HOST = """#include "kelmo_localizer.h"
int main() {
  KelmoLibs::Localize::Phyval::Double side(1.5, 0.01, 0, 10001);
  try {
    GetError(static_cast<int32_t>(GetErrorsCount()));
  } catch (...) {
    side.value = 0;
  }
  return side.value > 0;
}
"""
HANDLER = b"__CxxFrameHandler"
REFUSAL = "built with /MD, cannot be used here: compile the host with the same runtime"
MICROSOFT = ("CMAKE_CXX_COMPILER_ID_RUN=1", "CMAKE_CXX_COMPILER_FORCED=1", "CMAKE_CXX_COMPILER_ID=MSVC",
             "CMAKE_CXX_COMPILER_VERSION=19.44", "MSVC_CXX_ARCHITECTURE_ID=x64")


def run(*command):
    return subprocess.run(list(map(str, command)), check=False, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          encoding="utf-8", errors="replace", env=environment)


def must_run(*command):
    made = run(*command)
    if made.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))} ended with {made.returncode} after\n{made.stdout}")


def configure(source, build, *definitions):
    definitions = (
        "CMAKE_SYSTEM_NAME=Windows", "CMAKE_SYSTEM_PROCESSOR=AMD64", "CMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY",
        f"CMAKE_C_COMPILER={compiler}", f"CMAKE_CXX_COMPILER={compiler}", "CMAKE_EXPORT_COMPILE_COMMANDS=ON", *definitions)
    must_run("cmake", "-G", "Ninja", "-S", source, "-B", build, *(f"-D{definition}" for definition in definitions))


def installed(prefix, *definitions):
    build = work / f"{prefix}_build"
    configure(top, build, "CMAKE_BUILD_TYPE=Release", "KELMO_LOCALIZER_TESTS=OFF", "KELMO_LOCALIZER_EXAMPLES=OFF",
              "KELMO_LOCALIZER_LANG=OFF", *definitions)
    for file in ("bin/kelmo_Mestrel_Localizer.dll", "lib/kelmo_Mestrel_Localizer.lib", "bin/kelmo-0.dll", "lib/kelmo.lib"):
        (build / file).parent.mkdir(exist_ok=True)
        (build / file).touch()
    must_run("cmake", "--install", build, "--prefix", work / prefix)
    return work / prefix


def built(prefix, name, build_type, *definitions):
    """The compiler's output, the object or None, and the command."""
    build = work / name
    configure(work / "project", build, f"CMAKE_BUILD_TYPE={build_type}", f"CMAKE_PREFIX_PATH={prefix}", *definitions)
    target = pathlib.Path("CMakeFiles/host.dir/host.cpp.obj")
    made = run("cmake", "--build", build, "--target", target)
    commands = json.loads((build / "compile_commands.json").read_text("utf-8"))
    return made.stdout, (build / target).read_bytes() if made.returncode == 0 else None, commands[0]["command"]


shutil.rmtree(work, ignore_errors=True)
compiler = work / "bin/clang-cl"
compiler.parent.mkdir(parents=True)
# The path of a checkout may begin like an option of that compiler, for example /w. Behind "--" it is a file.
compiler.write_text(f"""#!/bin/bash
[ "${{*: -2:1}}" != -c ] || set -- "${{@:1:$#-1}}" -- "${{!#}}"
exec -a clang-cl '{shutil.which("clang")}' "$@"
""")
compiler.chmod(0o755)
# As at the prompt of Visual Studio, a variable names the folders of headers.
environment = {**os.environ, "CL": "--target=x86_64-pc-windows-msvc"}
for name in ("_CL_", "CFLAGS", "CXXFLAGS", "LDFLAGS"):
    environment.pop(name, None)
resources = run(compiler, "-print-resource-dir").stdout.strip()
environment["INCLUDE"] = f"{top}/tests/abi/microsoft;{resources}/include"
project = work / "project"
project.mkdir()
(project / "host.cpp").write_text(HOST)
shutil.copy(top / "tests/consumer/host/CMakeLists.txt", project)

prefix = installed("prefix")
files = sorted(file.relative_to(prefix).as_posix() for file in prefix.rglob("*") if file.is_file())
expected = (top / "tests/consumer/installed_files_microsoft.txt").read_text().splitlines()
if files != expected:
    sys.exit(f"the installation has {' '.join(files)} and the list says {' '.join(expected)}")


def check_host(name, prefix, definitions, catches):
    said, made, command = built(prefix, name, "Release", *definitions)
    if made is None:
        sys.exit(f"{name}: the host does not compile:\n{said}")
    if (HANDLER in made) != catches:
        sys.exit(f"{name}: the host has {'no handler' if catches else 'a handler'}: {command}")


check_host("microsoft", prefix, MICROSOFT, True)
check_host("clang", prefix, (), False)
said, made, _ = built(prefix, "microsoft_debug", "Debug", *MICROSOFT)
if made is not None or REFUSAL not in " ".join(said.split()):
    sys.exit(f"microsoft_debug: the host is not rejected with: {REFUSAL}\n{said}")
check_host("microsoft_without", installed("prefix_without", "KELMO_LOCALIZER_HOSTS_EHS=OFF"), MICROSOFT, False)
print(f"{len(files)} files are installed, and hosts are compiled as the package says")
