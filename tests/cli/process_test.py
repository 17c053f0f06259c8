#!/usr/bin/env python3
"""Runs the terminal program as a process of its own: exit codes, streams, signals and a real terminal.

Usage: process_test.py PROGRAM. Every process has a time limit; what is still running at the end is stopped.
"""

import fcntl
import json
import os
import pty
import resource
import select
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

PROGRAM = sys.argv.pop(1)
LIMIT = 20  # seconds; far more than anything here takes


def run(*arguments, **options):
    return subprocess.run(
        [PROGRAM, *arguments], capture_output=True, text=True, timeout=LIMIT, stdin=subprocess.DEVNULL, **options
    )


class Terminal:
    """The program on a pseudo-terminal of its own."""

    def __init__(self, *arguments, rows=24, columns=80, environment=None):
        self.master, slave = pty.openpty()
        self.slave = slave
        self.resize(rows, columns, tell=False)
        self.before = termios.tcgetattr(slave)
        self.process = subprocess.Popen(
            [PROGRAM, *arguments],
            stdin=slave,
            stdout=slave,
            stderr=slave,
            env={"TERM": "xterm", "PATH": "/usr/bin:/bin", **(environment or {})},
            preexec_fn=self.take_terminal,
        )
        self.output = ""

    def take_terminal(self):
        os.setsid()
        fcntl.ioctl(0, termios.TIOCSCTTY, 0)

    def resize(self, rows, columns, tell=True):
        fcntl.ioctl(self.master, termios.TIOCSWINSZ, struct.pack("HHHH", rows, columns, 0, 0))
        if tell:
            self.process.send_signal(signal.SIGWINCH)

    def send(self, text):
        os.write(self.master, text.encode())

    def read_until(self, text):
        """Reads on until the text has come since the last call; what came up to then."""
        end = time.monotonic() + LIMIT
        while text not in self.output:
            if not select.select([self.master], [], [], max(0, end - time.monotonic()))[0]:
                raise AssertionError(f"no {text!r} in what ends with {self.output[-400:]!r}")
            self.output += os.read(self.master, 65536).decode(errors="replace")
        place = self.output.index(text) + len(text)
        seen, self.output = self.output[:place], self.output[place:]
        return seen

    def read_paintings(self, count):
        """Reads on until the screen has been painted so many times more."""
        return "".join(self.read_until(" s\033[0m\033[K") for _ in range(count))

    def is_as_before(self):
        return termios.tcgetattr(self.slave) == self.before

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        os.close(self.master)
        os.close(self.slave)


class Process(unittest.TestCase):
    def terminal(self, *arguments, **options):
        terminal = Terminal(*arguments, **options)
        self.addCleanup(terminal.close)
        return terminal

    def test_exit_codes(self):
        for code, arguments in (
            (0, ["--simulate"]),
            (0, ["--help"]),
            (0, ["--version"]),
            (1, ["why", "Tz9z", "--simulate"]),
            (1, ["--keysfile", "/nowhere/dump"]),
            (1, ["watch", "--keysfile", "/nowhere/dump"]),
            (2, ["--no-such-option"]),
            (2, ["no-such-command"]),
        ):
            with self.subTest(arguments):
                done = run(*arguments)
                self.assertEqual(done.returncode, code)
                self.assertEqual(done.stderr.count("\n"), 1 if code else 0, done.stderr)
                self.assertEqual(bool(done.stdout), code == 0)

    def test_json_on_standard_output_is_whole_and_alone(self):
        done = run("list", "--json", "--simulate=3")
        self.assertEqual(json.loads(done.stdout)["source"], "simulated")
        self.assertEqual(done.stderr, "")

    def test_a_fifo_without_a_writer_does_not_hold(self):
        with tempfile.TemporaryDirectory() as folder:
            os.mkfifo(os.path.join(folder, "fifo"))
            self.assertEqual(run("--keysfile", os.path.join(folder, "fifo")).returncode, 1)

    def test_a_full_disk_is_told(self):
        for arguments in (["--simulate"], ["keys", "--simulate"], ["watch", "--simulate", "--cycles", "1"]):
            with self.subTest(arguments), open("/dev/full", "w", encoding="utf-8") as full:
                done = subprocess.run(
                    [PROGRAM, *arguments], stdout=full, stderr=subprocess.PIPE, text=True, timeout=LIMIT, check=False
                )
                self.assertEqual(done.returncode, 1)
                self.assertEqual(done.stderr, "calorivo-cli: standard output: No space left on device\n")

    def test_a_reader_that_goes_away_ends_the_program(self):
        with subprocess.Popen(
            [PROGRAM, "watch", "--simulate", "--interval", "0"], stdout=subprocess.PIPE, stderr=subprocess.PIPE
        ) as process:
            process.stdout.readline()
            process.stdout.close()
            self.assertIn(process.wait(timeout=LIMIT), (0, -signal.SIGPIPE))
            self.assertEqual(process.stderr.read(), b"")

    def test_watch_prints_tables_and_a_summary_where_there_is_no_terminal(self):
        done = run("watch", "--simulate=3", "--interval", "0.01", "--cycles", "3")
        self.assertEqual(done.returncode, 0)
        self.assertNotIn("\033", done.stdout)
        for check in (1, 2, 3):
            self.assertIn(f"MacBookPro11,3 (simulated), check {check}\n", done.stdout)
        self.assertRegex(done.stdout, r"\nMacBookPro11,3 \(simulated\), 3 checks in \d+\.\d s\n")

    def test_watch_without_a_pause_shows_each_check(self):
        done = run("watch", "--simulate=3", "--interval", "0", "--cycles", "40")
        self.assertEqual(done.stdout.count(", check "), 40)

    def test_quiet_watch_prints_the_summary_alone(self):
        for interval in ("0", "0.001"):
            done = run("watch", "--simulate=3", "--interval", interval, "--cycles", "50", "--quiet")
            self.assertEqual(done.returncode, 0)
            self.assertRegex(done.stdout, r"^MacBookPro11,3 \(simulated\), 50 checks in ")

    def test_signals_end_a_watch_with_its_summary(self):
        for ending in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            for arguments in (["--interval", "0.01"], ["--interval", "0", "--quiet"]):
                with self.subTest(ending=ending, arguments=arguments):
                    process = subprocess.Popen(
                        [PROGRAM, "watch", "--simulate", *arguments],
                        stdout=subprocess.PIPE,
                        stderr=subprocess.PIPE,
                        text=True,
                    )
                    time.sleep(0.2)
                    process.send_signal(ending)
                    out, errors = process.communicate(timeout=LIMIT)
                    self.assertEqual(process.returncode, 0)
                    self.assertEqual(errors, "")
                    self.assertRegex(out, r" checks in \d+\.\d s\n")

    def test_a_signal_that_is_ignored_does_not_end_a_watch(self):
        done = subprocess.Popen(
            [PROGRAM, "watch", "--simulate", "--interval", "0.01", "--cycles", "60", "--quiet"],
            stdout=subprocess.PIPE,
            text=True,
            preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN),
        )
        time.sleep(0.2)
        done.send_signal(signal.SIGHUP)
        out, _ = done.communicate(timeout=LIMIT)
        self.assertIn(", 60 checks in ", out)

    def test_control_c_puts_the_terminal_back(self):
        terminal = self.terminal("watch", "--simulate", "--interval", "0.05")
        seen = terminal.read_paintings(2)
        self.assertIn("\033[?1049h\033[?25l", seen)
        self.assertFalse(terminal.is_as_before())
        terminal.send("\x03")
        terminal.read_until("\033[?25h\033[?1049l")
        terminal.read_until(" checks in ")
        self.assertEqual(terminal.process.wait(timeout=LIMIT), 0)
        self.assertTrue(terminal.is_as_before())

    def log_folder(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        return folder.name

    def test_log_appends_rows_to_a_file(self):
        folder = self.log_folder()
        path = os.path.join(folder, "my log.csv")
        for _ in range(2):
            done = run("log", path, "--simulate=3", "--interval", "0.01", "--cycles", "3", "--fans")
            self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))
        with open(path, encoding="utf-8") as file:
            lines = file.read().split("\n")
        self.assertEqual(len(lines), 8)
        self.assertRegex(lines[0], r"^Date,Time,.*,Computer Average\(C\),.*,Fan Average \(RPM\)$")
        for line in lines[1:7]:
            self.assertRegex(line, r"^\d{4}-\d\d-\d\d,\d\d:\d\d:\d\d,[\d,/AN]+$")
        self.assertEqual(lines[7], "")

    def test_log_has_a_usual_name(self):
        folder = self.log_folder()
        self.assertEqual(run("log", "--simulate", "--cycles", "1", cwd=folder).returncode, 0)
        self.assertEqual(os.listdir(folder), ["Calorivo Log.csv"])

    def test_log_prints_what_row_prints(self):
        done = run("log", "--print", "--simulate=3", "--cycles", "1", "--fahrenheit")
        row = run("row", "--simulate=3", "--fahrenheit")
        self.assertEqual(done.stdout.split("\n")[0], row.stdout.split("\n")[0])
        self.assertEqual(done.stdout.count("\n"), 2)
        self.assertEqual(done.stderr, "")

    def test_log_tells_that_there_are_no_drives(self):
        done = run("log", "--print", "--drives", "--simulate=3", "--cycles", "1")
        self.assertEqual((done.returncode, done.stdout.count("\n")), (0, 2))
        self.assertEqual(done.stderr, "calorivo-cli: no drives with SMART on this machine\n")

    def test_signals_end_a_log_with_whole_rows(self):
        path = os.path.join(self.log_folder(), "log.csv")
        for ending in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.subTest(ending=ending):
                process = subprocess.Popen(
                    [PROGRAM, "log", path, "--simulate", "--interval", "0.01"], stderr=subprocess.PIPE, text=True
                )
                time.sleep(0.2)
                process.send_signal(ending)
                _, errors = process.communicate(timeout=LIMIT)
                self.assertEqual((process.returncode, errors), (0, ""))
                with open(path, encoding="utf-8") as file:
                    lines = file.read().split("\n")
                self.assertEqual(lines.pop(), "")
                self.assertEqual({line.count(",") for line in lines[1:]}, {lines[1].count(",")})

    def test_a_reader_that_goes_away_ends_a_log(self):
        for interval in ("0.01", "3600"):
            with subprocess.Popen(
                [PROGRAM, "log", "--print", "--simulate", "--interval", interval],
                stdout=subprocess.PIPE,
                stderr=subprocess.PIPE,
            ) as process:
                process.stdout.readline()
                process.stdout.close()
                self.assertEqual(process.wait(timeout=LIMIT), 0)
                self.assertEqual(process.stderr.read(), b"")

    def test_log_tells_what_it_cannot_write_to(self):
        folder = self.log_folder()
        os.mkfifo(os.path.join(folder, "fifo"))
        os.symlink("/nowhere", os.path.join(folder, "link"))
        for name, reason in (
            ("fifo", "Not a regular file"),
            ("link", "Is a symbolic link"),
            ("no/log.csv", "No such file or directory"),
            (".", "Is a directory"),
        ):
            path = os.path.join(folder, name)
            done = run("log", path, "--simulate")
            self.assertEqual((done.returncode, done.stderr), (1, f"calorivo-cli: {path}: {reason}\n"))

    def test_log_goes_on_after_a_full_disk_and_a_removed_file(self):
        path = os.path.join(self.log_folder(), "log.csv")
        limit = resource.getrlimit(resource.RLIMIT_FSIZE)
        process = subprocess.Popen(
            [PROGRAM, "log", path, "--simulate", "--interval", "0.01"], stderr=subprocess.PIPE, text=True
        )
        self.addCleanup(process.kill)

        def lines():
            with open(path, encoding="utf-8") as file:
                return file.read().split("\n")

        def wait_for(condition):
            end = time.monotonic() + LIMIT
            while not condition():
                self.assertLess(time.monotonic(), end)
                time.sleep(0.01)

        wait_for(lambda: os.path.exists(path) and len(lines()) > 3)
        # A limit of the size of files stands for the end of the disk.
        resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (os.path.getsize(path) + 5, limit[1]))
        self.assertEqual(
            process.stderr.readline(), "calorivo-cli: Unable to log because of error File too large\n"
        )
        size = os.path.getsize(path)
        resource.prlimit(process.pid, resource.RLIMIT_FSIZE, limit)
        wait_for(lambda: os.path.getsize(path) > size)
        self.assertEqual({line.count(",") for line in lines()[1:-1]}, {lines()[1].count(",")})
        os.remove(path)
        self.assertEqual(
            process.stderr.readline(), "calorivo-cli: Unable to log because of error No such file or directory\n"
        )
        wait_for(lambda: os.path.exists(path) and len(lines()) > 3)
        self.assertTrue(lines()[0].startswith("Date,Time,"))
        process.send_signal(signal.SIGTERM)
        _, errors = process.communicate(timeout=LIMIT)
        self.assertEqual(process.returncode, 1)
        self.assertRegex(errors, r"^calorivo-cli: .*/log.csv: \d+ lines could not be written\n$")

    def test_q_ends_a_watch(self):
        terminal = self.terminal("watch", "--simulate")
        terminal.read_until("check 1,")
        terminal.send("q")
        terminal.read_until("\033[?1049l")
        self.assertEqual(terminal.process.wait(timeout=LIMIT), 0)

    def test_a_resize_paints_the_screen_anew(self):
        terminal = self.terminal("watch", "--simulate", rows=20, columns=80)
        terminal.read_until("1–16 of ")
        terminal.resize(10, 60)
        seen = terminal.read_until("1–6 of ")
        self.assertIn("\033[2J", seen)
        self.assertIn("\033[10;1H", seen)
        self.assertNotIn("\033[11;1H", seen)

    def test_keys_scroll(self):
        terminal = self.terminal("watch", "--simulate", rows=10)
        terminal.read_until("1–6 of ")
        terminal.send("\033[B")
        terminal.read_until("2–7 of ")
        terminal.send("\033[6~")
        terminal.read_until("8–13 of ")
        terminal.send("g")
        terminal.read_until("1–6 of ")

    def test_only_lines_that_change_are_painted(self):
        terminal = self.terminal("watch", "--simulate", "--interval", "0.1")
        terminal.read_paintings(1)
        self.assertNotIn("\033[1;1H", terminal.read_paintings(2))

    def test_a_stopped_watch_leaves_the_terminal_and_comes_back(self):
        terminal = self.terminal("watch", "--simulate", "--interval", "0.05")
        terminal.read_paintings(2)
        # The program leads the session here, where a stop from the keyboard has no effect; another process's
        # stop has.
        terminal.process.send_signal(signal.SIGSTOP)
        os.waitpid(terminal.process.pid, os.WUNTRACED)
        terminal.process.send_signal(signal.SIGCONT)
        terminal.read_until("\033[?1049h")
        terminal.read_until("check ")
        terminal.send("q")
        self.assertEqual(terminal.process.wait(timeout=LIMIT), 0)
        self.assertTrue(terminal.is_as_before())

    def test_a_hung_up_terminal_ends_a_watch(self):
        terminal = self.terminal("watch", "--simulate", "--interval", "0.05")
        terminal.read_paintings(2)
        terminal.process.send_signal(signal.SIGHUP)
        terminal.read_until(" checks in ")
        self.assertEqual(terminal.process.wait(timeout=LIMIT), 0)

    def test_a_crash_puts_the_terminal_back(self):
        terminal = self.terminal("watch", "--simulate", "--interval", "0.05")
        terminal.read_paintings(2)
        terminal.process.send_signal(signal.SIGFPE)
        terminal.read_until("\033[?1049l")
        self.assertNotEqual(terminal.process.wait(timeout=LIMIT), 0)
        self.assertTrue(terminal.is_as_before())

    def test_colours_only_where_they_are_wanted(self):
        for environment, coloured in (({}, True), ({"NO_COLOR": "1"}, False), ({"TERM": "dumb"}, False)):
            with self.subTest(environment):
                terminal = self.terminal("list", "--simulate", environment=environment)
                seen = terminal.read_until("Average ")
                self.assertEqual("\033[1;36mCPU" in seen, coloured)
        self.assertNotIn("\033", run("list", "--simulate").stdout)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], "-v"])
