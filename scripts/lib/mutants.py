# SPDX-License-Identifier: GPL-3.0-or-later
"""Every mutant of a C++ file: one range of its text and what to write there."""

import hashlib
import re

import cxx

_OPERATORS = {
    "<": ("<=", ">="), "<=": ("<", ">"), ">": (">=", "<="), ">=": (">", "<"),
    "==": ("!=",), "!=": ("==",),
    "&&": ("||",), "||": ("&&",),
    "+": ("-",), "-": ("+",), "*": ("/",), "/": ("*",), "%": ("*",),
    "&": ("|",), "|": ("&",), "^": ("&",), "<<": (">>",), ">>": ("<<",),
    "+=": ("-=", "="), "-=": ("+=", "="), "*=": ("/=",), "/=": ("*=",), "%=": ("/=",),
    "&=": ("|=",), "|=": ("&=",), "<<=": (">>=",), ">>=": ("<<=",),
}
_KIND_OF = {
    **dict.fromkeys(("<", "<=", ">", ">=", "==", "!="), "relational"),
    **dict.fromkeys(("&&", "||"), "logical"),
}
_OPPOSITES = {}
for _pair in (
    ("min", "max"), ("floor", "ceil"), ("lower_bound", "upper_bound"), ("front", "back"),
    ("starts_with", "ends_with"), ("find", "rfind"), ("prev", "next"), ("log", "exp"),
):
    _OPPOSITES[_pair[0]] = _pair[1]
    _OPPOSITES[_pair[1]] = _pair[0]

# Their first two arguments may change places.
_SYMMETRIC = frozenset(("min", "max", "fma", "__builtin_add_overflow", "__builtin_mul_overflow"))

# Calls that change no result, only how much memory is taken.
_SILENT_CALLS = ("reserve", "shrink_to_fit")

_BEFORE_CONDITION = frozenset(("=", ",", ";", "return", ":", "?", "+=", "-=", "*=", "<<", "{"))
_UNARY_BEFORE = frozenset(
    ("(", "[", "{", ",", "=", "==", "!=", "<", "<=", ">", ">=", "&&", "||", "?", ":", "return",
     "+", "-", "*", "/", "%", "+=", "-=", ";", "!", "case")
)
_PROSE = re.compile(r"[A-Za-z]{2,}[,.:]? [A-Za-z]{2,}")


class Mutant:
    __slots__ = ("path", "start", "end", "old", "new", "kind", "line", "column", "id",
                 "line_text", "context", "header", "text")

    def __init__(self, source, kind, start, end, new, context):
        self.path = source.path
        self.start = start
        self.end = end
        self.old = source.text[start:end]
        self.new = new
        self.kind = kind
        self.line = source.line(start)
        self.column = source.column(start)
        self.line_text = source.line_text(self.line).strip()
        self.context = context
        self.header = not source.path.endswith(".cpp")
        self.id = ""
        self.text = source.text

    def mutated_line(self):
        """The line where the edit begins, as the mutant has it."""
        text = self.text
        begin = text.rfind("\n", 0, self.start) + 1
        end = text.find("\n", self.end)
        whole = text[begin : self.start] + self.new + text[self.end : end if end >= 0 else None]
        return " ".join(whole.split())

    def applied(self):
        return self.text[: self.start] + self.new + self.text[self.end :]

    def description(self):
        old, new = (" ".join(t.split()) for t in (self.old, self.new))
        return f"{self.kind}: {_short(old)} -> {_short(new) or 'nothing'}"


_NUMBER = re.compile(
    r"(std::)?(u?int\d+_t|size_t|ptrdiff_t|ssize_t)|(unsigned )?(int|long|char|short)|double|float|"
    r"bool|mode_t|uid_t|gid_t")
_TEXT = re.compile(r"(std::)?(string|string_view)|char \*")


def _type_of(source, first, last):
    """The type of a parameter without const and &; every number is one type, and
    every text."""
    words = []
    for token in source.tokens[first:last]:
        if token.text == "=":
            break
        words.append(token.text)
    if len(words) > 1 and words[-1].isidentifier() and words[-2] != "::":
        words.pop()
    text = " ".join(w for w in words if w not in ("const", "&", "&&")).replace(" :: ", "::")
    if _NUMBER.fullmatch(text):
        return "number"
    return "text" if _TEXT.fullmatch(text) else text


def _short(text):
    return text if len(text) <= 60 else text[:40] + " ... " + text[-15:]


class Names:
    """What all sources together declare: enumerators and named numbers by what
    stands in front of their `::`, the types of each function's parameters."""

    def __init__(self, sources):
        self.groups = {}
        self.aliases = {}
        self.signatures = {}
        for source in sources:
            self._read(source)
            self._read_signatures(source)

    def _read_signatures(self, source):
        for i, token in enumerate(source.tokens):
            if token.text != "(" or i not in source.match or i == 0:
                continue
            name = source.tokens[i - 1]
            if name.kind != "id" or name.text in cxx.KEYWORDS:
                continue
            parts = source.split(i)
            if parts and all(source.declares_parameter(*p) for p in parts):
                types = tuple(_type_of(source, *p) for p in parts)
                self.signatures.setdefault(name.text, set()).add(types)

    def may_swap(self, name, count, k):
        """Whether arguments k and k + 1 of `count` may be of one type."""
        known = [s for s in self.signatures.get(name, ()) if len(s) >= count]
        return not known or any(s[k] == s[k + 1] for s in known)

    def _read(self, source):
        tokens = source.tokens
        for opener, kind in source.brace.items():
            name = source.name.get(opener)
            if kind == "enum" and name:
                values = [tokens[first].text for first, _ in source.split(opener)]
                self.groups[name] = [v for v in values if v]
            elif kind == "scope" and name:
                numbers = self._numbers(source, opener)
                if len(numbers) > 1:
                    self.groups.setdefault(name, numbers)
        for i in range(len(tokens) - 4):
            if [tokens[i + k].text for k in (0, 2, 4)] == ["using", "=", ";"]:
                self.aliases[tokens[i + 1].text] = tokens[i + 3].text

    @staticmethod
    def _numbers(source, opener):
        """The names of a namespace of nothing but `inline constexpr T kName = N;`."""
        tokens = source.tokens
        names = []
        i = opener + 1
        while i < source.match[opener]:
            end = i
            while end < source.match[opener] and tokens[end].text != ";":
                end += 1
            words = [t.text for t in tokens[i:end]]
            if words[:2] != ["inline", "constexpr"] or "=" not in words or "(" in words:
                return []
            names.append(words[words.index("=") - 1])
            i = end + 1
        return names

    def first(self, scope):
        return (self._group(scope) or [None])[0]

    def _group(self, scope):
        return self.groups.get(self.aliases.get(scope, scope), [])

    def next(self, scope, name):
        group = self._group(scope)
        if name not in group or len(group) < 2:
            return None
        return group[(group.index(name) + 1) % len(group)]


class Finder:
    """Finds every mutant of one file."""

    def __init__(self, source, names):
        self.source = source
        self.tokens = source.tokens
        self.names = names
        self.found = {}
        self.skipped = self._skipped()

    def all(self):
        for i, token in enumerate(self.tokens):
            if i in self.skipped:
                continue
            if token.kind == "punct":
                self._operator(i)
            elif token.kind == "num":
                self._number(i)
            elif token.kind == "char":
                self._character(i)
            elif token.kind == "id":
                self._word(i)
        self._statements()
        return sorted(self.found.values(), key=lambda m: (m.start, m.end, m.new))

    # --- helpers ----------------------------------------------------------------

    def _add(self, kind, index, start, end, new):
        old = self.source.text[start:end]
        if " ".join(old.split()) == " ".join(new.split()):
            return
        key = (start, end, new)
        if key not in self.found:
            self.found[key] = Mutant(
                self.source, kind, start, end, new, self.source.context(index))

    def _replace(self, kind, i, new):
        self._add(kind, i, self.tokens[i].start, self.tokens[i].end, new)

    def _text(self, i):
        return self.tokens[i].text if 0 <= i < len(self.tokens) else ""

    def _skipped(self):
        """Tokens that make types or checks rather than results: static_assert,
        attributes, template heads and arguments that name types, using, friend
        declarations without a body, alignas, noexcept."""
        out = set()
        source, tokens = self.source, self.tokens
        i = 0
        while i < len(tokens):
            text = tokens[i].text
            end = i
            if text in ("static_assert", "alignas", "noexcept", "requires", "decltype", "sizeof"):
                if self._text(i + 1) == "(":
                    end = source.match.get(i + 1, i)
            elif text == "[" and self._text(i + 1) == "[":
                end = source.match.get(i, i)
            elif text == "template" and i + 1 in source.angle:
                end = source.angle[i + 1]
            elif text in ("using", "typedef"):
                while end < len(tokens) - 1 and tokens[end].text != ";":
                    end += 1
            elif text == "operator" and self._text(i + 1) in ("(", "["):
                end = i + 2
            elif text == "operator":
                end = i + 1
            if end > i:
                out.update(range(i, end + 1))
                i = end
            i += 1
        for i, token in enumerate(tokens):
            if token.text in _SILENT_CALLS and self._text(i + 1) == "(":
                out.update(range(i, source.match.get(i + 1, i) + 1))
        return out

    # --- operators --------------------------------------------------------------

    def _operator(self, i):
        token = self.tokens[i]
        text = token.text
        if text in _OPERATORS and token.spaced:
            for new in _OPERATORS[text]:
                if new in ("-", "-=") and self._is_text(i):
                    continue
                self._replace(_KIND_OF.get(text, "arithmetic"), i, new)
        elif text in ("++", "--"):
            self._replace("arithmetic", i, "--" if text == "++" else "++")
        elif text == "!" and not token.after:
            self._replace("negation", i, "")
        elif text == "-" and not token.after and self._text(i - 1) in _UNARY_BEFORE:
            self._replace("arithmetic", i, "")
        elif text == "?" and token.spaced:
            self._ternary(i)
        elif text == "(":
            self._condition(i)
            self._arguments(i)
        elif text == "{" and self.source.brace.get(i) == "list":
            self._cells(i)

    def _is_text(self, i):
        """Whether a text is added, which cannot be subtracted."""
        after = self.tokens[i + 1].kind
        return self.tokens[i - 1].kind == "str" or after == "str" or (
            after == "char" and self._text(i) == "+=")

    def _negate(self, first, last):
        """Tokens [first, last) as a condition, unless another kind does the same."""
        if first >= last:
            return
        texts = []
        i = first
        while i < last:
            texts.append(self._text(i))
            if i in self.source.match and self.source.match[i] > i:
                i = self.source.match[i]
            elif i in self.source.angle and self.source.angle[i] > i:
                i = self.source.angle[i]
            i += 1
        if "&&" not in texts and "||" not in texts:
            if any(t in _KIND_OF for t in texts) or texts[0] == "!":
                return
        if self.source.is_declaration(first, last):
            return
        inner = self.source.between(first, last)
        start, end = self.tokens[first].start, self.tokens[last - 1].end
        simple = re.fullmatch(r"[\w.:]+(\([^()]*\))?", inner)
        self._add("condition", first, start, end, f"!{inner}" if simple else f"!({inner})")

    def _condition(self, i):
        word = self._text(i - 1)
        if word == "constexpr":
            word = self._text(i - 2)
        close = self.source.match.get(i)
        if close is None:
            return
        if word in ("if", "while", "switch", "for"):
            parts = [i + 1]
            j = i + 1
            while j < close:
                if j in self.source.match and self.source.match[j] > j:
                    j = self.source.match[j]
                elif self._text(j) == ";":
                    parts.append(j + 1)
                j += 1
            if word == "for":
                if len(parts) == 3:
                    self._negate(parts[1], parts[2] - 1)
            elif word != "switch":
                self._negate(parts[-1], close)

    def _ternary(self, i):
        first = i
        while first > 0:
            before = first - 1
            text = self._text(before)
            if before in self.source.match:
                if self.source.match[before] > before:
                    break
                first = self.source.match[before]
                continue
            if text in _BEFORE_CONDITION:
                break
            first -= 1
        self._negate(first, i)

    # --- constants --------------------------------------------------------------

    def _number(self, i):
        token = self.tokens[i]
        text = token.text
        previous = self._text(i - 1)
        if previous == "=" and self._text(i + 1) == ";" and self._text(i - 2) in (
                ")", "const", "noexcept", "override"):
            return  # a pure virtual function
        if previous == "[" and self._text(i + 1) == "]" and i >= 3:
            two = self.tokens[i - 3]
            if self.tokens[i - 2].kind == "id" and (
                    two.kind == "id" and two.text != "return" or two.text in (">", "&", "*")):
                return  # the size of an array
        kind = "constant"
        if re.fullmatch(r"0[xX][0-9a-fA-F']+[uUlLzZ]*", text):
            digits = re.match(r"0[xX][0-9a-fA-F']+", text).group()
            value = int(digits.replace("'", ""), 16)
            for new in (value + 1, value - 1) if value else (1,):
                self._replace(kind, i, f"0x{new:X}{text[len(digits):]}")
        elif re.fullmatch(r"0[0-7]+", text):
            value = int(text, 8)
            self._replace(kind, i, f"0{value + 1:o}")
            self._replace(kind, i, f"0{value - 1:o}")
        elif re.fullmatch(r"[0-9][0-9']*[uUlLzZ]*", text):
            digits = re.match(r"[0-9']+", text).group().rstrip("'")
            suffix = text[len(digits):]
            value = int(digits.replace("'", ""))
            for new in (value + 1, value - 1) if value else (1,):
                self._replace(kind, i, f"{new}{suffix}")
        else:
            power = re.fullmatch(r"(.*[eEpP][+-]?)(\d+)([fFlL]?)", text)
            plain = re.fullmatch(r"(\d[\d']*)(\.\d*)?([fFlL]?)", text)
            if power:
                self._replace(kind, i, f"{power[1]}{int(power[2]) + 1}{power[3]}")
            elif plain:
                value = int(plain[1].replace("'", ""))
                for new in (value + 1, value - 1) if value else (value + 1,):
                    self._replace(kind, i, f"{new}{plain[2] or ''}{plain[3]}")

    def _character(self, i):
        match = re.fullmatch(r"'([^\\'])'", self.tokens[i].text)
        if match:
            new = chr(ord(match[1]) + (2 if match[1] in "&[" else 1))
            self._replace("constant", i, f"'{new}'")
        elif self.tokens[i].text == r"'\0'":
            self._replace("constant", i, r"'\1'")

    def _word(self, i):
        text = self._text(i)
        if text in ("true", "false"):
            self._replace("constant", i, "false" if text == "true" else "true")
        elif text in _OPPOSITES and self._text(i + 1) == "(" and self._text(i - 1) in (
                "::", ".", "->"):
            self._replace("function", i, _OPPOSITES[text])
        elif self._text(i - 1) == "::" and self._text(i + 1) not in ("::", "("):
            other = self.names.next(self._text(i - 2), text)
            first = i
            while self._text(first - 1) == "::":
                first -= 2
            if other and self._text(first - 1) != "case":
                self._replace("enumerator", i, other)

    # --- swaps ------------------------------------------------------------------

    def _class_of(self, first, last):
        tokens = self.tokens[first:last]
        if not tokens:
            return ""
        if all(t.kind == "str" for t in tokens):
            return "text"
        if len(tokens) == 1 and tokens[0].kind == "num":
            return "number"
        if len(tokens) == 1 and tokens[0].kind == "char":
            return "character"
        if tokens[0].text == "[":
            return "lambda"
        if tokens[0].text == "{":
            return "list"
        return "other"

    def _shape_of(self, first, last):
        """What a cell looks like: only cells of one shape are of one type."""
        tokens = self.tokens[first:last]
        words = [t.text for t in tokens]
        if words in (["true"], ["false"]):
            return "truth"
        if all(t.kind == "id" or t.text in ("::", "&") for t in tokens):
            return "".join(words[:-1]) or "word"
        if words[-1] == ")" and "(" in words:
            name = words[: words.index("(")]
            if all(w == "::" or w.isidentifier() for w in name) and self.source.match.get(
                    first + len(name)) == last - 1:
                return "".join(name[:2]) if len(name) > 1 else name[0] if name else "value"
        return "value"

    def _alike(self, one, two):
        """Whether two cells may change places."""
        a, b = self._class_of(*one), self._class_of(*two)
        if a in ("", "lambda", "list") or a != b:
            return False
        return a != "other" or self._shape_of(*one) == self._shape_of(*two)

    def _exchangeable(self, one, two):
        """Whether two arguments may change places, where nothing is known of the
        function."""
        a, b = self._class_of(*one), self._class_of(*two)
        if a in ("", "lambda", "list") or b in ("", "lambda", "list"):
            return False
        return a == b or {a, b} == {"number", "other"}

    def _swap(self, kind, one, two):
        first = self.source.between(*one)
        second = self.source.between(*two)
        start, end = self.tokens[one[0]].start, self.tokens[two[1] - 1].end
        middle = self.source.text[self.tokens[one[1] - 1].end : self.tokens[two[0]].start]
        if first != second:
            self._add(kind, one[0], start, end, second + middle + first)

    def _arguments(self, i):
        previous = self.tokens[i - 1] if i else None
        if previous is None or i not in self.source.match:
            return
        if previous.kind == "id":
            if previous.text in cxx.KEYWORDS:
                return
        elif previous.text != ">" or i - 1 not in self.source.angle:
            return
        parts = self.source.split(i)
        if len(parts) < 2 or any(self._declares(*p) for p in parts):
            return
        name = previous.text
        if name in _SYMMETRIC:
            parts = parts[1:]
        for k, (one, two) in enumerate(zip(parts, parts[1:])):
            if self._exchangeable(one, two) and self.names.may_swap(name, len(parts), k):
                self._swap("arguments", one, two)

    def _declares(self, first, last):
        return first >= last or self.source.declares_parameter(first, last)

    def _cells(self, i):
        if i not in self.source.match:
            return
        parts = [p for p in self.source.split(i) if p[0] < p[1]]
        if len(parts) < 2:
            return
        texts = [self._class_of(*p) == "text" for p in parts]
        prose = any(_PROSE.search(self.source.between(*p)) for p, t in zip(parts, texts) if t)
        if all(texts) and prose:
            return  # the lines of a help text
        for one, two in zip(parts, parts[1:]):
            if self._alike(one, two):
                self._swap("cells", one, two)
            elif self._class_of(*one) == "list" and self._class_of(*two) == "list":
                self._columns(one, two)

    def _columns(self, one, two):
        """Rows one above the other: each column's two cells change places."""
        upper = self.source.split(one[0])
        lower = self.source.split(two[0])
        if len(upper) != len(lower):
            return
        for a, b in zip(upper, lower):
            if self._alike(a, b):
                self._swap("rows", a, b)

    # --- statements -------------------------------------------------------------

    def _statements(self):
        for statement in self.source.statements():
            first, last = statement.first, statement.last
            if first in self.skipped or any(
                    t.text in _SILENT_CALLS for t in self.tokens[first:last]):
                continue
            text = self._text(first)
            start, end = self.tokens[first].start, self.tokens[last - 1].end
            if text == "return" and last > first + 1:
                self._returned(first, last)
            elif text in ("return", "break", "continue", "throw") or not self.source.is_declaration(
                    first, last):
                if text not in ("using", "static_assert", "[") and last > first:
                    self._add("deletion", first, start, end, "")

    def _returned(self, first, last):
        """`return VALUE` gives the type's empty value."""
        value = self.source.between(first + 1, last)
        if value in ("{}", "0", "false", "nullptr", '""', "std::nullopt", "0.0", "*this", "true"):
            return
        scope, separator, name = value.rpartition("::")
        if separator and name == "None" and self.names.first(scope) == name:
            return  # what {} makes, too
        self._add("return", first, self.tokens[first + 1].start, self.tokens[last - 1].end, "{}")


def find(sources):
    """All mutants of the sources, sorted by file and place, with their names."""
    names = Names(sources)
    found = []
    for source in sorted(sources, key=lambda s: s.path):
        found.extend(Finder(source, names).all())
    counts = {}
    taken = set()
    for mutant in found:
        # The file's name without its folder, so that moving it keeps the ID.
        key = "\0".join((mutant.path.rsplit("/", 1)[-1], mutant.context, mutant.line_text,
                         mutant.kind, mutant.old, mutant.new))
        counts[key] = counts.get(key, 0) + 1
        salt = 0
        while not mutant.id or mutant.id in taken:
            digest = hashlib.sha256(f"{key}\0{counts[key]}\0{salt}".encode()).hexdigest()
            mutant.id = digest[:8]
            salt += 1
        taken.add(mutant.id)
    return found
