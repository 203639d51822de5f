#pragma once

#include "host/services/clock.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace wainscot {

/// What the measuring programs share: real time, memory, and one JSON line for each workload.
namespace Measuring {

/// Real milliseconds, whatever the clocks of the host do.
double now();
/// The machine's memory in use, in bytes.
double residentBytes();
/// The same without memory that a file backs.
double anonymousBytes();

double median(std::vector<double> values);
/// The value that `percent` per cent of the values do not exceed.
double percentile(std::vector<double> values, double percent);

struct Picture {
    std::size_t colours;
    /// The share of pixels that do not have the most frequent colour.
    std::size_t inkPermille;
};
Picture look(std::uint32_t const* pixels, std::size_t count);

/// The metrics of one workload, in the order in which they were added.
class Report {
public:
    Report(std::string workload, long n) : workload_(std::move(workload)), n_(n) {}

    /// One figure.
    void add(std::string const& metric, double value);
    /// The median of the runs.
    void addRuns(std::string const& metric, std::vector<double> const& values) {
        add(metric, median(values));
    }
    /// Median, 95th percentile and maximum of the steps.
    void addSteps(std::string const& metric, std::vector<double> const& values);
    /// What was painted. A blank picture makes the run fail.
    void addPicture(Picture const& picture);
    void print() const;

private:
    std::string workload_;
    long n_;
    std::vector<std::pair<std::string, double>> metrics_;
};

/// Notes a failed check.
void check(bool right, char const* what);
/// The exit code of the program: 1 when a check failed.
int exitCode();
/// Ends the program after 115 seconds, and says so.
void limitTime();

} // namespace Measuring

} // namespace wainscot
