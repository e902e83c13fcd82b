#include "Business.h"

#include "foundation/SafeFile.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr const char* recordFileNames[] {
    "contacts.xml", "orders.xml", "items.xml", "itemsordered.xml", "bills.xml", "actions.xml", "goals.xml"};

QString homeOf(int scale)
{
    return QStringLiteral(BENCH_HOMES "/home-%1").arg(scale);
}

} // namespace

QString Business::folder(int scale)
{
    return homeOf(scale) + "/Library/Application Support/Vendaro/vendarodatabase.vendb";
}

Business::Business(int scale) : m_scale(scale), m_desktop(homeOf(scale))
{
    QFile::remove(folder(scale) + "/lock.xml");
    m_app = std::make_unique<Vendaro>(VendaroDesktop {
        m_desktop, m_desktop, m_desktop, m_desktop, m_desktop, m_desktop, m_desktop, m_desktop, homeOf(scale) + "/resources", "en_GB"});
    m_app->start();
}

Business::~Business()
{
    m_app.reset();
    QFile::remove(folder(m_scale) + "/lock.xml");
}

RecordFile& Business::file(std::string_view name)
{
    for (RecordFile* file : m_app->folder().files()) {
        if (file->fileName() == name)
            return *file;
    }
    std::fprintf(stderr, "there is no record file of that name\n");
    std::abort();
}

std::vector<std::string> Business::bytes(int scale)
{
    std::vector<std::string> all;
    for (const char* name : recordFileNames) {
        FileBytes file = readWholeFile((folder(scale) + '/' + name).toStdString());
        if (file.trouble == ReadTrouble::none)
            all.emplace_back(file.bytes);
    }
    return all;
}
