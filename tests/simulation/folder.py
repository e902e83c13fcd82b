"""A database folder as it must lie on disk: what its files hold, who wrote them last, its lock, its attachments, its own settings."""
from records import FILES


class Folder:
    def __init__(self, path):
        self.path = path
        #: File to the entries it holds; none until it is written.
        self.files = {name: None for name in FILES}
        #: File to the number of the write that made it so.
        self.writes = {name: 0 for name in FILES}
        #: Whose lock it is and why; none when there is no lock.
        self.lock = None
        #: Order to its attachments, name to bytes.
        self.attachments = {}
        self.info = {}
        #: A fault may have left something that goes when the folder is written first after it was read.
        self.may_be_littered = False
        #: A write was broken off: what may count as its outcome, until the program says which does.
        self.candidates = []


class Lock:
    """A lock is told from every other."""

    def __init__(self, user, reason):
        self.user, self.reason = user, reason
