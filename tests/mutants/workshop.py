"""A copy of the project in which faults are made, built and tested."""

import contextlib
import hashlib
import json
import os
import resource
import shutil
import signal
import subprocess
import tempfile
from pathlib import Path

# The test programs that can see a fault in a room: its own first, then those above it.
SEEN_BY = {
    "text": "text search user journal tools server wire doctor",
    "search": "search journal tools server wire doctor",
    "system": "system walk user journal tools server wire doctor",
    "walk": "walk journal tools wire doctor",
    "sandbox": "sandbox wire doctor",
    "user": "user journal tools list_recent_clock server wire doctor",
    "journal": "journal tools list_recent_clock server wire doctor",
    "tools": "tools list_recent_clock server wire doctor",
    "server": "server wire",
    "doctor": "doctor",
}
# The programs that a test program starts
STARTED_BY = {
    "wire": ["server/halvane_mcp", "tests/wire/halvane_mcp_preloadable"],
    "doctor": ["doctor/halvane_doctor", "tests/doctor/halvane_doctor_preloadable"],
}
QUICK_SECONDS = 1  # a test that takes longer runs only when no quick one has failed
SLOW_SECONDS = 60  # a test that takes longer doesn't run
MOST_MEMORY = 8 << 30  # bytes, for a process that a fault makes take ever more


class Workshop:
    """The copy, its build, and what its tests say without a fault. All of it is kept in `folder`."""

    def __init__(self, project, folder):
        self.project = Path(project)
        self.tree = folder / "tree"
        self.build = folder / "build"
        self.known_seconds = folder / "seconds.json"
        self.programs = {}  # by name: the path of the test program, and the variables that it needs
        self.right = {}  # by name: what the test program and those that it starts are without a fault
        self.seconds = {}  # by name: how long each of its tests takes; nothing for one that fails without a fault

    def prepare(self):
        """Copies and builds the project as it is now, and runs its tests once."""
        self._copy()
        subprocess.run(
            ["cmake", "-S", self.tree, "-B", self.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
             "-DCMAKE_CXX_FLAGS=-O1", "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld",
             "-DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST", "-DHALVANE_STATIC=OFF", "-DBUILD_TESTING=ON"],
            check=True, stdout=subprocess.DEVNULL,
        )  # fmt: skip
        subprocess.run(["cmake", "--build", self.build], check=True)
        self._find_programs()
        for name in self.programs:
            self.right[name] = self._fingerprint(name)
        self._time_tests()

    def sources(self):
        """The rooms' files that the build reads."""
        deps = subprocess.run(["ninja", "-C", self.build, "-t", "deps"], check=True, capture_output=True, text=True)
        read = {(self.build / line.strip()).resolve() for line in deps.stdout.splitlines() if line.startswith(" ")}
        inside = (path.relative_to(self.tree.resolve()) for path in read if path.is_relative_to(self.tree.resolve()))
        return sorted(str(path) for path in inside if path.parts[0] in SEEN_BY)

    def verdict_on(self, fault, text):
        """What the tests say when the fault's file reads `text`: "caught by ...", "got through", or "no fault" where
        it can't be compiled or changes no program."""
        file = self.tree / fault.file
        right = file.read_text()
        file.write_text(text)
        try:
            return self._verdict(SEEN_BY[fault.file.split("/")[0]].split())
        finally:
            file.write_text(right)

    def _verdict(self, names):
        changed = []
        for name in names:
            if self._run(["cmake", "--build", self.build, "--target", f"{name}_tests"], 600, 600) != 0:
                return "no fault"
            if self._fingerprint(name) == self.right[name]:
                continue
            changed.append(name)
            if not self._passes(name, 0, QUICK_SECONDS):
                return f"caught by {name}_tests"
        for name in changed:
            if not self._passes(name, QUICK_SECONDS, SLOW_SECONDS):
                return f"caught by {name}_tests"
        return "got through" if changed else "no fault"

    def _copy(self):
        """Brings the copy up to date; a file that is the same keeps its time, and so what was built of it."""
        listed = subprocess.run(
            ["git", "ls-files", "-coz", "--exclude-standard"],
            cwd=self.project, check=True, capture_output=True, text=True,
        )
        names = {name for name in listed.stdout.split("\0") if (self.project / name).is_file()}
        for name in names:
            source, copy = self.project / name, self.tree / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
        for copy in [path for path in self.tree.rglob("*") if path.is_file()]:
            if str(copy.relative_to(self.tree)) not in names:
                copy.unlink()

    def _find_programs(self):
        told = subprocess.run(
            ["ctest", "--test-dir", self.build, "--show-only=json-v1"], check=True, capture_output=True, text=True
        )
        for test in json.loads(told.stdout)["tests"]:
            path = Path(test.get("command", [""])[0])
            if path.name.endswith("_tests"):
                variables = {it["name"]: it["value"] for it in test["properties"]}.get("ENVIRONMENT", [])
                self.programs[path.name.removesuffix("_tests")] = (path, dict(it.split("=", 1) for it in variables))

    def _fingerprint(self, name):
        files = [self.programs[name][0], *(self.build / path for path in STARTED_BY.get(name, []))]
        return [hashlib.sha256(file.read_bytes()).hexdigest() for file in files]

    def _time_tests(self):
        """Runs every test program once, unless that was done with the very same programs before."""
        known = json.loads(self.known_seconds.read_text()) if self.known_seconds.exists() else {}
        names = sorted({name for seen_by in SEEN_BY.values() for name in seen_by.split()})
        for name in names:
            if known.get(name, {}).get("of") != self.right[name]:
                known[name] = {"of": self.right[name], "tests": self._seconds_of_tests(name)}
                self.known_seconds.write_text(json.dumps(known))
            self.seconds[name] = known[name]["tests"]

    def _seconds_of_tests(self, name):
        with tempfile.NamedTemporaryFile(suffix=".json") as report:
            self._run_tests(name, [f"--gtest_output=json:{report.name}"], 1800, 1800)
            suites = json.load(report)["testsuites"]
        seconds = {}
        for test in (test for suite in suites for test in suite["testsuite"]):
            full_name = f"{test['classname']}.{test['name']}"
            if "failures" in test:
                print(f"Left out, because it fails without a fault here: {full_name}")
            else:
                seconds[full_name] = float(test["time"].removesuffix("s"))
        return seconds

    def _passes(self, name, above, below):
        """Whether those tests pass that take more than `above` and no more than `below` seconds."""
        chosen = [test for test, seconds in self.seconds[name].items() if above < seconds + 1e-9 <= below]
        if not chosen:
            return True
        usual = sum(self.seconds[name][test] for test in chosen)
        with tempfile.NamedTemporaryFile("w", suffix=".txt") as flags:
            flags.write("--gtest_filter=" + ":".join(chosen))
            flags.flush()
            arguments = [f"--gtest_flagfile={flags.name}", "--gtest_fail_fast"]
            limits = 30 + 4 * usual, 5 + 2 * usual
            status = self._run_tests(name, arguments, *limits)
            if status is None:  # which may be the machine's fault: other work, or a pause
                status = self._run_tests(name, arguments, *limits)
            return status == 0

    def _run_tests(self, name, arguments, *limits):
        path, variables = self.programs[name]
        # What a test mounts and a fault leaves mounted is gone with the process.
        own_mounts = ["unshare", "--mount"] if os.geteuid() == 0 else []
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
            os.chmod(folder, 0o755)  # some tests look into it as another user
            environment = {**os.environ, **variables, "TMPDIR": folder}
            return self._run([*own_mounts, path, *arguments], *limits, cwd=path.parent, env=environment)

    @staticmethod
    def _run(command, limit, processor_limit, **options):
        """The command's exit status; none when it takes longer than `limit` seconds. No process of its group takes
        more than `processor_limit` seconds of a processor, and none outlives it."""

        def in_the_child():
            os.nice(5)
            resource.setrlimit(resource.RLIMIT_CPU, (int(processor_limit) + 1, resource.RLIM_INFINITY))
            resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, resource.RLIM_INFINITY))

        quiet = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        started = subprocess.Popen(command, start_new_session=True, preexec_fn=in_the_child, **quiet, **options)
        try:
            return started.wait(limit)
        except subprocess.TimeoutExpired:
            return None
        finally:
            with contextlib.suppress(ProcessLookupError):
                os.killpg(started.pid, signal.SIGKILL)
            started.wait()
