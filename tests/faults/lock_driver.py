#!/usr/bin/env python3
"""Four programs that open the same folder at the same moment, again and again: lock_driver.py --race PROGRAM [--rounds N]"""
import argparse
import os
import subprocess
import sys
import tempfile

from shop_runner import MEMORY


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('--race', required=True)
    parser.add_argument('--rounds', type=int, default=100_000)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix='vendaro-lock-', dir=MEMORY) as folder:
        return subprocess.run([options.race, str(options.rounds), '4', folder], check=False).returncode


if __name__ == '__main__':
    sys.exit(main())
