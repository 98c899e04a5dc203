#!/usr/bin/env bash
# Checks the format of the sources, the shell scripts, and, with cppcheck and clang-tidy, the C++ sources of the builds
# for Linux and Windows, which must be configured. A source that has passed clang-tidy is checked again when it, a
# header or a rule has changed.
#
#   tools/lint.sh             checks all sources
#   tools/lint.sh --library   runs clang-tidy only on the library and the examples, in half of the time
set -euo pipefail

unset CDPATH
cd "$(dirname "$0")/.."

for preset in linux-release mingw-release; do
  [ -e build/$preset/compile_commands.json ] || {
    echo "configure the builds first: cmake --preset $preset" >&2
    exit 1
  }
done
git rev-parse --is-inside-work-tree >/dev/null # git lists the files
files() {
  git ls-files --cached --others --exclude-standard "$@"
}

mapfile -t sources < <(files '*.h' '*.c' '*.cpp' ':!tests/build')
clang-format --dry-run -Werror "${sources[@]}"

shellcheck -x demo test bench tools/*.sh .ci/run

# check PRESET PATTERN...: runs cppcheck on the sources of that build that match a pattern. One run for each pattern:
# with several patterns cppcheck does not report one that matches nothing.
check() {
  local preset=$1 pattern
  shift
  for pattern in "$@"; do
    cppcheck --quiet --error-exitcode=1 --enable=warning,performance,portability --inline-suppr --library=googletest \
      --suppressions-list=tools/cppcheck.suppressions --project="build/$preset/compile_commands.json" \
      --file-filter="$pattern"
  done
}
check linux-release 'cldr/*' 'dictionary/*' 'examples/*' 'frame/*' 'host/*' 'lang/*' 'phyval/*' 'platform/posix/*' 'storage/*' 'tests/*' 'text/*' 'unittables/*'
check mingw-release '*_windows*' 'platform/windows/*'

mkdir -p build/lint/passed build/lint/tests
cp tests/.clang-tidy build/lint/tests # for the tests that tidy.sh joins
files -z '*.h' '*.clang-tidy' '*CMakeLists.txt' 'cmake/*' 'tools/*' | xargs -0 sha256sum >build/lint/rules
# Changes the compile commands so that clang understands them: removes the header that GCC has precompiled, and for the
# cross-compiler removes an option that only GCC has and adds GCC's headers.
mkdir -p build/lint/linux build/lint/windows
headers=$(x86_64-w64-mingw32-g++-posix -print-file-name=include/c++)
without_precompiled='s/ -Winvalid-pch -include \(\\"[^"]*\\"\|[^ ]*\) / /' # quoted if the path has a blank
sed -e "$without_precompiled" build/linux-release/compile_commands.json >build/lint/linux/compile_commands.json
sed -e "$without_precompiled" -e 's/ -fno-keep-inline-dllexport//' \
  -e "s| -c | --target=x86_64-w64-windows-gnu -isystem $headers -isystem $headers/x86_64-w64-mingw32 -c |" \
  build/mingw-release/compile_commands.json >build/lint/windows/compile_commands.json

only_windows='^platform/windows/|_(windows|windows_test)\.cpp$'
left_out=(':!benchmarks' ':!tests/build' ':!tests/abi/microsoft_host.cpp')
[ "${1-}" != --library ] || left_out+=(':!lang' ':!tests')
mapfile -t sources < <(files '*.cpp' "${left_out[@]}")
{
  # Groups of eight tests. Tests with similar file names, which share names, are in different groups.
  { grep -l '<gtest/gtest.h>' "${sources[@]}" || true; } | { grep -vE "$only_windows" || true; } | pr -t -l 6 -8 -s' '
  { grep -L '<gtest/gtest.h>' "${sources[@]}" || true; } | grep -vE "$only_windows"
  printf '%s\n' "${sources[@]}" | grep -E "$only_windows" | sed 's|^|build/lint/windows |'
} | sed '/^build/!s|^|build/lint/linux |' | xargs -L 1 -P "$(nproc)" tools/tidy.sh
