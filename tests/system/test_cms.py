"""The link to the content-management client: the real program against real sockets."""

from __future__ import annotations

from harness import cms
from harness.cms import OK, Peer, framed
from harness.link import INVALID_RESPONSE, REPORTED, TIMEOUT

# ---- messages ----


def test_success_is_reported_in_two_frames(link):
    with Peer() as peer:
        link.port(peer.port)
        run = link.success()
    assert peer.frames == [
        b"\x00\x33TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|SUCCESS\x00",
        b"\x00\x39TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|P.kvp\x00",
    ]
    assert run.stdout == b""


def test_failure_is_reported_in_three_frames(link):
    with Peer() as peer:
        link.port(peer.port)
        run = link.failure()
    assert peer.frames == [
        b"\x00\x43TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|Can't create log file.\x00",
        b"\x00\x32TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|STATUS|FAILED\x00",
        b"\x00\x2CTOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|P\x00",
    ]
    assert run.stdout == b""
    assert link.traces() == {"job_ERROR": b""}


def test_each_message_has_a_connection_of_its_own_that_ends_before_the_next(link):
    with Peer() as peer:
        link.port(peer.port)
        run = link.failure()
    assert [exchange.after_answer for exchange in peer.exchanges] == [b"", b"", b""]
    # A connection that is held open would keep the peer from answering the next one.
    assert run.stdout == b""


def test_success_is_reported_once_the_done_file_is_there(link):
    with Peer(folder=link.exchange) as peer:
        link.port(peer.port)
        link.success()
    assert [exchange.files for exchange in peer.exchanges] == [["cms.ini", "job_DONE"]] * 2


def test_failure_is_reported_while_the_error_file_stays(link):
    with Peer(folder=link.exchange) as peer:
        link.port(peer.port)
        link.failure()
    assert [exchange.files for exchange in peer.exchanges] == [["cms.ini", "job_ERROR"]] * 3


# ---- answers ----


def test_texts_follow_each_other_without_line_ends(link):
    with Peer(cms.send(framed("TOOL_RESPONSE_MESSAGE|ERROR|one")),
              cms.send(framed("HELLO")),
              cms.send(framed("TOOL_RESPONSE_MESSAGE|ERROR|three"))) as peer:
        link.port(peer.port)
        run = link.failure()
    assert run.stdout == REPORTED + b"one" + INVALID_RESPONSE + REPORTED + b"three"


# ---- cms.ini ----


def test_client_is_left_out_silently_without_cms_ini(link):
    assert link.success().stdout == b""
    assert link.failure().stdout == b""


def test_settings_are_read_anew_for_each_message(link):
    def silence(connection):
        link.settings("[CMS]\n")
        connection.sendall(OK)

    with Peer(silence) as peer:
        link.port(peer.port)
        link.failure()
    assert len(peer.exchanges) == 1


def test_timeout_of_zero_looks_once(link):
    with Peer(cms.late(2, OK)) as peer:
        link.port(peer.port, timeout=0)
        run = link.success()
    assert run.stdout == TIMEOUT * 2
