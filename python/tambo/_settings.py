# SPDX-License-Identifier: GPL-3.0-or-later
"""The settings of the workbench, as its files have them: the user's over the shipped ones."""
import os
import pathlib

from ._programs import installation


def value(section, key):
    """None when neither file has it. A file that cannot be read counts as empty."""
    for file in (_folder_of_user() / "tambo.ini", _folder_of_share() / "defaults.ini"):
        try:
            found = parse(file.read_text(encoding="utf-8-sig")).get((section, key))
        except (OSError, ValueError):
            continue
        if found is not None:
            return found
    return None


def parse(text):
    """A dictionary of values by section and key; ValueError where the text is none of settings."""
    values, section, last = {}, None, None
    for raw in text.split("\n"):
        line = raw.strip(" \t\r")
        if not line or line[0] in "#;":
            last = None
        elif raw[0] in " \t":
            if last is None:
                raise ValueError("a continued value without a key above it")
            values[last] = f"{values[last]} {line}" if values[last] else line
        elif line[0] == "[":
            if line[-1] != "]" or len(line) < 3:
                raise ValueError("expected [section]")
            section, last = line[1:-1].strip(" \t"), None
        else:
            key, equals, told = line.partition("=")
            if not equals or not key or section is None:
                raise ValueError("expected [section] or key = value")
            last = section, key.strip(" \t")
            values[last] = _unquoted(told.strip(" \t"))
    return values


def _unquoted(text):
    if len(text) < 2 or text[0] != '"' or text[-1] != '"':
        return text
    plain, letters = [], iter(text[1:-1])
    for letter in letters:
        if letter == "\\":
            letter = next(letters, "\\")
            letter = "\n" if letter == "n" else letter
        plain.append(letter)
    return "".join(plain)


def _folder_of_user():
    user = os.environ.get("TAMBO_USER_DIR")
    if user:
        return pathlib.Path(user) / "config"
    config = os.environ.get("XDG_CONFIG_HOME", "")
    return (pathlib.Path(config) if config.startswith("/") else pathlib.Path.home() / ".config") / "tambo"


def _folder_of_share():
    return pathlib.Path(os.environ.get("TAMBO_SHARE_DIR") or installation() / "share" / "tambo")
