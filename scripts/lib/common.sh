# Shared by scripts/test and scripts/demo: packages, a private X display and
# fresh Wine prefixes. Source it; it defines functions only.

QV_ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
QV_WINE64=/usr/lib/wine/wine64
QV_WINE32=/usr/lib/wine/wine
QV_WINESERVER=/usr/lib/wine/wineserver

qv_log() { printf '== %s\n' "$*" >&2; }

# Installs what the build and the Wine runs need, once. Idempotent.
qv_install_packages() {
  local need=(cmake ninja-build python3 mingw-w64 g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix
              wine wine64 wine32:i386 fonts-wine xvfb xdotool imagemagick x11-utils)
  local missing=()
  local p
  for p in "${need[@]}"; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  qv_log "installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  dpkg --print-foreign-architectures | grep -qx i386 || dpkg --add-architecture i386
  # The i386 security index is known to fail here; anything else failing
  # shows up as a failed install below.
  apt-get update || qv_log "apt-get update reported an error (tolerated: the i386 security index)"
  apt-get install -y -o APT::Default-Release=bookworm "${missing[@]}"
}

# Starts a private Xvfb and exports DISPLAY; QV_XVFB_PID names it.
qv_start_display() {
  local n
  for n in $(seq 90 140); do
    if [ ! -e "/tmp/.X11-unix/X$n" ] && [ ! -e "/tmp/.X$n-lock" ]; then
      Xvfb ":$n" -screen 0 1280x800x24 -nolisten tcp >/dev/null 2>&1 &
      QV_XVFB_PID=$!
      export DISPLAY=":$n"
      local i
      for i in $(seq 1 50); do
        [ -e "/tmp/.X11-unix/X$n" ] && return 0
        sleep 0.1
      done
      kill "$QV_XVFB_PID" 2>/dev/null
    fi
  done
  qv_log "could not start Xvfb"
  return 1
}

qv_stop_display() {
  if [ -n "${QV_XVFB_PID:-}" ]; then kill "$QV_XVFB_PID" 2>/dev/null || true; fi
  QV_XVFB_PID=
}

# A fresh Wine prefix in $1, ready for quick windowed programs.
qv_make_prefix() {
  export WINEPREFIX="$1" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" WINELOADER="$QV_WINE64"
  rm -rf "$WINEPREFIX"
  "$QV_WINE64" wineboot -i >/dev/null 2>&1
  "$QV_WINESERVER" -w
  # Unmanaged windows start in about 0.2 s instead of 2 s.
  "$QV_WINE64" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f >/dev/null 2>&1
  # Caption buttons draw as letters without this font.
  local marlett
  marlett=$(dpkg -L fonts-wine 2>/dev/null | grep -i 'marlett.ttf$' | head -n 1)
  if [ -n "$marlett" ]; then cp "$marlett" "$WINEPREFIX/drive_c/windows/Fonts/"; fi
  "$QV_WINESERVER" -w
}

qv_end_wine() {
  # No server left running is fine: -k then reports a failure.
  if [ -n "${WINEPREFIX:-}" ]; then "$QV_WINESERVER" -k 2>/dev/null || true; fi
}

# The loader that runs Windows programs of an architecture, or nothing when
# this machine cannot run them. A 32-bit program under a 64-bit-only Wine
# "exits" without running, so the check is that a probe really ran.
qv_wine_for() {
  local arch=$1 bindir=$2
  local loader=$QV_WINE64
  [ "$arch" = i686 ] && loader=$QV_WINE32
  [ -x "$loader" ] || return 1
  local out rc
  out=$("$loader" "$bindir/probe_arch.exe" 2>/dev/null) && rc=0 || rc=$?
  out=${out//$'\r'/} # a Windows program ends its lines with CR LF
  if [ "$rc" = 42 ] && [ "$out" = "probe_arch $arch" ]; then
    echo "$loader"
    return 0
  fi
  return 1
}

qv_configure_build() {
  local arch=$1 werror=${2:-OFF}
  cmake -S "$QV_ROOT" -B "$QV_ROOT/build/$arch" -G Ninja \
    -DCMAKE_TOOLCHAIN_FILE="$QV_ROOT/cmake/toolchain-$arch.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DQUORVANT_WERROR="$werror" >/dev/null
  cmake --build "$QV_ROOT/build/$arch" -j2
}

# "N passed, N failed" over the cases of one architecture's suite, read from
# the log ctest keeps of every test program's output. A case that started and
# never reported (its program died) is a failed case; so is a failed test
# program that reported no case at all.
qv_case_counts() {
  local builddir=$1 ctestlog=$2
  local all="$builddir/Testing/Temporary/LastTest.log"
  local started passed failed programs
  started=$(grep -c '^\[ RUN \]' "$all" 2>/dev/null || true)
  passed=$(grep -c '^\[  OK  \]' "$all" 2>/dev/null || true)
  failed=$((started - passed))
  programs=$(sed -n 's/^.*tests passed, \([0-9][0-9]*\) tests* failed out of.*/\1/p' "$ctestlog" | tail -n 1)
  [ "$failed" -gt 0 ] || failed=${programs:-0}
  echo "$passed passed, $failed failed"
}
