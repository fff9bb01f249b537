"""cms-client, the stand-in for the content-management client: its exit codes and what it prints."""

from __future__ import annotations

import re
import socket
import subprocess
import time

import pytest

from harness.machine import BUILD
from harness.sandbox import PROGRAM

CLIENT = str(BUILD / "tools" / "cms-client" / "cms-client.exe")


class Client:
    def __init__(self, sandbox):
        self.sandbox = sandbox
        self.windows_program = sandbox.machine.windows_path(PROGRAM)

    def run(self, *options: str, exit_code: int = 0):
        return self.sandbox.run("--exchange", self.sandbox.windows("exchange"), *options,
                                program=CLIENT, exit_code=exit_code)

    def complaint(self, *options: str) -> str:
        """What stands on standard error when it ends with 3."""
        with pytest.raises(AssertionError):  # the harness takes a word there for a failure
            self.run(*options, exit_code=3)
        assert self.sandbox.runs[-1].exit_code == 3
        return self.sandbox.runs[-1].stderr.decode("utf-8").strip()

    def success(self) -> list[str]:
        return ["--run", self.windows_program, "-IN", self.sandbox.windows("exchange", "P.zip"), "-S"]

    def failure(self) -> list[str]:
        return [*self.success(), "-LOG", "no-folder.log"]


@pytest.fixture
def client(sandbox):
    return Client(sandbox)


def lines(run) -> list[str]:
    """What was printed, without the times of day, which are checked for their form."""
    text = run.stdout.decode("utf-8")
    stamped = [re.fullmatch(r"\d\d:\d\d:\d\d\.\d\d\d  (.*)", line) for line in text.splitlines()]
    assert all(stamped), text
    return [match[1] for match in stamped]


def test_successful_run_ends_with_0(client):
    printed = lines(client.run(*client.success(), exit_code=0))
    assert re.fullmatch(r"listening on port \d+", printed[0])
    assert printed[1:] == [
        '"STATUS" "SUCCESS"  -> ok',
        '"SAVE_AND_CLOSE" "P.kvp"  -> ok',
        "the program ended with exit code 0",
    ]


def test_failed_run_ends_with_1(client):
    printed = lines(client.run(*client.failure(), exit_code=1))
    assert printed[1:] == [
        '"MESSAGE" "Can\'t create log-file folder"  -> ok',
        '"STATUS" "FAILED"  -> ok',
        '"CLOSE" "P"  -> ok',
        "the program ended with exit code 0",
    ]


def test_run_without_report_ends_with_2(client):
    printed = lines(client.run(*client.success()[:-1], exit_code=2))
    assert printed[1:] == ["the program ended with exit code 0"]


def test_program_that_does_not_start_ends_with_3(client):
    assert client.complaint("--run", "C:\\no-such-program.exe") == (
        "cms-client: the program does not start: error 2 (see --help)")


def test_wrong_command_line_ends_with_3(client):
    assert client.complaint("--colour") == (
        "cms-client: no such option: --colour (see --help)")


def test_whole_command_line_may_be_one_argument(client):
    line = f'"{client.windows_program}" -IN "{client.sandbox.windows("exchange", "P 1.zip")}" -S'
    printed = lines(client.run("--run", line))
    assert '"SAVE_AND_CLOSE" "P 1.kvp"  -> ok' in printed


def test_port_and_timeout_stand_in_cms_ini(client):
    printed = lines(client.run("--timeout", "7", *client.success()))
    port = printed[0].split()[-1]
    assert client.sandbox.read("exchange", "cms.ini").splitlines() == [
        b"[CMS]", b"Port=" + port.encode(), b"Timeout=7"]


def test_given_port_is_used(client):
    with socket.create_server(("127.0.0.1", 0)) as listener:
        port = listener.getsockname()[1]
    assert lines(client.run("--port", str(port), *client.success()))[0] == f"listening on port {port}"


def test_port_in_use_ends_with_3(client):
    with socket.create_server(("127.0.0.1", 0)) as listener:
        port = listener.getsockname()[1]
        complaint = client.complaint("--port", str(port), *client.success())
    assert complaint == (f"cms-client: cannot listen on port {port}: error 10048"
                         " (see --help)")


ANSWERS = {
    "error Disk full": "CMS client reported error: Disk full",
    "text HELLO|OK": "Invalid response from CMS client",
    "garbage": "Invalid response received from server",
    "raw 00 05 41 42 01": "Invalid response received from server",
    "close": "Invalid response received from server",
    "nothing": "Timeout occured while waiting for response from server",
    "late 5": "Timeout occured while waiting for response from server",
    "pieces 500": "Invalid response received from server",
    "reset": "Error receiving response from CMS client:",
}


@pytest.mark.parametrize("answer", ANSWERS)
def test_program_understands_the_answer_as_it_is_meant(client, answer):
    run = client.run("--timeout", "1", "--answer", answer, *client.success())
    text = run.stdout.decode("utf-8")
    assert text.count(ANSWERS[answer]) == 2
    assert f'"STATUS" "SUCCESS"  -> {answer}\n' in text


def test_answer_that_is_late_but_in_time_is_taken(client):
    run = client.run("--timeout", "20", "--answer", "late 2", *client.success())
    assert len(lines(run)) == 4


def test_script_answers_the_messages_in_turn(client):
    script = client.sandbox.path("answers.txt")
    script.write_bytes("# comment\nerror 日本\nok\n".encode())
    run = client.run("--script", client.sandbox.windows("answers.txt"), *client.failure(),
                     exit_code=1)
    text = run.stdout.decode("utf-8")
    assert "-> error 日本\n" in text
    assert "CMS client reported error: ??" in text
    assert text.count("  -> ok\n") == 2


def test_missing_script_ends_with_3(client):
    assert client.complaint("--script", "C:\\no-such-file.txt", *client.success()) == (
        "cms-client: the script cannot be read (see --help)")


def test_non_latin_message_is_printed_in_utf8(client):
    run = client.run("--run", client.windows_program, "-IN",
                     client.sandbox.windows("exchange", "日本.zip"), "-S")
    assert '"SAVE_AND_CLOSE" "日本.kvp"  -> ok' in lines(run)


def port_in(settings, patience: float = 30) -> int:
    """The port in a cms.ini that is yet to be written."""
    end = time.monotonic() + patience
    while time.monotonic() < end:
        match = re.search(r"Port=(\d+)", settings.read_text() if settings.exists() else "")
        if match:
            return int(match[1])
        time.sleep(0.05)
    raise AssertionError("no port in cms.ini")


def test_without_a_program_it_ends_after_so_many_messages(client):
    sandbox = client.sandbox
    command = sandbox.machine.command(CLIENT, ["--exchange", sandbox.windows("exchange"),
                                               "--messages", "1"])
    with sandbox.path("stdout.txt").open("wb") as output:
        process = subprocess.Popen(command, stdout=output, stderr=output, cwd=sandbox.path("work"),
                                   env=sandbox.machine.environment({}), stdin=subprocess.DEVNULL)
        port = port_in(sandbox.path("exchange", "cms.ini"))
        with socket.create_connection(("127.0.0.1", port)) as connection:
            connection.sendall(b"\x00\x05AB\x00")
            answer = connection.recv(100)
        assert process.wait(timeout=30) == 2
    assert answer == b"\x00\x1BTOOL_RESPONSE_MESSAGE|OK\x00"
    assert b'unknown message: "AB"  -> ok' in sandbox.read("stdout.txt")
