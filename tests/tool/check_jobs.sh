#!/usr/bin/env bash
# What a new user wants to do, each in one command, with nothing but the tool and its examples:
# the tool sees no device and needs no network.
#
#   check_jobs.sh EXAMPLES SCRATCH TTR [EMULATOR...]
set -uo pipefail
examples=$(realpath "$1") scratch=$2 tool=$(realpath "$3")
shift 3
emulator=("$@")
ttr() { "${emulator[@]}" "$tool" "$@"; }
unset DISPLAY WAYLAND_DISPLAY
rm -rf "$scratch"
mkdir -p "$scratch"
scratch=$(realpath "$scratch")
cd "$examples/workshop" || exit 2
failures=0

# job NAME EXPECTED-EXIT ARGUMENT...: runs the tool; its output is in $scratch/out and err.
job() {
  echo "$1: ttr ${*:3}"
  ttr "${@:3}" > "$scratch/out" 2> "$scratch/err"
  local code=$?
  [ "$code" -eq "$2" ] || fail "exit code $code instead of $2: $(cat "$scratch/err")"
}

fail() {
  echo "  FAILED: $1" >&2
  failures=$((failures + 1))
}

# prints TEXT: the output has a line with it.
prints() { grep -qF -- "$1" "$scratch/out" || fail "not printed: $1"; }

# is_png FILE WIDTH: a PNG picture that is as wide.
is_png() {
  local head
  head=$(od -An -tx1 -N 20 "$1" 2> /dev/null | tr -d ' \n')
  [ "${head:0:16}" = 89504e470d0a1a0a ] || { fail "$1 is no PNG"; return; }
  [ $((16#${head:32:8})) -eq "$2" ] || fail "$1 is $((16#${head:32:8})) wide, not $2"
}

job "an example at two sizes as PNG" 1 \
  preview template.json --size 1280x720 --size 800x480 -o "$scratch/page-{size}.png"
is_png "$scratch/page-1280x720.png" 1280
# Part of the page lies off the smaller screen: the picture has room for it.
is_png "$scratch/page-800x480.png" 1208

job "a misspelt token, its place and what it should be" 1 check template.json
prints 'template.json:12:23: warning: CTokenResolver::GetTokenValue: no token handler for: wether.now. (did you mean "weather"?) [unknown-token]'

job "why an element is null" 0 explain template.json /Page/Contents/5
prints '/Page/Contents/5 is null: its If does not hold: 5 (integer) Equals "5" (text)'

job "a folder to SARIF, exit 1" 1 check . --format sarif
prints '"version" : "2.1.0"'
prints '"ruleId" : "unknown-token"'

job "five passes of a rotating notice" 1 \
  preview template.json --passes 5 -o "$scratch/notice-{pass}.png" -o "$scratch/notice-{pass}.svg"
pass=0
for title in Ferry Bicycles Concert Storm Breakfast; do
  pass=$((pass + 1))
  is_png "$scratch/notice-$pass.png" 1280
  grep -qF ">$title<" "$scratch/notice-$pass.svg" || fail "pass $pass does not show $title"
done

[ "$failures" -eq 0 ] && echo "all jobs are done"
