#include "gallery/pages/cell_panel.h"
#include "gallery/pages/tone_picture.h"
#include "text/vari_box.h"
#include "text/vari_box_parser_basic.h"

#include <vector>

namespace wainscot::gallery {

namespace {

constexpr wchar_t const* channelNames[] = {L"Red", L"Green", L"Blue", L"All"};
constexpr int boxInButtons = 3;
constexpr double minorStep = 0.005;
constexpr double majorStep = 0.05;

/// Forty value boxes that shape one picture: a row for each channel, a column for each tone.
class GradingPage : public CellPanel {
public:
    GradingPage(XY<int> size, LogLine log) : CellPanel(size, std::move(log)) {
        grid().setEqualColumns(false);
        auto const columns = static_cast<int>(TonePicture::numTones) + 1;
        picture_ = grid().add(std::make_unique<TonePicture>(), {0, 0, 1, columns});
        for (std::size_t tone = 0; tone < TonePicture::numTones; ++tone) {
            grid().setColumnStretch(static_cast<int>(tone) + 1, 1);
            put(std::make_unique<Label>(Qv::WStringFromInteger(tone * 100 / (TonePicture::numTones - 1)) +
                                            L" %",
                                        Label::Part::secondary),
                {1, static_cast<int>(tone) + 1});
        }
        for (std::size_t channel = 0; channel < TonePicture::numChannels; ++channel) addRow(channel);
        colour();
    }

    int handleMessageEvent(LightweightString<char> name, Glob* sender) override {
        auto const found = std::ranges::find(boxes_, sender);
        if (found == boxes_.end()) return CellPanel::handleMessageEvent(name, sender);
        auto const index = static_cast<std::size_t>(found - boxes_.begin());
        auto const& parser = static_cast<VariBoxParserBasic<double> const&>(*boxes_[index]->getParser());
        picture_->setOffset(index / TonePicture::numTones, index % TonePicture::numTones, parser.getValue());
        if (name == VariBox::changeCompleteMsg)
            say(fromUTF8(boxes_[index]->name()) + L"  " + boxes_[index]->getText());
        return 1;
    }
    void handleLookChange(LookChange changes) override {
        CellPanel::handleLookChange(changes);
        colour();
    }

private:
    void addRow(std::size_t channel) {
        int const row = static_cast<int>(channel) + 2;
        put(std::make_unique<Label>(UIString(channelNames[channel])), {row, 0});
        for (std::size_t tone = 0; tone < TonePicture::numTones; ++tone) {
            VariBox* const box = put(std::make_unique<VariBox>(VariBox::InitArgs(
                                         {}, toSize16(boxInButtons * UifStd::getButtonHeight()))),
                                     {row, static_cast<int>(tone) + 1});
            auto* const parser =
                new VariBoxParserBasic<double>(box, displayer_.get(), -1, 1, minorStep, majorStep, 0);
            parser->setDefaultValue(0);
            box->setParser(parser, true);
            box->setName(toUTF8(LightweightString<wchar_t>(channelNames[channel]) + L" " +
                                Qv::WStringFromInteger(tone)));
            addTabStop(*box);
            boxes_.push_back(box);
        }
    }
    void colour() {
        for (std::size_t i = 0; i < boxes_.size(); ++i)
            boxes_[i]->setThermCol(picture_->colourOf(i / TonePicture::numTones));
    }

    Qv::Ptr<VariBoxPercentDisplayer<double>> displayer_ = Qv::makePtr<VariBoxPercentDisplayer<double>>();
    TonePicture* picture_;
    std::vector<VariBox*> boxes_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<GradingPage>(size, std::move(log));
}

} // namespace

extern Page const gradingPage = {"grading",
                                 L"Grading",
                                 PageGroup::panels,
                                 L"Forty value boxes that shape the tones of one picture.",
                                 "gallery/pages/grading_page.cpp",
                                 make};

} // namespace wainscot::gallery
