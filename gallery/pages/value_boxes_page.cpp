#include "foundation/val_server_adaptor.h"
#include "gallery/pages/cell_panel.h"
#include "text/titled_vari_box.h"
#include "text/vari_box_parser_basic.h"
#include "text/vari_box_parser_log.h"

#include <vector>

namespace wainscot::gallery {

namespace {

/// Data with several values.
class MixedData final : public ValAdaptorBase<double> {
public:
    double getDataValue() const override { return 0; }
    bool requestSetNewDataValue(double const&, DataChangeType) override { return isMixed_ = false, true; }
    bool isMixed() const override { return isMixed_; }

private:
    bool isMixed_ = true;
};

/// Value boxes of every type and scale.
class ValueBoxesPage : public CellPanel {
public:
    ValueBoxesPage(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        grid().setEqualColumns(false);
        addNumbers();
        addDisplayers();
        addScales();
        addStates();
        say(L"drag, turn the wheel, or type");
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto* const box = dynamic_cast<VariBox*>(sender);
        if (!box) return CellPanel::handleMessageEvent(name, sender);
        say(GlobDescription::of(*box).name + L"  " + fromUTF8(name) + L"  " + box->getText());
        return 1;
    }

private:
    VariBox* addBox(wchar_t const* label, VariBoxParserBase* parser, int column, int row) {
        unsigned short const button = UifStd::getButtonHeight();
        TitledVariBox::InitArgs args(label, {}, toSize16(9 * button));
        args.titleWidth = 4 * button;
        TitledVariBox* const added = put(std::make_unique<TitledVariBox>(args), {row, column});
        added->setParser(parser, true);
        VariBox* const box = added->getVariBox();
        box->setName(toUTF8(label));
        addTabStop(*box);
        return box;
    }
    template <class T>
    static VariBoxParserBasic<T>* basic(T low, T high, T minor, T major, T value,
                                        VariBoxParserBasicDisplayerBase<T> const* displayer = nullptr,
                                        T scale = 0) {
        auto* const parser =
            new VariBoxParserBasic<T>(nullptr, displayer, low, high, minor, major, value, scale);
        parser->setDefaultValue(value);
        return parser;
    }
    void addNumbers() {
        addNote(L"Types", 0, 0);
        addBox(L"int", basic<int>(-100, 100, 1, 10, 25), 0, 1);
        addBox(L"unsigned", basic<unsigned int>(0, 255, 1, 16, 128), 0, 2);
        addBox(L"float", basic<float>(0, 1, 0.01F, 0.1F, 0.25F), 0, 3);
        addBox(L"double", basic<double>(-1, 1, 0.01, 0.1, 0.5), 0, 4);
        addBox(L"scale of 10", basic<int>(0, 100, 1, 10, 5, nullptr, 10), 0, 5);
    }
    void addDisplayers() {
        addNote(L"Displayers", 1, 0);
        addBox(L"percent", basic<double>(0, 1, 0.01, 0.1, 0.42, new VariBoxPercentDisplayer<double>), 1, 1);
        addBox(L"decibel", basic<double>(0, 2, 0.01, 0.1, 1, new VariBoxDecibelDisplayer<double>), 1, 2);
        addBox(L"timecode", basic<int>(0, 90000, 1, 25, 1510, new VariBoxTimecodeDisplayer<int>(25)), 1, 3);
        addBox(L"drop frame", basic<int>(0, 107892, 1, 30, 1800, new VariBoxTimecodeDisplayer<int>(30, true)),
               1, 4);
        auto const* const seconds = new VariBoxUnitDisplayer<double>(L"s", {{L"ms", 0.001}, {L"min", 60}});
        addBox(L"sums and units", basic<double>(0, 120, 0.1, 1, 30, seconds), 1, 5);
    }
    /// Steps of a tenth of the range on either scale.
    void addScales() {
        addNote(L"Linear, and the same range logarithmic", 0, 6, 2);
        int row = 7;
        for (double const value : {20.0, 1000.0, 20000.0}) {
            addBox(L"Hz, linear", basic<double>(20, 20000, 199.8, 1998, value), 0, row);
            VariBox* const box = addBox(L"Hz, logarithmic",
                                        new VariBoxParserLog<double>(nullptr, 20, 20000, 0.01, 0.1, value, 0,
                                                                     0, std::ios_base::fixed, 1),
                                        1, row++);
            box->getParser()->setAllowedCharacters("0123456789.");
        }
        addBox(
            L"hexadecimal",
            new VariBoxParserLog<unsigned int>(nullptr, 0, 0xFFFF, 0.01, 0.1, 0xFF, 0, 4, std::ios_base::hex),
            1, row);
        addBox(L"whole numbers", new VariBoxParserLog<int>(nullptr, 0, 1000, 0.01, 0.1, 240, 0, 0), 0, row);
    }
    void addStates() {
        addNote(L"States", 0, 12);
        addBox(L"disabled", basic<double>(0, 1, 0.01, 0.1, 0.6), 0, 13)->setActive(false);
        auto* const mixed = basic<double>(0, 1, 0.01, 0.1, 0.5);
        addBox(L"several values", mixed, 0, 14);
        mixed->bindTo(Qv::makePtr<MixedData>());
        VariBox* const coloured = addBox(L"colours", basic<double>(0, 1, 0.01, 0.1, 0.7), 1, 13);
        coloured->setThermCol(getPalette().mark(eMarkWarning));
        addBox(L"bound twice", bound(), 1, 14);
        addBox(L"to one value", bound(), 1, 15);
    }
    VariBoxParserBase* bound() {
        auto* const parser = basic<double>(0, 1, 0.01, 0.1, 0);
        bindToServer<double>(*parser, shared_);
        return parser;
    }

    ValServer<double> shared_{0.3};
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<ValueBoxesPage>(size, std::move(log));
}

} // namespace

extern Page const valueBoxesPage = {"value_boxes",
                                    L"Value boxes",
                                    PageGroup::controls,
                                    L"Numbers that are dragged, turned with the wheel, stepped and typed.",
                                    "gallery/pages/value_boxes_page.cpp",
                                    make};

} // namespace wainscot::gallery
