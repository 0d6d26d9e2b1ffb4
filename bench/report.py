#!/usr/bin/env python3
"""Prints the ratio table of a gsc_bench JSON result (Google Benchmark's --benchmark_out).

Times are CPU times, the median of the repetitions when there are any. Readers are set against
JsonCpp's parse of the same answer text and a read-only walk of its tree; writers against
JsonCpp's compact text of the request and a deep copy of the request tree."""
import json
import sys
from collections import defaultdict

READER_WALK_AIM = 1.5
# The programme reader also copies every element record into aligned storage and back.
READER_WALK_AIMS = {"GET_ALL_PROGRAMMES": 3.0}
REPORTING_AIM = 2.0
WRITER_COPY_AIM = 1.5


def load(path):
    with open(path) as f:
        data = json.load(f)
    runs = defaultdict(list)
    medians = {}
    for b in data["benchmarks"]:
        name = b.get("run_name", b["name"])
        scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[b.get("time_unit", "ns")]
        entry = (b["cpu_time"] * scale, b.get("allocs", 0.0))
        if b.get("run_type") == "aggregate":
            if b.get("aggregate_name") == "median":
                medians[name] = entry
        else:
            runs[name].append(entry)
    results = dict(medians)
    for name, entries in runs.items():
        if name not in results:
            results[name] = (sum(e[0] for e in entries) / len(entries),
                             sum(e[1] for e in entries) / len(entries))
    return data.get("context", {}), results


def fmt_time(us):
    return f"{us / 1000:.2f} ms" if us >= 1000 else f"{us:.2f} us"


def fmt_allocs(n):
    return f"{n:.0f}" if n >= 10 or n == int(n) else f"{n:.1f}"


def main():
    context, r = load(sys.argv[1])
    print(f"# {context.get('num_cpus', '?')} x {context.get('mhz_per_cpu', '?')} MHz, "
          f"{context.get('date', '')}; CPU time, median of repetitions")
    print()
    print("| operation | codec | vs JsonCpp text | vs floor | reporting / plain | "
          "skipping / plain | allocs/call codec (baseline) | aims |")
    print("|---|---:|---:|---:|---:|---:|---:|---|")
    ops = sorted({n.split("/")[1] for n in r if n.startswith(("read/", "write/"))},
                 key=lambda op: (not any(n.startswith("read/" + op + "/") for n in r), op))
    for op in ops:
        reader = f"read/{op}/codec" in r
        base = f"read/{op}" if reader else f"write/{op}"
        codec = r.get(base + "/codec")
        if codec is None:
            continue
        text = r.get(base + ("/parse" if reader else "/text"))
        floor = r.get(base + ("/walk" if reader else "/copy"))
        text_ratio = codec[0] / text[0] if text else None
        floor_ratio = codec[0] / floor[0] if floor else None
        reporting = r.get(base + "/report")
        reporting_ratio = reporting[0] / codec[0] if reporting else None
        skipping = r.get(base + "/skip")
        skipping_ratio = skipping[0] / codec[0] if skipping else None
        if reader:
            walk_aim = READER_WALK_AIMS.get(op, READER_WALK_AIM)
            met = ((floor_ratio is not None and floor_ratio <= walk_aim) and
                   (reporting_ratio is not None and reporting_ratio <= REPORTING_AIM) and
                   (skipping_ratio is not None and skipping_ratio <= REPORTING_AIM))
            text_label, floor_label = "/parse", "/walk"
            aim = f"<={walk_aim:g} walk, reporting and skipping <={REPORTING_AIM:g}"
        else:
            met = floor_ratio is not None and floor_ratio <= WRITER_COPY_AIM
            text_label, floor_label, aim = "/text", "/copy", "<=1.5 copy"
        allocs_base = (text if reader else floor) or (0.0, 0.0)
        print(f"| {'read' if reader else 'write'} {op} | {fmt_time(codec[0])} | "
              f"{text_ratio:.3f} {text_label} | {floor_ratio:.2f} {floor_label} | "
              f"{f'{reporting_ratio:.2f}' if reporting_ratio else '-'} | "
              f"{f'{skipping_ratio:.2f}' if skipping_ratio else '-'} | "
              f"{fmt_allocs(codec[1])} ({fmt_allocs(allocs_base[1])} "
              f"{'parse' if reader else 'copy'}) | {'met' if met else 'NOT met'} ({aim}) |")

    series = sorted({n.split("/")[1] for n in r if n.startswith("scale/")})
    if not series:
        return
    print()
    print("| scaling series | per member at 1 | 10 | 100 | 1000 | 1000/10 codec | 1000/10 floor |")
    print("|---|---:|---:|---:|---:|---:|---:|")
    for s in series:
        floor_kind = "walk" if f"scale/{s}/10/walk" in r else "copy"
        per = {}
        floor_per = {}
        for n in (1, 10, 100, 1000):
            if f"scale/{s}/{n}/codec" in r:
                per[n] = r[f"scale/{s}/{n}/codec"][0] / n
            if f"scale/{s}/{n}/{floor_kind}" in r:
                floor_per[n] = r[f"scale/{s}/{n}/{floor_kind}"][0] / n
        cells = [fmt_time(per[n]) if n in per else "-" for n in (1, 10, 100, 1000)]
        ratio = f"{per[1000] / per[10]:.2f}" if 10 in per and 1000 in per else "-"
        floor_ratio = (f"{floor_per[1000] / floor_per[10]:.2f} {floor_kind}"
                       if 10 in floor_per and 1000 in floor_per else "-")
        print(f"| {s} | " + " | ".join(cells) + f" | {ratio} | {floor_ratio} |")


if __name__ == "__main__":
    main()
