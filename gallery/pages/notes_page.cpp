#include "gallery/pages/box_page.h"
#include "gallery/pages/watched_lines.h"

#include "buttons/checkbox.h"
#include "foundation/layout/box_layout.h"
#include "text/scrollable_text_box_base.h"

namespace wainscot::gallery {

namespace {

constexpr wchar_t notes[] =
    L"Scene 12, the harbour\n"
    L"\n"
    L"The wide shot from the mole comes first and stays until the ferry has left the frame. Cut on the horn, "
    L"not on the picture: the sound of take 4 is the only one without the generator, so it runs under all of "
    L"the scene and the other takes are laid over it without their tracks.\n"
    L"\n"
    L"- 12A take 4: sound throughout\n"
    L"- 12B take 2: her hands, from \"never again\" on\n"
    L"- 12C take 7: the gull flies through; keep it, it is the best thing in the reel\n"
    L"\n"
    L"To be graded warmer than scene 11, but not as warm as the flashback. Ask for the still that was pinned "
    L"to "
    L"the wall; nobody has seen it since the move.";

constexpr wchar_t licence[] =
    L"This text can be read, selected and copied, but not changed. It is wrapped to the width that there is "
    L"and "
    L"scrolls where it does not fit.\n\n"
    L"Keys: the arrows, Page Up and Page Down, Home and End, with Ctrl the beginning and the end of it all. "
    L"With "
    L"Shift they select. Ctrl+A selects everything, Ctrl+C copies.\n\n"
    L"Pointer: a drag selects, a second click a word, a third a line. The wheel scrolls.";

/// Notes to be edited, and a text to be read.
class NotesPage final : public BoxPage {
public:
    NotesPage(XY<int> size, LogLine log) : BoxPage(size, std::move(log)) {
        auto* const column = setLayout(BoxLayout::makeColumn());
        auto* const options = column->add(BoxLayout::makeRow());
        wraps_ = options->add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Wrap lines", true)));
        isEditable_ = options->add(std::make_unique<Checkbox>(Checkbox::InitArgs(L"Can be edited", true)));
        options->addStretch();
        place_ = options->add(std::make_unique<Label>(L"Line 1 of 10, column 1", Label::Part::secondary));
        auto* const row = column->add(BoxLayout::makeRow(), {.stretch = 1});
        MultiLineTextBox::InitArgs args(0, 0, notes);
        args.ghostLabel = L"Notes on the scene";
        box_ = row->add(std::make_unique<WatchedLines>(
                            args, [this](WatchedLines const& box) { place_->setString(box.place()); }),
                        {.stretch = 2});
        box_->setName("Notes");
        auto* const viewer =
            row->add(std::make_unique<TextViewer>(MultiLineTextBox::InitArgs(0, 0, licence)), {.stretch = 1});
        addTabStop(*wraps_);
        addTabStop(*isEditable_);
        hear(*box_);
        hear(*viewer->getTextBox());
        viewer->getTextBox()->setName("How to use it");
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (sender == wraps_) box_->setWrap(wraps_->isTicked());
        if (sender == isEditable_) box_->setEditable(isEditable_->isTicked());
        return BoxPage::handleMessageEvent(name, sender);
    }

private:
    Checkbox* wraps_;
    Checkbox* isEditable_;
    Label* place_;
    WatchedLines* box_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<NotesPage>(size, std::move(log));
}

} // namespace

extern Page const notesPage = {"notes",
                               L"Notes",
                               PageGroup::controls,
                               L"Lines of text to be edited, wrapped or not, and a text to be read.",
                               "gallery/pages/notes_page.cpp",
                               make};

} // namespace wainscot::gallery
