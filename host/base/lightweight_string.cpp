#include "host/base/lightweight_string.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace wainscot {

template <class CharT>
std::uint32_t LightweightString<CharT>::throwTooLong() {
    throw std::length_error("LightweightString: text too long");
}

template <class CharT>
CharT* LightweightString<CharT>::allocate(std::size_t capacity) {
    std::uint32_t const checked = checkedSize(capacity);
    void* memory = ::operator new(sizeof(Header) + (capacity + 1) * sizeof(CharT));
    auto* header = new (memory) Header{1, checked};
    return reinterpret_cast<CharT*>(header + 1);
}

template <class CharT>
typename LightweightString<CharT>::Header* LightweightString<CharT>::header() const {
    return reinterpret_cast<Header*>(const_cast<CharT*>(data_)) - 1;
}

template <class CharT>
LightweightString<CharT>::LightweightString(std::size_t count, CharT character) : data_(&zero) {
    if (count == 0) return;
    CharT* buffer = allocate(count);
    std::fill_n(buffer, count, character);
    buffer[count] = CharT();
    data_ = buffer;
    size_ = static_cast<std::uint32_t>(count);
    counted_ = true;
}

template <class CharT>
void LightweightString<CharT>::assignCopy(CharT const* text, std::size_t length) {
    if (length == 0) return;
    CharT* buffer = allocate(length);
    std::copy_n(text, length, buffer);
    buffer[length] = CharT();
    data_ = buffer;
    size_ = static_cast<std::uint32_t>(length);
    counted_ = true;
}

template <class CharT>
void LightweightString<CharT>::retain() const noexcept {
    header()->references.fetch_add(1, std::memory_order_relaxed);
}

template <class CharT>
void LightweightString<CharT>::release() noexcept {
    Header* own = header();
    // Nobody else can share a buffer that only this string has, so that the atomic count is not needed.
    if (own->references.load(std::memory_order_acquire) == 1 ||
        own->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
        ::operator delete(own);
}

template <class CharT>
bool LightweightString<CharT>::ownsAlone() const {
    return counted_ && header()->references.load(std::memory_order_acquire) == 1;
}

template <class CharT>
CharT* LightweightString<CharT>::ensureOwn(std::size_t capacity) {
    if (ownsAlone() && header()->capacity >= capacity) return const_cast<CharT*>(data_);
    std::size_t const grown =
        ownsAlone() ? std::min(maxSize, std::size_t(header()->capacity) + header()->capacity / 2) : 0;
    CharT* buffer = allocate(std::max({capacity, grown, std::size_t(size_)}));
    std::copy_n(data_, size_, buffer);
    buffer[size_] = CharT();
    LightweightString old;
    swap(old);
    data_ = buffer;
    size_ = old.size_;
    counted_ = true;
    return buffer;
}

template <class CharT>
void LightweightString<CharT>::reserve(std::size_t capacity) {
    ensureOwn(std::max(capacity, size()));
}

template <class CharT>
LightweightString<CharT>& LightweightString<CharT>::append(View text) {
    return replace(size_, 0, text);
}

template <class CharT>
LightweightString<CharT>& LightweightString<CharT>::replace(std::size_t index, std::size_t count, View text) {
    index = std::min(index, size());
    count = std::min(count, size() - index);
    if (count == 0 && text.empty()) return *this;
    bool const textIsOwn = text.data() >= data_ && text.data() <= data_ + size_;
    if (textIsOwn) {
        LightweightString const copy(text);
        return replace(index, count, copy.view());
    }
    std::size_t const newSize = size() - count + text.size();
    CharT* buffer = ensureOwn(newSize);
    std::char_traits<CharT>::move(buffer + index + text.size(), buffer + index + count,
                                  size() - index - count);
    std::copy_n(text.data(), text.size(), buffer + index);
    buffer[newSize] = CharT();
    size_ = checkedSize(newSize);
    return *this;
}

template <class CharT>
void LightweightString<CharT>::setAt(std::size_t index, CharT character) {
    if (index < size_) ensureOwn(size_)[index] = character;
}

template <class CharT>
LightweightString<CharT> LightweightString<CharT>::substr(std::size_t index, std::size_t count) const {
    if (index >= size_) return LightweightString();
    if (index == 0 && count >= size_) return *this;
    return LightweightString(view().substr(index, count));
}

template <class CharT>
LightweightString<CharT> LightweightString<CharT>::joined(View a, View b) {
    LightweightString result;
    if (a.size() + b.size() == 0) return result;
    CharT* buffer = allocate(a.size() + b.size());
    std::copy_n(a.data(), a.size(), buffer);
    std::copy_n(b.data(), b.size(), buffer + a.size());
    buffer[a.size() + b.size()] = CharT();
    result.data_ = buffer;
    result.size_ = static_cast<std::uint32_t>(a.size() + b.size());
    result.counted_ = true;
    return result;
}

template class LightweightString<char>;
template class LightweightString<wchar_t>;

} // namespace wainscot
