#pragma once

#include "host/services/resources.h"

namespace wainscot {

/// Display text: a text of its own, or the number of a resource text with a format. The number is looked up
/// whenever the text is asked for, so that it follows the language.
class WAINSCOT_API UIString {
public:
    UIString() = default;
    UIString(LightweightString<wchar_t> text) : text_(std::move(text)) {}
    UIString(wchar_t const* text) : text_(text) {}
    UIString(ResId id, ResStrFmt format = eResStrPlain) : id_(id), format_(format) {}

    /// The text to show. A text of its own has no format.
    LightweightString<wchar_t> text() const;
    bool isEmpty() const { return id_ == noResText && text_.isEmpty(); }
    bool isResource() const { return id_ != noResText; }
    /// `noResText` for a text of its own.
    ResId resId() const { return id_; }
    ResStrFmt format() const { return format_; }

    /// Whether both have the same text of their own, or the same number and format; the language does not
    /// count.
    friend bool operator==(UIString const& a, UIString const& b) {
        return a.id_ == b.id_ && a.format_ == b.format_ && a.text_ == b.text_;
    }

private:
    LightweightString<wchar_t> text_;
    ResId id_ = noResText;
    ResStrFmt format_ = eResStrPlain;
};

} // namespace wainscot
