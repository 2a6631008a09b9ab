#!/usr/bin/env python3
"""Turns the figures of the measurements into the table of the goals.

usage: report.py [--json] < FIGURES      (lines "FIGURE ROW NUMBER"; all others are left out)
"""
import json
import sys

# Row, what is measured, against what, how a figure is written, goal, and when the goal is met.
ROWS = [
    ("download-wall", "256 MiB download, time", "loop of 64 KiB reads", "{:.2f}",
     "at most 1.05", lambda figure: figure <= 1.05),
    ("download-processor", "256 MiB download, processor", "loop of 64 KiB reads", "{:.2f}",
     "at most 2.0", lambda figure: figure <= 2.0),
    ("download-small-reads", "256 MiB download, time", "loop of 10 KiB reads", "{:.2f}",
     "below 1", lambda figure: figure < 1),
    ("download-library", "256 MiB download, time", "URLDownloadToFile", "{:.2f}",
     "below 1", lambda figure: figure < 1),
    ("download-secure", "256 MiB download over https, time", "loop of 64 KiB reads", "{:.2f}",
     "at most 1.05", lambda figure: figure <= 1.05),
    ("signed-wall", "256 MiB signed download, time", "the same without a signature", "{:.2f}",
     "at most 1.10", lambda figure: figure <= 1.10),
    ("signed-processor", "256 MiB signed download, processor", "the same without a signature",
     "{:.2f}", "at most 2.0", lambda figure: figure <= 2.0),
    ("signed-memory", "peak memory, signed download", "the same without a signature",
     "{:+.0f} KiB", "at most +64 KiB", lambda figure: figure <= 64),
    ("throttled-wall", "16 MiB at 2 MiB/s, time", "the server's own time", "{:.3f}",
     "at most 1.02", lambda figure: figure <= 1.02),
    ("throttled-processor", "16 MiB at 2 MiB/s, processor", "one core", "{:.1f} %",
     "below 5 %", lambda figure: figure < 5),
    ("memory", "peak memory, 1 GiB body", "1 MiB body", "{:+.2f} MiB",
     "below +2 MiB", lambda figure: figure < 2),
    ("nothing-processor", "nothing to do, processor", "program with one window", "{:+.2f} s",
     "at most +0.4 s", lambda figure: figure <= 0.4),
    ("splash-painted", "start to painted splash", "minimal window program", "{:+.0f} ms",
     "at most +150 ms", lambda figure: figure <= 150),
    ("main-painted", "splash end to painted main window", "minimal window program", "{:+.0f} ms",
     "at most +150 ms", lambda figure: figure <= 150),
    ("connections", "connections of a run with download", "", "{:.0f}",
     "1", lambda figure: figure == 1),
    ("requests", "its requests, other than expected", "HEAD, HEAD, HEAD, GET", "{:.0f}",
     "0", lambda figure: figure == 0),
    ("size", "size of swiftpatch.exe", "", "{:.1f} KiB",
     "at most 400 KiB", lambda figure: figure <= 400),
    ("install", "install of a 200 MiB build", "two CopyFile, each flushed", "{:.2f}",
     "at most 1.3", lambda figure: figure <= 1.3),
    ("log", "opening a 10 MB log", "reading, one set of the text", "{:.2f}",
     "at most 1.5", lambda figure: figure <= 1.5),
    ("cabinet-bare", "extracting a cabinet", "bare walk of the iterator", "{:.2f}", "", None),
    ("cabinet-native", "extracting a cabinet", "native cabextract", "{:.2f}", "", None),
]


def verdict(is_met, figure):
    if is_met is None:
        return ""
    return "ok" if is_met(figure) else "missed"


def results(figures):
    found = []
    for row, what, against, form, goal, is_met in ROWS:
        if row in figures:
            figure = figures[row]
            found.append({"row": row, "what": what, "against": against, "figure": figure,
                          "shown": form.format(figure), "goal": goal,
                          "result": verdict(is_met, figure)})
    return found


def main(arguments):
    figures = {}
    for line in sys.stdin:
        words = line.split()
        if len(words) == 3 and words[0] == "FIGURE":
            figures[words[1]] = float(words[2])
    table = results(figures)
    if "--json" in arguments:
        json.dump([{key: entry[key] for key in entry if key != "shown"} for entry in table],
                  sys.stdout, indent=2)
        print()
        return
    form = "{what:34} {against:28} {shown:>11}  {goal:16} {result}"
    print(form.format(what="what", against="against", shown="figure", goal="goal",
                      result="result"))
    for entry in table:
        print(form.format(**entry).rstrip())


main(sys.argv[1:])
