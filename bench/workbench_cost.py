#!/usr/bin/env python3
"""What the workbench costs beside the library: CPU time of `ttr check` as a ratio to that of
`ttr resolve` of the same page, and time, memory and size of a preview of many passes.

    bench/workbench_cost.py TTR        prints the table; fails when a bound is passed

The two commands run by turns, and of each the least time counts, so that other work on the machine
disturbs both alike.
"""
import json
import os
import subprocess
import sys
import tempfile

MOST_RATIO = 4.0
TURNS = 5
PREVIEW_BOUNDS = {"seconds": 4.0, "MB": 200.0, "file MB": 4.0}


def element(number, fault):
    """An element as pages have them; with a fault its first text names an unknown token."""
    token = "$(nothing)" if fault else "$(gate.name)"
    return {
        "Bounds": ["5%", number % 700, "90%", 24],
        "Display": ["#FFCC00FF", "#102030FF"],
        "Contents": [f"Gate {token}", "Icons/Plane.PNG"],
    }


def page_with(elements, faults, in_one_display):
    every = elements // faults if faults else 0
    contents = [element(n, every and not in_one_display and n % every == 0) for n in range(elements)]
    if in_one_display:
        contents[0]["Display"] = [f"red {n}" for n in range(faults)]
    return {"Page": {"Contents": contents}}


def rotating_page(elements):
    loop = {
        "List": ",".join(f"line {n}" for n in range(40)), "Value": "line",
        "Bounds": [0, 0, 600, 24], "Contents": [{"Bounds": [0, 0, 600, 24], "Contents": ["$(line)"]}],
    }
    return {"Page": {"Contents": [element(n, False) for n in range(elements)] + [{"Loop": loop}]}}


def run(command):
    """CPU seconds, and the peak memory in MB, of one run."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    if os.waitstatus_to_exitcode(status) not in (0, 1):
        sys.exit(f"{command} failed")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def check_ratio(ttr, page, values):
    commands = [[ttr, name, page, "--values", values] for name in ("resolve", "check")]
    times = [[run(command)[0] for command in commands] for _ in range(TURNS)]
    resolve, check = (min(column) for column in zip(*times))
    return resolve, check


def main():
    ttr = os.path.abspath(sys.argv[1])
    passed = True
    with tempfile.TemporaryDirectory() as folder:
        values = os.path.join(folder, "values.json")
        page = os.path.join(folder, "page.json")
        with open(values, "w") as file:
            json.dump({"gate": {"name": "B7"}}, file)
        print("5000 elements, with faults      resolve s   check s   ratio")
        for faults, in_one in ((0, False), (50, False), (500, False), (500, True)):
            with open(page, "w") as file:
                json.dump(page_with(5000, faults, in_one), file)
            resolve, check = check_ratio(ttr, page, values)
            name = f"{faults}" + (" in one Display" if in_one else "")
            print(f"{name:30} {resolve:10.3f} {check:9.3f} {check / resolve:7.2f}")
            passed = passed and check / resolve <= MOST_RATIO
        with open(page, "w") as file:
            json.dump(rotating_page(1000), file)
        html = os.path.join(folder, "page.html")
        seconds, memory = run([ttr, "preview", page, "--values", values, "--passes", "40", "-o", html])
        figures = {"seconds": seconds, "MB": memory, "file MB": os.path.getsize(html) / 1e6}
        print("1000 elements in 40 passes as HTML: " +
              ", ".join(f"{value:.2f} {name}" for name, value in figures.items()))
        passed = passed and all(figures[name] <= most for name, most in PREVIEW_BOUNDS.items())
    sys.exit(0 if passed else 1)


if __name__ == "__main__":
    main()
