#include "bench/driving.h"
#include "host/services/clipboard.h"
#include "host/windows/event_loop.h"
#include "host/windows/glob_manager.h"
#include "text/text_box.h"

/// A line of text that is typed into, with everything that follows a key; and forms of text boxes.
namespace {

using namespace wainscot;
using namespace wainscot::Measuring;
using Text = LightweightString<wchar_t>;

constexpr int repetitions = 3;
constexpr int numTyped = 200;
constexpr std::size_t longLength = 1'000'000;
constexpr XY<int> fieldSize{600, 32};

/// Small letters, a space every sixth character.
Text words(std::size_t length) {
    Text text;
    text.reserve(length);
    for (std::size_t i = 0; i < length; ++i)
        text.push_back(i % 6 == 5 ? L' ' : static_cast<wchar_t>(L'a' + i * 7 % 26));
    return text;
}

/// A window with one field.
class Field {
public:
    Field() : host_(makeHost()), ground_(new Glob(toSize16(fieldSize.x + 40), toSize16(fieldSize.y + 40))) {
        box_ = new TextBox(TextBox::InitArgs(fieldSize));
        box_->setFont({"DejaVu Sans", 12});
        ground_->addChild(static_cast<Glob*>(box_), BottomLeft(20, 20));
        host_->globManager().realize(ground_, XY<int>(0, 0));
        box_->claimKbdFocus();
        host_->loop().settle();
    }

    TextBox& box() { return *box_; }
    Host& host() { return *host_; }
    Glob* ground() { return ground_; }
    /// Milliseconds of a call with all its effects.
    template <class Act>
    double time(Act const& act) {
        double const start = now();
        act();
        host_->loop().settle();
        return now() - start;
    }
    double key(std::uint32_t code) { return timeInput(*host_, keyInput(code)); }

private:
    std::unique_ptr<Host> host_;
    Glob* ground_;
    TextBox* box_;
};

/// Milliseconds in which `numTyped` characters are taken back.
double undoAll(Field& field) {
    double time = 0;
    while (field.box().numUndoItems() > 0) time += field.key(Key::ctrl | 'Z') / 1000;
    return time;
}

void benchLine(std::size_t length) {
    Report report("W5", static_cast<long>(length));
    Text const text = words(length);
    Text const typed = words(numTyped);
    Steps keys;
    std::vector<double> setting, selecting, undoing, pasting;
    for (int r = 0; r < repetitions; ++r) {
        Field field;
        setting.push_back(field.time([&] { field.box().setText(text); }));
        field.box().setCursorIndex(static_cast<int>(length / 2));
        field.host().loop().settle();
        std::vector<double> times;
        for (int i = 0; i < numTyped; ++i) times.push_back(field.key(typed[static_cast<std::size_t>(i)]));
        keys.add(times);
        check(field.box().getText().size() == length + numTyped, "the text has another length");
        selecting.push_back(field.key(Key::ctrl | 'A') / 1000);
        check(field.box().getSelectedText().size() == length + numTyped, "not everything is selected");
        undoing.push_back(undoAll(field));
        check(field.box().getText() == text, "undo has not brought the text back");
        Text const longText = words(longLength);
        WindowsClipboard::addText(longText);
        field.box().setText(L"");
        field.host().loop().settle();
        pasting.push_back(field.key(Key::ctrl | 'V') / 1000);
        check(field.box().getText() == longText, "another text was pasted");
        if (r + 1 == repetitions) addPicture(report, field.ground());
    }
    report.addRuns("set_text_ms", setting);
    keys.addTo(report, "key_us");
    report.addRuns("select_all_ms", selecting);
    report.addRuns("undo_all_ms", undoing);
    report.addRuns("paste_1m_ms", pasting);
    report.print();
}

void benchLines() {
    for (std::size_t const length : {std::size_t(100), std::size_t(10'000), longLength}) benchLine(length);
}

/// Forms of a dozen boxes: made and painted; and what a box and a character cost in memory.
void benchForms() {
    constexpr int numBoxes = 12;
    constexpr int numMany = 10'000;
    Report report("form", numBoxes);
    std::unique_ptr<Host> const host = makeHost();
    auto const makeForm = [](int boxes) {
        auto* const ground = new Glob(400, 400);
        for (int i = 0; i < boxes; ++i)
            ground->addWidget(new TextBox(TextBox::InitArgs(200, 24, words(12))), 20, 20 + i % numBoxes * 30);
        return ground;
    };
    std::vector<double> times;
    for (int r = 0; r < 2 * repetitions; ++r) {
        double const start = now();
        Glob* const ground = makeForm(numBoxes);
        host->globManager().realize(ground, XY<int>(0, 0));
        host->loop().settle();
        times.push_back(now() - start);
        if (r == 0) addPicture(report, ground);
        delete ground;
    }
    report.addRuns("create_and_paint_ms", times);
    double const before = residentBytes();
    Glob* const many = makeForm(numMany);
    report.add("rss_bytes_per_box", (residentBytes() - before) / numMany);
    auto* const box = new TextBox(TextBox::InitArgs(200, 24));
    many->addWidget(box, 0, 0);
    Text const text = words(longLength);
    double const withoutText = residentBytes();
    box->setText(text);
    report.add("rss_bytes_per_character", (residentBytes() - withoutText) / double(longLength));
    delete many;
    report.print();
}

} // namespace

/// Without arguments all groups; else those named: W5, form.
int main(int count, char** names) {
    return runWorkloads(count, names, {{"W5", benchLines}, {"form", benchForms}});
}
