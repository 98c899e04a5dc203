#!/usr/bin/env bash
# Runs the fuzzers in parallel; they must be built (cmake --build --preset linux-fuzz). Prints for each fuzzer the
# number of runs, the number of branches of the library that it reached, and whether it found something. A fuzzer starts
# with its corpus in tests/fuzz and with the inputs that earlier runs left in build/fuzz.
#
#   tools/fuzz.sh SECONDS [TARGET...]   runs each fuzzer, or each TARGET, for that time
#   tools/fuzz.sh --merge TARGET...     adds the inputs that reach more of the library to the corpora in tests/fuzz
set -euo pipefail
unset CDPATH
cd "$(dirname "$0")/.."
seconds=$1
shift

if [ "$seconds" = --merge ]; then
  for target in "$@"; do # relative names: libFuzzer starts itself again here without quoting the names
    (cd "build/fuzz/$target/work" && "../../../linux-fuzz/bin/${target}_fuzzer" -merge=1 -use_counters=0 \
      "../../../../tests/fuzz/corpus/$target" ../corpus)
  done
  exit
fi

# fuzz TARGET: runs one fuzzer. Its log, its corpus and the inputs that fail are in build/fuzz/TARGET.
fuzz() {
  local target=$1 folder=$PWD/build/fuzz/$1 status=0
  mkdir -p "$folder/corpus" "$folder/work"
  (cd "$folder/work" && "$OLDPWD/build/linux-fuzz/bin/${target}_fuzzer" -max_total_time="$seconds" -max_len=1024 \
    -timeout=120 -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="$folder/" \
    "$folder/corpus" "$OLDPWD/tests/fuzz/corpus/$target") >"$folder/log" 2>&1 || status=$?
  awk -v target="$target" -v status="$status" '
    / cov: / { reached = $4 }
    /stat::number_of_executed_units/ { runs = $2 }
    END {
      outcome = status ? "FOUND SOMETHING" : runs ? "nothing found" : "DID NOT RUN"
      printf "%-20s %12d runs %8d branches  %s\n", target, runs, reached, outcome
      exit runs == 0
    }
  ' "$folder/log" || status=1
  if [ "$status" != 0 ]; then
    { grep -m 1 -A 20 -E 'ERROR|what\(\)|runtime error' "$folder/log" || tail -n 20 "$folder/log"; } | sed 's/^/  /'
    printf '  whole log: %s\n' "${folder#"$PWD"/}/log"
  fi
  return "$status"
}

if [ "${1-}" = --one ]; then
  fuzz "$2"
  exit
fi
if [ $# = 0 ]; then
  mapfile -t targets < <(cd build/linux-fuzz/bin && ls -- *_fuzzer)
  set -- "${targets[@]%_fuzzer}"
fi
[ $# -gt 0 ] || {
  echo "there are no fuzzers: cmake --preset linux-fuzz && cmake --build --preset linux-fuzz" >&2
  exit 1
}
printf '%s\n' "$@" | xargs -P "$(nproc)" -I {} tools/fuzz.sh "$seconds" --one {}
