"""Nothing in text reports of ttr but printable text and the line ends of the report itself, whatever
pages, values, included files, file names and arguments hold; and no line that an author forged.

    python3 check_printable.py WORK [EMULATOR...] TTR
"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

work = pathlib.Path(sys.argv[1])
ttr = sys.argv[2:]
OBEYED = re.compile("[\x00-\x09\x0b-\x1f\x7f-\x9f\u061c\u200e\u200f\u2028-\u202e\u2066-\u2069]")
COLOUR = re.compile(b"\x1b\\[(0|1|3[1236])m")
CSI, FORGED = "\u009b31m", "\nlobby.json:1:1: error: forged\r\n"
HOSTILE = "\x1bc\x07\x7f" + CSI + "\u061c\u202e\u2066\u2028\u2029\t" + FORGED + "end"
NAME = b"\x1bc\x07\x9b31m\xff\x7f\xc2\x9b31m\xe2\x80\xae\xe2\x80\xa8" + FORGED.encode() + b"end"
runs = 0
shown = 0


def check(what, output):
    """The lines of a report are its own: none is one that an author wrote. Lines of files in a diff
    have a mark before them."""
    global shown
    text = output.decode()  # no UTF-8 is an error, too
    if OBEYED.search(text):
        sys.exit(f"{what}: {OBEYED.search(text).group()!r} in {text!r}")
    if any(line.startswith("lobby.json:1:1:") for line in text.split("\n")):
        sys.exit(f"{what}: a forged line in {text!r}")
    shown += text.count("\\u001b")


def run(*arguments, stdin=b"", is_text=True):
    global runs
    runs += 1
    done = subprocess.run([*ttr, *arguments], cwd=work, input=stdin, capture_output=True,
                          timeout=120, check=False)
    if done.returncode not in (0, 1, 2):
        sys.exit(f"ttr {arguments}: exit code {done.returncode}: {done.stderr!r}")
    check(f"standard error of {arguments}", done.stderr)
    if is_text:
        check(f"standard output of {arguments}", done.stdout)
    return done


def page(name, document):
    path = os.path.join(os.fsencode(work), name)
    with open(path, "wb") as file:
        file.write(document if isinstance(document, bytes) else json.dumps(document).encode())
    return name


shutil.rmtree(work, ignore_errors=True)
work.mkdir(parents=True)

H = HOSTILE
element = {"Bounds": [0, 0, 10, 10], "Display": {"ImageID": H}, H: H}
documents = [
    {"Contents": [{H: []}]},
    {H: {"Contents": []}},
    {"Contents": [{"Contents" + H: []}, {"Display": ["#" + H]}, {"Bounds": [H, "5" + H + "%", 1]}]},
    {"Contents": [{"If": {"Condition": H, "Equals": "$(x" + H + ")"}, "Contents": [element]}]},
    {"Contents": [{"If": {"Condition": H, "<": H}, "Contents": [element]}]},
    {"Contents": [{"Loop": {"List": H, "Start": H, "Stop": H, "Contents": [element]}}]},
    {"Contents": [{"Loop": {"Start": 0, "Size": 2, "Layout": [[1, 1, 2, 2]], "Contents": [H]}}]},
    {"Contents": [{"Include": {"Filename": H}}, {"Include": {"Filename": "broken.json"}}]},
    {"Contents": [{"Include": {"Filename": "hostile.json"}}]},
    {"Contents": [{"Include": {"Filename": "$(clock)"}}]},
    {"Contents": ["$(" + H + ")", "$(clock." + H + ")", "$(clock[" + H + "])", "$(a" + H, "$(clock)"]},
    {"Contents": ["$(clock / 0)", "$(clock+" + H + ")", "$(rgb " + H + ")", {"Colour": "#" + H}]},
    {"Context": {"a" + H: "$(" + H + ")"}, "Contents": ["$(a" + H + ")", {"Text": "$(context.b)"}]},
    {"Contents": [element, {"Container": H, "Contents": [{"Container": H, "Contents": [H]}]}]},
    b'{"Contents": [' + NAME + b"]}",
    b'{"Contents": ["' + NAME.replace(b"\n", b"\\n") + b'", {"If": {"Condition": "\xff\x9b"}}]}',
    b'{"' + NAME.replace(b"\n", b"\\n") + b'": 1, "Contents": [{"\x9b31m": [1]}]} ' + NAME,
    b'{"Contents": [-' + NAME,
    NAME,
    b"",
]
page(b"values.json", {"clock": H, "x" + H: {"a": H}, H: H})
page(b"broken.json", b'{"Contents": [' + NAME)
page(b"hostile.json", {"Contents": ["$(" + H + ")", {H: [{"Include": {"Filename": H}}]}]})
page(b"other.json", {"Contents": [element, "b" + H, {"Other" + H: H, "Bounds": [1, 2, 3, 4]}]})
pages = [page(b"page%d.json" % i, document) for i, document in enumerate(documents)]
pages.append(page(NAME + b".json", documents[3]))
page(NAME + b".broken.json", documents[-3])
pages.append(NAME + b".broken.json")

for name in pages:
    run("resolve", name, is_text=False)
    run("check", name)
    run("check", name, "--pass", "all", "--color", "always", "-o", "report.txt")
    if (work / "report.txt").exists():
        check(f"coloured report of {name}", COLOUR.sub(b"", (work / "report.txt").read_bytes()))
    run("explain", name, "/Contents/0")
    run("explain", name, "/Contents/1")
    run("explain", name, "/Contents/0/" + H.replace("/", "~1"))
    run("diff", name, "other.json")
    run("diff", "other.json", name)
    run("preview", name, "-o", "picture.svg")
    run("preview", name, "-o", "picture.html")
    for form in ("json", "sarif"):
        json.loads(run("check", name, "--format", form, is_text=False).stdout or b"{}")
    json.loads(run("explain", name, "/Contents/0", "--json", is_text=False).stdout or b"{}")
    json.loads(run("diff", name, "other.json", "--format", "json", is_text=False).stdout or b"{}")
run("check", ".")
run("check", "-", stdin=NAME)

# Arguments.
for option in ("--values", "--size", "--pass", "--chdir", "--root", "--color", "--format", "-o"):
    for command in ("resolve", "check", "preview", "explain", "diff", "test", "schema"):
        target = b"missing-folder/" + NAME if option == "-o" else NAME
        operands = {"explain": ["page0.json", "/Contents"], "diff": ["page0.json", "other.json"],
                    "schema": [], "test": ["."]}.get(command, ["page0.json"])
        run(command, *operands, option, target, is_text=command != "resolve")
for arguments in ([NAME], ["resolve", NAME], ["check", NAME], ["explain", "page0.json", NAME],
                  ["explain", "page0.json", b"/" + NAME], ["diff", NAME, NAME], ["test", NAME],
                  ["preview", NAME, "-o", "a.svg"], ["preview", "page0.json", "-o", NAME],
                  ["preview", "page0.json", "--assets", NAME, "-o", "a.svg"], ["schema", NAME],
                  ["resolve", b"--" + NAME], ["check", "page0.json", "--max-warnings", NAME],
                  ["preview", "page0.json", "--port", NAME, "--serve"],
                  ["test", ".", "--junit", b"missing-folder/" + NAME]):
    run(*arguments)

# Values that are no JSON, and cases.
page(b"values.json", b"{" + NAME)
run("resolve", "page0.json", is_text=False)
for i, document in enumerate(documents):
    case = os.path.join(os.fsencode(work), b"cases", NAME + b"%d" % i)
    os.makedirs(case)
    page(os.path.join(case, b"template.json"), document)
    page(os.path.join(case, b"expected.json"), b'{"Contents": ["' + NAME + b'"]}')
    page(os.path.join(case, b"expected.err"), NAME)
    if i == 0:
        page(os.path.join(case, b"options"), NAME)
run("test", "cases")
run("test", "cases", "--update")
run("test", "cases")

if shown < 100:
    sys.exit(f"only {shown} escapes: the reports do not show what this test is about")
print(f"{runs} runs, {shown} escape characters made visible")
