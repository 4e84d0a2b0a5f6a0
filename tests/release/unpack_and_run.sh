#!/usr/bin/env bash
# Unpacks the zip of this build into an empty folder and runs the release
# test against what came out of it.
#   unpack_and_run.sh <zip> <folder> <wine loader> <test program>
set -euo pipefail
zip=$1 folder=$2 loader=$3 test=$4
rm -rf "$folder"
mkdir -p "$folder"
(cd "$folder" && cmake -E tar xf "$zip")
exec "$loader" "$test" the_unpacked_zip_runs_from_its_folder_and_writes_only_there "--unpacked=Z:${folder//\//\\}"
