#include "gallery/page.h"

#include "buttons/checkbox.h"
#include "foundation/layout/box_layout.h"
#include "gallery/pages/tree_sources.h"
#include "host/base/convert.h"
#include "menus/drop_down_menu_button.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

/// A tree that shows one of several sources.
class TreePage final : public StandardPanel {
public:
    TreePage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        setTabGoesOn(true);
        auto* const column = setLayout(BoxLayout::makeColumn());
        auto* const row = column->add(BoxLayout::makeRow());
        auto const choices = Qv::makePtr<DropDownMenuData>();
        for (wchar_t const* const name :
             {L"Project bin", L"Folders of this machine", L"1,000 branches of 1,000", L"Changes by itself"})
            choices->addItem(MenuItem(name));
        source_ = row->add(std::make_unique<DropDownMenuButton>(choices));
        addTabStop(*source_);
        auto* const siblings = row->add(Checkbox::make(0, 0, L"Pick only in one branch", false));
        siblings->setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([this, siblings](NotifyMsg const&) {
                                                 unsigned int const only =
                                                     siblings->isTicked() ? TreeView::tagsSiblingsOnly : 0U;
                                                 tree_->setOptions(TreeView::allowsTags | only);
                                                 return 1;
                                             }),
                                             ""));
        addTabStop(*siblings);
        LayoutOptions fill;
        fill.stretch = 1;
        TreeView::InitArgs args(300, 300);
        args.adaptor = &bin_;
        args.options = TreeView::allowsTags;
        tree_ = column->add(std::make_unique<TreeView>(args), fill);
        addTabStop(*tree_);
        bin_.setTree(tree_);
        folders_.setTree(tree_);
        restless_.setTree(tree_);
        tree_->expand(bin_.listChildren(nullptr).items[0].name);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        if (sender == source_) return show(source_->getSelectedItem()), 1;
        Text line = fromUTF8(name);
        if (sender == tree_) {
            auto const selected = tree_->getSelectedItem();
            auto const item = selected ? tree_->findItemByName(*selected) : std::nullopt;
            if (item && tree_->getAdaptor()) line += L"  " + tree_->getAdaptor()->getDisplayText(item->item);
            line += L"  tags " + Qv::WStringFromInteger(static_cast<int>(tree_->getNumTagged()));
        }
        log_(line);
        return 1;
    }

private:
    void show(int choice) {
        iTreeViewAdaptor* const sources[] = {&bin_, &folders_, &leaves_, &restless_};
        if (choice >= 0 && choice < static_cast<int>(std::size(sources)))
            tree_->setAdaptor(sources[static_cast<std::size_t>(choice)]);
    }

    LogLine log_;
    ProjectBin bin_;
    FolderTree folders_;
    ManyLeaves leaves_;
    RestlessTree restless_;
    DropDownMenuButton* source_ = nullptr;
    TreeView* tree_ = nullptr;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TreePage>(size, std::move(log));
}

} // namespace

extern Page const treePage = {"tree",
                              L"Trees",
                              PageGroup::controls,
                              L"A project bin, the folders of this machine, a million leaves: open branches, "
                              L"pick items, rename them with F2, drag them.",
                              "gallery/pages/tree_page.cpp",
                              make};

} // namespace wainscot::gallery
