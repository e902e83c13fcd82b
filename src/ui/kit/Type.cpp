#include "ui/kit/Type.h"

#include <QFontDatabase>

namespace {

QFont fontOf(int pixels, QFont::Weight weight, qreal spacingPercent = 100)
{
    QFont font(type::family());
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (spacingPercent != 100)
        font.setLetterSpacing(QFont::PercentageSpacing, spacingPercent);
    return font;
}

} // namespace

QString type::family()
{
    return QStringLiteral("Vendaro Sans");
}

void type::load()
{
    for (const char* weight : {"Regular", "Medium", "SemiBold", "Bold"}) {
        const QString file = QStringLiteral(":/kit/fonts/VendaroSans-%1.otf").arg(QLatin1String(weight));
        if (QFontDatabase::addApplicationFont(file) < 0)
            qWarning("the font %s cannot be used", qPrintable(file));
    }
}

QFont type::body()
{
    return fontOf(13, QFont::Normal);
}

QFont type::strong()
{
    return fontOf(13, QFont::DemiBold);
}

QFont type::button()
{
    return fontOf(13, QFont::Medium);
}

QFont type::small()
{
    return fontOf(12, QFont::Normal);
}

QFont type::tableHeading()
{
    return fontOf(12, QFont::DemiBold);
}

QFont type::group()
{
    return fontOf(14, QFont::DemiBold);
}

QFont type::large()
{
    return fontOf(14, QFont::Normal);
}

QFont type::figures()
{
    return fontOf(16, QFont::Normal);
}

QFont type::heading()
{
    return fontOf(20, QFont::DemiBold, 98.5);
}

QFont type::welcome()
{
    return fontOf(26, QFont::DemiBold, 97);
}

QFont type::balance()
{
    return fontOf(22, QFont::DemiBold, 97);
}

QFont type::tender()
{
    return fontOf(26, QFont::DemiBold, 97);
}

QFont type::change()
{
    return fontOf(30, QFont::DemiBold, 97);
}

QFont type::total()
{
    return fontOf(44, QFont::DemiBold, 97);
}
