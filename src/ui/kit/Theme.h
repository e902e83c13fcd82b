// The look of the whole program: style, fonts, palette and style sheet, all made from the colour table. Applied once at start and again
// whenever the person or the desktop changes between light and dark.
#pragma once

#include "ui/kit/ColourTable.h"

#include <QObject>

#include <memory>

class DesktopScheme;
class QApplication;
class QPalette;

class Theme : public QObject {
    Q_OBJECT
public:
    enum class Mode { light, dark, asDesktop };

    /// Before the application object is made: keeps the desktop's own fonts and colours out.
    static void prepare();
    /// Dresses the application. May be called again with another mode at any time.
    static void apply(QApplication& application, Mode mode);
    /// The theme in use; a light one before the first apply().
    static Theme& current();
    /// "light", "dark"; anything else, the empty text included, means as the desktop.
    static Mode modeNamed(const QString& name);
    static QString nameOf(Mode mode);

    Mode mode() const { return m_mode; }
    Shade shade() const { return m_shade; }
    QColor colour(Colour use) const { return colourOf(use, m_shade); }
    QColor rowTint(const QColor& status) const { return statusTint(status, m_shade); }

    /// The style sheet for one shade, with every "@name" filled in.
    static QString styleSheet(Shade shade);
    static QPalette palette(Shade shade);

Q_SIGNALS:
    /// After everything on the screen has its new colours.
    void changed();

private:
    Theme();
    ~Theme() override;
    void follow(QApplication& application, Mode mode);
    void dress(QApplication& application);
    Shade wantedShade();

    Mode m_mode = Mode::light;
    Shade m_shade = Shade::light;
    std::unique_ptr<DesktopScheme> m_desktop;
    bool m_dressed = false;
};

/// Shorthand for the colour in use now.
inline QColor themeColour(Colour use)
{
    return Theme::current().colour(use);
}
