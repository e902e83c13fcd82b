// What a collection asks before it changes anything, and whom it tells that it wants to be written.
#pragma once

class qvDataSource;

class WriteGate {
public:
    virtual ~WriteGate() = default;

    /// True when editing is allowed; otherwise the "Read-only mode" alert was shown.
    virtual bool readOnlyCheck() = 0;
    virtual bool isReadOnly() const = 0;
    /// Writes the files that belong to the collection; on disk when it returns.
    virtual void writeDatabase(const qvDataSource& sender) = 0;
    /// The same, but written in the background after everything asked for before; what is written is the state of now.
    virtual void writeDatabaseInBackground(const qvDataSource& sender) = 0;
    /// Called by editors after a change; nothing hangs on it.
    virtual void setChangeFlag() = 0;
};
