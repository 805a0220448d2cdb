#!/usr/bin/env python3
"""Works out what a model's trees must give, without the program.

    expected_figures.py MODEL.xml            prints the table
    expected_figures.py --check              compares every examples/*/expected.csv

The table is what examples/<name>/expected.csv holds. One row for each tree, then one for each of
its minimal cut sets, columns row,tree,unavailability,frequency,order,events; the events are joined
by ";" and written as <component's full name>.<event>, common causes and circles by name alone.

The cut sets come from the truth table of the whole tree, one bit for each combination of events,
so a tree may have some twenty events and no more. Nothing here is shared with the program. Left
out: XOR and the temporal operators, alternatives other than the current one. The cut sets of models
with NOT or with a state machine are counted by hand, in hand_counted.py.

What the trees mean:
 * A deviation is the OR of its causes. A component that is Refined has only its inner lines, one
   that is NotRefined only its deviations, one that is Both the OR of the two; a Propagator with two
   ports hands over what arrives at its other port.
 * A name on a line stands for what leaves that port; seen from inside the component that has the
   port, for what arrives there from outside.
 * What nothing feeds is a hole: it adds nothing to an OR and is passed over by an AND; a gate of
   holes is a hole. A tree that is a hole has no cut sets.
 * A loop is cut where it closes, and an event "CIRCLE TO <deviation>" that never occurs by itself
   (unavailability 0) stands for what it would feed back.
 * The unavailability treats cut sets as independent (Esary and Proschan 1963), events common to all
   of them taken out first. The frequency is the sum, over the cut sets, of a set's frequency times
   the probability that none of the others holds.
"""
import csv
import glob
import io
import itertools
import math
import os
import re
import sys
import xml.etree.ElementTree as ElementTree

sys.dont_write_bytecode = True  # Nothing is to appear beside the examples.
import hand_counted

PLACEHOLDERS = {"DEFAULT": None, "ANDPORT": "AND", "ORPORT": "OR", "OUTPUTPORT": "OUTPUT",
                "OUTPUT": "OUTPUT"}


def text(element, name):
    found = element.find(name) if element is not None else None
    return (found.text or "").strip() if found is not None else ""


def number(element, name):
    content = text(element, name)
    return float(content) if content else 0.0


def children(element, path):
    found = element.find(path) if element is not None else None
    return list(found) if found is not None else []


# ------------------------------------------------------------------------------------- the model
class Event:
    def __init__(self, full_name, formula, owner):
        self.full_name, self.owner = full_name, owner
        model = formula[0] if formula is not None and len(formula) else None
        self.model = model.tag if model is not None else "None"
        self.parameters = {p.tag: float(p.text or 0) for p in model} if model is not None else {}
        self.unavailability, self.frequency = 0.0, 0.0

    def get(self, name):
        return self.parameters.get(name, -1.0)

    def compute(self, risk_time):
        rate = lambda time: 1 / time if time > 0 else 0.0
        failure = self.get("FailureRate")
        if self.model in ("MTTF", "MTTFMTTR"):
            failure = rate(self.get("MTTF"))
        repair = self.get("RepairRate")
        if self.model in ("MTTR", "MTTFMTTR"):
            repair = rate(self.get("MTTR"))
        if self.model in ("Constant", "MTTR", "MTTF", "MTTFMTTR"):
            q = repairable(failure, repair, risk_time)
        elif self.model == "Fixed":
            self.unavailability = self.get("Unavailability")
            return
        elif self.model == "Binomial":
            p, n = repairable(failure, repair, risk_time), int(self.get("n"))
            q = sum(math.comb(n, i) * p ** i * (1 - p) ** (n - i)
                    for i in range(int(self.get("m")), n + 1))
        elif self.model == "Poisson":
            x = self.get("n") * failure * risk_time
            q = 1 - sum(math.exp(-x) * x ** k / math.factorial(k)
                        for k in range(int(self.get("s")) + 1))
        elif self.model == "Dormant":
            x = self.get("InspectionTime") * failure
            a = self.get("MTTR") * failure * (1 - math.exp(-x))
            q = (x - (1 - math.exp(-x)) + a) / (a + x)
        elif self.model == "Variable":
            self.unavailability = self.weibull(risk_time)
            return
        elif self.model == "ISO26262DetectabilityAnalysis":
            self.unavailability = self.get("Percentage") / 100 * self.owner.failure_rate
            return
        else:
            return
        self.unavailability, self.frequency = q, (1 - q) * failure

    def weibull(self, time):
        phases = [("Scale1", self.get("Slope1"), self.get("Interval1")),
                  ("Scale2", 1.0, self.get("Interval2")), ("Scale3", self.get("Slope3"), math.inf)]
        q = 0.0
        for scale, slope, length in phases:
            q += 1 - math.exp(-(min(time, length) / self.get(scale)) ** slope)
            time -= length
            if time <= 0:
                break
        return q


def repairable(failure, repair, time):
    if failure == 0:
        return 0.0
    return (1 - math.exp(-(failure + repair) * time)) * failure / (failure + repair)


class Component:
    def __init__(self, element, owner, system, perspective, model):
        self.name, self.owner, self.system, self.model = text(element, "Name"), owner, system, model
        self.perspective = perspective
        self.full_name = (owner.full_name + "." if owner else perspective.name + "::") + self.name
        self.risk_time = number(element, "RiskTime")
        self.ports = sorted(text(p, "Name") for p in children(element, "Ports"))
        self.allocation = text(element.find("Allocations"), "Current")
        model.components[self.full_name] = self
        current = element.find("Implementations/Current")
        self.kind = text(current, "HBlockType").replace(" ", "") or "Both"
        self.events, self.deviations, self.exported, self.outports = {}, {}, {}, []
        self.failure_rate = 0.0
        if self.kind in ("NotRefined", "Both"):
            self.read_failures(current.find("FailureData"))
        inner = current.find("System")
        self.system_inside = None
        if self.kind in ("Refined", "Both") and inner is not None:
            self.system_inside = System(inner, self, perspective, model)

    def read_failures(self, data):
        self.failure_rate = number(data, "ComponentFailureRate")
        for e in children(data, "BasicEvents") + children(data, "NormalEvents"):
            name = text(e, "Name")
            event = Event(self.full_name + "." + name, e.find("UnavailabilityFormula"), self)
            event.compute(self.get_risk_time())
            self.events[name] = event
        for p in children(data, "PotentialCCFs"):
            self.events[text(p, "Name")] = self.perspective.common_causes[text(p, "ACCF")]
        for d in children(data, "OutputDeviations"):
            key = tuple(text(d, "Name").split("-", 1))
            self.deviations[key] = self.read_causes(d)
            self.model.failure_classes.setdefault(key[0])
            if text(d, "GlobalLabel"):
                self.model.labels[text(d, "GlobalLabel")] = (key[0], self.full_name + "." + key[1])
            if text(d, "SystemOutport") == "true":
                self.outports.append(key)
        for d in children(data, "ExportedPropagations"):
            key = text(d, "Name")
            self.exported[key] = self.read_causes(d)
            failure_class, subject = key.split("-", 1)
            self.model.failure_classes.setdefault(failure_class)
            label = failure_class + "-" + self.full_name + "." + subject
            self.model.exported[label] = (self, key)

    def read_causes(self, element):
        if element.find("Causes") is not None:
            logic = [text(c, "FailureLogic") for c in children(element, "Causes")]
        else:
            logic = [text(element, "FailureExpression")]
        return [Reader(t, self.model).output_logic() for t in logic if t]

    def get_risk_time(self):
        if self.risk_time > 0:
            return self.risk_time
        if self.owner:
            return self.owner.get_risk_time()
        return self.perspective.risk_time or self.model.risk_time


class System:
    def __init__(self, element, owner, perspective, model):
        self.owner, self.components, self.lines = owner, {}, []
        for c in children(element, "Components"):
            self.components[text(c, "Name")] = Component(c, owner, self, perspective, model)
        for l in children(element, "Lines"):
            self.lines.append(Line(l, self, model))


class Line:
    """Connections are (failure class or "", component, port, expression)."""

    def __init__(self, element, system, model):
        self.system = system
        self.directed = text(element, "Type") == "Directed"
        self.default = text(element, "Default") or "OR"
        self.connections = []
        for c in children(element, "Connections"):
            failure_class = text(c, "FailureClass")
            if failure_class:
                model.failure_classes.setdefault(failure_class)
            component, port = self.end(text(c, "Port"))
            expression = Reader(text(c, "PortExpression"), model).line_logic(failure_class)
            key = (failure_class + "-" if failure_class else "") + text(c, "Port")
            self.connections.append((key, failure_class, component, port, expression))
        self.connections = [c[1:] for c in sorted(self.connections, key=lambda c: c[0])]

    def end(self, reference):
        component, dot, port = reference.rpartition(".")
        owner = self.system.components[component] if dot else self.system.owner
        if port not in owner.ports:
            raise ValueError("no port " + reference)
        return owner, port


class Perspective:
    def __init__(self, element, name, model):
        self.name = name
        self.risk_time = number(element, "RiskTime") if element.tag == "Perspective" else 0.0
        self.common_causes = {}
        for c in children(element, "ActualCCFs"):
            event = Event(text(c, "Name"), c.find("UnavailabilityFormula"), None)
            event.compute(model.risk_time)
            self.common_causes[text(c, "Name")] = event
        self.system = System(element.find("System"), None, self, model)


class Model:
    def __init__(self, path):
        root = ElementTree.parse(path).getroot()
        self.risk_time = number(root, "RiskTime")
        self.components, self.failure_classes = {}, {}
        self.labels, self.exported = {}, {}
        self.perspectives = {}
        listed = children(root, "Perspectives")
        for p in listed or [root]:
            name = text(p, "Name") if listed else "DEFAULT"
            self.perspectives[name] = Perspective(p, name, self)
        self.hazards = {}
        for h in children(root, "Hazards"):
            if h.find("Causes") is not None:
                logic = [text(c, "FailureLogic") for c in children(h, "Causes")]
            else:
                logic = [text(h, "Logic")]
            logic = [Reader(t, self).hazard_logic() for t in logic]
            self.hazards[text(h, "Name")] = logic[0] if len(logic) == 1 else ("OR", logic)

    def find_port(self, name):
        """The component and the port of [perspective::]a.b.port."""
        if "::" not in name:
            name = min(self.perspectives) + "::" + name
        component, _, port = name.rpartition(".")
        if component not in self.components:
            raise ValueError("no component " + component)
        return self.components[component], port


# ------------------------------------------------------------------------------------ expressions
class Reader:
    """Reads one expression into ("OR" | "AND", operands) and leaves of several kinds."""

    def __init__(self, source, model):
        self.tokens = re.findall(r"[A-Za-z_][\w./\[\]]*|\d+|::|[^\s]", source)
        self.position, self.model, self.source = 0, model, source

    def peek(self, distance=0):
        at = self.position + distance
        return self.tokens[at] if at < len(self.tokens) else ""

    def take(self, wanted=None):
        token = self.peek()
        if not token or wanted and token != wanted:
            raise ValueError("expected %s in %s" % (wanted, self.source))
        self.position += 1
        return token

    def whole(self, primary):
        result = self.chain(primary, (("OR", "or", "+"), ("AND", "and", "*")))
        if self.peek():
            raise ValueError("text left over in " + self.source)
        return result

    def chain(self, primary, levels):
        if not levels:
            if self.peek() == "(":
                self.take()
                inner = self.chain(primary, (("OR", "or", "+"), ("AND", "and", "*")))
                self.take(")")
                return ("OR", [inner])  # A node of its own, so that it is never merged.
            return primary()
        operands = [self.chain(primary, levels[1:])]
        while self.peek() in levels[0]:
            self.take()
            operands.append(self.chain(primary, levels[1:]))
        return operands[0] if len(operands) == 1 else (levels[0][0], operands)

    def named(self):
        """class-name[::name] or a lone name."""
        words = self.take()
        if self.peek() == "-":
            self.take()
            self.model.failure_classes.setdefault(words)
            words += "-" + self.take()
        if self.peek() == "::":
            self.take()
            words += "::" + self.take()
        return words

    def output_logic(self):
        def primary():
            word = self.take()
            if self.peek() == "-":
                self.take()
                self.model.failure_classes.setdefault(word)
                return ("INPUT", word, self.take().rpartition(".")[2])
            if word in ("FromAllocation", "GlobalGoto", "LocalGoto"):
                self.take("(")
                target = self.named()
                self.take(")")
                return (word, target)
            return ("EVENT", word)
        return self.whole(primary)

    def line_logic(self, own_class):
        def primary():
            word = self.take()
            if word in PLACEHOLDERS:
                return ("PLACEHOLDER", word)
            if self.peek() == "-":
                self.take()
                self.model.failure_classes.setdefault(word)
                return ("PORT", word, self.take())
            if own_class:
                raise ValueError("class missing in " + self.source)
            return ("PORT", "", word)
        return self.whole(primary)

    def hazard_logic(self):
        return self.whole(lambda: ("TOP", self.named()))


# ----------------------------------------------------------------------------------------- growth
class Node:
    """A gate; an event has a list of no children and its `event` set."""

    def __init__(self, kind, name="", event=None):
        self.kind, self.name, self.event, self.children = kind, name, event, []

    def add(self, child):
        if child is not None:
            self.children.append(child)


class Growth:
    """Grows the graph of one tree. Nodes that several places share are kept by key; they are
    entered in the table before they are filled, so that a loop in the model is one in the graph."""

    def __init__(self, model):
        self.model, self.made, self.events = model, {}, {}

    def shared(self, key, kind, name, fill):
        if key not in self.made:
            node = self.made[key] = Node(kind, name)
            fill(node)
        return self.made[key]

    def gate(self, expression, leaf):
        if expression[0] not in ("OR", "AND"):
            return leaf(expression)
        node = Node(expression[0])
        for operand in expression[1]:
            node.add(self.gate(operand, leaf))
        return node

    def deviation(self, component, key, causes, name):
        """The node of an output or exported deviation; None without logic."""
        if not causes:
            return None

        def fill(node):
            for cause in causes:
                node.add(self.gate(cause, lambda leaf: self.local(leaf, component)))
        return self.shared((component.full_name, key), "OR", name, fill)

    def local(self, leaf, component):
        if leaf[0] == "EVENT":
            event = component.events[leaf[1]]
            return self.shared(id(event), "EVENT", "", lambda node: setattr(node, "event", event))
        if leaf[0] == "INPUT":
            return self.arriving(component, leaf[2], leaf[1])
        if leaf[0] == "FromAllocation":
            return self.exported(self.model.components[component.allocation], leaf[1])
        if leaf[0] == "LocalGoto":
            failure_class, port = leaf[1].split("-", 1)
            target = self.model.find_port(component.full_name + "." + port)
        elif leaf[1] in self.model.exported:
            return self.exported(*self.model.exported[leaf[1]])
        else:
            full = leaf[1]
            if full in self.model.labels:
                full = "-".join(self.model.labels[full])
            failure_class, port = full.split("-", 1)
            target = self.model.find_port(port)
        return self.leaving(*target, failure_class)

    def exported(self, host, key):
        failure_class, subject = key.split("-", 1)
        return self.deviation(host, ("exported", key), host.exported.get(key),
                              failure_class + "-" + host.full_name + "." + subject)

    def leaving(self, component, port, failure_class, inside=False):
        """What a port means to those who see it from outside its component, or from inside."""
        node = Node("OR")
        if component.kind == "Propagator":
            if len(component.ports) == 2:
                other = next(p for p in component.ports if p != port)
                node.add(self.arriving(component, other, failure_class))
            return node
        if component.kind != "Refined":
            key = (failure_class, port)
            node.add(self.deviation(component, key, component.deviations.get(key),
                                    "%s-%s.%s" % (failure_class, component.full_name, port)))
        if component.kind != "NotRefined":
            node.add(self.arriving(component, port, failure_class) if inside
                     else self.line(component.system_inside, component, port, failure_class))
        return node

    def arriving(self, component, port, failure_class):
        return self.line(component.system, component, port, failure_class)

    def line(self, system, component, port, failure_class):
        """What the lines of one system say about a class at a port; None if they are silent."""
        if system is None:
            return None
        found = None
        for line in system.lines:
            for own_class, owner, name, expression in line.connections:
                if owner is not component or name != port:
                    continue
                # The last with the class wins, else the first without one.
                if own_class == failure_class or not own_class and found is None:
                    found = (line, expression)
        if found is None:
            return None
        line, expression = found
        key = (id(system), component.full_name, port, failure_class)
        named = (component, port, failure_class)
        if expression[0] == "PORT":  # A lone reference keeps its own name.
            named = (*line.end(expression[2]), expression[1] or failure_class)
        name = "%s-%s.%s" % (named[2], named[0].full_name, named[1])
        return self.shared(key, "OR", name, lambda node: node.add(self.gate(
            expression, lambda leaf: self.reference(leaf, line, component, port, failure_class))))

    def reference(self, leaf, line, component, port, failure_class):
        if leaf[0] == "PORT":
            owner, name = line.end(leaf[2])
            return self.leaving(owner, name, leaf[1] or failure_class,
                                inside=owner is line.system.owner)
        operator = PLACEHOLDERS[leaf[1]] or line.default
        if operator == "OUTPUT":
            return Node("OR")
        peers = self.peers(line, component, port, failure_class, outputs_only=line.directed)
        if line.directed and not peers:
            peers = self.peers(line, component, port, failure_class, outputs_only=False)
        node = Node(operator)
        for owner, name in peers:
            node.add(self.leaving(owner, name, failure_class, inside=owner is line.system.owner))
        return node

    @staticmethod
    def peers(line, component, port, failure_class, outputs_only):
        found = []
        for own_class, owner, name, expression in line.connections:
            is_output = expression[0] == "PLACEHOLDER" and (
                (PLACEHOLDERS[expression[1]] or line.default) == "OUTPUT")
            if (owner is component and name == port or own_class not in ("", failure_class)
                    or outputs_only and not is_output or (owner, name) in found):
                continue
            found.append((owner, name))
        return found

    def top(self, hazard):
        def leaf(expression):
            failure_class, port = expression[1].split("-", 1)
            return self.leaving(*self.model.find_port(port), failure_class)
        node = Node("OR", "top")
        node.add(self.gate(hazard, leaf))
        return node


# ---------------------------------------------------------------------------------- truth tables
def cut_loops(node, path, circles, done):
    """Replaces each edge that leads back onto the path by the target's circle event."""
    if id(node) in done:
        return
    path.append(node)
    for i, child in enumerate(node.children):
        if any(child is other for other in path):
            circle = circles.setdefault(id(child), Node("EVENT"))
            if circle.event is None:
                circle.event = Event("CIRCLE TO " + child.name, None, None)
            node.children[i] = circle
        else:
            cut_loops(child, path, circles, done)
    path.pop()
    done[id(node)] = node


def reachable(root):
    found, stack = {}, [root]
    while stack:
        node = stack.pop()
        if id(node) not in found:
            found[id(node)] = node
            stack.extend(node.children)
    return found.values()


def variables(count):
    """Column i of a truth table over `count` events, as one integer of 2^count bits."""
    everything = (1 << (1 << count)) - 1
    return [everything // ((1 << (1 << i)) + 1) << (1 << i) for i in range(count)]


def evaluate(root, table):
    """The truth table of a graph without loops; None for a hole."""
    done = {}

    def value(node):
        if id(node) not in done:
            if node.event is not None:
                done[id(node)] = table[node.event.full_name]
            else:
                operands = [v for v in map(value, node.children) if v is not None]
                result = operands[0] if operands else None
                for operand in operands[1:]:
                    result = result | operand if node.kind == "OR" else result & operand
                done[id(node)] = result
        return done[id(node)]
    return value(root)


def least_solution(root, table):
    """The truth table of a graph with loops: what happens when nothing fails by itself."""
    nodes = list(reachable(root))
    holes, before = set(), -1
    while len(holes) != before:
        before = len(holes)
        holes |= {id(n) for n in nodes if n.event is None and all(id(c) in holes
                                                                for c in n.children)}
    state = {id(n): table[n.event.full_name] if n.event is not None else 0 for n in nodes}
    changed = True
    while changed:
        changed = False
        for node in nodes:
            if node.event is not None or id(node) in holes:
                continue
            operands = [state[id(c)] for c in node.children if id(c) not in holes]
            result = operands[0]
            for operand in operands[1:]:
                result = result | operand if node.kind == "OR" else result & operand
            if result != state[id(node)]:
                state[id(node)], changed = result, True
    return state[id(root)]


def minimal_points(truth, columns):
    covered = 0
    for i, column in enumerate(columns):
        covered |= (truth & ~column) << (1 << i)
    points, rest = [], truth & ~covered
    while rest:
        low = rest & -rest
        points.append(low.bit_length() - 1)
        rest ^= low
    return points


def analyse(root):
    """The minimal cut sets of a tree, each a list of events in name order."""
    loops_before = copy_graph(root)
    cut_loops(root, [], {}, {})
    events = {}
    for node in reachable(root):
        if node.event is not None:
            events[node.event.full_name] = node.event
    names = sorted(events)
    if len(names) > 24:
        raise ValueError("too many events for a truth table: %d" % len(names))
    columns = variables(len(names))
    truth = evaluate(root, dict(zip(names, columns)))
    if truth is None:
        return []
    check_loops(truth, names, columns, loops_before)
    sets = [[events[n] for i, n in enumerate(names) if point >> i & 1]
            for point in minimal_points(truth, columns)]
    return sorted(sets, key=lambda s: (len(s), [e.full_name for e in s]))


def check_loops(truth, names, columns, uncut):
    """With no circle holding by itself, the cut tree must be the least solution of the loops."""
    without = truth
    for name, column in zip(names, columns):
        if name.startswith("CIRCLE TO "):
            without &= ~column
    least = least_solution(uncut, dict(zip(names, columns)))
    for name, column in zip(names, columns):
        if name.startswith("CIRCLE TO "):
            least &= ~column
    if without != least:
        raise ValueError("a loop of this tree has no single place to cut")


def copy_graph(root):
    copies = {id(n): Node(n.kind, n.name, n.event) for n in reachable(root)}
    for node in reachable(root):
        copies[id(node)].children = [copies[id(c)] for c in node.children]
    return copies[id(root)]


# ---------------------------------------------------------------------------------------- figures
def set_unavailability(cut_set):
    return math.prod(e.unavailability for e in cut_set)


def set_frequency(cut_set):
    return sum(e.frequency * math.prod(o.unavailability for o in cut_set if o is not e)
               for e in cut_set)


def tree_unavailability(sets):
    if not sets:
        return 0.0
    common = [e for e in sets[0] if all(e in s for s in sets)]
    none = math.prod(1 - math.prod(e.unavailability for e in s if e not in common) for s in sets)
    return (1 - none) * math.prod(e.unavailability for e in common)


def tree_frequency(sets):
    return sum(set_frequency(s) * math.prod(1 - set_unavailability(o) for o in sets if o is not s)
               for s in sets)


def trees(model):
    """The name and the root of each tree, in the order in which the program lists them."""
    if model.hazards:
        for name in sorted(model.hazards):
            yield name, Growth(model).top(model.hazards[name])
        return
    for perspective in sorted(model.perspectives):
        yield from outports(model, model.perspectives[perspective].system)


def outports(model, system):
    for _, component in sorted(system.components.items()):
        for failure_class, port in sorted(component.outports, key="-".join):
            name = "%s-%s.%s" % (failure_class, component.full_name, port)
            yield name, Growth(model).leaving(component, port, failure_class)
        if component.system_inside:
            yield from outports(model, component.system_inside)


def analysed(path):
    """The name and the minimal cut sets of each tree of the model."""
    example = os.path.splitext(os.path.basename(path))[0]
    if example in hand_counted.EXAMPLES:
        return hand_counted.trees(example)
    return ((name, analyse(root)) for name, root in trees(Model(path)))


def table(path):
    rows = [["row", "tree", "unavailability", "frequency", "order", "events"]]
    for name, sets in analysed(path):
        rows.append(["tree", name, repr(tree_unavailability(sets)), repr(tree_frequency(sets)),
                     "", ""])
        for s in sets:
            rows.append(["cutset", name, repr(set_unavailability(s)), repr(set_frequency(s)),
                         str(len(s)), ";".join(e.full_name for e in s)])
    return rows


def write(rows):
    out = io.StringIO()
    csv.writer(out, lineterminator="\n").writerows(rows)
    return out.getvalue()


def same(a, b):
    """Rows are equal in their texts and within the last digits in their figures."""
    if len(a) != len(b):
        return False
    for x, y in itertools.islice(zip(a, b), 1, None):
        if x[:2] + x[4:] != y[:2] + y[4:]:
            return False
        if not all(math.isclose(float(p), float(q), rel_tol=1e-12, abs_tol=1e-30)
                   for p, q in zip(x[2:4], y[2:4])):
            return False
    return True


def check():
    folder = os.path.dirname(os.path.abspath(__file__))
    status = 0
    for path in sorted(glob.glob(os.path.join(folder, "*", "expected.csv"))):
        name = os.path.basename(os.path.dirname(path))
        with open(path, newline="", encoding="utf-8") as stored:
            rows = list(csv.reader(stored))
        good = same(rows, table(os.path.join(os.path.dirname(path), name + ".xml")))
        print("%-24s %s" % (name, "as stored" if good else "DIFFERS"))
        status |= not good
    return status


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.setrecursionlimit(100000)
    if sys.argv[1] == "--check":
        sys.exit(check())
    sys.stdout.write(write(table(sys.argv[1])))


if __name__ == "__main__":
    main()
