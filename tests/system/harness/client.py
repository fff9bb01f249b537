"""The content-management client's side: takes messages on a loopback port and answers each."""

from __future__ import annotations

import socket
import threading

OK = "TOOL_RESPONSE_MESSAGE|OK"


def frame(text: str) -> bytes:
    body = text.encode("utf-8") + b"\0"
    return (len(body) + 2).to_bytes(2, "big") + body


class ContentManager:
    """Use it in a with statement. `frames` holds the bytes of each connection, in order."""

    def __init__(self, answer: bytes = frame(OK)):
        self._answer = answer
        self.frames: list[bytes] = []

    def __enter__(self) -> ContentManager:
        self._listener = socket.create_server(("127.0.0.1", 0))
        self._thread = threading.Thread(target=self._serve, daemon=True)
        self._thread.start()
        return self

    def __exit__(self, *_) -> None:
        self._listener.shutdown(socket.SHUT_RDWR)
        self._listener.close()
        self._thread.join(10)

    @property
    def port(self) -> int:
        return self._listener.getsockname()[1]

    @property
    def messages(self) -> list[str]:
        """The texts of the frames, which must be whole and well-formed."""
        texts = []
        for received in self.frames:
            text = received[2:-1].decode("utf-8")
            assert received == frame(text)
            texts.append(text)
        return texts

    def settings(self, timeout: str = "20") -> str:
        """Content of the settings file that names this client."""
        return f"[CMS]\r\nPort={self.port}\r\nTimeout={timeout}\r\n"

    def _serve(self) -> None:
        while True:
            try:
                connection, _ = self._listener.accept()
            except OSError:  # the end of the with statement
                return
            with connection:
                connection.settimeout(20)
                self.frames.append(self._receive(connection))
                connection.sendall(self._answer)

    @staticmethod
    def _receive(connection: socket.socket) -> bytes:
        received = b""
        while len(received) < 2 or len(received) < int.from_bytes(received[:2], "big"):
            piece = connection.recv(65536)
            if not piece:
                break
            received += piece
        return received
