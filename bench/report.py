#!/usr/bin/env python3
"""Prints the ratio tables of a gsc_bench JSON result (Google Benchmark's --benchmark_out).

Times are CPU times, the median of the repetitions when there are any. Readers are set against
JsonCpp's parse of the same answer text and a read-only walk of its tree; writers against
JsonCpp's compact text of the request and a deep copy of the request tree. The text readers
(deserialize_json) are set against JsonCpp's parse followed by the tree reader, the way from
text to records they replace, and against simdjson's parse of the same text, which they do
first; their rates are megabytes (10^6 bytes) of answer text per CPU second."""
import json
import sys
from collections import defaultdict

READER_WALK_AIM = 1.5
# The programme reader also copies every element record into aligned storage and back.
READER_WALK_AIMS = {"GET_ALL_PROGRAMMES": 3.0}
REPORTING_AIM = 2.0
WRITER_COPY_AIM = 1.5
# Text readers: at least this many times as fast as JsonCpp's parse and the tree reader...
TEXT_SPEEDUP_AIM = 8.0
TEXT_SPEEDUP_AIMS = {"GET_ALL_PROGRAMMES": 10.0, "GET_ALL_GUIDESCREEN_CFG": 10.0}
# ...within this many times simdjson's parse of the text, for the large listings...
TEXT_FLOOR_AIMS = {"GET_ALL_PROGRAMMES": 2.0, "GET_ALL_GUIDESCREEN_CFG": 2.0}
# ...and, once warm, without a single heap allocation.
TEXT_ALLOCS_AIM = 0


def load(path):
    with open(path) as f:
        data = json.load(f)
    runs = defaultdict(list)
    medians = {}
    for b in data["benchmarks"]:
        name = b.get("run_name", b["name"])
        scale = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}[b.get("time_unit", "ns")]
        # CPU time in us, operator new calls, other malloc-family calls, text bytes per second.
        entry = (b["cpu_time"] * scale, b.get("allocs", 0.0), b.get("mallocs", 0.0),
                 b.get("bytes_per_second"))
        if b.get("run_type") == "aggregate":
            if b.get("aggregate_name") == "median":
                medians[name] = entry
        else:
            runs[name].append(entry)
    results = dict(medians)
    for name, entries in runs.items():
        if name not in results:
            rates = [e[3] for e in entries if e[3] is not None]
            results[name] = (sum(e[0] for e in entries) / len(entries),
                             sum(e[1] for e in entries) / len(entries),
                             sum(e[2] for e in entries) / len(entries),
                             sum(rates) / len(rates) if rates else None)
    return data.get("context", {}), results


def fmt_time(us):
    return f"{us / 1000:.2f} ms" if us >= 1000 else f"{us:.2f} us"


def fmt_allocs(n):
    return f"{n:.0f}" if n >= 10 or n == int(n) else f"{n:.1f}"


def fmt_rate(entry):
    return f"{entry[3] / 1e6:,.0f}" if entry and entry[3] else "-"


def fmt_size(size):
    return f"{size / 1e6:.2f} MB" if size >= 1e6 else (
        f"{size / 1e3:.1f} kB" if size >= 1e3 else f"{size:.0f} B")


def text_table(r):
    """The text readers beside JsonCpp's parse and tree reader and simdjson's parse."""
    ops = sorted({n.split("/")[1] for n in r if n.startswith("read/") and n.endswith("/text")})
    if not ops:
        return
    print()
    print("| answer | text | parse + tree MB/s | text reader MB/s | simdjson parse MB/s | "
          "JsonCpp parse MB/s | text speed-up over parse + tree | text / simdjson parse | "
          "text reporting, skipping / plain | heap allocs/call warm text (reporting, skipping) "
          "| aims |")
    print("|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---|")
    for op in ops:
        base = f"read/{op}"
        text = r[base + "/text"]
        tree = r.get(base + "/parse-codec")
        floor = r.get(base + "/simdjson")
        parse = r.get(base + "/parse")
        reporting = r.get(base + "/text-report")
        skipping = r.get(base + "/text-skip")
        size = text[3] * text[0] / 1e6 if text[3] else None
        speedup = tree[0] / text[0] if tree else None
        over_floor = text[0] / floor[0] if floor else None
        # Every heap allocation: operator new and the malloc family past it.
        heap = [e[1] + e[2] if e else None for e in (text, reporting, skipping)]
        speedup_aim = TEXT_SPEEDUP_AIMS.get(op, TEXT_SPEEDUP_AIM)
        floor_aim = TEXT_FLOOR_AIMS.get(op)
        misses = []
        if speedup is None or speedup < speedup_aim:
            misses.append(f">={speedup_aim:g}x parse + tree")
        if floor_aim is not None and (over_floor is None or over_floor > floor_aim):
            misses.append(f"<={floor_aim:g} simdjson")
        if heap[0] is None or heap[0] > TEXT_ALLOCS_AIM:
            misses.append(f"{TEXT_ALLOCS_AIM} allocs")
        aims = [f">={speedup_aim:g}x"] + ([f"<={floor_aim:g} simdjson"] if floor_aim else []) + \
            [f"{TEXT_ALLOCS_AIM} allocs"]
        verdict = "met" if not misses else "NOT met: " + ", ".join(misses)
        ratios = " / ".join(f"{e[0] / text[0]:.2f}" if e else "-" for e in (reporting, skipping))
        allocs = fmt_allocs(heap[0]) + " (" + ", ".join(
            fmt_allocs(h) if h is not None else "-" for h in heap[1:]) + ")"
        print(f"| {op} | {fmt_size(size) if size else '-'} | {fmt_rate(tree)} | "
              f"{fmt_rate(text)} | {fmt_rate(floor)} | {fmt_rate(parse)} | "
              f"{f'{speedup:.1f}' if speedup else '-'} | "
              f"{f'{over_floor:.2f}' if over_floor else '-'} | {ratios} | {allocs} | "
              f"{verdict} ({', '.join(aims)}) |")


def main():
    context, r = load(sys.argv[1])
    print(f"# {context.get('num_cpus', '?')} x {context.get('mhz_per_cpu', '?')} MHz, "
          f"{context.get('date', '')}; CPU time, median of repetitions")
    # Some operations have both a writer (the request) and a reader (the answer).
    rows = sorted({tuple(n.split("/")[:2]) for n in r
                   if n.startswith(("read/", "write/")) and n.endswith("/codec")},
                  key=lambda row: (row[0] != "read", row[1]))
    if rows:
        print()
        print("| operation | codec | vs JsonCpp text | vs floor | reporting / plain | "
              "skipping / plain | allocs/call codec (baseline) | aims |")
        print("|---|---:|---:|---:|---:|---:|---:|---|")
    for kind, op in rows:
        reader = kind == "read"
        base = f"{kind}/{op}"
        codec = r[base + "/codec"]
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

    text_table(r)

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
