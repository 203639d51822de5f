// A window with two text boxes, one below the other, for the window tests. Commands come on standard input,
// one a line:
//   state 1        prints whether the caret of that box can be seen, and its text with marks for the cursor
//   (|)
//                  and the other end of the selection (^)
//   text 1 WORDS   gives it a text

#include "foundation/standard_panel.h"
#include "host/base/convert.h"
#include "host/events/ui_thread_callback.h"
#include "host/objects/kbd_focus.h"
#include "host/services/preferences.h"
#include "host/start/host.h"
#include "host/windows/glob_manager.h"
#include "text/multi_line_text_box.h"
#include "text/text_box.h"

#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>

namespace {

using namespace wainscot;

/// With its marks; a long text only by its length.
LightweightString<wchar_t> shown(TextEntry const& box) {
    LightweightString<wchar_t> const text = box.getText();
    constexpr std::size_t longText = 200;
    if (text.size() > longText) return Qv::WStringFromInteger(text.size());
    int const cursor = box.getCursorPosition();
    int const anchor = box.getSelection().start();
    LightweightString<wchar_t> marked;
    for (int i = 0; i <= static_cast<int>(text.size()); ++i) {
        if (i == anchor) marked += L'^';
        if (i == cursor) marked += L'|';
        if (i == static_cast<int>(text.size())) break;
        wchar_t const c = text[static_cast<std::size_t>(i)];
        marked += c == L'\n' ? L'/' : c;
    }
    return marked;
}

class TextPanel final : public StandardPanel {
public:
    TextPanel() : StandardPanel(InitArgs(400, 220)) {
        boxes_[0] = new TextBox(TextBox::InitArgs(200, 24));
        boxes_[1] = new TextBox(TextBox::InitArgs(200, 24));
        boxes_[2] = new MultiLineTextBox(MultiLineTextBox::InitArgs(200, 100));
        for (int i = 0; i < 3; ++i) {
            addTabStop(*boxes_[i]);
            addChild(std::unique_ptr<Glob>(boxes_[i]), {CoordinateOrigin::topLeft, {20, 20 + 40 * i}});
        }
    }

    void run(std::string const& line) {
        std::istringstream words(line);
        std::string name, text;
        std::size_t index = 0;
        words >> name >> index;
        std::getline(words >> std::ws, text);
        TextEntry& box = *boxes_[index % 3];
        if (name == "text") box.setText(fromUTF8(LightweightString<char>(text)));
        if (name != "state") return;
        bool const hasCaret = box.getCaret() && glib_showsKbdFocus(&box);
        std::printf("%s %s\n", hasCaret ? "caret" : "without", toUTF8(shown(box)).c_str());
        std::fflush(stdout);
    }

private:
    TextEntry* boxes_[3];
};

} // namespace

int main(int count, char** words) {
    HostSettings settings;
    settings.name = "text-probe";
    Host host(count, words, settings);
    // Beside a window manager clicks come slowly.
    prefs().setPreference("double_click_ms", 15'000);
    auto* const panel = new TextPanel;
    if (!GlobManager::instance().realize(panel)) return 1;
    GlobManager::instance().setWindowTitle(*panel, L"text probe");
    auto const commands = std::make_shared<UIThreadCallback<std::string>>(
        makeCallback<int, std::string>([panel](std::string const& line) { return panel->run(line), 1; }),
        panel);
    // It may still wait for a line when the program ends.
    std::thread([commands] {
        for (std::string line; std::getline(std::cin, line);) commands->call(line);
    }).detach();
    return host.run();
}
