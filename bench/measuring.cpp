#include "bench/measuring.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace wainscot::Measuring {

namespace {

constexpr unsigned int limitInSeconds = 115;

constinit bool failed = false;

/// In bytes, from a line of the process' own status.
double statusBytes(char const* name) {
    FILE* const file = std::fopen("/proc/self/status", "r");
    if (!file) return 0;
    char line[256];
    long kilobytes = 0;
    while (std::fgets(line, sizeof line, file))
        if (std::strncmp(line, name, std::strlen(name)) == 0)
            std::sscanf(line + std::strlen(name), " %ld", &kilobytes);
    std::fclose(file);
    return static_cast<double>(kilobytes) * 1024.0;
}

void tooLate(int) {
    constexpr char text[] = "bench: not done after 115 seconds\n";
    static_cast<void>(!write(STDERR_FILENO, text, sizeof text - 1));
    _exit(1);
}

} // namespace

double now() {
    static SystemClock const clock;
    return clock.msecs();
}

double residentBytes() {
    return statusBytes("VmRSS:");
}

double anonymousBytes() {
    return statusBytes("RssAnon:");
}

double median(std::vector<double> values) {
    return percentile(std::move(values), 50);
}

double percentile(std::vector<double> values, double percent) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    double const rank = std::ceil(percent / 100 * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

void Report::add(std::string const& metric, double value) {
    metrics_.emplace_back(metric, value);
}

void Report::addSteps(std::string const& metric, std::vector<double> const& values) {
    add(metric, percentile(values, 50));
    add(metric + "_p95", percentile(values, 95));
    add(metric + "_max", percentile(values, 100));
}

Picture look(std::uint32_t const* pixels, std::size_t count) {
    std::vector<std::uint32_t> sorted(pixels, pixels + count);
    std::sort(sorted.begin(), sorted.end());
    std::size_t colours = 0;
    std::size_t commonest = 0;
    for (std::size_t i = 0; i < count; ++colours) {
        std::size_t const start = i;
        while (i < count && sorted[i] == sorted[start]) ++i;
        commonest = std::max(commonest, i - start);
    }
    return {colours, count ? 1000 * (count - commonest) / count : 0};
}

void Report::addPicture(Picture const& picture) {
    check(picture.colours > 1, "the picture is blank");
    add("px_colours", static_cast<double>(picture.colours));
    add("px_ink_permille", static_cast<double>(picture.inkPermille));
}

void Report::print() const {
    std::printf("{\"workload\":\"%s\",\"n\":%ld,\"metrics\":{", workload_.c_str(), n_);
    char const* separator = "";
    for (auto const& [name, value] : metrics_) {
        std::printf("%s\"%s\":%.6g", separator, name.c_str(), value);
        separator = ",";
    }
    std::printf("}}\n");
    std::fflush(stdout);
}

void check(bool right, char const* what) {
    if (right) return;
    failed = true;
    std::fprintf(stderr, "bench: %s\n", what);
}

int exitCode() {
    return failed ? 1 : 0;
}

void limitTime() {
    std::signal(SIGALRM, tooLate);
    alarm(limitInSeconds);
}

} // namespace wainscot::Measuring
