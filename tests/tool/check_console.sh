#!/usr/bin/env bash
# Runs the console blocks of a document, in their order, in one scratch copy of a folder, and
# compares what the commands print with what the document shows.
#
#   check_console.sh DOCUMENT FOLDER SCRATCH TTR [EMULATOR...]
#
# In a block, a line that begins with "$ " is a command, run by bash; the lines up to the next one
# are what it prints, standard error included, and "[exit 1]" at the end if that is its exit code.
set -uo pipefail
document=$1 folder=$2 scratch=$3 tool=$(realpath "$4")
shift 4

rm -rf "$scratch"
mkdir -p "$scratch/bin"
cp -R "$folder" "$scratch/work"
printf '#!/bin/sh\nexec %s "%s" "$@"\n' "$*" "$tool" > "$scratch/bin/ttr"
chmod +x "$scratch/bin/ttr"
export PATH=$scratch/bin:$PATH LC_ALL=C.UTF-8 NO_COLOR=1
document=$(realpath "$document")
cd "$scratch/work" || exit 2

# run COMMAND: what a block shows of it.
run() {
  bash -c "$1" 2>&1 < /dev/null
  local code=$?
  [ "$code" -eq 0 ] || echo "[exit $code]"
}

commands=0
actual=$scratch/actual
expected=$scratch/expected
: > "$actual"
awk '/^```console$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$document" > "$expected"
while IFS= read -r line; do
  [[ $line == '$ '* ]] || continue
  commands=$((commands + 1))
  { printf '%s\n' "$line"; run "${line#'$ '}"; } >> "$actual"
done < "$expected"

if [ "$commands" -eq 0 ]; then
  echo "$document: no command found" >&2
  exit 1
fi
diff -u "$expected" "$actual" && echo "$commands commands print what the document shows"
