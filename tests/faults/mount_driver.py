#!/usr/bin/env python3
"""The shop's commands on a home whose disk is nearly full, or read-only: real mounts, in a name space of our own.

  mount_driver.py --shop PROGRAM --library LIBRARY [--seconds N] [--seed S]

Each case leaves so many blocks free, from none to enough. What is left is judged as after any other fault; see fault_driver.
"""
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

import home_reader
from fault_driver import EXTRA, NOT_RUN, OPENED_AGAIN, SETTINGS, Judge, command_of, prepare, tell_story
from shop_runner import Shop, arguments

BLOCK = 4096
INSIDE = 'VENDARO_FAULTS_INSIDE'


def mounts_work():
    if subprocess.run(['unshare', '-rm', 'true'], check=False, capture_output=True).returncode:
        return 'this machine lets nobody make a name space of their own'
    return ''


def mount(*arguments):
    subprocess.run(['mount', *arguments], check=True)


class MountedHome:
    """place/home on a small file system of its own."""

    def __init__(self, place, source):
        self.home = os.path.join(place, 'home')
        os.makedirs(self.home, exist_ok=True)
        mount('-t', 'tmpfs', '-o', 'size=8M', 'tmpfs', self.home)
        shutil.copytree(source, self.home, symlinks=True, dirs_exist_ok=True)

    def fill(self, leave):
        """Until only so many blocks are free."""
        with open(os.path.join(self.home, '.vendaro-filler'), 'wb') as filler:
            space = os.statvfs(self.home)
            filler.write(b'x' * max(0, (space.f_bavail - leave) * BLOCK))

    def make_room(self):
        os.remove(os.path.join(self.home, '.vendaro-filler'))

    def freeze(self):
        mount('-o', 'remount,ro', self.home)

    def thaw(self):
        mount('-o', 'remount,rw', self.home)

    def close(self):
        subprocess.run(['umount', self.home], check=True)


def run_case(shop, place, story, kind, blocks):
    """What is wrong after the case; in words."""
    mounted = MountedHome(place, story.home)
    try:
        if kind == 'full':
            mounted.fill(blocks)
        else:
            mounted.freeze()
        run = shop.run(command_of(story.name), place)
        if kind == 'full':
            mounted.make_room()
        else:
            mounted.thaw()
        judge = Judge(story, run)
        if run.killed or run.status:
            judge.say(f'the program ended with {run.status}')
        if not any('.vendaro-commit' in names for _, _, names in os.walk(mounted.home)):
            found = judge.judge(home_reader.files_below(mounted.home), 'right after')
            if not judge.problems:
                judge.judge_silence(found)
        again = shop.run('openAll', place)
        if again.killed or again.status or again.texts('unsaved'):
            judge.say(f'opening again ended with {again.status}: {again.texts("unsaved")}')
        judge.judge(home_reader.files_below(mounted.home), OPENED_AGAIN, SETTINGS)
        return judge.problems, bool(run.texts('unsaved'))
    finally:
        mounted.close()


def run_inside(options):
    mount('--make-rprivate', '/')
    with tempfile.TemporaryDirectory(prefix='vendaro-mounts-') as work:
        mount('-t', 'tmpfs', '-o', 'size=256M', 'tmpfs', work)
        try:
            return run_cases(options, work)
        finally:
            subprocess.run(['umount', '--lazy', work], check=True)


def run_cases(options, work):
    shop = Shop(options.shop, options.library)
    homes = prepare(shop, work)
    names = [name for name in shop.run('list', work).texts('command') if name not in NOT_RUN] + sorted(EXTRA)
    stories = {name: tell_story(shop, name, homes, work) for name in names}
    cases = [(name, 'full', blocks) for name in names for blocks in range(0, 65)] + [(name, 'read-only', 0) for name in names]
    total = len(cases)
    if options.seconds:
        random.Random(options.seed).shuffle(cases)
    place = os.path.join(work, 'case')
    os.makedirs(place)
    ran = failed = unsaved = 0
    begin = time.monotonic()
    for name, kind, blocks in cases:
        if options.seconds and time.monotonic() > begin + options.seconds:
            break
        problems, not_saved = run_case(shop, place, stories[name], kind, blocks)
        ran += 1
        unsaved += not_saved
        if problems:
            failed += 1
            print(f'FAILED: {name} {kind} {blocks}\n   ' + '\n   '.join(problems[:4]), flush=True)
    shop.close()
    print(f'{ran} of {total} cases on full and read-only disks in {time.monotonic() - begin:.0f} s: {failed} failed; in {unsaved} something '
          'could not be saved and was told')
    return 1 if failed or not ran else 0


def main():
    parser = arguments()
    options = parser.parse_args()
    if os.environ.get(INSIDE):
        return run_inside(options)
    if reason := mounts_work():
        print(f'left out: {reason}')
        return 0
    os.environ[INSIDE] = 'yes'
    os.execvp('unshare', ['unshare', '-rm', sys.executable, *sys.argv])


if __name__ == '__main__':
    sys.exit(main())
