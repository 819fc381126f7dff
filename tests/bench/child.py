"""A program that runs beside the runner and talks to it through pipes, as the server talks to a client."""

import os
import time


class Child:
    """A running program. Its environment is what clients give a server: HOME and PATH."""

    def __init__(self, command, home):
        """Starts `command`, a program's path or a name on PATH and its arguments, with `home` as HOME."""
        command = [str(word) for word in command]
        stdin, self._input = os.pipe()
        self._output, stdout = os.pipe()
        # The module subprocess takes longer to start a program than some programs take to run.
        self._pid = os.posix_spawnp(
            command[0], command, {"HOME": str(home), "PATH": os.environ.get("PATH", os.defpath)},
            file_actions=[(os.POSIX_SPAWN_DUP2, stdin, 0), (os.POSIX_SPAWN_DUP2, stdout, 1)],
        )  # fmt: skip
        os.close(stdin)
        os.close(stdout)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        """Closes both pipes and waits for the end."""
        self._close_input()
        os.close(self._output)
        self._wait()

    def write(self, data):
        """Writes all of `data` to its standard input; waits while the pipe is full."""
        data = memoryview(data)
        while data:
            data = data[os.write(self._input, data) :]

    def skip(self, count):
        """Passes over `count` bytes of its standard output."""
        while count > 0:
            count -= len(self._read(min(count, 65536)))

    def ask(self, line):
        """Sends `line`, with its line feed, and returns the answer: one line."""
        self.write(line)
        answer = self._read(65536)
        while not answer.endswith(b"\n"):
            answer += self._read(65536)
        return answer

    def seconds_to_answer(self, line):
        begin = time.perf_counter()
        self.ask(line)
        return time.perf_counter() - begin

    def finish(self):
        """Closes its standard input and waits for its end. Returns what it still writes."""
        self._close_input()
        rest = b""
        while data := os.read(self._output, 65536):
            rest += data
        self._wait()
        return rest

    def memory(self, name):
        """A line of /proc/PID/status in megabytes (millions of bytes).

        VmHWM is the most memory at any time, VmRSS is all of it now, RssAnon is the part that is in no file.
        """
        with open(f"/proc/{self._pid}/status", encoding="ascii", errors="replace") as status:
            kibibytes = dict(line.split(":", 1) for line in status)[name].split()[0]
        return int(kibibytes) * 1024 / 1e6

    def _read(self, count):
        data = os.read(self._output, count)
        if not data:
            raise RuntimeError("a program ended before it answered")
        return data

    def _close_input(self):
        if self._input is not None:
            os.close(self._input)
        self._input = None

    def _wait(self):
        if self._pid is not None:
            os.waitpid(self._pid, 0)
        self._pid = None
