#include "host/drawing/html_renderer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace wainscot {
namespace {

enum class TagKind { paragraph, bold, italic, lineBreak, link, document };

struct Tag {
    TagKind kind;
    bool closes;
    std::wstring url;
    /// From "<" to behind ">".
    std::size_t length;
};

struct TagName {
    std::wstring_view name;
    TagKind kind;
};

constexpr std::array<TagName, 9> tagNames{{{L"p", TagKind::paragraph},
                                           {L"b", TagKind::bold},
                                           {L"strong", TagKind::bold},
                                           {L"i", TagKind::italic},
                                           {L"em", TagKind::italic},
                                           {L"br", TagKind::lineBreak},
                                           {L"a", TagKind::link},
                                           {L"html", TagKind::document},
                                           {L"body", TagKind::document}}};

constexpr std::size_t longestTag = 4096;

bool isHtmlBlank(wchar_t c) {
    return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r';
}

wchar_t lower(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

bool sameName(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(),
                                              [](wchar_t x, wchar_t y) { return lower(x) == lower(y); });
}

std::optional<TagKind> kindOf(std::wstring_view name) {
    for (TagName const& known : tagNames)
        if (sameName(known.name, name)) return known.kind;
    return std::nullopt;
}

struct Entity {
    std::wstring_view name;
    wchar_t character;
};

constexpr std::array<Entity, 6> entities{
    {{L"lt", L'<'}, {L"gt", L'>'}, {L"amp", L'&'}, {L"quot", L'"'}, {L"apos", L'\''}, {L"nbsp", L'\u00A0'}}};

/// The number of `#65` or `#x41`; 0 for anything else.
std::uint32_t numberOf(std::wstring_view name) {
    bool const hex = name.size() > 2 && lower(name[1]) == L'x';
    std::uint32_t value = 0;
    for (wchar_t const c : name.substr(hex ? 2 : 1)) {
        wchar_t const l = lower(c);
        bool const digit = l >= L'0' && l <= L'9';
        if (!digit && !(hex && l >= L'a' && l <= L'f')) return 0;
        value = value * (hex ? 16U : 10U) + static_cast<std::uint32_t>(digit ? l - L'0' : l - L'a' + 10);
        if (value > 0x10FFFF) return 0;
    }
    return value;
}

/// Reads a character reference at the front of `text`, which begins with "&". Gives its length; 0 when it is
/// not one.
std::size_t readEntity(std::wstring_view text, wchar_t& character) {
    std::size_t const end = text.substr(0, 12).find(L';');
    if (end == text.npos || end < 2) return 0;
    std::wstring_view const name = text.substr(1, end - 1);
    if (name[0] == L'#' && name.size() > 1) {
        std::uint32_t const number = numberOf(name);
        character = static_cast<wchar_t>(number);
        return number ? end + 1 : 0;
    }
    for (Entity const& entity : entities) {
        if (entity.name != name) continue;
        character = entity.character;
        return end + 1;
    }
    return 0;
}

std::wstring decoded(std::wstring_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size();) {
        wchar_t character = text[i];
        std::size_t const length = character == L'&' ? readEntity(text.substr(i), character) : 0;
        result += character;
        i += std::max<std::size_t>(1, length);
    }
    return result;
}

/// The value of the href attribute, quoted or bare.
std::wstring hrefOf(std::wstring_view attributes) {
    for (std::size_t at = 0; at + 5 <= attributes.size(); ++at) {
        bool const begins = at == 0 || isHtmlBlank(attributes[at - 1]);
        if (!begins || !sameName(attributes.substr(at, 5), L"href=")) continue;
        std::wstring_view value = attributes.substr(at + 5);
        wchar_t const quote = value.empty() ? L' ' : value[0];
        if (quote == L'"' || quote == L'\'') {
            value.remove_prefix(1);
            return decoded(value.substr(0, value.find(quote)));
        }
        return decoded(value.substr(
            0,
            static_cast<std::size_t>(std::find_if(value.begin(), value.end(), isHtmlBlank) - value.begin())));
    }
    return {};
}

/// The end of a tag; quoted values may hold ">".
std::size_t closingOf(std::wstring_view text) {
    wchar_t quote = 0;
    for (std::size_t i = 1; i < std::min(text.size(), longestTag); ++i) {
        wchar_t const c = text[i];
        if (quote) {
            if (c == quote) quote = 0;
        } else if (c == L'>') {
            return i;
        } else if (c == L'<') {
            return text.npos;
        } else if ((c == L'"' || c == L'\'') && text[i - 1] == L'=') {
            quote = c;
        }
    }
    return text.npos;
}

/// Reads a known tag at the front of `text`, which begins with "<".
std::optional<Tag> readTag(std::wstring_view text) {
    std::size_t at = 1;
    bool const closes = text.size() > 1 && text[1] == L'/';
    if (closes) ++at;
    std::size_t const nameStart = at;
    while (at < text.size() && at - nameStart < 8 && lower(text[at]) >= L'a' && lower(text[at]) <= L'z') ++at;
    std::optional<TagKind> const kind = kindOf(text.substr(nameStart, at - nameStart));
    if (!kind || at >= text.size()) return std::nullopt;
    if (text[at] != L'>' && text[at] != L'/' && !isHtmlBlank(text[at])) return std::nullopt;
    std::size_t const end = closingOf(text);
    if (end == text.npos) return std::nullopt;
    Tag tag{*kind, closes, {}, end + 1};
    if (tag.kind == TagKind::link && !closes) tag.url = hrefOf(text.substr(at, end - at));
    return tag;
}

class Parser {
public:
    explicit Parser(Palette const& palette)
        : text_(palette.text(eTextEnabled)), link_(palette.mark(eMarkAccent)) {}

    std::vector<HTMLRenderer::Paragraph> parse(std::wstring_view text) {
        for (std::size_t i = 0; i < text.size();) i += step(text.substr(i));
        endParagraph();
        return std::move(paragraphs_);
    }

private:
    std::size_t step(std::wstring_view rest) {
        if (rest[0] == L'<')
            if (std::optional<Tag> const tag = readTag(rest)) {
                apply(*tag);
                return tag->length;
            }
        wchar_t character = rest[0];
        std::size_t const length = character == L'&' ? readEntity(rest, character) : 0;
        addCharacter(character, length > 0);
        return std::max<std::size_t>(1, length);
    }

    /// Blanks of the source are one space, and none at the start of a line.
    void addCharacter(wchar_t character, bool written) {
        if (!written && isHtmlBlank(character)) {
            if (!atLineStart_ && !afterBlank_) run_ += L' ';
            afterBlank_ = true;
            return;
        }
        run_ += character;
        atLineStart_ = afterBlank_ = false;
    }

    void apply(Tag const& tag) {
        int const change = tag.closes ? -1 : 1;
        switch (tag.kind) {
        case TagKind::bold:
            endRun();
            bold_ = std::max(0, bold_ + change);
            return;
        case TagKind::italic:
            endRun();
            italic_ = std::max(0, italic_ + change);
            return;
        case TagKind::link:
            endRun();
            url_ = tag.url;
            return;
        case TagKind::paragraph:
            return endParagraph();
        case TagKind::lineBreak:
            run_ += L'\n';
            atLineStart_ = true;
            return;
        case TagKind::document:
            return;
        }
    }

    void endRun() {
        if (run_.empty()) return;
        unsigned const style = (bold_ ? Glib::eFontBold : 0U) | (italic_ ? Glib::eFontItalic : 0U);
        paragraph_.spans.push_back({LightweightString<wchar_t>(std::wstring_view(run_)), style,
                                    url_.empty() ? text_ : link_,
                                    LightweightString<wchar_t>(std::wstring_view(url_))});
        run_.clear();
    }

    void endParagraph() {
        endRun();
        atLineStart_ = true;
        afterBlank_ = false;
        if (paragraph_.spans.empty()) return;
        paragraphs_.push_back(std::move(paragraph_));
        paragraph_ = {};
    }

    Colour text_;
    Colour link_;
    std::vector<HTMLRenderer::Paragraph> paragraphs_;
    HTMLRenderer::Paragraph paragraph_;
    std::wstring run_;
    std::wstring url_;
    int bold_ = 0;
    int italic_ = 0;
    bool atLineStart_ = true;
    bool afterBlank_ = false;
};

} // namespace

bool HTMLRenderer::isHTML(LightweightString<wchar_t> const& text) {
    std::wstring_view const all = text.view();
    for (std::size_t at = all.find(L'<'); at != all.npos; at = all.find(L'<', at + 1))
        if (readTag(all.substr(at))) return true;
    return false;
}

HTMLRenderer::ParagraphsPtr HTMLRenderer::parse(LightweightString<wchar_t> const& text,
                                                Palette const& palette) {
    return std::make_shared<Paragraphs const>(Parser(palette).parse(text.view()));
}

} // namespace wainscot
