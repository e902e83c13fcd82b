"""Runs commands of the fault shop on copies of homes, with or without a fault."""
import argparse
import os
import shutil
import struct
import subprocess

NO_FAULT = (0, 'kill-before', 'once')
# Where homes are made: in memory, when there is such a folder.
MEMORY = '/dev/shm' if os.path.isdir('/dev/shm') else None


def arguments():
    """A parser that knows the options every driver has."""
    parser = argparse.ArgumentParser()
    parser.add_argument('--shop', required=True, help='the fault_shop program')
    parser.add_argument('--library', required=True, help='the library that makes calls fail')
    parser.add_argument('--seconds', type=float, help='how long to go on; everything when not given')
    parser.add_argument('--seed', type=int, default=1)
    return parser


class Shop:
    """One ready process; it does a command in a copy of itself."""

    def __init__(self, program, library):
        environment = dict(os.environ, LD_PRELOAD=library, QT_QPA_PLATFORM='offscreen', LC_ALL='C.UTF-8', TZ='UTC')
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, env=environment,
                                        stderr=subprocess.DEVNULL)

    def run(self, command, place, fault=NO_FAULT, marks=''):
        """Works on place/home; answers a Run."""
        journal, count = os.path.join(place, 'journal'), os.path.join(place, 'count')
        for old in (journal, count):
            if os.path.exists(old):
                os.remove(old)
        at, kind, last = fault
        self.process.stdin.write('\t'.join([command, os.path.join(place, 'home'), journal, marks, count, str(at), kind, last]) + '\n')
        self.process.stdin.flush()
        answer = self.process.stdout.readline().split()
        if len(answer) != 2:
            raise RuntimeError('the shop is gone')
        return Run(answer, journal, count)

    def close(self):
        self.process.stdin.close()
        self.process.wait()


class Run:
    def __init__(self, answer, journal, count):
        self.killed = answer[0] == 'killed'
        self.status = int(answer[1])
        self.events = []
        if os.path.exists(journal):
            with open(journal, encoding='utf-8', errors='replace') as file:
                self.events = [tuple(line.rstrip('\n').split('\t', 1)) for line in file]
        self.calls = self.changing = self.writes = self.given = 0
        if os.path.exists(count):
            with open(count, 'rb') as file:
                self.calls, self.changing, self.writes, self.given = struct.unpack('4Q', file.read(32))

    def texts(self, event):
        return [text for name, text in self.events if name == event]

    def told_unreadable(self):
        return any('could not be read' in text for text in self.texts('told'))

    def showed_trouble(self):
        """Whether the person was shown that something is wrong: not saved, told, or an alert that is not good news."""
        alerts = [text for text in self.texts('alert') if not text.startswith('PDF Saved')]
        return bool(self.texts('unsaved') or self.texts('told') or alerts or self.was_read_only())

    def was_read_only(self):
        return 'read-only' in self.texts('started')


def fresh(place, home):
    """place/home becomes a copy of home."""
    target = os.path.join(place, 'home')
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(home, target, symlinks=True)
