#include "text/vari_box_parser_base.h"

#include "host/base/diagnostics.h"
#include "text/vari_box.h"

namespace wainscot {

VariBoxParserBase::VariBoxParserBase(VariBox* box) : box_(box) {}

VariBoxParserBase::~VariBoxParserBase() {
    if (VariBox* const box = getBox()) box->parser_Gone();
}

// What a box does without

void VariBoxParserBase::init() {}
void VariBoxParserBase::handleDragStart() {}

void VariBoxParserBase::handleBoxGone() {
    life_.end();
}

bool VariBoxParserBase::handleDragCancel() {
    return false;
}

bool VariBoxParserBase::handleNoChange() {
    return false;
}

bool VariBoxParserBase::hasDefault() const {
    return false;
}

bool VariBoxParserBase::handleDefault() {
    return false;
}

bool VariBoxParserBase::isMixed() const {
    return false;
}

bool VariBoxParserBase::hasFineSteps() const {
    return false;
}

std::optional<NumberValue> VariBoxParserBase::getNumber() const {
    return std::nullopt;
}

VariBoxParserBase::Text VariBoxParserBase::makeText() const {
    return text_;
}

// Text

VariBox* VariBoxParserBase::getBox() const {
    VariBox* const box = box_.get();
    return box && box->getParser() == this ? box : nullptr;
}

/// What the application throws while a text is made must not end the painting.
VariBoxParserBase::Text VariBoxParserBase::getText() const {
    VariBox const* const box = getBox();
    if (box && box->isEditing()) return box->getEnteredText();
    if (!isTextStale_) return text_;
    isTextStale_ = false;
    try {
        text_ = makeText();
    } catch (...) {
        Diagnostics::count("no text", "VariBoxParserBase");
        text_ = {};
    }
    return text_;
}

void VariBoxParserBase::setText(Text const& text) {
    text_ = text;
    isTextStale_ = false;
    if (VariBox* const box = getBox()) box->parser_TextChanged(false);
}

void VariBoxParserBase::noteChange(eRedrawFlag redraw) {
    isTextStale_ = true;
    VariBox* const box = getBox();
    if (!box) return;
    redraw == eRedrawYes ? box->parser_TextChanged(false) : box->describeChanged(DescriptionChange::value);
}

void VariBoxParserBase::notifyValidatedTextChange(bool changed) {
    if (VariBox* const box = getBox()) box->parser_TextChanged(changed);
}

void VariBoxParserBase::setAllowedCharacters(LightweightString<char> const& characters) {
    allowedCharacters_ = characters;
    if (VariBox* const box = getBox()) box->parser_SetAllowedCharacters(characters);
}

void VariBoxParserBase::setMaxNumChars(unsigned char most) {
    maxNumChars_ = most;
    if (VariBox* const box = getBox()) box->parser_SetMaxNumChars(most);
}

void VariBoxParserBase::setEnabled(bool enabled) {
    isEnabled_ = enabled;
    if (VariBox* const box = getBox()) box->setActive(enabled);
}

} // namespace wainscot
