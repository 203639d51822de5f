#pragma once

#include "containers/tabbed_dialogue.h"

namespace wainscot {

/// A tabbed dialogue that builds each page the first time it is shown, by the hook `buildPage`.
class WAINSCOT_API LazyTabbedDialogue : public TabbedDialogue {
public:
    static constexpr LightweightString<char> tabChangedMsg{"TabChanged"};
    static constexpr MessageInfo messageTable[] = {
        {"TabChanged", MessageInfo::fixed, tabChangedMsg.view(), MessageInfo::called, 0,
         "another page is shown, and has been built"},
    };

    /// The page with that name is selected when its tabs are there, unless something is selected then.
    explicit LazyTabbedDialogue(InitArgs const& args, UIString startPage = {});
    LazyTabbedDialogue(unsigned short width, unsigned short height, bool opaque = true,
                       Canvas* canvas = nullptr, UIString startPage = {});
    ~LazyTabbedDialogue() override;

    /// Whether that page has been built.
    bool pageBuilt(UIString const& name) const;
    /// Selects that page, where there is one.
    void setStartPage(UIString const& name);
    void redrawCurrentPage();

    using TabbedDialogue::selectPage;
    /// Sends `tabChangedMsg` at last, with `notify`.
    bool selectPage(unsigned short index, bool redraw = true, bool notify = true) override;
    int handleMessageEvent(LightweightString<char> message, Glob* sender) override;
    Tab* addTab(UIString const& name, eTabWidget widget = eTabPlain) override;

protected:
    /// Fills a page; does nothing here. It may attach it as well, and destroy everything.
    virtual void buildPage(LightweightString<wchar_t> const& pageID);
    /// Gives a page that is no `StandardPanel` its place and size. Does what the base does here.
    virtual void reshapePage(Glob& page);
    void placePage(Glob& page) override;

private:
    UIString startPage_;
};

} // namespace wainscot
