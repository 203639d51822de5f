#include "menus/model/menu_label_p.h"

#include <algorithm>

namespace wainscot::MenuLabel {

namespace {

View withoutBlanks(View text) {
    std::size_t const first = text.find_first_not_of(L' ');
    return first == text.npos ? View() : text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

} // namespace

View shown(View label) {
    return label.substr(0, label.find(L'|'));
}

View atRight(View label) {
    std::size_t const bars = label.find(L"||");
    return bars == label.npos ? View() : label.substr(bars + 2);
}

Parts partsAtRight(View label) {
    View rest = atRight(label);
    Parts parts;
    LightweightString<wchar_t> plain;
    for (;;) {
        std::size_t const open = rest.find(L'[');
        std::size_t const close = open == rest.npos ? rest.npos : rest.find(L']', open);
        plain.append(close == rest.npos ? rest : rest.substr(0, open));
        if (close == rest.npos) break;
        parts.options.push_back(rest.substr(open + 1, close - open - 1));
        rest.remove_prefix(std::min(rest.find_first_not_of(L' ', close + 1), rest.size()));
    }
    parts.plain = LightweightString<wchar_t>(withoutBlanks(plain.view()));
    return parts;
}

} // namespace wainscot::MenuLabel
