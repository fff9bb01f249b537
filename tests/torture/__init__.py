"""Torture: every component call fails once, the process dies anywhere, every file is hostile."""

import sys
from pathlib import Path

# The harness of the system tests starts the program and owns the machine.
sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "system"))
