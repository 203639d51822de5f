#include "host/services/link_opener.h"

#include "host/base/convert.h"
#include "host/services/resources.h"
#include "host/services/text_ids.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace wainscot {

namespace {

using Wide = LightweightString<wchar_t>;

bool isLetter(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
}

bool isSchemeCharacter(wchar_t c) {
    return isLetter(c) || (c >= L'0' && c <= L'9') || c == L'+' || c == L'-' || c == L'.';
}

bool isBlankOrControl(wchar_t c) {
    auto const code = static_cast<std::uint32_t>(c);
    return code <= 0x20 || (code >= 0x7F && code <= 0xA0) || code == 0x2028 || code == 0x2029;
}

/// The scheme of a link, in lower case; empty when it has none.
std::string schemeOf(std::wstring_view link) {
    auto const end = std::find_if_not(link.begin(), link.end(), isSchemeCharacter);
    if (end == link.begin() || end == link.end() || *end != L':' || !isLetter(link.front())) return {};
    std::string scheme;
    for (auto at = link.begin(); at != end; ++at)
        scheme += static_cast<char>(*at >= L'A' && *at <= L'Z' ? *at - L'A' + L'a' : *at);
    return scheme;
}

bool isWebScheme(std::string const& scheme) {
    return scheme == "http" || scheme == "https";
}

/// The length of a doubled scheme at the beginning; 0 when there is none.
std::size_t lengthOfDoubledScheme(std::wstring_view link) {
    std::string const outer = schemeOf(link);
    std::size_t const length = outer.size() + 3;
    if (!isWebScheme(outer) || link.substr(outer.size(), 3) != L"://") return 0;
    std::wstring_view const rest = link.substr(length);
    std::string const inner = schemeOf(rest);
    // A host with a port looks like a scheme too: the rest must be a whole link.
    bool const isWhole = rest.substr(inner.size(), 3) == L"://" || inner == "mailto";
    return !inner.empty() && isWhole ? length : 0;
}

bool isOpenedWithoutAsking(std::string const& scheme) {
    return isWebScheme(scheme) || scheme == "mailto";
}

/// The settings with which the program starts: a session of its own, no blocked signals, nothing to read.
class SpawnSettings {
public:
    SpawnSettings() {
        posix_spawnattr_init(&attributes_);
        posix_spawn_file_actions_init(&files_);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&attributes_, &signals);
        posix_spawnattr_setflags(&attributes_,
                                 POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawn_file_actions_addopen(&files_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    }
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&files_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSettings(SpawnSettings const&) = delete;
    SpawnSettings& operator=(SpawnSettings const&) = delete;

    /// 0, or why the program could not be started.
    int spawn(pid_t& child, char* const* words) const {
        return posix_spawnp(&child, words[0], &files_, &attributes_, words, environ);
    }

private:
    posix_spawnattr_t attributes_{};
    posix_spawn_file_actions_t files_{};
};

/// Waits for the end of a program on a thread of its own; without a thread its exit is left to the system.
void takeExitLater(pid_t child) {
    try {
        std::thread([child] {
            while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
            }
        }).detach();
    } catch (std::system_error const&) {
    }
}

LinkResult refusal(ResId reason) {
    return {LinkResult::State::refused, resourceStrW(reason)};
}

} // namespace

LightweightString<wchar_t> usableLink(LightweightString<wchar_t> const& link) {
    std::wstring_view text = link.view();
    while (!text.empty() && isBlankOrControl(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlankOrControl(text.back())) text.remove_suffix(1);
    while (std::size_t const doubled = lengthOfDoubledScheme(text)) text.remove_prefix(doubled);
    std::string const scheme = schemeOf(text);
    bool const isWhole = !scheme.empty() && text.size() > scheme.size() + 1;
    return isWhole && std::none_of(text.begin(), text.end(), isBlankOrControl) ? Wide(text) : Wide();
}

LinkResult openLink(LightweightString<wchar_t> const& link, AskForLink const& ask) {
    Wide const usable = usableLink(link);
    if (usable.empty()) return refusal(TextId::linkUnusable);
    std::string const scheme = schemeOf(usable.view());
    bool const mayOpen =
        isOpenedWithoutAsking(scheme) || (ask && ask(LightweightString<char>(scheme), usable));
    if (!mayOpen) return refusal(TextId::linkNotAllowed);
    char program[] = "xdg-open";
    // A link begins with its scheme, so it is never taken for an option.
    std::string argument(toUTF8(usable).view());
    char* const words[] = {program, argument.data(), nullptr};
    pid_t child = 0;
    if (int const problem = SpawnSettings().spawn(child, words))
        return {LinkResult::State::failed, fromUTF8(LightweightString<char>(std::strerror(problem)))};
    takeExitLater(child);
    return {LinkResult::State::opened, {}};
}

} // namespace wainscot
