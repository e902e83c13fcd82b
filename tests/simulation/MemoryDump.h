// What the program's collections hold, as JSON, made from the records themselves and not by the writer of their files.
#pragma once

#include <QJsonObject>

class Vendaro;

class MemoryDump {
public:
    explicit MemoryDump(Vendaro& app) : m_app(app) { }

    /// The collections that are not as they were when this was asked last, each with "records" in collection order, "shown" (the ids in
    /// the rows of the list), "highest" (the highest id) and "undo" (the ids that undo would bring back).
    QJsonObject changed();

private:
    Vendaro& m_app;
    QJsonObject m_last;
};
