#!/usr/bin/python3
"""All scenarios; run by tests/e2e/run, one to a desktop."""

import sys

import harness
import scenarios_modes  # noqa: F401
import scenarios_move  # noqa: F401
import scenarios_tray  # noqa: F401
import scenarios_window  # noqa: F401

if __name__ == "__main__":
    sys.exit(harness.main())
