#include "ui/kit/Icons.h"

#include "ui/kit/Theme.h"

#include <QDir>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QSvgRenderer>

namespace {

constexpr int drawnSizes[] = {16, 22, 32};

QString iconFile(const QString& name, int size)
{
    return QStringLiteral(":/kit/icons/%1/%2.svg").arg(size).arg(name);
}

/// The drawing made for the size, else the next smaller one that scales up without a rest, else the nearest there is.
QString fileForSize(const QString& name, int size)
{
    QString best;
    for (const int drawn : drawnSizes) {
        const QString file = iconFile(name, drawn);
        if (!QFile::exists(file))
            continue;
        if (drawn == size || (best.isEmpty() || (drawn < size && size % drawn == 0)))
            best = file;
        if (drawn == size)
            break;
    }
    return best;
}

/// The drawings carry their colours as six-digit values; shorter ones are holes and stay.
QByteArray recoloured(QString drawing, const QColor& colour)
{
    static const QRegularExpression value(QStringLiteral("#[0-9A-Fa-f]{6}\\b"));
    return drawing.replace(value, colour.name()).toUtf8();
}

QPixmap drawIcon(const QString& name, const QColor& colour, QSize pixels, qreal ratio)
{
    const int logicalSize = qRound(qMin(pixels.width(), pixels.height()) / ratio);
    QFile file(fileForSize(name, logicalSize));
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    if (!file.open(QIODevice::ReadOnly))
        return pixmap;
    QSvgRenderer renderer(recoloured(QString::fromUtf8(file.readAll()), colour));
    QPainter painter(&pixmap);
    const qreal side = qMin(pixels.width(), pixels.height());
    renderer.render(&painter, QRectF(0, 0, side, side));
    return pixmap;
}

QPixmap cachedIcon(const QString& name, const QColor& colour, QSize pixels, qreal ratio)
{
    const QString key =
        QStringLiteral("kit:%1:%2:%3x%4:%5").arg(name, colour.name(QColor::HexArgb)).arg(pixels.width()).arg(pixels.height()).arg(ratio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawIcon(name, colour, pixels, ratio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

/// Colours the drawing at the moment it is painted.
class ThemedIconEngine : public QIconEngine {
public:
    ThemedIconEngine(const QString& name, IconRole role) : m_name(name), m_role(role) { }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        QPixmap pixmap = cachedIcon(m_name, colourFor(mode), rect.size() * ratio, ratio);
        pixmap.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), pixmap);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override { return scaledPixmap(size, mode, state, 1); }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        return cachedIcon(m_name, colourFor(mode), size, scale);
    }
    /// Whatever is asked for: in a wider place the drawing stands at its left, so that a place can hold a gap before a word.
    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    QIconEngine* clone() const override { return new ThemedIconEngine(m_name, m_role); }
    QString key() const override { return QStringLiteral("vendaro"); }
    QString iconName() override { return m_name; }
    bool isNull() override { return false; }

private:
    QColor colourFor(QIcon::Mode mode) const { return themeColour(Icons::colourOfRole(m_role, mode)); }

    QString m_name;
    IconRole m_role;
};

Colour restingColour(IconRole role)
{
    switch (role) {
    case IconRole::normal: return Colour::icon;
    case IconRole::secondary: return Colour::secondaryText;
    case IconRole::placeholder: return Colour::placeholder;
    case IconRole::onAccent: return Colour::onAccent;
    case IconRole::accent: return Colour::accentText;
    case IconRole::warning: return Colour::warningIcon;
    case IconRole::warningText: return Colour::warningText;
    case IconRole::error: return Colour::errorText;
    }
    return Colour::icon;
}

} // namespace

Colour Icons::colourOfRole(IconRole role, QIcon::Mode mode)
{
    if (mode == QIcon::Disabled)
        return Colour::controlBorderHover;
    if (mode == QIcon::Selected && role == IconRole::normal)
        return Colour::accentText;
    if (mode == QIcon::Selected)
        return Colour::onAccent;
    return restingColour(role);
}

QIcon Icons::get(const QString& name, IconRole role)
{
    if (!exists(name)) {
        qWarning("there is no icon \"%s\"", qPrintable(name));
        return {};
    }
    return QIcon(new ThemedIconEngine(name, role));
}

QPixmap Icons::pixmap(const QString& name, const QColor& colour, int size, qreal devicePixelRatio)
{
    QPixmap pixmap = cachedIcon(name, colour, QSize(size, size) * devicePixelRatio, devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

bool Icons::exists(const QString& name)
{
    return !fileForSize(name, drawnSizes[0]).isEmpty();
}

QStringList Icons::names()
{
    QStringList all;
    for (const int size : drawnSizes) {
        for (const QString& file : QDir(QStringLiteral(":/kit/icons/%1").arg(size)).entryList(QDir::Files))
            all << QFileInfo(file).completeBaseName();
    }
    all.sort();
    all.removeDuplicates();
    return all;
}
