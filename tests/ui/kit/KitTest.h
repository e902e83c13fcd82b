// What the kit's tests share: showing a window and waiting for it, colours on the screen, contrast.
#pragma once

#include "ui/kit/Theme.h"

#include <QApplication>
#include <QImage>
#include <QPixmap>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <cmath>
#include <functional>
#include <gtest/gtest.h>

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QColor& colour, std::ostream* out)
{
    *out << colour.name(QColor::HexArgb).toStdString();
}
inline void PrintTo(const QRect& rect, std::ostream* out)
{
    *out << rect.x() << ',' << rect.y() << ' ' << rect.width() << 'x' << rect.height();
}

namespace kittest {

/// Shows the window and waits until it has the keyboard.
inline void show(QWidget& window)
{
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

/// What has the keyboard, once a window has it.
inline QWidget* keyboard()
{
    if (QTest::qWaitFor([] { return QApplication::focusWidget() != nullptr; }, 2'000))
        return QApplication::focusWidget();
    ADD_FAILURE() << "nothing has the keyboard";
    static QWidget nobody;
    return &nobody;
}

inline QImage picture(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Relative luminance as the accessibility guidelines define it.
inline double luminance(const QColor& colour)
{
    const auto linear = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

inline double contrast(const QColor& one, const QColor& other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// The solid colour that a see-through one gives on a ground.
inline QColor over(const QColor& top, const QColor& ground)
{
    const double part = top.alphaF();
    const auto mix = [part](double a, double b) { return float(a * part + b * (1 - part)); };
    return QColor::fromRgbF(mix(top.redF(), ground.redF()), mix(top.greenF(), ground.greenF()), mix(top.blueF(), ground.blueF()));
}

/// Equal but for the rounding of mixed colours.
inline bool alike(const QColor& one, const QColor& other)
{
    return std::abs(one.red() - other.red()) <= 2 && std::abs(one.green() - other.green()) <= 2 && std::abs(one.blue() - other.blue()) <= 2;
}

/// Whether a colour stands anywhere in the picture.
inline bool contains(const QImage& image, const QColor& colour, QRect part = {})
{
    if (part.isNull())
        part = image.rect();
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor found = image.pixelColor(x, y);
            if (found.alpha() > 250 && alike(found, colour))
                return true;
        }
    }
    return false;
}

/// Runs the work once the event loop waits.
inline void later(std::function<void()> work, int milliseconds = 30)
{
    QTimer::singleShot(milliseconds, qApp, std::move(work));
}

/// Puts the theme back to light when a test that switched it ends.
struct ThemeGuard {
    ~ThemeGuard() { Theme::apply(*qApp, Theme::Mode::light); }
};

} // namespace kittest
