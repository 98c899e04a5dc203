#!/usr/bin/env bash
# What the compilers do not check: the format of the sources, the shell scripts, and with cppcheck and clang-tidy all C++
# sources of the builds for Linux and Windows, which must have been configured. A source that has passed clang-tidy is
# checked again when it, a header or a rule has changed.
#
#   tools/lint.sh             all of them
#   tools/lint.sh --library   with clang-tidy those of the library and the examples alone: half of the time
set -euo pipefail

unset CDPATH
cd "$(dirname "$0")/.."

for preset in linux-release mingw-release; do
  [ -e build/$preset/compile_commands.json ] || {
    echo "configure the builds first: cmake --preset $preset" >&2
    exit 1
  }
done
git rev-parse --is-inside-work-tree >/dev/null # which files there are is git's to say
files() {
  git ls-files --cached --others --exclude-standard "$@"
}

mapfile -t sources < <(files '*.h' '*.c' '*.cpp' ':!tests/build')
clang-format --dry-run -Werror "${sources[@]}"

shellcheck -x demo test bench tools/*.sh .ci/run

# check PRESET PATTERN...: with cppcheck, the sources of that build's commands whose names are such. Each pattern by itself:
# among several cppcheck does not notice one that fits no name.
check() {
  local preset=$1 pattern
  shift
  for pattern in "$@"; do
    cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr --library=googletest \
      --suppressions-list=tools/cppcheck.suppressions --project="build/$preset/compile_commands.json" \
      --file-filter="$pattern"
  done
}
check linux-release 'dictionary/*' 'examples/*' 'frame/*' 'phyval/*' 'platform/posix/*' 'storage/*' 'tests/*' 'text/*' 'unittables/*'
check mingw-release '*_windows*' 'platform/windows/*'

mkdir -p build/lint/passed build/lint/tests
cp tests/.clang-tidy build/lint/tests # the rules of the tests that tidy.sh puts together
files -z '*.h' '*.clang-tidy' '*CMakeLists.txt' 'cmake/*' 'tools/*' | xargs -0 sha256sum >build/lint/rules
# The compilers' commands as clang understands them: without a header that GCC has compiled; the cross-compiler's without
# GCC's own switch and with GCC's headers.
mkdir -p build/lint/linux build/lint/windows
headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
without_compiled='s/ -Winvalid-pch -include \(\\"[^"]*\\"\|[^ ]*\) / /' # quoted where the path has a blank
sed -e "$without_compiled" build/linux-release/compile_commands.json >build/lint/linux/compile_commands.json
sed -e "$without_compiled" -e 's/ -fno-keep-inline-dllexport//' \
  -e "s| -c | --target=x86_64-w64-windows-gnu -isystem $headers -isystem $headers/x86_64-w64-mingw32 -c |" \
  build/mingw-release/compile_commands.json >build/lint/windows/compile_commands.json

only_windows='^platform/windows/|_(windows|windows_test)\.cpp$'
left_out=(':!benchmarks' ':!tests/build' ':!tests/abi/microsoft_host.cpp')
[ "${1-}" != --library ] || left_out+=(':!tests')
mapfile -t sources < <(files '*.cpp' "${left_out[@]}")
{
  # Eight tests at a time. Neighbours in the alphabet, which share names, come into different groups.
  { grep -l '<gtest/gtest.h>' "${sources[@]}" || true; } | { grep -vE "$only_windows" || true; } | pr -t -l 6 -8 -s' '
  { grep -L '<gtest/gtest.h>' "${sources[@]}" || true; } | grep -vE "$only_windows"
  printf '%s\n' "${sources[@]}" | grep -E "$only_windows" | sed 's|^|build/lint/windows |'
} | sed '/^build/!s|^|build/lint/linux |' | xargs -L 1 -P "$(nproc)" tools/tidy.sh
