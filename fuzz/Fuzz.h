// What the fuzz targets share: a way to say that something does not hold, and a folder for those that read files.
#pragma once

#include "desktop/Desktop.h"
#include "foundation/Log.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>

/// Stops at an input for which the claim does not hold.
inline void expect(bool holds, const char* claim)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", claim);
    std::abort();
}

inline std::string_view inputText(const unsigned char* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Whether this input goes the long way too, through files and documents: all of them do, but one in 512 where a hundred million are
/// tried. It hangs on the bytes alone, so that an input that was left behind shows again what it showed.
inline bool goesTheLongWay(const unsigned char* data, std::size_t size)
{
#ifdef VENDARO_FUZZ_QUICK
    constexpr std::size_t oneIn = 512;
    return std::hash<std::string_view>()(inputText(data, size)) % oneIn == 0;
#else
    (void)data;
    (void)size;
    return true;
#endif
}

/// The log says nothing: it would be all that is seen.
inline void quieten()
{
    setLogSink([](std::string_view) {});
}

/// A folder in memory.
inline const QString& fuzzFolder()
{
    static const QTemporaryDir folder(QDir("/dev/shm").exists() ? "/dev/shm/vendaro-fuzz-XXXXXX" : "vendaro-fuzz-XXXXXX");
    static const QString path = folder.path();
    return path;
}

inline void writeInput(const QString& path, std::string_view bytes)
{
    QFile file(path);
    expect(file.open(QIODevice::WriteOnly), "the input can be written");
    file.write(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

class FixedClock : public Clock {
public:
    QDateTime now() const override { return QDateTime(QDate(2024, 3, 1), QTime(10, 15, 30), Qt::UTC); }
};

class FixedUser : public User {
public:
    QString loginName() const override { return "ada"; }
    QString home() const override { return fuzzFolder(); }
};
