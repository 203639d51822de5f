#pragma once

#include "foundation/data_change_type.h"
#include "host/base/life.h"
#include "host/base/lightweight_string.h"
#include "host/base/object.h"
#include "host/messages/handler_ref.h"
#include "host/objects/description.h"
#include "host/objects/redraw_flag.h"

#include <optional>

namespace wainscot {

class VariBox;

/// What a value box is about: which value, how it is stepped, how it is shown and read. The box draws the
/// text and the position within the range that its parser gives, and hands it what the user does.
///
/// The handlers answer whether the value has changed; the box then tells its parent. A handler may destroy
/// the box, and replace or destroy the parser.
class WAINSCOT_API VariBoxParserBase : public virtual iObject {
public:
    using Text = LightweightString<wchar_t>;

    /// The box that it is going to serve, or null; that may die first. `VariBox::setParser` puts it into a
    /// box.
    explicit VariBoxParserBase(VariBox* box);
    VariBoxParserBase(VariBoxParserBase const&) = delete;
    VariBoxParserBase& operator=(VariBoxParserBase const&) = delete;
    ~VariBoxParserBase() override;

    // iObject: the box or the application owns it, nobody counts.
    void addRef() const noexcept final {}
    void release() const noexcept final {}

    // --- Called by the box
    /// It has been put into its box. Here it names the characters that can be entered. The base does nothing.
    virtual void init();
    virtual bool handleMinorInc() = 0;
    virtual bool handleMajorInc() = 0;
    virtual bool handleMinorDec() = 0;
    virtual bool handleMajorDec() = 0;
    /// A drag begins; it ends with `handleNoChange`. The base does nothing.
    virtual void handleDragStart();
    /// The drag is taken back: the value from its start counts again. False in the base.
    virtual bool handleDragCancel();
    /// A drag has ended: reports the value once more. False in the base.
    virtual bool handleNoChange();
    /// Reads the text that the user has entered (`getText`), and tells the box with
    /// `notifyValidatedTextChange`. One that cannot be read changes nothing, and is noted with
    /// `setTextRefused`.
    virtual bool handleParseText() = 0;
    /// From 0 at the lower limit to 1 at the upper one.
    virtual double getPositionWithinRange() const = 0;
    /// The value that a double click puts back; none in the base.
    virtual bool hasDefault() const;
    virtual bool handleDefault();
    /// Whether the value stands for several; not in the base.
    virtual bool isMixed() const;
    /// Whether a step can be a tenth of the usual one (`isFine`). With others, a fine drag goes ten times the
    /// way for each step. Not in the base.
    virtual bool hasFineSteps() const;
    /// The value for descriptions, nothing in the base.
    virtual std::optional<NumberValue> getNumber() const;
    /// Its box, which owns it, is being destroyed, and must not be touched: from now on it counts as dead.
    /// Overriders call their base, and nobody else.
    virtual void handleBoxGone();

    // --- What is shown and entered
    /// The text as it is shown; while the user edits it, as it has been entered.
    Text getText() const;
    void setText(Text const& text);
    /// In UTF-8; empty = all.
    void setAllowedCharacters(LightweightString<char> const& characters);
    LightweightString<char> const& getAllowedCharacters() const { return allowedCharacters_; }
    /// 0 = any number.
    void setMaxNumChars(unsigned char most);
    unsigned char getMaxNumChars() const { return maxNumChars_; }
    /// Tells the box that a text has been read, and whether the value is another one by that. It may destroy
    /// everything.
    void notifyValidatedTextChange(bool changed);
    /// Whether the last text could not be read.
    bool isTextRefused() const { return isTextRefused_; }
    void setTextRefused(bool refused) { isTextRefused_ = refused; }

    // --- State
    /// The box that it is in; null while it is in none.
    VariBox* getBox() const;
    /// Enables and disables the box.
    void setEnabled(bool enabled);
    bool isEnabled() const { return isEnabled_; }
    /// Why the value changes, for the data.
    DataChangeType getDataChangeType() const { return dataChangeType_; }
    void setDataChangeType(DataChangeType why) { dataChangeType_ = why; }
    /// Whether steps are a tenth of the usual ones.
    bool isFine() const { return isFine_; }
    void setFine(bool fine) { isFine_ = fine; }

protected:
    /// The text of the value, for parsers that make it only when it is to be seen; `setText`'s in the base.
    virtual Text makeText() const;
    /// `makeText` gives another text, or the position is another one: shows that.
    void noteChange(eRedrawFlag redraw = eRedrawYes);
    LifeToken const& life() const { return life_; }

private:
    friend class VariBox;

    HandlerRef<VariBox> box_;
    mutable Text text_;
    LightweightString<char> allowedCharacters_;
    LifeToken life_;
    DataChangeType dataChangeType_ = DataChangeType::single;
    unsigned char maxNumChars_ = 0;
    bool isEnabled_ = true;
    bool isFine_ = false;
    bool isTextRefused_ = false;
    mutable bool isTextStale_ = true;
};

} // namespace wainscot
