"""The content-management client's end of the link, well-behaved or not."""

from __future__ import annotations

import select
import socket
import struct
import threading
from dataclasses import dataclass, field
from typing import Callable

# How long the peer waits for anything that the program ought to do.
PATIENCE = 30


def framed(text: str | bytes) -> bytes:
    body = text.encode("utf-8") if isinstance(text, str) else text
    return struct.pack(">H", len(body) + 3) + body + b"\0"


OK = framed("TOOL_RESPONSE_MESSAGE|OK")


@dataclass
class Exchange:
    """One connection."""

    received: bytes = b""
    after_answer: bytes = b""
    files: list[str] = field(default_factory=list)  # in the exchange folder, at its arrival


Answer = Callable[[socket.socket], None]


def send(data: bytes) -> Answer:
    return lambda connection: connection.sendall(data)


def nothing(connection: socket.socket) -> None:
    pass


def close(connection: socket.socket) -> None:
    connection.shutdown(socket.SHUT_RDWR)


def reset_after(data: bytes) -> Answer:
    def answer(connection: socket.socket) -> None:
        connection.sendall(data)
        connection.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        connection.close()

    return answer


def has_left(connection: socket.socket, seconds: float) -> bool:
    """Waits so long, or until the program ends the connection."""
    readable, _, _ = select.select([connection], [], [], seconds)
    return bool(readable)


def in_pieces(data: bytes, seconds: float) -> Answer:
    def answer(connection: socket.socket) -> None:
        connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
        for index in range(len(data)):
            connection.sendall(data[index:index + 1])
            if has_left(connection, seconds):
                return

    return answer


def late(seconds: float, data: bytes) -> Answer:
    def answer(connection: socket.socket) -> None:
        if not has_left(connection, seconds):
            connection.sendall(data)

    return answer


def flood(connection: socket.socket) -> None:
    while True:
        connection.sendall(b"x" * 65536)


class Peer:
    """Listens on a loopback port and answers message after message, each connection only once the
    one before has ended. Use it in a `with` block; what came stands in `exchanges` when the block is
    left.

    answers   for the messages in turn; the last holds for all further ones
    folder    its file names are noted when a message arrives
    greedy    False leaves the message itself unread
    """

    def __init__(self, *answers: Answer, folder=None, greedy: bool = True):
        self.exchanges: list[Exchange] = []
        self._answers = answers or (send(OK),)
        self._folder = folder
        self._greedy = greedy
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.port: int = self._listener.getsockname()[1]
        self._ending = threading.Event()
        self._thread = threading.Thread(target=self._serve)

    def __enter__(self) -> Peer:
        self._thread.start()
        return self

    def __exit__(self, *_) -> None:
        self._ending.set()
        self._thread.join()
        self._listener.close()

    def settings(self, timeout: str = "20") -> str:
        """Content of the settings file that names this peer."""
        return f"[CMS]\r\nPort={self.port}\r\nTimeout={timeout}\r\n"

    @property
    def messages(self) -> list[str]:
        """The texts of the frames, which must be whole and well-formed."""
        texts = [frame[2:-1].decode("utf-8") for frame in self.frames]
        assert self.frames == [framed(text) for text in texts]
        return texts

    @property
    def frames(self) -> list[bytes]:
        return [exchange.received for exchange in self.exchanges]

    def _serve(self) -> None:
        self._listener.settimeout(0.05)
        while True:
            ending = self._ending.is_set()
            try:
                connection, _ = self._listener.accept()
            except TimeoutError:
                if ending:
                    return
                continue
            with connection:
                self._exchange(connection)

    def _exchange(self, connection: socket.socket) -> None:
        exchange = Exchange()
        answer = self._answers[min(len(self.exchanges), len(self._answers) - 1)]
        self.exchanges.append(exchange)
        connection.settimeout(PATIENCE)
        try:
            if self._greedy:
                exchange.received = self._frame(connection)
            if self._folder is not None:
                exchange.files = sorted(entry.name for entry in self._folder.iterdir())
            answer(connection)
            exchange.after_answer = self._to_end(connection)
        except OSError:
            pass  # the program has left, or the answer broke the connection off

    @staticmethod
    def _frame(connection: socket.socket) -> bytes:
        data = b""
        while len(data) < 2 or len(data) < struct.unpack(">H", data[:2])[0]:
            part = connection.recv(65536)
            if not part:
                break
            data += part
        return data

    @staticmethod
    def _to_end(connection: socket.socket) -> bytes:
        data = b""
        while part := connection.recv(65536):
            data += part
        return data


def refusing_port() -> int:
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]
