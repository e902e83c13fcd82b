#!/usr/bin/env python3
"""The shop's commands on a disk whose power is cut: an ext4 file system in an image, mounted through a loop device.

  power_driver.py --shop PROGRAM --library LIBRARY [--seconds N] [--seed S]

The program is killed before a file call, and the image is copied as it is at that moment: what the file system has not written to its
disk by then, contents and names alike, is not in the copy. The copy is mounted, which replays its journal, and judged as after any other
fault; see fault_driver. Needs the rights to mount.
"""
import os
import random
import shutil
import subprocess
import sys
import tempfile
import time

from fault_driver import EXTRA, NOT_RUN, Judge, Worker, command_of, prepare, tell_story
from shop_runner import MEMORY, Shop, arguments

SIZE = '24M'
#: As distributions mount it, and the least that the file system promises. The long commit time leaves to the cut what nobody flushed.
OPTIONS = ['noatime,commit=60,data=ordered', 'noatime,commit=60,data=writeback,noauto_da_alloc']


def call(*command):
    subprocess.run(command, check=True, capture_output=True)


def mounts_work(work):
    """Why nothing can be mounted here; empty when it can."""
    image, place = os.path.join(work, 'try'), os.path.join(work, 'try-place')
    os.makedirs(place)
    try:
        make_image(image, place, None)
    except (OSError, subprocess.CalledProcessError):
        return 'this machine lets us mount no image'
    return ''


def make_image(image, place, home):
    """An image with a copy of the home in it; place is where it is mounted meanwhile."""
    call('truncate', '-s', SIZE, image)
    call('mkfs.ext4', '-q', '-F', image)
    call('mount', '-o', 'loop', image, place)
    try:
        if home:
            shutil.copytree(home, place, symlinks=True, dirs_exist_ok=True)
    finally:
        call('umount', place)


class Disk:
    """The image of one case, mounted at place/home."""

    def __init__(self, work, place, options):
        # Under names of its own: a loop device that is not given back yet would show what it remembers of the case before.
        self.folder = tempfile.mkdtemp(prefix='disk-', dir=work)
        self.image, self.cut_image = os.path.join(self.folder, 'disk'), os.path.join(self.folder, 'cut')
        self.home, self.options = os.path.join(place, 'home'), options
        os.makedirs(self.home, exist_ok=True)

    def start(self, image):
        shutil.copyfile(image, self.image)
        call('mount', '-o', 'loop,' + self.options, self.image, self.home)

    def cut(self):
        """From here on the home is what was on the disk at this moment."""
        shutil.copyfile(self.image, self.cut_image)
        call('umount', self.home)
        call('mount', '-o', 'loop,' + self.options, self.cut_image, self.home)

    def close(self):
        subprocess.run(['umount', self.home], check=False, capture_output=True)
        shutil.rmtree(self.folder)


def run_case(worker, work, images, name, options, at):
    """What is wrong after the cut; none when the program never came to that call."""
    disk = Disk(work, worker.place, options)
    try:
        disk.start(images[worker.stories[name].home])
        run = worker.shop.run(command_of(name), worker.place, (at, 'kill-before', 'once'))
        if not run.given:
            return None
        disk.cut()
        judge = Judge(worker.stories[name], run)
        worker.judge_home(judge, name)
        return judge.problems
    finally:
        disk.close()


def run_cases(options, work):
    shop = Shop(options.shop, options.library)
    homes = prepare(shop, work)
    names = [name for name in shop.run('list', work).texts('command') if name not in NOT_RUN] + sorted(EXTRA)
    stories = {name: tell_story(shop, name, homes, work) for name in names}
    shop.close()
    images = {}
    for name, home in homes.items():
        images[home] = os.path.join(work, 'image-' + name)
        make_image(images[home], os.path.join(work, 'try-place'), home)
    cases = [(name, way, at) for name, story in stories.items() for way in OPTIONS for at in range(1, story.changing + 1)]
    total = len(cases)
    if options.seconds:
        random.Random(options.seed).shuffle(cases)
    worker = Worker(options, work, stories)
    ran = failed = 0
    begin = time.monotonic()
    for name, way, at in cases:
        if options.seconds and time.monotonic() > begin + options.seconds:
            break
        problems = run_case(worker, work, images, name, way, at)
        ran += 1
        if problems:
            failed += 1
            print(f'FAILED: {name} {way} {at}\n   ' + '\n   '.join(problems[:4]), flush=True)
    print(f'{ran} of {total} power cuts of {len(names)} commands in {time.monotonic() - begin:.0f} s, seed {options.seed}: {failed} failed')
    return 1 if failed or not ran else 0


def main():
    options = arguments().parse_args()
    with tempfile.TemporaryDirectory(prefix='vendaro-power-', dir=MEMORY) as work:
        if reason := mounts_work(work):
            print(f'left out: {reason}')
            return 0
        return run_cases(options, work)


if __name__ == '__main__':
    sys.exit(main())
