"""Runs the stages of ./run-tests and adds up what their runners counted."""
