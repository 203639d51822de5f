#include "driver/script.h"

#include "host/base/convert.h"
#include "host/events/key_names.h"
#include "host/objects/kbd_focus.h"
#include "host/windows/glob_manager.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace wainscot {

namespace {

using Text = LightweightString<char>;
using Target = Driver::Target;

/// A word of a line, and whether it stood in quotation marks.
struct Word {
    Text text;
    bool quoted = false;
};

/// Inside quotation marks a backslash takes the next character as it is. False when a mark is left open.
bool split(std::string_view line, std::vector<Word>& words) {
    std::size_t i = 0;
    while (i < line.size()) {
        if (line[i] == ' ' || line[i] == '\t' || line[i] == '\r') {
            ++i;
            continue;
        }
        Word word;
        word.quoted = line[i] == '"';
        if (!word.quoted) {
            while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r')
                word.text += line[i++];
        } else {
            for (++i; i < line.size() && line[i] != '"'; ++i) {
                if (line[i] == '\\' && i + 1 < line.size()) ++i;
                word.text += line[i];
            }
            if (i++ >= line.size()) return false;
        }
        words.push_back(word);
    }
    return true;
}

Text number(int value) {
    return StringFromInteger(value);
}

} // namespace

/// The words behind a command. They are taken one by one; the first problem is kept.
struct Script::Words {
    std::vector<Word> words;
    std::size_t next = 1;
    Text problem;

    bool has() const { return next < words.size(); }
    Text take(char const* what) {
        if (has()) return words[next++].text;
        if (problem.empty()) problem = Text(what) + " is missing";
        return {};
    }
    int takeNumber(char const* what) {
        Text const text = take(what);
        auto const value = Qv::IntFromWString(fromUTF8(text));
        if (!value && problem.empty()) problem = Text(what) + " is no number: \"" + text + "\"";
        return value ? *value : 0;
    }
    bool peekIs(char const* text) const { return has() && !words[next].quoted && words[next].text == text; }
};

/// A command: its arguments and its function, which gives an empty text on success.
struct Script::Command {
    char const* name;
    char const* arguments;
    Text (*run)(Script&, Words&);
};

namespace {

/// Place and size from the window's upper left corner.
Text placeInWindow(Target const& target) {
    std::optional<GlobDescription> const description = Driver::describe(target);
    if (!description) return {};
    IntBox const box = description->box;
    IntBox const window = Glob::getRootParent(target.glob())->screenBox();
    Text line = "place";
    for (int const measure : {box.x1 - window.x1, window.y2 - box.y2, box.width(), box.height()})
        line += " " + number(measure);
    return line + "\n";
}

/// Whether as much of it is to be seen as has room in what it lies in.
bool isInSight(Glob const& glob) {
    IntBox const box = glob.screenBox();
    IntBox seen = box;
    XY<int> room = box.size();
    for (Glob const* outer = glob.parent(); outer; outer = outer->parent()) {
        seen = seen.intersection(outer->screenBox());
        room = {std::min(room.x, outer->width()), std::min(room.y, outer->height())};
    }
    return glob.isShown() && seen.size() == room;
}

Text outcome(Driver const& driver, bool done) {
    if (done) return {};
    return driver.problem().empty() ? Text("it cannot be done") : driver.problem();
}

} // namespace

Script::Script(Driver& driver, Print print, std::function<LightweightString<char>()> messages)
    : driver_(driver), print_(std::move(print)), messages_(std::move(messages)) {}

Target Script::widget(Words& words) {
    Text const role = words.take("the role of a widget");
    Text const name = words.take("the name of a widget, in quotation marks,");
    if (!words.problem.empty()) return nullptr;
    Target const found = driver_.findByWord(role, fromUTF8(name));
    if (!found) words.problem = driver_.problem();
    return found;
}

/// Runs a command for a widget, which the next words name.
template <class Act>
LightweightString<char> Script::onWidget(Words& words, Act act) {
    Target const target = widget(words);
    if (!target) return words.problem;
    bool const done = act(target);
    return words.problem.empty() ? outcome(driver_, done) : words.problem;
}

/// The same with a number behind the name.
template <class Act>
LightweightString<char> Script::withAmount(Words& words, char const* what, Act act) {
    return onWidget(words, [&](Target const& target) {
        int const amount = words.takeNumber(what);
        return words.problem.empty() && act(target, amount);
    });
}

/// Runs a command for a place, as in `at X Y`.
template <class Act>
LightweightString<char> Script::atPlace(Words& words, Act act) {
    words.take("at");
    int const x = words.takeNumber("X");
    int const y = words.takeNumber("Y");
    return words.problem.empty() ? outcome(driver_, act(XY<int>(x, y))) : words.problem;
}

/// Runs a command for the open window.
template <class Act>
LightweightString<char> Script::onWindow(Words& words, Act act) {
    std::vector<Glob*> const roots = driver_.host().globManager().roots();
    if (!words.problem.empty()) return words.problem;
    return roots.empty() ? Text("no window is open") : act(*roots.front());
}

std::span<Script::Command const> Script::commands() {
    using S = Script;
    using W = Words;
    static Command const list[] = {
        {"click", "ROLE \"NAME\" | at X Y",
         [](S& s, W& w) {
             Driver& d = s.driver_;
             if (w.peekIs("at")) return s.atPlace(w, [&](XY<int> place) { return d.clickAt(place); });
             return s.onWidget(w, [&](Target const& t) { return d.click(t); });
         }},
        {"doubleclick", "ROLE \"NAME\"",
         [](S& s, W& w) { return s.onWidget(w, [&](Target const& t) { return s.driver_.doubleClick(t); }); }},
        {"press", "ROLE \"NAME\"",
         [](S& s, W& w) { return s.onWidget(w, [&](Target const& t) { return s.driver_.press(t); }); }},
        {"release", "", [](S& s, W&) { return outcome(s.driver_, s.driver_.release()); }},
        {"move", "ROLE \"NAME\" | at X Y",
         [](S& s, W& w) {
             Driver& d = s.driver_;
             if (w.peekIs("at")) return s.atPlace(w, [&](XY<int> place) { return d.moveTo(place); });
             return s.onWidget(w, [&](Target const& t) { return d.moveTo(t); });
         }},
        {"drag", "ROLE \"NAME\" DX DY",
         [](S& s, W& w) {
             return s.onWidget(w, [&](Target const& t) {
                 int const dx = w.takeNumber("DX");
                 int const dy = w.takeNumber("DY");
                 return w.problem.empty() && s.driver_.drag(t, {dx, dy});
             });
         }},
        {"wheel", "ROLE \"NAME\" NOTCHES",
         [](S& s, W& w) {
             return s.withAmount(w, "NOTCHES", [&](Target const& t, int n) { return s.driver_.wheel(t, n); });
         }},
        {"sidewheel", "ROLE \"NAME\" NOTCHES",
         [](S& s, W& w) {
             return s.withAmount(w, "NOTCHES",
                                 [&](Target const& t, int n) { return s.driver_.sideWheel(t, n); });
         }},
        {"zoom", "ROLE \"NAME\" STEPS",
         [](S& s, W& w) {
             return s.withAmount(w, "STEPS", [&](Target const& t, int n) { return s.driver_.zoom(t, n); });
         }},
        {"chord", "ROLE \"NAME\"",
         [](S& s, W& w) { return s.onWidget(w, [&](Target const& t) { return s.driver_.chord(t); }); }},
        {"activate", "ROLE \"NAME\"",
         [](S& s, W& w) {
             return s.onWidget(w, [&](Target const& t) { return s.driver_.activate(t.glob()); });
         }},
        {"type", "\"TEXT\"",
         [](S& s, W& w) {
             Text const text = w.take("the text");
             return w.problem.empty() ? outcome(s.driver_, s.driver_.type(fromUTF8(text))) : w.problem;
         }},
        {"key", "NAME, such as Shift+Tab",
         [](S& s, W& w) {
             Text const name = w.take("the name of a key");
             auto const code = keyFromString(name);
             if (!code) return w.problem.empty() ? Text("there is no key \"") + name + "\"" : w.problem;
             return outcome(s.driver_, s.driver_.key(*code));
         }},
        {"advance", "MS",
         [](S& s, W& w) {
             int const ms = w.takeNumber("MS");
             return w.problem.empty() ? outcome(s.driver_, s.driver_.advance(ms)) : w.problem;
         }},
        {"tree", "",
         [](S& s, W&) {
             s.print_(s.driver_.tree());
             return Text();
         }},
        {"messages", "",
         [](S& s, W&) {
             s.print_(s.messages_ ? s.messages_() : Text());
             return Text();
         }},
        {"shot", "FILE.png",
         [](S& s, W& w) {
             Text const path = w.take("the file");
             return s.onWindow(w, [&](Glob& root) { return s.driver_.snapshot(&root, path); });
         }},
        {"focus", "",
         [](S& s, W&) {
             s.print_(focusLine(get_kbd_focus()));
             return Text();
         }},
        {"expect", "ROLE \"NAME\"", [](S& s, W& w) { return s.widget(w) ? Text() : w.problem; }},
        {"place", "ROLE \"NAME\"",
         [](S& s, W& w) {
             return s.onWidget(w, [&](Target const& t) {
                 s.print_(placeInWindow(t));
                 return true;
             });
         }},
        {"resize", "W H",
         [](S& s, W& w) {
             int const width = w.takeNumber("W");
             int const height = w.takeNumber("H");
             return s.onWindow(w, [&](Glob& root) {
                 return outcome(s.driver_, s.driver_.resizeWindow(&root, {width, height}));
             });
         }},
        {"close", "",
         [](S& s, W& w) {
             return s.onWindow(w,
                               [&](Glob& root) { return outcome(s.driver_, s.driver_.closeWindow(&root)); });
         }},
    };
    return list;
}

LightweightString<char> Script::runLine(LightweightString<char> const& line) {
    Words words;
    if (!split(line.view(), words.words)) return "a quotation mark is left open";
    if (words.words.empty() || words.words.front().text.startsWith("#")) return {};
    Text const name = words.words.front().text;
    Text allowed;
    for (Command const& command : commands()) {
        if (name == command.name) {
            Text const problem = command.run(*this, words);
            if (problem.empty() && words.has())
                return name + " takes " + command.arguments + " and nothing behind it";
            return problem.empty() ? problem : name + " " + command.arguments + ": " + problem;
        }
        allowed += (allowed.empty() ? Text() : Text(", ")) + command.name;
    }
    return Text("there is no command \"") + name + "\"; there are " + allowed;
}

Text Script::focusLine(Glob* holder) {
    auto const description = holder ? Driver::describe(holder) : std::nullopt;
    if (!description) return "focus on nothing\n";
    return Text("focus ") + roleName(description->role) + " \"" + toUTF8(description->name) + "\" " +
           (isInSight(*holder) ? "in sight " : "out of sight ") + placeInWindow(holder);
}

LightweightString<char> Script::run(LightweightString<char> const& text) {
    std::string_view rest = text.view();
    for (int line = 1; !rest.empty(); ++line) {
        std::size_t const end = std::min(rest.find('\n'), rest.size());
        Text const problem = runLine(Text(rest.substr(0, end)));
        if (!problem.empty()) return Text("line ") + number(line) + ": " + problem;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {};
}

LightweightString<char> Script::runFile(LightweightString<char> const& path) {
    std::ifstream file(path.c_str(), std::ios::binary);
    if (!file) return Text("the script \"") + path + "\" cannot be read";
    std::ostringstream text;
    text << file.rdbuf();
    std::string const content = text.str();
    return run(Text(content.c_str(), content.size()));
}

} // namespace wainscot
