#include "foundation/Log.h"

#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

namespace {

struct LogState {
    std::mutex mutex;
    LogSink sink;
};

LogState& logState()
{
    static LogState state;
    return state;
}

void writeToStandardError(std::string_view line)
{
    std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
}

std::string logTimestamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm parts {};
    localtime_r(&now, &parts);
    char text[32];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S ", &parts)};
}

} // namespace

void logLine(std::string_view line)
{
    LogState& state = logState();
    const std::lock_guard guard(state.mutex);
    if (state.sink)
        state.sink(line);
    else
        writeToStandardError(line);
}

void logFormat(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    std::string line(static_cast<std::size_t>(std::vsnprintf(nullptr, 0, format, arguments)), '\0');
    va_end(arguments);
    std::vsnprintf(line.data(), line.size() + 1, format, again);
    va_end(again);
    logLine(line);
}

LogSink setLogSink(LogSink sink)
{
    LogState& state = logState();
    const std::lock_guard guard(state.mutex);
    std::swap(state.sink, sink);
    return sink;
}

LogSink fileLogSink(std::string path)
{
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    const std::shared_ptr<std::FILE> file(std::fopen(path.c_str(), "ae"), [](std::FILE* open) {
        if (open)
            std::fclose(open);
    });
    return [file](std::string_view line) {
        writeToStandardError(line);
        if (!file)
            return;
        std::fprintf(file.get(), "%s%.*s\n", logTimestamp().c_str(), static_cast<int>(line.size()), line.data());
        std::fflush(file.get());
    };
}
