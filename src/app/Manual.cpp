#include "app/Manual.h"

#include "desktop/Desktop.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "foundation/Text.h"

#include <QDir>
#include <QFileInfo>
#include <QXmlStreamReader>

namespace {

constexpr char pageEnding[] = ".html";

QString topicOfFile(const QString& fileName)
{
    return fileName.endsWith(pageEnding) ? fileName.chopped(static_cast<int>(sizeof pageEnding) - 1) : QString();
}

} // namespace

Manual::Manual(Opener& opener, const QString& resources) : m_opener(opener), m_folder(QDir::cleanPath(resources + "/manual")) { }

QUrl Manual::address(const QString& topic) const
{
    const QString page = m_folder + '/' + topic.section('#', 0, 0) + pageEnding;
    if (!QFileInfo(page).isFile())
        return QUrl::fromLocalFile(m_folder + '/' + indexTopic + pageEnding);
    QUrl address = QUrl::fromLocalFile(page);
    if (const QString heading = topic.section('#', 1); !heading.isEmpty())
        address.setFragment(heading);
    return address;
}

QString Manual::topicAt(const QUrl& address) const
{
    const QFileInfo file(address.toLocalFile());
    return address.isLocalFile() && QDir::cleanPath(file.path()) == m_folder ? topicOfFile(file.fileName()) : QString();
}

std::vector<Manual::Chapter> Manual::contents() const
{
    const std::string path = address(indexTopic).toLocalFile().toStdString();
    const FileBytes file = readWholeFile(path);
    std::vector<Chapter> chapters;
    QXmlStreamReader reader(toQString(file.bytes));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == QLatin1String("h2"))
            chapters.push_back({reader.readElementText(QXmlStreamReader::IncludeChildElements), {}});
        else if (reader.name() == QLatin1String("a") && !chapters.empty()) {
            const QString topic = topicOfFile(reader.attributes().value("href").toString());
            chapters.back().pages.push_back({topic, reader.readElementText(QXmlStreamReader::IncludeChildElements)});
        }
    }
    if (reader.hasError())
        logLine("the manual's index " + path + " cannot be read: " + reader.errorString().toStdString());
    return chapters;
}

void Manual::open(const QString& topic)
{
    openElsewhere(address(topic));
}

void Manual::openElsewhere(const QUrl& address)
{
    m_opener.openUrl(address);
}
