#!/usr/bin/env bash
# What the compilers do not check: the format of the sources, the shell scripts, and with clang-tidy the sources that
# only Windows has (the build of the preset linux-asan checks all others while it compiles them). Needs the Windows build.
# What passed once is checked again when a source has changed.
#
#   tools/lint.sh
set -euo pipefail

unset CDPATH
cd "$(dirname "$0")/.."

[ -e build/mingw-release/compile_commands.json ] || {
  echo 'configure the Windows build first: cmake --preset mingw-release' >&2
  exit 1
}
git rev-parse --is-inside-work-tree >/dev/null # which files there are is git's to say
files() {
  git ls-files --cached --others --exclude-standard "$@"
}

passed=build/lint/passed
mkdir -p build/lint
state=$(files -z | xargs -0 sha256sum | sha256sum)
[ "$state" != "$(cat $passed 2>/dev/null)" ] || exit 0

mapfile -t sources < <(files '*.h' '*.c' '*.cpp' ':!tests/build')
clang-format --dry-run -Werror "${sources[@]}"

shellcheck -x demo test tools/*.sh .ci/run

# The cross-compiler's commands as clang understands them: without GCC's own switch, with GCC's headers.
sed 's/ -fno-keep-inline-dllexport//' build/mingw-release/compile_commands.json >build/lint/compile_commands.json
headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
mapfile -t sources < <(files '*_windows.cpp' '*_windows_test.cpp' '*_mingw.cpp')
printf '%s\n' "${sources[@]}" | xargs -n 1 -P "$(nproc)" clang-tidy --quiet -p build/lint \
  --extra-arg=--target=x86_64-w64-windows-gnu \
  --extra-arg=-isystem"$headers" --extra-arg=-isystem"$headers/x86_64-w64-mingw32"

echo "$state" >$passed
