// What a text document holds where one of its frames, a table for one, begins and ends.
#pragma once

#include <QChar>

/// Both end the paragraph before them, and no text that is put into a document may contain them.
constexpr QChar frameStart(0xfdd0);
constexpr QChar frameEnd(0xfdd1);
