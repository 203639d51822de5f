#pragma once

#include "host/base/export.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>

namespace wainscot {

/// Characters that are changed mostly at one place: the free room lies there, so that a change costs as much
/// as it is long, and the way from the last one.
class WAINSCOT_API GapBuffer {
public:
    std::size_t size() const { return size_; }
    /// `index` must be below `size()`.
    wchar_t operator[](std::size_t index) const {
        return data_[index < gap_ ? index : index + (capacity_ - size_)];
    }
    /// Characters that must exist, in one piece or two. They are valid until the next change.
    std::pair<std::wstring_view, std::wstring_view> parts(std::size_t index, std::size_t count) const;
    /// Replaces characters that must exist. `text` lies elsewhere.
    void replace(std::size_t index, std::size_t count, std::wstring_view text);

private:
    void moveGap(std::size_t to);
    /// Room for `size` characters.
    void grow(std::size_t size);

    std::unique_ptr<wchar_t[]> data_;
    std::size_t capacity_ = 0;
    std::size_t size_ = 0;
    /// Where the free room begins.
    std::size_t gap_ = 0;
};

} // namespace wainscot
