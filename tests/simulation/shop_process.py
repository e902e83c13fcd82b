"""The program's process: one JSON object is asked, one is answered."""
import json
import os
import subprocess


class ShopProcess:
    def __init__(self, program, library, counts):
        environment = dict(os.environ, LD_PRELOAD=library, QT_QPA_PLATFORM='offscreen', LC_ALL='C.UTF-8', TZ='UTC', QT_HASH_SEED='0')
        self.counts = counts
        # When the disk fails on the way into the trash, notes about it may be left in the folder the program was started from.
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                        env=environment, cwd=os.path.dirname(counts))
        self.runs = False

    def begin(self, home, user):
        """A program of that user is ready to be asked for \"start\"."""
        self.exchange({'home': home, 'user': user, 'counts': self.counts})
        self.runs = True

    def ask(self, asked):
        """The answer; with \"ended\" when the program is not there any more."""
        reply = self.exchange(asked)
        if 'ended' in reply:
            self.runs = False
        elif asked['do'] == 'quit':
            self.runs = False
            reply['ended'] = self.receive()['ended']
        return reply

    def exchange(self, asked):
        self.process.stdin.write(json.dumps(asked).encode() + b'\n')
        self.process.stdin.flush()
        return self.receive()

    def receive(self):
        line = self.process.stdout.readline()
        if not line:
            raise RuntimeError('the process of the program is gone')
        return json.loads(line)

    def changing_calls(self):
        """How many calls of the last deed changed something, and how many faults were given."""
        with open(self.counts, 'rb') as file:
            numbers = [int.from_bytes(file.read(8), 'little') for _ in range(4)]
        return numbers[1], numbers[3]

    def close(self):
        self.process.stdin.close()
        self.process.wait()
