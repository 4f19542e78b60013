#!/usr/bin/env python3
"""Sets every benchmark's figure beside its limit, from Google Benchmark's JSON
output (one file per program), and prints the machine and one Markdown table,
ready for docs/performance.md.

A benchmark states its limit with bench/limit.h: a counter "limit" bounds
the time per iteration (as the benchmark reports it, in its unit),
"<name>_limit" the counter <name>. Over a limit is reported, never a
failure: the exit status is 0 unless no results could be read at all.
"""

import datetime
import json
import os
import platform
import re
import subprocess
import sys

# Parts of a run name that say how it was run, not what it measures.
HOW_RUN = re.compile(r"^(iterations|repeats|min_time|min_warmup_time|threads):|"
                     r"^(manual_time|real_time|process_time)$")
UNITS = {"ns", "us", "ms", "s", "KiB", "MiB", "x", "pct"}


def number(value):
    if value is None:
        return "-"
    size = abs(value)
    if size >= 100:
        return f"{value:.0f}"
    if size >= 10:
        return f"{value:.1f}"
    if size >= 1:
        return f"{value:.2f}"
    return f"{value:.3g}"


def short_name(run_name):
    parts = run_name.split("/")
    return "/".join([parts[0]] + [p for p in parts[1:] if not HOW_RUN.search(p)])


def counter_unit(counter):
    unit = counter.rsplit("_", 1)[-1]
    return unit if unit in UNITS else ""


def failed(run):
    return run.get("error_occurred") or run.get("skipped")


def rows_of(path):
    """(benchmark, figure, limit, verdict, comparison) for each figure in one program's output."""
    program = os.path.basename(path).removesuffix(".json")
    try:
        with open(path, encoding="utf-8") as f:
            text = f.read()
        # Empty when a filter left the program nothing to run.
        runs = json.loads(text).get("benchmarks", []) if text else []
    except (OSError, ValueError):
        return [(program, "-", "-", "no results: the program did not finish", False)]
    aggregated = {r["run_name"] for r in runs if r.get("run_type") == "aggregate"}
    rows = []
    for run in runs:
        if run.get("run_type") == "aggregate":
            if run.get("aggregate_name") != "median":
                continue
        elif run.get("run_name") in aggregated:
            continue
        name = short_name(run.get("run_name", run.get("name", "?")))
        label = run.get("label", "")
        comparison = label == "comparison"
        if label:
            name += f" ({label})"
        if failed(run):
            message = run.get("error_message") or run.get("skip_message") or "skipped"
            rows.append((name, "-", "-", f"not measured: {message}", comparison))
            continue
        unit = run.get("time_unit", "ns")
        limits = sorted(k for k in run if k == "limit" or k.endswith("_limit"))
        if not limits:
            rows.append((name, f"{number(run.get('real_time'))} {unit}", "-", "no limit",
                         comparison))
            continue
        for key in limits:
            limit = run[key]
            if key == "limit":
                figure, shown, what = run.get("real_time"), unit, name
            else:
                counter = key.removesuffix("_limit")
                figure, shown = run.get(counter), counter_unit(counter)
                what = f"{name} {counter}"
            if figure is None:
                verdict = "no figure"
            else:
                verdict = "within" if figure <= limit else "over"
            rows.append((what, f"{number(figure)} {shown}".strip(), f"{limit:g} {shown}".strip(),
                         verdict, comparison))
    return rows


def first_line(command):
    try:
        out = subprocess.run(command, capture_output=True, text=True, timeout=10).stdout
        return out.splitlines()[0].strip() if out else ""
    except (OSError, subprocess.SubprocessError):
        return ""


def machine(paths):
    cpu = ""
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as f:
            for line in f:
                if line.startswith("model name"):
                    cpu = line.split(":", 1)[1].strip()
                    break
    except OSError:
        pass
    system = platform.system()
    try:
        with open("/etc/os-release", encoding="utf-8") as f:
            for line in f:
                if line.startswith("PRETTY_NAME="):
                    system = line.split("=", 1)[1].strip().strip('"')
    except OSError:
        pass
    mpv = first_line(["mpv", "--version"])
    mpv = mpv.split()[1] if mpv.startswith("mpv ") else "unknown"
    qt = first_line(["qtpaths6", "--qt-version"]) or "unknown"
    context = {}
    for path in paths:
        try:
            with open(path, encoding="utf-8") as f:
                context = json.load(f).get("context", {})
            break
        except (OSError, ValueError):
            continue
    load = ", ".join(f"{x:.2f}" for x in context.get("load_avg", []))
    mhz = f" at {context['mhz_per_cpu']} MHz" if context.get("mhz_per_cpu") else ""
    when = datetime.datetime.now().astimezone().strftime("%Y-%m-%d %H:%M %Z")
    return [
        f"- Date: {when}",
        f"- CPU: {cpu or 'unknown'}, {os.cpu_count()} cores{mhz}",
        f"- OS: {system}, Linux {platform.release()}",
        f"- Qt {qt}, mpv {mpv}",
        f"- Load average when the first program started: {load or 'unknown'}",
    ]


def main(paths):
    rows = [row for path in paths for row in rows_of(path)]
    if not rows:
        print("bench/table.py: no results to show", file=sys.stderr)
        return 1
    over = [r[0] for r in rows if r[3] == "over" and not r[4]]
    over_comparisons = [r[0] for r in rows if r[3] == "over" and r[4]]
    unmeasured = [r[0] for r in rows if r[3] not in ("within", "over")]
    print()
    print("\n".join(machine(paths)))
    print()
    if over:
        print(f"Over the limit: {len(over)} of {len(rows)}: " + ", ".join(over) + ".")
    else:
        print(f"Over the limit: none of {len(rows)}.")
    if over_comparisons:
        print("Over, but only compared (routes the program does not take): "
              + ", ".join(over_comparisons) + ".")
    if unmeasured:
        print("Without a verdict: " + ", ".join(unmeasured) + ".")
    print()
    header = ("Benchmark", "Figure", "Limit", "Within/over")
    widths = [max(len(str(r[i])) for r in rows + [header]) for i in range(4)]

    # Figures and limits right-aligned, in the terminal and in Markdown alike.
    right = (False, True, True, False)

    def line(cells):
        return "| " + " | ".join(str(c).rjust(w) if r else str(c).ljust(w)
                                 for c, w, r in zip(cells, widths, right)) + " |"

    print(line(header))
    print("|" + "|".join("-" * (w + 1) + (":" if r else "-") for w, r in zip(widths, right)) + "|")
    for row in rows:
        print(line(row[:4]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
