// What is new in a version, as its server tells it: rich text, a web page or plain text, made fit for a window.
#pragma once

#include "foundation/Result.h"

#include <memory>
#include <string_view>

class QTextDocument;

/// The text without its colours, so that it can be read in any look, and without pictures; nothing is loaded from anywhere. An error when
/// there is no text in it.
Result<std::unique_ptr<QTextDocument>> readUpdateNotes(std::string_view bytes);
