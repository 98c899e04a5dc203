#!/bin/sh
# Runs a Windows program under Wine, in the project's own prefix (build/wine): the user's Wine settings are neither read
# nor changed.
#
#   tools/wine.sh PROGRAM.exe [ARGUMENT...]   runs the program; makes the prefix first if there is none
#   tools/wine.sh --start                     makes the prefix and starts Wine's server: programs then start in 0.05 s
#   tools/wine.sh --stop                      stops the server
set -eu

unset CDPATH
root=$(cd "$(dirname "$0")/.." && pwd)
WINEPREFIX=$root/build/wine
WINEDEBUG=${WINEDEBUG:--all}
# Wine must not offer to install components or add menu entries to the desktop. Its debugger is off too: it takes
# seconds, and a program that crashes under it sometimes ends with status 0.
WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'
# UTF-8, for file names beyond ASCII in any locale of the caller. A test sets the locale of Wine's user.
LC_ALL=${KELMO_WINE_LOCALE:-C.UTF-8}
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES LC_ALL
# With TMPDIR set, all programs abort under Wine 10 of Debian 13: it frees the value, which it has not allocated.
unset TMPDIR

missing_dll=53 # the part of STATUS_DLL_NOT_FOUND that fits an exit code
complete=$WINEPREFIX/complete

# Wine needs its shared data at a fixed address. Where the system chooses addresses at random, something else is there in
# one start of about 5,000: the program ends with status 1 and prints nothing.
with_fixed_addresses() {
  if setarch -R true 2>/dev/null; then # some containers forbid it
    setarch -R "$@"
  else
    "$@"
  fi
}

start_server() {
  { wineserver -p60 || [ $? -eq 2 ]; } && # 2: the server runs already
    with_fixed_addresses wineboot -i
}

# Debian's Wine has the socket of the server in a folder in /tmp, and does not remove that folder. The prefix has the
# name of the folder. A server that does not find the folder makes it again.
stop_server() {
  wineserver -k 2>/dev/null || true
  sockets=$(cat "$WINEPREFIX/wineserver" 2>/dev/null) || true
  case $sockets in
    wine-??????) rm -rf "/tmp/$sockets" ;;
  esac
}

case ${1:-} in
  --start)
    # Scripts that start at the same time wait until one of them has made the prefix.
    mkdir -p "$root/build"
    [ "${KELMO_WINE_LOCKED:-}" ] ||
      KELMO_WINE_LOCKED=1 exec flock --close "$root/build/wine.lock" "$0" --start
    if [ ! -e "$complete" ]; then # a prefix that is not complete cannot be used
      stop_server
      rm -rf "$WINEPREFIX"
    fi
    mkdir -p "$WINEPREFIX"
    # The output goes to a log, because programs that keep running must not hold the caller's output open. In a new
    # prefix wineboot always prints warnings, for example of the 32-bit rundll32.exe, which no 64-bit program needs.
    # wineboot also runs in an existing prefix: it starts the services.
    if ! start_server >"$WINEPREFIX/start.log" 2>&1 </dev/null; then
      cat "$WINEPREFIX/start.log" >&2
      exit 1
    fi
    touch "$complete"
    ;;
  --stop) stop_server ;;
  *)
    [ -e "$complete" ] || "$0" --start
    status=0
    with_fixed_addresses wine "$@" || status=$?
    [ $status -ne $missing_dll ] || echo "$1: a DLL that it needs may be missing beside it" >&2
    exit $status
    ;;
esac
