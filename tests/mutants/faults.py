"""Small faults, made by rule in the lines of C++ sources."""

import dataclasses
import hashlib
import re
from collections import Counter
from pathlib import Path


@dataclasses.dataclass(frozen=True)
class Fault:
    """One line of a file with a mistake in it."""

    file: str  # relative to the project's folder
    before: str  # the line as it is, without the blanks around it
    nth: int  # which of the file's lines that read like this, from 1
    after: str  # the line with the mistake
    rule: str
    line: int  # where the line stands, from 1; no part of what names the fault

    @property
    def name(self):
        """Names the fault for as long as its line stays as it is."""
        return (self.file, self.nth, self.before, self.after)

    def __str__(self):
        place = self.file if self.nth == 1 else f"{self.file}, number {self.nth}"
        return f"{place}\n- {self.before}\n+ {self.after}"


# The tokens in which nothing is an operator, longest first
COMMENT_OR_TEXT = re.compile(
    r"""//[^\n]*|/\*.*?\*/|R"(\w*)\(.*?\)\1"|"(?:\\.|[^"\\\n])*"|(?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'""", re.DOTALL
)

TURNED = {"<": ">=", "<=": ">", ">": "<=", ">=": "<", "==": "!=", "!=": "=="}
MOVED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
OTHER_OPERATOR = {
    "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+=", "|=": "&=", "&=": "|=", "&&": "||",
    "||": "&&", "|": "&", "&": "|", "<<": ">>", ">>": "<<",
}  # fmt: skip
NOT_A_STATEMENT = re.compile(
    r"(return|else|case|default|using|namespace|template|typedef|friend|static_assert|public|private|protected)\b"
    r"|[})\]]"
)
DECLARATION = re.compile(
    r"(static |inline |constexpr |const |auto |explicit |virtual )"
    r"|[\w:<>,&*\[\] ]*[\w>&*] [&*]?\w+( =|;|\(|\{|\[)"
)
PROMISE = re.compile(r"(throw|delete|goto|co_return)\b")
ROW_OF_A_TABLE = re.compile(r"""[\s{}0-9xA-Fa-fUuL,+-]*,?[\s{}]*(};)?$""")


def blanked(text):
    """The text with every comment blanked and every text filled with underscores; each line as long as before."""

    def blank(match):
        token = match.group()
        if token.startswith("/"):
            return re.sub(r"[^\n]", " ", token)
        inside = re.sub(r"[^\n]", "_", token[1:-1])
        return token[0] + inside + token[-1]

    return COMMENT_OR_TEXT.sub(blank, text)


def end_of_parenthesis(code, begin):
    """Where the parenthesis closes that opens at `begin`; -1 when that is in another line."""
    depth = 0
    for at in range(begin, len(code)):
        depth += {"(": 1, ")": -1}.get(code[at], 0)
        if depth == 0:
            return at
    return -1


def operators(code):
    """Each fault in an operator, as (begin, end, what stands there instead, rule)."""
    for found in re.finditer(r"(?<= )(<=|>=|==|!=|<|>)(?= )", code):
        yield *found.span(), TURNED[found[0]], "comparison turned"
        if found[0] in MOVED:
            yield *found.span(), MOVED[found[0]], "bound moved by one"
    for found in re.finditer(r" [+-] 1\b(?!')", code):
        yield *found.span(), "", "bound moved by one"
    for found in re.finditer(r"(?<= )(\+=|-=|\|=|&=|&&|\|\||<<|>>|[-+*/%|&])(?= )", code):
        yield *found.span(), OTHER_OPERATOR[found[0]], "other operator"
    for found in re.finditer(r"\+\+|--", code):
        yield *found.span(), "--" if found[0] == "++" else "++", "other operator"
    for found in re.finditer(r" \| [\w:]+", code):
        yield *found.span(), "", "flag left out"


def conditions(code, line):
    """Each fault in a condition."""
    for found in re.finditer(r"(?<![\w!])!(?=[\w(*])", code):
        yield *found.span(), "", "condition negated"
    for found in re.finditer(r"\b(?:if|while) (?=\()", code):
        end = end_of_parenthesis(code, found.end())
        begin = max(found.end() + 1, code.rfind("; ", found.end(), end) + 2)
        if end > 0:
            yield begin, end, f"!({line[begin:end]})", "condition negated"


def constants(code, line):
    """Each fault in a number, a character or a truth."""
    if ROW_OF_A_TABLE.match(code) and len(re.findall(r"\w+", code)) > 2:
        return
    for found in re.finditer(r"(?<![\w.'])(0x[0-9A-Fa-f]+|[0-9]+)(?=[UuL]*\b)(?![.'])", code):
        base, written = (16, "{:#x}") if found[0].startswith("0x") else (10, "{}")
        number = int(found[0], base)
        for other in {number + 1, max(number - 1, 0)} - {number}:
            yield *found.span(), written.format(other), "constant changed"
    for found in re.finditer(r"\b(true|false)\b", code):
        yield *found.span(), "false" if found[0] == "true" else "true", "constant changed"
    for found in re.finditer(r"'_'", code):
        character = line[found.start() + 1]
        other = chr(ord(character) + 1) if character not in "&[\\~" else "x"
        yield *found.span(), f"'{other}'", "constant changed"


def statements(code, code_before):
    """The whole line, where it is one statement that can be left out."""
    stripped = code.strip()
    if not stripped.endswith(";") or stripped.count("(") != stripped.count(")") or stripped == ";":
        return
    follows_an_end = code_before.endswith((";", "{", "}", ":", ")", "else", "do")) or not code_before
    is_declared = DECLARATION.match(stripped) and not PROMISE.match(stripped)
    if follows_an_end and not NOT_A_STATEMENT.match(stripped) and not is_declared or stripped == "return;":
        begin = len(code) - len(code.lstrip())
        yield begin, begin + len(stripped), ";", "statement left out"


def faults_in(project, file):
    """Every fault that the rules make in the file."""
    text = (Path(project) / file).read_text()
    lines = text.split("\n")
    seen = Counter()
    code_before = ""
    for number, (line, code) in enumerate(zip(lines, blanked(text).split("\n")), 1):
        stripped = line.strip()
        seen[stripped] += 1
        if not code.strip() or code.lstrip().startswith("#"):
            continue
        edits = [*operators(code), *conditions(code, line), *constants(code, line), *statements(code, code_before)]
        for begin, end, instead, rule in edits:
            after = (line[:begin] + instead + line[end:]).strip()
            yield Fault(file, stripped, seen[stripped], after, rule, number)
        code_before = code.rstrip()


def in_order_of_chance(faults, seed):
    """The faults in an order that is the same for the same seed, even after other lines have changed."""
    return sorted(faults, key=lambda fault: hashlib.sha256(repr((seed, fault.name)).encode()).digest())


def text_with(project, fault):
    """The whole file with the fault in it."""
    lines = (Path(project) / fault.file).read_text().split("\n")
    line = lines[fault.line - 1]
    indentation = line[: len(line) - len(line.lstrip())]
    lines[fault.line - 1] = indentation + fault.after
    return "\n".join(lines)
