// Writes rich text as a file that our reader reads back the same, and other programs understand. The same text gives the same bytes.
#pragma once

#include "documents/rtf/RichText.h"

#include <string>

std::string writeRtf(const RichText& text);
