"""The small faults that are put into C and C++ sources, found by a tokeniser: no comment, no preprocessor line and no
static_assert is touched; of string literals only the texts of log lines are."""

import dataclasses
import re


@dataclasses.dataclass(frozen=True)
class Mutant:
    """One fault: characters begin..end of a file are replaced by a text."""
    file: str
    operator: str
    begin: int
    end: int
    text: str
    line: int
    before: str  # the source lines concerned, blanks collapsed
    after: str

    def key(self):
        return self.file, self.before, self.after


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    begin: int
    end: int


TOKEN = re.compile(r"""
    (?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<string>"(?:\\.|[^"\\\n])*")
  | (?P<number>\d(?:[\w.]|'(?=\w))*)
  | (?P<char>'(?:\\.|[^'\\\n])*')
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><=>|<<=|>>=|->|::|\+\+|--|&&|\|\||==|!=|<=|>=|<<|>>|[-+*/%&|^]=|.)
""", re.VERBOSE | re.DOTALL | re.MULTILINE)

# Neighbours of one type, in the order in which each takes the next one's place.
FIELDS = [
    "net_index network_id ts_id frequency service_id polarisation",
    "genre_id country_id provider_id",
    "major_ch_num minor_ch_num",
    "video_pid audio_pid pmt_pid pcr_pid video_ecm_pid reserved_pid",
    "video_tag audio_tag",
    "source_type service_type",
    "tv_vnumber radio_vnumber user_vnumber promo_vnumber vnumber",
    "tv_vch user_vch vch",
    "genre_num country_num provider_num",
    "vch_tag favorite_id",
    "begin end",
    "first last",
    "size capacity",
]
CONSTANTS = [
    "VIEW_ALL VIEW_TV VIEW_RADIO VIEW_USER VIEW_WORK VIEW_PROMOTION",
    "VIEW_FAVOURITE VIEW_FAVOURITE_LAST",
    "GROUP_ALL GROUP_SATELLITE GROUP_GENRE GROUP_PROVIDER GROUP_COUNTRY GROUP_FTACAS GROUP_FAV",
    "CHANNEL_FLAG_LOCKED CHANNEL_FLAG_FTA CHANNEL_FLAG_SKIP CHANNEL_FLAG_DSMCC",
    "MAX_FAV MAX_FAV_NUM MAX_PROMO_CHANNEL",
    "MAX_CHANNEL MAX_TV_CHANNEL MAX_RADIO_CHANNEL",
    "MAX_GENRE MAX_COUNTRY MAX_PROVIDER",
    "SERVICE_TYPE_TV SERVICE_TYPE_RADIO",
    "SORT_CH_NAME SORT_TRANSPONDER SORT_NUMBER SORT_SERVICE_ID SORT_FAV_DEFAULT SORT_USER_TYPE",
    "log_module log_module_scan log_module_source log_module_history",
    "LOG_ERROR LOG_WARNING", "LOG_ERROR_AS LOG_WARNING_AS",
    "true false", "absent present", "not_listed not_listed_and_full", "network_key bucket_key",
]
COMPARISONS = {"<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="]}
ARITHMETIC = {"+": "-", "-": "+", "&": "|", "|": "&", "<<": ">>", ">>": "<<", "*": "+", "/": "*", "%": "+"}
IN_PLACE = {"++": "--", "--": "++", "+=": "-=", "-=": "+=", "|=": "&=", "&=": "|="}
NO_STATEMENT = {"const", "auto", "using", "static", "constexpr", "return", "if", "for", "while", "switch", "case",
                "default", "do", "else", "struct", "class", "enum", "template", "typedef", "extern", "namespace",
                "explicit", "friend", "public", "private", "inline", "static_assert", "constinit"}
DECLARATION = re.compile(r"[\w:]+(?:<[^;()]*>)?(?:\s+[*&]?\s*|\s*[*&]\s+)\w+\s*(?:[=({;\[]|$)")


def rotation(groups):
    """word -> the word that stands next in its group."""
    next_of = {}
    for group in groups:
        words = group.split()
        next_of.update(zip(words, words[1:] + words[:1]))
    return next_of


NEXT_FIELD = rotation(FIELDS)
NEXT_CONSTANT = rotation(CONSTANTS)


def tokens_of(source):
    """The tokens of a source, without those of static_asserts."""
    tokens = [Token(match.lastgroup, match.group(), match.start(), match.end()) for match in TOKEN.finditer(source)
              if match.lastgroup != "skip"]
    kept, asserting = [], False
    for token in tokens:
        asserting = asserting or token.text == "static_assert"
        if not asserting:
            kept.append(token)
        asserting = asserting and token.text != ";"
    return kept


def closing(tokens, opening):
    """The index of the bracket that closes the one at opening."""
    depth = 0
    for index in range(opening, len(tokens)):
        depth += {"(": 1, "[": 1, "{": 1, ")": -1, "]": -1, "}": -1}.get(tokens[index].text, 0)
        if depth == 0:
            return index
    return len(tokens) - 1


def statement_end(tokens, start):
    """The index of the ; that ends the statement at start; None when a block begins first."""
    index = start
    while index < len(tokens):
        text = tokens[index].text
        if text == ";":
            return index
        if text == "}" or (text == "{" and tokens[index - 1].text in (")", "const", "else", "try")):
            return None
        index = closing(tokens, index) if text in "([{" else index
        index += 1
    return None


def is_spaced(source, token):
    """Blanks on both sides: a binary operator, not a template's bracket, a reference or a sign."""
    return source[token.begin - 1] in " \n" and source[token.end:token.end + 1] in (" ", "\n")


def neighbours(number):
    """A literal one lower and one higher, in its own notation."""
    match = re.fullmatch(r"(0[xX])?([\dA-Fa-f']+?)([uUlL]*)", number)
    if match is None:
        return []
    prefix, digits, suffix = match.groups()
    value = int(digits.replace("'", ""), 16 if prefix else 10)
    show = (lambda n: f"0x{n:X}{suffix}") if prefix else (lambda n: f"{n}{suffix}")
    return [show(value + 1)] + ([show(value - 1)] if value > 0 else [])


def changed_result(expression):
    known = {"true": "false", "false": "true", "0": "1", "1": "0", "-1": "0", "nullptr": None, "{}": None}
    return known.get(expression, "{}") if expression else None


def dropped(source, tokens, start):
    """The fault that leaves out the statement at start, as (begin, end, text)."""
    first = tokens[start]
    end = statement_end(tokens, start)
    if end is None or (first.kind != "word" and first.text not in ("*", "++", "--")) or first.text in NO_STATEMENT:
        return None
    text = source[first.begin:tokens[end].end]
    if first.kind == "word" and DECLARATION.match(text):
        return None
    if first.text not in ("break", "continue") and not re.search(r"\(|=|\+\+|--", text):
        return None
    return first.begin, tokens[end].end, ";" + "\n" * text.count("\n")


def faults_at(source, tokens, i):
    """The faults of the token at an index, as (operator, begin, end, text)."""
    token = tokens[i]
    previous = tokens[i - 1].text if i > 0 else ";"
    following = tokens[i + 1].text if i + 1 < len(tokens) else ""

    def replaced(operator, text):
        return operator, token.begin, token.end, text

    if token.kind == "sign" and is_spaced(source, token):
        yield from (replaced("comparison", text) for text in COMPARISONS.get(token.text, ()))
        if token.text in ARITHMETIC:
            yield replaced("arithmetic", ARITHMETIC[token.text])
    if token.text in ("&&", "||") and is_spaced(source, token):
        yield replaced("and / or", "||" if token.text == "&&" else "&&")
    if token.text in IN_PLACE:
        yield replaced("arithmetic", IN_PLACE[token.text])
    if token.kind == "number":
        yield from (replaced("off by one", text) for text in neighbours(token.text))
    if token.kind == "word" and previous == "[" and following == "]":
        yield replaced("off by one", token.text + " + 1")
    if token.kind == "word" and token.text in NEXT_FIELD and (
            following == "(" or token.text not in ("begin", "end", "size")):
        yield replaced("swapped field", NEXT_FIELD[token.text])
    if token.kind == "word" and token.text in NEXT_CONSTANT:
        yield replaced("changed constant", NEXT_CONSTANT[token.text])
    if token.kind == "string" and len(token.text) > 2:
        yield replaced("changed text", '"#' + token.text[1:])
    if token.text in ("if", "while") and following == "(":
        end = closing(tokens, i + 1)
        parts = [k for k in range(i + 2, end) if tokens[k].text == ";"]
        begin = tokens[parts[-1]].end if parts else tokens[i + 1].end
        condition = source[begin:tokens[end].begin].strip()
        yield "negated condition", begin, tokens[end].begin, f"{' ' if parts else ''}!({condition})"
    if token.text == "return":
        end = statement_end(tokens, i)
        result = end is not None and changed_result(source[token.end:tokens[end].begin].strip())
        if result:
            yield "changed result", token.end, tokens[end].begin, f" {result}"
    if previous in (";", "{", "}", ":"):
        cut = dropped(source, tokens, i)
        if cut is not None:
            yield "dropped statement", *cut


def lines_around(source, begin, end):
    """The whole lines that hold begin..end."""
    return source.rfind("\n", 0, begin) + 1, (source.find("\n", end) + len(source) + 1) % (len(source) + 1)


def collapsed(text):
    return " ".join(text.split())


def mutants_of(file, source):
    """Every fault of one source; of two operators that give the same text the first stands."""
    tokens = tokens_of(source)
    found = {}
    for i in range(len(tokens)):
        for operator, begin, end, text in faults_at(source, tokens, i):
            top, bottom = lines_around(source, begin, end)
            mutant = Mutant(file, operator, begin, end, text, source.count("\n", 0, begin) + 1,
                            collapsed(source[top:bottom]), collapsed(source[top:begin] + text + source[end:bottom]))
            found.setdefault((mutant.line, mutant.after), mutant)
    return list(found.values())
