#include "gallery/pages/cell_panel.h"

#include "foundation/tab_order_geometry.h"

namespace wainscot::gallery {

namespace {

constexpr int columns = 5;
constexpr int rows = 4;
/// Steps through the cells in an order that nobody would expect; no divisor of their number.
constexpr int stride = 7;

/// Buttons that show their place in the tab order, which is not that of the screen at first.
class TabOrderPanel final : public CellPanel {
public:
    TabOrderPanel(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        addNote(
            L"Tab and Shift+Tab follow the numbers. A click puts a stop first; the lower row changes all.", 0,
            0, allColumns);
        for (int i = 0; i < columns * rows; ++i) {
            int const cell = i * stride % (columns * rows);
            stops_.push_back(addButton(newButton(L"", "first"), cell % columns, 1 + cell / columns));
        }
        addCommand(L"By the screen", "screen", 0);
        addCommand(L"Every second one", "second", 1);
        addCommand(L"All of them", "all", 2);
        showOrders();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return 0;
        if (name == LightweightString<char>("screen")) TabOrderGeometry::arrange(*this);
        if (name == LightweightString<char>("second")) enableEvery(2);
        if (name == LightweightString<char>("all")) enableEvery(1);
        auto const* const button = dynamic_cast<Button*>(sender);
        if (name == LightweightString<char>("first") && button) setTabOrder(*button, 0);
        showOrders();
        return CellPanel::handleMessageEvent(name, sender);
    }

private:
    static std::unique_ptr<Button> newButton(wchar_t const* label, LightweightString<char> message) {
        return std::make_unique<Button>(Button::InitArgs(label, std::move(message)));
    }
    void addCommand(wchar_t const* label, LightweightString<char> message, int column) {
        addButton(newButton(label, std::move(message)), column, rows + 2);
    }
    void enableEvery(std::size_t nth) {
        for (std::size_t i = 0; i < stops_.size(); ++i) setTabStopEnabled(*stops_[i], i % nth == 0);
    }
    void showOrders() {
        for (Button* stop : stops_) {
            unsigned int const order = getTabStopTabOrder(getTabStopIndex(*stop));
            LightweightString<wchar_t> label = Qv::WStringFromInteger(static_cast<int>(order));
            if (!getTabStopEnabled(*stop)) label = label + L" (off)";
            stop->setString(UIString(label));
        }
    }

    std::vector<Button*> stops_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TabOrderPanel>(size, std::move(log));
}

} // namespace

extern Page const tabOrderPage = {"taborder",
                                  L"Tab order",
                                  PageGroup::panels,
                                  L"Tab stops whose order is changed while it is used.",
                                  "gallery/pages/tab_order_page.cpp",
                                  make};

} // namespace wainscot::gallery
