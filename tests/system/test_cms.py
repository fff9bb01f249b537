"""The link to the content-management client: the real program against real sockets."""

from __future__ import annotations

import pytest

from harness import cms
from harness.cms import OK, Peer, framed
from harness.link import FAILED, HEAD, INVALID_RESPONSE, REPORTED, SEND_ERROR, SUCCESS, TIMEOUT

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


def test_missing_project_is_reported_with_an_empty_name(link):
    with Peer() as peer:
        link.port(peer.port)
        run = link.sandbox.run("-EXCHANGEPATH", link.sandbox.windows("exchange"), "-S")
    assert peer.frames == [
        framed(HEAD + "MESSAGE|Project name is not specified."),
        FAILED,
        b"\x00\x2BTOOL_ACTION_MESSAGE|ZELTOR_MANUAL|CLOSE|\x00",
    ]
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


def test_non_latin_project_name_travels_as_utf8(link):
    with Peer() as peer:
        link.port(peer.port)
        link.success("Ä€日本\U0001F600")
    assert peer.frames[1] == framed(HEAD.encode() + b"SAVE_AND_CLOSE|\xC3\x84\xE2\x82\xAC\xE6\x97\xA5"
                                    b"\xE6\x9C\xAC\xF0\x9F\x98\x80.kvp")


def test_bar_in_the_project_name_is_not_escaped(link):
    with Peer() as peer:
        link.port(peer.port)
        link.success("a|b")
    assert peer.frames[1] == framed(HEAD + "SAVE_AND_CLOSE|a|b.kvp")


def long_name(size: int) -> str:
    """A project name of so many bytes in UTF-8, short enough for a command line."""
    return "日" * (size // 3) + "x" * (size % 3)


def run_named(link, name: str):
    return link.sandbox.run("-IN", name, "-EXCHANGEPATH", link.sandbox.windows("exchange"), "-S")


def test_frame_of_65530_bytes_is_sent(link):
    name = long_name(65527 - len(HEAD + "SAVE_AND_CLOSE|.kvp"))
    with Peer() as peer:
        link.port(peer.port)
        run = run_named(link, name)
    assert len(peer.frames[1]) == 65530
    assert peer.frames[1] == b"\xFF\xFA" + (HEAD + "SAVE_AND_CLOSE|" + name + ".kvp\0").encode()
    assert run.stdout == b""


def test_frame_of_65531_bytes_is_not_sent(link):
    name = long_name(65528 - len(HEAD + "SAVE_AND_CLOSE|.kvp"))
    with Peer() as peer:
        link.port(peer.port)
        run = run_named(link, name)
    assert peer.frames == [SUCCESS, b""]
    assert run.stdout == SEND_ERROR + b"Message is too long."


def test_without_s_nobody_is_told(link):
    with Peer() as peer:
        link.port(peer.port)
        link.sandbox.run("-IN", link.sandbox.windows("exchange", "P.zip"))
    assert peer.exchanges == []


# ---- answers ----

ANSWERS = {
    "ok": ("TOOL_RESPONSE_MESSAGE|OK", b""),
    "ok in lower case": ("tool_response_message|ok", b""),
    "ok and more": ("TOOL_RESPONSE_MESSAGE|OK|x|y", b""),
    "ok between bars": ("||TOOL_RESPONSE_MESSAGE||OK||", b""),
    "error": ("TOOL_RESPONSE_MESSAGE|ERROR|Disk full", REPORTED + b"Disk full"),
    "error in lower case": ("tool_response_message|error|Disk full", REPORTED + b"Disk full"),
    "error of four fields": ("TOOL_RESPONSE_MESSAGE|ERROR|Disk full|more", REPORTED + b"Disk full"),
    "error behind bars": ("TOOL_RESPONSE_MESSAGE|ERROR||Disk full", REPORTED + b"Disk full"),
    "error alone": ("TOOL_RESPONSE_MESSAGE|ERROR", REPORTED),
    "other word": ("TOOL_RESPONSE_MESSAGE|BUSY|Disk full", REPORTED),
    "tag alone": ("TOOL_RESPONSE_MESSAGE", INVALID_RESPONSE),
    "other tag": ("TOOL_ACTION_MESSAGE|OK", INVALID_RESPONSE),
    "bars alone": ("||", INVALID_RESPONSE),
    "blank": (" ", INVALID_RESPONSE),
    "percent": ("TOOL_RESPONSE_MESSAGE|ERROR|100%s %n %d%%", REPORTED + b"100%s %n %d%%"),
    "line feed": ("TOOL_RESPONSE_MESSAGE|ERROR|a\nb", REPORTED + b"a\r\nb"),
    "Latin": ("TOOL_RESPONSE_MESSAGE|ERROR|Gr\u00FC\u00DFe", REPORTED + b"Gr\xFC\xDFe"),
    "non-Latin": ("TOOL_RESPONSE_MESSAGE|ERROR|<日本> end", REPORTED + b"<??> end"),
}


@pytest.mark.parametrize("name", ANSWERS)
def test_answer_is_written_to_standard_output(link, name):
    answer, expected = ANSWERS[name]
    with Peer(cms.send(framed(answer)), cms.send(OK)) as peer:
        link.port(peer.port)
        run = link.success()
    assert run.stdout == expected
    assert len(peer.exchanges) == 2
    assert "job_DONE" in link.traces()


def test_texts_follow_each_other_without_line_ends(link):
    with Peer(cms.send(framed("TOOL_RESPONSE_MESSAGE|ERROR|one")),
              cms.send(framed("HELLO")),
              cms.send(framed("TOOL_RESPONSE_MESSAGE|ERROR|three"))) as peer:
        link.port(peer.port)
        run = link.failure()
    assert run.stdout == REPORTED + b"one" + INVALID_RESPONSE + REPORTED + b"three"


# ---- cms.ini ----

SKIPPED = {
    "no section": "[Other]\nPort={port}\n",
    "no port": "[CMS]\nTimeout=5\n",
    "empty port": "[CMS]\nPort=\n",
    "empty timeout": "[CMS]\nPort={port}\nTimeout=\n",
    "blank timeout": "[CMS]\nPort={port}\nTimeout=  \n",
    "empty file": "",
}


@pytest.mark.parametrize("name", SKIPPED)
def test_client_is_left_out_silently(link, name):
    with Peer() as peer:
        link.settings(SKIPPED[name].format(port=peer.port))
        run = link.success()
    assert peer.exchanges == []
    assert run.stdout == b""


def test_client_is_left_out_silently_without_cms_ini(link):
    assert link.success().stdout == b""
    assert link.failure().stdout == b""


@pytest.mark.parametrize("value", ["abc", "0", "x80", "-", "+", "0x50"])
def test_port_without_a_number_is_an_error(link, value):
    link.settings(f"[CMS]\nPort={value}\nTimeout=\n")
    run = link.success()
    assert run.stdout == b"Can't read port number to connect to CMS client" * 2


@pytest.mark.parametrize("form", ["{port}ab", "{port} 1", "+{port}", "  {port}", '"{port}"'])
def test_port_is_the_number_at_the_beginning(link, form):
    with Peer() as peer:
        link.settings(f"[CMS]\nPort={form.format(port=peer.port)}\n")
        link.success()
    assert len(peer.exchanges) == 2


def test_port_is_cut_after_eight_characters(link):
    with Peer() as peer:
        link.settings(f"[CMS]\nPort={peer.port:08}99\n")
        link.success()
    assert len(peer.exchanges) == 2


def test_settings_are_read_anew_for_each_message(link):
    def silence(connection):
        link.settings("[CMS]\n")
        connection.sendall(OK)

    with Peer(silence) as peer:
        link.port(peer.port)
        link.failure()
    assert len(peer.exchanges) == 1


def test_wait_without_a_timeout_key_is_longer_than_a_moment(link):
    with Peer(cms.late(4, OK), cms.send(OK)) as peer:
        link.settings(f"[CMS]\nPort={peer.port}\n")
        run = link.success()
    assert run.stdout == b""


def test_timeout_of_zero_looks_once(link):
    with Peer(cms.late(2, OK)) as peer:
        link.port(peer.port, timeout=0)
        run = link.success()
    assert run.stdout == TIMEOUT * 2
