#!/usr/bin/env bash
# Stops the tool's process with SIGSTOP while the host works, then lets it
# run on: what no Windows program can do to another. ROBUSTHANG.exe (argument
# 1) does the Windows half in a folder this script makes and shares through
# Wine's Z: drive; the two take turns through files in that folder.
# Argument 2, if given, names the one case of the driver to run.
# Needs WINELOADER, WINEPREFIX and DISPLAY, as scripts/test sets them.
set -u
driver=$1
case_name=${2:-}
loader=${WINELOADER:-/usr/lib/wine/wine64}
dir=$(mktemp -d /tmp/qvhang.XXXXXX)
tag=$(basename "$dir")
stopped_pid=
cleanup() {
  if [ -n "$stopped_pid" ]; then kill -CONT "$stopped_pid" 2>/dev/null || true; fi
  rm -rf "$dir"
}
trap cleanup EXIT

wait_file() { # name, seconds
  local i
  for i in $(seq 1 $(($2 * 20))); do
    [ -e "$dir/$1" ] && return 0
    sleep 0.05
  done
  return 1
}

QV_HANG_DIR="Z:${dir//\//\\}" "$loader" "$driver" $case_name &
driver_pid=$!

if wait_file ready 60; then
  # The tool's own Wine process: its command line is the copy of
  # QUORVANT.exe in our folder, which nothing else runs.
  tool_pid=$(pgrep -f "${tag}.QUORVANT\.exe" | head -n 1)
  if [ -n "$tool_pid" ]; then
    kill -STOP "$tool_pid"
    stopped_pid=$tool_pid
    echo "  tool process $tool_pid stopped"
  else
    echo "  the tool's process was not found"
  fi
  touch "$dir/stopped"
  if wait_file done 60; then
    if [ -n "$stopped_pid" ]; then kill -CONT "$stopped_pid"; stopped_pid=; echo "  tool process $tool_pid continued"; fi
    touch "$dir/continued"
  fi
fi
wait "$driver_pid"
rc=$?
[ -n "${tool_pid:-}" ] || rc=1
exit $rc
