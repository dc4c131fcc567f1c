#!/usr/bin/env python3
"""Breaks the sources in one small way at a time and names what the tests do not notice.

The points are picked from the sources alone: the same seed on the same sources gives the same
mutants, whichever tests stand. A mutant is known by its room and number ("orders:7"). Everything
runs in a configured build tree; a -Werror that an unused variable trips makes a mutant "not built",
and the next one takes its place. The tests see the environment: under scripts/with_postgres.sh they
run on PostgreSQL too.
"""

import argparse
import collections
import dataclasses
import json
import os
import random
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

from mutation_points import ROOT, candidates


@dataclasses.dataclass
class Room:
    """Folders under src, and what tests them first: a pattern of ctest, filters of GoogleTest."""
    folders: tuple
    entries: str
    cases: str


ROOMS = {
    "orders": Room(("orders",), "scenario_orders", "*LPO*"),
    "receipts": Room(("receipts",), "scenario_receipts", "*GRN*"),
    "invoices": Room(("invoices",), "scenario_invoices", "*PurchaseInvoice*"),
    "returns": Room(("returns",), "scenario_returns", "*Return*:*DebitMemo*"),
    "cash": Room(("cash",), "scenario_cash", "*CashPurchase*"),
    "vendor": Room(("vendor",), "scenario_vendor", "*Vendor*"),
    "posting": Room(("posting", "stock"), "scenario_(receipts|invoices|returns|cash|shared)",
                    "*Posting*:*Stock*:*ReturnProcessing*:*WholeRoad*"),
    "components": Room(("components",), "scenario_(components|shared)",
                       "*AccountPref*:*Payable*:*Counter*:*General*:*PDC*:*Shipped*:*Debit*"),
    "frame": Room(("frame",), "scenario_(frame|shared)",
                  "*Text*:*Number*:*Date*:*Value*:*Round*:*Arithm*:*Grid*:*Regist*:*Connect*"
                  ":*Recordset*:*Conflict*:*Statement*:*Schema*:*Same*:*Sqlite*:*Postgres*:*Call*"),
}
BINARY = "tests/ombrix_tests"
SWEEPS = "*Sweep*"  # long too
SHARDS = "^ombrix_tests_[0-9]+$"  # the binary, which is run by itself
LONG = r"fuzz|[Pp]rocess|examples|python|[Tt]hreads|TwoCompanies"
BUILD_LIMIT = 1800
MEMORY = 4 << 30  # a loop that never ends must not take the machine with it
KILLED, SURVIVED, NOT_BUILT = RESULTS = ("killed", "survived", "not built")


class Broken:
    """A file as a mutant has it, and as it was."""

    def __init__(self, point):
        self.name = os.path.join(ROOT, point.path)
        with open(self.name, "rb") as file:
            self.whole = file.read()
        text = self.whole.decode()
        self.text = text[:point.start] + point.new + text[point.end:]
        first = text.rfind("\n", 0, point.start) + 1
        end = text.find("\n", point.end)
        self.line = text.count("\n", 0, first) + 1
        self.old = text[first:end]
        self.new = self.text[first:end + len(self.text) - len(text)]

    def difference(self):
        return "\n".join([f"- {line}" for line in self.old.split("\n")]
                         + [f"+ {line}" for line in self.new.split("\n")])

    def take_place(self):
        self.write(self.text.encode())

    def give_way(self):
        self.write(self.whole)

    def write(self, content):
        with open(self.name, "wb") as file:
            file.write(content)


def run(command, limit, **options):
    """(ended well, output); everything the command started has ended."""
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          start_new_session=True, **options) as process:
        try:
            output = process.communicate(timeout=limit)[0].decode(errors="replace")
            return process.returncode == 0, output or f"ended with {process.returncode}"
        except subprocess.TimeoutExpired:
            return False, f"took longer than {limit:.0f} s"
        finally:
            end(process)


def end(process):
    """Compilers are in groups of their own: ninja has to end them itself, lest they stay at work
    on a file that is about to change back."""
    for ending, patience in ((signal.SIGTERM, 20), (signal.SIGKILL, 5)):
        try:
            os.killpg(process.pid, ending)
            until = time.monotonic() + patience
            while time.monotonic() < until:
                process.poll()
                os.killpg(process.pid, 0)
                time.sleep(0.05)
        except ProcessLookupError:
            return


class Tree:
    """A configured build tree, and the stages in which its tests run."""

    def __init__(self, folder):
        self.folder = os.path.abspath(folder)
        self.binary = os.path.join(self.folder, BINARY)

    def build(self, targets=("all",), **options):
        return run(["cmake", "--build", self.folder, "--target", *targets], BUILD_LIMIT, **options)

    def entries(self):
        """Name and command of each entry of ctest."""
        shown = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.folder, check=True,
                               capture_output=True, text=True).stdout
        return [(test["name"], test.get("command", [])) for test in json.loads(shown)["tests"]]

    def stages(self, room, quick):
        """(name, targets, command) of what tests a room, the likeliest to notice first."""
        entries, cases = ROOMS[room].entries, ROOMS[room].cases
        own = [command for name, command in self.entries() if re.search(entries, name)]
        if own:
            files = {os.path.relpath(word, self.folder) for command in own for word in command
                     if word.startswith(self.folder) and os.path.isfile(word)}
            yield entries, sorted(files) or ["all"], self.ctest("-R", entries)
        if os.path.exists(self.binary):
            yield cases, [BINARY], self.cases(cases)
            yield "other cases", [BINARY], self.cases(f"-{cases}:{SWEEPS}")
        yield "other entries", ["all"], self.ctest("-E", f"{SHARDS}|{entries}|{LONG}")
        if quick:
            return
        if os.path.exists(self.binary):
            yield "other sweeps", ["all"], self.cases(f"{SWEEPS}-{cases}")
        yield "long entries", ["all"], self.ctest("-R", LONG, "-E", f"{SHARDS}|{entries}")

    def cases(self, filters):
        return [self.binary, "--gtest_brief=1", "--gtest_filter=" + filters]

    @staticmethod
    def ctest(*chosen):
        return ["ctest", "--stop-on-failure", "-j2", *chosen]

    def test(self, command, limit):
        """(passed, what failed first)."""
        with tempfile.TemporaryDirectory(prefix="mutant_") as scratch:
            environment = {**os.environ, "TMPDIR": scratch, "GTEST_FAIL_FAST": "1"}
            passed, output = run(command, limit, cwd=self.folder, env=environment,
                                 preexec_fn=limit_memory)
        failed = re.search(r"\[  FAILED  \] ([^\s,]+)|Test +#\d+: (\S+) .*\*\*\*", output)
        return passed, (failed[1] or failed[2]) if failed else output.strip().rpartition("\n")[2]


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


class Run:
    def __init__(self, options):
        self.options = options
        self.tree = Tree(options.build)
        self.records = []
        self.limits = {}

    def limited(self, stages):
        """(targets, command, seconds): a stage has to pass without a mutant, and gets its time."""
        built, output = self.tree.build()  # the last mutant may still stand in the binaries
        if not built:
            sys.exit(output)
        for name, targets, command in stages:
            if name not in self.limits:
                began = time.monotonic()
                passed, failed = self.tree.test(command, BUILD_LIMIT)
                if not passed:
                    sys.exit(f"{' '.join(command)}\nfails without a mutant: {failed}")
                seconds = time.monotonic() - began
                self.limits[name] = 20 + 5 * seconds
                say(f"passes in {seconds:.0f} s without a mutant: {name}")
            yield targets, command, self.limits[name]

    def room(self, room, wanted):
        stages = list(self.limited(self.tree.stages(room, self.options.quick)))
        built = 0
        for number, point in points_of(room, self.options):
            if wanted and number not in wanted:
                continue
            result = self.mutant(room, number, point, stages)
            built += result != NOT_BUILT
            if built == (len(wanted) or self.options.count):
                return

    def mutant(self, room, number, point, stages):
        began = time.monotonic()
        broken = Broken(point)
        try:
            broken.take_place()
            result, noticed = self.verdict(stages)
        finally:
            broken.give_way()
        seconds = round(time.monotonic() - began)
        self.records.append({"room": room, "number": number, "kind": point.kind,
                             "file": point.path, "line": broken.line,
                             "change": broken.difference(), "result": result, "by": noticed,
                             "seconds": seconds})
        say(f"{room}:{number} {result}, {seconds} s, {point.kind} at {point.path}:{broken.line}"
            + (f", by {noticed}" if noticed else ""))
        if result == SURVIVED:
            say(broken.difference())
        if self.options.json:
            with open(self.options.json, "w", encoding="utf-8") as file:
                json.dump(self.records, file, indent=1)
        return result

    def verdict(self, stages):
        at_hand = None
        for targets, command, limit in stages:
            if targets != at_hand:
                # No mutant goes to a cache that other trees share.
                built, output = self.tree.build(
                    targets, env={**os.environ, "CCACHE_READONLY": "1"})
                if not built:
                    error = re.search(r"error: .*", output)
                    return NOT_BUILT, error[0] if error else output.strip().rpartition("\n")[2]
                at_hand = targets
            passed, noticed = self.tree.test(command, limit)
            if not passed:
                return KILLED, noticed
        return SURVIVED, ""

    def close(self):
        for record in self.records:
            if record["result"] == SURVIVED:
                say("survived {room}:{number} {file}:{line}\n{change}".format(**record))
        for room in ROOMS:
            results = collections.Counter(record["result"] for record in self.records
                                          if record["room"] == room)
            if results:
                say(f"{room}: " + " / ".join(f"{results[kind]} {kind}" for kind in RESULTS))


def points_of(room, options):
    return candidates(room, ROOMS[room].folders, options.seed, options.reach)


def say(line):
    print(line, flush=True)


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("rooms", nargs="*", metavar="room", help=f"of {', '.join(ROOMS)}; or all")
    parser.add_argument("--build", default="build/debug", help="a configured build tree")
    parser.add_argument("--seed", default="1")
    parser.add_argument("--count", type=int, default=20, help="mutants of each room")
    parser.add_argument("--only", nargs="+", metavar="ROOM:NUMBER", help="repeat these")
    parser.add_argument("--reach", type=int, default=18,
                        help="leaves out a header that more sources include")
    parser.add_argument("--quick", action="store_true",
                        help="without the long tests: sweeps of other rooms, processes, examples")
    parser.add_argument("--list", action="store_true", help="show the mutants and build none")
    parser.add_argument("--json", metavar="FILE", help="the results, for a comparison of runs")
    options = parser.parse_args()
    wanted = [only.split(":") for only in options.only or ()]
    options.wanted = {room: {int(number) for name, number in wanted if name == room}
                      for room in (dict(wanted) or options.rooms or ROOMS)}
    if unknown := set(options.wanted) - set(ROOMS):
        parser.error(f"no such room: {', '.join(sorted(unknown))}")
    return options


def shown(options):
    for room, wanted in options.wanted.items():
        for number, point in points_of(room, options):
            if number in wanted or not wanted and number <= options.count:
                broken = Broken(point)
                say(f"{room}:{number} {point.kind} at {point.path}:{broken.line}\n"
                    + broken.difference())


def stop(*_):
    for ending in (signal.SIGINT, signal.SIGTERM):
        signal.signal(ending, signal.SIG_IGN)  # the file comes back without a second interruption
    sys.exit("stopped")


def main():
    options = arguments()
    if options.list:
        return shown(options)
    changed = subprocess.run(["git", "status", "--porcelain", "src"], cwd=ROOT, check=True,
                             capture_output=True, text=True).stdout
    if changed:
        sys.exit(f"src has changes of its own, which a mutant could be taken for:\n{changed}")
    for ending in (signal.SIGINT, signal.SIGTERM):
        signal.signal(ending, stop)
    work = Run(options)
    try:
        for room, wanted in options.wanted.items():
            work.room(room, wanted)
    finally:
        work.close()


main()
