#!/usr/bin/env python3
"""Two lives of the same seed are the same step for step, and one of another seed is not: replay_driver.py --shop … --library … [--days N]"""
import os
import random
import sys
import tempfile

from simulation import MEMORY, arguments, live


def log_of(options, seed):
    lines = []
    options.seed = seed
    with tempfile.TemporaryDirectory(prefix='vendaro-life-', dir=MEMORY) as work:
        live(options, work, lines.append)
    return lines


def main():
    options = arguments()
    # Nothing but the seed may count.
    random.seed(os.urandom(8))
    first, again = log_of(options, options.seed), log_of(options, options.seed)
    other = log_of(options, options.seed + 1)
    if len(first) < options.days or first == other:
        print(f'the lives say too little: {len(first)} steps')
        return 1
    for step, (one, two) in enumerate(zip(first, again), 1):
        if one != two:
            print(f'step {step} is different the second time:\n{one}\n{two}')
            return 1
    print(f'{len(first)} steps were the same twice')
    return 0 if len(first) == len(again) else 1


if __name__ == '__main__':
    sys.exit(main())
