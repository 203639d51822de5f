#include "host/drawing/text_layout_p.h"

#include "host/drawing/font_p.h"
#include "host/drawing/text_boundaries_p.h"
#include "host/drawing/text_shaper_p.h"

#include <algorithm>
#include <cmath>
#include <list>
#include <string>
#include <unordered_map>

namespace wainscot {

std::size_t TextLayout::nearestStop(float x) const {
    std::size_t best = 0;
    float distance = std::abs(gaps_[0] - x);
    for (std::size_t i = 1; i < gaps_.size(); ++i) {
        float const d = std::abs(gaps_[i] - x);
        if (d >= distance || !isStop(i)) continue;
        distance = d;
        best = i;
    }
    return best;
}

std::size_t TextLayout::bytes() const {
    return sizeof *this + glyphs_.capacity() * sizeof(PlacedGlyph) + gaps_.capacity() * sizeof(float) +
           parts_.capacity() * sizeof(Part) + inside_.capacity() / 8;
}

namespace {

constexpr std::size_t cacheLimit = 4 * 1024 * 1024;
/// The rough cost of an entry in the lists and tables of the cache.
constexpr std::size_t entryOverhead = 160;

struct Key {
    std::uint32_t font;
    std::wstring_view text;
    BlockContext const* context;

    bool operator==(Key const& other) const {
        return font == other.font && text == other.text &&
               (context && other.context ? *context == *other.context : context == other.context);
    }
};

struct Entry {
    std::uint32_t font;
    std::wstring text;
    std::unique_ptr<BlockContext const> context;
    TextLayoutPtr layout;
    std::size_t bytes;

    Key key() const { return {font, text, context.get()}; }
};

std::size_t bytesOf(BlockContext const& context) {
    return sizeof context + context.stretches.size() * sizeof(BlockContext::Stretch);
}

struct KeyHash {
    std::size_t operator()(Key const& key) const {
        std::size_t const hash =
            std::hash<std::wstring_view>()(key.text) ^ (key.font * 0x9E3779B97F4A7C15ULL);
        return key.context ? hash ^ hashOf(*key.context) : hash;
    }

private:
    static std::size_t hashOf(BlockContext const& context) {
        std::size_t hash = context.script;
        for (BlockContext::Stretch const& stretch : context.stretches)
            hash = hash * 0x100000001B3ULL + stretch.length * 2 + (stretch.rightToLeft ? 1 : 0);
        return hash;
    }
};

class LayoutCache {
public:
    TextLayoutPtr get(Font const& font, std::wstring_view text, BlockContext const* context) {
        // Drawing a text asks for it several times: measured, fitted, drawn.
        bool const isLatest = !entries_.empty() && !context && !entries_.front().context &&
                              entries_.front().font == font.id() && entries_.front().text == text;
        if (isLatest) {
            ++statistics_.hits;
            return entries_.front().layout;
        }
        auto const known = index_.find({font.id(), text, context});
        if (known == index_.end()) return add(font, text, context);
        ++statistics_.hits;
        entries_.splice(entries_.begin(), entries_, known->second);
        return known->second->layout;
    }

    TextLayouts::Statistics const& statistics() const { return statistics_; }

    void clear() {
        index_.clear();
        entries_.clear();
        statistics_ = {};
    }

private:
    TextLayoutPtr add(Font const& font, std::wstring_view text, BlockContext const* context) {
        ++statistics_.misses;
        TextLayoutPtr layout = TextShaper(font, text, context).shape();
        std::size_t const bytes = layout->bytes() + (text.size() + 1) * sizeof(wchar_t) +
                                  (context ? bytesOf(*context) : 0) + entryOverhead;
        entries_.push_front({font.id(), std::wstring(text),
                             context ? std::make_unique<BlockContext>(*context) : nullptr, layout, bytes});
        index_.emplace(entries_.front().key(), entries_.begin());
        statistics_.bytes += bytes;
        trim();
        return layout;
    }

    void trim() {
        while (statistics_.bytes > cacheLimit) {
            Entry const& oldest = entries_.back();
            statistics_.bytes -= oldest.bytes;
            index_.erase(oldest.key());
            entries_.pop_back();
        }
    }

    std::list<Entry> entries_;
    std::unordered_map<Key, std::list<Entry>::iterator, KeyHash> index_;
    TextLayouts::Statistics statistics_;
};

LayoutCache& cache() {
    static auto& shared = *new LayoutCache;
    return shared;
}

} // namespace

namespace TextLayouts {

TextLayoutPtr get(Font const& font, std::wstring_view text, BlockContext const* context) {
    return cache().get(font, text, context);
}

Statistics statistics() {
    return cache().statistics();
}

void clear() {
    cache().clear();
}

} // namespace TextLayouts

std::size_t firstBlock(std::wstring_view text) {
    constexpr std::size_t longest = TextLayout::maxLength;
    if (text.size() <= longest) return text.size();
    // After a blank neither ligatures nor kerning are lost; it is looked for in the last quarter.
    for (std::size_t cut = longest; cut > longest * 3 / 4; --cut)
        if (TextBoundaries::isBlank(text[cut - 1]) && TextBoundaries::isStop(text, cut)) return cut;
    for (std::size_t cut = longest; cut > longest * 3 / 4; --cut)
        if (TextBoundaries::isStop(text, cut)) return cut;
    return longest;
}

} // namespace wainscot
