#pragma once

#include "tests/widget_fixture.h"

#include "text/multi_line_text_box.h"
#include "text/text_box.h"

#include <array>

namespace wainscot {

inline constexpr wchar_t cursorMark = L'|';
inline constexpr wchar_t anchorMark = L'^';

/// A text with marks for the cursor and, where there is one, the anchor of the selection.
struct Marked {
    explicit Marked(std::wstring marked) : text(std::move(marked)) {
        auto at = text.find(anchorMark);
        if (at != text.npos) {
            text.erase(at, 1);
            anchor = static_cast<int>(at);
        }
        cursor = static_cast<int>(text.find(cursorMark));
        text.erase(static_cast<std::size_t>(cursor), 1);
        if (anchor > cursor) --anchor;
    }
    std::wstring text;
    int cursor = 0;
    int anchor = -1;
};

/// Text boxes that tell their window of everything.
class TextBoxes : public WidgetTest {
protected:
    using Text = LightweightString<wchar_t>;

    template <class Box = TextBox>
    Box* box(Text const& text = {}, std::function<void(TextBox::InitArgs&)> const& prepare = {}) {
        TextBox::InitArgs args(200, 24, text);
        if (prepare) prepare(args);
        return heard(new Box(args));
    }
    template <class Box>
    Box* heard(Box* made) {
        for (int event = eEditStart; event <= eDoubleClick; ++event)
            made->requestCallback(names[event], root_, static_cast<eCallbackEvent>(event));
        return show(made);
    }
    /// The same with the focus, and forgets what that has told.
    template <class Box>
    Box* focused(Box* made) {
        made->claimKbdFocus();
        told();
        return made;
    }
    TextBox* at(wchar_t const* marked) {
        Marked const wanted(marked);
        TextBox* const made = focused(box(Text(wanted.text)));
        place(*made, wanted);
        return made;
    }
    static void place(TextEntry& box, Marked const& wanted) {
        box.setCursorIndex(wanted.cursor);
        if (wanted.anchor >= 0) box.setSelection({wanted.anchor, wanted.cursor});
    }
    /// With the marks. A selection whose end is not the cursor is shown behind it.
    static std::string state(TextEntry const& box) {
        std::wstring text = box.getText().c_str();
        int const start = box.getSelection().start();
        int const cursor = box.getCursorPosition();
        text.insert(static_cast<std::size_t>(cursor), 1, cursorMark);
        if (start >= 0)
            text.insert(static_cast<std::size_t>(start + (start > cursor ? 1 : 0)), 1, anchorMark);
        std::string result = toUTF8(Text(text)).c_str();
        if (start >= 0 && box.getSelection().end() != cursor)
            result += " " + std::to_string(start) + ".." + std::to_string(box.getSelection().end());
        return result;
    }

    static constexpr std::array<char const*, 5> names{"start", "end", "changed", "return", "double"};
};

} // namespace wainscot
