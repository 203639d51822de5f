#include "gallery/pages/cell_panel.h"

#include "foundation/val_server.h"
#include "foundation/val_server_adaptor.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

constexpr int numBound = 4;
constexpr std::size_t longest = 8;

/// Lets no label grow beyond a length, and takes none that is empty.
class LengthGuard final : public iValGuard<Text>, public Qv::InternalRefCount {
public:
    bool requestValChange(ValServer<Text>*, Text& value) override {
        if (value.size() > longest) value = value.substr(0, longest);
        return !value.isEmpty();
    }
};

/// Several buttons whose label is one value, and buttons that change it.
class BindingPanel final : public CellPanel {
public:
    BindingPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)), label_(Text(L"Take 1")) {
        label_.setGuard(Qv::makePtr<LengthGuard>());
        addNote(L"The labels of these buttons are one value:", 0, 0, numBound);
        for (int i = 0; i < numBound; ++i) {
            Button* const bound = addButton(newButton(L"", "bound"), i, 1);
            bound->setDataAdaptor(Qv::makePtr<ValServerAdaptor<Text>>(label_));
            bound->getDataAdaptor()->forceWidgetUpdate(eRedrawNo);
        }
        addNote(L"These change it. A guard cuts what is too long and refuses an empty label.", 0, 2,
                numBound);
        addButton(newButton(L"Count on", "count"), 0, 3);
        addButton(newButton(L"Far too long", "long"), 1, 3);
        addButton(newButton(L"Empty", "empty"), 2, 3);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == LightweightString<char>("count")) set(L"Take " + Qv::WStringFromInteger(++takes_));
        if (name == LightweightString<char>("long")) set(L"A label without end");
        if (name == LightweightString<char>("empty")) set(L"");
        return CellPanel::handleMessageEvent(name, sender);
    }

private:
    static std::unique_ptr<Button> newButton(wchar_t const* label, LightweightString<char> message) {
        return std::make_unique<Button>(Button::InitArgs(label, std::move(message)));
    }
    void set(Text const& label) {
        bool const taken = label_.updateAndNotify(label);
        say(taken ? Text(L"the value is  ") + label_.value() : Text(L"refused by the guard"));
    }

    ValServer<Text> label_;
    int takes_ = 1;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<BindingPanel>(size, std::move(log));
}

} // namespace

extern Page const bindingPage = {"binding",
                                 L"Value binding",
                                 PageGroup::controls,
                                 L"Widgets that show and edit one value; what one changes, the others show.",
                                 "gallery/pages/binding_page.cpp",
                                 make};

} // namespace wainscot::gallery
