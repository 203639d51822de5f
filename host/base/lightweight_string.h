#pragma once

#include "host/base/export.h"

#include <algorithm>
#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string_view>
#include <type_traits>

namespace wainscot {

/// Reference-counted string: copies share one buffer; a changed string gets its own buffer first.
///
/// A string that is made from a literal in a constant expression points at the literal and is never counted,
/// so that `static constexpr` message names cost neither memory nor start-up code. All other strings own a
/// counted buffer. The count is atomic; one string object must not be used by two threads at a time. A zero
/// character always follows the text. Instantiated for `char` and `wchar_t`.
template <class CharT>
class LightweightString {
public:
    using View = std::basic_string_view<CharT>;
    using value_type = CharT;
    static constexpr std::size_t npos = View::npos;

    constexpr LightweightString() noexcept : data_(&zero) {}

    /// From a literal or array, up to its first zero character (an array without one: up to its end).
    template <std::size_t N>
    constexpr LightweightString(CharT const (&literal)[N]) : data_(&zero) {
        if (std::is_constant_evaluated()) {
            data_ = literal;
            size_ = checkedSize(std::char_traits<CharT>::length(literal));
        } else {
            View const text(literal, N);
            assignCopy(literal, std::min(text.find(CharT()), N));
        }
    }

    /// From a zero-terminated pointer; null gives the empty string.
    template <class P>
    requires std::is_same_v<std::remove_cv_t<P>, CharT const*> ||
        std::is_same_v<std::remove_cv_t<P>, CharT*> LightweightString(P const& text) : data_(&zero) {
        View const given = viewOf(text);
        assignCopy(given.data(), given.size());
    }

    LightweightString(CharT const* text, std::size_t length) : data_(&zero) { assignCopy(text, length); }
    LightweightString(std::size_t count, CharT character);
    explicit LightweightString(View text) : data_(&zero) { assignCopy(text.data(), text.size()); }

    constexpr LightweightString(LightweightString const& other) noexcept
        : data_(other.data_), size_(other.size_), counted_(other.counted_) {
        if (counted_) retain();
    }
    constexpr LightweightString(LightweightString&& other) noexcept
        : data_(other.data_), size_(other.size_), counted_(other.counted_) {
        other.forget();
    }
    constexpr ~LightweightString() {
        if (counted_) release();
    }
    LightweightString& operator=(LightweightString const& other) noexcept {
        LightweightString copy(other);
        swap(copy);
        return *this;
    }
    LightweightString& operator=(LightweightString&& other) noexcept {
        LightweightString moved(static_cast<LightweightString&&>(other));
        swap(moved);
        return *this;
    }

    constexpr std::size_t size() const { return size_; }
    constexpr std::size_t length() const { return size_; }
    constexpr bool empty() const { return size_ == 0; }
    constexpr bool isEmpty() const { return size_ == 0; }
    constexpr CharT const* c_str() const { return data_; }
    constexpr CharT const* data() const { return data_; }
    constexpr View view() const { return View(data_, size_); }
    constexpr CharT const* begin() const { return data_; }
    constexpr CharT const* end() const { return data_ + size_; }
    /// `index` must not be larger than `size()`, where the zero character stands.
    constexpr CharT operator[](std::size_t index) const { return data_[index]; }
    /// The last character; the zero character when the string is empty.
    constexpr CharT back() const { return size_ ? data_[size_ - 1] : CharT(); }
    /// Hands out the inner pointer: never keep it across a call that may change or destroy the string.
    constexpr operator CharT const*() const { return data_; }
    /// The pointer above is never null: a string is asked whether it is empty.
    explicit operator bool() const = delete;

    void clear() { *this = LightweightString(); }
    /// Makes room, so that the string can grow to `capacity` characters in place.
    void reserve(std::size_t capacity);
    LightweightString& append(View text);
    LightweightString& operator+=(LightweightString const& text) { return append(text.view()); }
    LightweightString& operator+=(CharT const* text) { return append(viewOf(text)); }
    LightweightString& operator+=(CharT character) { return append(View(&character, 1)); }
    void push_back(CharT character) { append(View(&character, 1)); }
    /// Replaces `count` characters from `index` on; both are clamped to the string.
    LightweightString& replace(std::size_t index, std::size_t count, View text);
    LightweightString& insert(std::size_t index, View text) { return replace(index, 0, text); }
    LightweightString& erase(std::size_t index, std::size_t count = npos) {
        return replace(index, count, View());
    }
    /// Changes one character; an index outside is ignored.
    void setAt(std::size_t index, CharT character);

    /// The part from `index` on; empty when `index` lies outside.
    LightweightString substr(std::size_t index, std::size_t count = npos) const;
    std::size_t find(View text, std::size_t from = 0) const { return view().find(text, from); }
    std::size_t find(CharT character, std::size_t from = 0) const { return view().find(character, from); }
    std::size_t rfind(CharT character, std::size_t from = npos) const {
        return view().rfind(character, from);
    }
    bool startsWith(View text) const { return view().substr(0, text.size()) == text; }
    bool endsWith(View text) const {
        return size_ >= text.size() && view().substr(size_ - text.size()) == text;
    }

    /// True when both share one buffer; for tests of the sharing itself.
    bool sharesBufferWith(LightweightString const& other) const { return data_ == other.data_; }

    friend constexpr bool operator==(LightweightString const& a, LightweightString const& b) {
        return a.size_ == b.size_ && (a.data_ == b.data_ || a.view() == b.view());
    }
    friend constexpr bool operator==(LightweightString const& a, CharT const* b) {
        return a.view() == viewOf(b);
    }
    friend constexpr auto operator<=>(LightweightString const& a, LightweightString const& b) {
        return a.view() <=> b.view();
    }
    friend LightweightString operator+(LightweightString const& a, LightweightString const& b) {
        return joined(a.view(), b.view());
    }
    friend LightweightString operator+(LightweightString const& a, CharT const* b) {
        return joined(a.view(), viewOf(b));
    }
    friend LightweightString operator+(CharT const* a, LightweightString const& b) {
        return joined(viewOf(a), b.view());
    }
    friend LightweightString operator+(LightweightString const& a, CharT b) {
        return joined(a.view(), View(&b, 1));
    }

private:
    struct Header {
        std::atomic<std::uint32_t> references;
        std::uint32_t capacity;
    };

    static constexpr CharT zero = CharT();

    /// Null counts as the empty text.
    static constexpr View viewOf(CharT const* text) { return text ? View(text) : View(); }

    static constexpr std::uint32_t checkedSize(std::size_t size) {
        return size > maxSize ? throwTooLong() : static_cast<std::uint32_t>(size);
    }
    static constexpr std::size_t maxSize = std::numeric_limits<std::uint32_t>::max() / sizeof(CharT) - 16;
    [[noreturn]] static std::uint32_t throwTooLong();
    static CharT* allocate(std::size_t capacity);
    static LightweightString joined(View a, View b);

    Header* header() const;
    void assignCopy(CharT const* text, std::size_t length);
    void retain() const noexcept;
    void release() noexcept;
    bool ownsAlone() const;
    /// Makes the buffer this string's own, with room for `capacity` characters.
    CharT* ensureOwn(std::size_t capacity);

    constexpr void forget() {
        data_ = &zero;
        size_ = 0;
        counted_ = false;
    }
    void swap(LightweightString& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(counted_, other.counted_);
    }

    CharT const* data_;
    std::uint32_t size_ = 0;
    bool counted_ = false;
};

extern template class WAINSCOT_API LightweightString<char>;
extern template class WAINSCOT_API LightweightString<wchar_t>;

} // namespace wainscot

template <class CharT>
struct std::hash<wainscot::LightweightString<CharT>> {
    std::size_t operator()(wainscot::LightweightString<CharT> const& text) const {
        return std::hash<std::basic_string_view<CharT>>()(text.view());
    }
};
