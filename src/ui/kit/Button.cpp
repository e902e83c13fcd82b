#include "ui/kit/Button.h"

#include "ui/kit/Icons.h"
#include "ui/kit/Look.h"

namespace {

constexpr int glyphSize = 16;
/// The style puts the text 4 px behind the icon; a word needs this much more.
constexpr int glyphGap = 4;

const char* nameOfButtonKind(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::normal:
        break;
    case Button::Kind::primary:
        return "primary";
    case Button::Kind::text:
        return "text";
    case Button::Kind::danger:
        return "danger";
    }
    return "normal";
}

const char* nameOfButtonSize(Button::Size size)
{
    switch (size) {
    case Button::Size::normal:
        break;
    case Button::Size::tall:
        return "tall";
    case Button::Size::narrow:
        return "narrow";
    }
    return "normal";
}

IconRole glyphRole(Button::Kind kind)
{
    switch (kind) {
    case Button::Kind::normal:
        break;
    case Button::Kind::primary:
        return IconRole::onAccent;
    case Button::Kind::text:
        return IconRole::accent;
    case Button::Kind::danger:
        return IconRole::error;
    }
    return IconRole::normal;
}

}

Button::Button(const QString& text, QWidget* parent)
    : Button(text, Kind::normal, parent)
{
}

Button::Button(const QString& text, Kind kind, QWidget* parent)
    : QPushButton(text, parent)
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

void Button::takeGlyph()
{
    if (m_glyph.isEmpty()) {
        setIcon({});
        return;
    }
    setIcon(Icons::get(m_glyph, glyphRole(m_kind)));
    setIconSize({glyphSize + glyphGap, glyphSize});
}

PrimaryButton::PrimaryButton(const QString& text, QWidget* parent)
    : Button(text, Kind::primary, parent)
{
}

TextButton::TextButton(const QString& text, QWidget* parent)
    : Button(text, Kind::text, parent)
{
}

DangerButton::DangerButton(const QString& text, QWidget* parent)
    : Button(text, Kind::danger, parent)
{
}
