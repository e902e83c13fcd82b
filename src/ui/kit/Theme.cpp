#include "ui/kit/Theme.h"

#include "ui/kit/DesktopScheme.h"
#include "ui/kit/FocusRing.h"
#include "ui/kit/KitAccessibility.h"
#include "ui/kit/Type.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QRegularExpression>

namespace {

QString sheetColour(const QColor& colour)
{
    return colour.alpha() == 255 ? colour.name() : colour.name(QColor::HexArgb);
}

QString sheetTemplate()
{
    QFile file(QStringLiteral(":/kit/vendaro.qss"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the program was built without its style sheet");
    return QString::fromUtf8(file.readAll());
}

QString valueOfName(const QString& name, Shade shade)
{
    if (name == QLatin1String("shade"))
        return shade == Shade::dark ? QStringLiteral("dark") : QStringLiteral("light");
    for (const ColourRow& row : colourTable()) {
        if (name == QLatin1String(row.name))
            return sheetColour(colourOf(row.use, shade));
    }
    qFatal("the style sheet names the unknown colour \"%s\"", qPrintable(name));
}

} // namespace

Theme::Theme() = default;
Theme::~Theme() = default;

void Theme::prepare()
{
    QGuiApplication::setDesktopSettingsAware(false);
}

Theme& Theme::current()
{
    static Theme theme;
    return theme;
}

void Theme::apply(QApplication& application, Mode mode)
{
    current().follow(application, mode);
}

Theme::Mode Theme::modeNamed(const QString& name)
{
    if (name == QLatin1String("light"))
        return Mode::light;
    return name == QLatin1String("dark") ? Mode::dark : Mode::asDesktop;
}

QString Theme::nameOf(Mode mode)
{
    switch (mode) {
    case Mode::light: return QStringLiteral("light");
    case Mode::dark: return QStringLiteral("dark");
    case Mode::asDesktop: break;
    }
    return QStringLiteral("desktop");
}

void Theme::follow(QApplication& application, Mode mode)
{
    m_mode = mode;
    if (mode == Mode::asDesktop && !m_desktop) {
        m_desktop = std::make_unique<DesktopScheme>(QDBusConnection::sessionBus());
        connect(m_desktop.get(), &DesktopScheme::changed, this, [this, &application] {
            if (m_mode == Mode::asDesktop)
                dress(application);
        });
        // The connection to the bus must be gone before the application is.
        connect(&application, &QObject::destroyed, this, [this] { m_desktop.reset(); });
    }
    dress(application);
}

Shade Theme::wantedShade()
{
    if (m_mode == Mode::asDesktop)
        return m_desktop->shade();
    return m_mode == Mode::dark ? Shade::dark : Shade::light;
}

void Theme::dress(QApplication& application)
{
    const Shade shade = wantedShade();
    if (m_dressed && shade == m_shade)
        return;
    m_shade = shade;
    if (!m_dressed) {
        type::load();
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setFont(type::body());
        QCoreApplication::setAttribute(Qt::AA_DontShowIconsInMenus);
        installKitAccessibility();
        FocusRing::install(application);
        connect(&application, &QObject::destroyed, this, [this] { m_dressed = false; });
        m_dressed = true;
    }
    QApplication::setPalette(palette(shade));
    application.setStyleSheet(styleSheet(shade));
    Q_EMIT changed();
}

QString Theme::styleSheet(Shade shade)
{
    static const QRegularExpression name(QStringLiteral("@([A-Za-z]+)"));
    const QString pattern = sheetTemplate();
    QString sheet;
    qsizetype done = 0;
    for (QRegularExpressionMatchIterator names = name.globalMatch(pattern); names.hasNext();) {
        const QRegularExpressionMatch match = names.next();
        sheet += pattern.mid(done, match.capturedStart() - done) + valueOfName(match.captured(1), shade);
        done = match.capturedEnd();
    }
    return sheet + pattern.mid(done);
}

QPalette Theme::palette(Shade shade)
{
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, Colour use) { palette.setColor(role, colourOf(use, shade)); };
    set(QPalette::Window, Colour::window);
    set(QPalette::WindowText, Colour::text);
    set(QPalette::Base, Colour::surface);
    set(QPalette::AlternateBase, Colour::window);
    set(QPalette::Text, Colour::text);
    set(QPalette::Button, Colour::field);
    set(QPalette::ButtonText, Colour::text);
    set(QPalette::BrightText, Colour::onAccent);
    set(QPalette::Highlight, Colour::accent);
    set(QPalette::HighlightedText, Colour::onAccent);
    set(QPalette::PlaceholderText, Colour::placeholder);
    set(QPalette::Light, Colour::surface);
    set(QPalette::Midlight, Colour::hairline);
    set(QPalette::Mid, Colour::hairline);
    set(QPalette::Dark, Colour::controlBorder);
    set(QPalette::Shadow, Colour::controlBorderHover);
    set(QPalette::Link, Colour::accentText);
    set(QPalette::LinkVisited, Colour::accentText);
    set(QPalette::ToolTipBase, Colour::tooltip);
    set(QPalette::ToolTipText, Colour::onAccent);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colourOf(Colour::placeholder, shade));
    return palette;
}
