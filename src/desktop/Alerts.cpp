#include "desktop/Alerts.h"

#include "desktop/TextTable.h"

QString fillText(const QString& pattern, const QStringList& values)
{
    QString filled;
    qsizetype from = 0;
    for (const QString& value : values) {
        const qsizetype at = pattern.indexOf(QLatin1String("%@"), from);
        if (at < 0)
            break;
        filled += QStringView(pattern).mid(from, at - from);
        filled += value;
        from = at + 2;
    }
    return filled + pattern.mid(from);
}

Alert makeAlert(const AlertText& wording, const QStringList& titleValues, const QStringList& textValues)
{
    Alert alert {fillText(localText(wording.title), titleValues), fillText(localText(wording.text), textValues), {}, wording.destructive};
    for (const char* button : wording.buttons)
        alert.buttons += localText(button);
    return alert;
}
