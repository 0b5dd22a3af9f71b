# SPDX-License-Identifier: GPL-3.0-or-later
"""C++ as tokens, brackets, blocks and statements: as much of the language as the
mutants and the coverage need, told apart by the spacing that clang-format gives
(a binary operator stands between blanks, a template's bracket does not)."""

import bisect
import re

_TOKEN = re.compile(
    r"""
    (?P<space>\s+)
  | (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<raw>(?:u8|[uUL])?R"(?P<mark>[^(\s]{0,16})\(.*?\)(?P=mark)")
  | (?P<str>(?:u8|[uUL])?"(?:[^"\\\n]|\\.)*")
  | (?P<char>(?:u8|[uUL])?'(?:[^'\\\n]|\\.)+')
  | (?P<num>\.?\d(?:[eEpP][+-]|'[0-9a-zA-Z]|[\w.])*)
  | (?P<id>[A-Za-z_]\w*)
  | (?P<punct><=>|<<=|>>=|\.\.\.|->\*|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||
      [-+*/%&|^]=|\.\*|\#\#|.)
    """,
    re.VERBOSE | re.DOTALL,
)
_DIRECTIVE = re.compile(r"^[ \t]*#(?:[^\n\\]|\\.)*", re.MULTILINE | re.DOTALL)

KEYWORDS = frozenset(
    """alignas alignof asm auto bool break case catch char class concept const consteval
    constexpr constinit const_cast continue decltype default delete do double dynamic_cast else
    enum explicit extern false float for friend goto if inline int long mutable namespace new
    noexcept nullptr operator private protected public register reinterpret_cast requires return
    short signed sizeof static static_assert static_cast struct switch template this thread_local
    throw true try typedef typeid typename union unsigned using virtual void volatile while
    """.split()
)
_TYPE_WORDS = frozenset("auto bool char double float int long short signed unsigned void".split())
_CLOSER = {"(": ")", "[": "]", "{": "}"}


class Token:
    """One token; `spaced` when blanks stand on both sides of it."""

    __slots__ = ("kind", "text", "start", "end", "before", "after")

    def __init__(self, kind, text, start, end, before, after):
        self.kind = kind
        self.text = text
        self.start = start
        self.end = end
        self.before = before
        self.after = after

    @property
    def spaced(self):
        return self.before and self.after


class Statement:
    """Tokens [first, last) of a simple statement, without its semicolon."""

    __slots__ = ("first", "last")

    def __init__(self, first, last):
        self.first = first
        self.last = last


class Source:
    """A file as tokens, with each bracket's partner, what each brace is ("block",
    "scope", "enum" or "list") and the name that it belongs to."""

    def __init__(self, path, text):
        self.path = path
        self.text = text
        self._lines = [0] + [m.end() for m in re.finditer("\n", text)]
        self.tokens = _tokens(text)
        self.match = {}
        self.parent = []
        self.brace = {}
        self.name = {}
        self._angles()
        self._brackets()

    # --- places -----------------------------------------------------------------

    def line(self, offset):
        return bisect.bisect_right(self._lines, offset)

    def column(self, offset):
        return offset - self._lines[self.line(offset) - 1] + 1

    def line_text(self, line):
        end = self._lines[line] - 1 if line < len(self._lines) else len(self.text)
        return self.text[self._lines[line - 1] : end]

    def line_count(self):
        return len(self._lines)

    def between(self, first, last):
        """The text of tokens [first, last)."""
        if first >= last:
            return ""
        return self.text[self.tokens[first].start : self.tokens[last - 1].end]

    def context(self, index):
        """Names of the functions, types and tables around a token; for what stands
        in none, the name that its declaration gives."""
        names = []
        at = self.parent[index]
        while at is not None:
            name = self.name.get(at)
            if name:
                names.append(name)
            at = self.parent[at]
        if not names:
            names.append(self._declared_name(self.statement_start(index)) or "")
        return "/".join(reversed(names))

    # --- structure --------------------------------------------------------------

    def _angles(self):
        """Pairs of template brackets: no blank in front of either."""
        self.angle = {}
        stack = []
        for i, token in enumerate(self.tokens):
            if token.kind != "punct":
                continue
            previous = self.tokens[i - 1].text if i else ""
            if previous == "operator":
                continue
            if token.text == "<" and (not token.before or previous == "template"):
                stack.append(i)
            elif token.text == ">" and stack and not token.spaced:
                opener = stack.pop()
                self.angle[opener] = i
                self.angle[i] = opener
            elif token.text == ">>" and len(stack) > 1 and not token.spaced:
                stack.pop()
                opener = stack.pop()
                self.angle[opener] = i
                self.angle[i] = opener
            elif token.text in ";{}":
                stack.clear()

    def _brackets(self):
        stack = []
        for i, token in enumerate(self.tokens):
            text = token.text if token.kind == "punct" else ""
            if text in (")", "]", "}") and stack:
                opener = stack.pop()
                self.match[opener] = i
                self.match[i] = opener
            self.parent.append(stack[-1] if stack else None)
            if text in _CLOSER:
                if text == "{":
                    self._classify(i)
                stack.append(i)

    def statement_start(self, index):
        """The first token of the statement or declaration around a token, at the
        token's own depth."""
        parent = self.parent[index]
        floor = -1 if parent is None else parent
        i = index
        while i - 1 > floor:
            before = self.tokens[i - 1]
            if before.kind == "punct":
                if before.text == ";":
                    return i
                if before.text == "}" and self.brace.get(self.match.get(i - 1)) != "list":
                    return i
                if before.text == ":" and self._is_label(i - 1):
                    return i
                if before.text in (")", "]", "}") and i - 1 in self.match:
                    i = self.match[i - 1]
                    continue
            i -= 1
        return i

    def _is_label(self, colon):
        i = colon - 1
        if self.tokens[i].text in ("public", "private", "protected", "default"):
            return True
        while i >= 0 and self.tokens[i].text not in (";", "{", "}", "?", "(", ")"):
            if self.tokens[i].text == "case":
                return True
            i -= 1
        return False

    def _declared_name(self, first, last=None):
        """The name that a declaration gives: a function's, type's, table's."""
        i = first
        name = ""
        end = len(self.tokens) if last is None else last
        while i < end:
            token = self.tokens[i]
            text = token.text
            if token.kind == "id" and text == "operator":
                name = "operator"
                i += 1
                while i < end and self.tokens[i].text != "(":
                    name += self.tokens[i].text
                    i += 1
                return name
            if token.kind == "id" and text not in KEYWORDS:
                name = name + text if name.endswith("::") else text
            elif text == "::" and name:
                name += "::"
            elif text in ("<", "[") and (i in self.angle or i in self.match):
                i = self.angle.get(i, self.match.get(i, i))
            elif text in ("(", "=", "{", ";", ":"):
                return name
            i += 1
        return name

    def _classify(self, i):
        tokens = self.tokens
        previous = tokens[i - 1] if i else None
        parent = self.parent[i]
        in_list = parent is not None and (
            self.brace.get(parent) == "list" or tokens[parent].text in ("(", "[")
        )
        first = self.statement_start(i)
        words = []
        j = first
        equals = False
        while j < i:
            text = tokens[j].text
            if text in _CLOSER and j in self.match:
                j = self.match[j]
            elif text == "<" and j in self.angle:
                j = self.angle[j]
            elif tokens[j].kind == "id":
                words.append(text)
            elif text == "=" and tokens[j - 1].text != "operator":
                equals = True
                break
            j += 1
        lead = next((w for w in words if w not in ("inline", "export", "typedef", "static")), "")
        if previous is None:
            self.brace[i] = "block"
            return
        if lead in ("namespace", "struct", "class", "union", "enum") and not equals and not in_list:
            declared = "(" in [t.text for t in tokens[first:i] if t.kind == "punct"]
            if not declared:
                self.brace[i] = "enum" if lead == "enum" else "scope"
                self.name[i] = next(
                    (w for w in words if w not in KEYWORDS and w != "final"), ""
                )
                return
        if previous.text in (")", "const", "noexcept", "override", "final", "mutable"):
            close = i - 1
            while tokens[close].text != ")" and close > first:
                close -= 1
            opener = self.match.get(close, close)
            self.brace[i] = "block"
            word = tokens[opener - 1].text if opener else ""
            if word in ("if", "for", "while", "switch", "catch", "constexpr", "]") or in_list:
                return
            self.name[i] = self._declared_name(first, i)
            return
        if previous.text in ("else", "do", "try", ";") or (
            previous.text in ("{", "}", ":") and not in_list and self.brace.get(parent) == "block"
            and (previous.text != "}" or self.brace.get(self.match.get(i - 1)) != "list")
        ):
            self.brace[i] = "block"
            return
        if previous.text == "]":
            bracket = self.match.get(i - 1)
            # A lambda without parameters, or an array's initialiser.
            if bracket is not None and tokens[bracket - 1].text in ("=", "(", ",", "return", "{"):
                self.brace[i] = "block"
                self.name[i] = "" if in_list else self._declared_name(first, i)
                return
        if self._is_return_type_of(i, first):
            self.brace[i] = "block"
            self.name[i] = self._declared_name(first, i)
            return
        if previous.text == "}" and self.brace.get(self.match.get(i - 1)) == "list" and not in_list:
            # `Name::Name() : member_{1} {`
            self.brace[i] = "block"
            self.name[i] = self._declared_name(first, i)
            return
        self.brace[i] = "list"
        if not in_list:
            self.name[i] = self._declared_name(first, i)

    def _is_return_type_of(self, brace, first):
        """Whether the tokens before a brace are `) -> Type`."""
        for j in range(brace - 1, first, -1):
            if self.tokens[j].text == "->":
                return self.tokens[j - 1].text in (")", "mutable", "const", "noexcept")
            if self.tokens[j].text in (";", "=", "{", "}", "("):
                return False
        return False

    # --- statements -------------------------------------------------------------

    def statements(self):
        """Every simple statement of every block, in order."""
        for opener in sorted(self.brace):
            if self.brace[opener] == "block" and opener in self.match:
                yield from self._statements_of(opener)

    def _statements_of(self, opener):
        tokens = self.tokens
        close = self.match[opener]
        i = opener + 1
        while i < close:
            text = tokens[i].text
            if text in ("if", "for", "while", "switch", "catch"):
                i += 1
                while i < close and tokens[i].text != "(":
                    i += 1
                i = self.match.get(i, close) + 1
            elif text in ("else", "do", "try", ";"):
                i += 1
            elif text in ("case", "default"):
                while i < close and tokens[i].text != ":":
                    i += 1
                i += 1
            elif text == "{":
                i = self.match.get(i, close) + 1
            else:
                last = i
                while last < close and tokens[last].text != ";":
                    if tokens[last].kind == "punct" and tokens[last].text in _CLOSER:
                        last = self.match.get(last, close)
                    last += 1
                if last < close:
                    yield Statement(i, last)
                i = last + 1

    def extent(self, index):
        """First and last line of the simple statement or condition around a token."""
        first = self.statement_start(index)
        end = self.parent[index]
        limit = self.match.get(end, len(self.tokens)) if end is not None else len(self.tokens)
        last = index
        while last + 1 < limit and self.tokens[last].text not in (";", "{", "}"):
            if last in self.match and self.match[last] > last:
                last = self.match[last]
            last += 1
        return self.line(self.tokens[first].start), self.line(self.tokens[last].start)

    def is_declaration(self, first, last):
        """Whether tokens [first, last) declare something rather than do something."""
        tokens = self.tokens
        word = tokens[first].text
        if word in KEYWORDS and word not in (
            "this", "delete", "new", "throw", "static_cast", "const_cast", "reinterpret_cast",
            "dynamic_cast", "break", "continue", "return", "goto", "operator", "sizeof",
        ):
            return True
        i = first
        if tokens[i].text == "::":
            i += 1
        if i >= last or tokens[i].kind != "id":
            return False
        i += 1
        while i < last:
            if tokens[i].text == "::" and i + 1 < last and tokens[i + 1].kind == "id":
                i += 2
            elif tokens[i].text == "<" and i in self.angle:
                i = self.angle[i] + 1
            else:
                break
        while i < last and tokens[i].text in ("&", "*", "&&", "const"):
            if tokens[i].spaced:
                return False
            i += 1
        return i < last and tokens[i].kind == "id" and tokens[i].text not in KEYWORDS

    def declares_parameter(self, first, last):
        """Whether what stands between two commas is a parameter's declaration."""
        word = self.tokens[first].text
        if word == "[":
            return False
        if word in _TYPE_WORDS or word in ("const", "struct", "typename"):
            return True
        if self.tokens[last - 1].text in ("&", "*", "&&"):
            return True
        return self.is_declaration(first, last)

    def split(self, opener):
        """The parts between commas inside a bracket, as (first, last) tokens."""
        close = self.match[opener]
        parts = []
        first = i = opener + 1
        while i < close:
            text = self.tokens[i].text
            if self.tokens[i].kind == "punct":
                if text in _CLOSER:
                    i = self.match.get(i, close)
                elif text == "<" and i in self.angle:
                    i = self.angle[i]
                elif text == ",":
                    parts.append((first, i))
                    first = i + 1
            i += 1
        if first < close:
            parts.append((first, close))
        return parts


def _tokens(text):
    code = _blank_directives(text)
    found = []
    for match in _TOKEN.finditer(code):
        kind = match.lastgroup
        if kind == "mark":
            kind = "raw"
        if kind in ("space", "comment"):
            continue
        start, end = match.span()
        before = start == 0 or code[start - 1].isspace()
        after = end == len(code) or code[end].isspace()
        if kind == "raw":
            kind = "str"
        found.append(Token(kind, match.group(), start, end, before, after))
    return found


def _blank_directives(text):
    """The preprocessor's lines as blanks, so that offsets stay."""
    return _DIRECTIVE.sub(lambda m: re.sub(r"[^\n]", " ", m.group()), text)
