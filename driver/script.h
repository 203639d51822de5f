#pragma once

#include "driver/driver.h"

#include <functional>
#include <span>

namespace wainscot {

/// Runs a text file of what a person would do, one command a line; blank lines and lines that begin with "#"
/// are skipped. A widget is named by its role and, in quotation marks, its label: `click button "Apply"`. So
/// is an item in sight: `click row "Take 3"`.
///
///     click ROLE "NAME"           click at X Y            doubleclick ROLE "NAME"
///     press ROLE "NAME"           release                 move ROLE "NAME"     move at X Y
///     drag ROLE "NAME" DX DY      wheel ROLE "NAME" N     type "TEXT"          key Shift+Tab
///     advance MS                  tree                    messages             shot FILE.png
///     chord ROLE "NAME"           sidewheel ROLE "NAME" N zoom ROLE "NAME" N
///     expect ROLE "NAME"          resize W H              close                activate ROLE "NAME"
///     place ROLE "NAME"           focus
///
/// `place` prints where a widget lies from the upper left corner of its window, and how large it is; `focus`
/// prints what has the keyboard focus, whether it is in sight as far as it fits, and its place.
class WAINSCOT_API Script {
public:
    using Print = std::function<void(LightweightString<char> const&)>;

    /// `print` gets the output of commands; `messages` gives the program's log for the command `messages`.
    Script(Driver& driver, Print print, std::function<LightweightString<char>()> messages);

    /// Runs the lines until one fails. Empty when all went well, else "line N: what is wrong and what is
    /// allowed".
    LightweightString<char> run(LightweightString<char> const& text);
    /// The same from a file.
    LightweightString<char> runFile(LightweightString<char> const& path);

    /// What `focus` prints for the holder of the keyboard focus; null when nothing has it.
    static LightweightString<char> focusLine(Glob* holder);

private:
    struct Words;
    struct Command;
    static std::span<Command const> commands();

    LightweightString<char> runLine(LightweightString<char> const& line);
    Driver::Target widget(Words& words);
    template <class Act>
    LightweightString<char> onWidget(Words& words, Act act);
    template <class Act>
    LightweightString<char> withAmount(Words& words, char const* what, Act act);
    template <class Act>
    LightweightString<char> atPlace(Words& words, Act act);
    template <class Act>
    LightweightString<char> onWindow(Words& words, Act act);

    Driver& driver_;
    Print print_;
    std::function<LightweightString<char>()> messages_;
};

} // namespace wainscot
