#include "host/base/diagnostics.h"

#include <clocale>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <deque>
#include <locale.h>
#include <mutex>

namespace wainscot {

namespace {

constexpr std::size_t maxLine = 1024;
constexpr std::size_t maxKeptLines = 1000;

struct Log {
    std::mutex mutex;
    std::vector<Diagnostics::Entry> entries;
    std::deque<LightweightString<char>> lines;
    std::function<void(char const*)> sink;
};

/// Never destroyed: the destructors of static objects may still write lines.
Log& theLog() {
    static Log& log = *new Log;
    return log;
}

/// Numbers as in "C", characters as UTF-8, so that wide texts can be written.
locale_t makeLineLocale() {
    locale_t const plain = newlocale(LC_ALL_MASK, "C", nullptr);
    locale_t const utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", plain);
    return utf8 ? utf8 : plain;
}

/// Formats in the same way in every locale, by setting the locale of this thread for a moment.
void formatLine(char* line, char const* format, va_list arguments) {
    static locale_t const lineLocale = makeLineLocale();
    locale_t const before = uselocale(lineLocale);
    int const length = std::vsnprintf(line, maxLine, format, arguments);
    uselocale(before);
    if (length < 0) std::snprintf(line, maxLine, "(cannot be formatted) %s", format);
}

void writeLine(char const* line) {
    std::function<void(char const*)> sink;
    {
        std::lock_guard const lock(theLog().mutex);
        sink = theLog().sink;
    }
    if (sink) {
        sink(line);
        return;
    }
    std::size_t const length = std::strlen(line);
    std::fputs(line, stderr);
    if (length == 0 || line[length - 1] != '\n') std::fputc('\n', stderr);
}

void keepLine(char const* line) {
    std::lock_guard const lock(theLog().mutex);
    theLog().lines.emplace_back(line);
    if (theLog().lines.size() > maxKeptLines) theLog().lines.pop_front();
}

/// True for the first entry of its kind.
bool countOne(char const* kind, char const* detail) {
    std::lock_guard const lock(theLog().mutex);
    for (auto& entry : theLog().entries) {
        if (entry.kind == kind) {
            ++entry.count;
            return false;
        }
    }
    theLog().entries.push_back({LightweightString<char>(kind), LightweightString<char>(detail), 1});
    return true;
}

} // namespace

void vex_printf(char const* format, ...) {
    char line[maxLine];
    va_list arguments;
    va_start(arguments, format);
    formatLine(line, format, arguments);
    va_end(arguments);
    writeLine(line);
}

void LogBoth(char const* format, ...) {
    char line[maxLine];
    va_list arguments;
    va_start(arguments, format);
    formatLine(line, format, arguments);
    va_end(arguments);
    keepLine(line);
    writeLine(line);
}

void Diagnostics::count(char const* kind, char const* detail) {
    [[maybe_unused]] bool const first = countOne(kind, detail);
#ifndef NDEBUG
    if (first) vex_printf("wainscot: %s: %s", kind, detail);
#endif
}

std::uint64_t Diagnostics::countOf(char const* kind) {
    std::lock_guard const lock(theLog().mutex);
    for (auto const& entry : theLog().entries)
        if (entry.kind == kind) return entry.count;
    return 0;
}

std::vector<Diagnostics::Entry> Diagnostics::entries() {
    std::lock_guard const lock(theLog().mutex);
    return theLog().entries;
}

std::vector<LightweightString<char>> Diagnostics::lines() {
    std::lock_guard const lock(theLog().mutex);
    return {theLog().lines.begin(), theLog().lines.end()};
}

void Diagnostics::reset() {
    std::lock_guard const lock(theLog().mutex);
    theLog().entries.clear();
    theLog().lines.clear();
}

void Diagnostics::setSink(std::function<void(char const* line)> sink) {
    std::lock_guard const lock(theLog().mutex);
    theLog().sink.swap(sink);
}

} // namespace wainscot
