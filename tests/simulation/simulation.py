#!/usr/bin/env python3
"""A small business through the years: deeds, faults, damage and a second person by chance, each step checked against a model.

  simulation.py --shop PROGRAM --library LIBRARY [--days N] [--seed S] [--seconds N] [--log FILE] [--keep FOLDER]

The same seed gives the same deeds and the same log. When something is not as it must be, it says where and how to see it again; with --keep
the homes are left in that folder as they were then.
"""
import argparse
import os
import random
import shutil
import sys
import tempfile
import time
import traceback

from home import Wrong
from life import Life
from world import World

MEMORY = '/dev/shm' if os.path.isdir('/dev/shm') else None


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--shop', required=True, help='the simulation_shop program')
    parser.add_argument('--library', required=True, help='the library that makes calls fail')
    parser.add_argument('--days', type=int, default=1000)
    parser.add_argument('--seed', type=int, default=1)
    parser.add_argument('--seconds', type=float, help='stop after the day on which this time is over')
    parser.add_argument('--log', help='a file that receives a line for each step')
    parser.add_argument('--keep', help='a folder that receives the homes as they are at the end')
    parser.add_argument('--trace', action='store_true', help='say where in the driver something was found')
    return parser.parse_args()


def live(options, work, log):
    """Answers what was found; nothing when all was well."""
    world = World(work, log)
    life = Life(random.Random(options.seed), world, (os.path.abspath(options.shop), os.path.abspath(options.library)))
    begin = time.monotonic()
    found = ''
    try:
        while world.day < options.days and not (options.seconds and time.monotonic() > begin + options.seconds):
            world.day += 1
            life.day()
        life.end()
    except (Wrong, RuntimeError) as error:
        if options.trace:
            traceback.print_exc()
        found = str(error).replace(work, '…')
    life.close()
    counts = ', '.join(f'{count} {what}' for what, count in sorted(world.counts.items()))
    print(f'seed {options.seed}: {world.day} days, {world.steps} steps in {time.monotonic() - begin:.0f} s ({counts}): '
          + ('something is wrong' if found else 'all as it must be'))
    if found:
        print(f'FAILED: seed {options.seed}, day {world.day}, step {world.steps}: {found}\n   {life.last()}\n'
              f'   tools/simulation {world.day} {options.seed} --keep FOLDER --log FILE')
    if options.keep:
        shutil.copytree(work, options.keep, symlinks=True, dirs_exist_ok=True)
    return found


def main():
    options = arguments()
    log = open(options.log, 'w', encoding='utf-8') if options.log else None
    with tempfile.TemporaryDirectory(prefix='vendaro-life-', dir=MEMORY) as work:
        found = live(options, work, (lambda line: log.write(line + '\n')) if log else (lambda line: None))
    if log:
        log.close()
    return 1 if found else 0


if __name__ == '__main__':
    sys.exit(main())
