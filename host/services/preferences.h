#pragma once

#include "host/base/xy.h"
#include "host/services/json.h"

#include <optional>
#include <set>

namespace wainscot {

/// The settings that a program keeps from one start to the next, by key.
///
/// They are read from the file `preferences.json` in the program's folder at the first use, and kept in
/// memory. A change does not touch the disk; changes are written together by `flush()`, by `writeIfDue()` and
/// at the end. Keys that this program does not know stay in the file, and so do changes that other running
/// programs make to other keys. A damaged file is renamed and reported. A folder that cannot be read or
/// written is reported once; the settings are then lost when the program ends. User-interface thread only.
class WAINSCOT_API EditorPreferences {
public:
    using Narrow = LightweightString<char>;
    using Wide = LightweightString<wchar_t>;

    enum class Storage : unsigned char {
        /// In the program's folder.
        file,
        /// Nowhere, unless `setFolder` gives a folder.
        memory,
    };
    /// `writeIfDue()` writes a change this many milliseconds after it was made.
    static constexpr double writeDelay = 2000;

    /// Becomes the live store. Throws when another one lives.
    EditorPreferences(Narrow const& programName, Storage storage);
    /// Writes what has changed.
    ~EditorPreferences();
    EditorPreferences(EditorPreferences const&) = delete;
    EditorPreferences& operator=(EditorPreferences const&) = delete;

    /// Null while no host lives.
    static EditorPreferences* current();

    /// The value of a key; `otherwise` when it has no value, or a value of another type.
    bool getPreference(Narrow const& key, bool otherwise);
    int getPreference(Narrow const& key, int otherwise);
    double getPreference(Narrow const& key, double otherwise);
    Narrow getPreference(Narrow const& key, Narrow const& otherwise);
    Narrow getPreference(Narrow const& key, char const* otherwise);
    Wide getPreference(Narrow const& key, Wide const& otherwise);
    Wide getPreference(Narrow const& key, wchar_t const* otherwise);
    XY<int> getPreference(Narrow const& key, XY<int> const& otherwise);

    void setPreference(Narrow const& key, bool value) { setValue(key, JsonValue(value)); }
    void setPreference(Narrow const& key, int value) { setValue(key, JsonValue(value)); }
    void setPreference(Narrow const& key, double value) { setValue(key, JsonValue(value)); }
    /// The value is UTF-8; invalid bytes become U+FFFD and are counted in the diagnostics.
    void setPreference(Narrow const& key, Narrow const& value);
    void setPreference(Narrow const& key, char const* value) { setPreference(key, Narrow(value)); }
    void setPreference(Narrow const& key, Wide const& value) { setValue(key, JsonValue(value)); }
    void setPreference(Narrow const& key, wchar_t const* value) { setPreference(key, Wide(value)); }
    void setPreference(Narrow const& key, XY<int> const& value);

    /// The value of a key in its stored form; null when it has none.
    JsonValue const& value(Narrow const& key);
    /// Null takes the key away.
    void setValue(Narrow const& key, JsonValue value);
    /// Sets one entry of a value that is an object, in place; null takes the entry away.
    void setEntry(Narrow const& key, Narrow const& entry, JsonValue value);

    /// Writes what has changed. False on failure: the changes then stay in memory, and the next call tries
    /// again.
    bool flush();
    /// For the loop when it is idle: writes once the delay is over.
    void writeIfDue();
    /// When `writeIfDue()` will have something to do, in milliseconds of the clock; nothing = not at all.
    std::optional<double> nextWrite() const { return dueAt_; }

    /// Keeps the settings in this folder (UTF-8 path); the empty path keeps them in memory only. False, and
    /// nothing is done, once settings have been read or changed.
    bool setFolder(Narrow const& folder);
    /// The file of the settings; empty when they are in memory only.
    Narrow filePath() const;

private:
    void load();
    /// The contents of the file: an object, which is empty when there is no file. Nothing when the file
    /// cannot be used.
    std::optional<JsonValue> readStored();
    bool setAside(Narrow const& why);
    void noteChange(Narrow const& key, bool done);
    /// The stored settings with the changes of this program.
    JsonValue merged(JsonValue stored) const;
    bool fail(char const* what, Narrow const& why);

    Storage storage_;
    Narrow folder_;
    bool loaded_ = false;
    bool reported_ = false;
    JsonValue values_ = JsonValue::object();
    std::set<Narrow> changed_;
    std::optional<double> dueAt_;
};

/// The settings of the live host; throws when there is none.
WAINSCOT_API EditorPreferences& prefs();

/// A number that decides how the program works: the preference of that name (a truth value counts as 1 or 0),
/// else `otherwise`. Without a host it is `otherwise`. Environment variables are not read.
WAINSCOT_API int config_int(char const* key, int otherwise);
WAINSCOT_API double config_double(char const* key, double otherwise);

} // namespace wainscot
