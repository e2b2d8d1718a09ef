#!/usr/bin/env python3
"""Runs the example of a client in Python as its user would:

    check_ask_as_you_type.py EXAMPLE VREF SET

Exit status: 0 when it does what it promises; what is missing is told otherwise.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def expect(client, wanted):
    """Reads up to the line."""
    for line in client.stdout:
        if line.rstrip("\n") == wanted:
            return
    sys.exit(f"the client ended without the line: {wanted}")


def main():
    example, vref, shipped = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder) / "set"
        shutil.copytree(shipped, root)
        client = subprocess.Popen([sys.executable, example, "--doc-root", str(root)],
                                  stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8",
                                  env=dict(os.environ, VREF=vref))
        hit = "filter (brisk): Filter a signal with a rational transfer function"
        for end in range(1, len("filter") + 1):
            client.stdin.write("filter"[:end] + "\n")
            client.stdin.flush()
        expect(client, hit)

        # A manifest is replaced by another file.
        manifest = root / "documentation-set.json"
        shutil.copy(manifest, root / "new.json")
        os.replace(root / "new.json", manifest)
        expect(client, "(the documentation has changed)")
        expect(client, hit)

        client.stdin.write("x type:functoin\n")
        client.stdin.flush()
        for line in client.stdout:
            if line.startswith('"functoin" is no value of the filter "type:"'):
                break
        else:
            sys.exit("the error is not told")
        client.stdin.close()
        if client.wait() != 0:
            sys.exit(f"the client ended with status {client.returncode}")


if __name__ == "__main__":
    main()
