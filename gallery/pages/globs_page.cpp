#include "foundation/label.h"
#include "foundation/layout/grid_layout.h"
#include "gallery/pages/label_page.h"

#include <stdexcept>
#include <vector>

namespace wainscot::gallery {

namespace {

constexpr int columns = 4;

/// Plain objects that can be pressed, focused with Tab, hidden, disabled and destroyed in their own handlers.
class GlobsPage final : public LabelPage {
public:
    GlobsPage(XY<int> size, LogLine log) : LabelPage(size, std::move(log)) {
        grid_ = setLayout(std::make_unique<GridLayout>());
        grid_->setEqualColumns(true);
        grid_->add(std::make_unique<Label>(L"Press them, or step with Tab and press Return or space.",
                                           Label::Part::secondary),
                   {.columns = columns});
        fill();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        // What is dragged stays where it is put.
        if (sender && sender->isMoving() && dragged_.get() != sender) {
            dragged_ = HandlerRef<Glob>(sender);
            grid_->remove(*sender);
        }
        return LabelPage::handleMessageEvent(name, sender);
    }

private:
    LabelGlob* place(LightweightString<wchar_t> const& text, std::function<void(LabelGlob&)> action) {
        auto label = std::make_unique<LabelGlob>(text);
        label->setAction(std::move(action));
        int const place = count_++;
        return grid_->add(std::move(label), {.row = 1 + place / columns, .column = place % columns});
    }

    void fill() {
        count_ = 0;
        place(L"Plain", {});
        place(L"Destroys itself", [](LabelGlob& self) { delete &self; });
        place(L"Destroys the next", [](LabelGlob& self) { destroy(self.nextSibling()); });
        place(L"Destroys the page", [](LabelGlob& self) { destroy(self.parent()); });
        place(L"Hides itself", [](LabelGlob& self) { self.setVisible(false); });
        place(L"Disables itself", [](LabelGlob& self) { self.setActive(false); });
        place(L"Throws", [](LabelGlob&) { throw std::runtime_error("thrown by a button"); });
        place(L"Moves to the top", [](LabelGlob& self) { self.moveToTop(); });
        place(L"Half transparent",
              [](LabelGlob& self) { self.setOpacity(self.opacity() < 1.0 ? 1.0 : 0.5); });
        place(L"Drag me", {})->setMovable(true);
        place(L"Bring all back", [this](LabelGlob&) { bringBack(); });
        place(L"Destroys the window", [](LabelGlob& self) { destroy(getRootParent(&self)); });
    }

    void bringBack() {
        std::vector<Glob*> children;
        getChildren(children);
        for (Glob* const child : children)
            if (dynamic_cast<LabelGlob*>(child)) delete child;
        fill();
        claimKbdFocus();
    }

    GridLayout* grid_;
    /// No item of the grid any more.
    HandlerRef<Glob> dragged_;
    int count_ = 0;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<GlobsPage>(size, std::move(log));
}

} // namespace

extern Page const globsPage = {"globs",
                               L"Globs",
                               PageGroup::testBench,
                               L"Objects that destroy themselves, their page, or throw in their handlers.",
                               "gallery/pages/globs_page.cpp",
                               make};

} // namespace wainscot::gallery
