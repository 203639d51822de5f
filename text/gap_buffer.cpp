#include "text/gap_buffer.h"

#include <algorithm>
#include <cwchar>

namespace wainscot {

namespace {

/// The free room of a new buffer.
constexpr std::size_t leastRoom = 16;
/// The share of the text that is added as room for more.
constexpr std::size_t roomShare = 4;

} // namespace

std::pair<std::wstring_view, std::wstring_view> GapBuffer::parts(std::size_t index, std::size_t count) const {
    std::wstring_view const before(data_.get(), gap_);
    std::wstring_view const behind(data_.get() + gap_ + (capacity_ - size_), size_ - gap_);
    std::size_t const first = std::min(count, gap_ - std::min(gap_, index));
    std::size_t const rest = index + first - std::min(gap_, index + first);
    return {first > 0 ? before.substr(index, first) : std::wstring_view(),
            count > first ? behind.substr(rest, count - first) : std::wstring_view()};
}

void GapBuffer::replace(std::size_t index, std::size_t count, std::wstring_view text) {
    if (size_ - count + text.size() > capacity_) grow(size_ - count + text.size());
    moveGap(index);
    size_ -= count;
    if (!text.empty()) std::wmemcpy(data_.get() + gap_, text.data(), text.size());
    gap_ += text.size();
    size_ += text.size();
}

void GapBuffer::moveGap(std::size_t to) {
    std::size_t const room = capacity_ - size_;
    if (to < gap_) std::wmemmove(data_.get() + to + room, data_.get() + to, gap_ - to);
    if (to > gap_) std::wmemmove(data_.get() + gap_, data_.get() + gap_ + room, to - gap_);
    gap_ = to;
}

void GapBuffer::grow(std::size_t size) {
    std::size_t const capacity = size + std::max(leastRoom, size / roomShare);
    auto data = std::make_unique_for_overwrite<wchar_t[]>(capacity);
    auto const [before, behind] = parts(0, size_);
    before.copy(data.get(), before.size());
    behind.copy(data.get() + capacity - behind.size(), behind.size());
    data_ = std::move(data);
    capacity_ = capacity;
}

} // namespace wainscot
