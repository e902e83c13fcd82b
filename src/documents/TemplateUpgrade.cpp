#include "documents/TemplateUpgrade.h"

#include "documents/rtf/RichPackage.h"
#include "documents/rtf/RtfTextEdit.h"
#include "foundation/Folders.h"
#include "foundation/Log.h"
#include "foundation/SafeFile.h"
#include "storage/RecoveryStore.h"

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
    if (const Result<void> replaced = replaceText(path); !replaced)
        logLine(replaced.error().message);
}

/// Edits the file itself: whatever else it holds stays as it is.
Result<void> TemplateUpgrade::replaceText(const QString& package) const
{
    const std::string path = textFileIn(package).toStdString();
    const FileBytes file = readWholeFile(path);
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    std::string text(file.bytes);
    for (const auto& [find, with] : replacements)
        text = replaceInRtf(text, find, with);
    if (text == file.bytes.view())
        return {};
    if (const Result<QString> kept = m_recovery.keepCopy(package, KeptFor::upgraded); !kept)
        return kept.error();
    return writeFileSafely(path, text);
}

void TemplateUpgrade::copyReport(const QString& fileName) const
{
    const QString source = m_resources + "/reports/" + fileName;
    const QString target = m_support + "/reports/" + fileName;
    const Result<void> copied = replaceReport(source, target);
    logLine((copied ? "copied " : "failed to copy ") + source.toStdString() + " to " + target.toStdString());
    if (!copied)
        logLine(copied.error().message);
}

Result<void> TemplateUpgrade::replaceReport(const QString& source, const QString& target) const
{
    const FileBytes file = readWholeFile(source.toStdString());
    if (file.trouble != ReadTrouble::none)
        return Error {file.reason};
    if (QFileInfo::exists(target) && !folders::haveSameBytes(source, target)) {
        if (const Result<QString> kept = m_recovery.keepCopy(target, KeptFor::upgraded); !kept)
            return kept.error();
    }
    return writeFileSafely(target.toStdString(), file.bytes);
}
