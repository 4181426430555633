"""One text in the template languages of the product and of its peers.

A workload is made of the parts below. Each language writes the same parts in its own words, so that
all programs produce the same output bytes. Arithmetic is that of 32-bit integers, which all of
them share; a language without arithmetic or conditions gets their results among its variables.
"""

from dataclasses import dataclass, field


@dataclass(frozen=True)
class Text:
    text: str


@dataclass(frozen=True)
class Ref:
    name: str


@dataclass(frozen=True)
class Calc:
    """An integer expression: names, numbers, + - * / and parentheses, without blanks."""

    words: tuple


@dataclass(frozen=True)
class If:
    """A comparison of an integer variable with a number, and the parts of its two branches.

    Neither branch starts with white space, and neither does the text after the condition."""

    name: str
    operator: str
    number: int
    then: tuple
    otherwise: tuple = ()


@dataclass
class Variables:
    """The variables of a workload: name -> int, float or str."""

    values: dict = field(default_factory=dict)

    def text(self, name):
        value = self.values[name]
        return f"{value:.2f}" if isinstance(value, float) else str(value)

    def calculate(self, calc):
        words = [str(self.values.get(word, word)) for word in calc.words]
        # The expressions of the workloads divide no negative numbers, so // is the quotient.
        return eval("".join(words).replace("/", "//"))

    def holds(self, condition):
        value = self.values[condition.name]
        return {">": value > condition.number, "<": value < condition.number}[condition.operator]

    def tsv(self):
        """The variables as a file for the product, with their own types."""
        names = {int: "int", float: "double", str: "string"}
        return "".join(
            f"{name}\t{names[type(value)]}\t{self.text(name)}\n"
            for name, value in self.values.items()
        )

    def plain(self):
        """The variables as a file for the peers: texts as they are printed."""
        return "".join(f"{name}\tstring\t{self.text(name)}\n" for name in self.values)


class Language:
    """Writes parts in one language; `variables` are those of the workload."""

    def __init__(self, variables):
        self.variables = variables

    def write(self, parts):
        return "".join(self.part(part) for part in parts)

    def part(self, part):
        writers = {Text: self.text, Ref: self.ref, Calc: self.calc, If: self.condition}
        return writers[type(part)](part)

    def text(self, part):
        return part.text


class Product(Language):
    def ref(self, part):
        return "@" + part.name

    def calc(self, part):
        return f"@COMPUTE({''.join(map(str, part.words))})"

    def condition(self, part):
        # A blank must follow @THEN and @ELSE; it is swallowed, as is one after @ENDIF.
        otherwise = f"@ELSE {self.write(part.otherwise)}" if part.otherwise else ""
        return (
            f"@IF({part.name}{part.operator}{part.number})@THEN {self.write(part.then)}"
            f"{otherwise}@ENDIF "
        )

    def variables_file(self):
        return self.variables.tsv()


class CTemplate(Language):
    """Conditions are sections, results of arithmetic are variables: both decided by the host."""

    def __init__(self, variables):
        super().__init__(variables)
        self.results = {}
        self.sections = {}

    def ref(self, part):
        return "{{" + part.name + "}}"

    def calc(self, part):
        name = self.results.setdefault(part, f"R{len(self.results)}")
        return "{{" + name + "}}"

    def condition(self, part):
        key = (part.name, part.operator, part.number)
        name, _ = self.sections.setdefault(key, (f"C{len(self.sections)}", part))
        text = "{{#%s}}%s{{/%s}}" % (name, self.write(part.then), name)
        if part.otherwise:
            text += "{{#N%s}}%s{{/N%s}}" % (name, self.write(part.otherwise), name)
        return text

    def variables_file(self):
        lines = [self.variables.plain()]
        for calc, name in self.results.items():
            lines.append(f"{name}\tstring\t{self.variables.calculate(calc)}\n")
        for name, condition in self.sections.values():
            holds = self.variables.holds(condition)
            lines.append(f"{name}\tsection\t{int(holds)}\nN{name}\tsection\t{int(not holds)}\n")
        return "".join(lines)


class ClearSilver(Language):
    def ref(self, part):
        return f"<?cs var:{part.name} ?>"

    def calc(self, part):
        words = [word if str(word) in "+-*/()" else f"#{word}" for word in part.words]
        return f"<?cs var:{''.join(words)} ?>"

    def condition(self, part):
        otherwise = f"<?cs else ?>{self.write(part.otherwise)}" if part.otherwise else ""
        return (
            f"<?cs if:#{part.name}{part.operator}#{part.number} ?>{self.write(part.then)}"
            f"{otherwise}<?cs /if ?>"
        )

    def variables_file(self):
        return self.variables.plain()


class M4(Language):
    """Runs with the quotes << and >> and no comments; the texts use none of m4's own names."""

    def ref(self, part):
        return part.name

    def calc(self, part):
        return f"eval({''.join(map(str, part.words))})"

    def condition(self, part):
        otherwise = f",<<{self.write(part.otherwise)}>>" if part.otherwise else ""
        test = f"eval({part.name}{part.operator}{part.number})"
        return f"ifelse({test},1,<<{self.write(part.then)}>>{otherwise})"

    def variables_file(self):
        names = self.variables.values
        lines = [f"define(<<{name}>>,<<{self.variables.text(name)}>>)" for name in names]
        return "changequote(<<,>>)changecom<<>>" + "".join(lines)
