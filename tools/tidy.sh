#!/usr/bin/env bash
# Checks C++ sources with clang-tidy, unless they have passed and have not changed. Several tests are checked as one
# source, because the headers that they share take most of the time.
#
#   tools/tidy.sh FOLDER SOURCE...   FOLDER has compile_commands.json
set -euo pipefail
folder=$1
shift

passed=build/lint/passed/$(cat build/lint/rules "$@" | sha256sum | cut -d ' ' -f 1)
[ ! -e "$passed" ] || exit 0
if [ $# = 1 ]; then
  clang-tidy --quiet -p "$folder" "$1"
else
  # It has the file name of the first source: clang-tidy then uses the command of that one.
  together=build/lint/tests/$#/${1##*/}
  mkdir -p "${together%/*}"
  printf '#include "%s"\n' "${@/#/$PWD/}" >"$together"
  # If that fails, checks both halves: two sources may define the same name, and a fault is reported for its source
  # only.
  clang-tidy --quiet -p "$folder" --checks=-bugprone-suspicious-include,-google-global-names-in-headers "$together" \
    &>/dev/null || {
    "$0" "$folder" "${@:1:$#/2}"
    "$0" "$folder" "${@:$#/2+1}"
  }
fi
touch "$passed"
