# shellcheck shell=bash disable=SC2034 # variables that ./demo, ./test and ./bench use
# What ./demo, ./test and ./bench share. They source this file.

root=$PWD   # the scripts have changed to the top folder
export PATH # Bash does not export its default PATH
logs=$root/build/logs
started=$SECONDS

# fail WHAT REMEDY: ends the script with a line that says what failed and a line that says what to do.
fail() {
  printf '\nFAILED: %s\n' "$1" >&2
  printf 'What to do: %s\n' "$2" >&2
  exit 1
}

case $root in
  *[\;\"\\\$,%]*)
    fail "the name of this folder has one of ; \" \\ \$ , %" \
      "CMake or the linker cannot read such a name: move the checkout." ;;
esac

# step TEXT LOG COMMAND...: prints TEXT and runs the command, with its output in a log. If the command fails, prints the
# end of the log and ends the script.
step() {
  local text=$1 log=$logs/$2.log begun=$SECONDS
  shift 2
  printf '%s ... ' "$text"
  if "$@" >"$log" 2>&1 </dev/null 9>&-; then
    printf 'done (%d s)\n' $((SECONDS - begun))
  else
    printf 'failed\n\n' >&2
    tail -n 40 "$log" >&2
    fail "$text" \
      "the end of ${log#"$root"/} is above; fix the cause (after moving this checkout: remove build/) and try again."
  fi
}

# prepare_build_folder: makes build/, which gets all files that are made, and locks it for this run. The lock is
# descriptor 9. It is closed for the programs that a script starts: one that is left behind would keep the lock.
prepare_build_folder() {
  local foreign
  mkdir -p "$logs" 2>/dev/null || fail "the folder build/ cannot be written" "check the rights of this checkout."
  foreign=$(find "$root/build" -maxdepth 2 ! -user "$(id -u)" -print -quit)
  [ -z "$foreign" ] || fail "the folder build/ belongs to another user" \
    "remove it (it has only built files), or run this as the user who made it."
  exec 9>"$root/build/lock"
  flock -n 9 || fail "another ./demo, ./test or ./bench is running in this checkout" "wait until it has ended."
}

# install_packages PACKAGE...: installs the missing ones with apt, which must not remove any. Only apt-get is run with
# sudo.
install_packages() {
  local missing=() package as_root=()
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    fail "this is not a Debian system" \
      "install what is in these Debian packages, then use the presets of CMakePresets.json: $*"
  fi
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null ||
      fail "packages are missing and there is no sudo" "as root: apt-get install ${missing[*]}"
    as_root=(sudo)
  fi
  printf 'These packages are missing: %s\n' "${missing[*]}"
  local apt=("${as_root[@]}" apt-get -o DPkg::Lock::Timeout=300)
  DEBIAN_FRONTEND=noninteractive step "Reading the package lists" apt-update "${apt[@]}" update
  DEBIAN_FRONTEND=noninteractive step "Installing them (a minute or more)" apt-install \
    "${apt[@]}" install -y --no-install-recommends --no-remove "${missing[@]}"
}

# build PRESET SYSTEM [TARGET...]: configures and builds with a preset of CMakePresets.json; without TARGET, everything.
build() {
  local preset=$1 system=$2
  shift 2
  step "Configuring for $system" "$preset-configure" cmake --preset "$preset"
  step "Building for $system" "$preset-build" \
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}

# start_wine: makes the project's Wine prefix and keeps its server ready until the script ends.
start_wine() {
  "$root/tools/wine.sh" --stop # a server that an interrupted run left behind
  trap 'exit 1' HUP INT TERM   # waits for the current program, which may start Wine again
  trap '"$root/tools/wine.sh" --stop' EXIT
  step "Starting Wine" wine-start "$root/tools/wine.sh" --start
}

# Every build configures the tests, which need Python and GoogleTest: the library for Linux, the sources for Windows.
# ICU and Boost are for tests, which every build of the project configures.
boost=(libboost-dev) # 1.81 or later; Debian 12 has it under another name
! grep -qs '^VERSION_CODENAME=bookworm$' /etc/os-release || boost=(libboost1.81-dev)
packages=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix libgtest-dev googletest python3 libcli11-dev nlohmann-json3-dev
  libicu-dev "${boost[@]}")
# For Clang and lld in the place of Microsoft's compiler and linker, for hosts with another C++ library, for a locale
# with a decimal comma, for CMake's default generator, for hosts without CMake, for the tables of languages and ICU
# beside them, for the manual page, for the texts of numbers, for the reference of kelmo, and for the factors of units.
packages_native_tests=(clang libc++-dev libc++abi-dev lld llvm locales make pkgconf unicode-cldr-core man-db
  libfmt-dev doxygen udunits-bin units)
packages_wine=(wine wine64)
packages_lint=(clang-format clang-tidy cppcheck shellcheck)
packages_sanitizers=(libclang-rt-dev)
packages_heavy=(valgrind libc6-dbg g++-aarch64-linux-gnu qemu-user) # the last two for 64-bit ARM
packages_coverage=(libclang-rt-dev llvm)
packages_fuzz=(clang libclang-rt-dev)
packages_bench=(libbenchmark-dev)
packages_peers=("${boost[@]}" "${boost[0]/boost/boost-locale}" libabsl-dev gettext libicu-dev icu-devtools libsimdjson-dev
  libudunits2-dev libfmt-dev translate-toolkit locales qt6-base-dev qt6-l10n-tools) # locales: for benchmarks of gettext
