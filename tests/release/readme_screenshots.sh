#!/usr/bin/env bash
# The README's pictures are the demo's: every picture it shows is a
# screenshot that scripts/demo takes and copies into docs/screenshots, and
# docs/screenshots holds nothing the README does not show.
#   readme_screenshots.sh README.md scripts/demo docs/screenshots
set -u
readme=$1 demo=$2 dir=$3
failed=0
fail() { echo "FAIL: $*"; failed=$((failed + 1)); }

refs=$(grep -oE 'docs/screenshots/[A-Za-z0-9_.-]+\.png' "$readme" | sed 's|docs/screenshots/||; s|\.png$||' | sort -u)
taken=$(grep -oE '^ *shot [A-Za-z0-9_-]+' "$demo" | awk '{print $2}' | sort -u)
[ -n "$refs" ] || fail "the README shows no screenshots"
for name in $refs; do
  [ -f "$dir/$name.png" ] || fail "$name.png is shown by the README but missing from $dir"
  grep -qx "$name" <<<"$taken" || fail "$name is shown by the README but the demo never takes it"
  # The demo copies it: its name stands on a line that writes into docs/screenshots
  # or in the list that such a loop walks.
  grep -E "docs/screenshots|^for shot in" "$demo" | grep -q "$name" || fail "the demo does not copy $name into docs/screenshots"
done
for file in "$dir"/*.png; do
  [ -e "$file" ] || continue
  name=$(basename "$file" .png)
  grep -qx "$name" <<<"$refs" || fail "$name.png lies in $dir but the README does not show it"
done
echo "$(wc -w <<<"$refs") screenshots checked, $failed failed"
[ "$failed" -eq 0 ]
