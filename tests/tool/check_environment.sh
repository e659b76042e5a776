#!/usr/bin/env bash
# Runs the tool where the world around it is not as it should be: closed streams, full disks, and
# included files that are none.
#
#   check_environment.sh WORK COMMAND...    WORK is a scratch folder, COMMAND runs the tool
set -uo pipefail
work=$1
shift
tool=("$@")
rm -rf "$work"
mkdir -p "$work"
cd "$work" || exit 1
work=$(pwd -P)
checks=0
failures=0

# expect WHAT EXPECTED ACTUAL
expect() {
  checks=$((checks + 1))
  [ "$2" = "$3" ] && return
  failures=$((failures + 1))
  printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$2" "$3"
}

# ttr ARGUMENT...: runs the tool; it never needs long, whatever waits for it to read or write.
ttr() { timeout 60 "${tool[@]}" "$@"; }

# refusals ARGUMENT...: the lines on what was not included, then the result and the exit code.
refusals() {
  ttr resolve "$@" 2> err < /dev/null
  local code=$?
  grep '^ttr:' err
  echo "exit $code"
}

page() { printf '{"Contents":["A.PNG","$(name)",%s]}\n' "${1:-1}"; }
include() { page "{\"Include\":{\"Filename\":\"$1\"}}"; }

page > page.json
echo '{"name":"N"}' > values.json
fine='{"Contents":["a.png","N",1]}'

# --- Streams ---

expect "closed standard error" "$fine" "$(ttr resolve page.json --values values.json 2>&-)"
include missing > faulty.json
ttr resolve faulty.json --values values.json 2>&- > /dev/null
expect "faults with closed standard error" 1 $?
ttr resolve faulty.json --values values.json > /dev/null 2> /dev/full
expect "faults with standard error on a full disk" 1 $?
expect "closed standard input" "$fine" "$(ttr resolve page.json --values values.json <&-)"
ttr resolve - <&- > /dev/null 2> err
expect "page from closed standard input" "2 ttr: standard input: Bad file descriptor" "$? $(cat err)"
ttr resolve page.json --values values.json >&- 2> err
expect "closed standard output" "2 ttr: standard output: Bad file descriptor" "$? $(cat err)"
ttr resolve page.json --values values.json > /dev/full 2> err
expect "standard output on a full disk" "2 ttr: standard output: No space left on device" "$? $(cat err)"

ttr --help > /dev/full 2> err
expect "help on a full disk" "2 ttr: standard output: cannot be written" "$? $(cat err)"
expect "empty environment" "$fine" \
  "$(env -i "${tool[@]}" resolve page.json --values values.json)"

# --- The output file ---

echo old > result.json
(
  ulimit -f 0  # a file that may not grow fails like a full disk
  ttr resolve page.json --values values.json -o result.json 2> /dev/null
)
expect "output on a full disk: exit code" 2 $?
expect "output on a full disk: the old file stays" old "$(cat result.json)"
expect "output on a full disk: nothing is left behind" "page.json result.json values.json" \
  "$(ls -A | grep -v '^err$\|^faulty' | xargs)"

# unprivileged COMMAND...: for root, permissions hold only without the capabilities.
unprivileged() {
  if [ "$(id -u)" -eq 0 ]; then
    setpriv --bounding-set=-all --inh-caps=-all "$@"
  else
    "$@"
  fi
}
mkdir readonly
echo old > readonly/result.json
chmod 555 readonly
unprivileged "${tool[@]}" resolve page.json --values values.json -o readonly/result.json 2> err
expect "read-only directory" "2 ttr: readonly/result.json: Permission denied" "$? $(cat err)"
expect "read-only directory: the old file stays" old "$(cat readonly/result.json)"
page > secret.json
chmod 000 secret.json
include secret.json > secretive.json
unprivileged "${tool[@]}" resolve secretive.json --values values.json > /dev/null 2> err
expect "unreadable include" "1 ttr: not included: secret.json: Permission denied" \
  "$? $(grep ^ttr: err)"

# --- Included files that are none ---

nothing='{"Contents":["a.png","N",null]}'
mkfifo fifo
ln -s fifo link_to_fifo
ln -s endless endless
mkdir directory
# refused NAME REASON: the page that includes NAME.
refused() {
  include "$1" > including.json
  expect "include of $1" "$nothing
ttr: not included: $1: $2
exit 1" "$(refusals including.json --values values.json)"
}
refused fifo "not a regular file"
refused link_to_fifo "not a regular file"
refused directory "not a regular file"
refused directory/ "not a regular file"
refused /dev/zero "not a regular file"
refused /dev/stdin "not a regular file"
refused endless "Too many levels of symbolic links"
refused missing "No such file or directory"
refused page.json/x "Not a directory"
refused "" "No such file or directory"
include 'two\nlines' > including.json
expect "include whose name has two lines" "ttr: not included: two\u000alines: No such file or directory" \
  "$(refusals including.json --values values.json | grep ^ttr:)"

# A file that another program writes over and over while it is read: what is read may be broken, but
# the page around it is resolved.
include changing.json > including.json
(while :; do page 2 > changing.json; : > changing.json; page "$(printf '%9999d' 7)" > changing.json; done) &
writer=$!
changes=0
for _ in {1..30}; do
  result=$(ttr resolve including.json --values values.json 2> /dev/null)
  case $?:$result in
    [01]:'{"Contents":["a.png","N",'*']}') changes=$((changes + 1)) ;;
  esac
done
kill $writer
wait $writer 2> /dev/null
expect "include that changes meanwhile" 30 $changes

# A chain of files, far longer than includes nest, each as deep as JsonCpp allows.
mkdir chain
printf -v opening '{"Contents":[%.0s' {1..490}
printf -v closing ']}%.0s' {1..490}
for i in {1..300}; do
  echo "$opening{\"Include\":{\"Filename\":\"chain/$((i + 1)).json\"}}$closing" > "chain/$i.json"
done
# AddressSanitizer puts red zones into each frame of what writes results as deep as these.
if grep -qs __asan_init "${tool[@]}"; then ulimit -s 32768; fi
ttr resolve chain/1.json > /dev/null 2> err
expect "long chain of deep includes" "1 CTemplateResolver::processContentsIncludeElement: include \
depth of 11 exceeds maximum of 10" "$? $(cat err)"

# One file alone can be too deep for what is done with it.
echo "$opening{\"Include\":{\"Filename\":\"itself.json\"}}$closing" > itself.json
ttr resolve itself.json --pretty > /dev/null 2> err
expect "result too deep to be indented" \
  "2 ttr: itself.json: the result is nested too deep to be indented" "$? $(tail -n 1 err)"
printf '[%.0s' {1..1001} > toodeep.json
page '{"If":{"Condition":0,"Contents":[{"Include":{"Filename":"toodeep.json"}}]}}' > including.json
expect "file that is not included after all" "$nothing
exit 0" "$(refusals including.json --values values.json)"
ttr resolve toodeep.json > /dev/null 2> err
expect "page that is too deep" "2 ttr: toodeep.json: Exceeded stackLimit in readValue()." \
  "$? $(cat err)"

(
  failures=0
  mkdir gone
  cd gone
  rmdir ../gone
  expect "working directory that is gone" "$fine" \
    "$(ttr resolve "$work/page.json" --values "$work/values.json")"
  exit $failures
)
failures=$((failures + $?))

# --- Bytes that are no text ---

printf '\xef\xbb\xbf{"Contents":["A.PNG",\r\n{"Include":{"Filename":"marked.json"}}]}\r\n' > including.json
printf '\xef\xbb\xbf{"Contents":["B.PNG"]}\r\n' > marked.json
expect "byte order marks and CRLF" '{"Contents":["a.png",{"Contents":["b.png"]}]}
exit 0' "$(refusals including.json)"
printf '{"a":"\xff"}' > bytes.json
printf '{"Contents":["\xfe $(a).PNG","\xc3"]}' > including.json
expect "bytes that are no UTF-8" '{"Contents":["\ufffd \ufffd.png","\ufffd"]}
exit 0' "$(refusals including.json --values bytes.json)"
printf '{"Contents":["a\0b"]}' > including.json
expect "a zero byte" '{"Contents":["a\u0000b"]}
exit 0' "$(refusals including.json)"

include 'x\u0000y\u001b[31m' > including.json
expect "name with a zero byte" "ttr: not included: x: No such file or directory" \
  "$(refusals including.json --values values.json | grep ^ttr:)"
include 'x\u001b[31m\r' > including.json
expect "name with control characters" "ttr: not included: x\u001b[31m\u000d: No such file or directory" \
  "$(refusals including.json --values values.json | grep ^ttr:)"

# --- Includes confined to a folder ---

mkdir -p root/sub root_beside outside
page 1 > root/inner.json
page 1 > root/sub/deep.json
page 1 > root_beside/file.json
page 1 > outside/file.json
ln -s ../outside root/outlet
ln -s ../outside/file.json root/out.json
ln -s sub root/inlet
ln -s root link_to_root
ln -s root/inner.json into_root.json
inside='{"Contents":["a.png","N",{"Contents":["a.png","N",1]}]}'
# confined NAME EXPECTED ARGUMENT...: the page that includes NAME.
confined() {
  include "$1" > including.json
  expect "include of $1 with ${*:3}" "$2" \
    "$(refusals including.json --values values.json "${@:3}" | sed "s|$work/||")"
}
out() { printf '%s\nttr: not included: %s: outside of root\nexit 1' "$nothing" "$1"; }
for root in root root/ ./root/sub/.. "$work/root" link_to_root; do
  confined root/inner.json "$inside"$'\nexit 0' --root "$root"
  confined root/inlet/deep.json "$inside"$'\nexit 0' --root "$root"
  confined into_root.json "$inside"$'\nexit 0' --root "$root"
  for name in outside/file.json root/../outside/file.json root/outlet/file.json root/out.json \
    root_beside/file.json /etc/passwd /proc/self/cmdline /dev/zero; do
    confined "$name" "$(out "$name")" --root "$root"
  done
done
confined inner.json "$inside"$'\nexit 0' --root root --chdir root
confined ../outside/file.json "$(out ../outside/file.json)" --root root --chdir root
confined outside/file.json "$inside"$'\nexit 0' --root /
include ../outside/file.json > root/nested.json
confined nested.json '{"Contents":["a.png","N",{"Contents":["a.png","N",null]}]}
ttr: not included: ../outside/file.json: outside of root
exit 1' --root root --chdir root
echo '{"where":"../outside/file.json"}' > where.json
include '$(where)' > including.json
expect "name from a token" '{"Contents":["a.png",null,null]}
ttr: not included: ../outside/file.json: outside of '"$work"'/root
exit 1' "$(refusals including.json --values where.json --root root --chdir root)"
expect "root that is missing" "ttr: nowhere: No such file or directory
exit 2" "$(refusals page.json --root nowhere)"
expect "root that is a file" "ttr: page.json: not a directory
exit 2" "$(refusals page.json --root page.json)"
expect "empty root" "exit 2" "$(refusals page.json --root '' | tail -1)"

echo "$checks checks, $failures failed"
[ "$checks" -gt 80 ] && [ "$failures" -eq 0 ]
