#!/usr/bin/env bash
# Runs the fuzzers, which must have been built (cmake --build --preset linux-fuzz): each for so many seconds, as many at a
# time as there are processors. Says how often each has run, how many branches of the library it has reached, and what it
# has found. Begins with the corpora of tests/fuzz and what earlier runs have left in build/fuzz.
#
#   tools/fuzz.sh SECONDS [TARGET...]
#   tools/fuzz.sh --merge TARGET...     adds to the corpora of tests/fuzz what reaches more of the library
set -euo pipefail
unset CDPATH
cd "$(dirname "$0")/.."
seconds=$1
shift

if [ "$seconds" = --merge ]; then
  for target in "$@"; do # relative names: libFuzzer starts itself again here, and quotes none of them
    (cd "build/fuzz/$target/work" && "../../../linux-fuzz/bin/${target}_fuzzer" -merge=1 -use_counters=0 \
      "../../../../tests/fuzz/corpus/$target" ../corpus)
  done
  exit
fi

# fuzz TARGET: one of them. Its files, the bytes of what it has found among them, lie in build/fuzz/TARGET.
fuzz() {
  local target=$1 place=$PWD/build/fuzz/$1 status=0
  mkdir -p "$place/corpus" "$place/work"
  (cd "$place/work" && "$OLDPWD/build/linux-fuzz/bin/${target}_fuzzer" -max_total_time="$seconds" -max_len=1024 \
    -timeout=120 -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="$place/" \
    "$place/corpus" "$OLDPWD/tests/fuzz/corpus/$target") >"$place/log" 2>&1 || status=$?
  awk -v target="$target" -v status="$status" '
    / cov: / { reached = $4 }
    /stat::number_of_executed_units/ { runs = $2 }
    END {
      printf "%-20s %12d runs %8d branches  %s\n", target, runs, reached, status ? "FOUND SOMETHING" : runs ? "nothing found" : "DID NOT RUN"
      exit runs == 0
    }
  ' "$place/log" || status=1
  if [ "$status" != 0 ]; then
    { grep -m 1 -A 20 -E 'ERROR|what\(\)|runtime error' "$place/log" || tail -n 20 "$place/log"; } | sed 's/^/  /'
    printf '  all of it: %s\n' "${place#"$PWD"/}/log"
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
