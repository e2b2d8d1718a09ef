#!/usr/bin/env python3
"""Checks real messages of "vref watch --json" against the JSON Schema of the protocol:

    check_protocol.py VREF

Claims, one printed line each:
- the schema accepts a request exactly if the session does not refuse its form, for requests that
  use every parameter of every method, soundly and not;
- each answer, notification and list is accepted, and each result by the schema of its method;
- a message that is made from a sound one by one change is refused;
- the schema's fields, methods and limits are those that the session tells;
- the answers in the examples on the page docs/watch-protocol.md are accepted.

Exit status: 0 when all claims hold, 1 when one does not, 2 when the call is wrong.
"""

import copy
import json
import os
import pathlib
import re
import subprocess
import sys

import jsonschema

REPOSITORY = pathlib.Path(__file__).resolve().parents[3]
SCHEMA = REPOSITORY / "docs" / "watch-protocol.schema.json"
PAGE = REPOSITORY / "docs" / "watch-protocol.md"

SOUND = [
    ("initialize", {}),
    ("initialize", {"protocol": 2, "clientInfo": {"name": "test"}}),
    ("ask", {"question": "filter"}),
    ("ask", {"question": "filter", "limit": 0, "fields": "all", "types": "class",
             "products": ["qix"], "prefer": ["qix", "absent"]}),
    ("ask", {"question": "table", "fields": "all", "limit": 1000}),
    ("ask", {"question": "filter", "types": ["event"], "fields": ["name", "product"]}),
    ("ask", {"question": "filter", "fields": "name"}),
    ("find", {"name": "table", "ignore-case": True, "ignore-package": False, "explain": True,
              "exact": True, "order": ["type", "depth"], "type": ["class"], "product": "qix"}),
    ("find", {"name": "table", "search": "text", "fields": "all", "all": False}),
    ("find", {"all": True, "limit": 1000, "fields": "all", "explain": True}),
    ("show", {"question": "filter", "nth": 2, "width": 60, "types": ["function"], "prefer": "qix"}),
    ("show", {"href": "ref/filter.html", "products": ["qix"], "fields": []}),
    ("show", {"question": "thereisnosuchthing"}),
    ("complete", {"prefix": "fi"}),
    ("complete", {"prefix": "", "limit": 3, "products": ["qix"], "prefer": ["qix"]}),
    ("products", {}),
    ("reload", {}),
    ("setLanguage", {"language": "ja"}),
    ("setLanguage", {"language": "en_US"}),
    ("$/cancelRequest", {"id": 5}),
    ("$/cancelRequest", {"id": "x"}),
]

FAULTY = [
    ("asc", {}),
    ("ask", {}),
    ("ask", {"question": ""}),
    ("ask", {"question": 5}),
    ("ask", {"question": "x", "limit": 1001}),
    ("ask", {"question": "x", "limit": -1}),
    ("ask", {"question": "x", "limit": 1.5}),
    ("ask", {"question": "x", "limit": "5"}),
    ("ask", {"question": "x", "fields": ["nam"]}),
    ("ask", {"question": "x", "fields": ["all", "name"]}),
    ("ask", {"question": "x", "types": [5]}),
    ("ask", {"question": "x", "nth": 1}),
    ("find", {}),
    ("find", {"name": "x", "all": True}),
    ("find", {"name": "x", "search": "nothing"}),
    ("find", {"name": "x", "exact": False}),
    ("find", {"name": "x", "ignore-case": "yes"}),
    ("find", {"name": "x", "types": ["class"]}),
    ("show", {}),
    ("show", {"question": "x", "href": "y"}),
    ("show", {"question": "x", "nth": 0}),
    ("show", {"question": "x", "width": 19}),
    ("complete", {}),
    ("complete", {"prefix": 5}),
    ("products", {"x": 1}),
    ("reload", {"x": 1}),
    ("setLanguage", {}),
    ("initialize", {"protocol": 3}),
]

# Right in form, and refused for what is documented.
REFUSED_BY_DOCUMENTATION = [
    ("ask", {"question": "x type:foo"}),
    ("ask", {"question": "x", "types": ["foo"]}),
    ("ask", {"question": "x", "products": ["foo"]}),
    ("find", {"name": "x", "order": ["foo"]}),
    ("setLanguage", {"language": "xx"}),
]


class Session:
    """A running session; lines go in and out one by one."""

    def __init__(self, vref):
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("VELTRA_DOC_ROOT", "VELTRA_LOG")}
        self.process = subprocess.Popen([vref, "watch", "--json"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, env=environment)
        self.read()

    def send(self, message):
        self.process.stdin.write(json.dumps(message).encode() + b"\n")
        self.process.stdin.flush()

    def read(self):
        line = self.process.stdout.readline()
        if not line:
            sys.exit("the session ended")
        return json.loads(line)

    def end(self):
        self.process.stdin.close()
        return self.process.wait()


class Claims:
    def __init__(self, schema):
        self.schema = schema
        self.failed = 0

    def check(self, claim, holds, problem=""):
        print(f"ok: {claim}" if holds else f"FAILED: {claim}: {problem}")
        self.failed += not holds

    def why_refused(self, definition, message):
        """Why the definition refuses the message; empty when it accepts it."""
        schema = {"$schema": self.schema["$schema"], "$ref": f"#/$defs/{definition}",
                  "$defs": self.schema["$defs"]}
        error = jsonschema.exceptions.best_match(
            jsonschema.Draft202012Validator(schema).iter_errors(message))
        return f"at {list(error.absolute_path)}: {error.message}" if error else ""

    def accepts(self, claim, definition, message):
        problem = self.why_refused(definition, message)
        self.check(claim, not problem, problem)


def request(method, params, number):
    return {"jsonrpc": "2.0", "id": number, "method": method, "params": params}


def result_schema(method):
    return "results/" + method.replace("/", "~1")


def exchange(claims, session, method, params, number):
    """The answer to a request; what comes on the way is checked."""
    session.send(request(method, params, number))
    while True:
        message = session.read()
        claims.accepts(f"what {method} {params} brings is accepted", "fromSession", message)
        if message.get("id") == number:
            return message


def check_requests(claims, session):
    number = 0
    for is_sound, rows in ((True, SOUND), (False, FAULTY)):
        for method, params in rows:
            number += 1
            shown = f"{method} {json.dumps(params)}"
            problem = claims.why_refused("fromClient", request(method, params, number))
            claims.check(f"{shown} is {'accepted' if is_sound else 'refused'}",
                         is_sound == (not problem), problem or "it is accepted")
            answer = exchange(claims, session, method, params, number)
            claims.check(f"{shown}: the session agrees", is_sound == ("result" in answer), answer)
            if "result" in answer:
                claims.accepts(f"{shown}: the result is accepted", result_schema(method),
                               answer["result"])
    for method, params in REFUSED_BY_DOCUMENTATION:
        number += 1
        claims.accepts(f"{method} {params} has a sound form", "fromClient",
                       request(method, params, number))
        answer = exchange(claims, session, method, params, number)
        claims.check(f"{method} {params} is refused by the session",
                     answer.get("error", {}).get("code") == -32602, answer)


def check_lists_and_garbage(claims, session):
    session.send([request("products", {}, "a"), request("nothing", {}, "b"), 5])
    claims.accepts("a list of answers is accepted", "fromSession", session.read())
    for garbage in ({"jsonrpc": "1.0", "id": 1, "method": "ask"}, {"id": [], "jsonrpc": "2.0"}):
        claims.check(f"{garbage} is refused", claims.why_refused("fromClient", garbage))
        session.send(garbage)
        claims.accepts(f"the answer to {garbage} is accepted", "fromSession", session.read())


def check_changes(claims, session):
    """One change to a sound message makes it unsound."""
    answer = exchange(claims, session, "ask", {"question": "filter", "fields": "all"}, "c")
    result = answer["result"]
    claims.accepts("the unchanged result is accepted", result_schema("ask"), result)
    changes = {
        "an unknown member": lambda value: value.update(remark=""),
        "no total": lambda value: value.pop("total"),
        "a total that is a text": lambda value: value.update(total="3"),
        "a hit with an unknown member": lambda value: value["hits"][0].update(remark=""),
        "a hit with a wrong rung": lambda value: value["hits"][0].update(rung="stair"),
        "an input without a name": lambda value: value["hits"][0]["inputs"].append({}),
    }
    for name, change in changes.items():
        changed = copy.deepcopy(result)
        change(changed)
        claims.check(f"{name} is refused", claims.why_refused(result_schema("ask"), changed),
                     "it is accepted")


def check_capabilities(claims, session):
    told = exchange(claims, session, "initialize", {}, "i")["result"]
    definitions = claims.schema["$defs"]
    claims.check("the schema knows the session's methods",
                 set(told["capabilities"]["methods"]) == set(definitions["params"]))
    claims.check("and its fields", told["capabilities"]["fields"] == definitions["field"]["enum"])
    claims.check("and its limits", told["limits"]["hits"] == definitions["limit"]["maximum"]
                 and told["limits"]["batch"] == definitions["fromClient"]["oneOf"][1]["maxItems"])
    notifications = {one["properties"]["method"]["const"]
                     for one in definitions["notification"]["oneOf"]}
    claims.check("and its notifications",
                 set(told["capabilities"]["notifications"]) == notifications)


def check_page(claims):
    """Requests on the page may be wrong on purpose; what the session answers never is."""
    lines = re.findall(r"^    (\[?\{.*)$", PAGE.read_text(encoding="utf-8"), re.M)
    messages = [json.loads(line) for line in lines if '"jsonrpc"' in line]
    methods = claims.schema["$defs"]["params"]

    def is_request(message):
        first = message[0] if isinstance(message, list) else message
        return first.get("method") in methods

    answers = [message for message in messages if not is_request(message)]
    claims.check("the page shows answers", len(answers) > 8, len(answers))
    for message in answers:
        claims.accepts(f"the example {json.dumps(message)[:60]}... is accepted", "fromSession",
                       message)


def main():
    if len(sys.argv) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
    jsonschema.Draft202012Validator.check_schema(schema)
    claims = Claims(schema)
    session = Session(sys.argv[1])
    check_requests(claims, session)
    check_lists_and_garbage(claims, session)
    check_changes(claims, session)
    check_capabilities(claims, session)
    check_page(claims)
    claims.check("the session ends well", session.end() == 0)
    return 1 if claims.failed else 0


if __name__ == "__main__":
    sys.exit(main())
