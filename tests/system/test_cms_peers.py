"""The link to a content-management client that misbehaves: the run is the same as without it."""

from __future__ import annotations

import socket
import time

import pytest

from harness import cms
from harness.cms import OK, Peer, framed
from harness.link import (CONNECT_ERROR, FAILED, HEAD, INVALID_FRAME, RECEIVE_ERROR, REPORTED,
                          TIMEOUT)

TIMEOUT_SECONDS = 1
# What the program itself takes, on a machine that has other things to do as well.
SLACK = 12


MISBEHAVING = {
    "never answers": ((cms.nothing,), TIMEOUT),
    "answers too late": ((cms.late(TIMEOUT_SECONDS + 1, OK),), TIMEOUT),
    "closes at once": ((cms.close,), INVALID_FRAME),
    "one byte a second": ((cms.in_pieces(OK, 1),), INVALID_FRAME),
    "garbage": ((cms.send(b"\xDE\xAD\xBE\xEF garbage"),), INVALID_FRAME),
    "flood": ((cms.flood,), INVALID_FRAME),
}


def expect_the_run_as_without_client(link, start, peer, expected: bytes, messages: int):
    """Runs with no client at all, then with this one, and compares what is left."""
    (link.exchange / "cms.ini").unlink(missing_ok=True)
    start()
    expected_traces = link.traces()
    link.port(peer.port, TIMEOUT_SECONDS)
    begin = time.monotonic()
    run = start()
    seconds = time.monotonic() - begin
    assert run.stdout == expected * messages
    assert link.traces() == expected_traces
    assert seconds < messages * TIMEOUT_SECONDS + SLACK


@pytest.mark.parametrize("name", MISBEHAVING)
def test_successful_run_is_the_same_with_a_peer_that(link, name):
    answers, expected = MISBEHAVING[name]
    with Peer(*answers) as peer:
        expect_the_run_as_without_client(link, link.success, peer, expected, messages=2)
    assert len(peer.exchanges) == 2


@pytest.mark.parametrize("name", ["never answers", "flood", "closes at once"])
def test_failing_run_sends_all_three_messages_whatever_the_peer_does(link, name):
    answers, expected = MISBEHAVING[name]
    with Peer(*answers) as peer:
        expect_the_run_as_without_client(link, link.failure, peer, expected, messages=3)
    assert peer.frames == [framed(HEAD + "MESSAGE|Can't create log file."), FAILED,
                           framed(HEAD + "CLOSE|P")]


def test_run_is_the_same_when_the_peer_resets_in_mid_answer(link):
    with Peer(cms.reset_after(OK[:5])) as peer:
        link.port(peer.port, TIMEOUT_SECONDS)
        run = link.success()
    # Whether the first bytes or the reset are seen first depends on the platform.
    one = (INVALID_FRAME, RECEIVE_ERROR + b"Error receiving data. Error code: 10054")
    assert run.stdout in [first + second for first in one for second in one]
    assert sorted(link.traces()) == ["job_DONE", "run.log"]
    assert len(peer.exchanges) == 2


def test_run_is_the_same_when_the_port_is_refused(link):
    link.success()
    expected = link.traces()
    port = cms.refusing_port()
    link.port(port)
    run = link.success()
    assert run.stdout == (CONNECT_ERROR + f"Can't connect to port {port}".encode()) * 2
    assert link.traces() == expected


def test_peer_that_accepts_and_reads_nothing_costs_the_timeout(link):
    with Peer(cms.nothing, greedy=False) as peer:
        expect_the_run_as_without_client(link, link.success, peer, TIMEOUT, messages=2)


def test_server_that_never_accepts_costs_the_timeout(link):
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        listener.listen(0)
        link.port(listener.getsockname()[1], TIMEOUT_SECONDS)
        begin = time.monotonic()
        run = link.success()
        seconds = time.monotonic() - begin
    # The first message still finds room in the queue of the server.
    assert run.stdout.startswith(TIMEOUT)
    assert seconds < 2 * TIMEOUT_SECONDS + SLACK
    assert sorted(link.traces()) == ["job_DONE", "run.log"]


def test_longest_answer_is_taken_whole(link):
    answer = framed(b"TOOL_RESPONSE_MESSAGE|ERROR|" + b"x" * (65535 - 3 - 28))
    assert len(answer) == 65535
    with Peer(cms.send(answer), cms.send(OK)) as peer:
        link.port(peer.port)
        run = link.success()
    assert run.stdout == REPORTED + b"x" * (65535 - 3 - 28)
