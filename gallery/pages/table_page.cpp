#include "gallery/page.h"

#include "buttons/checkbox.h"
#include "foundation/layout/box_layout.h"
#include "gallery/pages/table_sources.h"
#include "host/base/convert.h"
#include "menus/drop_down_menu_button.h"

namespace wainscot::gallery {

namespace {

using Text = LightweightString<wchar_t>;

/// A table that shows one of several sources, with the styles of its tags.
class TablePage final : public StandardPanel {
public:
    TablePage(XY<int> size, LogLine log) : StandardPanel(size), log_(std::move(log)) {
        setTabGoesOn(true);
        auto* const column = setLayout(BoxLayout::makeColumn());
        auto* const row = column->add(BoxLayout::makeRow());
        auto const choices = Qv::makePtr<DropDownMenuData>();
        for (wchar_t const* const name : {L"A million clips", L"Notes of several lines", L"200 columns",
                                          L"Nothing", L"Live meters", L"Rows that come late"})
            choices->addItem(MenuItem(name));
        source_ = row->add(std::make_unique<DropDownMenuButton>(choices));
        addTabStop(*source_);
        addChoice(*row, L"Tags on rows", TableTagFlag::useRows);
        addChoice(*row, L"Several", TableTagFlag::allowMulti);
        addChoice(*row, L"As in windows", TableTagFlag::windowsStyle);
        LayoutOptions fill;
        fill.stretch = 1;
        TableWidget::InitArgs args(400, 300);
        args.adaptor = &clips_;
        table_ = column->add(std::make_unique<TableWidget>(args), fill);
        table_->setTagFlags(TableTagFlag::useRows | TableTagFlag::allowMulti | TableTagFlag::windowsStyle);
        table_->setEmptyLabel(L"There are no clips here");
        addTabStop(*table_);
        clips_.setTable(table_);
        meters_.setTable(table_);
        late_.setTable(table_);
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        if (name == pootMsg) return StandardPanel::handleMessageEvent(name, sender);
        if (sender == source_) return show(source_->getSelectedItem()), 1;
        Text line = fromUTF8(name);
        if (sender == table_ && table_->getCurRow() >= 0)
            line += L"  row " + Qv::WStringFromInteger(table_->getCurRow() + 1) + L"  column " +
                    Qv::WStringFromInteger(table_->getCurCol() + 1) + L"  tags " +
                    Qv::WStringFromInteger(static_cast<int>(numTagged()));
        log_(line);
        return 1;
    }

private:
    void addChoice(BoxLayout& row, wchar_t const* label, unsigned int flag) {
        auto* const box = row.add(Checkbox::make(0, 0, label, true));
        box->setCallback(WidgetCallback(makeCallback<int, NotifyMsg>([this, box, flag](NotifyMsg const&) {
                                            unsigned int const flags = table_->getTagFlags();
                                            table_->setTagFlags(box->isTicked() ? flags | flag
                                                                                : flags & ~flag);
                                            return 1;
                                        }),
                                        ""));
        addTabStop(*box);
    }
    unsigned int numTagged() const {
        iTableAdaptor const* const source = table_->getDataSource();
        return source ? source->getNumTagged() : 0;
    }
    void show(int choice) {
        iTableAdaptor* const sources[] = {&clips_, &notes_, &sheet_, nullptr, &meters_, &late_};
        if (choice >= 0 && choice < static_cast<int>(std::size(sources)))
            table_->setDataSource(sources[static_cast<std::size_t>(choice)]);
    }

    LogLine log_;
    ClipBin clips_;
    NotesList notes_;
    WideSheet sheet_;
    LiveMeters meters_;
    LateClips late_;
    DropDownMenuButton* source_ = nullptr;
    TableWidget* table_ = nullptr;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<TablePage>(size, std::move(log));
}

} // namespace

extern Page const tablePage = {"table",
                               L"Tables",
                               PageGroup::controls,
                               L"A million clips, notes of several lines, 200 columns, live rows: click "
                               L"headers to sort, drag them to move, their edges to resize.",
                               "gallery/pages/table_page.cpp",
                               make};

} // namespace wainscot::gallery
