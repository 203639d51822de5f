#include "host/backends/desktop/desktop_selection_p.h"

#include "host/services/clock.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <cstring>
#include <poll.h>

namespace wainscot {

namespace {

constexpr double patience = 1000.0;
/// Words of a property that are read in one step; and the most bytes of a text, in case its owner never ends.
constexpr long wordsAtOnce = 1 << 16;
constexpr std::size_t mostBytes = std::size_t{1} << 30;

std::string utf8FromLatin1(std::string const& text) {
    std::string made;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            made += c;
        } else {
            made += static_cast<char>(0xC0 | (byte >> 6));
            made += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return made;
}

} // namespace

SelectionReader::~SelectionReader() {
    if (display_) XCloseDisplay(display_);
}

bool SelectionReader::open() {
    if (display_) return true;
    display_ = XOpenDisplay(nullptr);
    if (!display_) return false;
    window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 1, 1, 0, 0, 0);
    property_ = XInternAtom(display_, "WAINSCOT_TEXT", False);
    XSelectInput(display_, window_, PropertyChangeMask);
    return true;
}

unsigned long SelectionReader::owner(char const* selection) {
    return open() ? XGetSelectionOwner(display_, XInternAtom(display_, selection, False)) : 0;
}

bool SelectionReader::waitFor(int type, void* event) {
    SystemClock const clock;
    double const end = clock.msecs() + patience;
    while (!XCheckTypedWindowEvent(display_, window_, type, static_cast<XEvent*>(event))) {
        double const left = end - clock.msecs();
        if (left <= 0.0) return false;
        pollfd file{ConnectionNumber(display_), POLLIN, 0};
        poll(&file, 1, static_cast<int>(left) + 1);
    }
    return true;
}

SelectionReader::Answer SelectionReader::convert(char const* selection, char const* target) {
    Atom const kind = XInternAtom(display_, target, False);
    XEvent event;
    while (XCheckTypedWindowEvent(display_, window_, SelectionNotify, &event)) {
    }
    XDeleteProperty(display_, window_, property_);
    XConvertSelection(display_, XInternAtom(display_, selection, False), kind, property_, window_,
                      CurrentTime);
    XFlush(display_);
    // The answer to an earlier question may come late.
    do {
        if (!waitFor(SelectionNotify, &event)) return Answer::none;
    } while (event.xselection.target != kind);
    return event.xselection.property == None ? Answer::refused : Answer::given;
}

unsigned long SelectionReader::takeProperty(std::string& text) {
    Atom type = None;
    int format = 0;
    unsigned long items = 0;
    unsigned long left = 1;
    long offset = 0;
    while (left > 0 && text.size() < mostBytes) {
        unsigned char* data = nullptr;
        if (XGetWindowProperty(display_, window_, property_, offset, wordsAtOnce, False, AnyPropertyType,
                               &type, &format, &items, &left, &data) != Success)
            return None;
        if (format == 8) text.append(reinterpret_cast<char const*>(data), items);
        XFree(data);
        if (format != 8) break;
        offset += static_cast<long>(items / 4);
    }
    XDeleteProperty(display_, window_, property_);
    return type;
}

/// The owner writes the next piece whenever the last one was taken; an empty piece is the end.
bool SelectionReader::readPieces(std::string& text) {
    XEvent event;
    while (waitFor(PropertyNotify, &event)) {
        if (event.xproperty.state != PropertyNewValue || event.xproperty.atom != property_) continue;
        std::size_t const before = text.size();
        takeProperty(text);
        if (text.size() == before) return true;
        if (text.size() >= mostBytes) return false;
    }
    return false;
}

/// A picture must not be asked for as text: some owners would give its bytes.
std::optional<std::vector<unsigned long>> SelectionReader::offered(char const* selection) {
    Answer const answer = convert(selection, "TARGETS");
    if (answer == Answer::none) return std::nullopt;
    if (answer == Answer::refused) return std::vector<unsigned long>();
    Atom type = None;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display_, window_, property_, 0, wordsAtOnce, True, AnyPropertyType, &type, &format,
                       &count, &rest, &value);
    std::vector<unsigned long> kinds(format == 32 && value ? count : 0);
    if (!kinds.empty()) std::memcpy(kinds.data(), value, count * sizeof(unsigned long));
    if (value) XFree(value);
    return kinds;
}

std::optional<std::string> SelectionReader::read(char const* selection) {
    if (!open()) return {};
    std::optional<std::vector<unsigned long>> const kinds = offered(selection);
    if (!kinds) return {};
    for (char const* const target : {"UTF8_STRING", "STRING"}) {
        // An owner that does not say what it offers is asked for each kind.
        unsigned long const kind = XInternAtom(display_, target, False);
        if (!kinds->empty() && std::find(kinds->begin(), kinds->end(), kind) == kinds->end()) continue;
        Answer const answer = convert(selection, target);
        if (answer == Answer::none) return {};
        if (answer == Answer::refused) continue;
        XEvent event;
        while (XCheckTypedWindowEvent(display_, window_, PropertyNotify, &event)) {
        }
        std::string text;
        unsigned long const type = takeProperty(text);
        bool const inPieces = type != None && type == XInternAtom(display_, "INCR", False);
        if (inPieces) text.clear();
        if (inPieces && !readPieces(text)) return {};
        return target[0] == 'S' ? utf8FromLatin1(text) : text;
    }
    return {};
}

} // namespace wainscot
