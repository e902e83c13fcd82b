#include "documents/TemplateUpgrade.h"

#include "documents/rtf/RtfTextEdit.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <array>
#include <utility>

namespace {

/// In the order they are replaced in.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> replacements {{
    {"Balance: <currencysymbol><balance> paid: <balancepaid>", "<payments>"},
    {"Balance: <balance> paid: <balancepaid>", "<payments>"},
    {"Payment method: <paymentmethod>", ""},
    {"Deposit: <deposit> paid: <depositpaid>", ""},
    {"Deposit: <currencysymbol><deposit> paid: <depositpaid>", ""},
    {"Balance: <balance>", "Balance due: <totaldue>"},
    {"<total>", "<totaldue>"},
}};

} // namespace

void TemplateUpgrade::run() const
{
    const QString stationery = m_support + "/stationary";
    if (const Result<void> made = folders::make(stationery); !made)
        logLine(made.error().message);
    for (const QString& entry : QDir(stationery).entryList({"*.rtfd"}, QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name))
        upgradeTemplate(stationery + '/' + entry);
    if (!QFileInfo::exists(m_support + "/reports"))
        return;
    copyReport("Weekly Sales.xml");
    copyReport("Monthly Sales.xml");
}

void TemplateUpgrade::upgradeTemplate(const QString& path) const
{
    logLine("upgrading " + path.toStdString());
    const std::string document = path.toStdString() + "/TXT.rtf";
    const FileBytes file = readWholeFile(document);
    if (file.trouble != ReadTrouble::none) {
        logLine(file.reason);
        return;
    }
    std::string text = file.bytes;
    for (const auto& [find, with] : replacements)
        text = replaceInRtf(text, find, with);
    if (text == file.bytes)
        return;
    if (const Result<void> written = writeFileSafely(document, text); !written)
        logLine(written.error().message);
}

void TemplateUpgrade::copyReport(const QString& fileName) const
{
    const std::string source = (m_resources + "/reports/" + fileName).toStdString();
    const std::string target = (m_support + "/reports/" + fileName).toStdString();
    const FileBytes file = readWholeFile(source);
    const bool copied = file.trouble == ReadTrouble::none && writeFileSafely(target, file.bytes).ok();
    logLine((copied ? "copied " : "failed to copy ") + source + " to " + target);
}
