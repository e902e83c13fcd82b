// The program's log: short lines for whoever looks into a problem later.
#pragma once

#include <functional>
#include <string_view>

/// Writes one line to the log. Until a sink is set the line goes to standard error. May be called from any thread.
void logLine(std::string_view line);

/// printf-style convenience for lines with figures in them; user text is only ever an argument, never the format.
[[gnu::format(printf, 1, 2)]] void logFormat(const char* format, ...);

using LogSink = std::function<void(std::string_view)>;

/// Replaces where lines go; an empty sink means standard error again. Returns the sink that was in force.
LogSink setLogSink(LogSink sink);

/// A sink that writes to standard error and appends to the file, whose folder is made when missing.
LogSink fileLogSink(std::string path);
