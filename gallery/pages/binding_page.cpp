#include "gallery/pages/cell_panel.h"

#include "foundation/val_server.h"
#include "foundation/val_server_adaptor.h"

namespace wainscot::gallery {

namespace {

using Label = LightweightString<wchar_t>;

constexpr int numBound = 4;
constexpr std::size_t longest = 8;

/// Lets no label grow beyond a length, and takes none that is empty.
class LengthGuard final : public iValGuard<Label>, public Qv::InternalRefCount {
public:
    bool requestValChange(ValServer<Label>*, Label& value) override {
        if (value.size() > longest) value = value.substr(0, longest);
        return !value.isEmpty();
    }
};

/// Several buttons whose label is one value, and buttons that change it.
class BindingPanel final : public CellPanel {
public:
    BindingPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)), label_(Label(L"Take 1")) {
        label_.setGuard(Qv::makePtr<LengthGuard>());
        addNote(L"The labels of these buttons are one value:", 0, 0);
        for (int i = 0; i < numBound; ++i) {
            Button* const bound = addButton(make(L"", "bound"), i, 1);
            bound->setDataAdaptor(Qv::makePtr<ValServerAdaptor<Label>>(label_));
            bound->getDataAdaptor()->forceWidgetUpdate(eRedrawNo);
        }
        addNote(L"These change it. A guard cuts what is too long and refuses an empty label.", 0, 2);
        addButton(make(L"Count on", "count"), 0, 3);
        addButton(make(L"Far too long", "long"), 1, 3);
        addButton(make(L"Empty", "empty"), 2, 3);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == LightweightString<char>("count")) set(L"Take " + Qv::WStringFromInteger(++takes_));
        if (name == LightweightString<char>("long")) set(L"A label without end");
        if (name == LightweightString<char>("empty")) set(L"");
        return CellPanel::handleMessageEvent(name, sender);
    }

private:
    static std::unique_ptr<Button> make(wchar_t const* label, LightweightString<char> message) {
        return std::make_unique<Button>(Button::InitArgs(label, std::move(message), buttonSize()));
    }
    void set(Label const& label) {
        bool const taken = label_.updateAndNotify(label);
        say(taken ? Label(L"the value is  ") + label_.value() : Label(L"refused by the guard"));
    }

    ValServer<Label> label_;
    int takes_ = 1;
};

} // namespace

std::unique_ptr<Glob> makeBindingPage(XY<int> size, LogLine log) {
    return std::make_unique<BindingPanel>(size, std::move(log));
}

} // namespace wainscot::gallery
