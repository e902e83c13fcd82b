#include "ui/LookChoice.h"

#include "ui/WindowMemory.h"

#include <QApplication>

std::array<LookChoice, 3> lookChoices()
{
    return {LookChoice {Theme::tr("&Light"), Theme::Mode::light}, LookChoice {Theme::tr("&Dark"), Theme::Mode::dark},
        LookChoice {Theme::tr("&As the Desktop"), Theme::Mode::asDesktop}};
}

void chooseLook(Theme::Mode mode)
{
    Theme::apply(*qApp, mode);
    WindowMemory::rememberState("look", Theme::nameOf(mode).toUtf8());
}
