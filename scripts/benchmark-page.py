#!/usr/bin/env python3
"""Prints docs/benchmarks.md.

usage: benchmark-page.py FIGURES

FIGURES is the folder with the figures that scripts/benchmark has gathered.
"""

import json
import os
import subprocess
import sys
from pathlib import Path

FIGURES = Path(sys.argv[1])
SIZES = {"real": "26 thousand", "100000x200": "100 thousand", "1000000x200": "1 million"}


def read(name):
    return json.loads((FIGURES / f"{name}.json").read_text(encoding="utf-8"))


def duration(seconds):
    """Two digits and a unit."""
    for unit, name in ((1, "s"), (1e-3, "ms"), (1e-6, "µs"), (1e-9, "ns")):
        if seconds >= unit * 0.9995 or name == "ns":
            number = seconds / unit
            return f"{number:.2f} {name}" if number < 9.95 else f"{number:.0f} {name}"
    raise AssertionError


def amount(kilobytes):
    return f"{kilobytes / 1024:,.0f} MiB"


def on_disk(path):
    files = [path] if path.is_file() else path.rglob("*")
    return f"{sum(file.stat().st_size for file in files if file.is_file()) / 2**20:,.0f} MiB"


def ratio(number):
    return f"{number:.2f}" if number < 0.095 else f"{number:.1f}" if number < 9.95 else f"{number:,.0f}"


def rate(number):
    return f"{number:.1f}" if number < 9.95 else f"{number:,.0f}"


def compared(ours, theirs):
    """How the library stands: how many times faster, in bold, or slower."""
    if ours <= theirs:
        return f"**{ratio(theirs / ours)} × faster**"
    return f"{ratio(ours / theirs)} × slower"


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def package(name):
    version = output("dpkg-query", "--show", "--showformat=${Version}", name)
    return version.split("-")[0].split("+")[0]


def processor():
    for line in Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return "an unknown processor"


def by_engine(row):
    return {f["engine"]: f for f in row["figures"]}


def best_peer(row):
    """The fastest of those that give the same answer; not the floor, which nobody would use."""
    peers = [f for f in row["figures"]
             if f["meaning"] == "same" and f["engine"] not in ("library", "floor")]
    return min(peers, key=lambda f: f["seconds"])


def library(row):
    return by_engine(row)["library"]["seconds"]


reports = {size: read(f"queries-{size}") for size in SIZES}
classes = {size: {row["class"]: row for row in report["classes"]}
           for size, report in reports.items()}
real = reports["real"]
names = [row["class"] for row in real["classes"]]
out = []


def line(text=""):
    out.append(text)


def table(heads, rows):
    """The first column is text, the others are figures."""
    line("| " + " | ".join(heads) + " |")
    line("| --- |" + " ---: |" * (len(heads) - 1))
    for row in rows:
        line("| " + " | ".join(row) + " |")
    line()


won = sum(library(row) <= best_peer(row)["seconds"] for found in classes.values()
          for row in found.values())
rows_in_all = sum(len(found) for found in classes.values())

line("# Benchmarks")
line()
line(f"""Written by `scripts/benchmark`. Every kind of query is asked of the library and of what could be used in
its place, in the same run, over the same documentation. All answers are checked before they are timed.
Of {rows_in_all} figures below the library wins {won} and loses {rows_in_all - won}.

- Machine: {processor()}, {os.cpu_count()} cores. Compiler: GCC {output("g++", "-dumpfullversion")}, preset "release".
- Rivals: SQLite {package("libsqlite3-0")} with FTS5, Xapian {package("libxapian30")}, and a plain walk. [How each is used](#how-each-is-used).
- Figures are processor time of all threads of the process, so that other work on the machine changes
  them little. Each is the median over up to {max(row["queries"] for row in real["classes"])} different queries. How they are [picked](#data-and-queries).
""")

line("## Against the best peer")
line()
line("""How the library stands to the fastest rival that gives the same answer, by number of entities. Bold is
faster. The rival is the one at one million.
""")
largest = list(SIZES)[-1]
table(["Class", *SIZES.values(), "best peer"],
      [[name,
        *(compared(library(classes[size][name]), best_peer(classes[size][name])["seconds"])
          if name in classes[size] else "–" for size in SIZES),
        best_peer(classes[largest].get(name, classes["real"][name]))["engine"]]
       for name in names])

line("## Figures")
line()
line("""The time of one answer. "Words" finds the text only where it stands as whole words; its hits are in
brackets. It answers another question than the library, and is no peer above. The floor is what cannot be
beaten by much: for a name, one probe into a hash table made for that question; for a part, reading each
byte of the texts once.
""")


def with_hits(figure):
    return f'{duration(figure["seconds"])} ({figure["hits"]:,.0f})' if figure else "–"


def time_of(figure):
    return duration(figure["seconds"]) if figure else "–"


for size, title in SIZES.items():
    report = reports[size]
    line(f"""### {title[0].upper() + title[1:]} entities

{report["entities"]:,} entities in {report["products"]} products; {report["recordBytes"] / 1e6:,.0f} MB of names and purposes, {report["textBytes"] / 1e6:,.0f} MB of texts.
""")
    rows = []
    for row in report["classes"]:
        figures = by_engine(row)
        rows.append([
            row["class"], f'{row["hits"]:,.0f}', time_of(figures["library"]),
            time_of(figures.get("SQLite b-tree") or figures.get("SQLite trigrams")),
            with_hits(figures.get("SQLite words")),
            (with_hits if figures.get("Xapian", {}).get("meaning") == "words" else time_of)(
                figures.get("Xapian")),
            time_of(figures["walk"]), time_of(figures["floor"])])
    table(["Class", "hits", "library", "SQLite", "SQLite words", "Xapian", "walk", "floor"], rows)

line("## Easy, typical and adversarial")
line()
line("The same classes by how hard they are meant to be, and the slowest single query of each at one million.")
line()
for tier in ("easy", "typical", "adversarial"):
    line(f"### {tier[0].upper() + tier[1:]}")
    line()
    rows = []
    for row in real["classes"]:
        if row["tier"] != tier:
            continue
        here = classes[largest].get(row["class"], row)
        slowest = by_engine(here)["library"]["slowest"]
        peer = best_peer(here)
        rows.append([row["class"], row["remark"], duration(slowest), duration(peer["slowest"]),
                     peer["engine"]])
    line("| Class | why | library | best peer | |")
    line("| --- | --- | ---: | ---: | --- |")
    for row in rows:
        line("| " + " | ".join(row) + " |")
    line()

line("## Ten threads at once")
line()
line("""Answers in a second of wall time: one thread alone, and ten together. Each thread has its own connection
or object. Other work on the machine shows in these figures.
""")
rows = []
for size, title in SIZES.items():
    for row in reports[size].get("threads", []):
        for figure in row["figures"]:
            if figure["engine"] == "floor":
                continue
            narrower = " (whole words)" if figure["meaning"] == "words" else ""
            rows.append([f'{row["class"]}, {title}', figure["engine"].replace(" words", "") + narrower,
                         rate(figure["alone"]), rate(figure["together"]),
                         f'{figure["together"] / figure["alone"]:.1f}'])
table(["Class and size", "asked", "alone", "ten", "ratio"], rows)

line("## Opening")
line()
line("""In a running process, from nothing to the first answer to an exact name. Files are in the system's file
cache. The library reads the published set; what a rival reads, it built before.
""")
rows = []
for size, title in SIZES.items():
    for row in read(f"opening-{size}")["opening"]:
        figures = {f["engine"]: f for f in row["figures"]}
        rows.append([f'{row["class"]}, {title}',
                     *(duration(figures[e]["seconds"]) if e in figures else "–"
                       for e in ("library", "SQLite b-tree", "Xapian"))])
table(["", "library", "SQLite", "Xapian"], rows)
line("A whole process that looks up one name, and the most memory that it had:")
line()
rows = []
for size, title in SIZES.items():
    ours, theirs = read(f"process-vref-{size}"), read(f"process-sqlite-{size}")
    rows.append([title, duration(ours["seconds"]), amount(ours["kilobytes"]),
                 duration(theirs["seconds"]), amount(theirs["kilobytes"])])
table(["Entities", "`vref find`", "", "`sqlite3`", ""], rows)
if (FIGURES / "process-apropos.json").exists():
    apropos = read("process-apropos")
    line(f"""For comparison, `apropos -e` over the manual pages of this machine takes {duration(apropos["seconds"])} and
{amount(apropos["kilobytes"])}.
""")

line("## Memory")
line()
line("""Resident memory of a process with the library: its own, and that of files it maps, of the program and its
shared libraries, too. What is asked for are names in all three ways, and parts and texts with thousands of
hits.
""")
rows = []
for size, title in SIZES.items():
    for row in read(f"memory-{size}")["memory"]:
        rows.append([f'{title}, {row["when"]}', amount(row["RssAnon"]), amount(row["RssFile"])])
table(["", "own", "files"], rows)
line("""Two such processes after all of these questions: what each has resident, what is its own share when a page
that both have counts half for each, and what neither shares with anyone.
""")
rows = []
for size, title in SIZES.items():
    for row in read(f"memory-{size}")["shared"]:
        rows.append([title, amount(row["Rss"]), amount(row["Pss"]),
                     amount(row["Private_Clean"] + row["Private_Dirty"])])
table(["Entities", "resident", "share", "not shared"], rows)

line("What lies on disk:")
line()
rows = []
for size, title in SIZES.items():
    rivals = Path("build/bench/rivals") / size
    rows.append([title, on_disk(Path("build/bench/sets") / size),
                 *(on_disk(max(rivals.glob(pattern))) for pattern in ("sqlite-*.db", "xapian-*"))])
table(["Entities", "the set", "SQLite, all indexes", "Xapian, all indexes"], rows)

line("The set, for each entity:")
line()
rows = []
for size, title in SIZES.items():
    folder = Path("build/bench/sets") / size
    entities = reports[size]["entities"]
    rows.append([title, *(f"{sum(f.stat().st_size for f in folder.glob(pattern)) / entities:,.0f} B"
                          for pattern in ("*.image", "*/*.lookup.image", "*/*.reference.image",
                                          "*/*.json"))])
table(["Entities", "index of the set", "lookup images", "reference images", "JSON"], rows)

orders = read("orders")["orders"]
line("## Ordering")
line()
line(f"""{orders["results"]:,} results of the set of 100 thousand entities, from the order in which they are found into
the preferred order. The library's time is what an answer takes longer in that order. "Ready keys" sorts rows
of five numbers each, and SQLite orders a table in memory by the same five columns; neither includes the
time to work the keys out, or to move results.
""")
table(["", "time"], [[name, duration(orders[name])]
                     for name in ("library", "rows of ready keys", "SQLite ORDER BY")])

line("""## Growth

![Time of one answer by the number of entities, a panel for each class](plots/growth-entities.svg)

![Time of one answer by the number of products, a panel for each class](plots/growth-products.svg)

## How each is used

- **Library**: all caches are filled, and it has been asked for parts of words often enough (some ten thousand
  times at one million entities) to have made one lexicon of those of all products; until then, such a question
  takes about 2 µs more for each product. Each answer begins with a text: the request and the retriever are made
  anew. "Hrefs" are the pages that `GetProductsWithEntity` names; "results" come from a retriever, and href,
  name and purpose of each are read. Parts are searched for without regard to case.
- **SQLite**: a file on disk, in the system's file cache, opened as immutable and mapped whole
  (`mmap_size`), with prepared statements. It was filled in one transaction; then the full-text indexes were
  merged into one piece each (`optimize`), and `ANALYZE` was run. Names are in b-trees without a row number
  that hold the href themselves (by key, folded key, last component, last two, file name, class). Parts are
  found by FTS5's trigram index; a text of fewer than three letters, which such an index cannot find, by
  `instr` over all rows. "SQLite words" is FTS5's word index without folding of diacritics. Both hold no
  copy of the texts. All texts were folded beforehand by the library's rule.
- **Xapian**: compacted databases on disk, in the system's file cache. Names are boolean terms, words are terms
  with positions, without a stemmer and without weights. One term is read from its posting list; a phrase
  goes through the matcher. Href, name and purpose are the document's data. The words are those of SQLite's
  tokenizer.
- **Walk**: compares all names, or looks through all texts with `memmem`, in one piece of memory.
- Rivals get the text in the form that they need, deliver all hits as text, and may deliver a page once
  for each of its records; the library delivers each page once.

## Data and queries
""")
line(f"""The real set is what `vref import sphinx` makes of the Debian packages python-scipy-doc ({package("python-scipy-doc")}),
python3.11-doc ({package("python3.11-doc")}), python-django-doc ({package("python-django-doc").split(":")[-1]}), cmake-doc ({package("cmake-doc")}) and sphinx-doc ({package("sphinx-doc")}):
{real["entities"]:,} entities. `bench/grow/` makes the larger ones of it, in 200 products. Each takes runs of
neighbouring pages from everywhere, so that lengths, kinds, classes and properties are spread as in the real
set. Its names begin with a word of its own, and some of its rare words are spelt anew, by a rule under
which the number of different words grows with a power of the length of the texts, as it does in real ones.

Texts of queries are picked from the data with a fixed seed (`bench/queries/`): names, classes and pages at
random; rare words that 1 to 3 records or items contain, medium ones that 0.1 to 1 % contain, frequent ones
that 10 to 20 % contain, each also counted inside longer words; words of the data with two letters swapped
that occur nowhere; pairs of letters; pairs of words; words that are not Latin, of which the data has few;
and runs of punctuation.

The library's answers and those of each rival must have the same hits: the same pages, or the same results as
often as they come. An index of words must find what its own rule says, worked out without an index.
{sum(row["passedOver"] for report in reports.values() for row in report["classes"])} queries were passed over because answers differed.""")
print("\n".join(out))
