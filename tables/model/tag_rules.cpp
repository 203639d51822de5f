#include "tables/model/tag_rules.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace wainscot::TagRules {

namespace {

/// Appends to a map in the order of the rows.
class TagList {
public:
    explicit TagList(GetTag const& getTag, FindTagged const& findTagged = {})
        : getTag_(getTag), findTagged_(findTagged) {}

    void add(unsigned int row, bool tag) { tags_.emplace_hint(tags_.end(), row, tag); }
    /// Up to the row `end`, without it.
    void untagTagged(unsigned int begin, unsigned int end) {
        if (!findTagged_) {
            for (unsigned int row = begin; row < end; ++row)
                if (getTag_(row)) add(row, false);
            return;
        }
        for (auto row = begin < end ? findTagged_(begin) : std::nullopt;
             row && *row < end && *row >= begin;) {
            add(*row, false);
            begin = *row + 1;
            row = begin < end ? findTagged_(begin) : std::nullopt;
        }
    }
    Tags take() { return std::move(tags_); }

private:
    GetTag const& getTag_;
    FindTagged const& findTagged_;
    Tags tags_;
};

Tags onlyTag(unsigned int row, unsigned int numRows, GetTag const& getTag, FindTagged const& findTagged) {
    TagList list(getTag, findTagged);
    list.untagTagged(0, row);
    list.add(row, true);
    list.untagTagged(row + 1, numRows);
    return list.take();
}

/// The tagged row nearest below, even if one above is nearer; without one below the nearest above.
std::optional<unsigned int> findAnchor(unsigned int row, unsigned int numRows, GetTag const& getTag,
                                       FindTagged const& findTagged) {
    if (findTagged) {
        auto const below = findTagged(row + 1);
        if (below && *below > row && *below < numRows) return below;
    } else {
        for (unsigned int below = row + 1; below < numRows; ++below)
            if (getTag(below)) return below;
    }
    for (unsigned int above = row; above-- > 0;)
        if (getTag(above)) return above;
    return std::nullopt;
}

Tags extendTo(unsigned int row, bool untagsOthers, unsigned int numRows, GetTag const& getTag,
              FindTagged const& findTagged) {
    unsigned int const anchor = findAnchor(row, numRows, getTag, findTagged).value_or(row);
    auto const [first, last] = std::minmax(anchor, row);
    TagList list(getTag, findTagged);
    // The search has shown which rows are untagged: without an anchor all others, with one above all below.
    if (untagsOthers && anchor != row) list.untagTagged(0, first);
    for (unsigned int tagged = first; tagged <= last; ++tagged) list.add(tagged, true);
    if (untagsOthers && anchor > row) list.untagTagged(last + 1, numRows);
    return list.take();
}

} // namespace

Tags tagsAfterClick(Click const& click, unsigned int flags, unsigned int numRows, GetTag const& getTag,
                    FindTagged const& findTagged) {
    if (click.row >= numRows) return {};
    bool const replaces = (flags & TableTagFlag::windowsStyle) != 0;
    if ((flags & TableTagFlag::allowMulti) == 0 || (replaces && !click.shift && !click.ctrl))
        return onlyTag(click.row, numRows, getTag, findTagged);
    if (!click.shift) return {{click.row, !getTag(click.row)}};
    return extendTo(click.row, replaces, numRows, getTag, findTagged);
}

AllTagged toggleAll(unsigned int flags, unsigned int numRows, GetTag const& getTag) {
    if (numRows == 0) return {};
    bool const tags = !getTag(0);
    TagList list(getTag);
    for (unsigned int row = 0; row < numRows; ++row) list.add(row, tags);
    return {list.take(), !tags && (flags & TableTagFlag::clearUnsetsCurrent) != 0};
}

Tags invertedTags(unsigned int numRows, GetTag const& getTag) {
    TagList list(getTag);
    for (unsigned int row = 0; row < numRows; ++row) list.add(row, !getTag(row));
    return list.take();
}

} // namespace wainscot::TagRules
