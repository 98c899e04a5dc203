#!/usr/bin/env bash
# Checks C++ sources with clang-tidy, unless they have passed as they are. Several tests are checked as one source: the
# headers that they share take most of the time.
#
#   tools/tidy.sh FOLDER SOURCE...   FOLDER: where compile_commands.json is
set -euo pipefail
folder=$1
shift

passed=build/lint/passed/$(cat build/lint/rules "$@" | sha256sum | cut -d ' ' -f 1)
[ ! -e "$passed" ] || exit 0
if [ $# = 1 ]; then
  clang-tidy --quiet -p "$folder" "$1"
else
  # A source of the same name as the first: clang-tidy takes the command of that.
  together=build/lint/tests/$#/${1##*/}
  mkdir -p "${together%/*}"
  printf '#include "%s"\n' "${@/#/$PWD/}" >"$together"
  # Sources may have names in common, and a fault is to be shown by its own source alone: then in halves.
  clang-tidy --quiet -p "$folder" --checks=-bugprone-suspicious-include,-google-global-names-in-headers "$together" \
    &>/dev/null || {
    "$0" "$folder" "${@:1:$#/2}"
    "$0" "$folder" "${@:$#/2+1}"
  }
fi
touch "$passed"
