#!/usr/bin/python3
"""Finds what scripts/mutate may change in a C++ source, and writes sources that hold all changes at once.

Each change is a question at run time, `(on(7) ? changed : original)`, so that all mutants are compiled
together. What is changed:

    < <= > >= == != <=>     the border, or the answer; the operands are swapped
    && || !                 one for the other; the negation left out
    + - * / % & | << >>     one for the other, also before an "="
    ++ --                   one for the other
    numbers, characters     one more; a number above 1 also to 0; also where a constant's name stands
    true false              one for the other
    if (x), x ? y : z       the condition negated, unless one of the above changes it as a whole
    return x                negated, where x is a truth value and nothing above changes it as a whole
    f(x); x = y;            left out
"""

import hashlib
import re
from pathlib import Path

from clang.cindex import Config, CursorKind, Index, TypeKind

Config.set_library_file("libclang-14.so.1")

SWAPPED = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "&": "|", "|": "&", "<<": ">>", ">>": "<<",
    "+=": "-=", "-=": "+=", "*=": "/=", "/=": "*=", "&=": "|=", "|=": "&=", "<<=": ">>=", ">>=": "<<=",
}
STEPS = {"++": "--", "--": "++"}
TRUTHS = {"<", "<=", ">", ">=", "==", "!=", "&&", "||"}
OPERATOR = re.compile(r"<=>|<<=|>>=|&&|\|\||\+\+|--|[-+*/%&|<>=!]=|<<|>>|[-+*/%&|<>=!]")

K = CursorKind
SKIPPED = {
    K.STATIC_ASSERT, K.ENUM_CONSTANT_DECL, K.PARM_DECL, K.TEMPLATE_NON_TYPE_PARAMETER,
    K.TEMPLATE_TYPE_PARAMETER, K.CXX_UNARY_EXPR, K.TYPE_REF, K.TEMPLATE_REF, K.NAMESPACE_REF,
    K.TYPE_ALIAS_DECL, K.TYPEDEF_DECL,
}
FUNCTIONS = {
    K.FUNCTION_DECL, K.CXX_METHOD, K.CONSTRUCTOR, K.DESTRUCTOR, K.CONVERSION_FUNCTION,
    K.FUNCTION_TEMPLATE,
}
CLASSES = {K.CLASS_DECL, K.STRUCT_DECL, K.CLASS_TEMPLATE, K.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION}
NUMBERS = {
    TypeKind.INT, TypeKind.UINT, TypeKind.LONG, TypeKind.ULONG, TypeKind.LONGLONG, TypeKind.ULONGLONG,
    TypeKind.SHORT, TypeKind.USHORT, TypeKind.CHAR_S, TypeKind.SCHAR, TypeKind.UCHAR, TypeKind.CHAR16,
    TypeKind.CHAR32, TypeKind.FLOAT, TypeKind.DOUBLE,
}


def flat(text):
    """A piece of a source on one line, without comments."""
    text = re.sub(r"//[^\n]*", " ", text) if '"' not in text else text
    return re.sub(r"\s+", " ", text).strip()


def qualified(cursor):
    """The name of a function with its classes, without namespaces."""
    name, parent = cursor.spelling, cursor.semantic_parent
    while parent is not None and parent.kind in CLASSES:
        name, parent = f"{parent.spelling}::{name}", parent.semantic_parent
    return name


class Finder:
    """The places of one file."""

    def __init__(self, path, arguments):
        self.path = str(path)
        data = Path(path).read_bytes()
        # Offsets are those of bytes.
        self.text = data.decode("latin-1")
        unit = Index.create().parse(self.path, args=arguments)
        errors = [str(d) for d in unit.diagnostics if d.severity >= 3]
        if errors:
            raise RuntimeError(f"{path}: libclang cannot read it: {errors[0]}")
        self.found = {}  # (start, end, change): mutant
        self.conditions = []
        for cursor in unit.cursor.get_children():
            if cursor.location.file and cursor.location.file.name == self.path:
                self.visit(cursor, [], "")
        whole = {(m["start"], m["end"]) for m in self.found.values() if m["isTruth"]}
        for start, end, function, change in self.conditions:
            if (start, end) not in whole:
                piece = self.text[start:end]
                self.add(start, end, function, change, f"!({flat(piece)})")

    def piece(self, cursor):
        start, end = cursor.extent.start, cursor.extent.end
        if not start.file or start.file.name != self.path:
            return 0, 0, ""
        return start.offset, end.offset, self.text[start.offset:end.offset]

    def add(self, start, end, function, change, changed, is_truth=False, is_left_out=False):
        self.found.setdefault((start, end, change), {
            "start": start, "end": end, "function": function, "change": change, "changed": changed,
            "text": flat(self.text[start:end]), "isTruth": is_truth, "isLeftOut": is_left_out,
            "line": self.text.count("\n", 0, start) + 1})

    def visit(self, cursor, parents, function):
        kind = cursor.kind
        if kind in SKIPPED or kind.is_attribute():
            return
        if kind in FUNCTIONS or kind in CLASSES:
            function = qualified(cursor)
            if re.search(r"=\s*(default|delete)\s*$", self.piece(cursor)[2]):
                return
        start, end, text = self.piece(cursor)
        children = list(cursor.get_children())

        if kind in (K.VAR_DECL, K.FIELD_DECL):
            name = cursor.location.offset
            if re.search(r"\bconstexpr\b", self.text[start:name]):
                return
            if kind == K.FIELD_DECL and cursor.is_bitfield():
                return
            children = [c for c in children if self.piece(c)[0] > name]
        elif kind == K.CASE_STMT:
            children = children[1:]
        elif kind == K.IF_STMT and re.match(r"if\s+constexpr", text):
            children = children[1:]
        elif kind == K.DECL_REF_EXPR:
            self.name(cursor, parents, function)
            return
        elif kind == K.MEMBER_REF_EXPR:
            self.name(cursor, parents, function)
            children = [c for c in children if self.piece(c)[0] < cursor.location.offset]
        elif kind in (K.INTEGER_LITERAL, K.FLOATING_LITERAL, K.CHARACTER_LITERAL,
                      K.CXX_BOOL_LITERAL_EXPR):
            self.literal(start, end, text, function)
        elif kind in (K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR):
            self.binary(cursor, children, function)
        elif kind == K.UNARY_OPERATOR:
            self.unary(start, end, text, function)
        elif kind == K.RETURN_STMT and children:
            if children[0].type.get_canonical().kind == TypeKind.BOOL:
                self.condition(children[0], function, "return negated")

        if kind in (K.IF_STMT, K.WHILE_STMT, K.CONDITIONAL_OPERATOR) and \
                not re.match(r"if\s+constexpr", text):
            tests = children[1:] if children and children[0].kind == K.DECL_STMT else children
            if tests and tests[0].kind.is_expression():
                self.condition(tests[0], function, "condition negated")
        self.statements(cursor, children, function)
        for child in children:
            self.visit(child, parents + [cursor], function)

    def condition(self, cursor, function, change):
        start, end, text = self.piece(cursor)
        if text and text not in ("true", "false"):
            self.conditions.append((start, end, function, change))

    def literal(self, start, end, text, function):
        if text in ("true", "false"):
            other = "false" if text == "true" else "true"
            self.add(start, end, function, f"{text} -> {other}", other, is_truth=True)
        elif re.fullmatch(r"u?8?L?'(\\.+|[^'])'", text):
            self.add(start, end, function, f"{text} -> the next", f"static_cast<decltype({text})>({text} + 1)")
        elif re.match(r"[0-9.][0-9a-fA-FxXuUlLzZ'.+-]*$", text):
            self.add(start, end, function, f"{text} -> one more", f"{text} + 1")
            if not re.fullmatch(r"(0x)?[01.]+[uUlLzZfF]*", text):
                self.add(start, end, function, f"{text} -> 0", f"{text} * 0")

    def name(self, cursor, parents, function):
        """The name of an operator that a class has for itself, or of a constant."""
        start, end, text = self.piece(cursor)
        if cursor.spelling.startswith("operator"):
            operator = cursor.spelling[len("operator"):]
            if cursor.kind != K.DECL_REF_EXPR or not text:
                return
            found = OPERATOR.match(self.text, start)
            # For a comparison that the compiler rewrites, the name is that of another operator.
            if not found or (found[0] != operator and operator not in ("<=>", "==", "<", ">", "<=", ">=")):
                return
            for parent in reversed(parents):
                p_start, p_end, _ = self.piece(parent)
                goes_before, goes_on = p_start < start, p_end > found.end()
                is_prefix = not goes_before and goes_on and found[0] in STEPS | {"!": ""}
                is_postfix = goes_before and not goes_on and found[0] in STEPS
                if parent.kind.is_expression() and \
                        (goes_before and goes_on or is_prefix or is_postfix):
                    if is_prefix or is_postfix:
                        self.unary(p_start, p_end, self.text[p_start:p_end], function)
                    else:
                        self.operator(p_start, p_end, start, found.end(), function, parent, True)
                    return
            return
        declared = cursor.referenced
        if declared is None or declared.kind != K.VAR_DECL or not text or \
                not re.fullmatch(r"[\w:]+", text):
            return
        if declared.type.get_canonical().kind not in NUMBERS:
            return
        tokens = ""
        if declared.extent.start.file:
            with open(declared.extent.start.file.name, "rb") as stream:
                stream.seek(declared.extent.start.offset)
                tokens = stream.read(max(0, declared.location.offset - declared.extent.start.offset))
                tokens = tokens.decode("latin-1")
        if re.search(r"\bconstexpr\b", tokens):
            self.add(start, end, function, f"{text} -> one more", f"{text} + 1")

    def binary(self, cursor, children, function):
        if len(children) != 2:
            return
        start, end, _ = self.piece(cursor)
        _, left_end, _ = self.piece(children[0])
        right_start, _, _ = self.piece(children[1])
        if not start < left_end <= right_start < end:
            return
        found = re.compile(r"[\s)]*").match(self.text, left_end)
        found = OPERATOR.match(self.text, found.end())
        if not found or found.end() > right_start:
            return
        if all(c.type.get_canonical().kind == TypeKind.POINTER for c in children) and found[0] == "-":
            return
        self.operator(start, end, found.start(), found.end(), function, cursor, False)

    def operator(self, start, end, at, after, function, cursor, is_own):
        operator = self.text[at:after]
        left, right = self.text[start:at], self.text[after:end]
        if operator == "<=>":
            self.add(start, end, function, "<=> swapped", f"({flat(right)}) <=> ({flat(left)})")
            return
        if operator not in SWAPPED:
            return
        kind = cursor.type.get_canonical()
        if operator in ("+", "+=") and "basic_string" in kind.spelling:
            return
        # What is dereferenced, and what is not a number: written, joined as a path, a difference.
        if is_own and (operator in ("*", "&", "<<", ">>", "/") or
                       (operator == "-" and kind.kind in NUMBERS)):
            return
        other = SWAPPED[operator]
        is_truth = operator in TRUTHS
        changed = f"({flat(left)}) {other} ({flat(right)})"
        self.add(start, end, function, f"{operator} -> {other}", changed, is_truth=is_truth)

    def unary(self, start, end, text, function):
        if text.startswith(("++", "--")):
            self.add(start, end, function, f"{text[:2]} -> {STEPS[text[:2]]}", STEPS[text[:2]] + flat(text[2:]))
        elif text.endswith(("++", "--")):
            self.add(start, end, function, f"{text[-2:]} -> {STEPS[text[-2:]]}", flat(text[:-2]) + STEPS[text[-2:]])
        elif re.match(r"!(?!=)", text):
            self.add(start, end, function, "! left out", f"static_cast<bool>({flat(text[1:])})", is_truth=True)

    def statements(self, cursor, children, function):
        """What stands as a statement of its own."""
        kind = cursor.kind
        if kind == K.COMPOUND_STMT:
            own = children
        elif kind in (K.IF_STMT, K.WHILE_STMT, K.CXX_FOR_RANGE_STMT, K.FOR_STMT, K.CASE_STMT,
                      K.DEFAULT_STMT):
            own = [c for c in children if self.text[self.piece(c)[1]:self.piece(c)[1] + 1] == ";"][-2:]
            if kind in (K.FOR_STMT, K.CXX_FOR_RANGE_STMT):
                own = [c for c in own if self.piece(c)[1] == self.piece(cursor)[1]]
        else:
            return
        for statement in own:
            start, end, text = self.piece(statement)
            inner = statement
            while inner.kind == K.UNEXPOSED_EXPR:
                below = list(inner.get_children())
                if not below or self.piece(below[0])[:2] != (start, end):
                    break
                inner = below[0]
            if inner.kind not in (K.CALL_EXPR, K.BINARY_OPERATOR, K.COMPOUND_ASSIGNMENT_OPERATOR):
                continue
            if not text or self.text[end:end + 1] != ";" or text.startswith(("++", "--", "static_cast<void>")):
                continue
            # Room that is reserved changes nothing but the time.
            if text.endswith(("++", "--")) or re.search(r"\breserve\([^;]*\)$", text):
                continue
            self.add(start, end, function, "left out", "static_cast<void>(0)", is_left_out=True)


def places(path, arguments):
    """The mutants of a file, in the order of the text."""
    found = Finder(path, arguments).found.values()
    return sorted(found, key=lambda m: (m["start"], -m["end"], m["change"]))


def rewrite(data, mutants):
    """The source with all its mutants, each of which has its "number". Lines stay where they are."""
    text = data.decode("latin-1")
    ranges = {}
    for mutant in mutants:
        ranges.setdefault((mutant["start"], mutant["end"]), []).append(mutant)
    ordered = sorted(ranges, key=lambda r: (r[0], -r[1]))
    position = 0

    def emit(start, end, index):
        """The text from start to end with the ranges from `index` on that lie in it."""
        out, at = [], start
        while index < len(ordered) and ordered[index][1] <= end and ordered[index][0] < end:
            r_start, r_end = ordered[index]
            if r_start < at:
                raise RuntimeError(f"ranges overlap: {text[r_start:r_end]}")
            out.append(text[at:r_start])
            here = ranges[r_start, r_end]
            inner, index = emit(r_start, r_end, index + 1)
            is_void = any(m["isLeftOut"] for m in here)
            wrap = "static_cast<void>({})" if is_void else "({})"
            out.append("(")
            for mutant in here:
                out.append(f"::veltra_mutation::on({mutant['number']}) ? {wrap.format(mutant['changed'])} : ")
            is_truth = any(m["change"].endswith(("negated", "left out")) and not m["isLeftOut"] for m in here)
            if is_truth and not is_void:
                out.append(f"static_cast<bool>({inner}))")
            else:
                out.append(wrap.format(inner) + ")")
            at = r_end
        out.append(text[at:end])
        return "".join(out), index

    result, index = emit(0, len(text), position)
    if index != len(ordered):
        raise RuntimeError("ranges cross each other")
    return result.encode("latin-1")


def key_of(data):
    """What the places that were found in a file depend on: the file and this program."""
    return hashlib.sha256(data + Path(__file__).read_bytes()).hexdigest()
