#pragma once

#include <optional>
#include <string>
#include <vector>

struct _XDisplay;

namespace wainscot {

/// Reads the texts that other programs have selected or copied. The window library gives up on texts that do
/// not come in one piece, so this asks the X server itself, over a connection of its own. Never to be asked
/// for a text of this program: nobody would answer while it waits.
class SelectionReader {
public:
    SelectionReader() = default;
    ~SelectionReader();
    SelectionReader(SelectionReader const&) = delete;
    SelectionReader& operator=(SelectionReader const&) = delete;

    /// The window that owns a selection ("CLIPBOARD", "PRIMARY"); 0 when nobody does.
    unsigned long owner(char const* selection);
    /// The selected text as UTF-8. Nothing when there is no text, or when its owner does not answer for a
    /// second.
    std::optional<std::string> read(char const* selection);

private:
    bool open();
    enum class Answer : unsigned char { none, refused, given };
    /// Asks the owner for one kind of data.
    Answer convert(char const* selection, char const* target);
    /// Waits for an event of that type; false when none comes in time.
    bool waitFor(int type, void* event);
    /// Takes the property that the owner has filled, and gives its type; 0 when there is no such property.
    unsigned long takeProperty(std::string& text);
    /// The kinds of data that the owner offers; empty when it does not say, nothing when it does not answer.
    std::optional<std::vector<unsigned long>> offered(char const* selection);
    bool readPieces(std::string& text);

    _XDisplay* display_ = nullptr;
    unsigned long window_ = 0;
    unsigned long property_ = 0;
};

} // namespace wainscot
