"""What the persons share: the time, the database folders, the log."""
import datetime
import json
import os
import re

from folder import Folder
from home import FolderReader

#: What is attached to orders, always.
ATTACHMENT = b's' * 3000


class World:
    def __init__(self, work, log):
        self.work, self.log = work, log
        self.now = datetime.datetime(2024, 1, 1, 9, 0, 0)
        self.folders, self.readers = {}, {}
        self.attachment = ATTACHMENT
        self.day = self.steps = 0
        self.last_line = ''
        #: What is counted for the report.
        self.counts = {}

    def folder(self, path):
        if path not in self.folders:
            self.folders[path] = Folder(path)
            self.readers[path] = FolderReader(path)
        return self.folders[path]

    def reader(self, folder):
        return self.readers[folder.path]

    def forget(self, folder):
        del self.folders[folder.path]
        del self.readers[folder.path]

    def count(self, what):
        self.counts[what] = self.counts.get(what, 0) + 1

    def note(self, name, asked, reply):
        """A line of the log: the same for the same seed, wherever the home lies."""
        self.steps += 1
        self.count(asked['do'])
        told = {key: value for key, value in reply.items() if key != 'memory'}
        line = json.dumps([self.day, self.steps, name, asked, told], ensure_ascii=False, sort_keys=True)
        self.last_line = re.sub(r'\.\d+\.(\d+)\.tmp', r'.\1.tmp', line.replace(self.work, '…'))
        self.log(self.last_line)

    def scan(self):
        """A file to attach."""
        path = os.path.join(self.work, 'scan.pdf')
        if not os.path.exists(path):
            with open(path, 'wb') as file:
                file.write(ATTACHMENT)
        return path
