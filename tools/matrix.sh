#!/usr/bin/env bash
# Checks that values are the same to the last bit with every compiler and level of optimisation. Builds the library with
# GCC, Clang, MinGW-w64 and GCC for 64-bit ARM, each with -O0, -O2 and -O3 and with warnings as errors. Runs the tests
# of values, and compares the results of long runs of generated operations. Clang with -O3 builds everything and runs
# all tests.
#
#   tools/matrix.sh            runs a million operations of each kind
#   tools/matrix.sh N [SEED]   runs N operations of each kind; another seed gives other operations
set -euo pipefail

unset CDPATH
export PATH # Bash does not export its default PATH
cd "$(dirname "$0")/.."
operations=${1:-1000000}
seed=${2:-1}

matrix=$PWD/build/matrix
programs=(generated_operations values_test unit_tests start_up_test model_test model_inside_test)
tests='^(unit_tests|values_test|StartUp[.].*|generated_(operations|numbers)_output)$'
jobs=$(nproc)

# build FOLDER LEVEL WHOLE CMAKE-ARGUMENT...
build() {
  local folder=$1 level=$2 whole=$3
  shift 3
  cmake -G Ninja -S . -B "$folder" -D CMAKE_BUILD_TYPE=Release -D "CMAKE_C_FLAGS_RELEASE=$level -DNDEBUG" \
    -D "CMAKE_CXX_FLAGS_RELEASE=$level -DNDEBUG" -D KELMO_LOCALIZER_TESTS=ON -D KELMO_LOCALIZER_LANG=OFF "$@" || return
  set --
  if [ "$whole" = whole ]; then
    cmake --build "$folder" --parallel "$jobs"
  else
    [[ ${folder##*/} == mingw* ]] || set -- generated_numbers # not for Windows, which has another C runtime
    cmake --build "$folder" --parallel "$jobs" --target "${programs[@]}" "$@"
  fi
}

# program FOLDER NAME ARGUMENT...: runs a program of a build in its own scratch folder.
program() {
  local folder=$1 name=$2
  shift 2
  mkdir -p "$folder/scratch/$name"
  (
    cd "$folder/scratch/$name"
    if [ -e "$folder/bin/$name.exe" ]; then
      timeout 600 "$folder/../../../tools/wine.sh" "$folder/bin/$name.exe" "$@"
    elif [[ ${folder##*/} == arm64* ]]; then
      LC_ALL=C.UTF-8 timeout 600 qemu-aarch64 -L /usr/aarch64-linux-gnu "$folder/bin/$name" "$@"
    else
      LC_ALL=C.UTF-8 timeout 600 "$folder/bin/$name" "$@"
    fi
  )
}

# run_tests FOLDER WHOLE
run_tests() {
  if [ "$2" = whole ]; then
    ctest --test-dir "$1" --output-on-failure --timeout 300 --no-tests=error --parallel "$jobs"
  else
    ctest --test-dir "$1" --output-on-failure --timeout 300 --no-tests=error --tests-regex "$tests" \
      --parallel "$jobs" || return
    program "$1" model_test --gtest_filter='*EverySequence*' --rounds=200 --seed="$seed" || return
    program "$1" model_inside_test --gtest_filter='*EverySequence*' --rounds=200 --seed="$seed"
  fi
}

# same FOLDER: whether the long runs give the same results as the first build. Windows programs print CR LF.
same() {
  local name
  for name in generated_operations generated_numbers; do
    [[ $name != generated_numbers || ${1##*/} != mingw* ]] || continue # not for Windows, which has another C runtime
    program "$1" "$name" --digest="$operations" --seed="$seed" >"$1/$name.txt" || return
    [ -s "$1/$name.txt" ] || return
    tr -d '\r' <"$1/$name.txt" >"$1.$name.txt"
    [ -e "$matrix/$name.txt" ] || cp "$1.$name.txt" "$matrix/$name.txt"
    diff "$matrix/$name.txt" "$1.$name.txt" || return
  done
}

failed=0
# row COMPILER LEVEL WHOLE CMAKE-ARGUMENT...: prints a row of the table. After a failure the next row is tried.
row() {
  local name=$1$2 level=$2 whole=$3 begun=$SECONDS built=no tested=- same=-
  local folder=$matrix/$name log=$matrix/$name.log
  shift 3
  if build "$folder" "$level" "$whole" "$@" >"$log" 2>&1; then
    built=yes
    tested=no
    same=no
    ! run_tests "$folder" "$whole" >>"$log" 2>&1 || tested=$whole
    ! same "$folder" >>"$log" 2>&1 || same=yes
  fi
  printf '%-10s %-7s %-7s %-9s %4d s' "$name" "$built" "$tested" "$same" $((SECONDS - begun))
  if [ "$built$same" = yesyes ] && [ "$tested" != no ]; then
    printf '\n'
  else
    failed=1
    printf '   FAILED: %s\n' "${log#"$PWD"/}"
  fi
}

mkdir -p "$matrix"
rm -f "$matrix"/generated_*.txt # from an earlier run
trap 'exit 1' HUP INT TERM
trap 'tools/wine.sh --stop' EXIT
tools/wine.sh --start

printf '%-10s %-7s %-7s %-9s\n' Build built tests same
for level in -O0 -O2 -O3; do
  whole=values
  row gcc $level $whole -D CMAKE_C_COMPILER=gcc -D CMAKE_CXX_COMPILER=g++
  row mingw $level $whole -D CMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64.cmake"
  row arm64 $level $whole -D CMAKE_TOOLCHAIN_FILE="$PWD/cmake/aarch64-linux.cmake"
  [ $level != -O3 ] || whole=whole
  row clang $level $whole -D CMAKE_C_COMPILER=clang -D CMAKE_CXX_COMPILER=clang++
done
printf '\nThe generated operations and numbers\n'
cat "$matrix"/generated_*.txt
exit $failed
