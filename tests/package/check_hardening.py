"""Checks that programs and libraries were built with what makes faults in them hard to use.

    check_hardening.py FILE..."""

import re
import subprocess
import sys


def readelf(file: str, *options: str) -> str:
    return subprocess.run(
        ["readelf", "--wide", *options, file],
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
        errors="replace",
    ).stdout


def code_of(file: str) -> str:
    return subprocess.run(
        ["objdump", "--disassemble", "--no-show-raw-insn", "--section=.text", file],
        check=True,
        stdout=subprocess.PIPE,
        encoding="utf-8",
        errors="replace",
    ).stdout


def faults_of(file: str) -> list[str]:
    header = readelf(file, "--file-header")
    segments = readelf(file, "--segments")
    dynamic = readelf(file, "--dynamic")
    needed = readelf(file, "--dyn-syms")
    checks = {
        "is not position-independent": re.search(r"Type:\s+DYN", header),
        "has relocations that stay writable": "GNU_RELRO" in segments
        and re.search(r"\(FLAGS_1\).*\bNOW\b", dynamic),
        "has an executable stack": re.search(r"GNU_STACK\s.*\sRW\s", segments),
        "does not guard its stack": "__stack_chk_fail" in needed,
        "does not check containers": "__glibcxx_assert_fail" in needed,
    }
    if "X86-64" in header:
        # Debian's start files do not say that they are ready for it, so that no note of the file does;
        # they have a few marks themselves.
        checks["may be entered anywhere"] = code_of(file).count("endbr64") > 100
    return [f"{file} {fault}." for fault, holds in checks.items() if not holds]


def main() -> int:
    files = sys.argv[1:]
    faults = [fault for file in files for fault in faults_of(file)]
    # Copies of known length need no check, so that not each file has one.
    if not any(re.search(r"__\w+_chk\b(?<!__stack_chk)", readelf(file, "--dyn-syms")) for file in files):
        faults.append("No copy is checked.")
    print("\n".join(faults) or f"{len(files)} files are hardened.")
    return 1 if faults or not files else 0


if __name__ == "__main__":
    sys.exit(main())
