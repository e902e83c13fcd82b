// Light, dark or as the desktop: the choice, wherever it is offered, and its memory.
#pragma once

#include "ui/kit/Theme.h"

#include <QString>

#include <array>

struct LookChoice {
    /// With the mnemonic of a menu.
    QString title;
    Theme::Mode mode;
};

std::array<LookChoice, 3> lookChoices();
/// Dresses the program now, and from the next start on.
void chooseLook(Theme::Mode mode);
