# SPDX-License-Identifier: GPL-3.0-or-later
# The compiled half, whose types stand with the names that the package gives to it.
from typing import Any

def __getattr__(name: str) -> Any: ...
