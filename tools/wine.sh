#!/bin/sh
# Runs a Windows program of this project under Wine, in a prefix of the project's own (build/wine),
# so that nobody's own Wine settings are read or changed.
#
#   tools/wine.sh PROGRAM.exe [ARGUMENT...]   run it; the first one in a checkout begins with --start
#   tools/wine.sh --start                     make the prefix and keep Wine's server ready: programs
#                                             then start in 0.05 s
#   tools/wine.sh --stop                      end the server
set -eu

unset CDPATH
root=$(cd "$(dirname "$0")/.." && pwd)
WINEPREFIX=$root/build/wine
WINEDEBUG=${WINEDEBUG:--all}
# No offers to install what no test needs, no entries in the menus of the desktop, and no debugger: it takes seconds, and
# now and then a program that has crashed ends with status 0 under it.
WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d'
# UTF-8 for file names beyond ASCII, whatever the caller's locale. A test names the user that Wine is to have.
LC_ALL=${KELMO_WINE_LOCALE:-C.UTF-8}
export WINEPREFIX WINEDEBUG WINEDLLOVERRIDES LC_ALL
# Debian 13's Wine 10 frees the value of TMPDIR, which it has not allocated, and all of its programs abort.
unset TMPDIR

missing_dll=53 # STATUS_DLL_NOT_FOUND, as far as it fits an exit code
complete=$WINEPREFIX/complete

start_server() {
  { wineserver -p60 || [ $? -eq 2 ]; } && # 2: it runs already
    wineboot -i
}

# Debian's Wine keeps the socket of the server in a folder of its own in /tmp, which it leaves there. The prefix has the
# folder's name, and a server that does not find it makes it again.
stop_server() {
  wineserver -k 2>/dev/null || true
  sockets=$(cat "$WINEPREFIX/wineserver" 2>/dev/null) || true
  case $sockets in
    wine-??????) rm -rf "/tmp/$sockets" ;;
  esac
}

case ${1:-} in
  --start)
    # Those that start side by side wait for one prefix.
    mkdir -p "$root/build"
    [ "${KELMO_WINE_LOCKED:-}" ] ||
      KELMO_WINE_LOCKED=1 exec flock --close "$root/build/wine.lock" "$0" --start
    if [ ! -e "$complete" ]; then # what was interrupted while it was made is of no use
      stop_server
      rm -rf "$WINEPREFIX"
    fi
    mkdir -p "$WINEPREFIX"
    # Nothing that stays behind may keep the caller's output open. Services start with the first
    # program, hence wineboot also in an old prefix. In a new one it always prints warnings, one of
    # them of the 32-bit rundll32.exe, which no 64-bit program needs: they stay in the log.
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
    wine "$@" || status=$?
    [ $status -ne $missing_dll ] || echo "$1: a DLL that it needs may be missing beside it" >&2
    exit $status
    ;;
esac
