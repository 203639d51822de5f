#include "foundation/layout/box_layout.h"
#include "foundation/standard_panel.h"
#include "gallery/page.h"
#include "gallery/pages/input_page_parts.h"

#include "host/base/convert.h"
#include "host/events/event.h"
#include "host/events/key_names.h"
#include "host/events/messages.h"
#include "host/messages/notify_msg.h"

#include <cstdio>
#include <deque>

namespace wainscot::gallery {

namespace {

constexpr std::size_t linesKept = 18;

/// Shows every key and text that it hears; Tab goes on.
class KeyReadOut final : public ReadOut {
public:
    explicit KeyReadOut(LogLine log)
        : ReadOut(L"Press keys here; compose text with an input method"), log_(std::move(log)) {}

    bool react(Event const& event) override {
        if (mouse_down_event(event)) return claimKbdFocus();
        bool const isKey = isKeyPressEvent(event) || isKeyReleaseEvent(event);
        if (!isKey || Key::base(event.keyCode()) == Key::tab) return ReadOut::react(event);
        add(nameOf(event));
        return true;
    }

    int handleDataMessageEvent(LightweightString<char> name, Glob*, Qv::Ptr<iObject> data) override {
        auto const* const text = unwrapData<LightweightString<wchar_t>>(data);
        if (name != compoundTextInputMsg || !text) return 0;
        add(LightweightString<wchar_t>(L"text        ") + *text);
        return 1;
    }

    bool repeatsReturnAndSpace() const override { return true; }
    std::optional<IntBox> textCaret() const override {
        int const margin = UifStd::getIndentWidth();
        return IntBox(margin, margin, margin + 1, margin + UifStd::getButtonHeight());
    }
    MouseCursorID contextCursor(XY<int> const&) const override { return textCursor; }
    void handleKbdFocus() override { makeDirty(); }

private:
    static LightweightString<wchar_t> nameOf(Event const& event) {
        char code[32];
        std::snprintf(code, sizeof code, "%08x  ", event.keyCode());
        LightweightString<wchar_t> line = isKeyPressEvent(event) ? L"press    " : L"release  ";
        line = line + fromUTF8(code) + fromUTF8(keyToString(event.keyCode()));
        return event.isRepeat() ? line + L"  (held)" : line;
    }

    void add(LightweightString<wchar_t> const& line) {
        log_(line);
        lines_.push_back(line);
        if (lines_.size() > linesKept) lines_.pop_front();
        LightweightString<wchar_t> all;
        for (auto const& kept : lines_) all = all + kept + L"\n";
        setText(all);
    }

    LogLine log_;
    std::deque<LightweightString<wchar_t>> lines_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    auto page = std::make_unique<StandardPanel>(size);
    auto layout = BoxLayout::makeColumn();
    KeyReadOut* const read = layout->add(std::make_unique<KeyReadOut>(std::move(log)), {.stretch = 1});
    read->setName("keys");
    page->setLayout(std::move(layout));
    return page;
}

} // namespace

extern Page const keysPage = {"keys",
                              L"Keys",
                              PageGroup::testBench,
                              L"What the keyboard sends: codes, characters, repeats.",
                              "gallery/pages/keys_page.cpp",
                              make};

} // namespace wainscot::gallery
