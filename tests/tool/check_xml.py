"""What ttr writes as XML and HTML is well-formed, also for pages and file names that hold markup,
control characters and bytes that are no UTF-8.

    python3 check_xml.py WORK [EMULATOR...] TTR
"""
import pathlib
import shutil
import subprocess
import sys
import xml.etree.ElementTree

work = pathlib.Path(sys.argv[1])
ttr = sys.argv[2:]
HOSTILE = b'<b>&amp;]]>\\"\'--> \x7f\xff\xc3 \\u0001 \\ud83d\\ude00 \\ufffe'


def run(expected_exit, *arguments):
    done = subprocess.run([*ttr, *arguments], cwd=work, stdout=subprocess.PIPE, check=False)
    if done.returncode != expected_exit:
        sys.exit(f"ttr {arguments}: exit code {done.returncode}, not {expected_exit}")
    return done.stdout


shutil.rmtree(work, ignore_errors=True)
case = work / "cases" / "<a> & \"b\""
case.mkdir(parents=True)
(case / "template.json").write_bytes(b'{"Contents": ["' + HOSTILE + b'"]}')
(case / "expected.json").write_bytes(b'{"Contents": ["<"]}')
(case / "expected.err").write_bytes(HOSTILE + b"\x00\x1b[31m\r\n")
(work / "<old> & \"a\".json").write_bytes(b'{"Contents": [{"Contents": ["' + HOSTILE + b'"]}]}')
(work / "new.json").write_bytes(b'{"Contents": ["' + HOSTILE + b'", {"Display": ["#FF0000FF"]}]}')

report = xml.etree.ElementTree.fromstring(run(1, "test", "cases", "--junit", "-"))
failure = report.find("testsuite/testcase/failure")
if failure is None or "\n-<b>&amp;]]>" not in failure.text or "\n-    \"<\"\n" not in failure.text:
    sys.exit(f"the failure is not told: {failure if failure is None else failure.text!r}")
if report.find("testsuite/testcase").get("name") != case.name:
    sys.exit("the name of the case is changed")

page = xml.etree.ElementTree.fromstring(
    run(1, "diff", "<old> & \"a\".json", "new.json", "--format", "html"))
rows = page.findall(".//{http://www.w3.org/1999/xhtml}tbody/{http://www.w3.org/1999/xhtml}tr")
if len(rows) != 3:
    sys.exit(f"{len(rows)} rows, not 3")
