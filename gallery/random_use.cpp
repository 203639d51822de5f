#include "gallery/random_use.h"

#include "driver/consistency.h"
#include "driver/random_user.h"
#include "driver/shorten.h"
#include "gallery/page.h"
#include "host/base/convert.h"
#include "host/events/pointer_state.h"
#include "host/start/host.h"
#include "host/windows/glob_manager.h"

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace wainscot::gallery {

namespace {

using Text = LightweightString<char>;

/// What a file of acts begins with: the options that open the same page again.
constexpr char const* heading = "# wainscot-gallery";

struct Record {
    Options options;
    std::vector<UserAct> acts;
};

Text number(std::uint64_t value) {
    return StringFromInteger(static_cast<long long>(value));
}

/// The page without the list of pages, which would soon lead to another one.
bool openPage(Host& host, Page const& page, Options const& options, std::uint64_t& lines) {
    std::unique_ptr<Glob> root =
        page.make(options.size, [&lines](LightweightString<wchar_t> const&) { ++lines; });
    if (!host.globManager().realize(root.get())) return false;
    static_cast<void>(root.release());
    return true;
}

void write(std::ofstream& file, Page const& page, Options const& options) {
    file << heading << " --page " << page.name << " --size " << options.size.x << 'x' << options.size.y
         << '\n';
}

/// Empty when the file is good, else what is wrong.
Text read(Text const& path, Record& record) {
    std::ifstream file(path.c_str(), std::ios::binary);
    std::string first;
    if (!std::getline(file, first)) return Text("the file \"") + path + "\" cannot be read";
    std::istringstream words(first);
    std::vector<Text> arguments;
    for (std::string word; words >> word;) arguments.emplace_back(word.c_str());
    bool const isHeading = first.rfind(heading, 0) == 0 && arguments.size() > 2;
    if (!isHeading) return path + ": the first line does not name a page";
    arguments.erase(arguments.begin(), arguments.begin() + 2);
    Text const problem = parseOptions(arguments, record.options);
    if (!problem.empty()) return path + ": " + problem;
    std::ostringstream rest;
    rest << file.rdbuf();
    bool const isGood = readActs(rest.str().c_str(), record.acts) && findPage(record.options.page);
    return isGood ? Text() : path + ": act " + number(record.acts.size() + 1) + " is not understood";
}

/// One page used at random.
class PageUse {
public:
    PageUse(Host& host, Options const& options, Page const& page)
        : options_(options), page_(page), host_(host), driver_(host), check_(driver_),
          user_(driver_, static_cast<std::uint32_t>(options.seed)) {
        user_.setBefore([this](UserAct const& act) { note(act); });
        user_.setAfter([this] { return isWell(); });
    }

    /// Where the user closes the window, the page is opened again.
    Text run() {
        auto const wanted = static_cast<std::uint64_t>(options_.random);
        while (user_.counts().events < wanted && fault_.empty()) {
            begin();
            if (!openPage(host_, page_, options_, lines_)) return "the window system refuses a window";
            driver_.settle();
            if (!user_.run(wanted - user_.counts().events)) ++closed_;
            host_.globManager().closeAll();
            driver_.settle();
        }
        print();
        return fault_.empty() ? Text() : Text(page_.name) + ": " + fault_;
    }

    RandomUser::Counts const& counts() const { return user_.counts(); }
    std::uint64_t lines() const { return lines_; }

private:
    void begin() {
        if (options_.record.empty()) return;
        file_ = std::ofstream(options_.record.c_str(), std::ios::trunc);
        write(file_, page_, options_);
        note({.kind = UserAct::Kind::move, .place = glib_getMousePos()});
    }

    /// At once, so that the file holds the act that ends the program.
    void note(UserAct const& act) {
        if (file_.is_open()) file_ << act.line().c_str() << std::endl;
    }

    bool isWell() {
        if (fault_.empty() && options_.check > 0 && ++acts_ % static_cast<std::uint64_t>(options_.check) == 0)
            fault_ = check_.fault();
        return fault_.empty();
    }

    void print() const {
        RandomUser::Counts const& counts = user_.counts();
        Text line = Text(page_.name) + ": " + number(counts.events) + " events, " + number(counts.presses) +
                    " presses, " + number(counts.hits) + " on something, " + number(lines_) +
                    " lines in the log, " + number(counts.windowsOpened) + " windows opened, closed " +
                    number(closed_) + " times";
        for (auto const& [role, times] : counts.pressedRoles)
            line += Text(", ") + number(times) + " " + role.c_str();
        std::printf("%s\n", line.c_str());
        std::fflush(stdout);
    }

    Options const& options_;
    Page const& page_;
    Host& host_;
    Driver driver_;
    Consistency check_;
    RandomUser user_;
    std::ofstream file_;
    Text fault_;
    std::uint64_t acts_ = 0;
    std::uint64_t lines_ = 0;
    std::uint64_t closed_ = 0;
};

/// The exit code of a program that runs without a screen, its output left out; -1 when it was killed.
int exitCodeOf(char const* program, Text const& path) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    char const* const arguments[] = {program, "--replay", path.c_str(), nullptr};
    pid_t child = -1;
    int const problem =
        posix_spawnp(&child, program, &actions, nullptr, const_cast<char* const*>(arguments), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    if (problem != 0 || waitpid(child, &status, 0) != child) return 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void writeFile(Text const& path, Record const& record, std::span<UserAct const> acts) {
    std::ofstream file(path.c_str(), std::ios::trunc);
    write(file, *findPage(record.options.page), record.options);
    file << writeActs(acts).c_str();
}

} // namespace

Text useAtRandom(Host& host, Options const& options) {
    std::uint64_t presses = 0;
    std::uint64_t hits = 0;
    std::uint64_t lines = 0;
    for (Page const* const page : pages()) {
        if (!options.page.empty() && options.page != page->name) continue;
        PageUse use(host, options, *page);
        Text problem = use.run();
        if (!problem.empty()) return problem;
        presses += use.counts().presses;
        hits += use.counts().hits;
        lines += use.lines();
    }
    // Fewer would mean that the pages, or the user, do nothing.
    constexpr std::uint64_t leastShare = 10;
    bool const didSomething = hits * leastShare >= presses && lines * leastShare >= hits;
    return didSomething || !options.page.empty() ? Text() : Text("too little has happened");
}

Text takeOptions(Options& options) {
    Record record;
    Text problem = read(options.replay, record);
    if (!problem.empty()) return problem;
    record.options.replay = options.replay;
    options = record.options;
    return {};
}

Text replay(Host& host, Options const& options) {
    Record record;
    Text problem = read(options.replay, record);
    if (!problem.empty()) return problem;
    std::uint64_t lines = 0;
    if (!openPage(host, *findPage(options.page), options, lines)) return "the window system refuses a window";
    Driver driver(host);
    Consistency check(driver);
    Text fault = check.fault();
    for (std::size_t i = 0; i < record.acts.size() && fault.empty(); ++i) {
        record.acts[i].perform(driver);
        fault = check.fault();
        if (!fault.empty())
            fault = "after act " + number(i + 1) + ", " + record.acts[i].line() + ": " + fault;
    }
    return fault;
}

Text shortenFile(char const* program, Options const& options) {
    Record record;
    Text problem = read(options.shorten, record);
    if (!problem.empty()) return problem;
    Text const trial = options.shorten + ".trial";
    std::size_t trials = 0;
    auto const fails = [&](std::span<UserAct const> acts) {
        ++trials;
        writeFile(trial, record, acts);
        return exitCodeOf(program, trial) != 0;
    };
    std::size_t const before = record.acts.size();
    std::vector<UserAct> const acts = shortened(record.acts, fails);
    std::remove(trial.c_str());
    if (trials == 1) return options.shorten + ": nothing fails";
    writeFile(options.shorten, record, acts);
    std::printf("%zu of %zu acts are left after %zu trials\n", acts.size(), before, trials);
    return {};
}

} // namespace wainscot::gallery
