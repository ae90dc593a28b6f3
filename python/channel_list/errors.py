"""What can go wrong, as exceptions. A file that is missing or may not be read raises Python's own OSError."""

from __future__ import annotations


class ChannelListError(Exception):
    """The base of everything that this package raises on its own."""


class LibraryError(ChannelListError):
    """The shared library cannot be loaded, or is not the one that this package is for."""


class ToolError(ChannelListError):
    """The tool `chlist` cannot be run, or is not the one that this package is for."""


class CommandError(ChannelListError):
    """What `chlist` refuses; nothing was done then.

    Attributes:
        command: the words that call the command, "fav new"; empty when there is no such command.
        kind: "usage" when the words of the command are at fault, else "failure".
        message: what is wrong, with the name of the file and the line.
    """

    def __init__(self, command: str, kind: str, message: str) -> None:
        super().__init__(message)
        self.command = command
        self.kind = kind
        self.message = message


class InUseError(ChannelListError):
    """Another ChannelList holds the one list that a process has."""


class ClosedError(ChannelListError):
    """The ChannelList was closed."""


class FileError(ChannelListError):
    """A file that is not a channel file of the version wanted, or that could not be written.

    Attributes:
        path: the file, as it was given.
        reason: what is wrong with it.
    """

    def __init__(self, path: str, reason: str) -> None:
        super().__init__(f"{path}: {reason}")
        self.path = path
        self.reason = reason


class NotFoundError(ChannelListError, LookupError):
    """No such service, entry or group."""


class RefusedError(ChannelListError):
    """The list cannot take the change: an array is full, or the identity is not one that the library can edit."""
