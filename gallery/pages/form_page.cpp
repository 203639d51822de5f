#include "gallery/pages/language_page.h"

#include "buttons/checkbox.h"
#include "buttons/checkbox_radio_set.h"
#include "containers/slider.h"
#include "foundation/form_layout.h"
#include "host/base/convert.h"

namespace wainscot::gallery {

namespace {

using Text = LanguageText;

constexpr Text heading{L"Film ausgeben", L"Export the film", L"ייצוא הסרט"};
constexpr Text clipName{L"Name", L"Name", L"שם"};
constexpr Text chooseName{L"Aus der Aufnahme übernehmen", L"Take from the clip", L"לפי הקליפ"};
constexpr Text resolution{L"Auflösung", L"Resolution", L"רזולוציה"};
constexpr Text frameRate{L"Bildwiederholfrequenz", L"Frame rate", L"קצב פריימים"};
constexpr Text colourSpace{L"Farbraum", L"Colour space", L"מרחב צבע"};
constexpr Text aspect{L"Seitenverhältnis", L"Aspect ratio", L"יחס רוחב לגובה"};
constexpr Text fields{L"Halbbilder", L"Fields", L"שדות"};
constexpr Text upperFirst{L"Oberes Halbbild zuerst", L"Upper field first", L"השדה העליון תחילה"};
constexpr Text quality{L"Qualität", L"Quality", L"איכות"};
constexpr Text loudness{L"Lautstärke", L"Loudness", L"עוצמת קול"};
constexpr Text channels{L"Tonkanäle", L"Audio channels", L"ערוצי שמע"};
constexpr Text channelNames[] = {
    {L"Mono", L"Mono", L"מונו"}, {L"Stereo", L"Stereo", L"סטריאו"}, {L"Mehrkanalton", L"Surround", L"היקפי"}};
constexpr Text subtitles{L"Untertitel", L"Subtitles", L"כתוביות"};
constexpr Text burnIn{L"In das Bild einbrennen", L"Burn into the picture", L"צריבה בתמונה"};
constexpr Text target{L"Zielordner", L"Target folder", L"תיקיית יעד"};
constexpr Text browse{L"Durchsuchen …", L"Browse…", L"עיון…"};
constexpr Text subfolder{L"Unterordner für jeden Film anlegen", L"A subfolder for each film",
                         L"תיקיית משנה לכל סרט"};
constexpr Text afterwards{L"Nach der Ausgabe", L"Afterwards", L"בסיום"};
constexpr Text notify{L"Benachrichtigen", L"Tell me", L"הודעה"};
constexpr Text hint{
    L"Die Ausgabe läuft im Hintergrund weiter, auch wenn das Projekt geschlossen wird. Was dabei "
    L"schiefgeht, steht danach im Protokoll.",
    L"The export goes on in the background, also when the project is closed. What goes wrong is noted in "
    L"the log.",
    L"הייצוא ממשיך ברקע גם לאחר סגירת הפרויקט. תקלות נרשמות ביומן."};
constexpr Text cancel{L"Abbrechen", L"Cancel", L"ביטול"};
constexpr Text start{L"Ausgeben", L"Export", L"ייצוא"};

/// The form in one language.
class ExportForm final : public StandardPanel {
public:
    ExportForm(Language language, LogLine log)
        : StandardPanel(InitArgs(0, 0, Border(Border::group))), language_(language), log_(std::move(log)) {
        setTabGoesOn(true);
        form_ = setLayout(std::make_unique<FormLayout>());
        form_->addHeading(heading[language_]);
        addButton(clipName, chooseName);
        addChoice(resolution, {L"HD", L"UHD", L"4K", L"8K"});
        addChoice(frameRate, {L"24", L"25", L"30", L"50", L"60"});
        addChoice(colourSpace, {L"Rec. 709", L"Rec. 2020", L"P3"});
        addChoice(aspect, {L"16:9", L"4:3", L"1:1"});
        addBox(fields, upperFirst);
        addSlider(quality, 0.8);
        addSlider(loudness, 0.5);
        addChannels();
        addBox(subtitles, burnIn);
        addTarget();
        addBox(afterwards, notify);
        addHint();
        addButtons();
    }

    int handleMessageEvent(LightweightString<char> message, Glob* sender) override {
        if (message == pootMsg) return 0;
        GlobDescription const said = sender ? GlobDescription::of(*sender) : GlobDescription();
        log_(said.name + L"  sends  " + fromUTF8(message));
        return 1;
    }

private:
    wchar_t const* in(Text const& text) const { return text[language_]; }
    template <class Control>
    Control* addField(Text const& text, std::unique_ptr<Control> control, LayoutOptions const& options = {}) {
        Control* const added = form_->addRow(in(text), std::move(control), options);
        addStop(*added);
        return added;
    }
    template <class Control>
    void addStop(Control& control) {
        if constexpr (std::derived_from<Control, TabOrderableHost>)
            addTabStopsFrom(control);
        else
            addTabStop(control);
    }
    std::unique_ptr<Button> button(Text const& text, char const* message) const {
        return std::make_unique<Button>(Button::InitArgs(in(text), message));
    }
    void addButton(Text const& text, Text const& label) {
        addField(text, button(label, "choose"), {.horizontal = LayoutAlign::start});
    }
    void addChoice(Text const& text, Vector<LightweightString<wchar_t>> const& choices) {
        addField(text, std::make_unique<RadioSet>(RadioSet::InitArgs(choices)))->setSelectedItem(0);
    }
    void addBox(Text const& text, Text const& label) {
        addField(text, std::make_unique<Checkbox>(Checkbox::InitArgs(in(label))),
                 {.horizontal = LayoutAlign::start});
    }
    void addSlider(Text const& text, double value) {
        Slider::InitArgs args(1);
        args.value = value;
        addField(text, std::make_unique<Slider>(args));
    }
    void addChannels() {
        CheckboxRadioSet::InitArgs args;
        for (Text const& channel : channelNames) args.labels.emplace_back(in(channel));
        args.columns = static_cast<unsigned char>(std::size(channelNames));
        args.selected = 1;
        addField(channels, std::make_unique<CheckboxRadioSet>(args));
    }
    void addTarget() {
        auto* const row = form_->addRow(in(target), BoxLayout::makeRow());
        addStop(*row->add(button(browse, "browse")));
        addStop(*row->add(std::make_unique<Checkbox>(Checkbox::InitArgs(in(subfolder)))));
    }
    void addHint() {
        Label::InitArgs args(in(hint), Label::Part::secondary);
        args.wraps = true;
        form_->add(std::make_unique<Label>(args), {.row = form_->nextRow(), .columns = 2});
    }
    void addButtons() {
        auto* const row = form_->add(BoxLayout::makeRow(), {.row = form_->nextRow(), .columns = 2});
        row->addStretch();
        addStop(*row->add(button(cancel, "cancel")));
        Button* const doIt = row->add(button(start, "export"));
        doIt->setDefaultAction(true);
        addStop(*doIt);
    }

    FormLayout* form_ = nullptr;
    Language language_;
    LogLine log_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<LanguagePage>(size, std::move(log), [](Language language, LogLine told) {
        return std::unique_ptr<StandardPanel>(new ExportForm(language, std::move(told)));
    });
}

} // namespace

extern Page const formPage = {"form",
                              L"Forms",
                              PageGroup::panels,
                              L"A form that grows with its texts, in three languages and two text sizes.",
                              "gallery/pages/form_page.cpp",
                              make};

} // namespace wainscot::gallery
