#include "gallery/pages/language_page.h"

#include "buttons/button.h"
#include "foundation/form_layout.h"
#include "host/base/convert.h"
#include "text/numeric_text_box.h"

#include <vector>

namespace wainscot::gallery {

namespace {

using Text = LanguageText;

constexpr Text heading{L"Angaben zum Clip", L"About the clip", L"פרטי הקליפ"};
constexpr Text title{L"Titel", L"Title", L"כותרת"};
constexpr Text titleHint{L"Muss ausgefüllt werden", L"Has to be filled in", L"שדה חובה"};
constexpr Text scene{L"Szene", L"Scene", L"סצנה"};
constexpr Text take{L"Aufnahme", L"Take", L"טייק"};
constexpr Text camera{L"Kamera", L"Camera", L"מצלמה"};
constexpr Text operated{L"Kameraführung", L"Operator", L"צלם"};
constexpr Text place{L"Drehort", L"Location", L"אתר צילום"};
constexpr Text date{L"Drehtag", L"Date", L"תאריך"};
constexpr Text start{L"Anfang", L"Start", L"התחלה"};
constexpr Text duration{L"Dauer", L"Duration", L"משך"};
constexpr Text gain{L"Pegel", L"Gain", L"עוצמה"};
constexpr Text mail{L"E-Mail für Rückfragen", L"E-mail for questions", L"דוא״ל"};
constexpr Text password{L"Kennwort des Archivs", L"Password of the archive", L"סיסמת הארכיון"};
constexpr Text keywords{L"Stichwörter", L"Keywords", L"מילות מפתח"};
constexpr Text keywordsHint{L"Durch Kommas getrennt", L"Separated by commas", L"מופרדות בפסיקים"};
constexpr Text titleMissing{L"Der Titel fehlt.", L"The title is missing.", L"הכותרת חסרה."};
constexpr Text dateWrong{L"Der Drehtag wird als Jahr-Monat-Tag eingegeben.",
                         L"The date is entered as year-month-day.", L"התאריך נכתב כשנה-חודש-יום."};
constexpr Text mailWrong{L"In der E-Mail-Adresse fehlt das @.", L"The e-mail address lacks its @.",
                         L"בכתובת הדוא״ל חסר @."};
constexpr Text reset{L"Zurücksetzen", L"Reset", L"איפוס"};
constexpr Text save{L"Speichern", L"Save", L"שמירה"};

constexpr LightweightString<wchar_t> dateShape{L"0000-00-00"};

using Value = LightweightString<wchar_t>;

bool isFilled(Value const& value) {
    return !value.isEmpty();
}

bool isDate(Value const& value) {
    if (value.size() != dateShape.size()) return false;
    for (std::size_t i = 0; i < value.size(); ++i)
        if ((value[i] == L'-') != (dateShape[i] == L'-')) return false;
    return true;
}

bool isMail(Value const& value) {
    return value.isEmpty() || value.find(L'@') != Value::npos;
}

/// A form in one language that is filled in with the keyboard alone. Return saves it, from every box. What is
/// wrong is said below a box as soon as it is left, and nothing is saved until it is right.
class EntryForm final : public StandardPanel {
public:
    EntryForm(Language language, LogLine log)
        : StandardPanel(InitArgs(0, 0, Border(Border::group))), language_(language), log_(std::move(log)) {
        setTabGoesOn(true);
        form_ = setLayout(std::make_unique<FormLayout>());
        form_->addHeading(heading[language_]);
        addBoxes();
        addButtons();
        resetAll();
    }

    int handleMessageEvent(LightweightString<char> message, Glob* sender) override {
        if (message == pootMsg) return 0;
        if (message == resetMsg) resetAll();
        if (message == saveMsg) saveAll();
        for (Field const& field : fields_)
            if (message == leftMsg && sender == field.box) check(field);
        return 1;
    }
    void handleLookChange(LookChange changes) override {
        StandardPanel::handleLookChange(changes);
        for (Field const& field : fields_) colourProblem(field);
    }

private:
    static constexpr LightweightString<char> resetMsg{"reset"};
    static constexpr LightweightString<char> saveMsg{"save"};
    static constexpr LightweightString<char> leftMsg{"left"};
    /// A box, what it has at first, and what its text must be.
    struct Field {
        TextBox* box;
        Value first;
        bool (*isRight)(Value const& value) = nullptr;
        /// Below the box, while its text is not that.
        Label* problem = nullptr;
    };

    wchar_t const* in(Text const& text) const { return text[language_]; }

    Field& addField(Text const& label, std::unique_ptr<TextBox> made, Value first) {
        TextBox* const box = form_->addRow(in(label), std::move(made));
        addTabStop(*box);
        box->requestCallback(saveMsg, this, eReturn);
        box->requestCallback(leftMsg, this, eEditEnd);
        return fields_.emplace_back(Field{box, std::move(first)});
    }
    Field& addText(Text const& label, Value first = {}, wchar_t const* hint = L"") {
        TextBox::InitArgs args(0);
        args.ghostLabel = hint;
        return addField(label, std::make_unique<TextBox>(args), std::move(first));
    }
    /// A text of digits with a character between them.
    Field& addDigits(Text const& label, wchar_t const* first, wchar_t const* characters) {
        TextBox::InitArgs args(0);
        args.characters = characters;
        args.restriction = eOnlyCharacters;
        args.sizeLimit = Value(first).size();
        return addField(label, std::make_unique<TextBox>(args), first);
    }
    template <class Number>
    void addNumber(Text const& label, wchar_t const* first, Number low, Number high, wchar_t const* unit) {
        TextBox::InitArgs args(0);
        args.suffix = unit;
        auto box = std::make_unique<NumericTextBox>(args);
        box->setValueRange(low, high);
        addField(label, std::move(box), first);
    }
    void addPassword() {
        TextBox::InitArgs args(0);
        args.obfuscated = true;
        addField(password, std::make_unique<TextBox>(args), L"");
    }
    void demand(Field& field, bool (*isRight)(Value const&), Text const& complaint) {
        field.isRight = isRight;
        field.problem =
            form_->add(std::make_unique<Label>(in(complaint)), {.row = form_->nextRow(), .column = 1});
        field.problem->setVisible(false);
        colourProblem(field);
    }
    void addBoxes() {
        demand(addText(title, L"", in(titleHint)), isFilled, titleMissing);
        addText(scene, L"12B");
        addNumber(take, L"3", 1, 999, L"");
        addText(camera, L"A");
        addText(operated);
        addText(place);
        demand(addDigits(date, L"2026-11-22", L"0123456789-"), isDate, dateWrong);
        addDigits(start, L"01:00:00:00", L"0123456789:");
        addNumber(duration, L"12.5", 0.0, 3600.0, L" s");
        addNumber(gain, L"-6", -24.0, 24.0, L" dB");
        demand(addText(mail), isMail, mailWrong);
        addPassword();
        addText(keywords, L"", in(keywordsHint));
    }
    void addButtons() {
        auto* const row = form_->add(BoxLayout::makeRow(), {.row = form_->nextRow(), .columns = 2});
        row->addStretch();
        auto const add = [&](Text const& label, LightweightString<char> const& message) {
            auto* const button = row->add(std::make_unique<Button>(Button::InitArgs(in(label), message)));
            addTabStop(*button);
            return button;
        };
        add(reset, resetMsg);
        add(save, saveMsg)->setDefaultAction(true);
    }

    /// Shows what is wrong with a field, or that nothing is any more; returns whether it is right.
    static bool check(Field const& field) {
        bool const isRight = !field.isRight || field.isRight(field.box->getText());
        if (field.problem) field.problem->setVisible(!isRight);
        return isRight;
    }
    void colourProblem(Field const& field) {
        Palette const& own = getPalette();
        if (field.problem)
            field.problem->setPalette(Palette(own.mark(eMarkWarning), own.window(eWindowNormal)));
    }

    void resetAll() {
        for (Field const& field : fields_) {
            field.box->setText(field.first);
            if (field.problem) field.problem->setVisible(false);
        }
    }
    void saveAll() {
        Field const* firstWrong = nullptr;
        for (Field const& field : fields_)
            if (!check(field) && !firstWrong) firstWrong = &field;
        if (firstWrong) {
            firstWrong->box->claimKbdFocus();
            firstWrong->box->bringIntoView();
            return;
        }
        for (Field const& field : fields_) {
            bool const isShown = !field.box->isObfuscatedDisplay();
            log_(GlobDescription::of(*field.box).name + L"  is  " +
                 (isShown ? field.box->getText() : L"***"));
        }
    }

    FormLayout* form_ = nullptr;
    std::vector<Field> fields_;
    Language language_;
    LogLine log_;
};

std::unique_ptr<Glob> make(XY<int> size, LogLine log) {
    return std::make_unique<LanguagePage>(size, std::move(log), [](Language language, LogLine told) {
        return std::unique_ptr<StandardPanel>(new EntryForm(language, std::move(told)));
    });
}

} // namespace

extern Page const entryFormPage = {
    "entry_form",
    L"Entry form",
    PageGroup::panels,
    L"A form of text boxes for the keyboard: Return saves, and what is wrong is said.",
    "gallery/pages/entry_form_page.cpp",
    make};

} // namespace wainscot::gallery
