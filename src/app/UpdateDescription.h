// What an update server says about its newest version, and how versions compare.
#pragma once

#include "foundation/Result.h"

#include <QString>
#include <QUrl>

#include <array>
#include <optional>
#include <string_view>

/// Three whole numbers, the most important first.
using ProgramVersion = std::array<int, 3>;

/// Two or three whole numbers with points between; a third one that is missing is 0. Nothing for anything else.
std::optional<ProgramVersion> readVersion(const QString& text);

struct UpdateDescription {
    /// As the server writes it.
    QString version;
    /// None when it is no version that could be compared.
    std::optional<ProgramVersion> number;
    /// As the server writes it; of a date only the day. May be empty.
    QString releaseDate;
    /// Not valid where the server gives none that may be asked.
    QUrl newInThisVersion;
    QUrl download;
};

/// The description in the server's property list, or what is wrong with it.
Result<UpdateDescription> readUpdateDescription(std::string_view bytes);
