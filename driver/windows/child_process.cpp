#include "driver/windows/child_process.h"

#include "host/services/clock.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace wainscot {

namespace {

constexpr int pauseBetweenLooks = 5;

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> asTexts(ChildProcess::Environment const& environment) {
    std::vector<std::string> texts;
    for (auto const& [name, value] : environment) texts.push_back(name + "=" + value);
    return texts;
}

/// In the new process: becomes the program. Nothing here may allocate memory.
[[noreturn]] void become(char* const* words, char* const* environment, int input, int output, int error) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    std::signal(SIGPIPE, SIG_DFL);
    dup2(input, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    execvpe(words[0], words, environment);
    _exit(ChildProcess::notStarted);
}

void closeFile(int file) {
    if (file >= 0) close(file);
}

long switchesIn(std::filesystem::path const& status) {
    static constexpr std::string_view key = "voluntary_ctxt_switches:";
    std::ifstream file(status);
    for (std::string line; std::getline(file, line);)
        if (line.compare(0, key.size(), key) == 0) return std::stol(line.substr(key.size()));
    return 0;
}

} // namespace

bool waitUntil(std::function<bool()> const& condition, std::chrono::milliseconds limit) {
    SystemClock const clock;
    double const end = clock.msecs() + static_cast<double>(limit.count());
    while (!condition()) {
        if (clock.msecs() > end) return false;
        poll(nullptr, 0, pauseBetweenLooks);
    }
    return true;
}

void letTimePass(std::chrono::milliseconds time) {
    poll(nullptr, 0, static_cast<int>(time.count()));
}

ChildProcess::ChildProcess(std::vector<std::string> const& words, Environment const& environment,
                           std::string const& errorFile) {
    int input[2] = {-1, -1}, output[2] = {-1, -1};
    int const error = open(errorFile.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    std::vector<std::string> arguments = words;
    std::vector<std::string> settings = asTexts(environment);
    std::vector<char*> const argumentPointers = pointersTo(arguments);
    std::vector<char*> const settingPointers = pointersTo(settings);
    bool const hasPipes = pipe2(input, O_CLOEXEC) == 0 && pipe2(output, O_CLOEXEC) == 0;
    if (hasPipes && !words.empty()) pid_ = fork();
    if (pid_ == 0) become(argumentPointers.data(), settingPointers.data(), input[0], output[1], error);
    if (pid_ < 0) exitCode_ = notStarted;
    for (int const file : {input[0], output[1], error}) closeFile(file);
    input_ = input[1];
    output_ = output[0];
    if (output_ >= 0) fcntl(output_, F_SETFL, O_NONBLOCK);
    std::signal(SIGPIPE, SIG_IGN);
}

ChildProcess::~ChildProcess() {
    if (isRunning()) {
        kill(pid_, SIGTERM);
        if (!waitUntil([this] { return reap(); }, std::chrono::milliseconds(2000))) {
            kill(pid_, SIGKILL);
            waitUntil([this] { return reap(); });
        }
    }
    closeFile(input_);
    closeFile(output_);
}

bool ChildProcess::reap() {
    if (exitCode_) return true;
    int status = 0;
    if (waitpid(pid_, &status, WNOHANG) != pid_) return false;
    exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return true;
}

bool ChildProcess::isRunning() {
    return !reap();
}

std::optional<int> ChildProcess::waitForExit() {
    waitUntil([this] {
        readOutput();
        return reap();
    });
    readOutput();
    return exitCode_;
}

void ChildProcess::send(std::string const& line) {
    std::string const text = line + "\n";
    [[maybe_unused]] auto const written = write(input_, text.data(), text.size());
}

void ChildProcess::readOutput() {
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(output_, buffer, sizeof buffer)) > 0) {
        for (char const character : std::string_view(buffer, static_cast<std::size_t>(count))) {
            if (character != '\n') {
                partialLine_ += character;
                continue;
            }
            lines_.push_back(partialLine_);
            partialLine_.clear();
        }
    }
    if (count != 0 || partialLine_.empty()) return;
    // The last line of a program that has ended.
    lines_.push_back(partialLine_);
    partialLine_.clear();
}

std::vector<std::string> const& ChildProcess::lines() {
    readOutput();
    return lines_;
}

std::string ChildProcess::waitForLine(std::string_view beginning) {
    std::string found;
    std::size_t looked = next_;
    waitUntil([&] {
        // What it wrote last is read when it has ended, not before.
        bool const hasEnded = reap();
        readOutput();
        for (; looked < lines_.size() && found.empty(); ++looked)
            if (std::string_view(lines_[looked]).substr(0, beginning.size()) == beginning)
                found = lines_[looked];
        return !found.empty() || hasEnded;
    });
    if (!found.empty()) next_ = looked;
    return found;
}

void ChildProcess::skipLines() {
    next_ = lines().size();
}

std::string ChildProcess::unreadLines() {
    std::string text;
    for (std::size_t i = next_; i < lines().size(); ++i) text += lines_[i] + "\n";
    return text;
}

std::chrono::milliseconds ChildProcess::processorTime() const {
    std::ifstream file("/proc/" + std::to_string(pid_) + "/stat");
    std::string const text{std::istreambuf_iterator<char>(file), {}};
    // Behind the name, which may hold anything, come the state and ten numbers that do not matter here.
    std::istringstream fields(text.substr(std::min(text.rfind(')') + 1, text.size())));
    std::string skipped;
    for (int i = 0; i < 11; ++i) fields >> skipped;
    long user = 0, system = 0;
    fields >> user >> system;
    return std::chrono::milliseconds((user + system) * 1000 / sysconf(_SC_CLK_TCK));
}

long ChildProcess::wakeUps() const {
    long sum = 0;
    std::error_code problem;
    std::filesystem::path const tasks = "/proc/" + std::to_string(pid_) + "/task";
    for (auto const& task : std::filesystem::directory_iterator(tasks, problem))
        sum += switchesIn(task.path() / "status");
    return sum;
}

} // namespace wainscot
