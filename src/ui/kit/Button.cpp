#include "ui/kit/Button.h"

#include "ui/kit/Icons.h"
#include "ui/kit/Look.h"

#include <QKeyEvent>

namespace {

constexpr int glyphSize = 16;
/// The style puts the text 4 px behind the icon; a word needs this much more.
constexpr int glyphGap = 4;

const char* nameOfButtonKind(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::normal: break;
    case Button::Kind::primary: return "primary";
    case Button::Kind::text: return "text";
    case Button::Kind::danger: return "danger";
    }
    return "normal";
}

const char* nameOfButtonSize(Button::Size size)
{
    switch (size) {
    case Button::Size::normal: break;
    case Button::Size::tall: return "tall";
    case Button::Size::narrow: return "narrow";
    }
    return "normal";
}

IconRole glyphRole(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::normal: break;
    case Button::Kind::primary: return IconRole::onAccent;
    case Button::Kind::text: return IconRole::accent;
    case Button::Kind::danger: return IconRole::error;
    }
    return IconRole::normal;
}

} // namespace

Button::Button(const QString& text, QWidget* parent) : Button(text, Kind::normal, parent) { }

Button::Button(const QString& text, Kind kind, QWidget* parent) : QPushButton(text, parent)
{
    setAutoDefault(false);
    setKind(kind);
}

void Button::setKind(Kind kind)
{
    m_kind = kind;
    look::setKind(this, nameOfButtonKind(kind));
    takeGlyph();
}

void Button::setSize(Size size)
{
    look::set(this, "measure", nameOfButtonSize(size));
    updateGeometry();
}

void Button::setGlyph(const QString& name)
{
    m_glyph = name;
    takeGlyph();
}

void Button::setKeys(const QKeySequence& keys)
{
    setShortcut(keys);
    setToolTip(QStringLiteral("%1 (%2)").arg(text(), keys.toString(QKeySequence::NativeText)));
}

void Button::takeGlyph()
{
    if (m_glyph.isEmpty()) {
        setIcon({});
        return;
    }
    setIcon(Icons::get(m_glyph, glyphRole(m_kind)));
    setIconSize({glyphSize + glyphGap, glyphSize});
}

void Button::keyPressEvent(QKeyEvent* event)
{
    // Return presses like Space, whatever the desktop thinks of it; a key still held down from before must not.
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat())
        click();
    else
        QPushButton::keyPressEvent(event);
}

PrimaryButton::PrimaryButton(const QString& text, QWidget* parent) : Button(text, Kind::primary, parent) { }

TextButton::TextButton(const QString& text, QWidget* parent) : Button(text, Kind::text, parent) { }

DangerButton::DangerButton(const QString& text, QWidget* parent) : Button(text, Kind::danger, parent) { }
