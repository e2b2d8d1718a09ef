#!/usr/bin/env python3
"""Asks as somebody types: each line of the input is what stands in the prompt now.

ask_as_you_type.py [OPTION...]      the options of "vref watch"; VREF may name the tool
"""

import json
import os
import subprocess
import sys
import threading

tool = [os.environ.get("VREF", "vref"), "watch", "--json", *sys.argv[1:]]
session = subprocess.Popen(tool, stdin=subprocess.PIPE, stdout=subprocess.PIPE, encoding="utf-8")
lock = threading.Lock()
last = {"id": 0, "question": ""}


def send(**message):
    session.stdin.write(json.dumps({"jsonrpc": "2.0", **message}) + "\n")
    session.stdin.flush()


def ask(question):
    with lock:
        send(method="$/cancelRequest", params={"id": last["id"]})
        last.update(id=last["id"] + 1, question=question)
        wanted = {"question": question, "limit": 3, "fields": ["name", "product", "purpose"]}
        send(id=last["id"], method="ask", params=wanted)


def listen():
    for line in session.stdout:
        message = json.loads(line)
        if message.get("method") == "documentationChanged":
            print("(the documentation has changed)", flush=True)
            ask(last["question"])
        elif message.get("id") == last["id"]:  # others are no longer wanted
            for hit in message.get("result", {}).get("hits", []):
                print(f"{hit['name']} ({hit['product']}): {hit['purpose']}", flush=True)
            print(message.get("error", {}).get("message", ""), flush=True)


listener = threading.Thread(target=listen)
listener.start()
for typed in sys.stdin:
    if typed.strip():
        ask(typed.strip())
session.stdin.close()  # what was asked is still answered
listener.join()
sys.exit(session.wait())
