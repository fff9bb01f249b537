"""Harness that starts the real program as a process, each test in folders of its own."""
