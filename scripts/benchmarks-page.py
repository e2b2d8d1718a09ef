#!/usr/bin/env python3
"""Writes the page on the benchmarks from the JSON report of Google Benchmark that is named."""

import json
import sys

with open(sys.argv[1], encoding="utf-8") as file:
    report = json.load(file)

context = report["context"]
print(f"""# Benchmarks

Written by `scripts/benchmark`, which builds the preset "release" and runs `bench/`: 30,000 entities in
100 products, on one thread; searches and orders in memory, with warm caches. Each benchmark checks its
answer before it is timed. The figures are medians of three runs, in milliseconds, on a machine with
{context["num_cpus"]} cores at {context["mhz_per_cpu"]} MHz.
""")
medians = [run for run in report["benchmarks"] if run.get("aggregate_name") == "median"]
if not medians or any("error_message" in run for run in report["benchmarks"]):
    sys.exit("The benchmarks did not run, or one gave a wrong answer.")

for run in medians:
    if run["run_name"].startswith("startup/"):
        print(f"""Start-up over {run["run_name"][len("startup/"):]} reads the lookup files of all products and the
reference files of ten. From a documentation set of {run["megabytes"]:.0f} MB that is in the system's file
cache it takes **{run["real_time"]:.0f} ms**.
""")
print("| Search | ms | found |")
print("| --- | ---: | ---: |")
for run in medians:
    name = run["run_name"]
    if name.startswith("search/"):
        print(f"| {name[len('search/'):]} | {run['real_time']:.3f} | {run['found']:.0f} |")
print("""
Ordering 30,000 results without the time for moving them. Comparators that can ignore case do; the compound
is the chain that the preferred order stands for:
""")
print("| Order | ms |")
print("| --- | ---: |")
for run in medians:
    name = run["run_name"]
    if name.startswith("order/"):
        print(f"| {name[len('order/'):]} | {run['real_time']:.2f} |")
