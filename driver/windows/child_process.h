#pragma once

#include "host/base/export.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

namespace wainscot {

/// How long a test waits for something that has to happen before it counts as failed.
inline constexpr std::chrono::milliseconds patience{15'000};

/// Asks again and again until the condition holds; false when time is up.
WAINSCOT_API bool waitUntil(std::function<bool()> const& condition,
                            std::chrono::milliseconds limit = patience);

/// Lets wall time pass; for tests of what must not happen.
WAINSCOT_API void letTimePass(std::chrono::milliseconds time);

/// A program that a test has started. The destructor ends it, and it does not outlive the test program even
/// when that is killed.
class WAINSCOT_API ChildProcess {
public:
    using Environment = std::map<std::string, std::string>;

    /// Starts a program with exactly the given environment. `words` begins with the program's name, which is
    /// searched in the test program's PATH when it has no "/". Its standard error is added to `errorFile`. A
    /// program that cannot be started counts as one that ended with the code `notStarted`. From now on the
    /// test program ignores SIGPIPE.
    ChildProcess(std::vector<std::string> const& words, Environment const& environment,
                 std::string const& errorFile);
    ~ChildProcess();
    ChildProcess(ChildProcess const&) = delete;
    ChildProcess& operator=(ChildProcess const&) = delete;

    static constexpr int notStarted = 127;

    /// -1 when there is none.
    pid_t pid() const { return pid_; }
    bool isRunning();
    /// Waits for the end; gives the exit code (128 + signal when it was killed), nothing when it does not
    /// end.
    std::optional<int> waitForExit();
    /// Writes one line to its standard input; nothing happens when it has ended.
    void send(std::string const& line);

    /// All lines of its standard output so far.
    std::vector<std::string> const& lines();
    /// Waits for a line that begins so, among the lines that no earlier call gave or skipped. Empty when none
    /// comes.
    std::string waitForLine(std::string_view beginning);
    /// Skips what has been written so far.
    void skipLines();
    /// The lines that no call has given or skipped yet; for messages of failed tests.
    std::string unreadLines();

    /// How often its threads have slept and been woken; 0 when it has ended.
    long wakeUps() const;
    /// Processor time that it has used; 0 when it has ended.
    std::chrono::milliseconds processorTime() const;

private:
    void readOutput();
    bool reap();

    pid_t pid_ = -1;
    int input_ = -1;
    int output_ = -1;
    std::optional<int> exitCode_;
    std::string partialLine_;
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

} // namespace wainscot
