#!/usr/bin/env bash
# `ttr preview --watch` and `--serve` as an author uses them: an editor saves files, and a browser,
# here curl, is told of it.
#
#   check_watch.sh WORK COMMAND...    WORK is a scratch folder, COMMAND runs the tool
set -uo pipefail
work=$1
shift
tool=("$@")
rm -rf "$work"
mkdir -p "$work"
cd "$work" || exit 1
checks=0
failures=0
patience=60  # seconds that anything may take
started=()
trap 'kill "${started[@]}" 2> /dev/null' EXIT

# expect WHAT EXPECTED ACTUAL
expect() {
  checks=$((checks + 1))
  [ "$2" = "$3" ] && return
  failures=$((failures + 1))
  printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$2" "$3"
}

# eventually WHAT COMMAND...: the command succeeds before patience is at an end. All that follows
# builds on that, so there is no going on without.
eventually() {
  checks=$((checks + 1))
  local what=$1 end=$((SECONDS + patience))
  shift
  until "$@"; do
    if [ "$SECONDS" -ge "$end" ]; then
      printf 'FAILED: %s\nnot within %s s: %s\n--- standard error of ttr\n%s\n' "$what" $patience "$*" \
        "$(cat err)"
      exit 1
    fi
    sleep 0.02
  done
}

# preview ARGUMENT...: starts the tool; its output goes to the files out and err.
preview() {
  : > out > err
  "${tool[@]}" preview "$@" > out 2> err &
  ttr=$!
  started+=("$ttr")
}

# serve ARGUMENT...: starts the tool as a server and one browser that listens to it.
serve() {
  preview "$@" --serve
  eventually "the address is printed" grep -q . out
  url=$(cat out)
  : > events
  curl -sN "${url}events" > events &
  browser=$!
  started+=("$browser")
  eventually "the stream begins" grep -q '^:' events
}

# stop SIGNAL: ends the tool, which does so in order.
stop() {
  kill "-$1" "$ttr"
  wait "$ttr"
  expect "exit code after $1" 0 $?
}

events() { grep -c '^event: reload$' events; }
lines() { grep -c . err; }
more_than() { [ "$("$2")" -gt "$1" ]; }
served() { curl -s "$url"; }
shows() { served | grep -qF -- "$1"; }
shows_not() { ! shows "$1"; }
written() { grep -qsF -- "$1" page.html; }
is_outdated() { served | grep -q '"outdated":"[^"]'; }
is_current() { served | grep -q '"outdated":""'; }

# follows WHAT TEXT: the browser is told to reload, and then gets a page with TEXT. The number of
# events before the change is in $told.
follows() {
  eventually "$1: the browser is told" more_than "$told" events
  eventually "$1: the page is new" shows "$2"
}
# change COMMAND...: does something that the browser is to be told of.
change() {
  told=$(events)
  "$@"
}
save() { printf '%s' "$2" > "$1"; }
page() { printf '{"Contents":["%s",%s]}' "$1" "${2:-1}"; }
include() { printf '{"Include":{"Filename":"%s"}}' "$1"; }
# in_vim FILE COMMAND...: an author's session, given as commands.
in_vim() {
  local file=$1 commands=()
  shift
  for command in "$@" wq; do commands+=(-c "$command"); done
  timeout "$patience" vim -Nu NONE -i NONE -es "${commands[@]}" "$file" < /dev/null
}

# --- Ten edits in vim, saved in each way that it knows ---

page "text 0" > page.json
serve page.json -o page.html
expect "address" "yes" "$([[ $url =~ ^http://127\.0\.0\.1:[0-9]+/$ ]] && echo yes)"
eventually "report of the first build" grep -qx "ttr: built: page.html" err
expect "the first page is served" 1 "$(served | grep -cF '"text 0"')"
expect "the first page is written" 1 "$(grep -cF '"text 0"' page.html)"
expect "only the served page reloads itself" "1 0" \
  "$(served | grep -c '"live":true') $(grep -c '"live":true' page.html)"
backups=(no yes auto)
for i in {1..10}; do
  change in_vim page.json "set backupcopy=${backups[i % 3]}" "%s/text [0-9]*/text $i/"
  expect "edit $i is saved" "$(page "text $i")" "$(cat page.json)"
  follows "edit $i" "\"text $i\""
  eventually "edit $i is written" written "\"text $i\""
done
checks=$((checks + 1))
[ "$(events)" -ge 10 ] || failures=$((failures + 1))
expect "reports of ten edits" "ttr: rebuilt: page.html" \
  "$(tail -n +2 err | grep -v '^ttr: page.json: No such file' | sort -u)"
expect "nothing but the address on standard output" "$url" "$(cat out)"

# --- A fault, and its mending ---

change in_vim page.json '%s/]//'
eventually "fault: the browser is told" more_than "$told" events
eventually "fault: the page is outdated" is_outdated
expect "fault: the last good page stays" 1 "$(served | grep -cF '"text 10"')"
expect "fault: the reason is in the page" 1 "$(served | grep -c '"outdated":"page.json:1:')"
eventually "fault: the reason is reported" grep -q '^page.json:1:.*: error: .*\[json-syntax\]$' err
eventually "fault: the file is outdated, too" written '"outdated":"page.json:1:'
change in_vim page.json '%s/}/]}/' '%s/text 10/text 11/'
follows "mended" '"text 11"'
eventually "mended: no longer outdated" is_current
expect "mended: last report" "ttr: rebuilt: page.html" "$(tail -n 1 err)"

change rm page.json
eventually "page is deleted" is_outdated
change save page.json "$(page "text 12")"
follows "page is back" '"text 12"'
eventually "page is back: not outdated" is_current

# --- All the files that a page is made from ---

change save page.json "$(page "text 13" "$(include parts/head.json)")"
eventually "include that is missing: the page is outdated" is_outdated
expect "include that is missing: the last good page stays" 1 "$(served | grep -cF '"text 12"')"
missing="page.json:1:47: not included: parts/head.json: No such file or directory"
eventually "include that is missing: the reason is in the page" shows "\"outdated\":\"$missing\""
eventually "include that is missing: it is reported" grep -q '^page.json:1:47: .*\[not-included\]$' err
mkdir parts
change save parts/head.json "$(page "head 1")"
follows "include that appears" '"head 1"'
eventually "include that appears: not outdated" is_current
change save parts/head.json '{"Contents":['
eventually "faulty include: the page is outdated" is_outdated
expect "faulty include: the last good page stays" 1 "$(served | grep -cF '"head 1"')"
expect "faulty include: the reason is in the page" 1 \
  "$(served | grep -c '"outdated":"parts/head.json:1:')"
eventually "faulty include: the file is outdated, too" written '"outdated":"parts/head.json:1:'
eventually "faulty include: it is reported" grep -q '^parts/head.json:1:.*: error: ' err
change save parts/head.json "$(page "head 1")"
eventually "faulty include is mended" is_current
change in_vim parts/head.json '%s/head 1/head 2/'
follows "include that changes" '"head 2"'
change mv parts parts.old
eventually "folder is gone" is_outdated
expect "folder is gone: the last good page stays" 1 "$(served | grep -cF '"head 2"')"
mkdir parts.new
page "head 3" > parts.new/head.json
change mv parts.new parts
follows "folder is back" '"head 3"'
eventually "folder is back: not outdated" is_current
change save parts/head.json "$(page "head 4" "$(include parts/deep.json)")"
eventually "include with an include" shows '"outdated":"parts/head.json:1:'
change save parts/deep.json "$(page "deep 1")"
follows "include of an include" '"deep 1"'
expect "include of an include: its parent" 1 "$(served | grep -cF '"head 4"')"

change save page.json "$(page 'value $(a)')"
follows "no values" '"value '
eventually "no values: the fault is reported" grep -q '^page.json:1:.*\[unknown-token\]$' err
eventually "no values: the page is not outdated" is_current
change save values.json '{"a":"one"}'
follows "values that appear" '"value one"'
change in_vim values.json '%s/one/two/'
follows "values that change" '"value two"'
change save page.values.json '{"a":"own"}'
follows "values for this page" '"value own"'
change save page.values.json '{"a":'
eventually "faulty values" is_outdated
change rm page.values.json
follows "own values are gone" '"value two"'
eventually "own values are gone: not outdated" is_current

# Its own output is no reason to build again, even if the page reads it.
change save page.json "$(page "output" "$(include page.html)")"
eventually "page that includes its output" shows '"outdated":"page.html:1:'
count=$(lines)
sleep 1
expect "nothing happens by itself" "$count" "$(lines)"
stop INT
wait "$browser"
expect "the stream ends in order" 0 $?

# --- Faults from the start, in a file that the page includes ---

echo '{"a":6}' > values.json
page first "$(include parts/head.json)" > page.json
page '$(a/0)' > parts/head.json
serve page.json
eventually "faulty from the start: reported" grep -q 'divide by zero' err
expect "faulty from the start: the page says so" 1 "$(served | grep -c '"outdated":"[^"]*divide by zero')"
change save parts/head.json "$(page 'head $(a/6)')"
follows "include is mended" '"head 1"'
eventually "include is mended: not outdated" is_current
expect "report without an output file" "ttr: rebuilt: page.json" "$(tail -n 1 err)"
stop TERM

echo '{"Contents":[' > page.json
serve page.json -q
eventually "no JSON from the start: reported" grep -q '^page.json:.*: error: ' err
expect "no JSON from the start: the page says so" 1 "$(served | grep -c '"outdated":"page.json:')"
change save page.json "$(page mended)"
follows "page is mended" '"mended"'
stop TERM
expect "quiet: nothing but the error" 1 "$(lines)"

page "text 1" "$(include none.json)" > page.json
serve page.json -q
expect "incomplete from the start: shown as it is, outdated" "1 1" \
  "$(served | grep -cF '"text 1"') $(served | grep -c '"outdated":"page.json:1:')"
change save page.json "$(page "text 2" "$(include none.json)")"
follows "incomplete all the time" '"text 2"'
change save none.json "$(page '$(unknown)')"
eventually "complete, with a warning" is_current
expect "quiet: errors only" 0 "$(grep -vc ': error: ' err)"
stop TERM

# --- Images ---

mkdir images
# image DATA: a PNG file as far as its chunks go, with three bytes of data.
image() {
  printf '\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\2\0\0\0-crc'
  printf '\0\0\0\3IDAT%s-crc\0\0\0\0IEND-crc' "$1"
}
embedded() { image "$1" | base64 -w 0; }
echo '{"Contents":[{"Bounds":[0,0,99,99],"Display":["0xFF000000"],"Contents":["logo.png"]}]}' > page.json
serve page.json --assets images
image one > image.png
change cp image.png images/logo.png
follows "image that appears" "$(embedded one)"
image two > image.png
change cp image.png images/logo.png
follows "image that changes" "$(embedded two)"
stop TERM

# --- Without a server; with values and folders that are named ---

mkdir -p pages elsewhere
page 'name $(name)' "$(include part.json)" > pages/page.json
page "part 1" > elsewhere/part.json
echo '{"name":"one"}' > named.json
preview pages/page.json --values named.json --chdir elsewhere --root elsewhere -o page.html --watch
eventually "watch: first build" grep -qx 'ttr: built: page.html' err
eventually "watch: first values" written '"name one"'
save named.json '{"name":"two"}'
eventually "watch: values" written '"name two"'
save elsewhere/part.json "$(page "part 2")"
eventually "watch: include" written '"part 2"'
rm page.html
save pages/page.json "$(page "new")"
eventually "watch: output that was deleted" written '"new"'
expect "watch: standard output" "" "$(cat out)"
stop TERM

page "a picture" > page.json
preview page.json --size 400x300 --size 200x100 -o 'page-{size}.svg' -o page.html --watch
eventually "several outputs" grep -qx 'ttr: built: page-{size}.svg, page.html' err
save page.json '{"Contents":['
eventually "several outputs: outdated" grep -qs OUTDATED page-200x100.svg
rm -rf page-400x300.svg
mkdir page-400x300.svg
save page.json "$(page "again")"
eventually "output that cannot be written" grep -q '^ttr: page-400x300.svg: ' err
rmdir page-400x300.svg
save page.json "$(page "once more")"
eventually "output that can be written again" grep -qx 'ttr: rebuilt: page-{size}.svg, page.html' err
stop TERM

# --- What cannot begin ---

# refused EXPECTED ARGUMENT...
refused() {
  local expected=$1
  shift
  timeout $patience "${tool[@]}" preview "$@" > out 2> err < /dev/null
  expect "refused: $*" "2 $expected" "$? $(cat out err)"
}
refused "ttr: missing.json: No such file or directory" missing.json -o page.html --watch
refused "ttr: missing.json: No such file or directory" missing.json --serve
refused "ttr: missing.json: No such file or directory" page.json --values missing.json --serve
refused "ttr: missing: No such file or directory" page.json --chdir missing --serve
refused "ttr: missing: No such file or directory" page.json --root missing --serve
refused "ttr: missing: No such file or directory" page.json --assets missing --serve
refused "ttr: --size: 'x' is not WIDTHxHEIGHT, such as 1280x720" page.json --size x --serve
refused "ttr: standard input: cannot be watched" - --serve
refused "ttr: standard input: cannot be watched" page.json --values - --serve
refused "ttr: standard output: cannot be written anew" page.json --format html -o - --watch
refused "ttr: missing/page.html: No such file or directory" page.json -o missing/page.html --watch

serve page.json
port=${url##*:}
port=${port%/}
mv err first_err
refused "ttr: 127.0.0.1:$port: Address already in use" page.json --serve --port "$port"
expect "another host's name is refused" 403 \
  "$(curl -s -o /dev/null -w '%{http_code}' -H "Host: foreign.example:$port" "$url")"
stop INT
serve page.json --port "$port"
expect "chosen port" "http://127.0.0.1:$port/" "$url"
stop TERM
expect "nothing is left behind" "" "$(ls -A | grep '^\.ttr-')"

echo "$checks checks, $failures failed"
[ "$checks" -gt 120 ] && [ "$failures" -eq 0 ]
